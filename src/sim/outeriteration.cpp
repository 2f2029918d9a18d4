#include "sim/outeriteration.h"

#include "base/numbertext.h"
#include "core/modelfiles.h"
#include "core/notes.h"
#include "core/project.h"
#include "sim/fieldvalue.h"

namespace sim {

namespace {

using core::FieldInfo;
using core::FieldKind;

constexpr const char* section = "PICARD";

constexpr FieldInfo field_table[] = {
    {"chkPicard", FieldKind::check, "Outer iteration active", {}, "", "0"},
    {"sldProjCoeff", FieldKind::number, "Projection coefficient", {}, "", ""},
    {"txtIteration", FieldKind::number, "Maximum number of outer iterations", {}, "", ""},
    {"txtFlowLimit", FieldKind::number, "Flow limit", {}, "", "0.001"},
    {"txtHeatLimit", FieldKind::number, "Heat limit", {}, "", "0.001"},
    {"txtTransLimit", FieldKind::number, "Transport limit", {}, "", "0.001"},
};

struct NoteKey {
    const char* field;
    const char* read_key;
    const char* saved_key;
};
constexpr NoteKey note_keys[] = {
    {"sldProjCoeff", "Chi", "Chi"},
    {"txtIteration", "Iteration", "Iteration"},
    {"txtFlowLimit", "FlowLimit", "FlowLimit"},
    {"txtHeatLimit", "HeatLimit", "HeatLimit"},
    {"txtTransLimit", "TransLimit", "TransportLimit"},
};

} // namespace

OutIter::OutIter() {
    reset_fields();
}

std::span<const FieldInfo> OutIter::fields() const {
    return field_table;
}

void OutIter::load(const core::Project&, const core::ModelFiles& files) {
    reset_fields();
    const core::Notes notes(files);
    const std::string active = notes.get(section, "Active");
    active_stored_ = !active.empty();
    put("chkPicard", check_text(base::leading_int32(active) != 0));
    for (const NoteKey& key : note_keys) {
        const std::string stored = notes.get(section, key.read_key);
        if (!stored.empty())
            put(key.field, stored);
    }
}

bool OutIter::enabled(std::string_view name) const {
    return name == "chkPicard" || checked("chkPicard");
}

void OutIter::save(core::Project& project, core::ModelFiles& files) {
    core::Notes notes(files);
    notes.set(section, "Active", check_text(checked("chkPicard")));
    for (const NoteKey& key : note_keys)
        notes.set(section, key.saved_key, get(key.field));
    notes.save(files);
    active_stored_ = true;
    project.flags.mark_edited();
}

} // namespace sim

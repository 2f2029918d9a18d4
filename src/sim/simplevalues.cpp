#include "sim/simplevalues.h"

#include "core/modelfiles.h"
#include "core/project.h"
#include "sim/fieldvalue.h"
#include "sim/typfile.h"

namespace sim {

namespace {

using core::FieldInfo;
using core::FieldKind;

constexpr const char* usual_density = "998.0";

constexpr FieldInfo density_fields[] = {
    {"Check1", FieldKind::check, "Reference Density", {}, "", "0"},
    {"Text1", FieldKind::number, "Reference Density", {}, "kg/m³", usual_density},
};

struct HeatConstantInfo {
    const char* title;
    int line;
    FieldInfo field;
};
constexpr HeatConstantInfo heat_constants[] = {
    {"Basal Heat Flow",
     typ::basal_heat_flow,
     {"Value", FieldKind::number, "Enter a constant heat flow", {}, "W/m²", "0.08"}},
    {"Fluid Heat Production",
     typ::HPF,
     {"Value",
      FieldKind::number,
      "Enter a constant fluid heat production rate",
      {},
      "W/m³",
      "0.0"}},
};

const HeatConstantInfo& info_of(HeatConstant constant) {
    return heat_constants[std::size_t(constant)];
}

void save_line(core::ModelFiles& files, int line, std::string_view text) {
    TypFile typ_file = TypFile::load(files);
    typ_file.set_line(line, text);
    typ_file.save(files);
}

} // namespace

RefDens::RefDens() {
    reset_fields();
}

std::span<const FieldInfo> RefDens::fields() const {
    return density_fields;
}

void RefDens::load(const core::Project&, const core::ModelFiles& files) {
    reset_fields();
    put("Text1", TypFile::load(files).line(typ::RHOF));
    put("Check1", check_text(get("Text1") != usual_density));
}

bool RefDens::enabled(std::string_view name) const {
    return name != "Text1" || checked("Check1");
}

void RefDens::save(core::Project& project, core::ModelFiles& files) {
    const bool own = checked("Check1") && !get("Text1").empty();
    save_line(files, typ::RHOF, own ? get("Text1") : usual_density);
    project.flags.mark_defined(1, 5);
    project.flags.mark_edited();
}

HeatConstantForm::HeatConstantForm(HeatConstant constant) : constant_(constant) {
    reset_fields();
}

const char* HeatConstantForm::title() const {
    return info_of(constant_).title;
}

std::span<const FieldInfo> HeatConstantForm::fields() const {
    return {&info_of(constant_).field, 1};
}

void HeatConstantForm::load(const core::Project&, const core::ModelFiles& files) {
    reset_fields();
    put("Value", TypFile::load(files).line(info_of(constant_).line));
}

void HeatConstantForm::save(core::Project& project, core::ModelFiles& files) {
    save_line(files, info_of(constant_).line, get("Value"));
    if (constant_ == HeatConstant::fluid_heat_production)
        project.flags.mark_defined(10, 8);
    project.flags.mark_edited();
}

bool reinjects_produced_water(const core::ModelFlags& flags) {
    return flags.is_defined(1, 1);
}

void reinject_produced_water(core::ModelFlags& flags, bool on) {
    flags.set(1, 1, on ? core::ModelFlags::defined : 0);
    flags.mark_edited();
}

} // namespace sim

#include "results/importparts.h"

#include "core/itemcells.h"
#include "input/simulatorfield.h"
#include "results/savedfield.h"

#include <algorithm>

namespace results {

namespace {

struct StreamField {
    std::string_view keyword;
    int number;
};

bool has_values(const Field& field) {
    for (int K = 1; K <= field.nK(); ++K) {
        for (int J = 1; J <= field.nJ(); ++J) {
            if (std::ranges::any_of(field.row(K, J), [](float v) { return v != 0; })) {
                return true;
            }
        }
    }
    return false;
}

constexpr StreamField fields[] = {{"PHI", input::arrays::hea.number},
                                  {"TEMP", input::arrays::tem.number},
                                  {"ICE", input::arrays::ice.number},
                                  {"TSOL", input::arrays::sol.number},
                                  {"TLIQ", input::arrays::liq.number}};
constexpr StreamField velocities[] = {{"VX", input::arrays::vx.number},
                                      {"VY", input::arrays::vy.number},
                                      {"VZ", input::arrays::vz.number}};

// The flow field of a simulated flow comes along when the stream is a result.
bool save_velocity(ModelImport& import, const StreamField& velocity) {
    const Field field = import.stream.field(velocity.keyword, import.extents, import.user);
    const bool saved = import.prescribed() || has_values(field);
    if (saved) {
        Save_Layers(import.store, velocity.number, import.grid, field, false);
    }
    return saved;
}

} // namespace

void save_fields(ModelImport& import) {
    for (const StreamField& item : fields) {
        if (import.stream.has(item.keyword)) {
            const Field field = import.stream.field(item.keyword, import.extents, import.user);
            Save_Layers(import.store, item.number, import.grid, field, false);
            core::mark_item_defined(import.project.flags, item.number);
        }
    }
    bool saved = false;
    for (const StreamField& velocity : velocities) {
        if (import.stream.has(velocity.keyword)) {
            saved = save_velocity(import, velocity) || saved;
        }
    }
    if (saved) {
        core::create_arrays_of_item(import.store, input::arrays::vx.number);
        core::mark_item_defined(import.project.flags, input::arrays::vx.number);
    }
}

} // namespace results

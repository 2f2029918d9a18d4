#include "grid/elevations.h"

#include "core/arraystore.h"
#include "core/extensions.h"
#include "core/project.h"

namespace grid {

namespace {

struct Elevation {
    int number, other;    // parameters
    int cell, other_cell; // in row 6 of the flags
    int shift;            // from the other's layer to this one's
    const char* title;
    const char* question;
};

constexpr Elevation elevations[] = {
    {3, 4, 5, 6, 1, "Top of Layers (TOP)",
     "The elevation of the aquifer bottom has been specified. Use it for the elevation of the "
     "aquifer top?"},
    {4, 3, 6, 5, -1, "Bottom of Layers (BOT)",
     "The elevation of the aquifer top has been specified. Use it for the elevation of the "
     "aquifer bottom?"},
};

const Elevation* find_elevation(int number) {
    for (const Elevation& elevation : elevations) {
        if (elevation.number == number) {
            return &elevation;
        }
    }
    return nullptr;
}

} // namespace

TakeOver ask_take_over(int number, const core::Project& project, base::Interaction& user) {
    const Elevation* const elevation = find_elevation(number);
    if (elevation == nullptr || project.NZ() <= 1 || project.flags.is_defined(6, elevation->cell) ||
        !project.flags.is_defined(6, elevation->other_cell)) {
        return TakeOver::not_asked;
    }
    switch (user.ask(elevation->title, elevation->question, base::Buttons::yes_no_cancel)) {
    case base::Answer::yes:
    case base::Answer::ok:
        return TakeOver::yes;
    case base::Answer::no:
        return TakeOver::no;
    case base::Answer::cancel:
        break;
    }
    return TakeOver::cancel;
}

void take_over_elevations(int number, int period, core::ArrayStore& store,
                          base::Interaction& user) {
    const Elevation& elevation = *find_elevation(number);
    const auto reader =
        store.layer_reader_if(elevation.other, period, core::parameter_default(elevation.other));
    core::LayerValues values(store.cells_of_layer());
    user.status("Reading Data");
    for (int layer = 1; layer <= store.NZ(); ++layer) {
        const int target = layer + elevation.shift;
        if (target < 1 || target > store.NZ()) {
            continue;
        }
        reader.read(layer, values);
        store.write_array(number, period, target, values);
        if (user.show_meter(100 * layer / store.NZ())) {
            break;
        }
    }
}

} // namespace grid

#include "input/completeness.h"

#include "core/arraystore.h"
#include "core/extensions.h"
#include "core/modelfiles.h"
#include "core/project.h"
#include "sim/periods.h"
#include "sim/rockfile.h"

#include <fmt/format.h>

#include <algorithm>
#include <span>

namespace input {

namespace {

constexpr const char* gap_title = "Missing or Wrong Input Data";

// Parameters whose values are tested.
constexpr int flow_boundaries = 5, porosity = 6, transport_boundaries = 40, permeability = 1401,
              property_zones = 1403, thermal_boundaries = 1405, tracers = 1406, ice_content = 1434;

// What a test looks at.
struct Model {
    const core::Project& project;
    core::ModelFiles& files;
    core::ArrayStore store;

    const core::ModelFlags& flags() const { return project.flags; }
    bool defined(int a, int b) const { return flags().is_defined(a, b); }
    bool has_mesh() const { return files.has(".xy"); }
    bool simulated_flow() const {
        return flags().FlowActive() == 1 && flags().FlowPrescribed() != 1;
    }
    bool heat() const { return flags().HeatActive() == 1; }
    bool frozen_ground() const { return flags().Permafrost() == 1 && heat(); }
    bool transport() const { return flags().TransportActive() == 1; }
    bool chemistry() const { return flags().ChemistryMode() > 0; }
    bool layers_by_arrays() const { return flags()(0, 0) <= 0; }
};

// Whether `good` holds for the cells 0 to `count` - 1. A loop of a fixed length without a way out
// tests several cells at once, so `good` has no "&&" and "||" either.
template <typename Good>
bool all_good(std::size_t count, Good good) {
    constexpr std::size_t block = 256;
    std::size_t cell = 0;
    for (; count - cell >= block; cell += block) {
        int bad = 0;
        for (std::size_t i = 0; i < block; ++i) {
            bad |= good(cell + i) ? 0 : 1;
        }
        if (bad != 0) {
            return false;
        }
    }
    while (cell < count && good(cell)) {
        ++cell;
    }
    return cell == count;
}

// True when every cell of the array is good. An array without file has nothing wrong in it: the
// test of its flag reports it.
template <typename Good>
bool all_cells(const Model& model, int number, Good good) {
    if (!model.has_mesh() || !model.store.exists(number)) {
        return true;
    }
    core::LayerValues values = model.store.layer_values(number);
    const auto reader = model.store.layer_reader(number, 1, 0);
    for (int layer = 1; layer <= model.store.layers(number); ++layer) {
        reader.read(layer, values);
        if (!all_good(values.size(), [&](std::size_t cell) { return good(values[cell]); })) {
            return false;
        }
    }
    return true;
}

bool wrong_zone(const Model& model) {
    const auto zones = static_cast<float>(sim::PropertyZonesCount(model.files));
    return !all_cells(model, property_zones, [zones](float v) { return (v >= 1) & (v <= zones); });
}

bool wrong_boundary(const Model& model, int number) {
    return !all_cells(model, number, [](float v) { return (v == 1) | (v == -1) | (v == 2); });
}

bool negative_value(const Model& model, int number) {
    return !all_cells(model, number, [](float v) { return v >= 0; });
}

core::ArrayStore::LayerReader reader_or_default(const Model& model, int number) {
    return model.store.layer_reader_if(number, 1, core::parameter_default(number));
}

bool PorGreaterIce(const Model& model) {
    if (!model.has_mesh() || (!model.store.exists(ice_content) && !model.store.exists(porosity))) {
        return false;
    }
    core::LayerValues ice = model.store.layer_values(ice_content);
    core::LayerValues pores = model.store.layer_values(porosity);
    const auto ice_reader = reader_or_default(model, ice_content);
    const auto pore_reader = reader_or_default(model, porosity);
    for (int layer = 1; layer <= model.store.NZ(); ++layer) {
        ice_reader.read(layer, ice);
        pore_reader.read(layer, pores);
        if (!all_good(ice.size(), [&](std::size_t cell) { return !(ice[cell] > pores[cell]); })) {
            return true;
        }
    }
    return false;
}

// A test of the check: it fails when `fails` is true. Texts of two lines have an empty line
// between.
struct Test {
    int number;
    bool (*fails)(const Model&);
    const char* text;                   // of a horizontal model
    const char* section_text = nullptr; // of any other orientation, when it differs
    const char* title = gap_title;
    const char* menu_path = nullptr; // when the text names none
};

// The order is law: the first failed test is the one that the user is told.
constexpr Test tests[] = {
    {1, [](const Model& m) { return !m.has_mesh(); },
     "Define the model grid first in: |Grid|Mesh Size."},
    {2, [](const Model& m) { return !m.files.has(".l") && m.flags().GridOrientation() == 0; },
     "Define the layer type first in: |Grid|Layer Type."},
    {3,
     [](const Model& m) {
         return !m.files.has(".l") && m.flags().GridOrientation() == 1 &&
                m.flags().layers_by_thickness();
     },
     "Define the layer type first in: |Grid|Layer Type."},
    {4, [](const Model& m) { return !m.defined(6, 5) && m.layers_by_arrays(); },
     "Define top of layers first in: |Grid|Top of Layers.",
     "Define front of cross sections first in: |Grid|Top of Layers."},
    {5, [](const Model& m) { return !m.defined(6, 6) && m.layers_by_arrays(); },
     "Define bottom of layers first in: |Grid|Bottom of Layers.",
     "Define back of cross sections first in: |Grid|Bottom of Layers."},
    {6, [](const Model& m) { return !m.defined(2, 11); },
     "Define the Property Zones first in: |Grid|Property Zones."},
    {7, wrong_zone,
     "Wrong value defined in: |Grid|Property Zones.\n\n"
     "Value needs to be between 1 and {}."},
    {8, [](const Model& m) { return !m.defined(9, 0); },
     "Define the simulation type first in: |Type|Settings."},
    {9, [](const Model& m) { return !m.defined(9, 1); },
     "Define the update between depending properties first in: |Type|Coupling."},
    {10, [](const Model& m) { return !m.defined(9, 2); },
     "Define the Runtime Information Level and the Resultfile Format first in: "
     "|Type|Info/Results."},
    {11, [](const Model& m) { return !m.defined(9, 3) && !m.defined(8, 3) && !m.defined(7, 3); },
     "Define the Solver Parameters first in: |Time|Solver Parameters..."},
    {12, [](const Model& m) { return m.simulated_flow() && !m.defined(1, 7); },
     "Define the Flow Boundaries first in: |Flow|Flow Boundaries."},
    {13, [](const Model& m) { return m.simulated_flow() && wrong_boundary(m, flow_boundaries); },
     "Wrong value defined in: |Flow|Flow Boundaries.\n\nValid values are 1, -1, or 2."},
    {14,
     [](const Model& m) {
         return m.flags().FlowActive() != 0 && m.flags().ChemistryMode() != 0 &&
                !m.store.exists(porosity);
     },
     "Define the rock porosity first in: |Flow|Initial Permeabiltiy/Porosity."},
    {15, [](const Model& m) { return m.flags().FlowActive() == 1 && negative_value(m, porosity); },
     "Wrong value defined in: |Flow|Initial Permeability / Porosity.\n\n"
     "Negative porosity is not a valid entry."},
    {16,
     [](const Model& m) { return m.flags().FlowActive() == 1 && !m.store.exists(permeability); },
     "Define the rock permeability first in: |Flow|Initial Permeabiltiy/Porosity."},
    {17,
     [](const Model& m) { return m.flags().FlowActive() == 1 && negative_value(m, permeability); },
     "Wrong value defined in: |Flow|Initial Permeability / Porosity.\n\n"
     "Negative permeability is not a valid entry."},
    {18,
     [](const Model& m) {
         return m.flags().FlowPrescribed() == 1 && !m.defined(3, 0) && m.flags().FlowActive() == 1;
     },
     "Define the prescribed flow field first in: |Flow|Prescribed Flow Field."},
    {19, [](const Model& m) { return m.heat() && !m.defined(2, 7); },
     "Define the Heat Boundaries first in: |Heat|Heat Boundaries."},
    {20, [](const Model& m) { return m.heat() && wrong_boundary(m, thermal_boundaries); },
     "Wrong value defined in: |Heat|Thermal Boundaries.\n\nValid values are 1, -1, or 2."},
    {21, [](const Model& m) { return m.heat() && !m.defined(9, 13); },
     "Define the Thermal Rock Properties first in: |Heat|Thermal Rock Properties."},
    {22, [](const Model& m) { return m.frozen_ground() && !m.defined(4, 0); },
     "Define the Ice Content first in: |Heat|Permafrost|Ice Content."},
    {23, [](const Model& m) { return m.frozen_ground() && !m.defined(4, 6); },
     "Define the Ice Content first in: |Heat|Permafrost|Liquidus Temperature."},
    {24, [](const Model& m) { return m.frozen_ground() && !m.defined(4, 7); },
     "Define the Ice Content first in: |Heat|Permafrost|Solidus Temperature."},
    {25, [](const Model& m) { return m.flags().Permafrost() == 1 && PorGreaterIce(m); },
     "Ice Content is greater than Porosity in minimum one case.\n\nPlease check Ice Content!",
     nullptr, "Wrong Input Data", "|Heat|Permafrost|Ice Content"},
    {26, [](const Model& m) { return m.transport() && !m.defined(9, 8); },
     "Check the Tracer definition first in: |Transport|Tracer.\n\n"
     "You do not have to define a Tracer, but to click OK",
     nullptr, "Message"},
    {27,
     [](const Model& m) {
         return m.transport() && m.defined(2, 13) &&
                !all_cells(m, tracers, [](float v) { return (v >= 0) & (v <= 5); });
     },
     "Wrong value defined in: |Transport|Initial Tracer Distribution|Constant Concentration.\n\n"
     "Valid values are 0 to 5"},
    {28,
     [](const Model& m) {
         return m.transport() &&
                !all_cells(m, transport_boundaries, [](float v) { return (v == 1) | (v == -1); });
     },
     "Wrong value defined in: |Transport|Transport Boundaries.\n\nValid values are 1 or -1."},
    {29, [](const Model& m) { return m.transport() && !m.defined(11, 2); },
     "Define the Transport Boundaries first in: |Transport|Transport Boundaries."},
    {30, [](const Model& m) { return m.transport() && !m.defined(9, 9); },
     "Define the Dispersivity and the Diffusion Coefficient first in: "
     "|Transport|Fluid/Rock Properties."},
    {31,
     [](const Model& m) {
         return !m.defined(10, 11) && m.flags().ChemistryMode() == 2 &&
                m.flags().ActivityModel() != 5;
     },
     "Define the Internal Surface first in: |Reaction|Initial Internal Surface."},
    {32, [](const Model& m) { return m.chemistry() && !m.defined(2, 12); },
     "Define the Fluids Distribution first in: |Reaction|Fluids Distribution."},
    {33, [](const Model& m) { return m.chemistry() && !m.defined(9, 14); },
     "Define the Chemical Reactions first in: |Reactions|Reactions Properties."},
};

bool lacks_time_unit(const Model& model) {
    if (!model.files.has(".trn")) {
        return false;
    }
    try {
        return sim::seconds_of_unit(sim::PeriodTable::load(model.files).unit) == 0;
    } catch (const base::FileFailure&) {
        return false; // told by everybody who needs the periods
    }
}

// What only the writing of the input file refuses.
constexpr Test tests_of_writing[] = {
    {34, lacks_time_unit, "Please define first the time unit in: |Time|Periods", nullptr,
     "Missing Data"},
};

// The path of the menu inside a text, without the full stop of its sentence.
std::string menu_path(const Test& test, std::string_view text) {
    if (test.menu_path != nullptr) {
        return test.menu_path;
    }
    std::string_view path = text.substr(text.find('|'));
    path = path.substr(0, path.find('\n'));
    if (path.ends_with('.') && !path.ends_with("...")) {
        path.remove_suffix(1);
    }
    return std::string(path);
}

Gap gap_of(const Test& test, const Model& model) {
    const bool section = model.flags().GridOrientation() != 0 && test.section_text != nullptr;
    std::string text = section ? test.section_text : test.text;
    if (test.fails == wrong_zone) {
        text = fmt::format(fmt::runtime(text), sim::PropertyZonesCount(model.files));
    }
    std::string path = menu_path(test, text);
    return {test.number, {test.title, std::move(text), base::Icon::warning}, std::move(path)};
}

} // namespace

std::optional<Gap> Control(const core::Project& project, core::ModelFiles& files) {
    const Model model{project, files, core::ArrayStore(files, project)};
    const auto failed = std::ranges::find_if(tests, [&](const Test& t) { return t.fails(model); });
    if (failed == std::end(tests)) {
        return std::nullopt;
    }
    return gap_of(*failed, model);
}

namespace {

std::vector<Gap> failed(std::span<const Test> some, const core::Project& project,
                        core::ModelFiles& files) {
    const Model model{project, files, core::ArrayStore(files, project)};
    std::vector<Gap> gaps;
    for (const Test& test : some) {
        if (test.fails(model)) {
            gaps.push_back(gap_of(test, model));
        }
    }
    return gaps;
}

} // namespace

std::vector<Gap> all_gaps(const core::Project& project, core::ModelFiles& files) {
    return failed(tests, project, files);
}

std::vector<Gap> gaps_of_writing(const core::Project& project, core::ModelFiles& files) {
    return failed(tests_of_writing, project, files);
}

} // namespace input

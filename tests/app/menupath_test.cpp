#include "app/menupath.h"

#include "core/project.h"

#include <gtest/gtest.h>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace {

std::string names_at(std::string_view path) {
    std::vector<std::string> names;
    for (const app::MenuTarget& target : app::commands_at(path)) {
        names.push_back(target.name);
    }
    return fmt::format("{}", fmt::join(names, " "));
}

TEST(MenuPath, the_paths_of_texts_lead_to_their_commands) {
    struct Case {
        const char* path;
        const char* names;
    };
    for (const Case& c : {
             Case{"|Grid|Mesh Size.", "grid_mesh_size"},
             Case{"|Grid|Property Zones", "mnuChemistryMineral"},
             Case{"|Type|Info/Results", "mnuTypeInfo"},
             Case{"|Time|Solver Parameters...", "mnuBiCGStab mnuTimeExplicitImplicit mnuTimePLU"},
             Case{"|Flow|Initial Permeabiltiy/Porosity",
                  "mnuPermPorGS Parameters_effective_porosity mnuParametersPermeability"},
             Case{"|Flow|Initial Permeability / Porosity",
                  "mnuPermPorGS Parameters_effective_porosity mnuParametersPermeability"},
             Case{"|Heat|Heat Boundaries", "mnuHeatBoundary"},
             Case{"|Heat|Permafrost|Ice Content", "mnuHeatPermafrostIce"},
             Case{"|Transport|Initial Tracer Distribution|Constant Concentration", "mnuInitTracer"},
             Case{"|Transport|Fluid/Rock Properties", "mnuTransportMatrix"},
             Case{"|Reaction|Initial Internal Surface", "mnuChemistrySurface"},
             Case{"|Reactions|Reactions Properties", "mnuChemistryReaction"},
             Case{"|Grid|Nothing", ""},
         }) {
        EXPECT_EQ(names_at(c.path), c.names) << c.path;
    }
    EXPECT_EQ(app::commands_at("|Type|Info/Results").at(0).caption, "Info / Results");
}

TEST(MenuPath, a_path_is_shown_as_the_menu_of_the_model_words_it) {
    core::Project project;
    EXPECT_EQ(app::shown_path("|Heat|Heat Boundaries", project), "Heat > Thermal Boundaries");
    EXPECT_EQ(app::shown_path("|Time|Solver Parameters...", project), "Time > Solver Parameters");
    EXPECT_EQ(app::shown_path("|Grid|Nothing", project), "|Grid|Nothing");
    project.flags.set(1, 4, core::vertical);
    EXPECT_EQ(app::shown_path("|Grid|Layer Type", project), "Grid > Cross Section Options");
}

TEST(MenuPath, an_item_of_a_grey_menu_cannot_be_chosen) {
    core::Project project;
    EXPECT_FALSE(app::can_be_chosen("mnuHeatPermafrostIce", project));
    project.flags.set(9, 5, 1);
    project.flags.set(10, 5, 1);
    EXPECT_TRUE(app::can_be_chosen("mnuHeatPermafrostIce", project));
    EXPECT_FALSE(app::can_be_chosen("no_command", project));
}

} // namespace

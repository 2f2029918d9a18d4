// The commands of the worksheet and the mesh editor, and those inside them.
#include "ui/commandtables.h"
#include "ui/editor.h"
#include "ui/mainwindow.h"

#include <cstddef>
#include <iterator>

namespace ui {

namespace {

// A name as an argument of a template, so that each row has a function of its own.
template <std::size_t length>
struct Name {
    char text[length];
    constexpr Name(const char (&from)[length]) { // NOLINT: a literal is to become one
        std::copy(std::begin(from), std::end(from), std::begin(text));
    }
};

template <Name name>
inline constexpr Name stored = name; // lives as long as the program

template <Name name>
constexpr CommandRow opens() {
    return {stored<name>.text,
            [](CommandContext& context) { context.window.editor().open(stored<name>.text); }};
}

template <Name name>
constexpr CommandRow runs() {
    return {stored<name>.text,
            [](CommandContext& context) { context.window.editor().run(stored<name>.text); }};
}

constexpr CommandRow rows[] = {
    opens<"grid_mesh_size">(),
    opens<"grid_top_of_layers">(),
    opens<"grid_bottom_of_layers">(),
    opens<"mnuChemistryMineral">(),
    opens<"Parameters_Starting_heads">(),
    opens<"grid_ibound">(),
    opens<"mnuFluidFlowTemp">(),
    opens<"parameters_h_conductivity">(),
    opens<"Parameters_v_conductivity">(),
    opens<"Parameters_Specific_Storage">(),
    opens<"parameters_transmissivity">(),
    opens<"parameters_leakance">(),
    opens<"Parameters_Storage_Coefficient">(),
    opens<"Parameters_Specific_Yield">(),
    opens<"Parameters_effective_porosity">(),
    opens<"mnuParametersPermeability">(),
    opens<"mnuFluidFlowPrescribedFlow">(),
    opens<"mnuFluidFlowRechargeTB">(),
    opens<"mnuFluidFlowRechargeVH">(),
    opens<"mnuFluidFlowRechargeLR">(),
    opens<"packages_wel1">(),
    opens<"mnuHeatTemperature">(),
    opens<"mnuHeatBoundary">(),
    opens<"mnuHeatPermafrostIce">(),
    opens<"mnuHeatPermafrostSolidus">(),
    opens<"mnuHeatPermafrostLiquidus">(),
    opens<"mnuHeatBasal">(),
    opens<"mnuHeatWell">(),
    opens<"mnuInitTracer">(),
    opens<"grid_icbund">(),
    opens<"mnuChemistrySurface">(),
    opens<"mnuChemistryFluidsDistribution">(),
    opens<"run_digitizer">(),
    opens<"Tools_presentation">(),
    runs<"File_Leave_Editor">(),
    runs<"file_save_plot_as">(),
    runs<"file_print_plot">(),
    runs<"value_matrix_browse">(),
    runs<"value_matrix_reset">(),
    runs<"value_zones_delete_all">(),
    runs<"value_zones_save_as">(),
    runs<"value_zones_load">(),
    runs<"value_points_delete_all">(),
    runs<"value_points_save_as">(),
    runs<"value_points_load">(),
    runs<"value_trace">(),
    runs<"Value_Boreholes">(),
    runs<"options_environment">(),
    runs<"options_display_mode_global">(),
    runs<"options_display_mode_local">(),
    runs<"options_input_method_zones">(),
    runs<"options_input_method_CBC">(),
    {"worksheet_undo", [](CommandContext& context) { context.window.editor().run("tool_undo"); }},
    {"worksheet_redo", [](CommandContext& context) { context.window.editor().run("tool_redo"); }},
};

} // namespace

std::span<const CommandRow> editor_commands() {
    return rows;
}

} // namespace ui

#include "app/commands.h"

#include "app/workspace.h"

#include <algorithm>
#include <iterator>

namespace app {

namespace {

using enum MenuKind;

constexpr MenuEntry table[] = {
    {0, "menu_file", "&File", menu},
    {1, "file_new_model", "&New Model...", command},
    {1, "file_open_model", "&Open Model...", command},
    {1, "file_save_model_as", "&Save As...", model_command},
    {1, "file_import_model", "&Import Model...", command},
    {1, "file_SetDir", "Set &File Manager Path...", command},
    {1, "file_model_information", "&Model Information...", model_command},
    {1, "file_save_plot_as", "&Save Plot As...", model_command},
    {1, "file_print_plot", "&Print Plot...", model_command},
    {1, "file_animation", "&Animation...", model_command},
    {1, "RecentUsed(1)", "", command},
    {1, "RecentUsed(2)", "", command},
    {1, "RecentUsed(3)", "", command},
    {1, "RecentUsed(4)", "", command},
    {1, "RSS", "-", separator},
    {1, "File_Leave_Editor", "&Leave Editor", model_command},
    {1, "file_exit", "&Exit", command},

    {0, "menu_grid", "&Grid", menu},
    {1, "grid_mesh_size", "&Mesh Size...", model_command},
    {1, "grid_layer_type", "&Layer Type...", model_command},
    {1, "g1", "-", separator},
    {1, "grid_top_of_layers", "&Top of Layers", model_command},
    {1, "grid_bottom_of_layers", "&Bottom of Layers", model_command},
    {1, "mnuChemistryMineral", "&Property Zones", model_command},

    {0, "mnuType", "T&ype", menu},
    {1, "mnuTypeSettings", "&Settings...", model_command},
    {1, "mnuTypeCoupling", "&Coupling...", settings_command},
    {1, "-", "-", separator},
    {1, "mnuTypeInfo", "&Info / Results...", settings_command},

    {0, "mnuTime", "T&ime", menu},
    {1, "parameters_time", "Stress &Periods...", model_command},
    {1, "mnuOuterIteration", "&Non-Linear Iteration...", model_command},
    {1, "mnuSolver", "&Solver Parameters", submenu},
    {2, "mnuBiCGStab", "&BiCGStab...", settings_command},
    {2, "mnuTimeExplicitImplicit", "&NAG...", settings_command},
    {2, "mnuTimePLU", "&PLU...", settings_command},
    {1, "-", "-", separator},
    {1, "estimation_observations", "&Monitoring...", model_command},

    {0, "menu_parameters", "F&low", menu},
    {1, "Parameters_Starting_heads", "Initial Hydraulic &Heads", model_command},
    {1, "grid_ibound", "Flow &Boundaries", model_command},
    {1, "mnuFluidFlowRefDens", "Reference &Density...", settings_command},
    {1, "mnuFluidFlowTemp", "Fixed &Temperature Field", model_command},
    {1, "parameters_h_conductivity", "&Horizontal Hydraulic Conductivity", model_command},
    {1, "Parameters_v_conductivity", "&Vertical Hydraulic Conductivity", model_command},
    {1, "Parameters_Specific_Storage", "S&pecific Storage", model_command},
    {1, "parameters_transmissivity", "&Transmissivity", model_command},
    {1, "parameters_leakance", "Vertical &Leakance", model_command},
    {1, "Parameters_Storage_Coefficient", "Storage &Coefficient", model_command},
    {1, "Parameters_Specific_Yield", "Specific &Yield", model_command},
    {1, "mnuPermPor", "Initial &Permeability / Porosity", submenu},
    {2, "mnuPermPorGS", "Defined by Property &Zones...", settings_command},
    {2, "-", "-", separator},
    {2, "Parameters_effective_porosity", "&Set Porosity individually", model_command},
    {2, "mnuParametersPermeability", "Set &Permeability individually", model_command},
    {1, "-", "-", separator},
    {1, "mnuFluidFlowPrescribedFlow", "&Prescribed Flow Field", model_command},
    {1, "mnuFluidFlowRecharge", "&Flux", submenu},
    {2, "mnuFluidFlowRechargeTB", "&Top / Bottom", model_command},
    {2, "mnuFluidFlowRechargeVH", "&Front / Back", model_command},
    {2, "mnuFluidFlowRechargeLR", "&Left / Right", model_command},
    {1, "-", "-", separator},
    {1, "packages_wel1", "&Well", model_command},

    {0, "mnuHeat", "H&eat", menu},
    {1, "mnuHeatTemperature", "Initial &Temperature Field", model_command},
    {1, "mnuHeatBoundary", "Thermal &Boundaries", model_command},
    {1, "-", "-", separator},
    {1, "mnuHeatMatrix", "Thermal &Rock Properties...", model_command},
    {1, "mnuHeatHPF", "&Fluid Heat Production...", settings_command},
    {1, "-", "-", separator},
    {1, "mnuHeatPermafrost", "&Permafrost", submenu},
    {2, "mnuHeatPermafrostIce", "&Ice Content", model_command},
    {2, "mnuHeatPermafrostSolidus", "&Solidus Temperature", model_command},
    {2, "mnuHeatPermafrostLiquidus", "&Liquidus Temperature", model_command},
    {1, "-", "-", separator},
    {1, "mnuHeatBasal", "Constant &Heat Flow", model_command},
    {1, "-", "-", separator},
    {1, "mnuHeatWell", "&Well", model_command},

    {0, "mnuTransport", "Tr&ansport", menu},
    {1, "mnuTransportTracer", "&Tracer...", model_command},
    {1, "mnuTracerDistribution", "&Initial Tracer Distribution", submenu},
    {2, "mnuInitTracer", "&Constant Concentration ", model_command},
    {2, "mnuInitTracerIndividual", "&Variable Concentration", model_command},
    {1, "grid_icbund", "Transport &Boundaries", model_command},
    {1, "mnuTransportMatrix", "&Dispersion / Diffusion...", model_command},
    {1, "mnuTransportBox", "&Multiple Continua...", model_command},
    {1, "mnuTransportWell", "&Well", submenu},
    {2, "mnuTransportReinjectionConc", "Injected &Concentration(s)...", model_command},
    {2, "mnuTransportR", "&Re-inject Produced Water", model_command},

    {0, "mnuChemistry", "&Reaction", menu},
    {1, "mnuChemistrySurface", "Initial Internal &Surface", model_command},
    {1, "mnuChemistryMatrixBoth", "&Rock Composition", submenu},
    {2, "mnuChemistryMatrix", "Defined by Property &Zones...", model_command},
    {2, "mnuChemistryMatrixIndividual", "&Set Rock Compostion individually...", model_command},
    {1, "mnuChemistryFluid", "&Fluids Composition...", model_command},
    {1, "mnuChemistryFluidsDistribution", "Fluids &Distribution", model_command},
    {1, "mnuChemistryReaction", "&Reactions Properties...", model_command},

    {0, "menu_models", "&Models", menu},
    {1, "mnuBucketChemistry", "&Bucket Chemistry", submenu},
    {2, "mnuKalmex", "&KALMEX", model_command},
    {2, "mnuPhreeqc", "&PHREEQC", model_command},
    {1, "mnuTervexCreate", "Create TERVEX &Inputfile", model_command},
    {1, "mnuTervexSuite", "Create Input TERVEX &Suite", model_command},
    {1, "mnuTervexRun", "&Run TERVEX", model_command},
    {1, "mnuTervexSerial", "&Serialized Run", model_command},

    {0, "menu_tools", "&Tools", menu},
    {1, "mnuToolsPermeabilityEstimation", "&Permeability Estimator", model_command},
    {1, "run_digitizer", "&Digitizer", model_command},
    {1, "run_field_interpolator", "Field &Interpolator (BDDIS)...", model_command},
    {1, "run_field_generator", "Field &Generator (BDFGN)...", model_command},
    {1, "Tools_presentation", "&Presentation", model_command},
    {1, "mnuToolsResults", "&Result Viewer...", submenu},
    {2, "mnuToolsShowView", "&Spatial Distribution", model_command},
    {2, "mnuToolsShowTemp", "&Temporal Development", model_command},
    {2, "mnuToolsShowLog", "Monitoring &Logs", model_command},
    {2, "mnuToolsShowWeighted", "&Mass Balance Boundary", model_command},
    {2, "mnuToolsHistogram", "&Histogram", model_command},
    {1, "mnuToolsConvert", "&Convert Result Files...", submenu},
    {2, "mnuToolsConvertInput", "Convert Results to &Input...", model_command},
    {2, "mnuToolsConvertASCII", "Convert Data to &ASCII...", model_command},
    {2, "mnuToolsConvertBinary", "Convert Data to &Binary...", model_command},
    {2, "mnuToolsConvertTecPlot", "Convert &TecPlot Files...", model_command},
    {2, "mnuToolsConvertMayaVi", "Convert Results for &MayaVi...", model_command},
    {2, "mnuToolsConvertFormula", "Convert Results with &Formula", model_command},
    {1, "mnuExportZones", "&Export Property Zones", model_command},
    {1, "mnuToolsArea", "&Determine affected volume", model_command},

    {0, "menu_value", "&Value", menu},
    {1, "value_matrix_browse", "&Array...", model_command},
    {1, "value_matrix_reset", "&Reset Array...", model_command},
    {1, "value_zones", "&Zones", submenu},
    {2, "value_zones_delete_all", "&Delete All", model_command},
    {2, "value_zones_save_as", "&Save As...", model_command},
    {2, "value_zones_load", "&Load...", model_command},
    {1, "value_points", "&Points", submenu},
    {2, "value_points_delete_all", "&Delete All", model_command},
    {2, "value_points_save_as", "&Save As...", model_command},
    {2, "value_points_load", "&Load...", model_command},
    {1, "-", "-", separator},
    {1, "value_trace", "&Search And Modify...", model_command},
    {1, "Values_Results_Extractor", "&Results Extractor...", model_command},
    {1, "Value_Boreholes", "&Monitoring...", model_command},

    {0, "menu_options", "&Options", menu},
    {1, "options_maps", "&Maps...", model_command},
    {1, "options_environment", "&Environment...", model_command},
    {1, "options_display_mode", "&Display Mode", submenu},
    {2, "options_display_mode_global", "&Real-World ", model_command},
    {2, "options_display_mode_local", "&Local", model_command},
    {1, "options_input_method", "&Input Method", submenu},
    {2, "options_input_method_zones", "&Zones", model_command},
    {2, "options_input_method_CBC", "&Cell-By-Cell", model_command},

    {0, "menu_help", "&Help", menu},
    {1, "help_contents", "&Contents", command},
    {1, "help_search_for_help_on", "&Search For Help On...", command},
    {1, "help_about", "&About Tervex Desk...", command},
};

} // namespace

std::span<const MenuEntry> menu_table() {
    return table;
}

std::optional<base::Refusal> command_guard(std::string_view name, const Workspace* workspace) {
    const auto* const entry =
        std::find_if(std::begin(table), std::end(table),
                     [&](const MenuEntry& item) { return item.name == name; });
    if (entry == std::end(table)) {
        return std::nullopt;
    }
    const bool needs_settings = entry->kind == settings_command;
    if (!workspace && (needs_settings || entry->kind == model_command)) {
        return base::Refusal{"Message", "Create or Open a TD-model first."};
    }
    if (needs_settings && !workspace->files.has(".typ")) {
        return base::Refusal{"Message", "Check and save |Type|Settings first."};
    }
    return std::nullopt;
}

} // namespace app

#include "app/menustate.h"

#include "app/commands.h"
#include "app/recentfiles.h"
#include "base/failure.h"
#include "core/project.h"

#include <fmt/format.h>

#include <algorithm>
#include <initializer_list>
#include <string_view>

namespace app {

namespace {

struct Cell {
    int a, b;
};

// The item has its tick exactly when its cell holds 2.
struct TickRule {
    const char* item;
    Cell cell;
};

constexpr TickRule tick_table[] = {
    {"mnuPermPorGS", {1, 0}},
    {"mnuFluidFlowRefDens", {1, 5}},
    {"grid_layer_type", {1, 6}},
    {"grid_ibound", {1, 7}},
    {"Parameters_Specific_Yield", {6, 3}},
    {"mnuHeatTemperature", {2, 0}},
    {"mnuFluidFlowTemp", {2, 0}},
    {"mnuParametersPermeability", {2, 1}},
    {"Parameters_effective_porosity", {2, 2}},
    {"Parameters_Specific_Storage", {2, 3}},
    {"parameters_h_conductivity", {2, 4}},
    {"Parameters_v_conductivity", {2, 5}},
    {"parameters_leakance", {2, 6}},
    {"mnuHeatBoundary", {2, 7}},
    {"Parameters_Starting_heads", {2, 8}},
    {"parameters_transmissivity", {2, 9}},
    {"Parameters_Storage_Coefficient", {2, 10}},
    {"mnuChemistryMineral", {2, 11}},
    {"mnuChemistryFluidsDistribution", {2, 12}},
    {"mnuInitTracer", {2, 13}},
    {"mnuFluidFlowRechargeTB", {2, 14}},
    {"mnuFluidFlowPrescribedFlow", {3, 0}},
    {"packages_wel1", {3, 2}},
    {"mnuHeatWell", {3, 2}},
    {"mnuInitTracerIndividual", {3, 13}},
    {"mnuHeatPermafrostIce", {4, 0}},
    {"mnuHeatPermafrostLiquidus", {4, 6}},
    {"mnuHeatPermafrostSolidus", {4, 7}},
    {"mnuTimePLU", {7, 3}},
    {"mnuBiCGStab", {8, 3}},
    {"mnuTimeExplicitImplicit", {9, 3}},
    {"mnuTypeSettings", {9, 0}},
    {"mnuTypeCoupling", {9, 1}},
    {"mnuTypeInfo", {9, 2}},
    {"mnuTransportTracer", {9, 8}},
    {"mnuTransportMatrix", {9, 9}},
    {"mnuChemistryMatrix", {9, 10}},
    {"mnuChemistryFluid", {9, 11}},
    {"mnuHeatMatrix", {9, 13}},
    {"mnuChemistryReaction", {9, 14}},
    {"mnuTransportBox", {10, 6}},
    {"mnuTransportReinjectionConc", {10, 7}},
    {"mnuHeatHPF", {10, 8}},
    {"mnuHeatBasal", {10, 9}},
    {"mnuChemistryMatrixIndividual", {10, 10}},
    {"mnuChemistrySurface", {10, 11}},
    {"grid_icbund", {11, 2}},
    {"mnuFluidFlowRechargeVH", {3, 14}},
    {"mnuFluidFlowRechargeLR", {4, 14}},
};

constexpr const char* model_menus[] = {"menu_grid",       "mnuType",     "mnuTime",
                                       "menu_parameters", "mnuHeat",     "mnuTransport",
                                       "mnuChemistry",    "menu_models", "menu_tools"};
constexpr const char* editor_menus[] = {"menu_value", "menu_options"};
// Of the File menu.
constexpr const char* editor_file_items[] = {"file_save_plot_as", "file_print_plot",
                                             "File_Leave_Editor", "file_exit"};

class MenuTree {
public:
    MenuTree() {
        for (const MenuEntry& entry : menu_table()) {
            items_.push_back({entry.depth, entry.name, entry.caption, false, true, true});
        }
    }

    MenuItemState& operator[](std::string_view name) {
        const auto item =
            std::find_if(items_.begin(), items_.end(),
                         [&](const MenuItemState& state) { return state.name == name; });
        if (item == items_.end()) {
            throw base::RangeFailure(fmt::format("the menu has no item {}", name));
        }
        return *item;
    }

    void enable(std::initializer_list<const char*> names, bool on) {
        for (const char* name : names) {
            (*this)[name].enabled = on;
        }
    }

    void show(std::initializer_list<const char*> names, bool on) {
        for (const char* name : names) {
            (*this)[name].visible = on;
        }
    }

    std::vector<MenuItemState> take() { return std::move(items_); }

private:
    std::vector<MenuItemState> items_;
};

void refresh_by_layers(MenuTree& menu, const core::Project& project) {
    const bool several_layers = project.NZ() != 1;
    menu.enable({"Parameters_v_conductivity", "parameters_leakance"}, several_layers);
}

void refresh_storage(MenuTree& menu, const core::Project& project) {
    const int mode = project.integer("OPTIONS", "SIMULATION_MODE");
    if (mode == 1 || mode == 2) {
        menu.enable({"Parameters_Specific_Yield", "Parameters_Specific_Storage",
                     "Parameters_Storage_Coefficient"},
                    mode == 2);
    }
}

void refresh_layer_items(MenuTree& menu, const core::ModelFlags& flags) {
    const int orientation = flags.GridOrientation();
    if (flags(0, 0) == 1) {
        menu.show({"g1", "grid_top_of_layers", "grid_bottom_of_layers"}, false);
        menu.show({"grid_layer_type"}, true);
    } else if (flags(0, 0) == 0) {
        menu.show({"g1", "grid_top_of_layers", "grid_bottom_of_layers"}, true);
        if (orientation >= core::horizontal && orientation <= core::cylindrical) {
            menu.show({"grid_layer_type"}, orientation == core::horizontal);
        }
    }
    menu.enable({"grid_layer_type"}, orientation != core::heat_exchanger);
}

void refresh_ticks(MenuTree& menu, const core::ModelFlags& flags) {
    for (const TickRule& rule : tick_table) {
        menu[rule.item].ticked = flags.is_defined(rule.cell.a, rule.cell.b);
    }
    menu["parameters_time"].ticked = flags.is_defined(0, 3) || flags.is_defined(0, 2);
    menu["grid_mesh_size"].ticked = flags.is_defined(1, 2) && flags.is_defined(1, 3);

    const bool reinjected = flags.is_defined(1, 1);
    menu["mnuTransportR"].ticked = reinjected;
    menu.enable({"mnuTransportReinjectionConc"}, !reinjected);

    const bool density_saved = flags.is_defined(1, 5);
    menu["grid_top_of_layers"].ticked = density_saved || flags.is_defined(6, 5);
    menu["grid_bottom_of_layers"].ticked = density_saved || flags.is_defined(6, 6);
}

void refresh_flow_field(MenuTree& menu, const core::ModelFlags& flags) {
    const bool simulated = flags.FlowPrescribed() < 1;
    menu.enable(
        {"packages_wel1", "mnuHeatWell", "mnuTransportWell", "grid_ibound", "mnuFluidFlowRecharge"},
        simulated);
    menu.enable({"mnuFluidFlowPrescribedFlow"}, !simulated);
}

// A switch that is neither 0 nor 1 leaves its items as they were.
void enable_by(MenuTree& menu, int value, std::initializer_list<const char*> names) {
    if (value == 0 || value == 1) {
        menu.enable(names, value == 1);
    }
}

void refresh_processes(MenuTree& menu, const core::ModelFlags& flags) {
    enable_by(menu, flags.FlowActive(), {"menu_parameters", "mnuToolsPermeabilityEstimation"});
    enable_by(menu, flags.HeatActive(), {"mnuHeat"});
    if (flags.HeatActive() == 0 || flags.HeatActive() == 1) {
        menu.show({"mnuFluidFlowTemp"}, flags.HeatActive() == 0);
    }
    enable_by(menu, flags.TransportActive(), {"mnuTransport"});
    enable_by(menu, flags.Permafrost(), {"mnuHeatPermafrost"});
}

void refresh_chemistry(MenuTree& menu, const core::ModelFlags& flags) {
    constexpr int debye_hueckel = 1;
    constexpr int kinetic_mixture = 5;
    switch (flags.ChemistryMode()) {
    case 0:
        menu.enable({"mnuChemistry", "mnuKalmex", "mnuPhreeqc"}, false);
        break;
    case 1: {
        const bool phreeqc = flags.ActivityModel() == debye_hueckel;
        menu.enable({"mnuChemistry"}, true);
        menu.enable({"mnuChemistrySurface"}, false);
        menu.enable({"mnuPhreeqc"}, phreeqc);
        menu.enable({"mnuKalmex"}, !phreeqc);
        break;
    }
    case 2:
        menu.enable({"mnuChemistry", "mnuKalmex"}, true);
        menu.enable({"mnuPhreeqc"}, false);
        menu.enable({"mnuChemistrySurface"}, flags.ActivityModel() != kinetic_mixture);
        break;
    default:
        break;
    }
}

void set_orientation_captions(MenuTree& menu, int orientation) {
    if (orientation == core::vertical || orientation == core::cylindrical) {
        menu["grid_layer_type"].caption = "&Cross Section Options...";
        menu["grid_top_of_layers"].caption = "&Front of Vertical Cross Sections";
        menu["grid_bottom_of_layers"].caption = "&Back of Vertical Cross Sections";
    }
}

void set_editor(MenuTree& menu, bool open) {
    for (const char* name : editor_menus) {
        menu[name].visible = open;
    }
    for (const char* name : model_menus) {
        menu[name].visible = !open;
    }
    menu["File_Leave_Editor"].enabled = open;
    for (const MenuEntry& entry : menu_table()) {
        const bool is_command = entry.depth > 0 && entry.kind != MenuKind::separator;
        if (open && is_command && !works_in_editor(entry.name)) {
            menu[entry.name].enabled = false;
        }
    }
}

void set_recent(MenuTree& menu, const RecentFiles* recent) {
    bool any = false;
    for (int number = 1; number <= RecentFiles::count; ++number) {
        MenuItemState& item = menu[fmt::format("RecentUsed({})", number)];
        const std::string path = recent ? recent->path(number) : std::string();
        item.visible = !path.empty();
        item.caption = path.empty() ? std::string() : recent_caption(number, path);
        any = any || item.visible;
    }
    menu["RSS"].visible = any;
}

} // namespace

bool works_in_editor(std::string_view command) {
    std::string_view of_menu;
    for (const MenuEntry& entry : menu_table()) {
        of_menu = entry.depth == 0 ? entry.name : of_menu;
        if (entry.name == command) {
            break;
        }
    }
    const auto is_command = [&](const char* name) { return command == name; };
    return of_menu == "menu_value" || of_menu == "menu_options" || of_menu == "menu_help" ||
           std::any_of(std::begin(editor_file_items), std::end(editor_file_items), is_command);
}

std::vector<MenuItemState> Menu_Refresh(const core::Project& project, bool editor_open,
                                        const RecentFiles* recent) {
    MenuTree menu;
    // The order counts: later steps overrule earlier ones.
    refresh_by_layers(menu, project);
    refresh_storage(menu, project);
    refresh_layer_items(menu, project.flags);
    refresh_ticks(menu, project.flags);
    refresh_flow_field(menu, project.flags);
    refresh_processes(menu, project.flags);
    refresh_chemistry(menu, project.flags);
    set_orientation_captions(menu, project.flags.GridOrientation());
    set_editor(menu, editor_open);
    set_recent(menu, recent);
    return menu.take();
}

std::vector<MenuItemState> Menu_without_model(const RecentFiles* recent) {
    MenuTree menu;
    set_editor(menu, false);
    set_recent(menu, recent);
    for (const MenuEntry& entry : menu_table()) {
        const std::string_view name = entry.name;
        const bool model_menu =
            entry.kind == MenuKind::menu && name != "menu_file" && name != "menu_help";
        if (model_menu || entry.kind == MenuKind::model_command ||
            entry.kind == MenuKind::settings_command) {
            menu[name].enabled = false;
        }
    }
    return menu.take();
}

} // namespace app

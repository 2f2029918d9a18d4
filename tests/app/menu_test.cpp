#include "app/commands.h"
#include "app/menustate.h"
#include "app/newmodel.h"
#include "app/recentfiles.h"
#include "support/scripteduser.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace {

class Menu : public ::testing::Test {
protected:
    core::Project project_;

    app::MenuItemState item(const char* name, bool editor_open = false) const {
        return find(app::Menu_Refresh(project_, editor_open), name);
    }
    bool enabled(const char* name) const { return item(name).enabled; }
    bool visible(const char* name) const { return item(name).visible; }
    bool ticked(const char* name) const { return item(name).ticked; }

    std::set<std::string> ticks() const {
        std::set<std::string> names;
        for (const auto& state : app::Menu_Refresh(project_, false)) {
            if (state.ticked) {
                names.insert(state.name);
            }
        }
        return names;
    }

    static app::MenuItemState find(const std::vector<app::MenuItemState>& items, const char* name) {
        const auto found = std::find_if(items.begin(), items.end(),
                                        [&](const auto& state) { return state.name == name; });
        if (found == items.end()) {
            ADD_FAILURE() << "no item " << name;
            return {};
        }
        return *found;
    }
};

using Ticks = std::set<std::string>;

TEST_F(Menu, tree_is_well_formed) {
    std::set<std::string> names;
    int depth = 0;
    for (const app::MenuEntry& entry : app::menu_table()) {
        EXPECT_LE(entry.depth, depth + 1) << entry.name;
        depth = entry.depth;
        EXPECT_EQ(entry.kind == app::MenuKind::separator, std::string(entry.caption) == "-");
        EXPECT_EQ(entry.kind == app::MenuKind::menu, depth == 0) << entry.name;
        if (std::string(entry.name) != "-") {
            EXPECT_TRUE(names.insert(entry.name).second) << entry.name;
        }
    }
    EXPECT_EQ(names.size(), 144U);
}

TEST_F(Menu, monitoring_stands_in_the_time_menu) {
    EXPECT_EQ(item("mnuTimePLU").depth, 2);
    EXPECT_EQ(item("estimation_observations").depth, 1);
}

TEST_F(Menu, a_new_model_has_no_tick) {
    const support::TempFolder folder;
    support::ScriptedUser user;
    project_ = app::new_model(folder.path() / "m.td1", user).workspace->project;
    EXPECT_EQ(ticks(), Ticks{});
    EXPECT_FALSE(visible("g1"));
    EXPECT_FALSE(visible("grid_top_of_layers"));
    EXPECT_TRUE(visible("grid_layer_type"));
    EXPECT_FALSE(enabled("Parameters_v_conductivity"));
}

TEST_F(Menu, a_tick_needs_exactly_2) {
    project_.flags.set(9, 0, 1);
    project_.flags.set(10, 6, 1);
    EXPECT_EQ(ticks(), Ticks{});
    project_.flags.set(9, 0, 2);
    EXPECT_EQ(ticks(), Ticks{"mnuTypeSettings"});
}

TEST_F(Menu, mesh_size_needs_both_cells_and_periods_one_of_two) {
    project_.flags.set(1, 2, 2);
    EXPECT_FALSE(ticked("grid_mesh_size"));
    project_.flags.set(1, 3, 2);
    EXPECT_TRUE(ticked("grid_mesh_size"));
    project_.flags.set(0, 2, 2);
    EXPECT_TRUE(ticked("parameters_time"));
}

TEST_F(Menu, every_cell_ticks_its_own_items) {
    const auto ticks_of = [&](int a, int b) {
        project_ = core::Project();
        project_.flags.set(a, b, 2);
        return ticks();
    };
    EXPECT_EQ(ticks_of(2, 0), (Ticks{"mnuHeatTemperature", "mnuFluidFlowTemp"}));
    EXPECT_EQ(ticks_of(3, 2), (Ticks{"packages_wel1", "mnuHeatWell"}));
    EXPECT_EQ(ticks_of(3, 14), Ticks{"mnuFluidFlowRechargeVH"});
    EXPECT_EQ(ticks_of(4, 14), Ticks{"mnuFluidFlowRechargeLR"});
    EXPECT_EQ(ticks_of(6, 5), Ticks{"grid_top_of_layers"});
    EXPECT_EQ(ticks_of(1, 5),
              (Ticks{"mnuFluidFlowRefDens", "grid_top_of_layers", "grid_bottom_of_layers"}));
    EXPECT_EQ(ticks_of(1, 1), Ticks{"mnuTransportR"});
    EXPECT_FALSE(enabled("mnuTransportReinjectionConc"));
    EXPECT_EQ(ticks_of(7, 14), Ticks{}) << "a cell of no item";
}

TEST_F(Menu, layer_items_follow_geometry_and_orientation) {
    EXPECT_TRUE(visible("grid_top_of_layers") && visible("grid_layer_type"));
    EXPECT_EQ(item("grid_layer_type").caption, "&Layer Type...");
    project_.flags.set(1, 4, core::vertical);
    EXPECT_FALSE(visible("grid_layer_type"));
    EXPECT_EQ(item("grid_layer_type").caption, "&Cross Section Options...");
    EXPECT_EQ(item("grid_top_of_layers").caption, "&Front of Vertical Cross Sections");
    EXPECT_EQ(item("grid_bottom_of_layers").caption, "&Back of Vertical Cross Sections");
    project_.flags.set(0, 0, 1);
    EXPECT_TRUE(visible("grid_layer_type"));
    project_.flags.set(0, 0, 0);
    project_.flags.set(1, 4, core::heat_exchanger);
    EXPECT_TRUE(visible("grid_layer_type"));
    EXPECT_FALSE(enabled("grid_layer_type"));
    EXPECT_EQ(item("grid_layer_type").caption, "&Layer Type...");
}

TEST_F(Menu, storage_items_are_for_transient_models) {
    EXPECT_FALSE(enabled("Parameters_Specific_Storage"));
    project_.set_integer("OPTIONS", "SIMULATION_MODE", 2);
    EXPECT_TRUE(enabled("Parameters_Specific_Storage"));
    project_.set_integer("OPTIONS", "SIMULATION_MODE", 3);
    EXPECT_TRUE(enabled("Parameters_Specific_Storage")) << "as it was at the start";
}

TEST_F(Menu, heat_off_offers_a_fixed_temperature_field) {
    EXPECT_FALSE(enabled("mnuHeat"));
    EXPECT_TRUE(visible("mnuFluidFlowTemp"));
    project_.flags.set(9, 5, 1);
    EXPECT_TRUE(enabled("mnuHeat"));
    EXPECT_FALSE(visible("mnuFluidFlowTemp"));
    EXPECT_FALSE(enabled("mnuHeatPermafrost"));
}

TEST_F(Menu, a_prescribed_flow_field_greys_wells_and_boundaries) {
    EXPECT_TRUE(enabled("grid_ibound") && enabled("packages_wel1"));
    EXPECT_FALSE(enabled("mnuFluidFlowPrescribedFlow"));
    project_.flags.set(3, 1, 1);
    EXPECT_FALSE(enabled("grid_ibound") || enabled("packages_wel1") || enabled("mnuHeatWell") ||
                 enabled("mnuTransportWell") || enabled("mnuFluidFlowRecharge"));
    EXPECT_TRUE(enabled("mnuFluidFlowPrescribedFlow"));
}

TEST_F(Menu, chemistry_items_follow_mode_and_activity_model) {
    const auto state = [&](int mode, int activity) {
        project_.flags.set(9, 7, mode);
        project_.flags.set(9, 12, activity);
        std::string text;
        for (const char* name :
             {"mnuChemistry", "mnuChemistrySurface", "mnuKalmex", "mnuPhreeqc"}) {
            text += enabled(name) ? '1' : '0';
        }
        return text;
    };
    EXPECT_EQ(state(0, 0), "0100");
    EXPECT_EQ(state(1, 0), "1010");
    EXPECT_EQ(state(1, 1), "1001");
    EXPECT_EQ(state(1, 3), "1010");
    EXPECT_EQ(state(2, 1), "1110");
    EXPECT_EQ(state(2, 5), "1010");
    EXPECT_EQ(state(3, 0), "1111");
}

TEST_F(Menu, the_editor_replaces_the_model_menus) {
    EXPECT_FALSE(item("menu_value").visible || item("menu_options").visible);
    EXPECT_FALSE(item("File_Leave_Editor").enabled);
    EXPECT_TRUE(item("menu_value", true).visible && item("menu_options", true).visible);
    EXPECT_TRUE(item("File_Leave_Editor", true).enabled);
    EXPECT_TRUE(item("file_exit", true).enabled && item("file_print_plot", true).enabled);
    EXPECT_FALSE(item("file_new_model", true).enabled || item("RecentUsed(1)", true).enabled);
    EXPECT_FALSE(item("menu_grid", true).visible || item("menu_tools", true).visible);
    EXPECT_TRUE(item("menu_file", true).visible && item("menu_help", true).visible);
}

TEST_F(Menu, recent_models_show_with_their_separator) {
    const support::TempFolder folder;
    app::RecentFiles recent(folder.path());
    EXPECT_FALSE(find(app::Menu_Refresh(project_, false, &recent), "RSS").visible);
    recent.add("/m.td1");
    const auto items = app::Menu_without_model(&recent);
    EXPECT_EQ(find(items, "RecentUsed(1)").caption, "&1 /m.td1");
    EXPECT_TRUE(find(items, "RSS").visible);
    EXPECT_FALSE(find(items, "RecentUsed(2)").visible);
}

TEST_F(Menu, without_a_model_only_file_and_help_work) {
    const auto items = app::Menu_without_model();
    EXPECT_FALSE(find(items, "menu_grid").enabled || find(items, "file_save_model_as").enabled);
    EXPECT_TRUE(find(items, "menu_help").enabled && find(items, "file_open_model").enabled);
}

TEST_F(Menu, commands_are_guarded) {
    EXPECT_FALSE(app::command_guard("file_new_model", nullptr));
    const auto refusal = app::command_guard("mnuTervexCreate", nullptr);
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->title, "Message");
    EXPECT_EQ(refusal->text, "Create or Open a TD-model first.");

    const support::TempFolder folder;
    support::ScriptedUser user;
    const auto made = app::new_model(folder.path() / "m.td1", user);
    EXPECT_FALSE(app::command_guard("mnuTypeSettings", &*made.workspace));
    EXPECT_EQ(app::command_guard("mnuTypeCoupling", &*made.workspace)->text,
              "Check and save |Type|Settings first.");
}

} // namespace

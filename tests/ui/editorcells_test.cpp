// Sessions of the worksheet: opening, cells, layers, leaving.
#include "editorfixture.h"

#include "core/arraystore.h"
#include "sim/periods.h"
#include "ui/toolbar.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>

#include <cmath>
#include <limits>

namespace {

using base::Answer;

class EditorCells : public support::EditorFixture {
protected:
    std::vector<std::string> visible_menus() {
        std::vector<std::string> names;
        for (const QAction* menu : window.menuBar()->actions()) {
            if (menu->isVisible()) {
                names.push_back(menu->objectName().toStdString());
            }
        }
        return names;
    }

    // A stroke of the value 25 is begun in the first cell.
    void begin_copying() {
        make_model(6, 4);
        open();
        tool("cell_copy");
        set_cell(1, 1, "25");
        press(cell(1, 1));
    }
};

TEST_F(EditorCells, the_menus_change_and_come_back) {
    make_model(6, 4);
    const auto before = visible_menus();
    open();
    EXPECT_EQ(visible_menus(),
              (std::vector<std::string>{"menu_file", "menu_value", "menu_options", "menu_help"}));
    EXPECT_TRUE(action("value_zones").isEnabled());
    EXPECT_FALSE(action("value_points").isEnabled());
    window.run_command("mnuHeatBoundary");
    EXPECT_EQ(sheet().request().Current_Parameter(), 1402);
    leave(Answer::no);
    EXPECT_EQ(visible_menus(), before);
    EXPECT_TRUE(names_with(".T").empty());
}

TEST_F(EditorCells, every_command_of_the_worksheet_opens_its_session) {
    make_model(3, 2, 2);
    for (const grid::WorksheetCommand& command : grid::worksheet_commands()) {
        window.run_command(command.command);
        ASSERT_TRUE(editor().is_open()) << command.command;
        EXPECT_EQ(sheet().request().Current_Parameter(), command.number);
        leave(Answer::no, sheet().request().Edit_Caption);
    }
}

TEST_F(EditorCells, a_click_opens_the_value_dialog_and_Yes_keeps_the_value) {
    make_model(6, 4);
    open();
    in_dialog([&] { click(cell(3, 2)); }, "Specify_One_Real",
              [](QDialog& dialog) {
                  EXPECT_EQ(dialog.windowTitle(), "Cell Value");
                  auto& field = widget<QLineEdit>(dialog, "Value_1");
                  EXPECT_EQ(field.text(), "10");
                  support::type_into(field, "25");
                  QTest::keyClick(&field, Qt::Key_Return);
              });
    leave(Answer::yes);
    std::vector<float> expected(24, 10);
    expected[6 + 2] = 25;
    EXPECT_EQ(file_values(".tem"), expected);
    EXPECT_TRUE(desk.model()->project.flags.is_defined(2, 0));
}

TEST_F(EditorCells, Cancel_stays_and_No_restores_byte_for_byte) {
    make_model(6, 4, 2);
    open();
    leave(Answer::yes);
    const auto before = all_files();
    open();
    set_cell(1, 1, "11");
    key(Qt::Key_PageDown);
    EXPECT_EQ(sheet().Current_Layer(), 2);
    set_cell(2, 1, "12");
    leave(Answer::cancel);
    ASSERT_TRUE(editor().is_open());
    EXPECT_EQ(sheet().Current_Layer(), 2);
    EXPECT_EQ(sheet().cell(1, 2, 1), 12);
    EXPECT_FALSE(names_with(".T1402").empty());
    leave(Answer::no);
    EXPECT_EQ(all_files(), before);
}

TEST_F(EditorCells, closing_the_window_leaves_the_editor) {
    make_model(6, 4);
    open();
    user.expect_question("Temperature", "Save changes to Temperature?", Answer::cancel);
    EXPECT_FALSE(window.close());
    EXPECT_TRUE(window.isVisible());
    user.expect_question("Temperature", "Save changes to Temperature?", Answer::no);
    EXPECT_TRUE(window.close());
    EXPECT_FALSE(editor().is_open());
}

TEST_F(EditorCells, a_refused_value_keeps_the_dialog) {
    make_model(6, 4);
    open("mnuChemistryMineral");
    in_dialog([&] { click(cell(1, 1)); }, "Specify_One_Real",
              [&](QDialog& dialog) {
                  auto& field = widget<QLineEdit>(dialog, "Value_1");
                  for (const char* text : {"0", "16"}) {
                      user.expect_message("Error", "Please enter a value between 1 and 15.");
                      support::type_into(field, text);
                      widget<QPushButton>(dialog, "cmdOK").click();
                      EXPECT_TRUE(dialog.isVisible());
                      EXPECT_EQ(dialog.focusWidget(), &field);
                      EXPECT_EQ(field.selectedText(), text);
                  }
                  dialog.reject();
              });
    EXPECT_EQ(sheet().cell(1, 1, 1), 1);
    leave(Answer::no, "Property Zones");
}

TEST_F(EditorCells, two_and_three_values_go_to_their_arrays) {
    make_model(3, 2, 2);
    open("parameters_h_conductivity");
    type_values([&] { click(cell(2, 1)); }, {"0.5", "7"}, "cmdOK", "Specify_Two_values");
    EXPECT_EQ(sheet().cell(2, 1, 1), 0);
    leave(Answer::yes, "Horizontal Hydr. Conductivity [L/T]");
    open("mnuFluidFlowPrescribedFlow");
    type_values([&] { click(cell(3, 2)); }, {"1", "2", "3"}, "cmdOK", "Specify_Three_values");
    for (int k = 1; k <= 3; ++k) {
        EXPECT_EQ(sheet().cell(k, 3, 2), float(k));
    }
    leave(Answer::no, "Prescribed Flow");
}

TEST_F(EditorCells, the_layer_spinner_and_page_keys_change_the_layer) {
    make_model(6, 4, 3);
    open();
    auto& spin = window.tools().layer_spin();
    EXPECT_TRUE(spin.isEnabled());
    EXPECT_EQ(spin.maximum(), 3);
    set_cell(1, 1, "11");
    key(Qt::Key_PageDown);
    EXPECT_EQ(spin.value(), 2);
    EXPECT_EQ(file_values(".tem")[0], 11);
    const int beeps = user.beeps();
    key(Qt::Key_PageDown);
    key(Qt::Key_PageDown);
    EXPECT_EQ(user.beeps(), beeps + 1);
    spin.setValue(1);
    EXPECT_EQ(sheet().Current_Layer(), 1);
    leave(Answer::no);
    EXPECT_FALSE(spin.isEnabled());
}

TEST_F(EditorCells, one_layer_has_no_spinner) {
    make_model(6, 4);
    open();
    EXPECT_FALSE(window.tools().layer_spin().isEnabled());
    leave(Answer::no);
}

TEST_F(EditorCells, the_status_bar_shows_cell_place_and_values) {
    make_model(20, 4);
    open();
    EXPECT_EQ(pane(3), "Temperature [°C]; Steady state");
    move_to(cell(12, 3));
    EXPECT_EQ(pane(1), "0012,0003");
    EXPECT_EQ(pane(5), "+1.000E+01");
    QEvent gone(QEvent::Leave);
    QApplication::sendEvent(view().viewport(), &gone);
    EXPECT_EQ(pane(5), "");
    QEnterEvent back(cell(12, 3), cell(12, 3), view().viewport()->mapToGlobal(cell(12, 3)));
    QApplication::sendEvent(view().viewport(), &back);
    EXPECT_EQ(pane(5), "+1.000E+01") << "as soon as a dialog has closed";
    move_to(QPoint(1, 1));
    EXPECT_EQ(pane(1), "");
    EXPECT_EQ(pane(5), "---");
    sheet().set_array(1, core::LayerValues(80, std::numeric_limits<float>::quiet_NaN()));
    move_to(cell(12, 3));
    EXPECT_EQ(pane(5), "###");
    leave(Answer::no);
}

TEST_F(EditorCells, a_click_outside_the_grid_beeps) {
    make_model(6, 4);
    click(cell(1, 1)); // without an editor
    EXPECT_EQ(user.beeps(), 1);
    open();
    click(QPoint(1, 1));
    EXPECT_EQ(user.beeps(), 2);
    leave(Answer::no);
}

TEST_F(EditorCells, arrows_move_the_current_cell_and_Enter_asks_for_its_value) {
    make_model(3, 2);
    open();
    const int beeps = user.beeps();
    key(Qt::Key_Left);
    EXPECT_EQ(user.beeps(), beeps + 1);
    key(Qt::Key_Right);
    key(Qt::Key_Down);
    type_values([&] { key(Qt::Key_Return); }, {"44"});
    EXPECT_EQ(sheet().cell(1, 2, 2), 44);
    EXPECT_EQ(sheet().Current_Column(), 2);
    leave(Answer::no);
}

TEST_F(EditorCells, cell_copy_draws_with_mouse_and_arrows_as_one_step) {
    begin_copying();
    move_to(cell(4, 1)); // jumps over two cells
    release(cell(4, 1));
    for (int column = 1; column <= 4; ++column) {
        EXPECT_EQ(sheet().cell(1, column, 1), 25);
    }
    key(Qt::Key_Down);
    EXPECT_EQ(sheet().cell(1, 4, 2), 25);
    tool("undo");
    tool("undo");
    EXPECT_EQ(sheet().cell(1, 4, 1), 10);
    EXPECT_EQ(sheet().cell(1, 2, 1), 10);
    EXPECT_EQ(sheet().cell(1, 1, 1), 25);
    leave(Answer::no);
}

TEST_F(EditorCells, a_stroke_ends_where_a_command_comes_in_between) {
    begin_copying();
    move_to(cell(3, 1));
    tool("undo");
    EXPECT_EQ(sheet().cell(1, 3, 1), 10);
    EXPECT_EQ(sheet().undo_name(), "Cell 1,1");
    move_to(cell(4, 1));
    release(cell(4, 1));
    EXPECT_EQ(sheet().cell(1, 4, 1), 10);
    leave(Answer::no);
}

TEST_F(EditorCells, layer_copy_takes_the_layer_along) {
    make_model(3, 2, 2);
    open();
    set_cell(2, 2, "33");
    tool("layer_copy");
    key(Qt::Key_PageDown);
    EXPECT_EQ(sheet().cell(1, 2, 2), 33);
    leave(Answer::yes);
    EXPECT_EQ(file_values(".tem", 2), file_values(".tem", 1));
}

TEST_F(EditorCells, undo_and_redo_name_their_step) {
    make_model(3, 2);
    open();
    EXPECT_FALSE(action("tool_undo").isEnabled());
    set_cell(2, 2, "33");
    EXPECT_TRUE(action("tool_undo").toolTip().contains("Cell 2,2"));
    tool("undo");
    EXPECT_EQ(sheet().cell(1, 2, 2), 10);
    tool("redo");
    EXPECT_EQ(sheet().cell(1, 2, 2), 33);
    leave(Answer::yes);
    EXPECT_EQ(file_values(".tem")[4], 33);
}

TEST_F(EditorCells, tops_are_asked_for_before_the_menus_change) {
    make_model(3, 2, 2);
    change([](app::Workspace& model) { model.project.flags.mark_defined(6, 6); });
    const auto menus = visible_menus();
    user.expect_question("Top of Layers (TOP)",
                         "The elevation of the aquifer bottom has been specified. Use it for the "
                         "elevation of the aquifer top?",
                         Answer::cancel);
    window.run_command("grid_top_of_layers");
    EXPECT_FALSE(editor().is_open());
    EXPECT_EQ(visible_menus(), menus);
    EXPECT_TRUE(names_with(".T").empty());
}

TEST_F(EditorCells, a_folder_in_the_place_of_an_array_keeps_the_editor_shut) {
    make_model(3, 2);
    std::filesystem::create_directory(folder.path() / "m.tem");
    user.expect_failure("", base::Reaction::leave);
    window.run_command("mnuHeatTemperature");
    EXPECT_FALSE(editor().is_open());
    EXPECT_FALSE(desk.editor_open());
    open("mnuHeatBoundary");
    leave(Answer::no, "Thermal Boundary Condition");
}

TEST_F(EditorCells, a_failing_Yes_keeps_the_editor_with_its_values) {
    make_model(3, 2);
    open();
    set_cell(1, 1, "25");
    const auto grid_file = folder.path() / "m.xy";
    const std::string saved = folder.read("m.xy");
    std::filesystem::remove(grid_file);
    std::filesystem::create_directory(grid_file);
    std::filesystem::create_directory(grid_file / "in the way");
    user.expect_question("Temperature", "Save changes to Temperature?", Answer::yes);
    user.expect_failure("", base::Reaction::leave);
    EXPECT_FALSE(editor().leave());
    ASSERT_TRUE(editor().is_open());
    EXPECT_FALSE(names_with(".T1402").empty());
    EXPECT_EQ(sheet().cell(1, 1, 1), 25);
    std::filesystem::remove_all(grid_file);
    folder.write("m.xy", saved);
    leave(Answer::yes);
    EXPECT_EQ(file_values(".tem")[0], 25);
}

TEST_F(EditorCells, another_program_that_writes_the_array_is_told_of) {
    make_model(3, 2, 2);
    open();
    set_cell(1, 1, "25");
    const auto file = folder.path() / "m.tem";
    std::filesystem::last_write_time(file, std::filesystem::last_write_time(file) +
                                               std::chrono::seconds(5));
    user.expect_message("Temperature",
                        "m.tem has been changed by another program. The layer that you see is "
                        "kept; other layers are as that program left them. Answer No when you "
                        "leave the editor to return to the data before the editor was opened.");
    key(Qt::Key_PageDown);
    EXPECT_EQ(file_values(".tem")[0], 25);
    leave(Answer::yes);
}

TEST_F(EditorCells, periods_have_a_box_and_a_dialog_before_leaving) {
    make_model(3, 2);
    change([](app::Workspace& model) {
        model.project.set_integer("OPTIONS", "SIMULATION_MODE", 2);
        sim::PeriodTable table;
        table.rows[1].active = true;
        table.save(model.files);
    });
    open();
    auto& box = window.tools().period_box();
    EXPECT_EQ(box.count(), 2);
    EXPECT_EQ(pane(3), "Temperature [°C];  Period 1");
    box.setCurrentIndex(1);
    emit box.activated(1);
    EXPECT_EQ(sheet().Current_Period(), 2);
    EXPECT_EQ(pane(3), "Temperature [°C];  Period 2");
    in_dialog([&] { EXPECT_FALSE(editor().leave()); }, "Transient_data",
              [](QDialog& dialog) { dialog.reject(); });
    const auto leave_behind_periods = [&](const char* caption) {
        user.expect_question(caption, std::string("Save changes to ") + caption + "?", Answer::no);
        in_dialog([&] { EXPECT_TRUE(editor().leave()); }, "Transient_data",
                  [](QDialog& dialog) { widget<QPushButton>(dialog, "cmdOK").click(); });
    };
    leave_behind_periods("Temperature");
    open("mnuHeatPermafrostIce");
    EXPECT_EQ(pane(3), "Ice Content [-];  Period 2") << "the next item begins where the last ended";
    EXPECT_EQ(box.currentText(), "2");
    leave_behind_periods("Ice Content");
    ASSERT_TRUE(window.open_model(folder.path() / "m.td1"));
    open();
    EXPECT_EQ(pane(3), "Temperature [°C];  Period 1") << "as long as the model is open";
    emit box.activated(1);
    leave_behind_periods("Temperature");
    change(
        [](app::Workspace& model) { model.project.set_integer("OPTIONS", "SIMULATION_MODE", 1); });
    open();
    EXPECT_EQ(sheet().Current_Period(), 1) << "of a steady model no other one can be reached";
    leave(Answer::no);
}

TEST_F(EditorCells, points_are_digitized_and_erased) {
    make_model(6, 4);
    open("run_digitizer");
    EXPECT_TRUE(action("value_points").isEnabled());
    tool("digitizer");
    EXPECT_EQ(pane(4), "Digitizer; Left Mouse Button = Digitize; Ctrl+Left Mouse Button = Erase");
    click(cell(2, 2));
    click(cell(4, 3));
    ASSERT_EQ(sheet().points().size(), 2U);
    click(cell(4, 3) + QPoint(3, 0), Qt::LeftButton, Qt::ControlModifier);
    ASSERT_EQ(sheet().points().size(), 1U);
    EXPECT_NEAR(sheet().points()[0].x, 15, 1);
    const int beeps = user.beeps();
    click(cell(4, 3), Qt::LeftButton, Qt::ControlModifier);
    EXPECT_EQ(user.beeps(), beeps + 1);
    leave(Answer::yes, "Digitizer");
    EXPECT_FALSE(names_with(".d97").empty());
}

} // namespace

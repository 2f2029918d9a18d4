#include "editordialogfixture.h"

#include "grid/mesheditor.h"
#include "grid/worksheettools.h"

#include <QApplication>
#include <QLabel>
#include <QTest>

namespace {

using support::EditorDialogFixture;

constexpr int porosity = 6, storage = 7, temperature = 1402, property_zones = 1403, flow = 1408;

TEST_F(EditorDialogFixture, a_cell_gets_the_typed_value_and_stays_the_current_one) {
    open_worksheet(temperature);
    worksheet->move_to(3, 2);
    in_dialog([&] { EXPECT_TRUE(ui::edit_cell_values(*editor)); }, "Specify_One_Real",
              [&](QDialog& dialog) {
                  EXPECT_EQ(dialog.windowTitle(), "Cell Value");
                  EXPECT_EQ(widget<QLabel>(dialog, "Place_Label").text(),
                            "Column: 3  Row: 2  Layer: 1");
                  EXPECT_EQ(text_of(dialog, "Value_1"), "10");
                  QTest::keyClicks(&widget<QLineEdit>(dialog, "Value_1"), "25");
                  EXPECT_EQ(text_of(dialog, "Value_1"), "25") << "typing replaces the value";
                  QTest::keyClick(&dialog, Qt::Key_Return);
              });
    EXPECT_EQ(worksheet->cell(1, 3, 2), 25);
    EXPECT_EQ(worksheet->cell(1, 2, 2), 10);
    EXPECT_EQ(worksheet->Current_Column(), 3);
    EXPECT_TRUE(worksheet->undo());
    EXPECT_EQ(worksheet->cell(1, 3, 2), 10);
}

TEST_F(EditorDialogFixture, OK_without_a_change_is_no_step_and_Cancel_changes_nothing) {
    open_worksheet(temperature);
    worksheet->set_array(1, core::LayerValues(6, 1.0F / 3));
    in_dialog([&] { EXPECT_TRUE(ui::edit_cell_values(*editor)); }, "Specify_One_Real",
              [&](QDialog& dialog) { press(dialog, "cmdOK"); });
    EXPECT_EQ(worksheet->cell(1, 1, 1), 1.0F / 3);
    in_dialog([&] { EXPECT_FALSE(ui::edit_cell_values(*editor)); }, "Specify_One_Real",
              [&](QDialog& dialog) {
                  type(dialog, "Value_1", "7");
                  QTest::keyClick(&dialog, Qt::Key_Escape);
              });
    EXPECT_EQ(worksheet->cell(1, 1, 1), 1.0F / 3);
    EXPECT_TRUE(worksheet->undo()) << "the array";
    EXPECT_FALSE(worksheet->undo());
}

TEST_F(EditorDialogFixture, a_refused_value_keeps_the_dialog_with_the_cursor_in_its_field) {
    open_worksheet(property_zones);
    user.expect_message("Error", "Please enter a value between 1 and 15.");
    user.expect_message("Error", "Please enter a value between 1 and 15.");
    in_dialog([&] { ui::edit_cell_values(*editor); }, "Specify_One_Real",
              [&](QDialog& dialog) {
                  QLineEdit& field = widget<QLineEdit>(dialog, "Value_1");
                  for (const char* const text : {"0", "16"}) {
                      type(dialog, "Value_1", text);
                      press(dialog, "cmdOK");
                      EXPECT_TRUE(dialog.isVisible());
                      EXPECT_EQ(dialog.focusWidget(), &field);
                      EXPECT_EQ(field.selectedText(), text);
                  }
                  press(dialog, "cmdCancel");
              });
    EXPECT_EQ(worksheet->cell(1, 1, 1), 1);
    leave(base::Answer::no);
    open_worksheet(porosity);
    user.expect_message("Error", "Please enter a positive value.");
    in_dialog([&] { ui::reset_array(*editor); }, "Reset_Array",
              [&](QDialog& dialog) {
                  type(dialog, "Value_1", "-1");
                  press(dialog, "cmdOK");
                  press(dialog, "cmdCancel");
              });
}

TEST_F(EditorDialogFixture, two_and_three_values_have_a_field_each) {
    open_worksheet(storage);
    in_dialog([&] { ui::edit_cell_values(*editor); }, "Specify_Two_values",
              [&](QDialog& dialog) {
                  EXPECT_EQ(text_of(dialog, "Value_1"), "0.0001");
                  EXPECT_EQ(text_of(dialog, "Value_2"), "0");
                  type(dialog, "Value_2", "3");
                  press(dialog, "cmdOK");
              });
    EXPECT_EQ(worksheet->Cell_Values(), (std::vector<float>{1E-4F, 3}));
    leave(base::Answer::no);
    open_worksheet(flow);
    in_dialog([&] { ui::edit_cell_values(*editor); }, "Specify_Three_values",
              [&](QDialog& dialog) {
                  EXPECT_EQ(widget<QLabel>(dialog, "Prompt_Line").text(),
                            "Add values for Vx / Vy / Vz");
                  type(dialog, "Value_1", "1");
                  type(dialog, "Value_3", "2,5");
                  press(dialog, "cmdOK");
              });
    EXPECT_EQ(worksheet->Cell_Values(), (std::vector<float>{1, 0, 2})) << "a comma ends a number";
}

TEST_F(EditorDialogFixture, a_zone_keeps_its_value_and_gives_it_to_the_cells_on_demand) {
    open_worksheet(temperature);
    const grid::ZoneNode nodes[] = {{1, 1}, {19, 1}, {19, 9}, {1, 9}};
    const float nothing[] = {0};
    ASSERT_FALSE(grid::add_zone(*worksheet, nodes, nothing));
    in_dialog([&] { ui::edit_zone_values(*editor, 1); }, "Specify_One_Real",
              [&](QDialog& dialog) {
                  EXPECT_EQ(dialog.windowTitle(), "Zone Value");
                  EXPECT_EQ(widget<QLabel>(dialog, "Place_Label").text(), "Zone: 1");
                  type(dialog, "Value_1", "30");
                  press(dialog, "cmdOK");
              });
    EXPECT_EQ(worksheet->zones()[0].value, 30);
    EXPECT_EQ(worksheet->cell(1, 1, 1), 10);
    in_dialog([&] { ui::edit_zone_values(*editor, 1); }, "Specify_One_Real",
              [&](QDialog& dialog) {
                  type(dialog, "Value_1", "40");
                  press(dialog, "cmdTransfer");
              });
    EXPECT_EQ(worksheet->zones()[0].value, 40);
    EXPECT_EQ(worksheet->array(1), (core::LayerValues{40, 40, 10, 10, 10, 10}));
    EXPECT_TRUE(worksheet->undo()) << "value and transfer are one step";
    EXPECT_EQ(worksheet->zones()[0].value, 30);
    EXPECT_EQ(worksheet->cell(1, 1, 1), 10);
}

TEST_F(EditorDialogFixture, a_new_zone_proposes_the_default_where_its_0_would_be_refused) {
    open_worksheet(property_zones);
    core::Zone zone;
    zone.nodes = 3;
    zone.x = {0, 1, 19, 19};
    zone.y = {0, 1, 1, 9};
    core::Close_Zone(zone);
    worksheet->set_zones({zone});
    in_dialog([&] { ui::edit_zone_values(*editor, 1); }, "Specify_One_Real",
              [&](QDialog& dialog) {
                  EXPECT_EQ(text_of(dialog, "Value_1"), "1");
                  press(dialog, "cmdCancel");
              });
    EXPECT_EQ(worksheet->zones()[0].value, 0) << "Cancel keeps what the zone has";
    in_dialog([&] { ui::edit_zone_values(*editor, 1); }, "Specify_One_Real",
              [&](QDialog& dialog) { press(dialog, "cmdOK"); });
    EXPECT_EQ(worksheet->zones()[0].value, 1) << "OK keeps what it shows";
    EXPECT_TRUE(worksheet->undo());
    leave(base::Answer::no);
    open_worksheet(temperature);
    worksheet->set_zones({zone});
    in_dialog([&] { ui::edit_zone_values(*editor, 1); }, "Specify_One_Real",
              [&](QDialog& dialog) {
                  EXPECT_EQ(text_of(dialog, "Value_1"), "0");
                  press(dialog, "cmdCancel");
              });
}

TEST_F(EditorDialogFixture, a_layer_is_reset_behind_its_caution) {
    open_worksheet(temperature);
    in_dialog([&] { ui::reset_array(*editor); }, "Reset_Array",
              [&](QDialog& dialog) {
                  EXPECT_EQ(dialog.windowTitle(), "Reset Array");
                  type(dialog, "Value_1", "12.5");
                  press(dialog, "cmdOK");
              });
    EXPECT_EQ(worksheet->array(1), core::LayerValues(6, 12.5F));
}

TEST_F(EditorDialogFixture, sizes_can_be_typed_while_factors_wait_for_the_refinement) {
    make_model(3, 2, 2);
    const app::Workspace& shown = *desk.model();
    grid::MeshEditor laid_out(shown.project, shown.files);
    const auto edit = [&](grid::MeshEditor& mesh) {
        return [&] { ui::edit_mesh_size(desk, mesh, shown, &window); };
    };
    in_dialog(edit(laid_out), "GridSize", [&](QDialog& dialog) {
        EXPECT_FALSE(widget<QLineEdit>(dialog, "txtColumnFactor").isEnabled());
        type(dialog, "txtRowSize", "25");
        press(dialog, "cmdOK");
    });
    EXPECT_EQ(laid_out.grid().Row_Height[0], 25);
    change([](app::Workspace& changed) { changed.project.flags.mark_defined(1, 3); });
    grid::MeshEditor refining(desk.model()->project, desk.model()->files);
    user.expect_message("Error", "Please enter a positive value!");
    user.expect_message("Error", "Valid range is 1 to 10");
    in_dialog(edit(refining), "GridSize", [&](QDialog& dialog) {
        type(dialog, "txtColumnSize", "0");
        press(dialog, "cmdOK");
        EXPECT_EQ(dialog.focusWidget()->objectName(), "txtColumnSize");
        type(dialog, "txtColumnSize", "5");
        type(dialog, "txtLayerFactor", "11");
        press(dialog, "cmdOK");
        EXPECT_EQ(dialog.focusWidget()->objectName(), "txtLayerFactor");
        type(dialog, "txtLayerFactor", "10");
        press(dialog, "cmdOK");
    });
    EXPECT_EQ(refining.grid().Column_Width[0], 5);
    EXPECT_EQ(refining.division().layers, (std::vector<int>{10, 1}));
}

} // namespace

#include "editordialogfixture.h"

#include "base/paths.h"
#include "base/textfile.h"
#include "grid/worksheettools.h"
#include "sim/periods.h"

#include <QTableWidget>

namespace {

using support::EditorDialogFixture;

constexpr int temperature = 1402, digitizer = 97;

class PeriodDialogs : public EditorDialogFixture {
protected:
    void open_transient() {
        make_model(2, 1);
        change([](app::Workspace& changed) {
            changed.project.set_integer("OPTIONS", "SIMULATION_MODE", 2);
            sim::PeriodTable table;
            table.unit = 4;
            for (const std::size_t period : {0U, 1U, 3U}) {
                table.rows[period].active = true;
                table.rows[period].length = 365.25;
            }
            table.save(changed.files);
        });
        open_worksheet(temperature);
    }
    static std::string text_at(QDialog& dialog, int row, int column) {
        return widget<QTableWidget>(dialog, "Period_Table").item(row, column)->text().toStdString();
    }
};

TEST_F(PeriodDialogs, active_periods_are_listed_with_their_start_and_their_data) {
    open_transient();
    ui::TransientChoice choice{};
    in_dialog([&] { choice = ui::transient_data(*editor); }, "Transient_data",
              [&](QDialog& dialog) {
                  EXPECT_EQ(widget<QTableWidget>(dialog, "Period_Table").rowCount(), 3);
                  EXPECT_EQ(text_at(dialog, 0, 2), "data");
                  EXPECT_EQ(text_at(dialog, 1, 2), "");
                  EXPECT_EQ(text_at(dialog, 2, 0), "4");
                  EXPECT_EQ(text_at(dialog, 2, 1), "730.5");
                  widget<QTableWidget>(dialog, "Period_Table").selectRow(2);
                  press(dialog, "cmdEdit");
              });
    EXPECT_EQ(choice.result, 3);
    EXPECT_EQ(choice.period, 4);
    in_dialog([&] { choice = ui::transient_data(*editor); }, "Transient_data",
              [&](QDialog& dialog) { press(dialog, "cmdOK"); });
    EXPECT_EQ(choice.result, 1);
    in_dialog([&] { choice = ui::transient_data(*editor); }, "Transient_data",
              [&](QDialog& dialog) { press(dialog, "cmdCancel"); });
    EXPECT_EQ(choice.result, 2);
}

TEST_F(PeriodDialogs, data_are_copied_to_another_period) {
    open_transient();
    worksheet->set_array(1, {5, 6});
    const char* const question = "Data for the stress period 2 already exists. Overwrite?";
    user.expect_message("Copy Data", "Please enter a positive integer!");
    user.expect_message("Copy Data", "The period number must be smaller than 101");
    user.expect_question("Copy Data", question, base::Answer::no);
    in_dialog([&] { ui::transient_data(*editor); }, "Transient_data",
              [&](QDialog& dialog) {
                  const auto copy = [&](const std::function<void(QDialog&)>& in_copy) {
                      in_dialog([&] { press(dialog, "copy_button"); }, "CopyTransientData",
                                in_copy);
                  };
                  copy([&](QDialog& copying) {
                      EXPECT_EQ(copying.windowTitle(), "Copy Data");
                      for (const char* const to : {"0", "101", "2"}) {
                          type(copying, "txtTo", to);
                          press(copying, "cmdOK");
                      }
                  });
                  EXPECT_EQ(text_at(dialog, 1, 2), "data");
                  copy([&](QDialog& copying) {
                      press(copying, "cmdOK");
                      press(copying, "cmdCancel");
                  });
                  press(dialog, "cmdOK");
              });
    worksheet->show_period(2);
    EXPECT_EQ(worksheet->array(1), (core::LayerValues{5, 6}));
}

TEST_F(PeriodDialogs, zones_go_to_files_and_back_and_are_deleted_behind_a_question) {
    open_worksheet(temperature);
    const grid::ZoneNode nodes[] = {{1, 1}, {9, 1}, {9, 9}};
    const float value[] = {5};
    ASSERT_FALSE(grid::add_zone(*worksheet, nodes, value));
    const auto file = folder.path() / "z.zon", other = folder.path() / "other.zon";
    base::replace_file(other, "zones\r\n");
    user.expect_file("Save Zones As", file);
    ui::save_zones_as(*editor);
    const char* const question = "Delete all zones in the current layer?";
    user.expect_question("Zones", question, base::Answer::no);
    ui::delete_all_zones(*editor);
    EXPECT_EQ(worksheet->zones().size(), 1U);
    user.expect_question("Zones", question, base::Answer::yes);
    ui::delete_all_zones(*editor);
    EXPECT_TRUE(worksheet->zones().empty());
    user.expect_file("Load Zones", other);
    user.expect_message("Load Zones", other.string() + " is not a zone file!");
    ui::load_zones(*editor);
    user.expect_file("Load Zones", file);
    ui::load_zones(*editor);
    ASSERT_EQ(worksheet->zones().size(), 1U);
    EXPECT_EQ(worksheet->zones()[0].value, 5);
    user.expect_file("Load Zones", folder.path() / "missing.zon");
    user.expect_failure("", base::Reaction::leave);
    ui::load_zones(*editor);
}

TEST_F(PeriodDialogs, points_go_to_files_and_back) {
    open_worksheet(digitizer);
    user.expect_message("Tervex Desk", "Specification of zones is not allowed for Digitizer");
    ui::delete_all_zones(*editor);
    ASSERT_FALSE(worksheet->add_point({1, 2, 3, 4}));
    const auto file = folder.path() / "points.dat";
    user.expect_file("Save Points As", file);
    ui::save_points_as(*editor);
    user.expect_question("Points", "Delete all points?", base::Answer::yes);
    ui::delete_all_points(*editor);
    EXPECT_TRUE(worksheet->points().empty());
    user.expect_file("Load Points", file);
    ui::load_points(*editor);
    ASSERT_EQ(worksheet->points().size(), 1U);
    EXPECT_EQ(worksheet->points()[0].z, 4);
}

} // namespace

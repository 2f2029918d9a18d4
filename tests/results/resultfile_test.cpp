#include "results/resultfile.h"

#include "base/failure.h"
#include "results/fieldcsv.h"
#include "results/fieldreading.h"
#include "results/streamreader.h"
#include "smallstream.h"
#include "support/scripteduser.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

namespace {

using results::CellOrder;
using results::StreamGrid;
using results::Values;

class ResultFiles : public testing::Test {
protected:
    std::string shown_for(const char* name) {
        const auto result = results::find_result_file(folder_.path() / name, user_);
        return result ? result->name() : "none";
    }
    std::optional<results::FirstLoad> first_load(const std::string& bytes) {
        folder_.write("m.nlo", bytes);
        const auto result = results::find_result_file(folder_.path() / "m.nlo", user_);
        results::StreamReader stream(result->file);
        return results::first_load(stream, *result, user_);
    }
    // Reads a block of 2 x 3 x 4 cells.
    results::ParameterField field(const std::string& block, const char* parameter, CellOrder order,
                                  Values values, int GridOrientation = 0) {
        results::StreamReader stream(folder_.write("f.nlo", block));
        const results::StreamNames chemistry{1, 1, 0, {{1, "PH"}}, {}};
        return *results::read_parameter(stream, {2, 3, 4},
                                        *results::resolve_parameter(parameter, chemistry), order,
                                        values, GridOrientation, user_);
    }
    void expect_search_messages(const std::string& word) {
        user_.expect_message("Tervex Desk",
                             "Error in file format. Can't find choosen parameter " + word);
        user_.expect_message("Tervex Desk", "Error in input file structure: Can't find " + word);
    }

    support::TempFolder folder_;
    support::ScriptedUser user_;
};

using CellValue = std::function<float(int layer, int row, int column)>;

void expect_cells(const results::ParameterField& field, const CellValue& expected) {
    for (int layer = 1; layer <= field.layers(); ++layer) {
        for (int row = 1; row <= field.rows(); ++row) {
            for (int column = 1; column <= field.columns(); ++column) {
                EXPECT_EQ(field.at(layer, row, column), expected(layer, row, column))
                    << layer << " " << row << " " << column;
            }
        }
    }
}

} // namespace

TEST_F(ResultFiles, a_project_shows_its_output_when_that_holds_something) {
    folder_.write("m.td1", "");
    const std::string base = (folder_.path() / "m").string();
    user_.expect_question("Browse for input file?",
                          "Can't find default input file!\n(" + base + ".nlo or " + base +
                              ".nml)\n\nDo you want to browse for other files?",
                          base::Answer::no);
    EXPECT_EQ(shown_for("m.td1"), "none");
    folder_.write("m.nml", "# I0\n");
    folder_.write("m.nlo", "");
    EXPECT_EQ(shown_for("m.td1"), "m.nml");
    EXPECT_EQ(shown_for("m.nlo"), "m.nlo") << "chosen by hand";
    folder_.write("m.nlo", "# I0\n");
    EXPECT_EQ(shown_for("m.td1"), "m.nlo");
    EXPECT_THROW(shown_for("n.nlo"), base::FileFailure);
}

TEST_F(ResultFiles, have_their_companions_and_settings_beside_them) {
    folder_.write("m.nlo.00", "");
    folder_.write("a.b.nml", "");
    const auto backup = results::find_result_file(folder_.path() / "m.nlo.00", user_);
    EXPECT_EQ(backup->files.base_name(), "m");
    const auto input = results::find_result_file(folder_.path() / "a.b.nml", user_);
    EXPECT_EQ(input->files.base_name(), "a.b");
    EXPECT_EQ(input->settings_file(), folder_.path() / "a.b.ini");
    EXPECT_FALSE(results::Check_for_Time_Files(*input));
    folder_.write("a.b.600", "");
    EXPECT_TRUE(results::Check_for_Time_Files(*input));
}

TEST_F(ResultFiles, set_up_the_viewer) {
    const auto load = first_load(smallstream::head("1 0 0") + "# TEMP\r\n24*1\r\n");
    ASSERT_TRUE(load);
    EXPECT_EQ(load->grid, (StreamGrid{2, 3, 4}));
    EXPECT_EQ(load->axes.delx, (std::vector<float>{10, 20.5}));
    EXPECT_EQ(load->axes.dely, (std::vector<float>{0.5, 0.5, 3}));
    EXPECT_EQ(load->axes.delz, (std::vector<float>{8, 4, 2, 1}));
    EXPECT_EQ(load->names.species.size(), 1u);
    EXPECT_EQ(load->sections.planes, "XYZ");
    EXPECT_EQ(load->parameter_code, "TEMP");
}

TEST_F(ResultFiles, show_the_temperature_in_place_of_a_missing_parameter) {
    folder_.write("m.ini",
                  "45\r\n0\r\n45\r\n0\r\n0\r\n0\r\n0\r\n0\r\n0\r\n0\r\n0\r\n0\r\nTrue\r\n");
    user_.expect_message("Tervex Desk",
                         "Error in file format. Can't find choosen parameter # PRES");
    user_.expect_message("Tervex Desk", "Can't find the parameter in the input file!\n"
                                        "          The default parameter is = Temperature ");
    EXPECT_EQ(first_load(smallstream::head() + "# TEMP\r\n")->parameter_code, "TEMP");
    expect_search_messages("# J0");
    EXPECT_FALSE(first_load("# I0\r\n2\r\n"));
    expect_search_messages("# DELZ");
    const std::string head = smallstream::head();
    EXPECT_FALSE(first_load(head.substr(0, head.find("# DELZ"))));
}

TEST_F(ResultFiles, offer_the_plane_across_an_axis_of_one_cell) {
    const auto planes = [](int I0, int J0, int K0) {
        const auto options = results::section_options({I0, J0, K0});
        return options.planes + options.cut;
    };
    EXPECT_EQ(planes(2, 2, 2), "XYZZ");
    EXPECT_EQ(planes(1, 2, 2), "XX");
    EXPECT_EQ(planes(1, 1, 2), "YY");
    EXPECT_EQ(planes(1, 1, 1), "ZZ");
}

TEST_F(ResultFiles, give_each_consumer_the_cells_in_its_own_order) {
    const std::string block = smallstream::own_cells("# TEMP");
    expect_cells(field(block, "TEMP", CellOrder::viewer, Values::converted),
                 [](int l, int r, int c) { return 100 * (5 - l) + 10 * r + c; });
    expect_cells(field(block, "TEMP", CellOrder::worksheet, Values::stored),
                 [](int l, int r, int c) { return 100 * (5 - l) + 10 * (4 - r) + c; });
    expect_cells(field(block, "TEMP", CellOrder::stream, Values::stored),
                 [](int l, int r, int c) { return 100 * l + 10 * r + c; });
    const auto section = field(block, "TEMP", CellOrder::worksheet, Values::stored, 1);
    EXPECT_EQ(section.layers(), 3);
    EXPECT_EQ(section.rows(), 4);
    expect_cells(section, [](int l, int r, int c) { return 100 * (5 - r) + 10 * l + c; });
}

TEST_F(ResultFiles, are_converted_for_the_viewer_only) {
    const auto first = [&](const std::string& value, const char* keyword, const char* parameter,
                           Values values) {
        const std::string block = std::string(keyword) + "\n24*" + value + "\n";
        return field(block, parameter, CellOrder::viewer, values).at(1, 1, 1);
    };
    EXPECT_EQ(first("-2.5", "# PRES", "PRES", Values::converted), 2.5f);
    EXPECT_EQ(first("-2.5", "# PRES", "PRES", Values::stored), -2.5f);
    EXPECT_EQ(first("-2.5", "# TEMP", "TEMP", Values::converted), -2.5f);
    EXPECT_EQ(first("-0.5", "# VX", "VX", Values::converted), -43200);
    EXPECT_FLOAT_EQ(first("0.1", "# CONC           1", "CONC:1", Values::converted), 4);
    EXPECT_EQ(first("0.1", "# CONC           1", "CONC:1", Values::stored), 0.1f);
    for (const char* value : {"0", "-1"}) {
        EXPECT_THROW(first(value, "# CONC           1", "CONC:1", Values::converted),
                     base::FileFailure);
    }
    EXPECT_THROW(first("1", "# PRES\n2*1 x*", "PRES", Values::converted), base::FileFailure);
}

TEST_F(ResultFiles, tell_twice_what_is_missing) {
    results::StreamReader stream(folder_.write("f.nlo", smallstream::own_cells("# TEMP")));
    expect_search_messages("# POR");
    EXPECT_FALSE(results::read_parameter(stream, {2, 3, 4}, *results::resolve_parameter("POR", {}),
                                         CellOrder::viewer, Values::converted, 0, user_));
}

TEST_F(ResultFiles, become_tables_of_cells_in_metres) {
    const results::Axes axes{{10, 20.5}, {0.5, 0.5, 3}, {8, 4, 2, 1}};
    const std::string block = smallstream::own_cells("# TEMP");
    const auto target = folder_.path() / "t.csv";
    const auto lines = [&](int orientation, std::optional<int> layer, const char* label) {
        results::write_field_csv(
            field(block, "TEMP", CellOrder::worksheet, Values::converted, orientation), axes,
            orientation, label, layer, target);
        return folder_.read("t.csv");
    };
    const std::string all = lines(0, std::nullopt, "T [m]");
    EXPECT_EQ(all.substr(0, all.find("2,1,1")), "column,row,layer,x [m],y [m],z [m],T [m]\n"
                                                "1,1,1,5,2.5,11,431\n");
    EXPECT_TRUE(all.ends_with("\n2,3,4,20.25,0.25,0.5,112\n")) << all;
    EXPECT_EQ(std::ranges::count(all, '\n'), 25);
    // In a cross-section the worksheet's layers lie behind each other and its rows are depths.
    const std::string section = lines(1, 2, "a \"b\",c");
    EXPECT_TRUE(section.starts_with("column,row,layer,x [m],y [m],z [m],\"a \"\"b\"\",c\"\n"
                                    "1,1,2,5,0.75,11,421\n"))
        << section;
    EXPECT_TRUE(section.ends_with("\n2,4,2,20.25,0.75,0.5,122\n"));
    EXPECT_THROW(lines(0, 5, "T"), base::RangeFailure);
    EXPECT_EQ(folder_.read("t.csv"), section) << "a failure leaves the old table";
}

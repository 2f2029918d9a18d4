#include "results/timeseries.h"

#include "results/names.h"
#include "support/failureof.h"
#include "support/scripteduser.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <random>

using results::LoadMatrix;
using results::Select2DParamNumb;
using results::StreamNames;

namespace {

const std::string head = "time and so on\r\n";

StreamNames chemistry() {
    return {3, 2, 2, {{1, "PH"}, {2, "Na"}, {3, "Tracer 1"}}, {{2, "Calcite"}}};
}

// A line of a model without substances.
std::string record(double time) {
    return std::to_string(time) + " 1 10 365 -730 36.5 0.2 1E-6 1.D-13 20 3 4 \r\n";
}

class Series : public testing::Test {
protected:
    std::optional<results::Series> load(const std::string& bytes, const StreamNames& names = {}) {
        return LoadMatrix(bytes, "m.100", names, user);
    }
    std::string failure_of(const std::string& bytes, const StreamNames& names = {}) {
        return support::failure_of([&] { load(bytes, names); }, "m.100");
    }
    support::ScriptedUser user;
};

} // namespace

TEST_F(Series, data_end_at_the_first_line_behind_the_head_whose_number_is_0) {
    EXPECT_EQ(load(head + record(1) + record(2) + "end of run\r\n" + record(3))->rows(), 2u);
    EXPECT_EQ(load("0\n" + record(1) + "\n" + record(2))->rows(), 1u);
    for (const std::string& bytes :
         {std::string(), head, std::string("head"), head + record(0) + record(1), head + "1 2"}) {
        EXPECT_FALSE(load(bytes)) << bytes;
    }
    EXPECT_EQ(results::file_structure_refusal("m.100").text, "m.100 Error in file structure - ");
}

TEST_F(Series, a_line_with_too_few_numbers_fails_unless_it_is_still_being_written) {
    EXPECT_EQ(load(head + record(1) + "2 1 10 36")->rows(), 1u);
    EXPECT_EQ(failure_of(head + record(1) + "2 1 10\r\n" + record(3)),
              "has 3 numbers in line 3, where 12 were expected");
}

TEST_F(Series, velocities_become_metres_a_day_and_the_first_species_pH) {
    const auto flow = load(head + record(30.5));
    EXPECT_EQ(flow->values,
              (std::vector<double>{30.5, 1, 10, 1, -2, 0.1, 0.2, 1E-6, 1E-13, 20, 3, 4}));
    const std::string species = "30.5 1 10 1 1 1 1 1 1 1 1 1 ";
    const auto values = load(head + species + "0.0001 2 3 4 5 6 7", chemistry());
    EXPECT_EQ(values->columns, 17);
    EXPECT_NEAR(values->at(0, 13), 7, 1E-12);
    EXPECT_EQ(values->at(0, 17), 5);
    EXPECT_EQ(failure_of(head + species + "0 2 3 4 5", chemistry()),
              "has a concentration of hydrogen ions of 0 in line 2, which has no pH");
    EXPECT_EQ(load(head + species + "0", {1, 0, 0, {{1, "Tracer 1"}}, {}})->at(0, 13), 0);
}

TEST_F(Series, damaged_files_never_crash) {
    const std::string bytes = head + record(1) + record(2) + record(3);
    std::mt19937 random(1);
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        failure_of(bytes.substr(0, size), chemistry());
        failure_of(bytes.substr(0, size));
        std::string changed = bytes;
        changed[size] = static_cast<char>(random());
        failure_of(changed);
    }
}

TEST(SeriesColumns, are_found_by_name_code_and_the_former_name) {
    const auto column = [](std::string_view name) {
        const auto found = Select2DParamNumb(name, chemistry());
        return found ? std::to_string(found->number) + found->name + found->unit : "";
    };
    EXPECT_EQ(column("Head"), "3Head [m]");
    EXPECT_EQ(column("VZ"), "6Velocity (Z) [m/day]");
    EXPECT_EQ(column("Hydraulic Conductivity"), "8Hydraulic Conductivity [m/s]");
    EXPECT_EQ(column("Heat Conductivity"), "11Thermal Conductivity [W/(m K)]");
    EXPECT_EQ(column("pe"), "12pe ");
    EXPECT_EQ(column("PH"), "13PH ");
    EXPECT_EQ(column("Na"), "14Na [mmol/L]");
    EXPECT_TRUE(column("Calcite").starts_with("17Calcite"));
    EXPECT_EQ(column("Cl"), "");
}

TEST_F(Series, csv_has_names_and_units_in_the_first_line_and_full_precision) {
    const StreamNames names{1, 0, 1, {{1, "a \"b\", c"}}, {}};
    const auto series = load(head + "0.1 2 3 0 0 0 7 8 9 10 11 12 1.2345678901234567 1E-30", names);
    const std::string csv = results::series_csv(*series, names);
    EXPECT_TRUE(csv.starts_with("Time [days],Column 2,Head [m],Velocity (X) [m/day],"));
    EXPECT_NE(csv.find(",pe,\"a \"\"b\"\", c [mol/m³]\",Column 14\n"), std::string::npos) << csv;
    EXPECT_TRUE(csv.ends_with("\n0.1,2,3,0,0,0,7,8,9,10,11,12,1.2345678901234567E+00,1E-30\n"))
        << csv;
}

TEST_F(Series, a_second_parameter_can_go_to_the_right_axis) {
    const auto series = *load(head + record(1) + record(2));
    const std::vector<std::string> parameters = {"Head", "Temperature", "pe"};
    const auto chart = results::LoadChart(series, "a/m.nlo", {}, parameters, true);
    EXPECT_EQ(chart.title, " Project file [m.nlo]");
    EXPECT_EQ(chart.x_title, " Time [days]");
    EXPECT_EQ(chart.times, (std::vector<double>{1, 2}));
    EXPECT_EQ(chart.curves[0].legend, "Head [m] on Y1");
    EXPECT_EQ(chart.curves[1].legend, "Temperature [°C] on Y2");
    EXPECT_TRUE(chart.curves[1].right_axis);
    EXPECT_EQ(chart.curves[1].values, (std::vector<double>{20, 20}));
    EXPECT_FALSE(chart.curves[2].right_axis);
    EXPECT_FALSE(results::LoadChart(series, "m.nlo", {}, parameters, false).curves[1].right_axis);
    EXPECT_THROW(results::LoadChart(series, "m.nlo", {}, {"Cl"}, false), base::RangeFailure);
}

TEST(TemporalView, needs_files_and_a_parameter_that_has_a_column) {
    support::TempFolder folder;
    folder.write("m.nlo", "");
    const auto files = [&] { return results::monitoring_files(folder.path() / "m.nlo"); };
    EXPECT_EQ(results::no_files_refusal(files())->text, "No Monitoring Files available.");
    folder.write("m.200", "");
    EXPECT_EQ(results::no_files_refusal(files()), std::nullopt);
    ASSERT_EQ(files().size(), 2u); // points 2 and 20
    EXPECT_EQ(files()[1].number, 20);
    EXPECT_EQ(files()[1].extension, "200");

    support::ScriptedUser user;
    EXPECT_EQ(results::temporal_parameter("CONC", user), "CONC");
    user.expect_message("Tervex Desk",
                        "Sorry, but this Parameter can't be shown in Time View. Head will be shown "
                        "instead. You may choose another one. For details refer to documentation.");
    EXPECT_EQ(results::temporal_parameter("PRES", user), "PHI");
}

#include "sim/periods.h"

#include "base/failure.h"
#include "base/numbertext.h"
#include "base/textfile.h"
#include "sim/settingsmodel.h"
#include "support/failureof.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace sim {
namespace {

TemporalDiscretization loaded(const SettingsModel& model) {
    TemporalDiscretization form;
    form.load(model.project, model.files);
    return form;
}

// A table with two active periods and every column set.
PeriodTable two_periods() {
    PeriodTable table;
    table.unit = 5;
    table.rows[0] = {true, 10, 20, 5, -0.5f, 1000, 1.5f};
    table.rows[2] = {true, 0.1, 100, 0.25f, 0, 2147483647, 1};
    return table;
}

std::string failure_of(PeriodTable (*read)(std::string_view, const std::filesystem::path&),
                       std::string_view bytes) {
    return support::failure_of([&] { read(bytes, "m.trn"); }, "m.trn");
}

PeriodTable read_parameters(std::string_view bytes, const std::filesystem::path& file) {
    return PeriodTable::read_time_parameters(bytes, file).value();
}

TEST(Periods, BytesOfTheTable) {
    std::string expected = "100            5 \r\n"
                           "-1   10   20   5 \r\n-.5   1000 \r\n 1.5 \r\n"
                           " 0   1   1   1 \r\n 0   5000 \r\n 1 \r\n"
                           "-1   .1   100   .25 \r\n 0   2147483647 \r\n 1 \r\n";
    for (int row = 4; row <= 100; ++row)
        expected += " 0   1   1   1 \r\n 0   5000 \r\n 1 \r\n";
    EXPECT_EQ(two_periods().bytes(), expected);
}

TEST(Periods, MissingFileHasOneActivePeriod) {
    const SettingsModel model;
    EXPECT_EQ(PeriodTable::load(model.files).bytes(), PeriodTable().bytes());
    EXPECT_EQ(PeriodTable().totals().periods, 1);
    EXPECT_EQ(PeriodTable().unit, 0);
}

TEST(Periods, NumbersAreReadFreeFormOverLineEnds) {
    const PeriodTable table =
        PeriodTable::read("2,4\n-1,30 3\n2 1\n50\n2 -1 1D1 1 1 0 9 1", "m.trn");
    EXPECT_EQ(table.unit, 4);
    EXPECT_EQ(table.rows[0].length, 30);
    EXPECT_EQ(table.rows[0].max_transport_steps, 50);
    EXPECT_EQ(table.rows[1].length, 10);
    EXPECT_EQ(table.rows[1].max_transport_steps, 9);
    EXPECT_EQ(table.totals().periods, 2);
}

TEST(Periods, TableCutAtAnyLineIsAFailure) {
    const std::string whole = two_periods().bytes();
    ASSERT_EQ(failure_of(PeriodTable::read, whole), "");
    for (std::size_t end = 0; end != whole.size(); end = whole.find('\n', end) + 1)
        EXPECT_NE(failure_of(PeriodTable::read, whole.substr(0, end)), "") << end;
    EXPECT_NE(failure_of(PeriodTable::read, whole.substr(0, 38))
                  .find("where the temperature shift of period 1 was expected"),
              std::string::npos);
    EXPECT_EQ(failure_of(PeriodTable::read, "garbage 1"),
              "line 1 holds 0, where the number of periods was expected");
}

TEST(Periods, CountBeyondTheTableReadsNoMore) {
    std::string bytes = two_periods().bytes();
    bytes.replace(0, 3, "999999999");
    EXPECT_EQ(PeriodTable::read(bytes, "m.trn").bytes(), two_periods().bytes());
}

TEST(Periods, UnknownUnitIsUndefined) {
    EXPECT_EQ(PeriodTable::read("1 9 -1 1 1 1 0 5000 1", "m.trn").unit, 0);
    EXPECT_STREQ(time_unit_name(9), "undefined");
    EXPECT_STREQ(time_unit_name(5), "years");
    EXPECT_EQ(seconds_of_unit(5), 31536000);
    EXPECT_EQ(seconds_of_unit(0), 0);
}

TEST(Periods, RandomTablesSurviveBothForms) {
    std::mt19937 random(20);
    std::uniform_real_distribution<double> exponent(-12, 12);
    const auto number = [&] { return std::pow(10.0, exponent(random)); };
    for (int i = 0; i < 20; ++i) {
        PeriodTable table;
        table.unit = i % 6;
        for (Period& period : table.rows)
            period = {random() % 2 == 0, number(),        int(random() % 100000000),
                      float(number()),   float(number()), int(random() % 2147483647),
                      float(-number())};
        const PeriodTable again = PeriodTable::read(table.bytes(), "m.trn");
        EXPECT_EQ(again.bytes(), table.bytes());
        EXPECT_EQ(read_parameters(table.time_parameters(), "m.tpr").bytes(), table.bytes());
        EXPECT_NEAR(again.rows[7].length / table.rows[7].length, 1, 1E-14);
        EXPECT_EQ(again.rows[7].steps, table.rows[7].steps);
    }
}

TEST(TimeParameters, SevenBlocksOfOneHundredRows) {
    const auto lines = base::text_lines(two_periods().time_parameters());
    ASSERT_EQ(lines.size(), 702u);
    EXPECT_EQ(lines[0], "BALDO5000_TIME_FILE");
    EXPECT_EQ(lines[1], " 100  5 ");
    EXPECT_EQ(lines[2], "-1 ");
    EXPECT_EQ(lines[3], " 0 ");
    EXPECT_EQ(lines[104], " .1 ");
    EXPECT_EQ(lines[202], " 20 ");
    EXPECT_EQ(lines[302], " 5 ");
    EXPECT_EQ(lines[402], "-.5 ");
    EXPECT_EQ(lines[502], " 1000 ");
    EXPECT_EQ(lines[602], " 1.5 ");
}

TEST(TimeParameters, FileWithAnotherFirstLineIsRefused) {
    const SettingsModel model;
    TemporalDiscretization form = loaded(model);
    form.set_cell(2, "Use", "1");
    for (const char* bytes : {"", "BALDO4000_TIME_FILE\r\n 100  2 ", "100 2"}) {
        const auto refusal = form.load_time_parameters(bytes, "x.tpr");
        ASSERT_TRUE(refusal);
        EXPECT_EQ(refusal->title, "Message");
        EXPECT_EQ(refusal->text, "File has a wrong format.");
    }
    EXPECT_EQ(form.cell(2, "Use"), "1");
}

TEST(TimeParameters, CutFileIsAFailureAndLeavesTheForm) {
    const SettingsModel model;
    TemporalDiscretization form = loaded(model);
    const std::string whole = two_periods().time_parameters();
    for (std::size_t end = 21; end != whole.size(); end = whole.find('\n', end) + 1)
        EXPECT_NE(failure_of(read_parameters, whole.substr(0, end)), "") << end;
    EXPECT_THROW(form.load_time_parameters(whole.substr(0, 900), "x.tpr"), base::FileFailure);
    EXPECT_EQ(form.table().bytes(), PeriodTable().bytes());
}

TEST(TimeParameters, LoadedTableWithoutActivePeriodIsRefusedAtOK) {
    const SettingsModel model;
    TemporalDiscretization form = loaded(model);
    PeriodTable none = two_periods();
    none.rows[0].active = none.rows[2].active = false;
    EXPECT_FALSE(form.load_time_parameters(none.time_parameters(), "x.tpr"));
    EXPECT_EQ(form.get("SimulationTimeUnit"), "5");
    ASSERT_TRUE(form.check());
    EXPECT_EQ(form.check()->title, "Time Parameter");
    EXPECT_EQ(form.check()->text, "At least one period must be active!");
}

TEST(PeriodForm, CellsAreRefusedWordForWordAndKeepTheirText) {
    struct Case {
        int row;
        const char* column;
        const char* text;
        const char* refusal; // empty: accepted
    };
    constexpr const char* first = "The data of the first stress period must always be used!";
    constexpr const char* steps = "The number of time steps must be < 100000000";
    constexpr const char* transport =
        "Valid range of the maximum number of transport steps is 1 to 2147483647.";
    const Case cases[] = {{1, "Use", "0", first},
                          {2, "Use", "0", ""},
                          {1, "TimeSteps", "100000000", steps},
                          {1, "TimeSteps", "1E30", steps},
                          {1, "TimeSteps", "99999999", ""},
                          {1, "MaxTransportSteps", "0", transport},
                          {1, "MaxTransportSteps", "none", transport},
                          {1, "MaxTransportSteps", "2147483648", transport},
                          {1, "MaxTransportSteps", "2147483647", ""},
                          {1, "MaxTransportSteps", "1", ""}};
    const SettingsModel model;
    TemporalDiscretization form = loaded(model);
    for (const Case& item : cases) {
        const std::string before = form.cell(item.row, item.column);
        const auto refusal = form.set_cell(item.row, item.column, item.text);
        ASSERT_EQ(refusal.has_value(), *item.refusal != 0) << item.column << ' ' << item.text;
        if (refusal) {
            EXPECT_EQ(refusal->title, "Time Parameter");
            EXPECT_EQ(refusal->text, item.refusal);
        }
        EXPECT_EQ(form.cell(item.row, item.column), refusal ? before : item.text);
    }
}

TEST(PeriodForm, CellsOutsideTheTableAreFaultsOfTheCaller) {
    TemporalDiscretization form;
    EXPECT_THROW(form.cell(0, "Use"), base::RangeFailure);
    EXPECT_THROW(form.cell(101, "Use"), base::RangeFailure);
    EXPECT_THROW(form.set_cell(1, "Length", "1"), base::RangeFailure);
}

TEST(PeriodForm, SavesTableAndFlowType) {
    SettingsModel model;
    TemporalDiscretization form = loaded(model);
    form.set("SimulationFlowType", "1");
    form.set("SimulationTimeUnit", "4");
    form.set_cell(1, "PeriodLength", "0.1");
    form.set_cell(1, "TemperatureShift", "1.5");
    form.save(model.project, model.files);
    EXPECT_TRUE(model.project.transient());
    EXPECT_EQ(model.flag(0, 3), 2);
    EXPECT_EQ(model.flag(0, 2), 0);
    EXPECT_EQ(model.flag(0, 1), 1);
    form = loaded(model);
    EXPECT_EQ(form.get("SimulationFlowType"), "1");
    EXPECT_EQ(form.get("SimulationTimeUnit"), "4");
    EXPECT_EQ(form.cell(1, "PeriodLength"), "0.1");
    EXPECT_EQ(form.cell(1, "TemperatureShift"), "1.5");
    form.set("SimulationFlowType", "0");
    form.save(model.project, model.files);
    EXPECT_EQ(model.project.integer("OPTIONS", "SIMULATION_MODE"), 1);
    EXPECT_EQ(model.flag(0, 3), 0);
    EXPECT_EQ(model.flag(0, 2), 2);
}

TEST(PeriodForm, AutoUpdateKeepsTheDurationWhenTheUnitChanges) {
    TemporalDiscretization form;
    form.set("SimulationTimeUnit", "4");
    form.set_cell(1, "PeriodLength", "2");
    form.set("SimulationTimeUnit", "3");
    EXPECT_EQ(form.cell(1, "PeriodLength"), "2");
    form.set("AutoUpdate", "1");
    form.set("SimulationTimeUnit", "2");
    EXPECT_EQ(form.cell(1, "PeriodLength"), "120");
    EXPECT_EQ(form.cell(2, "PeriodLength"), "1"); // is not used
    form.set("SimulationTimeUnit", "0");
    form.set("SimulationTimeUnit", "1");
    EXPECT_EQ(form.cell(1, "PeriodLength"), "120");
}

TEST(PeriodForm, StatusLineCountsActivePeriods) {
    const SettingsModel model;
    TemporalDiscretization form = loaded(model);
    EXPECT_EQ(form.status_texts().at(2), "Total Simulation Time = undefined");
    ASSERT_FALSE(form.load_time_parameters(two_periods().time_parameters(), "x.tpr"));
    EXPECT_EQ(form.status_texts(),
              (std::vector<std::string>{"Total Period Number = 2", "Total Time Steps = 120",
                                        "Total Simulation Time = 1.01E+1 time units"}));
}

} // namespace
} // namespace sim

#include "sim/transport.h"

#include "base/failure.h"
#include "sim/settingsmodel.h"
#include "support/failureof.h"

#include <gtest/gtest.h>

namespace sim {
namespace {

using support::failure_of;

TracerTable read_table(std::string_view bytes) {
    return TracerTable::read(bytes, "m.ttc");
}

TEST(TracerTable, FiveLinesInPrintZones) {
    TracerTable table;
    table.rows[0] = {true, 0.5F, -1.5E-10F};
    table.rows[4] = {false, 1000, 0.0002F};
    EXPECT_EQ(table.bytes(), " 1            -1             .5           -1.5E-10 \r\n"
                             " 2             0             0             0 \r\n"
                             " 3             0             0             0 \r\n"
                             " 4             0             0             0 \r\n"
                             " 5             0             1000          .0002 \r\n");
}

TEST(TracerTable, ReadsWhatItWrites) {
    TracerTable table;
    table.rows[2] = {true, 3.14159F, -1.234567E-10F};
    const TracerTable read = read_table(table.bytes());
    EXPECT_EQ(read.bytes(), table.bytes());
    EXPECT_EQ(read.ActiveTracers(), 1);
}

TEST(TracerTable, RowsGoByTheTracerNumber) {
    const TracerTable table = read_table("\n 4, -1 2 .5 a name\n 2 0 7 1D-3");
    EXPECT_TRUE(table.rows[3].active);
    EXPECT_EQ(table.rows[3].betac, 0.5F);
    EXPECT_EQ(table.rows[1].concentration, 7);
    EXPECT_EQ(table.rows[1].betac, 0.001F);
    EXPECT_EQ(read_table("").ActiveTracers(), 0);
    EXPECT_EQ(read_table("1 1 0 0").ActiveTracers(), 0); // only -1 marks
}

TEST(TracerTable, LinesBeyondTheFifthAreLeft) {
    std::string bytes;
    for (int line = 0; line < 5; ++line)
        bytes += "1 0 0 0\r\n";
    EXPECT_EQ(read_table(bytes + "garbage").ActiveTracers(), 0);
}

TEST(TracerTable, DamagedLinesAreNamed) {
    EXPECT_EQ(failure_of([] { read_table("1 -1 2 3\n2 -1"); }),
              "line 2 ends behind item 2, where the concentration was expected");
    EXPECT_EQ(failure_of([] { read_table("6 -1 2 3"); }),
              "line 1 begins with 6, where a tracer number from 1 to 5 was expected");
    EXPECT_EQ(failure_of([] { read_table("x y z w"); }),
              "line 1 begins with 0, where a tracer number from 1 to 5 was expected");
    EXPECT_EQ(failure_of([] { read_table("1 -1 1E300 -1E300"); }), "");
}

TEST(TracerForm, SavesTheTable) {
    SettingsModel model;
    TracerForm form;
    form.load(model.project, model.files);
    EXPECT_EQ(form.cell(2, "Tracer"), "2");
    form.set_cell(2, "Tracer", "4");
    form.set_cell(2, "Active", "1");
    form.set_cell(2, "Concentration", "1,5"); // a comma ends a number
    form.set_cell(2, "BetaC", ".04");
    form.save(model.project, model.files);
    EXPECT_EQ(model.flag(9, 8), 2);
    EXPECT_EQ(model.flag(0, 1), 1);
    form.load(model.project, model.files);
    EXPECT_EQ(form.cell(2, "Active"), "1");
    EXPECT_EQ(form.cell(2, "Concentration"), "1");
    EXPECT_EQ(form.cell(2, "BetaC"), "0.04");
    EXPECT_THROW(form.cell(6, "BetaC"), base::RangeFailure);
    EXPECT_THROW(form.set_cell(1, "Name", ""), base::RangeFailure);
}

TEST(Dispersion, TransverseStandsBeforeLongitudinal) {
    Dispersion dispersion;
    EXPECT_EQ(dispersion.bytes(), "0.5,2.00,2.00\r\n");
    dispersion = Dispersion::read(" 1 , 0.2, 20 \r\nanother, line", "m.tma");
    EXPECT_EQ(dispersion.diffusion, "1");
    EXPECT_EQ(dispersion.transverse, "0.2");
    EXPECT_EQ(dispersion.longitudinal, "20");
}

TEST(Dispersion, TextsStayAsTypedUpToAComma) {
    Dispersion dispersion;
    dispersion.diffusion = "5E-1";
    dispersion.transverse = "1,5";
    dispersion.longitudinal = "";
    EXPECT_EQ(dispersion.bytes(), "5E-1,1,\r\n");
    EXPECT_EQ(Dispersion::read(dispersion.bytes(), "m.tma").longitudinal, "");
}

TEST(Dispersion, FewerThanThreeValuesAreAFailure) {
    const auto failure = [](std::string_view bytes) {
        return failure_of([bytes] { Dispersion::read(bytes, "m.tma"); });
    };
    EXPECT_EQ(failure(""),
              "line 1 ends behind value 1, where the transverse dispersivity was expected");
    EXPECT_EQ(failure("0.5,2.00\r\n2.00"),
              "line 1 ends behind value 2, where the longitudinal dispersivity was expected");
}

TEST(DiffDisp, SavesItsFields) {
    SettingsModel model;
    DiffDisp form;
    form.load(model.project, model.files);
    EXPECT_EQ(form.get("MDIFS1_Value"), "0.5");
    form.set("DIFTS1_Value", "0.1");
    form.set("DIFLS1_Value", "10");
    form.save(model.project, model.files);
    EXPECT_EQ(model.files.read(".tma"), "0.5,0.1,10\r\n");
    EXPECT_EQ(model.flag(9, 9), 2);
    EXPECT_EQ(model.flag(0, 1), 1);
}

TEST(TracerSource, DefinitionSavedLastIsUsed) {
    SettingsModel model;
    model.project.flags.mark_defined(2, 13);
    TracerIndividual form;
    for (const char* source : {"1", "0", "1"}) {
        form.load(model.project, model.files);
        form.set("Source", source);
        form.save(model.project, model.files);
        const bool zones = std::string_view(source) == "0";
        EXPECT_EQ(model.flag(2, 13) == 2, zones);
        EXPECT_EQ(model.flag(3, 13) == 2, !zones);
        EXPECT_EQ(tracer_source(model.project.flags),
                  zones ? TracerSource::zones : TracerSource::arrays);
    }
}

TEST(TracerSource, WarnsWhenTheTracerIsDefinedTwice) {
    SettingsModel model;
    TracerIndividual form;
    model.project.flags.mark_defined(2, 13);
    form.load(model.project, model.files);
    form.save(model.project, model.files);
    EXPECT_TRUE(form.saved_notices().empty());
    model.files.write(".tc3", "");
    form.load(model.project, model.files);
    form.set("Source", "1");
    form.save(model.project, model.files);
    ASSERT_EQ(form.saved_notices().size(), 1U);
    EXPECT_EQ(form.saved_notices().front().title, "Data Source for TERVEX input file");
    EXPECT_EQ(form.saved_notices().front().text,
              "The tracer is defined both by zones and by arrays. The definition saved last is "
              "used for the input file.");
}

} // namespace
} // namespace sim

#include "results/names.h"

#include "base/failure.h"
#include "core/modelfiles.h"
#include "core/project.h"
#include "results/parameters.h"
#include "results/streamreader.h"
#include "smallstream.h"
#include "support/failureof.h"
#include "support/scripteduser.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

namespace {

using results::NamedBlock;
using results::Parameter;
using results::StreamNames;

class Names : public testing::Test {
protected:
    StreamNames read(const std::string& counters) {
        results::StreamReader stream(folder_.write("m.nlo", smallstream::head(counters)));
        return results::read_names(
            stream, core::ModelFiles(folder_.path() / "m.td1", core::Access::read), user_);
    }
    std::string failure(const std::string& counters) {
        return support::failure_of([&] { read(counters); });
    }
    void set_chemistry(int code) {
        core::Project project;
        project.flags.set(9, 12, code);
        folder_.write("m.td1", project.bytes(""));
    }

    support::TempFolder folder_;
    support::ScriptedUser user_;
};

std::string listed(const std::vector<NamedBlock>& list) {
    std::string text;
    for (const NamedBlock& block : list) {
        text += std::to_string(block.number) + "=" + block.name + ";";
    }
    return text;
}

// Two zones: the active flag of a mineral stands in column 31.
const std::string minerals = "Fluid Flow\r\n"
                             "Por       0.25      0.3\r\n"
                             "3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9\r\n10\r\n11\r\n12\r\n"
                             "13\r\n14\r\n"
                             "LOOK MIN\r\n"
                             "Calcite x 1.        2.        -1\r\n"
                             "Halite    1.        2.        0\r\n"
                             "Quartz    1.        2.        -1\r\n"
                             "               \r\n";

} // namespace

TEST_F(Names, without_companions_are_numbered) {
    const StreamNames names = read("5 3 2");
    EXPECT_EQ(listed(names.species), "1=PH;2=Species 2;3=Species 3;4=Tracer 1;5=Tracer 2;");
    EXPECT_EQ(listed(names.mineral_blocks), "1=Mineral 1;2=Mineral 2;");
    EXPECT_TRUE(names.shown_as_pH(1) && !names.shown_as_pH(2));
    EXPECT_EQ(listed(read("2 0 0").species), "1=Tracer 1;2=Tracer 2;");
    EXPECT_FALSE(read("2 0 0").shown_as_pH(1));
}

TEST_F(Names, of_components_come_from_the_file_of_the_chemistry_model) {
    folder_.write("m.flu", "title\r\nELEMENTS\r\nNa   11 Na+\r\nAlk12 5\r\n");
    folder_.write("m.nkf", "ELEMENTS\r\nKx\r\nKy\r\n");
    folder_.write("m.dhf", "TITLE a\r\nSOLUTION 1 - ,2,3\r\n\tunits\tmmol/L\r\n\tpH\t7.0\r\n"
                           "\tpe\t4.0\r\n\tdensity\t1.0\r\n\ttemp\t25\r\n\tCl\t1.\r\n"
                           "\tC(4)\t2. charge\r\nEND\r\nTITLE b\r\n");
    EXPECT_EQ(listed(read("3 3 0").species), "1=PH;2=Na;3=Alk12;") << "no project file";
    set_chemistry(0);
    EXPECT_EQ(listed(read("3 3 0").species), "1=PH;2=Na;3=Alk12;");
    set_chemistry(3);
    EXPECT_EQ(listed(read("3 3 0").species), "1=PH;2=Cl;3=C(4);");
    EXPECT_EQ(failure("4 4 0"), "holds 2 lines behind \"SOLUTION\", where 3 were expected");
    set_chemistry(5);
    EXPECT_EQ(listed(read("3 3 0").species), "1=PH;2=Kx;3=Ky;");
    EXPECT_EQ(failure("4 4 0"), "holds 2 lines behind \"ELEMENTS\", where 3 were expected");
}

TEST_F(Names, of_minerals_are_listed_when_the_current_fluid_has_them) {
    folder_.write("m.mco", minerals);
    folder_.write("m.nkm", minerals);
    EXPECT_EQ(listed(read("0 0 3").mineral_blocks), "1=Calcite;3=Quartz;");
    EXPECT_EQ(listed(read("0 0 3").all_minerals), "1=Calcite;2=Halite;3=Quartz;");
    set_chemistry(5);
    EXPECT_EQ(listed(read("0 0 3").mineral_blocks), "1=Calcite;2=Halite;3=Quartz;");
    set_chemistry(1);
    EXPECT_EQ(listed(read("0 0 3").mineral_blocks), "1=Mineral 1;2=Mineral 2;3=Mineral 3;");
    folder_.write("m.dhm", "Por\r\n");
    EXPECT_EQ(failure("0 0 3"), "has no line \"LOOK MIN\"");
    EXPECT_EQ(listed(read("0 0 0").mineral_blocks), "");
}

TEST_F(Names, need_counts_that_a_stream_can_have) {
    results::StreamReader stream(folder_.write("m.nlo", "# ANZSUBS\n-1\n"));
    const core::ModelFiles files(folder_.path() / "m.td1", core::Access::read);
    EXPECT_THROW(results::read_names(stream, files, user_), base::FileFailure);
    results::StreamReader bare(folder_.write("n.nlo", "# DELX\n1\n"));
    user_.expect_message("Tervex Desk",
                         "Error in file format. Can't find choosen parameter # ANZSUBS");
    EXPECT_EQ(results::read_names(bare, files, user_).substances, 0);
    EXPECT_EQ(bare.position(), 0u) << "the next search begins anew";
}

TEST(Parameters, are_resolved_from_their_texts) {
    const StreamNames names{3, 2, 1, {{1, "PH"}, {2, "Ca"}, {3, "Tracer 1"}}, {{1, "Calcite"}}};
    const auto resolved = [&](const char* text) {
        const auto parameter = results::resolve_parameter(text, names);
        return parameter ? parameter->keyword + "|" + parameter->label : "none";
    };
    EXPECT_EQ(resolved("TEMP"), "# TEMP|Temperature  [deg. C]");
    EXPECT_EQ(resolved("vz"), "# VZ|Velocity (Z) [m/day]");
    EXPECT_EQ(resolved("CONC:PH"), "# CONC           1|PH");
    EXPECT_EQ(resolved("conc: Ca "), "# CONC           2|Ca [mmol/L]");
    EXPECT_EQ(resolved("CONC:12"), "# CONC          12|Species 12 [mmol/L]");
    EXPECT_EQ(resolved("CONCM:Calcite"), "# CONCM           1|Calcite [mol/m^3]");
    EXPECT_EQ(resolved("rhocm"), "# RHOCM|Other Parameter - RHOCM");
    for (const char* text : {"CONC:Cl", "CONC:", "CONC:0", "CONC:100", "CONCM:Ca"}) {
        EXPECT_EQ(resolved(text), "none") << text;
    }
    EXPECT_EQ(results::resolve_parameter("CONC:1", names)->conversion, results::Conversion::pH);
    EXPECT_EQ(results::resolve_parameter("CONC:1", {})->conversion, results::Conversion::none);

    const auto unit = [&](const char* name) { return results::GetDimension(name, names); };
    EXPECT_EQ(unit("Density") + unit("Permeability") + unit("Temperature") + unit("Pressure"),
              " [kg/m³] [m²] [°C] [MPa]");
    EXPECT_EQ(unit("Velocity (Y)") + unit("Porosity") + unit("Head"), " [m/day] [/] [m]");
    EXPECT_EQ(unit("Hydraulic Conductivity") + unit("Heat Conductivity"), " [m/s] [W/(m K)]");
    EXPECT_EQ(unit("PH") + unit("pe"), "  ");
    EXPECT_EQ(unit("Ca") + unit("Tracer 1") + unit("Foo"), " [mmol/L] [mol/m³]");
}

TEST_F(Names, of_other_blocks_are_listed_from_the_geology_or_the_pressure_on) {
    results::StreamReader stream(
        folder_.write("m.nlo", "# DELX\n1\n# PRESSURE\n1\n# GEOLOGY\n#X\n# CONC           1\n1\n"
                               "#    ABCDEFGHIJKLMNOPQRSTUVWXYZ   \n"));
    EXPECT_EQ(results::available_parameters(stream),
              (std::vector<std::string>{"PRESSURE", "GEOLOGY", "", "CONC           1",
                                        "ABCDEFGHIJKLMNOPQRSTUVWXY"}));
}

// Completeness check, wells, and the simulator's input file.
#include "base/textfile.h"
#include "tdtest.h"

namespace {

namespace fs = std::filesystem;

class InputCommands : public TdTest {
protected:
    // The program folder, away from the model.
    InputCommands() { program_ = "--install '" + (user.path() / "program").string() + "'"; }

    Outcome create(const std::string& options = "") {
        return run_freely("create-input @m.td1 " + program_ + options);
    }

    std::string program_;
};

const std::string missing = "Missing or Wrong Input Data: ";
const std::string incomplete =
    "Create TERVEX Input File: Error occured -> TERVEX Inputfile not complete.\n";
const std::string written = "written\tm.nml\nwritten\ttervex.ctl\n";
const std::string success = "Create TERVEX Input File:      Inputfile successfully created. /  / "
                            "     You want to run TERVEX?\n";

TEST_F(InputCommands, check_stops_at_the_first_gap) {
    prepare("new @m.td1");
    // What repairs each gap, and the gap that comes next.
    const struct {
        std::string command, gap;
        const char* input = "";
    } steps[] = {
        {"save @m.td1", "Define the model grid first in: |Grid|Mesh Size."},
        {"grid set @m.td1 --columns 2 --rows 1 --layers 1",
         "Define the Property Zones first in: |Grid|Property Zones."},
        {"array write @m.td1 1403 --define",
         "Wrong value defined in: |Grid|Property Zones. /  / Value needs to be between 1 and 15.",
         "1 16"},
        {"array write @m.td1 1403", "Define the simulation type first in: |Type|Settings.", "1 2"},
        {"type set @m.td1 --flow 1",
         "Define the update between depending properties first in: |Type|Coupling."},
        {"coupling set @m.td1", "Define the Runtime Information Level and the Resultfile Format "
                                "first in: |Type|Info/Results."},
        {"info-results set @m.td1",
         "Define the Solver Parameters first in: |Time|Solver Parameters..."},
        {"solver set @m.td1 plu", "Define the Flow Boundaries first in: |Flow|Flow Boundaries."},
        {"array write @m.td1 5 --define",
         "Wrong value defined in: |Flow|Flow Boundaries. /  / Valid values are 1, -1, or 2.",
         "1 0"},
        {"array write @m.td1 5",
         "Define the rock permeability first in: |Flow|Initial Permeabiltiy/Porosity.", "1 -1"},
        {"array write @m.td1 1401 --define",
         "Wrong value defined in: |Flow|Initial Permeability / Porosity. /  / Negative "
         "permeability "
         "is not a valid entry.",
         "1 -1E-12"},
    };
    for (const auto& step : steps) {
        EXPECT_EQ(run(step.command, step.input), done()) << step.command;
        expect({{"check @m.td1", refused(missing + step.gap)},
                {"create-input @m.td1 " + program_, refused(missing + step.gap)}});
    }
    EXPECT_EQ(run("array write @m.td1 1401", "1 1"), done());
    EXPECT_EQ(run("check @m.td1"), done());
    EXPECT_EQ(flag("0 1"), "1");
    EXPECT_FALSE(fs::exists(user.path() / "program"));
}

TEST_F(InputCommands, check_all_lists_every_gap) {
    prepare("new @m.td1\ntype set @m.td1 --heat 1 --flow 1");
    Outcome gaps = run("check @m.td1 --all");
    EXPECT_EQ(gaps.status, td::refused);
    EXPECT_EQ(gaps.err, "");
    EXPECT_TRUE(gaps.out.starts_with(
        "1\t|Grid|Mesh Size\tDefine the model grid first in: |Grid|Mesh Size.\n"));
    std::string tests;
    std::istringstream lines(gaps.out);
    for (std::string line; std::getline(lines, line);) {
        tests += line.substr(0, line.find('\t')) + " ";
    }
    EXPECT_EQ(tests, "1 6 9 10 11 12 16 19 21 ");
    make_complete_model();
    EXPECT_EQ(run("check @m.td1 --all"), done());
}

TEST_F(InputCommands, create_input_writes_stream_and_control_file) {
    make_complete_model();
    EXPECT_EQ(create(), done(written, success));
    EXPECT_EQ(flag("0 1"), "0");
    EXPECT_TRUE(folder.read("m.nml").starts_with("# TITLE\r\nHorizontal -\r\n# IPUTDI\r\n"));
    const std::string control = base::to_utf8(user.read("program/tervex.ctl"));
    EXPECT_NE(control.find(in_folder("\r\n@m.nml\r\n")), std::string::npos);
    EXPECT_NE(control.find(in_folder("\r\n@m 3\r\n")), std::string::npos);
    const std::string first = folder.read("m.nml");
    EXPECT_EQ(create(" --no"), done(written, success));
    EXPECT_EQ(folder.read("m.nml"), first);
    prepare("reinject @m.td1 on");
    EXPECT_EQ(flag("0 1"), "1");
}

TEST_F(InputCommands, chemistry_is_refused_before_anything_else) {
    make_complete_model();
    const Outcome refusal =
        refused("Create TERVEX Input File: This edition cannot write models with chemistry yet.");
    prepare("flags set @m.td1 0 1 0\ntype set @m.td1 --chemistry 1\nflags set @m.td1 0 1 0");
    EXPECT_EQ(run("create-input @m.td1 " + program_), refusal);
    EXPECT_FALSE(fs::exists(user.path() / "program"));
    prepare("new @n.td1\ntype set @n.td1 --chemistry 1 --reaction kinetic");
    EXPECT_EQ(run("create-input @n.td1 " + program_), refusal);
    EXPECT_EQ(run("check @n.td1"),
              refused(missing + "Define the model grid first in: |Grid|Mesh Size."));
}

TEST_F(InputCommands, a_writer_that_stops_leaves_an_incomplete_file) {
    make_complete_model();
    EXPECT_EQ(create(), done(written, success));
    const std::string whole = folder.read("m.nml");
    prepare("periods set @m.td1 --unit 0");
    EXPECT_EQ(create(),
              refused("Missing Data: Please define first the time unit in: |Time|Periods\n" +
                      incomplete.substr(0, incomplete.size() - 1)));
    EXPECT_EQ(flag("0 1"), "1");
    EXPECT_LT(folder.read("m.nml").size(), whole.size());
}

TEST_F(InputCommands, a_companion_that_cannot_be_read_leaves_its_block_empty) {
    make_complete_model();
    const std::string tables = folder.read("m.por").substr(0, 4010);
    folder.write("m.por", tables);
    prepare("flags set @m.td1 9 4 0"); // without flow no test looks at the porosity
    const Outcome created = create();
    EXPECT_EQ(created.status, td::run_time_failure);
    EXPECT_EQ(created.out, "");
    EXPECT_EQ(created.err, in_folder("error: ends at byte 4010, where the record of period 1 was "
                                     "expected up to byte 4048 (@m.por)\n") +
                               incomplete);
    EXPECT_NE(folder.read("m.nml").find("\r\n# POR\r\n# "), std::string::npos);
    EXPECT_NE(folder.read("m.nml").find("\r\n# AREAKT\r\n"), std::string::npos);
    EXPECT_EQ(flag("0 1"), "1");
}

TEST_F(InputCommands, an_input_file_that_cannot_be_written_is_a_failure) {
    make_complete_model();
    fs::create_directory(folder.path() / "m.nml");
    folder.write("m.nml/in", "the way");
    EXPECT_EQ(create().status, td::run_time_failure);
    EXPECT_EQ(folder.read("m.nml/in"), "the way");
}

TEST_F(InputCommands, a_cross_section_is_written_with_its_own_axes) {
    make_complete_model("--layers=5 --orientation vertical");
    EXPECT_EQ(create(), done(written, success));
    EXPECT_TRUE(folder.read("m.nml").starts_with("# TITLE\r\nVertical -\r\n"));
    EXPECT_NE(folder.read("m.nml").find("# I0\r\n       3 \r\n# J0\r\n       5 \r\n"
                                        "# K0\r\n       2 \r\n"),
              std::string::npos);
}

TEST_F(InputCommands, wells_have_the_simulators_indices) {
    make_model();
    const std::string write = "array write @m.td1 ";
    expect({
        {"wells @m.td1", done()},
        {write + "11 --define", done(), "0 0 -0.5 0.25 0 0"},
        {write + "11 --layer 2", done(), "0 1E-3 0 0 0 0"},
        {"wells @m.td1", done("well\t1\t2\t2\t1\nwell\t2\t1\t1\t2\nwell\t3\t3\t2\t2\n"
                              "rate\t1\t1\t0.001\t0\nrate\t1\t2\t0.25\t0\nrate\t1\t3\t-0.5\t0\n")},
        {"periods set @m.td1 --period 2 --use 1", done()},
        {write + "11 --period 2 --layer 1", done(), "0 0 0 0.75 0 0"},
        {write + "299 --period 2 --layer 1", done(), "0 0 0 60.5 0 0"},
    });
    EXPECT_TRUE(run("wells @m.td1").out.ends_with("rate\t2\t2\t0.75\t60.5\n"));
    prepare("new @n.td1");
    EXPECT_EQ(run("wells @n.td1"),
              refused("Message: The size of the model mesh has to be specified first."));
}

} // namespace

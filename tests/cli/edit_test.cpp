// Worksheet sessions, the mesh editor and refinement by `td`.
#include "tdtest.h"

#include <algorithm>
#include <random>

namespace {

class EditTest : public TdTest {
protected:
    EditTest() { make_model(); }

    Outcome script(const std::string& lines, const std::string& options = "--param 1402") {
        return run_freely("edit @m.td1 --script - " + options, lines);
    }
};

TEST_F(EditTest, a_script_edits_layers_and_periods_and_its_files_come_and_go) {
    EXPECT_EQ(script("# a comment\n\nset 1 2 30.5\nget 1 2\nlayer 2\nget 1 2\nreset 7\n"
                     "period 3\nset 3 1 1,5\ncopy-period 3 4\nfiles\nleave cancel\nleave yes\n"),
              done("1\t2\t30.5\n1\t2\t10\nm.T1402\nm.{R}\nm.{Z}\n"));
    const std::string first = run("array read @m.td1 1402").out;
    EXPECT_EQ(first, "10 10 10\n30.5 10 10\n");
    EXPECT_EQ(run("array read @m.td1 1402 --layer 2").out, "7 7 7\n7 7 7\n");
    EXPECT_EQ(run("array read @m.td1 1402 --layer 2 --period 4").out, "10 10 1\n10 10 10\n");
    EXPECT_EQ(flag("2 0"), "2");
    EXPECT_EQ(script("reset 99\nlayer 2\nreset 99\nleave no\n"), done());
    EXPECT_EQ(run("array read @m.td1 1402").out, first);
    EXPECT_EQ(script("get 1 1 \nset 2 2 -3 4\nget 2 2\nleave no", "--param 11"),
              done("1\t1\t0\t0\n2\t2\t-3\t4\n"));
}

TEST_F(EditTest, what_is_refused_or_unknown_ends_the_script_as_with_no) {
    for (const char* param : {"1402", "6", "11"}) {
        EXPECT_EQ(script("leave yes\n", std::string("--param ") + param), done());
    }
    const Files before = files();
    const auto expect_no = [&](const std::string& options, const std::string& lines,
                               const Outcome& expected) {
        EXPECT_EQ(script("reset 55\n" + lines, options), expected) << lines;
        EXPECT_EQ(files(), before) << lines;
    };
    expect_no("--param 6", "set 1 1 0\nleave yes\n",
              refused("Error: Please enter a positive value."));
    expect_no("--param 11", "zone list\n",
              refused("Tervex Desk: Specification of zones is not allowed for Wells"));
    expect_no("--param 1402", "", refused("Temperature: Save changes to Temperature?"));
    expect_no("--param 1402", "sett 1 1 1\n", wrong_usage("unknown word \"sett\""));
    expect_no("--param 1402", "leave yes\nreset 1\n",
              wrong_usage("line 2: leave has to be the last line"));
    for (const char* line : {"set 4 1 1", "layer 3", "period 0", "zone delete 1", "set 1 1 1 2",
                             "zone add 5 0,0 1,1", "get 1", "leave maybe", "load \"a"}) {
        EXPECT_EQ(script(std::string("reset 55\n") + line).status, td::wrong_usage) << line;
        EXPECT_EQ(files(), before) << line;
    }
    expect_no("--param 1402 --no", "", done());
    EXPECT_EQ(script("reset 55\n", "--param 1402 --yes"), done());
    EXPECT_EQ(run("array get @m.td1 1402 1 1").out, "55\t1\n");
    EXPECT_EQ(script("", "--param 2").status, td::wrong_usage);
}

TEST_F(EditTest, zones_and_exchange_files_work_inside_a_session) {
    const std::string file = "\"" + in_folder("@a b.dat") + "\"";
    EXPECT_EQ(script("zone add 50 0,0 2,0 2,1 0,1\nzone transfer 1\nsave " + file +
                     " ascii\nreset 1\nload " + file +
                     "\nget 2 1\nget 3 1\nzone value 1 60\n"
                     "zone list\nleave yes\n"),
              done("2\t1\t50\n3\t1\t10\n1\t4\t60\t0\t0\t2\t1\t0\t0\t2\t0\t2\t1\t0\t1\n"));
    EXPECT_EQ(run("zones list @m.td1 --param 1402").out,
              "1\t4\t60\t0\t0\t2\t1\t0\t0\t2\t0\t2\t1\t0\t1\n");
    EXPECT_EQ(script("zone clear\nleave no\n"), done());
    EXPECT_NE(run("zones list @m.td1 --param 1402").out, "");
}

TEST_F(EditTest, random_scripts_ended_with_no_leave_the_folder_of_the_opening) {
    EXPECT_EQ(script("period 2\nperiod 3\nleave yes\n"), done());
    const Files before = files();
    std::mt19937 random(5);
    const char* const lines[] = {
        "layer 2",         "layer 1",        "period 3",   "period 2",
        "reset 4",         "set 2 1 9",      "zone clear", "zone add 3 0,0 1,0 1,1",
        "copy-period 1 2", "copy-period 3 1"};
    for (int session = 0; session < 20; ++session) {
        std::string text;
        for (int line = 0; line < 15; ++line) {
            text += std::string(lines[random() % std::size(lines)]) + "\n";
        }
        EXPECT_EQ(script(text + "leave no\n"), done());
        EXPECT_EQ(files(), before) << text;
    }
}

TEST_F(EditTest, a_session_that_was_killed_is_found_by_the_next_opening) {
    EXPECT_EQ(script("set 1 1 5\nleave yes\n"), done());
    const auto kill_session = [&] {
        const std::string out = "'" + (user.path() / "out").string() + "'";
        const std::string command =
            "rm -f " + out +
            "; (printf 'reset 20\\nlayer 2\\nfiles\\n'; sleep 2) | '" TD_PROGRAM "' edit '" +
            in_folder("@m.td1") + "' --param 1402 --script - >" + out + " & until grep -q Z " +
            out + " 2>/dev/null; do sleep 0.02; done; kill -9 $!";
        EXPECT_EQ(std::system(command.c_str()), 0);
    };
    kill_session();
    const auto has_copy = [&] {
        const std::vector<std::string> names = folder.names();
        return std::ranges::find(names, "m.T1402") != names.end();
    };
    EXPECT_TRUE(has_copy());
    prepare("open @m.td1"); // touches nothing
    EXPECT_TRUE(has_copy());
    prepare("open @m.td1 --restore");
    EXPECT_EQ(run("array get @m.td1 1402 1 1").out, "5\t1\n");
    kill_session();
    prepare("open @m.td1 --recover");
    EXPECT_EQ(run("array get @m.td1 1402 1 1").out, "20\t1\n");
    for (const std::string& name : folder.names()) {
        EXPECT_EQ(name.find('{'), std::string::npos) << name;
        EXPECT_FALSE(name.starts_with("m.T")) << name;
    }
    EXPECT_EQ(run("open @m.td1 --recover --restore"),
              wrong_usage("--recover and --restore exclude each other"));
}

TEST_F(EditTest, the_mesh_editor_refines_on_leaving_and_refinement_is_a_command_too) {
    EXPECT_EQ(script("set 3 2 8\nleave yes\n"), done());
    const auto mesh = [&](const std::string& lines, const std::string& options = "") {
        return run("mesh @m.td1 --script - " + options, lines);
    };
    EXPECT_EQ(mesh("go 3 2 2\nkey right\nkey down\nsize 4 5 2 1 3\nstatus\nleave no\n"),
              done("3\t2\t2\t3\t2\t4\t5\t2\t1\t3\n"));
    EXPECT_EQ(mesh("size 1 1 11 1\nleave yes\n"), refused("Error: Valid range is 1 to 10"));
    EXPECT_EQ(mesh("key right\n"), refused("Mesh Size: Save changes to Mesh Size?"));
    const std::string question = "After the grid refinement, your model will have 16 cells. You "
                                 "will need about 0 Megabytes of RAM for a simulation. Continue "
                                 "anyway?";
    EXPECT_EQ(mesh("go 3 1\nkey right\nleave yes\n"), refused("Warning: " + question));
    EXPECT_EQ(mesh("go 3 1\nkey right\nleave yes\n", "--yes"), done());
    EXPECT_EQ(run("array read @m.td1 1402").out, "10 10 10 10\n10 10 8 8\n");
    const Files before = files();
    expect({{"refine @m.td1", done("4\t2\t2\n")},
            {"refine @m.td1 --columns all=1,2=11 --yes", refused("Error: Valid range is 1 to 10")},
            {"refine @m.td1 --layers 2=2 --no", refused("")},
            {"refine @m.td1 --columns 5=2 --yes",
             wrong_usage("--columns: \"5\" is not a whole number from 1 to 4")}});
    EXPECT_EQ(files(), before);
    EXPECT_EQ(run("refine @m.td1 --rows 1=2 --layers all=2 --yes"), done("4\t3\t4\n"));
    EXPECT_EQ(run("array read @m.td1 1402 --layer 2").out, "10 10 10 10\n10 10 10 10\n10 10 8 8\n");
}

} // namespace

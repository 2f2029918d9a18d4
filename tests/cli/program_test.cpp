// What holds for every command: help, usage, exit statuses.
#include "tdtest.h"

#include "base/paths.h"
#include "td/help.h"
#include "td/version.h"

#include <sys/wait.h>

namespace {

namespace fs = std::filesystem;

// A command with plausible words for everything that it needs behind `model`.
std::string line_of(const td::Command& command, const std::string& model) {
    static const std::map<std::string_view, std::string> words = {
        {"SECTION", "a"},     {"KEY", "b"},      {"A", "1"},       {"B", "1"},
        {"VALUE", "1"},       {"N", "6"},        {"COL", "1"},     {"ROW", "1"},
        {"FROM", "1"},        {"TO", "2"},       {"SLOT", "1"},    {"NAME", "P1"},
        {"FILE", "@file"},    {"TEXT", "off"},   {"SWITCH", "on"}, {"SOLVER", "plu"},
        {"TARGET", "@t.td1"}, {"PATH", "@p.td1"}, {"PARAM", "TEMP"}, {"TICKS", "1"},
        {"EXT", "100"},       {"POINTNAME", "P1"}, {"FORMULA", "TEMP"}, {"INDEX", "0"},
        {"NUMBER", "1"}, {"SOURCE", "@s.nlo"}};
    std::string line = command.name;
    for (const td::ArgumentSpec& argument : command.arguments) {
        const std::string_view name = argument.name;
        if (argument.required) {
            line += " " + (name == "MODEL" ? model : words.at(name));
        }
    }
    for (const td::OptionSpec& option : td::all_options(command)) {
        line += option.required ? std::string(" ") + option.name + " 1" : "";
    }
    return line;
}

bool reads_model(const td::Command& command) {
    return !command.arguments.empty() &&
           std::string_view(command.arguments[0].name) == td::model_argument.name &&
           std::string_view(command.name) != "new";
}

class Program : public TdTest {
protected:
    static void for_each_model_command(const std::function<void(const td::Command&)>& visit) {
        td::for_each_command([&](const td::Command& command) {
            if (reads_model(command)) {
                visit(command);
            }
        });
    }

    // Runs the built program in the test's folder; exit status, and what it printed.
    Outcome spawn(const std::string& arguments) {
        const std::string command = "cd '" + folder.path().string() +
                                    "' && TD_REPORTS=off '" TD_PROGRAM "' " + arguments +
                                    " >'" + (user.path() / "out").string() + "' 2>'" +
                                    (user.path() / "err").string() + "'";
        const int status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, user.read("out"), user.read("err")};
    }
};

TEST_F(Program, help_of_every_command_lists_all_its_arguments_and_options) {
    int commands = 0;
    td::for_each_command([&](const td::Command& command) {
        ++commands;
        const Outcome help = run(std::string(command.name) + " --help");
        EXPECT_EQ(help.status, td::done) << command.name;
        EXPECT_EQ(help.err, "") << command.name;
        EXPECT_TRUE(help.out.starts_with("Usage: td " + std::string(command.name))) << help.out;
        for (const td::ArgumentSpec& argument : command.arguments) {
            EXPECT_NE(help.out.find(std::string("\n  ") + argument.name + " "), std::string::npos);
        }
        for (const td::OptionSpec& option : td::all_options(command)) {
            EXPECT_NE(help.out.find(std::string("\n  ") + option.name + " "), std::string::npos);
        }
        EXPECT_NE(run("--help").out.find(std::string("\n  ") + command.name + " "),
                  std::string::npos);
    });
    EXPECT_GT(commands, 60);
}

TEST_F(Program, the_manual_names_every_command) {
    const std::string page = base::read_bytes(TD_SOURCE_DIR "/docs/manual/td.md");
    td::for_each_command([&](const td::Command& command) {
        EXPECT_NE(page.find("`" + std::string(command.name) + "`"), std::string::npos)
            << command.name;
    });
}

TEST_F(Program, help_and_version_go_to_standard_output) {
    EXPECT_EQ(run("--version"), done(std::string("td ") + td::version + "\n"));
    EXPECT_TRUE(run("--help").out.starts_with("td does from a shell what Tervex Desk does"));
    EXPECT_TRUE(run("layers --help").out.starts_with("Grid and layers:\n  layers set"));
    EXPECT_EQ(run("layers set @m.td1 --type 1=1 --help"), run("layers set --help"));
    EXPECT_EQ(run("-h"), run("--help"));
    EXPECT_EQ(run("help layers set"), run("layers set --help"));
}

TEST_F(Program, a_command_that_does_not_exist_is_wrong_usage) {
    expect({
        {"", wrong_usage("td: a command is missing; see td --help")},
        {"fold @m.td1", wrong_usage("td: unknown command \"fold @m.td1\"; see td --help")},
        {"grid", wrong_usage("td: unknown command \"grid\"; see td grid --help")},
        {"grid sow @m.td1", wrong_usage("td: unknown command \"grid sow @m.td1\"; did you mean "
                                        "\"td grid show\"?")},
        {"fold --help", wrong_usage("td: unknown command \"fold --help\"; see td --help")},
    });
}

TEST_F(Program, every_command_refuses_unknown_options_and_missing_arguments) {
    td::for_each_command([&](const td::Command& command) {
        const std::string name = command.name;
        EXPECT_EQ(run(line_of(command, "@m.td1") + " --nonsense=1"),
                  wrong_usage("td " + name + ": unknown option \"--nonsense\""));
        if (!command.arguments.empty() && command.arguments[0].required) {
            EXPECT_EQ(run(name).status, td::wrong_usage);
            EXPECT_EQ(run(name).err,
                      "td " + name + ": " + command.arguments[0].name + " is required\n");
        }
    });
}

TEST_F(Program, words_that_no_option_or_argument_can_take_are_wrong_usage) {
    make_model();
    expect({
        {"grid show @m.td1 x", wrong_usage("td grid show: unexpected argument \"x\"")},
        {"grid show @m.td1 --edges=1",
         wrong_usage("td grid show: no value belongs to \"--edges\"")},
        {"grid set @m.td1 --rows",
         wrong_usage("td grid set: a value is missing behind \"--rows\"")},
        {"grid set @m.td1 --rows --layers 1",
         wrong_usage("td grid set: a value is missing behind \"--rows\"")},
        {"grid set @m.td1 --rows 1 --rows 2", wrong_usage("td grid set: --rows is given twice")},
        {"points clear @m.td1 --yes --no", wrong_usage("--yes and --no exclude each other")},
        {"grid show @m.td1 --yes", wrong_usage("td grid show: unknown option \"--yes\"")},
    });
}

TEST_F(Program, a_value_may_be_negative_empty_or_in_brackets) {
    make_model();
    prepare("points set @m.td1 1 --x -1.5 --y=-2 --name '[a,b]'\n"
            "points set @m.td1 2 --x=-1E-3 --name '' --layer -4\n"
            "note set @m.td1 S K '[x]'\n"
            "note set @m.td1 S L ''");
    expect({
        {"points list @m.td1",
         done("1\t0\t-1.5\t-2\t0\t0\t0\t[a,b]\n2\t0\t-0.001\t0\t-4\t0\t0\t\n")},
        {"note get @m.td1 S K", done("[x]\n")},
        {"note get @m.td1 S L", done("\n")},
        {"grid show -- @m.td1 -1", wrong_usage("td grid show: unexpected argument \"-1\"")},
    });
}

TEST_F(Program, quiet_keeps_questions_and_refusals) {
    make_complete_model();
    expect({{"rock set @m.td1 --quiet", done()},
            {"grid set @m.td1 --rows 0 --quiet", refused("Error: Please enter a positive value.")},
            {"points clear @m.td1 --quiet",
             refused("Tervex Desk: This will clear the Table of Boreholes. Continue?")}});
}

TEST_F(Program, a_model_that_is_not_there_is_a_run_time_failure) {
    for_each_model_command([&](const td::Command& command) {
        EXPECT_EQ(run(line_of(command, "@gone.td1")),
                  failure(in_folder("the model does not exist (@gone.td1)")))
            << command.name;
    });
}

TEST_F(Program, a_model_is_known_by_its_ending) {
    folder.write("m.txt", "[VERSION]\r\nNUMBER=5000\r\n");
    const std::string text = "Open model: @m.txt is not a model file of TD 1 or BD 5.";
    for_each_model_command([&](const td::Command& command) {
        EXPECT_EQ(run(line_of(command, "@m.txt")), refused(in_folder(text))) << command.name;
    });
    expect({{"new @m.txt", refused(text)}});
}

TEST_F(Program, a_model_of_an_older_version_is_refused) {
    folder.write("m.td1", "[version]\r\nnumber = 4999\r\n");
    for_each_model_command([&](const td::Command& command) {
        EXPECT_EQ(run(line_of(command, "@m.td1")),
                  refused(in_folder("Tervex Desk: @m.td1 is not a model file of BD 5.")))
            << command.name;
    });
}

TEST_F(Program, commands_that_show_change_no_file) {
    make_complete_model();
    const Files before = files();
    td::for_each_command([&](const td::Command& command) {
        const std::string name = command.name;
        const std::string verb = name.substr(name.rfind(' ') + 1);
        if (reads_model(command) &&
            (verb == "show" || verb == "list" || verb == "info" || verb == "read" ||
             verb == "get" || verb == "check" || verb == "wells" || verb == "menu")) {
            run(line_of(command, "@m.td1"));
        }
    });
    EXPECT_EQ(files(), before);
}

TEST_F(Program, models_have_any_name_and_stand_anywhere) {
    for (const std::string name : {"mit blank/Größe 2.td1", "-x/-m.td1", "a=b/[1].TD1"}) {
        fs::create_directories((folder.path() / name).parent_path());
        prepare("new '@" + name + "'\ngrid set '@" + name + "' --columns 2\nopen '@" + name + "'");
        EXPECT_TRUE(run("grid show '@" + name + "'").out.starts_with("dimension\t2\t30\t1\n"));
    }
    fs::create_directory(folder.path() / "--x");
    EXPECT_EQ(spawn("new -x/n.td1"), done());
    EXPECT_EQ(spawn("new ./--x/n.td1"), done());
    EXPECT_EQ(spawn("new -- --x/o.td1"), done());
}

TEST_F(Program, a_linked_project_file_stays_a_link) {
    make_model();
    fs::create_directory(folder.path() / "link");
    fs::create_symlink("../m.td1", folder.path() / "link/m.td1");
    prepare("project set @link/m.td1 INFO DESCRIPTION linked");
    EXPECT_TRUE(fs::is_symlink(folder.path() / "link/m.td1"));
    EXPECT_EQ(run("project show @m.td1 INFO"), done("INFO\tDESCRIPTION\tlinked\n"));
}

TEST_F(Program, a_folder_that_cannot_be_written_is_a_failure) {
    if (::geteuid() == 0) {
        GTEST_SKIP() << "the superuser writes everywhere";
    }
    make_model();
    fs::permissions(folder.path(), fs::perms::owner_read | fs::perms::owner_exec);
    EXPECT_EQ(run("save @m.td1").status, td::run_time_failure);
    EXPECT_EQ(run("grid show @m.td1").status, td::done);
    fs::permissions(folder.path(), fs::perms::owner_all);
}

TEST_F(Program, the_program_passes_words_streams_and_status_on) {
    make_model();
    EXPECT_EQ(spawn("--version"), done(std::string("td ") + td::version + "\n"));
    EXPECT_EQ(spawn("array write m.td1 6 < /dev/null"),
              failure("ends behind 0 values, where 6 were expected (standard input)"));
    EXPECT_EQ(spawn("array read m.td1 6").status, td::run_time_failure);
    EXPECT_EQ(spawn("grid set m.td1 --rows 0"), refused("Error: Please enter a positive value."));
    EXPECT_EQ(spawn("nonsense").status, td::wrong_usage);
}

TEST_F(Program, output_that_cannot_be_written_is_a_failure) {
    std::istringstream in;
    std::ostream out(nullptr);
    std::ostringstream err;
    EXPECT_EQ(td::run_program({"--version"}, in, out, err), td::run_time_failure);
    EXPECT_EQ(err.str(), "error: cannot be written (standard output)\n");
}

} // namespace

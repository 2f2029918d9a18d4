// Starting the simulator, and the serialized run.
#include "tdtest.h"

#include <chrono>
#include <thread>

namespace {

namespace fs = std::filesystem;

const std::string question =
    "Tervex Desk: The selected model or modeling tool cannot be started, because a model located "
    "in the same folder is possibly running. Please use the key combination Alt+TAB to check "
    "whether a model is running. / 1. If there is a running model, you must click on Cancel to "
    "close this dialog box. / 2. If no model is running, you may click on OK to start the "
    "simulation or modeling tool. ";
const std::string backup =
    "Create back-up files: You did not back-up your Result files until now. / If you start the "
    "serialized run now your Result files will probably be overwritten. / Press Yes for back-up, "
    "No to go on, or Cancel to return to the Menu.";

class RunCommands : public TdTest {
protected:
    RunCommands() {
        program_ = user.path() / "program";
        install_ = " --install '" + program_.string() + "'";
        make_complete_model();
    }

    void script(const std::string& name, const std::string& lines = "") {
        const fs::path file =
            user.write("program/" + name, "#!/bin/sh\necho " + name + "\n" + lines);
        fs::permissions(file, fs::perms::owner_all);
    }
    void create_input() { prepare("create-input @m.td1 --no" + install_); }
    bool exists(const std::string& name) { return fs::exists(folder.path() / name); }
    Outcome serialized(const std::string& options) {
        return run("serialized-run @m.td1" + install_ + " " + options);
    }

    fs::path program_;
    std::string install_;
};

TEST_F(RunCommands, an_input_file_is_needed_and_newer_than_the_model) {
    const std::string line = "run @m.td1 --yes" + install_;
    expect({{line, refused("Message: Creat the input file first in: |Models|Create TERVEX "
                           "Inputfile")}});
    create_input();
    expect({{line, failure("cannot be started: No such file or directory (" +
                           (program_ / "tervex.sh").string() + ")")}});
    prepare("reinject @m.td1 on");
    expect({{line, refused("Create a new input file: You have either edited the model or creation "
                           "of the input file was not successfull.")}});
}

TEST_F(RunCommands, the_starter_is_waited_for_on_demand_only) {
    create_input();
    script("tervex.sh", "until [ -e go ]; do sleep 0.01; done\necho ended $#\n");
    const Outcome started = done("started\ttervex.sh\n");
    EXPECT_EQ(run("run @m.td1" + install_), started);
    EXPECT_EQ(folder.read("m.log").find("ended"), std::string::npos);
    user.write("program/go", "");
    for (int i = 0; i < 1000 && folder.read("m.log") != "tervex.sh\nended 0\n"; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    EXPECT_EQ(folder.read("m.log"), "tervex.sh\nended 0\n");
    fs::remove(folder.path() / "m.log");
    EXPECT_EQ(run("run @m.td1 --wait" + install_), started);
    EXPECT_EQ(folder.read("m.log"), "tervex.sh\nended 0\n");
    script("tervex.sh", "exit 4\n");
    const std::string name = (program_ / "tervex.sh").string();
    EXPECT_EQ(run_freely("run @m.td1 --wait" + install_),
              (Outcome{td::run_time_failure, started.out,
                       "error: ended with exit status 4; m.log tells why (" + name + ")\n"}));
}

TEST_F(RunCommands, a_flag_file_asks_before_anything_is_done) {
    create_input();
    script("tervex.sh");
    const fs::path flag = user.write("program/FLAGFILE", "");
    expect({{"run @m.td1" + install_, refused(question)},
            {"run @m.td1 --no" + install_, refused("")}});
    EXPECT_TRUE(fs::exists(flag));
    EXPECT_EQ(run("run @m.td1 --yes --wait" + install_), done("started\ttervex.sh\n"));
    EXPECT_FALSE(fs::exists(flag));
}

TEST_F(RunCommands, create_input_runs_the_model_on_yes) {
    const std::string written = "written\tm.nml\nwritten\ttervex.ctl\n";
    const std::string success = "Create TERVEX Input File:      Inputfile successfully created. /  "
                                "/      You want to run TERVEX?\n";
    const std::string create = "create-input @m.td1" + install_;
    EXPECT_EQ(run(create), done(written, success));
    EXPECT_EQ(run(create + " --no"), done(written, success));
    const Outcome missing = run_freely(create + " --yes");
    EXPECT_EQ(missing.status, td::run_time_failure);
    EXPECT_EQ(missing.out, written);
    script("tervex.sh");
    EXPECT_EQ(run_freely(create + " --yes"), done(written + "started\ttervex.sh\n", success));
}

TEST_F(RunCommands, a_backup_alone_renames_input_and_result) {
    const std::string rename = "serialized-run @m.td1 --no-start --backup ";
    EXPECT_EQ(run(rename + "m.*.00"), done());
    folder.write("m.nml", "input");
    EXPECT_EQ(run(rename + "M.*.7"), done("renamed\tm.nml\tm.nml.7\n"));
    folder.write("m.nml", "next input");
    folder.write("m.NLO", "result");
    EXPECT_EQ(run(rename + "m.*.a.b"), done("renamed\tm.nml\tm.nml.a.b\n"
                                            "renamed\tm.NLO\tm.nlo.a.b\n"));
    EXPECT_EQ(folder.read("m.nml.7"), "input");
    EXPECT_EQ(folder.read("m.nml.a.b"), "next input");
    EXPECT_EQ(folder.read("m.nlo.a.b"), "result");
    EXPECT_FALSE(exists("m.nml") || exists("m.NLO") || exists("m.nlo"));

    folder.write("m.nml", "third input");
    folder.write("M.NLO.8", "");
    const Outcome form = refused("Message: The entered filename isn't correct. / You must not "
                                 "change the Projectname! / Please use the following format: "
                                 "[Projectname.*.?] / Vary the [?] only.");
    for (const char* name :
         {"n.*.1", "m.*.", "m.*", "m.1", "m.*.1?", "m.*.*", "m.*./x", "mm.*.1", "'m.*.a\\b'"}) {
        EXPECT_EQ(run(rename + name), form) << name;
    }
    for (const char* name : {"m.*.7", "m.*.8"}) {
        EXPECT_EQ(run(rename + name), refused("Message: The defined second file extension, already "
                                              "exists. / Choose another one."));
    }
}

TEST_F(RunCommands, a_result_becomes_the_next_input) {
    folder.write("m.nml", "input");
    folder.write("m.nlo", "result");
    script("minitervex");
    EXPECT_EQ(serialized("--nlo @m.nlo --backup m.*.01 --wait"),
              done("renamed\tm.nml\tm.nml.01\nrenamed\tm.nlo\tm.nlo.01\n"
                   "copied\tm.nlo.01\tm.nml\nstarted\tminitervex\n"));
    EXPECT_EQ(folder.read("m.nml.01"), "input");
    EXPECT_EQ(folder.read("m.nlo.01"), "result");
    EXPECT_EQ(folder.read("m.nml"), "result");
    EXPECT_FALSE(exists("m.nlo"));
    EXPECT_EQ(folder.read("m.log"), "minitervex\n");
    EXPECT_NE(user.read("program/tervex.ctl"), "");

    script("tervex");
    folder.write("m.nlo", "second result");
    EXPECT_EQ(serialized("--nlo @m.nlo.01 --no --wait"),
              done("copied\tm.nlo.01\tm.nml\nstarted\ttervex\n"));
    EXPECT_EQ(folder.read("m.nlo"), "second result");
    EXPECT_EQ(serialized("--nlo @m.nlo --yes --wait"),
              done("renamed\tm.nml\tm.nml.00\nrenamed\tm.nlo\tm.nlo.00\n"
                   "copied\tm.nlo.00\tm.nml\nstarted\ttervex\n"));
    EXPECT_EQ(serialized("--nlo @m.nlo.00 --yes"),
              refused("Message: The defined second file extension, already exists. / Choose "
                      "another one."));
}

TEST_F(RunCommands, a_serialized_run_that_cannot_be_changes_nothing) {
    folder.write("m.nml", "input");
    folder.write("m.nlo", "result");
    fs::create_directory(folder.path() / "other");
    fs::create_directory_symlink(folder.path(), folder.path() / "other" / "link");
    folder.write("other/m.nlo", "");
    const std::string run_it = "serialized-run @m.td1" + install_ + " --nlo ";
    const fs::path tervex = program_ / "tervex";
    expect({
        {run_it + "@other/m.nlo", refused("Message: Do not change the directory!")},
        {run_it + "@none.nlo --no", failure("does not exist (@none.nlo)")},
        {run_it + "@m.nlo --no",
         failure("cannot be started: No such file or directory (" + tervex.string() + ")")},
        {run_it + "@m.nml", wrong_usage("--nlo: \"@m.nml\" is no result file (.nlo)")},
        {run_it + "@m.nlo", refused(backup)},
        {"serialized-run @m.td1 --backup m.*.1",
         wrong_usage("td serialized-run: --nlo FILE, or --backup NAME with --no-start, is "
                     "missing")},
    });
    script("tervex");
    user.write("program/flagfile", "");
    expect({{run_it + "@m.nlo --backup m.*.1", refused(question)},
            {run_it + "@m.nlo --backup m.*.1 --no", refused("")}});
    EXPECT_EQ(run(run_it + "@other/link/m.nlo --yes --wait").status, td::done);
    EXPECT_FALSE(fs::exists(program_ / "flagfile"));
}

} // namespace

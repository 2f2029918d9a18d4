#include "input/runcontrol.h"

#include "base/paths.h"
#include "input/smallmodel.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

namespace fs = std::filesystem;
using input::mnuTervexRun;
using input::test::SmallModel;

const std::string running =
    "The selected model or modeling tool cannot be started, because a model located in the same "
    "folder is possibly running. Please use the key combination Alt+TAB to check whether a model "
    "is running.\n1. If there is a running model, you must click on Cancel to close this dialog "
    "box.\n2. If no model is running, you may click on OK to start the simulation or modeling "
    "tool. ";

class RunControl : public testing::Test {
protected:
    RunControl() {
        model.create();
        model.project.Write_Project_File(model.files);
        model.files.commit();
        program("tervex.sh");
    }

    void program(const std::string& name) {
        const fs::path file = install.write(name, "#!/bin/sh\necho " + name + " $# in \"$PWD\"\n");
        fs::permissions(file, fs::perms::owner_all);
    }
    void typ(const std::string& ending) {
        model.set_typ(sim::typ::IPUTDI, "123456789012" + ending);
        model.files.commit();
    }

    // Runs to the end of all that was started; their names.
    std::string run() {
        auto result = mnuTervexRun(model.project, model.files, {install.path(), {}}, model.user);
        EXPECT_FALSE(result.refusal) << result.refusal->text;
        EXPECT_FALSE(result.cancelled);
        std::string names;
        for (input::Started& started : result.started) {
            EXPECT_EQ(started.process.wait([] { return false; }), 0);
            names += started.program.filename().string() + " ";
        }
        return names;
    }
    std::string refusal() {
        const auto before = install.names();
        const auto result =
            mnuTervexRun(model.project, model.files, {install.path(), {}}, model.user);
        EXPECT_EQ(install.names(), before);
        return result.refusal ? result.refusal->title + ": " + result.refusal->text : "";
    }
    bool in_install(const std::string& name) { return fs::exists(install.path() / name); }

    SmallModel model{2, 1, 1};
    const support::TempFolder install;
};

TEST_F(RunControl, the_starter_runs_in_the_program_folder_and_prints_into_the_log) {
    EXPECT_EQ(run(), "tervex.sh ");
    EXPECT_EQ(model.files.read(".log"), "tervex.sh 0 in " + install.path().string() + "\n");
    EXPECT_EQ(model.project.flags(0, 1), 0);
}

TEST_F(RunControl, a_control_file_that_names_another_model_is_written_again) {
    EXPECT_EQ(run(), "tervex.sh ");
    const std::string own = install.read("tervex.ctl");
    EXPECT_NE(own.find(base::to_ansi(model.files.base()) + " 3\r\n"), std::string::npos);
    install.write("tervex.ctl", "# by hand\r\n" + own);
    run();
    EXPECT_EQ(install.read("tervex.ctl"), "# by hand\r\n" + own);
    for (const std::string& other : {std::string("/else/n.nml\r\n/else/n 3\r\n"), std::string(),
                                     model.files.base() + ".nml\r\n" + model.files.base() + " 2"}) {
        install.write("tervex.ctl", other);
        run();
        EXPECT_EQ(install.read("tervex.ctl"), own) << other;
    }
}

TEST_F(RunControl, a_flag_file_of_any_case_asks_whether_a_model_is_running) {
    const auto names = install.write("FlagFile", "").filename();
    model.user.expect_question("Tervex Desk", running, base::Answer::cancel);
    const auto result = mnuTervexRun(model.project, model.files, {install.path(), {}}, model.user);
    EXPECT_TRUE(result.cancelled);
    EXPECT_TRUE(result.started.empty());
    EXPECT_EQ(install.names(), (std::vector<std::string>{"FlagFile", "tervex.sh"}));
    install.write("FLAGFILE", "");
    model.user.expect_question("Tervex Desk", running, base::Answer::ok);
    EXPECT_EQ(run(), "tervex.sh ");
    EXPECT_EQ(install.names(), (std::vector<std::string>{"tervex.ctl", "tervex.sh"}));
}

TEST_F(RunControl, information_on_screen_opens_the_time_window) {
    typ("5");
    model.user.expect_failure("cannot be started: No such file or directory", base::Reaction::next);
    EXPECT_EQ(run(), "tervex.sh ");
    program("TimeInfo");
    EXPECT_EQ(run(), "tervex.sh TimeInfo ");
    typ("1");
    EXPECT_EQ(run(), "tervex.sh ");
}

TEST_F(RunControl, without_chemistry_data_files_are_brought_when_they_are_there) {
    install.write("PITZER.DAT", "p");
    install.write("caso4.dat", "c");
    EXPECT_EQ(run(), "tervex.sh ");
    EXPECT_EQ(base::read_bytes(model.files.folder() / "pitzer.dat"), "p");
    EXPECT_FALSE(fs::exists(model.files.folder() / "phrqpitz.dat"));
    install.write("PITZER.DAT", "new");
    run();
    EXPECT_EQ(base::read_bytes(model.files.folder() / "pitzer.dat"), "p");
}

TEST_F(RunControl, with_chemistry_a_missing_data_file_is_a_refusal) {
    const auto not_available = [](const std::string& name) {
        return "Message: The file " + name + " is not available.";
    };
    model.project.flags.set(9, 7, 1);
    model.project.flags.set(9, 12, 1);
    EXPECT_EQ(refusal(), not_available("kalmexdh.dat"));
    model.project.flags.set(9, 12, 3);
    EXPECT_EQ(refusal(), not_available("phrqpitz.dat"));
    install.write("phrqpitz.dat", "");
    EXPECT_EQ(refusal(), not_available("pitzer.dat"));
    install.write("pitzer.dat", "");
    for (const auto& [approach, name] : {std::pair(2, "caso4.dat"), std::pair(4, "quarz.dat")}) {
        model.project.flags.set(9, 12, approach);
        EXPECT_EQ(refusal(), not_available(name));
        EXPECT_FALSE(fs::exists(model.files.folder() / "pitzer.dat"));
    }
    base::replace_file(model.files.folder() / "quarz.dat", "q");
    EXPECT_EQ(run(), "tervex.sh ");
    EXPECT_EQ(install.read("quarz.dat"), "q");
}

TEST_F(RunControl, spare_folders_are_looked_through_for_what_the_program_folder_lacks) {
    const support::TempFolder spare, model_folder;
    const fs::path nlo = model.files.folder() / "m.nlo";
    base::replace_file(nlo, "result");
    fs::rename(install.path() / "tervex.sh", spare.path() / "tervex.sh");
    const input::Programs programs{install.path(), {spare.path()}};
    auto result = mnuTervexRun(model.project, model.files, programs, model.user);
    EXPECT_EQ(result.started.at(0).program, spare.path() / "tervex.sh");

    const input::SerializedRunForm form{nlo, "m.*.1"};
    EXPECT_THROW(input::SerializedRun(form, model.files, programs, model.user), base::FileFailure);
    EXPECT_TRUE(fs::exists(nlo));
    program("tervex");
    fs::rename(install.path() / "tervex", spare.path() / "minitervex");
    auto serialized = input::SerializedRun(form, model.files, programs, model.user);
    EXPECT_EQ(serialized.started.at(0).program, spare.path() / "minitervex");
    EXPECT_EQ(model.files.read(".nml"), "result");
}

// What is a link leads to the next input afterwards; the back-up keeps what it led to.
TEST_F(RunControl, the_backup_of_a_linked_input_holds_the_old_input) {
    const support::TempFolder elsewhere;
    const fs::path nml = model.files.base() + ".nml", nlo = model.files.base() + ".nlo";
    fs::rename(nml, elsewhere.path() / "far.nml");
    fs::create_symlink(elsewhere.path() / "far.nml", nml);
    base::replace_file(nlo, "result");
    const auto result =
        input::SerializedRun({nlo, "m.*.b", false}, model.files, {install.path(), {}}, model.user);
    EXPECT_EQ(base::read_bytes(model.files.base() + ".nml.b"), model.stream);
    EXPECT_EQ(elsewhere.read("far.nml"), "result");
    EXPECT_EQ(base::read_bytes(model.files.base() + ".nlo.b"), "result");
    EXPECT_FALSE(fs::exists(nlo));
    EXPECT_TRUE(result.started.empty());
}

} // namespace

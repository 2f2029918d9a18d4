// "Run TERVEX" and "Serialized Run" in the window, with scripts in the place of the simulator.
#include "completemodel.h"

#include "ui/dialogs/runmonitor.h"

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QUrl>

namespace {

namespace fs = std::filesystem;
using support::CompleteModelFixture;
using support::type_into;

class Run : public CompleteModelFixture {
protected:
    void make_runnable(const std::string& lines) {
        make_complete_model();
        program("tervex.sh", lines);
        folder.write("m.nml", "# TITLE\r\n");
        change([](app::Workspace& model) { model.project.flags.set(0, 1, 0); });
    }
    void run() { window.run_command("mnuTervexRun"); }
    ui::RunMonitor& monitor() { return widget<ui::RunMonitor>(window, "RunMonitor"); }
    QString state() {
        return widget<QTreeWidget>(monitor(), "lstPrograms").topLevelItem(0)->text(2);
    }
    QString log() { return widget<QPlainTextEdit>(monitor(), "txtLog").toPlainText(); }
    void press(const char* button) { support::click(widget<QPushButton>(monitor(), button)); }
    bool ends() {
        return becomes_true([this] { return !monitor().is_running(); });
    }
};

TEST_F(Run, the_window_shows_process_state_and_what_is_printed) {
    make_runnable("echo first; while [ ! -e go ]; do sleep 0.05; done; echo l\303\244st; exit 3");
    run();
    EXPECT_TRUE(monitor().isVisible());
    EXPECT_FALSE(monitor().isModal());
    EXPECT_EQ(monitor().windowTitle(), "Run TERVEX");
    const auto* item = widget<QTreeWidget>(monitor(), "lstPrograms").topLevelItem(0);
    EXPECT_EQ(item->text(0), "tervex.sh");
    EXPECT_GT(item->text(1).toInt(), 1);
    EXPECT_EQ(state(), "running");
    EXPECT_TRUE(becomes_true([this] { return log() == "first\n"; }));
    folder.write("program/go", "");
    ASSERT_TRUE(ends());
    EXPECT_EQ(state(), "ended with exit status 3");
    EXPECT_EQ(log(), "first\nl\303\244st\n");
    EXPECT_FALSE(widget<QPushButton>(monitor(), "cmdStop").isEnabled());
}

TEST_F(Run, a_second_command_raises_the_window_and_the_next_run_takes_its_place) {
    make_runnable("echo run >>count; while [ ! -e go ]; do sleep 0.05; done");
    run();
    press("cmdClose");
    EXPECT_FALSE(monitor().isVisible());
    run();
    EXPECT_TRUE(monitor().isVisible());
    EXPECT_TRUE(becomes_true([this] {
        return fs::exists(program_folder() / "count") && folder.read("program/count") == "run\n";
    }));
    press("cmdClose");
    folder.write("program/go", "");
    ASSERT_TRUE(ends());
    EXPECT_EQ(user.statuses().back(), "tervex.sh ended with exit status 0");
    run();
    ASSERT_TRUE(ends());
    EXPECT_EQ(window.findChildren<ui::RunMonitor*>().size(), 1);
    EXPECT_EQ(folder.read("program/count"), "run\nrun\n");
}

TEST_F(Run, stop_ends_the_program_after_a_question) {
    make_runnable("echo ready; exec sleep 60");
    run();
    ASSERT_TRUE(becomes_true([this] { return log() == "ready\n"; }));
    const std::string question =
        "Do you want to stop tervex.sh?\n\nWhat was written until now stays in the folder.";
    user.expect_question("Run TERVEX", question, base::Answer::no);
    press("cmdStop");
    EXPECT_EQ(state(), "running");
    user.expect_question("Run TERVEX", question, base::Answer::yes);
    press("cmdStop");
    ASSERT_TRUE(ends());
    EXPECT_TRUE(state().startsWith("stopped, ended by signal")) << state().toStdString();
}

TEST_F(Run, the_folder_of_the_log_is_shown) {
    make_runnable("exit 0");
    run();
    QUrl shown;
    monitor().set_opener([&](const QUrl& url) { shown = url; });
    press("cmdFolder");
    EXPECT_EQ(shown.toLocalFile().toStdString(), folder.path().string());
}

TEST_F(Run, a_model_without_input_file_or_edited_since_is_refused) {
    make_complete_model();
    user.expect_message("Message",
                        "Creat the input file first in: |Models|Create TERVEX Inputfile");
    run();
    folder.write("m.nml", "# TITLE\r\n");
    user.expect_message("Create a new input file",
                        "You have either edited the model or creation of the input file was not "
                        "successfull.");
    run();
    change([](app::Workspace& model) { model.project.flags.set(0, 1, 0); });
    user.expect_failure("cannot be started: No such file or directory", base::Reaction::leave);
    run();
    EXPECT_EQ(window.findChild<ui::RunMonitor*>(), nullptr);
}

class Serialized : public Run {
protected:
    Serialized() {
        make_runnable("exit 0");
        program("tervex", "echo serialized");
        folder.write("m.nlo", "result");
        folder.write("m.nml", "input");
    }
    void in_form(const std::function<void(QDialog&)>& form) {
        in_dialog("mnuTervexSerial", "SerializedRun", form);
    }
    static void press_in(QDialog& dialog, const char* button) {
        support::click(widget<QPushButton>(dialog, button));
    }
    static const std::string& backup_question() {
        static const std::string text =
            "You did not back-up your Result files until now.\n"
            "If you start the serialized run now your Result files will probably be overwritten.\n"
            "Press Yes for back-up, No to go on, or Cancel to return to the Menu.";
        return text;
    }
};

TEST_F(Serialized, renaming_and_the_run_make_the_result_the_next_input) {
    in_form([&](QDialog& dialog) {
        auto& names = widget<QLineEdit>(dialog, "new_Names");
        EXPECT_EQ(names.text(), "m.*.00");
        EXPECT_EQ(widget<QLineEdit>(dialog, "NLO_old").text().toStdString(),
                  (folder.path() / "m.nlo").string());
        press_in(dialog, "Rename");
        EXPECT_EQ(widget<QLabel>(dialog, "lblRenamed").text(),
                  "m.nml is now m.nml.00.\nm.nlo is now m.nlo.00.");
        press_in(dialog, "Run");
    });
    EXPECT_EQ(folder.read("m.nml"), "result");
    EXPECT_EQ(folder.read("m.nml.00"), "input");
    EXPECT_EQ(folder.read("m.nlo.00"), "result");
    ASSERT_TRUE(ends());
    EXPECT_EQ(log(), "serialized\n");
}

TEST_F(Serialized, names_of_another_form_or_in_use_are_refused) {
    folder.write("m.nml.1", "");
    in_form([&](QDialog& dialog) {
        auto& names = widget<QLineEdit>(dialog, "new_Names");
        type_into(names, "other.*.1");
        user.expect_message("Message", "The entered filename isn't correct.\n"
                                       "You must not change the Projectname!\n"
                                       "Please use the following format: [Projectname.*.?]\n"
                                       "Vary the [?] only.");
        press_in(dialog, "Rename");
        EXPECT_EQ(dialog.focusWidget(), &names);
        EXPECT_EQ(names.selectedText(), "other.*.1");
        type_into(names, "m.*.1");
        user.expect_message("Message", "The defined second file extension, already exists.\n"
                                       "Choose another one.");
        press_in(dialog, "Rename");
        dialog.reject();
    });
    EXPECT_EQ(folder.read("m.nml"), "input");
}

TEST_F(Serialized, a_result_of_another_folder_is_refused) {
    const auto other = folder.write("other/m.nlo", "");
    in_form([&](QDialog& dialog) {
        auto& result = widget<QLineEdit>(dialog, "NLO_old");
        const QString before = result.text();
        user.expect_file("Serialized Run", other);
        user.expect_message("Message", "Do not change the directory!");
        press_in(dialog, "NLO_old_Load");
        EXPECT_EQ(result.text(), before);
        type_into(result, other.string());
        user.expect_message("Message", "Do not change the directory!");
        press_in(dialog, "cmdOK");
        EXPECT_EQ(dialog.focusWidget(), &result);
        type_into(result, "");
        user.expect_message("Message", "Choose a result file first.");
        press_in(dialog, "cmdOK");
        dialog.reject();
    });
    EXPECT_EQ(folder.read("m.nml"), "input");
}

TEST_F(Serialized, without_back_up_the_run_asks_for_it) {
    in_form([&](QDialog& dialog) {
        user.expect_question("Create back-up files", backup_question(), base::Answer::cancel);
        press_in(dialog, "cmdOK");
        EXPECT_TRUE(dialog.isVisible());
        type_into(widget<QLineEdit>(dialog, "new_Names"), "m.*.b");
        user.expect_question("Create back-up files", backup_question(), base::Answer::yes);
        press_in(dialog, "cmdOK");
    });
    EXPECT_EQ(folder.read("m.nlo.b"), "result");
    EXPECT_EQ(folder.read("m.nml"), "result");
    ASSERT_TRUE(ends());
}

TEST_F(Serialized, a_running_simulator_is_asked_about) {
    folder.write("program/flagfile", "");
    in_form([&](QDialog& dialog) {
        user.expect_question(
            "Tervex Desk",
            "The selected model or modeling tool cannot be started, because a model located in "
            "the same folder is possibly running. Please use the key combination Alt+TAB to check "
            "whether a model is running.\n1. If there is a running model, you must click on Cancel "
            "to close this dialog box.\n2. If no model is running, you may click on OK to start "
            "the simulation or modeling tool. ",
            base::Answer::cancel);
        press_in(dialog, "Run");
        dialog.reject();
    });
    EXPECT_EQ(folder.read("m.nml"), "input");
}

} // namespace

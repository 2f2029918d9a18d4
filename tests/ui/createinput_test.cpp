// "Create TERVEX Inputfile" in the window.
#include "completemodel.h"

#include "base/textfile.h"
#include "input/inputfile.h"
#include "ui/dialogs/runmonitor.h"

#include <QDialog>

namespace {

namespace fs = std::filesystem;
using support::CompleteModelFixture;

constexpr const char* title = "Create TERVEX Input File";
const std::string check_question =
    "\"Check model\" lists everything that is missing or wrong and opens the dialogs that mend "
    "it.\n\nDo you want to open it?";

class CreateInput : public CompleteModelFixture {
protected:
    void create() { window.run_command("mnuTervexCreate"); }
    int edited() const { return desk.model()->project.flags(0, 1); }
};

TEST_F(CreateInput, the_input_file_and_the_control_file_are_written_and_nothing_runs_after_no) {
    make_complete_model();
    EXPECT_EQ(edited(), 1);
    user.expect_question(title, input::run_question, base::Answer::no);
    create();
    EXPECT_EQ(folder.read("m.nml").substr(0, 7), "# TITLE");
    EXPECT_NE(base::to_utf8(folder.read("program/tervex.ctl")).find(desk.model()->files.base()),
              std::string::npos);
    EXPECT_EQ(edited(), 0);
    EXPECT_EQ(user.statuses().back(), "m.nml and tervex.ctl are written");
    EXPECT_FALSE(user.meter().empty());
    EXPECT_FALSE(user.is_busy());
    EXPECT_EQ(window.findChild<ui::RunMonitor*>(), nullptr);
}

TEST_F(CreateInput, yes_runs_the_simulator) {
    make_complete_model();
    program("tervex.sh", "exit 0");
    user.expect_question(title, input::run_question, base::Answer::yes);
    create();
    auto* monitor = window.findChild<ui::RunMonitor*>("RunMonitor");
    ASSERT_NE(monitor, nullptr);
    EXPECT_TRUE(monitor->isVisible());
    EXPECT_TRUE(becomes_true([&] { return !monitor->is_running(); }));
}

TEST_F(CreateInput, a_gap_is_told_with_its_text_and_check_model_is_offered) {
    make_model();
    for (const base::Answer answer : {base::Answer::no, base::Answer::yes}) {
        user.expect_message("Missing or Wrong Input Data",
                            "Define the model grid first in: |Grid|Mesh Size.");
        user.expect_question(title, check_question, answer);
        if (answer == base::Answer::no) {
            create();
        } else {
            in_dialog("mnuTervexCreate", "CheckModel", [](QDialog& dialog) { dialog.reject(); });
        }
    }
    EXPECT_EQ(user.beeps(), 2);
    EXPECT_FALSE(fs::exists(folder.path() / "m.nml"));
}

TEST_F(CreateInput, chemistry_is_refused_before_its_gaps) {
    make_complete_model();
    change([](app::Workspace& model) { model.project.flags.set(9, 7, 1); });
    user.expect_message(title, "This edition cannot write models with chemistry yet.");
    create();
    EXPECT_FALSE(fs::exists(folder.path() / "m.nml"));
}

TEST_F(CreateInput, a_stop_leaves_an_input_file_that_is_not_complete) {
    make_complete_model();
    user.set_stop(true);
    user.expect_message(title, "Error occured -> TERVEX Inputfile not complete.");
    create();
    EXPECT_EQ(edited(), 1);
    EXPECT_EQ(user.statuses().back(), "m.nml is not complete");
}

TEST_F(CreateInput, a_file_that_cannot_be_written_changes_nothing) {
    make_complete_model();
    fs::create_directories(folder.path() / "m.nml");
    user.expect_failure("Is a directory", base::Reaction::retry);
    user.expect_failure("Is a directory", base::Reaction::leave);
    create();
    EXPECT_EQ(edited(), 1);
    EXPECT_EQ(user.statuses().back(), "m.nml was not written");
    EXPECT_FALSE(user.is_busy());
    EXPECT_FALSE(fs::exists(folder.path() / "program/tervex.ctl"));
}

} // namespace

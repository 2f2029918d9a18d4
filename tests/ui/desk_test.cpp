#include "deskfixture.h"

#include "core/modelfiles.h"
#include "core/project.h"

#include <chrono>

namespace {

namespace fs = std::filesystem;
using support::DeskFixture;

TEST_F(DeskFixture, a_new_model_is_open_and_named_in_the_title) {
    EXPECT_EQ(window.windowTitle(), "Tervex Desk");
    make_model(3, 2);
    EXPECT_EQ(window.windowTitle(), "Tervex Desk - [M.TD1]");
    EXPECT_TRUE(fs::exists(folder.path() / "m.xy"));
}

TEST_F(DeskFixture, a_command_of_a_model_needs_one) {
    user.expect_message("Message", "Create or Open a TD-model first.");
    window.run_command("mnuTypeSettings");
}

TEST_F(DeskFixture, a_model_that_another_program_edits_is_told_before_the_window_seems_dead) {
    make_model(3, 2);
    const core::ModelFiles other(model_path(), core::Access::write);
    const auto begin = std::chrono::steady_clock::now();
    user.expect_failure("is in use by another program", base::Reaction::leave);
    EXPECT_FALSE(desk.open(model_path()));
    user.expect_failure("is in use by another program", base::Reaction::leave);
    EXPECT_FALSE(desk.begin_session("edit()", "Temperature"));
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10));
    EXPECT_TRUE(desk.model());
}

class Session : public DeskFixture {
protected:
    void begin() {
        workspace = desk.begin_session("edit()", "Initial Hydraulic Heads");
        ASSERT_TRUE(workspace);
        desk.lend(&*workspace);
    }
    void end() {
        workspace.reset();
        desk.end_session();
    }
    bool set_title(const std::string& title) {
        return desk.change("t()", "Title", [&](app::Workspace& model) {
            model.project.set_title(title);
            return true;
        });
    }
    std::string title() const { return desk.model()->project.title(); }

    std::optional<app::Workspace> workspace;
};

TEST_F(Session, a_command_inside_works_on_the_lent_model_and_is_seen_at_once) {
    make_model(3, 2);
    begin();
    EXPECT_TRUE(set_title("inside"));
    EXPECT_EQ(title(), "inside");
    EXPECT_NE(folder.read("m.td1").find("inside"), std::string::npos);
    EXPECT_FALSE(desk.begin_session("edit()", "second"));
    end();
    EXPECT_TRUE(set_title("outside"));
    EXPECT_EQ(title(), "outside");
}

TEST_F(Session, a_command_that_fails_inside_changes_nothing_and_keeps_what_the_session_did) {
    make_model(3, 2);
    begin();
    const std::string before = title();
    workspace->files.write(".ibd", "of the session");
    user.expect_failure("broken", base::Reaction::leave);
    const bool done = desk.change("t()", "t", [](app::Workspace& model) {
        model.project.set_title("half done");
        model.files.write(".ibd", "half done");
        throw base::FileFailure("broken", "x");
        return true;
    });
    EXPECT_FALSE(done);
    EXPECT_EQ(workspace->files.read(".ibd"), "of the session");
    EXPECT_EQ(title(), before);
    EXPECT_FALSE(desk.change("t()", "t", [](app::Workspace& model) {
        model.project.set_title("declined");
        return false;
    }));
    EXPECT_EQ(workspace->project.title(), before);
    end();
}

TEST_F(Session, a_model_that_cannot_be_written_gives_none) {
    make_model(3, 2);
    fs::remove(model_path());
    user.expect_failure("the model does not exist", base::Reaction::leave);
    EXPECT_FALSE(desk.begin_session("edit()", "t"));
    EXPECT_FALSE(desk.in_session());
}

class Steps : public Session {
protected:
    void show_again() { desk.open(model_path()); }
};

TEST_F(Steps, commands_are_taken_back_and_done_again_by_name) {
    make_model(3, 2);
    show_again();
    EXPECT_FALSE(desk.undo_name());
    const std::string before = title();
    EXPECT_TRUE(set_title("one"));
    EXPECT_TRUE(set_title("two"));
    EXPECT_EQ(desk.undo_name(), "Title");
    EXPECT_TRUE(desk.undo());
    EXPECT_EQ(title(), "one");
    window.run_command("undo");
    EXPECT_EQ(title(), before);
    window.run_command("undo");
    EXPECT_EQ(user.beeps(), 1);
    EXPECT_EQ(desk.redo_name(), "Title");
    window.run_command("redo");
    EXPECT_EQ(title(), "one");
    EXPECT_TRUE(set_title("three"));
    EXPECT_FALSE(desk.redo_name());
}

TEST_F(Steps, a_session_with_the_commands_inside_is_one_step) {
    make_model(3, 2);
    show_again();
    const std::string before = title();
    begin();
    workspace->files.write(".ibd", "of the session");
    EXPECT_TRUE(set_title("inside"));
    EXPECT_FALSE(desk.undo_name());
    EXPECT_FALSE(desk.undo());
    end();
    EXPECT_EQ(desk.undo_name(), "Initial Hydraulic Heads");
    EXPECT_TRUE(desk.undo());
    EXPECT_EQ(title(), before);
    EXPECT_FALSE(fs::exists(folder.path() / "m.ibd"));
    EXPECT_FALSE(desk.undo_name());
}

TEST_F(Steps, a_file_changed_by_another_program_is_not_overwritten) {
    make_model(3, 2);
    show_again();
    EXPECT_TRUE(set_title("one"));
    folder.write("m.td1", folder.read("m.td1") + "\r\n");
    user.expect_message("Undo",
                        "\"Title\" cannot be undone: m.td1 was changed by another program.");
    EXPECT_FALSE(desk.undo());
    EXPECT_EQ(title(), "one");
}

} // namespace

#include "deskfixture.h"

#include "core/project.h"

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

} // namespace

#include "deskfixture.h"

namespace {

using support::DeskFixture;

TEST_F(DeskFixture, a_new_model_is_open_and_named_in_the_title) {
    EXPECT_EQ(window.windowTitle(), "Tervex Desk");
    make_model(3, 2);
    EXPECT_EQ(window.windowTitle(), "Tervex Desk - [M.TD1]");
    EXPECT_TRUE(std::filesystem::exists(folder.path() / "m.xy"));
}

TEST_F(DeskFixture, a_command_of_a_model_needs_one) {
    user.expect_message("Message", "Create or Open a TD-model first.");
    window.run_command("mnuTypeSettings");
}

} // namespace

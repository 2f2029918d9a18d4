#include "app/saveas.h"

#include "app/newmodel.h"
#include "support/scripteduser.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

using Names = std::vector<std::string>;

class SaveAs : public ::testing::Test {
protected:
    support::TempFolder folder_;
    support::TempFolder other_;
    support::ScriptedUser user_;

    SaveAs() { app::new_model(folder_.path() / "Old.td1", user_); }

    app::SavedAs save_as(const std::filesystem::path& target) {
        const auto source = app::load_model(folder_.path() / "Old.td1", core::Access::read);
        return app::save_model_as(*source.workspace, target, user_);
    }

    void expect_target_question(base::Answer answer) {
        user_.expect_question(
            "Save As", "The Filename already exist. Do you want to overwrite the file?", answer);
    }
};

TEST_F(SaveAs, copies_the_model_but_not_its_results) {
    for (const char* kept : {"Old.per", "Old.T1402", "OLD.trn.bak", "Old.200", "Old.nml"}) {
        folder_.write(kept, kept);
    }
    std::filesystem::remove(folder_.path() / "Old.trn");
    for (const char* left : {"Old.nlo", "Old.NLO.01", "Old.txt", "Old.plt", "Old.100", "Old.zip",
                             "Old.rvb", "Old.nlo.INI", "Old.0", "Older.per", "other.per"}) {
        folder_.write(left, left);
    }
    const auto saved = save_as(folder_.path() / "new.td1");
    ASSERT_TRUE(saved.opened.workspace);
    EXPECT_EQ(saved.copied, (Names{"new.200", "new.T1402", "new.l", "new.nml", "new.per", "new.pol",
                                   "new.td1", "new.trn.bak"}));
    EXPECT_EQ(folder_.read("new.trn.bak"), "OLD.trn.bak");
    EXPECT_EQ(folder_.read("Old.per"), "Old.per");
    EXPECT_EQ(saved.opened.workspace->Model_Name(), "new.td1");
    EXPECT_TRUE(std::filesystem::exists(folder_.path() / "new.upl")) << "the copy was opened";
}

TEST_F(SaveAs, takes_the_data_files_of_the_chemical_models_to_another_folder) {
    folder_.write("Pitzer.dat", "p");
    folder_.write("ghe.ini", "g");
    folder_.write("other.dat", "o");
    const auto saved = save_as(other_.path() / "Old.td1");
    EXPECT_EQ(saved.copied, (Names{"Old.l", "Old.pol", "Old.td1", "Pitzer.dat", "ghe.ini"}));
    EXPECT_EQ(other_.read("Pitzer.dat"), "p");
}

TEST_F(SaveAs, is_all_or_nothing_also_where_the_opening_of_the_copy_fails) {
    std::filesystem::create_directories(other_.path() / "new.upl" / "in the way");
    EXPECT_THROW(save_as(other_.path() / "new.td1"), base::FileFailure);
    EXPECT_EQ(other_.names(), Names{"new.upl"});
}

TEST_F(SaveAs, finds_the_copies_of_files_in_capital_letters) {
    std::filesystem::rename(folder_.path() / "Old.l", folder_.path() / "Old.L");
    folder_.write("Old.PPL", "kept");
    ASSERT_TRUE(save_as(other_.path() / "new.td1").opened.workspace);
    EXPECT_EQ(other_.names(), (Names{"new.L", "new.PPL", "new.pol", "new.td1", "new.upl"}));
    EXPECT_EQ(other_.read("new.PPL"), "kept");
}

TEST_F(SaveAs, keeps_each_content_when_new_names_meet_old_ones) {
    folder_.write("Old.per", "first");
    folder_.write("Old.b.per", "second");
    save_as(folder_.path() / "Old.b.td1");
    EXPECT_EQ(folder_.read("Old.b.per"), "first");
    EXPECT_EQ(folder_.read("Old.b.b.per"), "second");
}

TEST_F(SaveAs, onto_itself_is_refused) {
    for (const char* name : {"Old.td1", "old.TD1"}) {
        const auto saved = save_as(folder_.path() / "." / name);
        ASSERT_TRUE(saved.opened.refusal) << name;
        EXPECT_EQ(saved.opened.refusal->title, "Tervex Desk");
        EXPECT_EQ(saved.opened.refusal->text,
                  "Please choose a new project title or seperate folder.");
    }
}

TEST_F(SaveAs, an_existing_target_is_overwritten_after_Yes_only) {
    other_.write("new.td1", "[INFO]\r\nDESCRIPTION=theirs\r\n");
    other_.write("new.PER", "theirs");
    other_.write("new.xyz", "theirs");
    folder_.write("Old.per", "ours");

    expect_target_question(base::Answer::no);
    const auto stopped = save_as(other_.path() / "new.td1");
    EXPECT_FALSE(stopped.opened.workspace || stopped.opened.refusal);
    EXPECT_EQ(other_.names(), (Names{"new.PER", "new.td1", "new.xyz"}));

    expect_target_question(base::Answer::yes);
    ASSERT_TRUE(save_as(other_.path() / "new.td1").opened.workspace);
    EXPECT_EQ(other_.read("new.per"), "ours");
    EXPECT_EQ(other_.names(),
              (Names{"new.l", "new.per", "new.pol", "new.ppl", "new.td1", "new.upl", "new.xyz"}));
}

TEST_F(SaveAs, of_the_open_predecessor_model_wins_over_a_td1_of_the_same_name) {
    folder_.write("Old.bd5", "[INFO]\r\nDESCRIPTION=five\r\n");
    const auto source = app::load_model(folder_.path() / "Old.bd5", core::Access::read);
    const auto saved = app::save_model_as(*source.workspace, other_.path() / "n.td1", user_);
    EXPECT_EQ(saved.copied, (Names{"n.l", "n.pol", "n.td1"}));
    EXPECT_EQ(saved.opened.workspace->project.title(), "five");
}

TEST_F(SaveAs, of_a_model_that_cannot_be_opened_copies_nothing) {
    std::filesystem::remove(folder_.path() / "Old.l");
    EXPECT_TRUE(save_as(other_.path() / "n.td1").opened.refusal);
    EXPECT_TRUE(other_.names().empty());
    EXPECT_THROW(
        {
            folder_.write("Old.l", " 1 \r\n 0 \r\n 1 \r\n");
            save_as(other_.path() / "missing" / "n.td1");
        },
        base::FileFailure);
}

} // namespace

#include "app/newmodel.h"

#include "grid/griddefinition.h"
#include "grid/monitoring.h"
#include "support/scripteduser.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

namespace {

using Names = std::vector<std::string>;

class NewModel : public ::testing::Test {
protected:
    support::TempFolder folder_;
    support::ScriptedUser user_;

    app::Loaded make(const char* name) { return app::new_model(folder_.path() / name, user_); }

    void expect_overwrite_question(base::Answer answer) {
        user_.expect_question(
            "Overwrite project?",
            "The project already exists. Do you want to overwrite all project files?", answer);
    }
};

TEST_F(NewModel, consists_of_project_layer_file_and_point_list) {
    ASSERT_TRUE(make("Basin.td1").workspace);
    EXPECT_EQ(folder_.names(), (Names{"Basin.l", "Basin.pol", "Basin.td1"}));
    EXPECT_EQ(folder_.read("Basin.l"), grid::LayerFile::defaults(1).bytes());
    EXPECT_EQ(folder_.read("Basin.pol"), grid::points_bytes({}));
}

TEST_F(NewModel, has_thickness_layers_and_no_solver_yet) {
    make("m.td1");
    const auto stored = core::Project::read(folder_.read("m.td1"));
    EXPECT_EQ(stored.flags(0, 0), 1);
    for (const int process : {4, 5, 6}) {
        EXPECT_EQ(stored.flags(8, process), 48);
    }
    EXPECT_EQ(stored.flags(0, 1), 0) << "nothing was edited";
    EXPECT_EQ(stored.NX(), 30);
}

TEST_F(NewModel, leaves_an_existing_project_alone_after_No) {
    folder_.write("m.td1", "[INFO]\r\nDESCRIPTION=old\r\n");
    folder_.write("m.trn", "old");
    expect_overwrite_question(base::Answer::no);
    const auto made = make("m.td1");
    EXPECT_FALSE(made.workspace);
    EXPECT_FALSE(made.refusal);
    EXPECT_EQ(folder_.names(), (Names{"m.td1", "m.trn"}));
    EXPECT_EQ(folder_.read("m.td1"), "[INFO]\r\nDESCRIPTION=old\r\n");
}

TEST_F(NewModel, deletes_the_old_settings_but_neither_grid_nor_arrays) {
    for (const char* name : {"m.TD1", "m.TRN", "m.trn", "M.flo", "m.ini", "m.xy", "m.typ", "m.mco",
                             "m.per", "m.spelling", "m2.trn"}) {
        folder_.write(name, "[INFO]\r\nDESCRIPTION=old\r\n[MINE]\r\nkey=1\r\n");
    }
    expect_overwrite_question(base::Answer::yes);
    ASSERT_TRUE(make("m.td1").workspace);
    EXPECT_EQ(folder_.names(), (Names{"m.l", "m.mco", "m.per", "m.pol", "m.spelling", "m.td1",
                                      "m.typ", "m.xy", "m2.trn"}));
    EXPECT_EQ(folder_.read("m.td1").find("MINE"), std::string::npos);
}

TEST_F(NewModel, asks_before_it_takes_the_companions_of_a_predecessor_model) {
    folder_.write("m.bd5", "");
    folder_.write("m.l", "old");
    expect_overwrite_question(base::Answer::no);
    make("m.td1");
    EXPECT_EQ(folder_.read("m.l"), "old");
}

TEST_F(NewModel, takes_names_in_td1_only) {
    const auto text = make("m.txt");
    ASSERT_TRUE(text.refusal);
    EXPECT_EQ(text.refusal->title, "Open model");
    EXPECT_EQ(text.refusal->text,
              (folder_.path() / "m.txt").string() + " is not a model file of TD 1 or BD 5.");
    EXPECT_TRUE(make("m.bd5").refusal);
    EXPECT_TRUE(folder_.names().empty());
    EXPECT_THROW(make("missing/m.td1"), base::FileFailure);
}

} // namespace

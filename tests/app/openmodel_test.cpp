#include "app/openmodel.h"

#include "app/newmodel.h"
#include "app/recentfiles.h"
#include "app/toolfiles.h"
#include "grid/griddefinition.h"
#include "grid/monitoring.h"
#include "support/scripteduser.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

using Names = std::vector<std::string>;

class OpenModel : public ::testing::Test {
protected:
    support::TempFolder folder_;
    support::ScriptedUser user_;

    OpenModel() { app::new_model(file("Site.td1"), user_); }

    std::filesystem::path file(const char* name) const { return folder_.path() / name; }
    app::Loaded open(const char* name = "Site.td1") { return app::open_model(file(name), user_); }

    core::Project stored() const { return core::Project::read(folder_.read("Site.td1")); }

    // A mesh of 2 columns of 10 m and 3 rows of 20 m.
    void define_mesh() {
        auto loaded = app::load_model(file("Site.td1"), core::Access::write);
        auto& workspace = *loaded.workspace;
        grid::Save_Grid_File({2, 3, 1, {10, 10}, {20, 20, 20}}, workspace.project, workspace.files);
        workspace.project.flags.mark_defined(1, 2);
        workspace.project.set_single("DIMENSION", "SHEET_Y2", 120);
        workspace.save();
    }
};

TEST_F(OpenModel, gives_names_and_creates_the_tool_files) {
    const auto opened = open();
    ASSERT_TRUE(opened.workspace);
    EXPECT_EQ(opened.workspace->Model_Name(), "site.td1");
    EXPECT_EQ(opened.workspace->window_title(), "Tervex Desk - [SITE.TD1]");
    EXPECT_EQ(folder_.read("Site.upl"), app::default_upl());
    EXPECT_EQ(folder_.read("Site.ppl"), "");
    EXPECT_FALSE(user_.is_busy());
}

TEST_F(OpenModel, leaves_existing_tool_files_as_they_are) {
    folder_.write("Site.UPL", "of another tool");
    open();
    EXPECT_EQ(folder_.read("Site.UPL"), "of another tool");
    EXPECT_FALSE(std::filesystem::exists(file("Site.upl")));
}

TEST_F(OpenModel, default_tool_settings_follow_the_blank_name) {
    const std::string bytes = app::default_upl();
    EXPECT_EQ(bytes.substr(0, 120), std::string(120, ' '));
    EXPECT_EQ(bytes.substr(128, 2), std::string("\x03\0", 2));
    EXPECT_EQ(bytes.substr(150, 100), "MRDRIVE" + std::string(93, ' '));
    EXPECT_EQ(bytes.size(), 256U);
}

TEST_F(OpenModel, writes_a_foreign_point_list_new) {
    folder_.write("Site.pol", "no points here");
    open();
    EXPECT_EQ(folder_.read("Site.pol"), grid::points_bytes({}));
}

TEST_F(OpenModel, saves_every_key_and_does_not_mark_the_model_as_edited) {
    folder_.write("Site.td1", "; kept\r\n[INFO]\r\nDESCRIPTION=Basin\r\n");
    ASSERT_TRUE(open().workspace);
    const std::string bytes = folder_.read("Site.td1");
    EXPECT_EQ(bytes.substr(0, 8), "; kept\r\n");
    EXPECT_NE(bytes.find("NUMBER=5000"), std::string::npos);
    EXPECT_EQ(stored().flags(0, 1), 0);
}

TEST_F(OpenModel, places_a_defined_mesh_once) {
    define_mesh();
    open();
    EXPECT_EQ(stored().single("GRIDPOSITION", "TOP"), 60) << "half the sheet as it was";
    EXPECT_EQ(stored().single("DIMENSION", "SHEET_X2"), 20);
    EXPECT_EQ(stored().single("DIMENSION", "SHEET_Y2"), 60);
    open();
    EXPECT_EQ(stored().single("GRIDPOSITION", "TOP"), 60);
}

TEST_F(OpenModel, never_places_an_undefined_mesh) {
    open();
    EXPECT_EQ(stored().integer("GRIDPOSITION", "MOVED"), 0);
    EXPECT_EQ(stored().single("DIMENSION", "SHEET_X2"), 1000);
}

TEST_F(OpenModel, without_layer_data_is_refused_and_changes_nothing) {
    const Names before = folder_.names();
    folder_.write("Site.l", " 1 \r\n");
    const auto short_file = open();
    ASSERT_TRUE(short_file.refusal);
    EXPECT_EQ(short_file.refusal->title, "Tervex Desk");
    EXPECT_EQ(short_file.refusal->text,
              file("Site.td1").string() + " has no layer data for the grid.");
    EXPECT_EQ(folder_.names(), before);
    std::filesystem::remove(file("Site.l"));
    EXPECT_TRUE(open().refusal);
}

TEST_F(OpenModel, older_versions_are_refused) {
    folder_.write("Site.td1", "[VERSION]\r\nNUMBER=4000\r\n");
    const auto opened = open();
    ASSERT_TRUE(opened.refusal);
    EXPECT_EQ(opened.refusal->icon, base::Icon::critical);
    EXPECT_EQ(opened.refusal->text, file("Site.td1").string() + " is not a model file of BD 5.");
}

TEST_F(OpenModel, damaged_companions_are_failures_that_change_nothing) {
    const Names before = folder_.names();
    for (const char* companion : {"Site.trn", "Site.typ", "Site.mco"}) {
        folder_.write(companion, "1\r\n");
        EXPECT_THROW(open(), base::FileFailure) << companion;
        std::filesystem::remove(file(companion));
        EXPECT_EQ(folder_.names(), before);
    }
}

TEST_F(OpenModel, an_empty_name_is_no_change) {
    const auto opened = app::open_model("  ", user_);
    EXPECT_FALSE(opened.workspace);
    EXPECT_FALSE(opened.refusal);
}

TEST_F(OpenModel, adds_the_model_to_the_recent_list) {
    const support::TempFolder home;
    app::open_model(file("Site.td1"), user_, home.path());
    EXPECT_EQ(app::RecentFiles(home.path()).path(1), file("Site.td1").string());
}

TEST_F(OpenModel, needs_no_writable_home) {
    const support::TempFolder home;
    home.write("file", "");
    EXPECT_TRUE(app::open_model(file("Site.td1"), user_, home.path() / "file" / "x").workspace);
}

} // namespace

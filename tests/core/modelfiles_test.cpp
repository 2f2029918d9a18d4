#include "core/modelfiles.h"

#include "base/failure.h"
#include "base/textfile.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <chrono>

#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;
using core::Access;
using core::ModelFiles;
using Names = std::vector<std::string>;

class ModelFilesTest : public testing::Test {
protected:
    fs::path model() const { return folder.path() / "basin.td1"; }
    fs::path hidden() const { return folder.path() / ".basin.tervex"; }
    void leave_in_hidden_folder(const std::string& name, const std::string& bytes) const {
        fs::create_directory(hidden());
        folder.write(".basin.tervex/" + name, bytes);
    }

    support::TempFolder folder;
};

TEST_F(ModelFilesTest, written_files_appear_with_the_commit_and_nothing_else_stays) {
    folder.write("basin.td1", "old project");
    {
        ModelFiles files(model(), Access::write);
        files.write_project("new project");
        files.write(".typ", "settings");
        EXPECT_EQ(folder.read("basin.td1"), "old project");
        EXPECT_EQ(files.read_project(), "new project");
        EXPECT_EQ(files.read(".typ"), "settings");
        files.commit();
        EXPECT_EQ(folder.read("basin.td1"), "new project");
    }
    EXPECT_EQ(folder.names(), (Names{"basin.td1", "basin.typ"}));
}

TEST_F(ModelFilesTest, without_commit_nothing_changes) {
    folder.write("basin.td1", "old");
    folder.write("basin.typ", "kept");
    {
        ModelFiles files(model(), Access::write);
        files.write_project("new");
        files.remove(".typ");
        EXPECT_FALSE(files.has(".typ"));
        files.write(".l", "layers");
    }
    EXPECT_EQ(folder.names(), (Names{"basin.td1", "basin.typ"}));
    EXPECT_EQ(folder.read("basin.td1"), "old");
}

// A worksheet in the desktop program keeps its lock for hours.
TEST_F(ModelFilesTest, a_reader_does_not_wait_for_a_command_that_moves_no_files) {
    folder.write("basin.td1", "old project");
    ModelFiles writer(model(), Access::write);
    writer.write_project("new project");
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(ModelFiles(model(), Access::read).read_project(), "old project");
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(20));
    writer.commit();
    EXPECT_EQ(folder.read("basin.td1"), "new project");
}

TEST_F(ModelFilesTest, a_set_that_cannot_be_moved_is_taken_back_whole) {
    folder.write("basin.td1", "old");
    folder.write("basin.a", "old a");
    fs::create_directories(folder.path() / "basin.z" / "in the way");
    {
        ModelFiles files(model(), Access::write);
        files.write(".a", "new a");
        files.write(".b", "new b");
        files.write_project("new");
        files.write(".z", "cannot replace a folder");
        EXPECT_THROW(files.commit(), base::FileFailure);
    }
    EXPECT_EQ(folder.names(), (Names{"basin.a", "basin.td1", "basin.z"}));
    EXPECT_EQ(folder.read("basin.td1"), "old");
    EXPECT_EQ(folder.read("basin.a"), "old a");
}

TEST_F(ModelFilesTest, the_next_command_finishes_a_set_that_was_listed) {
    folder.write("basin.td1", "old");
    folder.write("basin.typ", "removed by the set");
    leave_in_hidden_folder("new.2", "new");
    leave_in_hidden_folder("old.9", "left over");
    leave_in_hidden_folder("journal", "new.2\n" + model().string() + "\n\n" + "\n" +
                                          (folder.path() / "basin.typ").string() + "\n\nend");
    EXPECT_EQ(ModelFiles(model(), Access::read).read_project(), "new");
    EXPECT_EQ(folder.names(), Names{"basin.td1"});
}

TEST_F(ModelFilesTest, the_next_command_takes_a_set_back_that_had_failed) {
    folder.write("basin.td1", "half moved");
    folder.write("basin.new", "moved already");
    leave_in_hidden_folder("old.1", "old");
    leave_in_hidden_folder("undo", "new.1\n" + model().string() + "\nold.1\nnew.2\n" +
                                       (folder.path() / "basin.new").string() + "\n\nend");
    EXPECT_EQ(ModelFiles(model(), Access::write).read_project(), "old");
    EXPECT_EQ(folder.names(), Names{"basin.td1"});
}

TEST_F(ModelFilesTest, a_set_whose_list_is_not_whole_is_dropped) {
    folder.write("basin.td1", "old");
    leave_in_hidden_folder("new.1", "new");
    leave_in_hidden_folder("draft", "new.1\n" + model().string());
    leave_in_hidden_folder("journal", "new.1\n" + model().string() + "\n");
    EXPECT_EQ(ModelFiles(model(), Access::read).read_project(), "old");
    EXPECT_EQ(folder.names(), Names{"basin.td1"});
}

TEST_F(ModelFilesTest, a_link_stays_a_link_and_a_file_keeps_its_mode) {
    fs::create_directory(folder.path() / "elsewhere");
    folder.write("elsewhere/real.td1", "old");
    fs::create_symlink("elsewhere/real.td1", model());
    folder.write("basin.typ", "old");
    ::chmod((folder.path() / "basin.typ").c_str(), 0640);
    ModelFiles files(model(), Access::write);
    files.write_project("new");
    files.write(".typ", "new");
    files.commit();
    EXPECT_TRUE(fs::is_symlink(model()));
    EXPECT_EQ(folder.read("elsewhere/real.td1"), "new");
    EXPECT_EQ(fs::status(folder.path() / "basin.typ").permissions(), fs::perms{0640});
}

TEST_F(ModelFilesTest, a_file_with_another_link_is_written_anew) {
    folder.write("basin.td1", "old");
    fs::create_hard_link(model(), folder.path() / "backup.td1");
    ModelFiles files(model(), Access::write);
    files.write_project("new");
    files.commit();
    EXPECT_EQ(folder.read("backup.td1"), "old");
    EXPECT_EQ(folder.read("basin.td1"), "new");
}

TEST_F(ModelFilesTest, companions_are_found_by_exact_lower_case_name_then_without_regard_to_case) {
    folder.write("basin.td1", "");
    folder.write("BASIN.TYP", "upper");
    ModelFiles files(model(), Access::write);
    EXPECT_EQ(files.read(".typ"), "upper");
    files.write(".typ", "changed");
    files.commit();
    EXPECT_EQ(folder.read("BASIN.TYP"), "changed");
    folder.write("basin.typ", "lower");
    EXPECT_EQ(files.read(".TYP"), "lower");
    EXPECT_EQ(files.base_name(), "basin");
}

TEST_F(ModelFilesTest, a_file_aside_keeps_its_content_over_several_writers) {
    folder.write("basin.td1", "");
    folder.write("basin.per", "0123456789");
    ModelFiles files(model(), Access::write);
    const fs::path aside = files.open_aside(".per", false);
    EXPECT_EQ(base::read_bytes(aside), "0123456789");
    EXPECT_EQ(files.open_aside(".per", false), aside);
    EXPECT_EQ(files.find(".per"), aside);
    files.open_aside(".per", true);
    EXPECT_EQ(base::read_bytes(aside), "");
    files.rollback();
    EXPECT_EQ(files.read(".per"), "0123456789");
}

TEST_F(ModelFilesTest, writing_without_write_access_is_a_fault) {
    folder.write("basin.td1", "");
    ModelFiles files(model(), Access::read);
    EXPECT_THROW(files.write(".typ", "x"), base::RangeFailure);
    EXPECT_THROW(ModelFiles(folder.path() / "missing" / "m.td1", Access::write), base::FileFailure);
}

TEST_F(ModelFilesTest, names_with_line_breaks_and_percent_signs_are_moved) {
    const fs::path odd = folder.path() / "bas\nin %41.td1";
    ModelFiles files(odd, Access::write);
    files.write_project("x");
    files.commit();
    EXPECT_TRUE(fs::exists(odd));
}

} // namespace

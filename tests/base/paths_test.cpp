#include "base/paths.h"

#include "support/failureof.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {
using namespace base;
namespace fs = std::filesystem;

TEST(FindIgnoringCase, prefers_the_exact_name) {
    const support::TempFolder folder;
    folder.write("M.TRN", "");
    folder.write("m.Trn", "");
    EXPECT_EQ(find_ignoring_case(folder.path(), "m.trn"), folder.path() / "M.TRN");
    folder.write("m.trn", "");
    EXPECT_EQ(find_ignoring_case(folder.path(), "m.trn"), folder.path() / "m.trn");
}

TEST(FindIgnoringCase, finds_files_only) {
    const support::TempFolder folder;
    fs::create_directory(folder.path() / "m.l");
    EXPECT_EQ(find_ignoring_case(folder.path(), "m.l"), std::nullopt);
    EXPECT_EQ(find_ignoring_case(folder.path(), ""), std::nullopt);
    EXPECT_EQ(find_ignoring_case(folder.path() / "none", "m.l"), std::nullopt);
}

TEST(FileNames, end_a_path_of_either_kind) {
    EXPECT_EQ(file_name("/models/Süd.td1"), "Süd.td1");
    EXPECT_EQ(file_name("C:\\models\\m.td1"), "m.td1");
    EXPECT_EQ(file_name("m.td1"), "m.td1");
}

TEST(FileNames, that_could_leave_a_folder_are_not_safe) {
    EXPECT_TRUE(safe_file_name("Süd 1.td1"));
    EXPECT_TRUE(safe_file_name(std::string(200, 'a')));
    for (const std::string& name :
         {std::string(), std::string("."), std::string(".."), std::string("a/b"),
          std::string("a\\b"), std::string("a\nb"), std::string("a\0b", 3), std::string(201, 'a')})
        EXPECT_FALSE(safe_file_name(name)) << name;
}

TEST(UserFolders, follow_the_environment_where_it_names_a_full_path) {
    setenv("XDG_CONFIG_HOME", "/somewhere", 1);
    EXPECT_EQ(user_settings_folder(), "/somewhere/tervexdesk");
    setenv("XDG_DATA_HOME", "relative", 1);
    setenv("HOME", "/home/someone", 1);
    EXPECT_EQ(user_data_folder(), "/home/someone/.local/share/tervexdesk");
    EXPECT_TRUE(fs::exists(executable_folder() / "base_test"));
}

TEST(ReplaceFile, makes_the_file_and_its_folders) {
    const support::TempFolder folder;
    replace_file(folder.path() / "a" / "b.ini", "text");
    EXPECT_EQ(folder.read("a/b.ini"), "text");
    replace_file(folder.path() / "a" / "b.ini", "");
    EXPECT_EQ(folder.read("a/b.ini"), "");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path() / "a"), {}), 1);
}

TEST(ReplaceFile, keeps_a_link_a_link_and_the_mode) {
    const support::TempFolder folder;
    const fs::path real = folder.write("real/settings.ini", "old");
    constexpr auto mode = fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read;
    fs::permissions(real, mode);
    fs::create_symlink("real/settings.ini", folder.path() / "link.ini");
    replace_file(folder.path() / "link.ini", "new");
    EXPECT_TRUE(fs::is_symlink(folder.path() / "link.ini"));
    EXPECT_EQ(folder.read("real/settings.ini"), "new");
    EXPECT_EQ(fs::status(real).permissions(), mode);
    fs::create_symlink("not yet", folder.path() / "dangling");
    replace_file(folder.path() / "dangling", "made");
    EXPECT_EQ(folder.read("not yet"), "made");
}

TEST(ReplaceFile, leaves_nothing_behind_when_it_fails) {
    const support::TempFolder folder;
    fs::create_directory(folder.path() / "folder");
    const auto failure = [](const fs::path& file) {
        return support::failure_of([&] { replace_file(file, "text"); }, file);
    };
    EXPECT_EQ(failure(folder.path() / "folder"), "cannot be written: Is a directory");
    folder.write("file", "kept");
    EXPECT_EQ(failure(folder.path() / "file" / "below"), "cannot be written: Not a directory");
    EXPECT_EQ(failure(folder.path() / std::string(300, 'x')),
              "cannot be written: File name too long");
    EXPECT_EQ(failure("/dev/full"), "cannot be written: No space left on device");
    EXPECT_EQ(folder.names(), (std::vector<std::string>{"file", "folder"}));
}

} // namespace

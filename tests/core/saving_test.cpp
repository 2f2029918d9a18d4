// A model on a disk that fills up and under a program that is killed: all old or all new.
#include "base/failure.h"
#include "base/textfile.h"
#include "core/arraystore.h"
#include "core/modelfiles.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <map>
#include <random>
#include <thread>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using core::Access;
using core::ArrayStore;
using core::ModelFiles;

constexpr int temperature = 1402;

class SavingTest : public testing::Test {
protected:
    fs::path model() const { return folder.path() / "m.td1"; }

    // Four files, one of them removed and made again by turns, that all hold `version`.
    void save(int version) const {
        ModelFiles files(model(), Access::write);
        files.write_project(std::string(3000, char('a' + version % 26)));
        files.write(".typ", std::to_string(version));
        version % 2 == 0 ? files.remove(".odd") : files.write(".odd", std::to_string(version));
        ArrayStore store(files, 20, 10, 2);
        store.write_array(temperature, 2, 1, core::LayerValues(200, float(version)));
        files.commit();
    }

    std::map<std::string, std::string> content() const {
        std::map<std::string, std::string> found;
        for (const std::string& name : folder.names()) {
            found[name] = fs::is_directory(folder.path() / name) ? "a folder" : folder.read(name);
        }
        return found;
    }

    support::TempFolder folder;
};

// Runs `work` in a process of its own that may write no file beyond `limit` bytes. 0 done, 3
// failed.
template <typename Work>
int run_limited(std::size_t limit, Work work) {
    const pid_t child = ::fork();
    if (child == 0) {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit size{limit, limit};
        ::setrlimit(RLIMIT_FSIZE, &size);
        try {
            work();
            ::_exit(0);
        } catch (const base::FileFailure&) {
            ::_exit(3);
        } catch (...) {
            ::_exit(4);
        }
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST_F(SavingTest, a_disk_that_is_full_at_any_byte_leaves_the_model_as_it_was) {
    save(1);
    const auto old = content();
    for (const std::size_t limit : {0U, 1U, 20U, 100U, 2999U, 3000U, 4000U, 5000U, 7199U}) {
        ASSERT_EQ(run_limited(limit, [this] { save(2); }), 3) << limit;
        ASSERT_EQ(content(), old) << limit;
    }
    EXPECT_EQ(run_limited(7200, [this] { save(2); }), 0);
    EXPECT_EQ(folder.read("m.typ"), "2");
    EXPECT_EQ(folder.names(), (std::vector<std::string>{"m.td1", "m.tem", "m.typ"}));
}

TEST_F(SavingTest, a_kill_at_any_moment_leaves_all_old_or_all_new) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> microseconds(0, 40000);
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(1500);
    save(0);
    while (std::chrono::steady_clock::now() < end) {
        const pid_t child = ::fork();
        if (child == 0) {
            for (int version = 1;; ++version) {
                save(version);
            }
        }
        std::this_thread::sleep_for(std::chrono::microseconds(microseconds(random)));
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        ModelFiles files(model(), Access::read);
        const int version = std::stoi(files.read(".typ"));
        ASSERT_EQ(files.read_project(), std::string(3000, char('a' + version % 26)));
        ASSERT_EQ(files.read_if(".odd").value_or("none"),
                  version % 2 == 0 ? "none" : std::to_string(version));
        ASSERT_EQ(ArrayStore(files, 20, 10, 2).read_cell_value(temperature, 2, 1, 10, 20, -1).value,
                  float(version));
        ASSERT_EQ(folder.names().size(), version % 2 == 0 ? 3U : 4U);
    }
}

TEST_F(SavingTest, a_list_of_moves_reaches_no_file_outside_the_folder_of_the_model) {
    folder.write("m.td1", "old");
    support::TempFolder elsewhere;
    elsewhere.write("m.td1", "untouched");
    const std::string outside = (elsewhere.path() / "m.typ").string();
    folder.write(".m.tervex/new.1", "1");
    folder.write(".m.tervex/journal", "new.1\n" + outside + "\n\n" + "\n../" +
                                          elsewhere.path().filename().string() + "/m.td1\n\nend");
    ModelFiles(model(), Access::read);
    EXPECT_EQ(elsewhere.names(), std::vector<std::string>{"m.td1"});
    EXPECT_EQ(folder.names(), std::vector<std::string>{"m.typ"});
    folder.write(".m.tervex/journal", "\n..\n\nend");
    ModelFiles(model(), Access::read);
    EXPECT_EQ(folder.names(), std::vector<std::string>{"m.typ"});
}

TEST_F(SavingTest, a_link_in_the_place_of_the_hidden_folder_is_not_followed) {
    folder.write("m.td1", "old");
    support::TempFolder elsewhere;
    elsewhere.write("new.1", "somebody's");
    fs::create_directory_symlink(elsewhere.path(), folder.path() / ".m.tervex");
    EXPECT_EQ(ModelFiles(model(), Access::read).read_project(), "old");
    EXPECT_THROW(ModelFiles(model(), Access::write), base::FileFailure);
    EXPECT_EQ(elsewhere.names(), std::vector<std::string>{"new.1"});
}

TEST_F(SavingTest, a_set_with_links_is_taken_back_behind_them) {
    support::TempFolder elsewhere;
    elsewhere.write("real", "old");
    folder.write("m.td1", "project");
    fs::create_symlink(elsewhere.path() / "real", folder.path() / "m.a");
    fs::create_symlink("gone", folder.path() / "m.b");
    fs::create_directory(folder.path() / "m.z");
    {
        ModelFiles files(model(), Access::write);
        files.write_file(folder.path() / "m.a", "new");
        files.remove_file(folder.path() / "m.b");
        files.write_file(folder.path() / "m.z", "cannot replace a folder");
        EXPECT_THROW(files.commit(), base::FileFailure);
    }
    EXPECT_EQ(elsewhere.read("real"), "old");
    EXPECT_TRUE(fs::is_symlink(folder.path() / "m.a"));
    EXPECT_EQ(fs::read_symlink(folder.path() / "m.b"), "gone");
}

TEST_F(SavingTest, a_pipe_in_the_place_of_a_file_is_not_waited_for) {
    folder.write("m.td1", "project");
    ASSERT_EQ(::mkfifo((folder.path() / "m.typ").c_str(), 0600), 0);
    ModelFiles files(model(), Access::write);
    EXPECT_THROW(files.read(".typ"), base::FileFailure);
    EXPECT_THROW(files.read_if(".typ"), base::FileFailure);
    EXPECT_THROW(files.open_aside(".typ", false), base::FileFailure);
}

TEST_F(SavingTest, a_current_folder_that_is_gone_is_a_failure) {
    EXPECT_EQ(run_limited(RLIM_INFINITY,
                          [this] {
                              const fs::path gone = folder.path() / "gone";
                              fs::create_directory(gone);
                              fs::current_path(gone);
                              fs::remove(gone);
                              ModelFiles("m.td1", Access::read);
                          }),
              3);
}

} // namespace

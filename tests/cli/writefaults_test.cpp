// Commands on a disk that is full, and commands that are killed: the model is as before or as
// after.
#include "support/tempfolder.h"
#include "td/command.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <random>
#include <sstream>
#include <thread>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

using Files = std::map<std::string, std::string>;

class WriteFaults : public testing::Test {
protected:
    WriteFaults() {
        ::setenv("XDG_CONFIG_HOME", user_.path().c_str(), 1);
        for (const char* line :
             {"new @m.td1",
              "grid set @m.td1 --layers 2 --columns 3 --column-size 10 --rows 2 --row-size 5 "
              "--finish",
              "layers set @m.td1 --geometry thickness --thickness all=4",
              "type set @m.td1 --flow 1 --heat 0 --transport 0", "coupling set @m.td1 --full 0",
              "info-results set @m.td1 --level 2", "rock set @m.td1 --zones 1 --yes",
              "periods set @m.td1 --unit 5 --flow transient --period 1 --use 1 --length 2",
              "solver set @m.td1 bicgstab", "array create @m.td1 6", "array create @m.td1 1401"}) {
            EXPECT_EQ(td(line), ::td::done) << line;
        }
        for (const char* number : {"1403", "5", "10"}) {
            for (const char* layer : {" --layer 1", " --layer 2"}) {
                EXPECT_EQ(td(std::string("array write @m.td1 --define ") + number + layer), 0);
            }
        }
        EXPECT_EQ(td("check @m.td1"), ::td::done) << error_;
    }

    // Runs a line of words; "@" at the beginning of one is the model's folder.
    int td(const std::string& line) {
        std::vector<std::string> words;
        std::istringstream text(line);
        for (std::string word; text >> word;) {
            words.push_back(word[0] == '@' ? (folder_.path() / word.substr(1)).string() : word);
        }
        if (words[0] == "create-input") {
            words.insert(words.end(), {"--install", user_.path().string()});
        }
        std::istringstream in("1 1 1 1 1 1");
        std::ostringstream out, err;
        const int status = ::td::run_program(words, in, out, err);
        error_ = err.str();
        return status;
    }

    // The same in a process of its own that may write no file beyond `limit` bytes.
    int td_limited(const std::string& line, std::size_t limit) {
        const pid_t child = ::fork();
        if (child == 0) {
            std::signal(SIGXFSZ, SIG_IGN);
            const rlimit size{limit, limit};
            ::setrlimit(RLIMIT_FSIZE, &size);
            const int status = td(line);
            ::_exit(error_.find("bad_alloc") == std::string::npos ? status : 99);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    Files files() const {
        Files found;
        for (const std::string& name : folder_.names()) {
            const bool plain = fs::is_regular_file(folder_.path() / name);
            found[name] = plain ? folder_.read(name) : "no file";
        }
        return found;
    }

    support::TempFolder folder_, user_;
    std::string error_;
};

TEST_F(WriteFaults, a_full_disk_fails_with_nothing_changed) {
    const Files before = files();
    for (const char* line :
         {"array create @m.td1 1402", "array write @m.td1 1401 --period 3 --define",
          "project set @m.td1 INFO DESCRIPTION basin", "periods set @m.td1 --unit 4",
          "note set @m.td1 PICARD Chi 0.4", "create-input @m.td1",
          "rock set @m.td1 --zones 3 --yes", "points set @m.td1 1 --name B1", "new @other.td1",
          "save-as @m.td1 @copy.td1", "grid size @m.td1 --column 2=3"}) {
        for (const std::size_t limit : {0U, 1U, 15U, 60U}) {
            EXPECT_EQ(td_limited(line, limit), ::td::run_time_failure) << line << ' ' << limit;
            ASSERT_EQ(files(), before) << line << ' ' << limit;
        }
        for (std::size_t limit = 500; limit < 20000; limit += 1300) {
            if (td_limited(line, limit) == ::td::done) {
                break;
            }
            ASSERT_EQ(files(), before) << line << ' ' << limit;
        }
        for (const auto& [name, bytes] : files()) {
            EXPECT_NE(bytes, "no file") << line << " left " << name;
            fs::remove(folder_.path() / name);
        }
        for (const auto& [name, bytes] : before) {
            folder_.write(name, bytes);
        }
    }
}

TEST_F(WriteFaults, a_killed_command_is_done_or_undone_by_the_next_one) {
    std::mt19937 random(11);
    std::uniform_int_distribution<int> microseconds(0, 60000);
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(2000);
    const Files model = files();
    while (std::chrono::steady_clock::now() < end) {
        const pid_t child = ::fork();
        if (child == 0) {
            for (;;) {
                td("save-as @m.td1 @copy.td1 --yes");
                td("array write @m.td1 1401 --period 2");
                td("periods set @m.td1 --unit 4 --period 2 --use 1 --length 3");
                td("rock set @m.td1 --zones 2 --yes");
            }
        }
        std::this_thread::sleep_for(std::chrono::microseconds(microseconds(random)));
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        EXPECT_EQ(td("open @m.td1"), ::td::done) << error_;
        EXPECT_EQ(td("array read @m.td1 1401 --period 2"), ::td::done) << error_;
        EXPECT_EQ(td("periods show @m.td1"), ::td::done) << error_;
        const int copied = td("project show @copy.td1");
        for (const auto& [name, bytes] : files()) {
            ASSERT_NE(bytes, "no file") << name;
            const bool of_copy = name.starts_with("copy");
            ASSERT_TRUE(of_copy || name == "m.upl" || name == "m.ppl" || model.contains(name))
                << name;
            ASSERT_TRUE(!of_copy || copied == ::td::done) << name << error_;
        }
        if (copied == ::td::done) {
            ASSERT_TRUE(files().contains("copy.xy") && files().contains("copy.typ"));
        }
        for (const auto& [name, bytes] : files()) {
            fs::remove(folder_.path() / name);
        }
        for (const auto& [name, bytes] : model) {
            folder_.write(name, bytes);
        }
    }
}

} // namespace

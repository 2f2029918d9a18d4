// Two programs that write one model at the same time.

#include "fault/sandbox.h"
#include "fault/savings.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <sstream>
#include <thread>

namespace {

constexpr int temperature = 1402;

class TwoPrograms : public testing::Test {
protected:
    void SetUp() override {
        std::istringstream lines(complete_model);
        for (std::string line; std::getline(lines, line);) {
            ASSERT_EQ(box.run(line, layer_of_ones).status, 0) << line;
        }
    }

    void expect_done(const std::string& line, const std::string& expected,
                     const std::string& input = "") {
        const Outcome done = box.run(line, input);
        EXPECT_EQ(done.status, 0) << line << ": " << done.err;
        EXPECT_EQ(done.out, expected) << line;
    }

    // A program that counts up a colour of the project, a note and its own layer of an array, and
    // finds each time what it wrote before. The number of rounds.
    int count_up(const std::string& key, int layer) {
        const std::string cells = fmt::format("@m.td1 {} ", temperature);
        const std::string place = fmt::format(" --period 2 --layer {}", layer);
        int round = 0;
        for (; !HasFailure() && std::chrono::steady_clock::now() < end; ++round) {
            const std::string next = fmt::format("{}", round + 1);
            if (round > 0) {
                expect_counted(key, layer, round);
            }
            expect_done("project set @m.td1 COLOR " + key + " " + next, "");
            expect_done("array write " + cells + place, "",
                        fmt::format("{0} {0} {0} {0} {0} {0}", next));
            expect_done("note set @m.td1 Rounds " + key + " " + next, "");
            expect_done("save @m.td1", "");
        }
        return round;
    }

    void expect_counted(const std::string& key, int layer, int round) {
        expect_done("project show @m.td1 COLOR " + key, fmt::format("COLOR\t{}\t{}\n", key, round));
        expect_done("note get @m.td1 Rounds " + key, fmt::format("{}\n", round));
        expect_done(
            fmt::format("array get @m.td1 {} 3 2 --period 2 --layer {}", temperature, layer),
            fmt::format("{}\t1\n", round));
    }

    std::chrono::steady_clock::time_point end =
        std::chrono::steady_clock::now() +
        std::chrono::milliseconds(std::getenv("TD_FAULT_ALL") != nullptr ? 10000 : 2500);
    Sandbox box;
};

TEST_F(TwoPrograms, on_one_model_lose_no_update) {
    std::atomic<int> other_rounds = 0;
    std::thread other([&] { other_rounds = count_up("DRAIN", 1); });
    const int rounds = count_up("RIVER", 2);
    other.join();
    EXPECT_GT(rounds, 1);
    EXPECT_GT(other_rounds, 1);
    expect_counted("DRAIN", 1, other_rounds);
    expect_counted("RIVER", 2, rounds);
    for (const auto& [name, what] : box.model()) {
        EXPECT_EQ(name.find("/."), std::string::npos) << name;
    }
}

TEST_F(TwoPrograms, where_nothing_can_be_locked_a_command_says_so_at_once) {
    const Contents before = box.all();
    box.set_without_locks();
    const auto begin = std::chrono::steady_clock::now();
    const Outcome outcome = box.run("note set @m.td1 Rounds RIVER 1");
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(20));
    EXPECT_EQ(outcome.status, 3);
    EXPECT_NE(outcome.err.find("cannot be locked: No locks available"), std::string::npos)
        << outcome.err;
    EXPECT_EQ(box.all(), before);
    EXPECT_EQ(box.run("project show @m.td1 COLOR RIVER").status, 0);
}

} // namespace

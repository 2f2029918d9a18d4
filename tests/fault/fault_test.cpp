// What td leaves behind when it is killed at any call that changes a file, and when any such call
// fails: all old or all new, and nothing that strays.
//
// A sample of the calls is tried; with TD_FAULT_ALL in the environment each of them. With
// TD_FAULT_TALLY the outcomes are counted in that file: name of the case, kills, how many of them
// left the old and the new state, failed calls, how many of them left the old state, did no harm,
// were mended by the next command to the old and to the new state.

#include "fault/savedmodel.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <map>
#include <memory>
#include <random>
#include <regex>
#include <sstream>

namespace {

constexpr int largest_number_of_failures = 5;

bool all_calls() {
    return std::getenv("TD_FAULT_ALL") != nullptr;
}

bool is_write(const std::string& call) {
    return call.starts_with("write") || call.starts_with("pwrite");
}

// Numbers from 1 to `count` for which `fits`, or some of them spread over all; `seed` shifts them.
template <typename Fits>
std::vector<std::size_t> chosen(std::size_t count, std::size_t seed, std::size_t sample_size,
                                Fits fits) {
    std::vector<std::size_t> numbers, sample;
    for (std::size_t i = 1; i <= count; ++i) {
        if (fits(i)) {
            numbers.push_back(i);
        }
    }
    if (all_calls() || numbers.empty()) {
        return numbers;
    }
    for (std::size_t i = 0; i < sample_size; ++i) {
        sample.push_back(numbers[(i * numbers.size() / sample_size + 11 * seed) % numbers.size()]);
    }
    return sample;
}

struct Tally {
    int kills = 0, killed_old = 0, killed_new = 0;
    int faults = 0, refused = 0, harmless = 0, mended_old = 0, mended_new = 0;

    void append_to(const char* file, const std::string& name) const {
        std::ofstream(file, std::ios::app)
            << fmt::format("{} {} {} {} {} {} {} {} {}\n", name, kills, killed_old, killed_new,
                           faults, refused, harmless, mended_old, mended_new);
    }
};

class FaultTest : public testing::TestWithParam<Saving> {
protected:
    // The tests of one command share its states.
    static SavedModel& shared(const Saving& saving) {
        static std::map<std::string, std::unique_ptr<SavedModel>> models;
        std::unique_ptr<SavedModel>& shared = models[saving.name];
        if (!shared) {
            shared = std::make_unique<SavedModel>(saving);
        }
        return *shared;
    }

    void TearDown() override {
        if (const char* file = std::getenv("TD_FAULT_TALLY")) {
            tally_.append_to(file, GetParam().name);
        }
    }

    // The model must be old or new by now; the one that it is is counted.
    void expect_whole(int& olds, int& news, const std::string& what) {
        const Contents now = model_.now();
        EXPECT_TRUE(model_.is_new(now) || model_.is_old(now)) << what << model_.compared(now);
        ++(model_.is_new(now) ? news : olds);
    }

    void expect_killed_whole(const std::string& plan, const Outcome& killed) {
        const std::string what = plan + " " + (killed.calls.empty() ? "" : killed.calls.back());
        ASSERT_EQ(killed.status, -SIGKILL) << what << killed.err;
        const Outcome next = model_.run_next();
        ++tally_.kills;
        expect_whole(tally_.killed_old, tally_.killed_new, what);
        EXPECT_TRUE(next.status == 0 || (next.status == 3 && !model_.was_there()))
            << what << ": " << next.err;
        EXPECT_EQ(model_.fault_outside(), "") << what;
    }

    // What failed, why and where, in one line.
    void expect_error(const std::string& err, const std::string& what) {
        std::istringstream in(err);
        int errors = 0;
        for (std::string line; std::getline(in, line);) {
            if (line.starts_with("error: ")) {
                ++errors;
                EXPECT_TRUE(std::regex_search(line, std::regex(" cannot be [a-z]+: [A-Z]")) &&
                            line.find(" (" + model_.folder()) != std::string::npos &&
                            line.ends_with(")"))
                    << what << ": " << line;
            }
        }
        EXPECT_EQ(errors, 1) << what << ": " << err;
    }

    void expect_failed_whole(const std::string& plan, const Outcome& failed) {
        const auto struck = std::find_if(failed.calls.begin(), failed.calls.end(),
                                         [](const std::string& call) { return call[0] == '!'; });
        ASSERT_NE(struck, failed.calls.end()) << plan << " did not strike";
        const std::string what = plan + " " + *struck;
        const bool once = plan.back() != '+';
        const Contents then = model_.now();
        const bool as_before = failed.status != 0 && model_.is_old(then);
        ++tally_.faults;
        tally_.harmless += failed.status == 0;
        tally_.refused += as_before;
        if (failed.status != 0) {
            ASSERT_EQ(failed.status, 3) << what << ": " << failed.err;
            expect_error(failed.err, what);
            EXPECT_TRUE(as_before || !once) << what << model_.compared(then);
        }
        if (failed.status == 0 ? !model_.is_new(then) : !as_before) {
            expect_mended(failed.status == 0, what);
        }
        EXPECT_EQ(model_.fault_outside(), "") << what;
    }

    // The next command makes all old or all new of what a failed clean-up left.
    void expect_mended(bool done, const std::string& what) {
        model_.run_next();
        int olds = 0, news = 0;
        expect_whole(olds, news, what + ", the next command");
        EXPECT_TRUE(!done || model_.is_new(model_.now())) << what << ": done, but not new";
        tally_.mended_old += done ? 0 : olds;
        tally_.mended_new += done ? 0 : news;
    }

    bool too_many_failures() const {
        return testing::UnitTest::GetInstance()->current_test_info()->result()->total_part_count() >
               largest_number_of_failures;
    }

    // Strikes at each chosen call.
    template <typename Check>
    void strike(const std::vector<std::string>& actions, std::size_t sample_size, Check check) {
        const std::vector<std::string>& calls = model_.calls();
        for (std::size_t seed = 0; seed < actions.size(); ++seed) {
            const bool any = actions[seed] != "torn" && actions[seed] != "short";
            const auto fits = [&](std::size_t call) { return any || is_write(calls[call - 1]); };
            for (const std::size_t call : chosen(calls.size(), seed, sample_size, fits)) {
                const std::string plan = fmt::format("{}:{}", call, actions[seed]);
                check(plan, model_.run(plan));
                if (too_many_failures()) {
                    return;
                }
            }
        }
    }

    SavedModel& model_ = shared(GetParam());
    Tally tally_;
};

TEST_P(FaultTest, a_kill_at_any_call_leaves_all_old_or_all_new) {
    strike({"kill", "torn"}, 3, [this](const std::string& plan, const Outcome& killed) {
        expect_killed_whole(plan, killed);
    });
}

TEST_P(FaultTest, a_call_that_fails_leaves_the_model_as_it_was) {
    strike({"ENOSPC", "ENOSPC+", "short", "EIO", "EIO+", "EACCES", "EACCES+"}, 1,
           [this](const std::string& plan, const Outcome& failed) {
               expect_failed_whole(plan, failed);
           });
}

// A kill while a failed command takes back its moves, and one while the next command finishes or
// drops what a killed one has left.
TEST_P(FaultTest, a_kill_while_a_fault_is_mended_leaves_all_old_or_all_new) {
    std::mt19937 random(11);
    const auto up_to = [&random](std::size_t last) {
        return std::uniform_int_distribution<std::size_t>(1, last)(random);
    };
    const std::vector<std::string> faults = {"EIO", "EACCES", "ENOSPC+", "short"};
    const std::vector<std::string> next_faults = {"EIO", "kill", "ENOSPC+"};
    const int tries = all_calls() ? 120 : 3;
    for (int i = 0; i < tries && !too_many_failures(); ++i) {
        const std::size_t first = up_to(model_.calls().size());
        std::string plan = fmt::format("{}:kill", first);
        if (i % 2 == 0) {
            plan = fmt::format("{}:{},{}:kill", first, faults[up_to(4) - 1], first + up_to(25));
        }
        model_.run(plan);
        const std::string next_plan = fmt::format("{}:{}", up_to(20), next_faults[up_to(3) - 1]);
        model_.run_next(next_plan);
        model_.run_next();
        ++tally_.kills;
        expect_whole(tally_.killed_old, tally_.killed_new, plan + " then " + next_plan);
    }
}

// A part of the model that cannot be read leaves its block of the input file empty, as is told in
// tests/cli/input_test.cpp.
TEST_P(FaultTest, a_file_that_cannot_be_read_leaves_the_model_as_it_was) {
    if (GetParam().goes_on) {
        return;
    }
    // The search for hundreds of array files lists the folder as often.
    const std::vector<std::string> reads = model_.reads();
    const auto is_other = [&](std::size_t call) {
        return call == 1 || reads[call - 1] != reads[call - 2];
    };
    for (const std::size_t call : chosen(reads.size(), 5, 2, is_other)) {
        const std::string plan = fmt::format("{}:EIO", call);
        expect_failed_whole(plan, model_.run(plan, Counted::reads));
        if (too_many_failures()) {
            return;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Saving, FaultTest, testing::ValuesIn(savings()),
                         [](const auto& saving) { return saving.param.name; });

} // namespace

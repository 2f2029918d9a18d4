// Kills while a program that keeps a model open carries out a command, takes it back and does it
// again.

#include "fault/sandbox.h"
#include "fault/savings.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <sstream>

namespace {

TEST(UndoProgram, killed_at_any_call_leaves_all_old_or_all_new_and_no_kept_file) {
    Sandbox box;
    std::istringstream lines(complete_model + "array write @m.td1 51 --define\n");
    for (std::string line; std::getline(lines, line);) {
        ASSERT_EQ(box.run(line, layer_of_ones).status, 0) << line;
    }
    const Contents before = box.all(), old_model = box.model();
    const auto run = [&](const std::string& plan) {
        box.put(before);
        return box.run_program(TD_UNDO_PROGRAM, "@m.td1", plan);
    };
    const Outcome whole = run("");
    ASSERT_EQ(whole.status, 0) << whole.err;
    const Contents new_model = box.model();
    ASSERT_NE(new_model, old_model);
    const std::size_t stride = std::getenv("TD_FAULT_ALL") != nullptr ? 1 : 9;
    int olds = 0, news = 0;
    for (std::size_t call = 1; call <= whole.calls.size(); call += stride) {
        const Outcome killed = run(fmt::format("{}:kill", call));
        ASSERT_EQ(killed.status, -SIGKILL) << killed.err;
        EXPECT_EQ(box.run("project show @m.td1").status, 0);
        const Contents now = box.model();
        EXPECT_TRUE(now == old_model || now == new_model) << killed.calls.back();
        ++(now == old_model ? olds : news);
    }
    EXPECT_GT(olds, 0);
    EXPECT_GT(news, 0);
    RecordProperty("old", olds);
    RecordProperty("new", news);
}

} // namespace

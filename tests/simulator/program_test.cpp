// The program as a person meets it: files, refusals, interrupts.

#include "base/textfile.h"
#include "minitervex/program.h"
#include "simulator/modelstream.h"
#include "support/streamreader.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <csignal>
#include <sstream>

namespace minitervex::test {
namespace {

struct Outcome {
    int status = -1;
    std::string out, err;
};

class Program : public testing::Test {
protected:
    Outcome run(
        const std::string& stream, const std::function<bool()>& stop = [] { return false; }) {
        folder.write("m.nml", stream);
        return run_again(stop);
    }

    Outcome run_again(const std::function<bool()>& stop = [] { return false; }) {
        std::ostringstream out, err;
        const int status = run_program({"m"}, folder.path(), {out, err}, stop);
        EXPECT_FALSE(exists(folder.path() / "flagfile"));
        return {status, out.str(), err.str()};
    }

    std::vector<double> result(std::string_view keyword, int index = 0) {
        const support::Stream stream(folder.read("m.nlo"));
        return support::expanded(stream.block(keyword, index).lines.at(0));
    }

    std::string failure(const std::string& what) {
        return "minitervex: " + (folder.path() / "m.nml").string() + ": " + what + "\n";
    }

    support::TempFolder folder;
};

ModelStream steady_flow() {
    ModelStream stream(6, 4, 2);
    stream.set("KEY", "F----");
    stream.cells("PERM",
                 [](int i, int, int k) { return (i == 0 || i == 5 ? -1E-12 : 1E-12) * (k + 1); });
    stream.cells("PHI", [](int i, int, int) { return i == 0 ? 7.5 : i == 5 ? 2.5 : 0.0; });
    return stream.cells("PRES", [](int i, int, int) { return i == 5 ? -0.1 : 0.1; });
}

TEST_F(Program, writes_the_stream_of_the_input_with_the_state_at_the_end_and_keeps_the_marks) {
    const std::string input = steady_flow().text();
    const Outcome outcome = run(input);
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_NE(outcome.out.find("balance of water"), std::string::npos);
    const std::string output = folder.read("m.nlo");
    const support::Stream before(input), after(output);
    ASSERT_EQ(before.blocks().size(), after.blocks().size());
    for (std::size_t n = 0; n < after.blocks().size(); ++n) {
        const std::string& keyword = after.blocks()[n].keyword;
        EXPECT_EQ(keyword, before.blocks()[n].keyword);
        const bool is_state = std::string(" PHI VX VY VZ DICHTE PRES ").find(" " + keyword + " ") !=
                              std::string::npos;
        EXPECT_TRUE(is_state || after.blocks()[n].lines == before.blocks()[n].lines) << keyword;
    }
    for (std::size_t at = output.find('\n'); at != std::string::npos;
         at = output.find('\n', at + 1))
        ASSERT_EQ(output[at - 1], '\r') << at;
    const std::vector<double> pressure = result("PRES"), velocity = result("VX");
    for (std::size_t cell = 0; cell < pressure.size(); ++cell)
        EXPECT_EQ(pressure[cell] < 0, cell % 6 == 5) << cell;
    // 1 m of head a metre; nothing passes the outer face of the last column.
    EXPECT_NEAR(velocity[2], 1E-12 * 1E7, 1E-12);
    EXPECT_NEAR(velocity[26], 2E-12 * 1E7, 1E-12);
    EXPECT_EQ(velocity[5], 0);
}

TEST_F(Program, a_copy_of_the_result_of_a_steady_model_reproduces_it) {
    ASSERT_EQ(run(steady_flow().text()).status, 0);
    const std::vector<double> head = result("PHI"), velocity = result("VX");
    ASSERT_EQ(run(folder.read("m.nlo")).status, 0);
    for (std::size_t cell = 0; cell < head.size(); ++cell) {
        EXPECT_NEAR(result("PHI")[cell], head[cell], 1E-5);
        EXPECT_NEAR(result("VX")[cell], velocity[cell], 1E-10);
    }
}

TEST_F(Program, a_transient_run_goes_on_from_its_result_as_if_it_had_not_ended) {
    ModelStream stream = steady_flow().set("KEY", "FUU--").set("STAT", "INST");
    stream.set("COMPM", "1.E-7").set("ANZSUBS", " 1 ").set("MDIFS1", "1.E-9");
    stream.fill("CONC           1", 0.5).wells({{2, 1, 1, 1E-5, 40, 2}, {3, 2, 0, -5E-6}});
    ASSERT_EQ(run(stream.period(2E4, 20).text()).status, 0);
    const auto state = [&] {
        std::vector<double> all;
        for (const char* keyword : {"PHI", "TEMP", "CONC", "VX", "VZ"})
            for (const double value : result(keyword, keyword[0] == 'C' ? 1 : 0))
                all.push_back(value);
        return all;
    };
    const std::vector<double> whole = state();
    ASSERT_EQ(run(stream.period(1E4, 10).text()).status, 0);
    ASSERT_EQ(run(folder.read("m.nlo")).status, 0);
    const std::vector<double> halves = state();
    ASSERT_EQ(halves.size(), 240U);
    for (std::size_t n = 0; n < halves.size(); ++n)
        EXPECT_NEAR(halves[n], whole[n], 1E-5 * std::max(1E-4, std::abs(whole[n]))) << n;
}

TEST_F(Program, refuses_what_it_cannot_compute_in_one_line_and_leaves_the_old_result) {
    struct Case {
        const char *keyword, *lines, *what;
    };
    constexpr Case cases[] = {
        {"ANZCHEM", " 3 ", "asks for chemistry, which minitervex cannot compute"},
        {"KEY", "F---K", "asks for chemistry, which minitervex cannot compute"},
        {"KEY", "F--R-",
         "asks for re-injection of produced water, which minitervex cannot compute"},
        {"KOPLNG", "C---",
         "asks for the coupling of flow and heat, which minitervex cannot compute"},
        {"KOPLNG", "-O--",
         "asks for a density that depends on concentrations, which minitervex cannot compute"},
        {"KOPLNG", "--U-",
         "asks for a permeability that depends on the porosity, which minitervex cannot compute"},
        {"KOPLNG", "---P",
         "asks for rock properties that depend on the temperature, which minitervex cannot "
         "compute"},
        {"BOX", "1", "asks for multiple continua, which minitervex cannot compute"},
        {"ICE", "48*0. ", "asks for permafrost, which minitervex cannot compute"},
        {"BETAC", "0.1 99*0. ",
         "asks for a density that depends on concentrations, which minitervex cannot compute"},
        {"DELTATMP", "2.0 99*0.0 ",
         "asks for a temperature shift, which minitervex cannot compute"},
        {"XANG", "48*10. ",
         "asks for an anisotropy that is turned out of the axes, which minitervex cannot compute"},
        {"KEY", "FX---", "\"FX---\" has a letter without a meaning"},
        {"KEY", "-U-P-", "prescribes the flow field of a model without flow"},
        {"STAT", "ONCE", "\"ONCE\" is neither STAT nor INST"},
        {"NWELAR", "2 99*0", "says 2 wells in period 1, where # WELLAR has 0"},
        {"FOO", "1", "minitervex does not know this block"},
        {"POR", "47*0.2 ", "holds 47 values, where 48 belong"},
        {"PHI", "49*0. ", "holds more than 48 values"},
        {"TEMP", "48*warm ", "\"48*warm\" is no number"},
        {"POR", "48*1.5 ", "holds a value above 1"},
        {"I0", "2000000000", "2000000000 is no integer from 1 to 20000000"},
        {"DELX", "5*1. 0. ", "holds a value that is not above 0"},
        {"TMAXAR", "100*0. ", "period 1 has no length"},
        {"PMONIX", "7 99*0", "point 1 lies outside the grid"},
    };
    folder.write("m.nlo", "old");
    for (const auto& [keyword, lines, what] : cases) {
        ModelStream stream = steady_flow();
        stream.set("PMONIY", "1 99*0").set("PMONIZ", "1 99*0").set(keyword, lines);
        const Outcome outcome = run(stream.text());
        EXPECT_EQ(outcome.status, 1) << keyword;
        EXPECT_TRUE(outcome.out.empty());
        EXPECT_EQ(std::ranges::count(outcome.err, '\n'), 1) << outcome.err;
        EXPECT_NE(outcome.err.find(std::string("# ") + keyword + " (line "), std::string::npos)
            << outcome.err;
        EXPECT_TRUE(outcome.err.ends_with(std::string("): ") + what + "\n")) << outcome.err;
    }
    const Outcome unfixed = run(steady_flow().fill("PERM", 1E-12).text());
    EXPECT_EQ(unfixed.err, failure("the cell I 1 J 1 K 1 is connected to no fixed head, without "
                                   "which steady flow is undefined"));
    EXPECT_EQ(folder.read("m.nlo"), "old");
}

TEST_F(Program, a_result_that_cannot_be_written_is_told_before_the_run) {
    create_directory(folder.path() / "m.nlo");
    const Outcome outcome = run(steady_flow().text());
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_TRUE(outcome.err.ends_with("m.nlo: cannot be written: it is a folder\n")) << outcome.err;
    EXPECT_FALSE(exists(folder.path() / "m.nlo.new"));
}

TEST_F(Program, a_stream_that_is_cut_off_gives_one_line_and_never_a_result) {
    const std::string whole = ModelStream(2, 2, 2).text();
    const std::size_t end = whole.rfind("0.");
    for (std::size_t length = 0; length < end; length += 5) {
        const Outcome outcome = run(whole.substr(0, length));
        ASSERT_EQ(outcome.status, 1) << length;
        ASSERT_EQ(std::ranges::count(outcome.err, '\n'), 1) << outcome.err;
        ASSERT_FALSE(exists(folder.path() / "m.nlo")) << length;
    }
    EXPECT_EQ(run(whole).status, 0);
}

TEST_F(Program, an_interrupt_ends_behind_the_present_step_with_the_state_reached) {
    int steps = 0;
    ModelStream stream = steady_flow().period(86400.0 * 10, 10);
    const Outcome outcome = run(stream.text(), [&] { return ++steps == 3; });
    EXPECT_EQ(outcome.status, 130);
    EXPECT_NE(outcome.err.find("interrupted at 3.0 d (259200 s)"), std::string::npos)
        << outcome.err;
    EXPECT_EQ(result("PHI").size(), 48U);

    std::signal(SIGHUP, SIG_IGN); // as nohup does
    catch_signals();
    std::raise(SIGHUP);
    std::raise(SIGPIPE);
    EXPECT_FALSE(interrupted_by_signal());
    std::raise(SIGTERM);
    EXPECT_TRUE(interrupted_by_signal());
}

TEST_F(Program, monitoring_files_follow_the_ranks_and_the_lowest_rank_writes_a_shared_one) {
    ModelStream stream = steady_flow().period(86400.0 * 5, 5).set("PMONIFR", "100*2");
    std::vector<double> columns, ones(12, 1.0);
    for (int n = 0; n < 12; ++n)
        columns.push_back(1 + n % 6);
    stream.table("PMONIX", columns, 100).table("PMONIY", ones, 100).table("PMONIZ", ones, 100);
    folder.write("m.100", "a longer file of an earlier run\n\n\n\n\n\n\n\n");
    const Outcome outcome = run(stream.text());
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "minitervex: warning: monitoring point 10 shares its file with point 1, "
                           "which writes it\n");
    for (const char* name : {"m.100", "m.200", "m.900", "m.110", "m.120"})
        EXPECT_TRUE(exists(folder.path() / name)) << name;
    std::istringstream lines(folder.read("m.200"));
    std::string line;
    std::getline(lines, line); // the head
    const std::vector<std::pair<double, int>> records = {{2, 2}, {4, 4}, {5, 5}};
    for (const auto& [time, step] : records) {
        ASSERT_TRUE(std::getline(lines, line));
        std::istringstream fields(line);
        std::vector<double> values;
        for (double value = 0; fields >> value;)
            values.push_back(value);
        ASSERT_EQ(values.size(), 12U);
        EXPECT_EQ(values[0], time);
        EXPECT_EQ(values[1], step);
        EXPECT_NEAR(values[2], 6.5, 1E-4);
        EXPECT_NEAR(values[3], 1E-5 * 86400 * 365, 1E-3); // m a year
        EXPECT_NEAR(values[7], 1E-5, 1E-10);
    }
    EXPECT_FALSE(std::getline(lines, line));
}

TEST_F(Program, runs_what_the_control_file_names_and_is_silent_where_it_should_be) {
    folder.write("m.nml", steady_flow().set("LINFO", "3").text());
    std::string control;
    for (int line = 1; line <= 10; ++line)
        control += "#\r\n";
    folder.write("tervex.ctl",
                 control + base::to_ansi((folder.path() / "m").string()) + " 3\r\n#\r\n");
    std::ostringstream out, err;
    EXPECT_EQ(run_program({}, folder.path(), {out, err}, [] { return false; }), 0) << err.str();
    EXPECT_EQ(out.str() + err.str(), "");
    folder.write("tervex.ctl", control);
    EXPECT_EQ(run_program({}, folder.path(), {out, err}, [] { return false; }), 1);
    EXPECT_TRUE(err.str().ends_with("tervex.ctl: line 11 is not a project and its type 3\n"));
    EXPECT_EQ(run_program({"a", "b"}, folder.path(), {out, err}, [] { return false; }), 2);
}

} // namespace
} // namespace minitervex::test

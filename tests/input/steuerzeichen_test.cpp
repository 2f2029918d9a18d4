#include "input/steuerzeichen.h"

#include "core/modelflags.h"
#include "sim/typfile.h"

#include <gtest/gtest.h>

using input::TervexSteuerzeichen;
namespace typ = sim::typ;

namespace {

core::ModelFlags all_processes() {
    core::ModelFlags flags;
    for (const int process : {4, 5, 6, 7}) {
        flags.set(9, process, 1);
    }
    return flags;
}

TervexSteuerzeichen with_line(int number, std::string_view text,
                              const core::ModelFlags& flags = all_processes()) {
    sim::TypFile file;
    file.set_line(number, text);
    return {file, flags};
}

std::string coupling_without(std::initializer_list<int> processes) {
    core::ModelFlags flags = all_processes();
    for (const int process : processes) {
        flags.set(9, process, 0);
    }
    return with_line(typ::KOPLNG, "COUP # 800 # 1.8 # 0 # 2400", flags).KOPLNG;
}

} // namespace

TEST(TervexSteuerzeichen, reinjection_puts_R_into_a_simulated_flow_field_only) {
    core::ModelFlags flags = all_processes();
    EXPECT_EQ(with_line(typ::KEY, "FZ---", flags).KEY, "FZ---");
    flags.set(1, 1, 2);
    EXPECT_EQ(with_line(typ::KEY, "FZ---", flags).KEY, "FZ-R-");
    EXPECT_EQ(with_line(typ::KEY, "FZ-P-", flags).KEY, "FZ-P-");
    EXPECT_EQ(with_line(typ::KEY, "FZ", flags).KEY, "FZ");
}

TEST(TervexSteuerzeichen, coupling_keeps_only_letters_of_running_processes) {
    EXPECT_EQ(coupling_without({}), "COUP");
    EXPECT_EQ(coupling_without({5}), "-OU-");
    EXPECT_EQ(coupling_without({4}), "---P");
    EXPECT_EQ(coupling_without({6}), "C-UP");
    EXPECT_EQ(coupling_without({7}), "CO-P");
    EXPECT_EQ(coupling_without({4, 5, 6, 7}), "----");
}

TEST(TervexSteuerzeichen, rock_capacity_stands_behind_the_marks_of_the_coupling_line) {
    const auto texts = with_line(typ::KOPLNG, "COUP # 801.5 # 2 # -0.1 # 2650");
    EXPECT_EQ(texts.A0, "801.5");
    EXPECT_EQ(texts.A1, "2");
    EXPECT_EQ(texts.A2, "-0.1");
    EXPECT_EQ(texts.rock_density, "2650");
}

TEST(TervexSteuerzeichen, rock_capacity_has_defaults_of_its_own) {
    for (const char* line : {"COUP", "COUP #"}) {
        const auto texts = with_line(typ::KOPLNG, line);
        EXPECT_EQ(texts.A0, "750") << line;
        EXPECT_EQ(texts.A1, "1.8") << line;
        EXPECT_EQ(texts.A2, "-0.0025") << line;
        EXPECT_EQ(texts.rock_density, "2400") << line;
    }
}

TEST(TervexSteuerzeichen, output_switches_and_run_time_level_share_a_line) {
    EXPECT_EQ(with_line(typ::IPUTDI, "X23X567X90125").IPUTDI, "X23X567X9012");
    EXPECT_EQ(with_line(typ::IPUTDI, "X23X567X90125").LINFO, "5");
    EXPECT_EQ(with_line(typ::IPUTDI, "X23").IPUTDI, "X23");
    EXPECT_EQ(with_line(typ::IPUTDI, "X23").LINFO, "3");
    EXPECT_EQ(with_line(typ::IPUTDI, "").LINFO, "");
}

TEST(TervexSteuerzeichen, whole_time_weights_get_a_decimal) {
    EXPECT_EQ(with_line(typ::OMF, "1").OMF, "1.0");
    EXPECT_EQ(with_line(typ::OMT, "0").OMT, "0.0");
    EXPECT_EQ(with_line(typ::OMS, "0.3").OMS, "0.3");
    EXPECT_EQ(with_line(typ::OMS, "10").OMS, "10");
}

TEST(TervexSteuerzeichen, limits_get_a_point_before_the_exponent_or_a_decimal) {
    EXPECT_EQ(with_line(typ::ERRF, "1E-18").ERRF, "1.E-18");
    EXPECT_EQ(with_line(typ::ERRT, "1.0E-18").ERRT, "1.0E-18");
    EXPECT_EQ(with_line(typ::APARF, "2").APARF, "2.0");
    EXPECT_EQ(with_line(typ::APARS, "1e-3").APARS, "1e-3.0"); // a small e is none
    EXPECT_EQ(with_line(typ::HPF, "1e-3").HPF, "1.E-3");
    EXPECT_EQ(with_line(typ::HPF, "1.0e-3").HPF, "1.0e-3");
}

TEST(TervexSteuerzeichen, a_line_ends_at_its_first_comma) {
    EXPECT_EQ(with_line(typ::RHOF, "998,5").RHOF, "998");
    EXPECT_EQ(input::first_piece("  \"20 000\" , x"), "20 000");
    EXPECT_EQ(input::first_piece(""), "");
}

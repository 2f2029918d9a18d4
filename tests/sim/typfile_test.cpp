#include "sim/typfile.h"

#include "base/failure.h"
#include "sim/settingsmodel.h"
#include "support/failureof.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace sim {
namespace {

constexpr const char* new_model = "-----\r\n----\r\n1.0\r\n2.0\r\n10.0\r\n1234567890121\r\n"
                                  "1.0\r\n1.0\r\n1.0\r\n1.0\r\n1.0\r\n1.0\r\n"
                                  "1.0E-18\r\n1.0E-18\r\n1.0E-10\r\n20000\r\n"
                                  "0.08\r\n0.0\r\n1.0E-10\r\n998.0\r\n";

std::string failure_of(std::string_view bytes) {
    return support::failure_of([&] { TypFile::read(bytes, "m.typ"); }, "m.typ");
}

TEST(TypFile, MissingFileCountsAsTheLinesOfANewModel) {
    const SettingsModel model;
    EXPECT_EQ(TypFile::load(model.files).bytes(), new_model);
}

TEST(TypFile, LinesAreTrimmedAndLineEndsOfBothKindsAreRead) {
    std::string text = "  FU---  \n";
    for (int i = 2; i < 20; ++i)
        text += "x\r\n";
    text += " 998.0"; // the last line needs no end
    const TypFile typ_file = TypFile::read(text, "m.typ");
    EXPECT_EQ(typ_file.line(typ::KEY), "FU---");
    EXPECT_EQ(typ_file.line(typ::RHOF), "998.0");
}

TEST(TypFile, LinesBeyondTheTwentiethAreDropped) {
    EXPECT_EQ(TypFile::read(std::string(new_model) + "more\r\n", "m.typ").bytes(), new_model);
}

TEST(TypFile, FileCutAtAnyLineIsAFailureThatNamesTheLine) {
    std::string_view rest = new_model;
    std::size_t end = 0;
    for (int whole = 0; whole < 20; ++whole) {
        const std::string start =
            fmt::format("ends behind line {}, where line {} of 20 (", whole, whole + 1);
        EXPECT_EQ(failure_of(rest.substr(0, end)).substr(0, start.size()), start);
        end = rest.find('\n', end) + 1;
    }
    EXPECT_EQ(failure_of(rest.substr(0, end)), "");
    EXPECT_EQ(failure_of(""), "ends behind line 0, where line 1 of 20 (KEY) was expected");
}

TEST(TypFile, LineEndsInsideATextDoNotShiftTheLines) {
    TypFile typ_file;
    typ_file.set_line(typ::f1, "1\r\n2");
    EXPECT_EQ(TypFile::read(typ_file.bytes(), "m.typ").line(typ::f2), "2.0");
}

TEST(TypFile, CodesOfLinesTwoAndSix) {
    TypFile typ_file;
    typ_file.set_line(typ::KOPLNG, "COUP # 800.0");
    EXPECT_EQ(typ_file.KOPLNG(), "COUP");
    EXPECT_EQ(typ_file.IPUTDI(), "123456789012");
    EXPECT_EQ(typ_file.LINFO(), "1");
    typ_file.set_line(typ::IPUTDI, "");
    EXPECT_EQ(typ_file.IPUTDI() + typ_file.LINFO(), "");
}

TEST(TypFile, PiecesBeginTwoCharactersBehindTheirMark) {
    constexpr std::string_view line = "CO-P # 750 #  # -0.0025 #";
    EXPECT_EQ(piece_behind_hash(line, 1), "750");
    EXPECT_EQ(piece_behind_hash(line, 2), "");
    EXPECT_EQ(piece_behind_hash(line, 3), "-0.0025");
    EXPECT_EQ(piece_behind_hash(line, 4), std::nullopt); // the line ends at it
    EXPECT_EQ(piece_behind_hash(line, 5), std::nullopt);
    EXPECT_EQ(piece_behind_hash("#800", 1), "00");
    EXPECT_EQ(piece_behind_hash("##", 1), "");
    EXPECT_EQ(piece_behind_hash("", 1), std::nullopt);
}

} // namespace
} // namespace sim

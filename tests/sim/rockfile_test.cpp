#include "sim/rockfile.h"

#include "base/failure.h"
#include "base/textfile.h"
#include "sim/settingsmodel.h"
#include "support/failureof.h"

#include <gtest/gtest.h>

#include <random>

namespace sim {
namespace {

std::string lines_of(int count, std::string_view line) {
    std::string bytes;
    for (int i = 0; i < count; ++i)
        bytes.append(line).append("\r\n");
    return bytes;
}

std::string failure_of(std::string_view bytes) {
    return support::failure_of([&] { RockFile::read(bytes, "m.mco"); }, "m.mco");
}

constexpr std::string_view quartz =
    "QUARTZ    10.       20.       -1        -3.9      2.2E-5    -1        0.5       1.0E-12"
    "             75000.";

TEST(RockFile, NewFileOfTwoZonesToTheByte) {
    EXPECT_EQ(RockFile(2).bytes(), "Fluid Flow\r\n"
                                   "Por       0.25      0.25\r\n"
                                   "Perm      1E-12               1E-12\r\n"
                                   "Anisotropy\r\n"
                                   "ANISOI    1.        1.\r\n"
                                   "ANIOSJ    1.        1.\r\n"
                                   "XANG      0.        0.\r\n"
                                   "YANG      0.        0.\r\n"
                                   "Heat\r\n"
                                   "RhoCm     2.06      2.06\r\n"
                                   "Cond      2.9       2.9\r\n"
                                   "HPF       0.        0.\r\n"
                                   "WLXANI    1.        1.\r\n"
                                   "WLYANI    1.        1.\r\n"
                                   "LOOK MIN\r\n" +
                                       lines_of(20, std::string(15, ' ')));
}

TEST(RockFile, NewFileHasFifteenZones) {
    const RockFile rock;
    EXPECT_EQ(rock.lines(), 35);
    EXPECT_EQ(rock.zones(), 15);
    EXPECT_EQ(rock.field(rock::Perm, 15), "1E-12");
    EXPECT_EQ(rock.line(rock::Perm).substr(290), "1E-12"); // column 20 * 15 - 9
    EXPECT_EQ(rock.line(rock::Por).substr(150), "0.25");   // column 10 * 15 + 1
}

TEST(RockFile, FieldKeepsItsColumnsWhenItsNeighbourChanges) {
    RockFile rock(3);
    rock.set_field(rock::Por, 2, "  0.1\r\n ");
    EXPECT_EQ(rock.line(rock::Por), "Por       0.25      0.1       0.25");
    rock.set_field(rock::Por, 2, "");
    EXPECT_EQ(rock.line(rock::Por), "Por       0.25                0.25");
    EXPECT_EQ(rock.zones(), 2);
    rock.set_field(rock::Perm, 5, "2E-15");
    EXPECT_EQ(rock.line(rock::Perm).find("2E-15"), 90U);
}

TEST(RockFile, TextsLongerThanTheFieldAreCutBeforeTheNextOne) {
    RockFile rock(2);
    rock.set_field(rock::Por, 1, "0.1234567890");
    EXPECT_EQ(rock.line(rock::Por), "Por       0.1234567 0.25");
    rock.set_field(rock::Perm, 1, "1.234567890123456789E-12");
    EXPECT_EQ(rock.field(rock::Perm, 1), "1.23456789012345678");
    EXPECT_EQ(rock.field(rock::Perm, 2), "1E-12");
}

TEST(RockFile, PermeabilityOfTwentyDigitsFits) {
    RockFile rock(2);
    rock.set_field(rock::Perm, 1, "0.000000000012345678");
    EXPECT_EQ(rock.field(rock::Perm, 1), "0.000000000012345678");
    EXPECT_EQ(rock.field(rock::Perm, 2), "1E-12");
}

TEST(RockFile, ColumnsCountCharacters) {
    RockFile rock(2);
    rock.set_line(rock::Por, "P\u00F6r       0.25      0.5");
    EXPECT_EQ(rock.field(rock::Por, 2), "0.5");
    rock.set_label(rock::Por, "Por");
    EXPECT_EQ(rock.line(rock::Por), "Por       0.25      0.5");
}

TEST(RockFile, OtherLinesAreCopiedUnchanged) {
    std::string bytes = RockFile(2).bytes();
    bytes += "  a line behind the block  \r\n\tanother \xB5 \r\n";
    RockFile rock = RockFile::read(bytes, "m.mco");
    EXPECT_EQ(rock.lines(), 37);
    EXPECT_EQ(rock.bytes(), bytes);
    rock.set_field(rock::Cond, 2, "3.1");
    const std::string changed = rock.bytes();
    EXPECT_EQ(changed.substr(changed.find("HPF")), bytes.substr(bytes.find("HPF")));
}

TEST(RockFile, HeadBlockMustBeWhole) {
    EXPECT_EQ(failure_of(""), "ends behind line 0, where line 1 of 14 (Fluid Flow) was expected");
    EXPECT_EQ(failure_of("Fluid Flow\nPor"),
              "ends behind line 2, where line 3 of 14 (Perm) was expected");
    EXPECT_EQ(failure_of(lines_of(13, "x")),
              "ends behind line 13, where line 14 of 14 (WLYANI) was expected");
    EXPECT_EQ(failure_of(lines_of(14, "x")), "");
}

TEST(RockFile, GarbageIsReadAndWrittenBackWithoutHarm) {
    std::mt19937 random(7);
    for (int round = 0; round < 50; ++round) {
        std::string bytes;
        for (int i = 0; i < 4000; ++i)
            bytes += char(random() % 256);
        bytes += lines_of(14, "x");
        RockFile rock = RockFile::read(bytes, "m.mco");
        rock.set_zones(rock.zones() == 4 ? 9 : 4);
        for (int line = 1; line <= 16; ++line)
            rock.set_field(line, 15, rock.field(line, 1));
        EXPECT_EQ(RockFile::read(rock.bytes(), "m.mco").bytes(), rock.bytes());
    }
}

TEST(RockFile, MissingLinesBeforeAChangedOneAreThoseOfANewFile) {
    const std::string bytes = RockFile(1).bytes();
    RockFile rock = RockFile::read(bytes.substr(0, bytes.find("LOOK MIN")), "m.mco");
    EXPECT_EQ(rock.line(16), "");
    rock.set_line(17, "HALITE");
    EXPECT_EQ(rock.line(15), "LOOK MIN");
    EXPECT_EQ(rock.line(16), std::string(15, ' '));
}

TEST(RockZones, FewerZonesDropTheFieldsBehindThem) {
    RockFile rock;
    rock.set_zones(1);
    EXPECT_EQ(rock.bytes(), RockFile(1).bytes());
    EXPECT_EQ(rock.line(rock::Perm), "Perm      1E-12");
    EXPECT_EQ(rock.line(rock::Heat), "Heat");
}

TEST(RockZones, NewZonesGetTheDefaultsOfANewFile) {
    RockFile rock(1);
    rock.set_field(rock::Cond, 1, "3.3");
    rock.set_zones(3);
    EXPECT_EQ(rock.line(rock::Cond), "Cond      3.3       2.9       2.9");
    EXPECT_EQ(rock.line(rock::Compress), "Anisotropy");
}

TEST(RockZones, FieldsBehindTheZonesOfAMineralMove) {
    RockFile rock(2);
    rock.set_line(16, quartz);
    EXPECT_EQ(rock.field(16, 3), "-1");
    rock.set_zones(3);
    EXPECT_EQ(rock.line(16),
              "QUARTZ    10.       20.       0.        -1        -3.9      2.2E-5    -1        "
              "0.5       1.0E-12             75000.");
    EXPECT_EQ(rock.line(17), std::string(15, ' '));
    rock.set_zones(1);
    EXPECT_EQ(rock.field(16, 2), "-1");
    EXPECT_EQ(rock.field(16, 1), "10.");
}

TEST(RockZones, GoingUpAndBackRestoresTheMinerals) {
    for (int other = 3; other <= 15; ++other) {
        RockFile rock(2);
        rock.set_line(16, quartz);
        rock.set_line(18, "H"); // shorter than its zones
        rock.set_zones(other);
        EXPECT_EQ(rock.field(16, other + 1), "-1");
        rock.set_zones(2);
        EXPECT_EQ(rock.line(16), quartz);
        EXPECT_EQ(rock.line(18), "H");
    }
}

TEST(RockZones, CompressibilitiesAreCutButNotInvented) {
    RockFile rock(3);
    rock.set_line(rock::Compress, "Compress  1E-9      2E-9      3E-9");
    EXPECT_TRUE(rock.has_compressibilities());
    rock.set_zones(2);
    EXPECT_EQ(rock.line(rock::Compress), "Compress  1E-9      2E-9");
    rock.set_zones(3);
    EXPECT_EQ(rock.line(rock::Compress), "Compress  1E-9      2E-9");
}

TEST(RockZones, OneToFifteenAreTaken) {
    EXPECT_THROW(RockFile(0), base::RangeFailure);
    EXPECT_THROW(RockFile(16), base::RangeFailure);
    EXPECT_THROW(RockFile().field(rock::Por, 0), base::RangeFailure);
}

TEST(RockZones, CountOfAModelWithoutRockFileIsFifteen) {
    SettingsModel model;
    EXPECT_EQ(PropertyZonesCount(model.files), 15);
    RockFile(4).save(model.files);
    EXPECT_EQ(PropertyZonesCount(model.files), 4);
}

} // namespace
} // namespace sim

#include "sim/reinjection.h"

#include "base/binaryio.h"
#include "core/modelflags.h"
#include "support/failureof.h"

#include <gtest/gtest.h>

namespace sim {
namespace {

ReinjectionTable two_wells() {
    return {2, {{-0.05F, {1, 2}}, {0.05F, {3, 4}}}};
}

std::string count_only(std::int32_t count) {
    base::ByteWriter writer;
    writer.int32(count);
    return writer.data();
}

std::string failure_of(std::string_view bytes) {
    return support::failure_of([&] { ReinjectionTable::read(bytes, "m.sco"); }, "m.sco");
}

TEST(ReinjectionTable, SpeciesPlusOneThenRowsOfSingles) {
    base::ByteWriter expected;
    expected.int32(3);
    for (const float value : {-0.05F, 1.F, 2.F, 0.05F, 3.F, 4.F})
        expected.single(value);
    EXPECT_EQ(two_wells().bytes(), expected.data());
    const ReinjectionTable read = ReinjectionTable::read(expected.data(), "m.sco");
    EXPECT_EQ(read.species, 2);
    EXPECT_EQ(read.bytes(), expected.data());
}

TEST(ReinjectionTable, CutOffFilesReadZeroAtEveryLength) {
    const std::string bytes = two_wells().bytes();
    for (std::size_t size = 4; size <= bytes.size(); ++size) {
        const ReinjectionTable table =
            ReinjectionTable::read(std::string_view(bytes).substr(0, size), "m.sco");
        EXPECT_EQ(table.species, 2);
        EXPECT_EQ(table.concentration(1, 2), size < 16 ? 0 : 2);
        EXPECT_EQ(table.concentration(2, 2), size < 28 ? 0 : 4);
    }
    EXPECT_EQ(failure_of("abc"),
              "ends at byte 3, where the number of species plus one was expected");
}

TEST(ReinjectionTable, WhatIsNotThereIsZero) {
    const ReinjectionTable table = two_wells();
    EXPECT_EQ(table.concentration(3, 1), 0);
    EXPECT_EQ(table.concentration(1, 3), 0);
    EXPECT_EQ(table.concentration(0, 1), 0);
}

TEST(ReinjectionTable, HostileCountsAreRefused) {
    for (const std::int32_t count : {0, -1, 102, 2147483647, -2147483647})
        EXPECT_EQ(failure_of(count_only(count)),
                  "byte 0 holds " + std::to_string(count) +
                      ", where the number of species plus one (1 to 101) was expected");
    EXPECT_EQ(failure_of(count_only(101)), "");
}

TEST(ReinjectionTable, HundredWellsAreRead) {
    const ReinjectionTable table =
        ReinjectionTable::read(count_only(1) + std::string(4000, '\0'), "m.sco");
    EXPECT_EQ(table.rows.size(), 100U);
}

TEST(ReinjectionTable, ExtensionFollowsTheChemistryModel) {
    core::ModelFlags flags;
    std::string extensions;
    for (int model = 0; model <= 5; ++model) {
        flags.set(9, 12, model);
        extensions += reinjection_extension(flags);
    }
    EXPECT_EQ(extensions, ".sco.dhs.sco.dhs.sco.sco");
}

} // namespace
} // namespace sim

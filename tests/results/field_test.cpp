#include "results/field.h"

#include "base/failure.h"
#include "support/failureof.h"
#include "support/scripteduser.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

namespace {

using results::FieldOrder;
using results::RepeatCount;
using results::StreamGrid;
using results::StreamReader;
using support::failure_of;

class Fields : public testing::Test {
protected:
    StreamReader open(std::string_view bytes) const {
        return StreamReader(folder_.write("m.nlo", bytes));
    }
    results::Field read(std::string_view bytes, const StreamGrid& grid, FieldOrder order,
                        const results::RowConversion& convert = {}) {
        StreamReader stream = open(bytes);
        return results::read_field(stream, grid, order, RepeatCount::rounded_32, "# TEMP", convert,
                                   user_);
    }
    std::vector<float> axis(std::string_view bytes, int count, bool downward) const {
        StreamReader stream = open(bytes);
        return results::ReadVektorElements(stream, count, downward, "# DELZ");
    }
    std::optional<StreamGrid> grid(std::string_view bytes) {
        StreamReader stream = open(bytes);
        return results::read_stream_grid(stream, user_);
    }

    support::TempFolder folder_;
    support::ScriptedUser user_;
};

// Cells by layer, row, column, column fastest.
std::vector<float> cells(const results::Field& field) {
    std::vector<float> all;
    for (int layer = 1; layer <= field.nK(); ++layer) {
        for (int row = 1; row <= field.nJ(); ++row) {
            for (int column = 1; column <= field.nI(); ++column) {
                all.push_back(field.at(layer, row, column));
            }
        }
    }
    return all;
}

} // namespace

TEST_F(Fields, the_same_values_land_by_the_order_that_the_consumer_wants) {
    const StreamGrid grid{3, 2, 2};
    const std::string bytes = "1 2 3 4 5 6\r\n7,8,9\t10 11 12\n";
    EXPECT_EQ(cells(read(bytes, grid, FieldOrder::stream)),
              (std::vector<float>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}));
    EXPECT_EQ(cells(read(bytes, grid, FieldOrder::viewer)),
              (std::vector<float>{7, 8, 9, 10, 11, 12, 1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(cells(read(bytes, grid, FieldOrder::worksheet)),
              (std::vector<float>{10, 11, 12, 7, 8, 9, 4, 5, 6, 1, 2, 3}));
    EXPECT_EQ(user_.meter(), (std::vector<int>{50, 100, 50, 100, 50, 100}));
}

TEST_F(Fields, runs_cross_rows_and_layers_and_each_of_their_cells_is_converted) {
    const auto doubled = [](std::span<float> row) {
        for (float& value : row) {
            value *= 2;
        }
    };
    EXPECT_EQ(cells(read("5*1 2*4 9*3\n", {2, 2, 2}, FieldOrder::viewer, doubled)),
              (std::vector<float>{2, 8, 8, 6, 2, 2, 2, 2}));
    EXPECT_EQ(cells(read("8*1\n", {2, 2, 2}, FieldOrder::stream)), std::vector<float>(8, 1));
}

TEST_F(Fields, dimensions_that_the_block_does_not_fill_fail_before_memory_is_taken) {
    const std::string expected = "ends at byte 10, where value 9 of # TEMP was expected";
    for (const StreamGrid& grid : {StreamGrid{3, 1, 3}, StreamGrid{32767, 32767, 2}}) {
        EXPECT_EQ(failure_of([&] { read("7*1\r\n2.5\r\n", grid, FieldOrder::viewer); }), expected);
    }
    EXPECT_EQ(cells(read("100000*1\n", {1000, 10, 10}, FieldOrder::viewer)).size(), 100'000U);
}

TEST_F(Fields, a_file_that_grows_between_two_fields_gives_no_second_one) {
    const std::string bytes = "# TEMP\n4*1\n# PRES\n4*2\n";
    StreamReader stream = open(bytes);
    const auto field = [&](std::string_view key) {
        EXPECT_TRUE(stream.find_prefix(key));
        return results::read_field(stream, {2, 2, 1}, FieldOrder::viewer, RepeatCount::strict_32,
                                   key, {}, user_);
    };
    EXPECT_EQ(cells(field("# TEMP")), std::vector<float>(4, 1));
    folder_.write("m.nlo", bytes + "# POR\n");
    EXPECT_EQ(failure_of([&] { field("# PRES"); }), "has become longer while it was read");
}

TEST_F(Fields, cell_sizes_fill_an_axis_upward_or_downward) {
    EXPECT_EQ(axis("1 3*2 5\n", 5, false), (std::vector<float>{1, 2, 2, 2, 5}));
    EXPECT_EQ(axis("1 3*2 5\n", 5, true), (std::vector<float>{5, 2, 2, 2, 1}));
    EXPECT_EQ(failure_of([&] { axis("1 4*2 \n", 4, true); }),
              "byte 6: a run of # DELZ goes 1 values beyond the 4 of the axis");
    EXPECT_EQ(failure_of([&] { axis("40000*2 \n", 40000, true); }),
              "byte 0: the repeat count of value 1 of # DELZ is \"40000\", where at most 32767 was "
              "expected");
    EXPECT_EQ(failure_of([&] { axis("2*2 \n", 2'000'000'000, true); }),
              "ends at byte 5, where value 3 of # DELZ was expected");
}

TEST_F(Fields, the_grid_comes_from_three_counts_in_their_order) {
    EXPECT_EQ(grid("# I0\n       3 \n# J0\n 4\n# K0\n5x\n"), (StreamGrid{3, 4, 5}));
    const auto missing = [&](const std::string& word) {
        user_.expect_message("Tervex Desk",
                             "Error in file format. Can't find choosen parameter " + word);
        user_.expect_message("Tervex Desk", "Error in input file structure: Can't find " + word);
    };
    missing("# K0");
    EXPECT_EQ(grid("# K0\n5\n# I0\n3\n# J0\n4\n"), std::nullopt);
    EXPECT_EQ(failure_of([&] { grid("# I0\n3\n# J0\n0\n"); }),
              "# J0 is 0, where 1 or more was expected");
    EXPECT_EQ(failure_of([&] { grid("# I0\n99999\n# J0\n99999\n"); }),
              "# J0 is 99999, with which the grid has more than 2147483647 cells");
}

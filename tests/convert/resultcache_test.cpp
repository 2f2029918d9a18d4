#include "convert/resultcache.h"

#include "base/binaryio.h"
#include "base/failure.h"
#include "base/textfile.h"
#include "convert/convertbinary.h"
#include "core/project.h"
#include "results/smallstream.h"
#include "support/scripteduser.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>

namespace {

namespace fs = std::filesystem;
using convert::CachedFields;
using results::Field;
using results::FieldOrder;
using results::StreamGrid;

constexpr StreamGrid small_grid{smallstream::I0, smallstream::J0, smallstream::K0};
constexpr std::size_t cells = 24;

// A field in the viewer's order whose values tell their cells.
Field numbered_field(const StreamGrid& grid) {
    Field field(grid);
    for (int layer = 1; layer <= grid.K0; ++layer) {
        for (int row = 1; row <= grid.J0; ++row) {
            for (int column = 1; column <= grid.I0; ++column) {
                field.at(layer, row, column) =
                    static_cast<float>((layer * 200 + row) * 200 + column);
            }
        }
    }
    return field;
}

class ResultCache : public testing::Test {
protected:
    ResultCache() {
        using smallstream::own_cells;
        folder.write("m.nlo", smallstream::head("3 2 0") +
                                  smallstream::block("# PRES", [](double cell) { return -cell; }) +
                                  own_cells("# VX") + own_cells("# TEMP") +
                                  own_cells("# CONC           1") +
                                  own_cells("# CONC           3"));
    }

    void convert(const std::set<int>& numbers) {
        const auto project = core::Project::read(
            "[VERSION]\r\nNUMBER=5000\r\n[DIMENSION]\r\nNX=2\r\nNY=3\r\nNZ=4\r\n");
        EXPECT_FALSE(convert::ConvertBinary(project, nlo, numbers, user));
    }
    std::vector<float> singles(std::size_t from, std::size_t count) const {
        const std::string bytes = folder.read("m.rvb").substr(from, count * 4);
        std::vector<float> values(count);
        base::bytes_to_singles(bytes, values);
        return values;
    }
    std::optional<Field> viewer_field(const results::Parameter& parameter) {
        const results::ResultFile result{nlo, core::ModelFiles(nlo, core::Access::read)};
        return CachedFields().read(result, small_grid, parameter, FieldOrder::viewer, user);
    }
    void set_age(const char* name, int seconds) const {
        fs::last_write_time(folder.path() / name,
                            fs::file_time_type::clock::now() - std::chrono::seconds(seconds));
    }

    support::TempFolder folder;
    fs::path nlo = folder.path() / "m.nlo";
    support::ScriptedUser user;
    const results::Parameter temperature =
        results::parameter_of(results::fixed_parameters().front());
};

TEST_F(ResultCache, slots_follow_the_order_of_conversion_with_the_layer_fastest) {
    convert({7});
    convert({1, 2});
    EXPECT_EQ(folder.read("m.rvb").size(), 1000 + 3 * cells * 4);
    EXPECT_EQ(singles(0, 4), (std::vector<float>{7, 1, 2, 0}));
    EXPECT_EQ(folder.read("m.rvb").substr(400, 600), std::string(600, '\0'));
    // Layer 1 is the top one, K = 4; row 1 is the southern one.
    EXPECT_EQ(singles(1000 + cells * 4, 6), (std::vector<float>{411, 311, 211, 111, 421, 321}));
    EXPECT_EQ(singles(1000 + cells * 4 + 12 * 4, 2), (std::vector<float>{412, 312}));
    EXPECT_EQ(singles(1000, 1)[0], 411 * 86400.0F);
    EXPECT_EQ(singles(1000 + 2 * cells * 4, 1)[0], 411);
    EXPECT_EQ(user.statuses()[1], "Converting Temperature Data, please wait ...");
    EXPECT_EQ(user.statuses()[2], "Converting Pressure Data, please wait ...");
    const std::string before = folder.read("m.rvb");
    convert({1});
    EXPECT_EQ(folder.read("m.rvb"), before);
}

TEST_F(ResultCache, fields_of_any_shape_come_back_in_both_orders) {
    for (const StreamGrid& grid : {StreamGrid{1, 1, 1}, StreamGrid{150, 3, 37},
                                   StreamGrid{33, 180, 120}, StreamGrid{20, 2, 30'000}}) {
        const fs::path file = folder.write("c.rvb", "");
        core::RandomFile cache(file, core::RandomFile::Mode::update, file);
        const Field field = numbered_field(grid);
        convert::SaveArray(3, Field(grid), cache);
        convert::SaveArray(5, field, cache);
        const auto viewer = convert::read_slot(5, cache, grid, FieldOrder::viewer, user),
                   stream = convert::read_slot(5, cache, grid, FieldOrder::stream, user);
        ASSERT_TRUE(viewer && stream);
        for (int layer = 1; layer <= grid.K0; ++layer) {
            for (int row = 1; row <= grid.J0; ++row) {
                ASSERT_TRUE(std::ranges::equal(viewer->row(layer, row), field.row(layer, row)));
                ASSERT_TRUE(std::ranges::equal(stream->row(grid.K0 + 1 - layer, row),
                                               field.row(layer, row)));
            }
        }
        EXPECT_FALSE(convert::read_slot(4, cache, grid, FieldOrder::viewer, user));
    }
}

TEST_F(ResultCache, a_slot_of_several_blocks_that_cannot_be_written_is_a_failure) {
    const StreamGrid grid{33, 180, 120};
    const fs::path file = folder.write("c.rvb", std::string(1000 + 4 * grid.cells(), '\0'));
    core::RandomFile cache(file, core::RandomFile::Mode::read, file);
    EXPECT_THROW(convert::SaveArray(3, numbered_field(grid), cache), base::FileFailure);
    EXPECT_EQ(folder.read("c.rvb"), std::string(1000 + 4 * grid.cells(), '\0'));
}

TEST_F(ResultCache, a_block_that_is_not_there_leaves_what_was_converted_before) {
    user.expect_failure("has no block \"# POR\"", base::Reaction::next);
    convert({1, 3, 7});
    EXPECT_EQ(singles(0, 2), (std::vector<float>{1, 0}));
    EXPECT_EQ(singles(1000, 1)[0], 411);
}

TEST_F(ResultCache, a_full_or_damaged_directory_fails_and_stays) {
    std::vector<float> numbers(100);
    for (std::size_t n = 0; n < numbers.size(); ++n) {
        numbers[n] = static_cast<float>(n + 10);
    }
    std::string bytes(400, '\0');
    base::singles_to_bytes(numbers, bytes);
    for (const std::string& cache : {bytes, bytes.substr(0, 399)}) {
        folder.write("m.rvb", cache);
        EXPECT_THROW(convert({1}), base::FileFailure);
        EXPECT_EQ(folder.read("m.rvb"), cache);
    }
    EXPECT_EQ(folder.names(), (std::vector<std::string>{"m.nlo", "m.rvb"}));
}

TEST_F(ResultCache, the_number_of_a_concentration_is_the_last_character_of_its_name) {
    EXPECT_EQ(convert::cached_number("TEMP", ""), 1);
    EXPECT_EQ(convert::cached_number("VZ", ""), 9);
    EXPECT_EQ(convert::cached_number("CONC", "Tracer 3"), 12);
    EXPECT_EQ(convert::cached_number("CONC", "Tracer 12"), 11);
    EXPECT_EQ(convert::cached_number("CONC", "CA"), 9);
    EXPECT_EQ(convert::cached_number("CONCM", "Calcite 1"), 0);
}

TEST_F(ResultCache, only_a_block_under_its_own_number_comes_from_the_cache) {
    convert({1, 9 + 1, 9 + 3});
    const auto shown = [&](int block, const char* name, int components) {
        results::StreamNames names{3, components, 0, {{block, name}}, {}};
        return viewer_field(results::species_parameter(block, names)).has_value();
    };
    EXPECT_TRUE(viewer_field(temperature));
    EXPECT_TRUE(shown(1, "Tracer 1", 0));
    EXPECT_FALSE(shown(1, "PH", 2));
    EXPECT_FALSE(shown(3, "Tracer 1", 2)); // 10, which is block 1
    EXPECT_FALSE(shown(2, "Tracer 2", 0)); // not converted
    EXPECT_FALSE(viewer_field(results::other_parameter("CONC")));
}

TEST_F(ResultCache, an_older_cache_is_told_and_not_used) {
    convert({1});
    set_age("m.nlo", 20);
    set_age("m.rvb", 20);
    fs::last_write_time(folder.path() / "m.rvb", fs::last_write_time(nlo));
    EXPECT_TRUE(viewer_field(temperature));
    set_age("m.rvb", 30);
    user.expect_message(
        "Convert Data to Binary",
        "The binary result file *.rvb is older than the TERVEX *.nlo result.\n\r"
        "You should update the binary result file in Tools|Convert Data to Binary.\n\r"
        "Data for the Result Viewer are now taken from the *.nlo file.");
    EXPECT_FALSE(viewer_field(temperature));
    EXPECT_EQ(user.beeps(), 1);
}

TEST_F(ResultCache, a_cache_is_up_to_date_when_all_its_fields_are) {
    convert({1, 2});
    set_age("m.nlo", 20);
    set_age("m.rvb", 30);
    convert({2});
    EXPECT_LT(fs::last_write_time(folder.path() / "m.rvb"), fs::last_write_time(nlo));
    convert({1, 2});
    EXPECT_GT(fs::last_write_time(folder.path() / "m.rvb"), fs::last_write_time(nlo));
}

TEST_F(ResultCache, a_cache_that_is_too_short_is_not_used) {
    convert({1});
    fs::resize_file(folder.path() / "m.rvb", 1000 + cells * 4 - 1);
    EXPECT_FALSE(viewer_field(temperature));
    convert({2}); // the field in front of it is not made up by that
    EXPECT_LT(fs::last_write_time(folder.path() / "m.rvb"), fs::last_write_time(nlo));
}

} // namespace

#include "core/extensions.h"

#include "base/failure.h"
#include "base/textfile.h"

#include <gtest/gtest.h>

#include <map>
#include <vector>

namespace {

using core::file_ext;

TEST(Extensions, rows_of_the_catalogue) {
    const std::map<int, std::string> rows = {
        {1, ".x"},      {3, ".top"},     {40, ".tic"},    {42, ""},        {44, ""},
        {53, ".tal"},   {63, ".63"},     {69, ".69"},     {83, "._83"},    {98, ""},
        {100, ""},      {103, ".toz"},   {113, ""},       {125, ".s1z"},   {150, ".m10"},
        {163, ".163"},  {199, ".tmp"},   {200, ".{t}"},   {201, ".201"},   {300, ".300"},
        {400, ".400"},  {1000, ".1000"}, {1101, ".1101"}, {1400, ".1400"}, {1401, ".per"},
        {1405, ".hbo"}, {1411, ".1m"},   {1430, ".20m"},  {1438, ""},      {1441, ".tc1"},
        {1445, ".tc5"}, {1446, ""},      {1505, ".hbz"},  {1511, ".1z"},   {1530, ".20z"},
        {1537, ".qbz"}, {1545, ".tz5"},  {2000, ""},
    };
    for (const auto& [number, extension] : rows) {
        EXPECT_EQ(file_ext(number), extension) << number;
    }
}

TEST(Extensions, every_row_is_lower_case_and_names_one_parameter_only) {
    std::map<std::string, int> owners;
    for (int number = 1; number <= core::parameter_count; ++number) {
        const std::string& extension = file_ext(number);
        if (extension.empty()) {
            continue;
        }
        EXPECT_EQ(extension, base::lower(extension));
        EXPECT_TRUE(extension.starts_with(".") && extension.size() >= 2) << number;
        const auto [owner, is_new] = owners.emplace(extension, number);
        EXPECT_TRUE(is_new) << extension << " of " << number << " and " << owner->second;
    }
    // 123 basic rows, 17 parameters of the simulator, 7 + 6 * 100 rows of digits, 20 species and 5
    // tracers; all but the basic rows with their zones.
    EXPECT_EQ(owners.size(), 123u + 2 * (17 + 7 + 600 + 20 + 5));
}

TEST(Extensions, a_number_outside_the_catalogue_is_a_range_failure) {
    for (const int number : {-1, 0, 2001}) {
        EXPECT_THROW(file_ext(number), base::RangeFailure);
    }
}

TEST(Extensions, primary_and_single_layer_numbers_at_the_ends_of_their_ranges) {
    const auto switches = [](bool (*holds)(int)) {
        std::vector<int> numbers;
        for (int number = 1; number <= core::parameter_count; ++number) {
            if (holds(number) != holds(number - 1)) {
                numbers.push_back(number);
            }
        }
        return numbers;
    };
    EXPECT_EQ(switches(core::is_primary), (std::vector{1, 101, 201, 301, 401, 501, 601, 701, 801,
                                                       901, 1001, 1101, 1201, 1301, 1401, 1501}));
    EXPECT_EQ(switches(core::is_2D_array),
              (std::vector{17, 21, 23, 25, 46, 47, 48, 49, 85, 90, 231, 291}));
}

TEST(Extensions, zone_operations_turn_primary_numbers_up_to_1100) {
    EXPECT_EQ(core::zone_number(6), 106);
    EXPECT_EQ(core::zone_number(1100), 1200);
    EXPECT_EQ(core::zone_number(106), 106);
    EXPECT_EQ(core::zone_number(1502), 1502);
    EXPECT_THROW(core::zone_number(1201), base::RangeFailure);
    EXPECT_THROW(core::zone_number(1402), base::RangeFailure);
}

TEST(Extensions, defaults_are_those_of_the_menu) {
    EXPECT_EQ(core::parameter_default(1401), 1E-12F);
    EXPECT_EQ(core::parameter_default(1435), -2);
    EXPECT_EQ(core::parameter_default(6), 0.25F);
    EXPECT_EQ(core::parameter_default(51), 1E-6F);
    EXPECT_EQ(core::parameter_default(63), 0);
    EXPECT_EQ(core::parameter_default(1411), 0);
}

} // namespace

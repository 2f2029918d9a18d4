#include "base/numbertext.h"

#include <gtest/gtest.h>

namespace {
using namespace base;

TEST(Masked, exponent_masks_scale_to_the_places_before_the_point) {
    EXPECT_EQ(masked(1E-5, "0.000E+00"), "1.000E-05");
    EXPECT_EQ(masked(0, "0.00E+00"), "0.00E+00");
    EXPECT_EQ(masked(9.9996, "0.000E+00"), "1.000E+01");
    EXPECT_EQ(masked(-1.5, "0.000E+00"), "-1.500E+00");
    EXPECT_EQ(masked(12345, "00.0E+00"), "12.3E+03");
    EXPECT_EQ(masked(1E-300, "0.0E+00"), "1.0E-300");
    EXPECT_EQ(masked(150, "0.0E-00"), "1.5E02");
}

TEST(Masked, a_leading_plus_shows_the_sign_always) {
    EXPECT_EQ(masked(-1.5, "+0.000E+00"), "-1.500E+00");
    EXPECT_EQ(masked(1.5, "+0.000E+00"), "+1.500E+00");
    EXPECT_EQ(masked(0, "+0.000E+00"), "+0.000E+00");
}

TEST(Masked, optional_places_show_only_digits_that_are_there) {
    EXPECT_EQ(masked(0.5, "##0.0##"), "0.5");
    EXPECT_EQ(masked(12.34567, "##0.0##"), "12.346");
    EXPECT_EQ(masked(3, "##0.0##"), "3.0");
    EXPECT_EQ(masked(123456, "##0.0##"), "123456.0");
    EXPECT_EQ(masked(7, "0000"), "0007");
    EXPECT_EQ(masked(12345, "0000"), "12345");
    EXPECT_EQ(masked(-0.25, "#.##"), "-.25");
}

TEST(Masked, times_show_up_to_five_digits_and_a_bare_exponent) {
    constexpr const char* mask = " #.#####E+###";
    EXPECT_EQ(masked(10, mask), " 1.E+1");
    EXPECT_EQ(masked(0, mask), " 0.E+0");
    EXPECT_EQ(masked(31557600, mask), " 3.15576E+7");
    EXPECT_EQ(masked(0.0015, mask), " 1.5E-3");
}

TEST(Masked, halves_go_away_from_zero_on_the_decimal_digits) {
    EXPECT_EQ(masked(0.125, "0.00"), "0.13");
    EXPECT_EQ(masked(-0.125, "0.00"), "-0.13");
    EXPECT_EQ(masked(1.0005, "0.000"), "1.001"); // below the half in binary
    EXPECT_EQ(masked(0.5, "0"), "1");
    EXPECT_EQ(masked(99.96, "0.0"), "100.0");
}

TEST(Masked, what_rounds_to_zero_has_no_minus) {
    EXPECT_EQ(masked(-0.0001, "0.00"), "0.00");
    EXPECT_EQ(masked(-1E-30, "##0.0##"), "0.0");
}

TEST(Columns, are_filled_from_the_right) {
    EXPECT_EQ(right_aligned("ab", 4), "  ab");
    EXPECT_EQ(right_aligned("K\xC3\xB6ln", 5), " K\xC3\xB6ln");
    EXPECT_EQ(column_integer(-1, 3), " -1");
    EXPECT_EQ(column_integer(12345, 4), "12345");
    EXPECT_EQ(column_real(0.5F, 14), "            .5");
    EXPECT_EQ(column_real(-1.234567E-10F, 14), " -1.234567E-10");
}

TEST(Columns, a_real_without_room_takes_the_scientific_form) {
    EXPECT_EQ(column_real(123456.789012345, 14), "1.2345679E+05 ");
    EXPECT_EQ(column_real(-123456.789012345, 14), "-1.234568E+05 ");
    EXPECT_EQ(column_real(1234567890123.0, 14), " 1234567890123");
    EXPECT_EQ(column_real(12345678901234.0, 14), "1.2345679E+13 ");
}

TEST(PrintLine, zones_begin_every_fourteen_columns) {
    EXPECT_EQ(PrintLine().add("100").zone().add(" 2 ").text(), "100            2 ");
    EXPECT_EQ(PrintLine().zone().add("x").text(), "x");
    EXPECT_EQ(PrintLine().add("12345678901234").zone().add("x").text(), "12345678901234x");
    EXPECT_EQ(PrintLine().add("123456789012345").zone().add("x").text(),
              "123456789012345" + std::string(13, ' ') + "x");
}

TEST(PrintLine, a_passed_column_is_reached_on_a_new_line) {
    EXPECT_EQ(PrintLine().add("ab").tab(5).add("c").text(), "ab  c");
    EXPECT_EQ(PrintLine().add("abcd").tab(5).add("e").text(), "abcde");
    EXPECT_EQ(PrintLine().add("abcde").tab(5).add("f").text(), "abcde\r\n    f");
    EXPECT_EQ(PrintLine().add("abcde").tab(3).add("f").zone().add("g").text(),
              "abcde\r\n  f           g");
    EXPECT_EQ(PrintLine().add("\xC3\xBC").tab(3).add("x").text(), "\xC3\xBC x");
}

} // namespace

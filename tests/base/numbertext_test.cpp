#include "base/numbertext.h"

#include <gtest/gtest.h>

#include <limits>

namespace {
using namespace base;

constexpr float inf = std::numeric_limits<float>::infinity();
constexpr float nan = std::numeric_limits<float>::quiet_NaN();

TEST(ValueText, a_single_shows_seven_digits_and_a_double_fifteen) {
    EXPECT_EQ(value_text(1.0F / 3), "0.3333333");
    EXPECT_EQ(value_text(1.0 / 3), "0.333333333333333");
    EXPECT_EQ(value_text(0.1F + 0.2F), "0.3");
    EXPECT_EQ(value_text(31536000.0), "31536000");
    EXPECT_EQ(value_text(31557600.0 * 3.5), "110451600");
}

TEST(ValueText, is_plain_up_to_seven_digits_behind_the_point) {
    EXPECT_EQ(value_text(0.0015F), "0.0015");
    EXPECT_EQ(value_text(1E-7F), "0.0000001");
    EXPECT_EQ(value_text(1.5E-7F), "1.5E-07");
    EXPECT_EQ(value_text(0.01234567F), "1.234567E-02");
    EXPECT_EQ(value_text(1.5E-10F), "1.5E-10");
}

TEST(ValueText, is_plain_below_eight_digits_before_the_point) {
    EXPECT_EQ(value_text(9999999.0F), "9999999");
    EXPECT_EQ(value_text(1E7F), "1E+07");
    EXPECT_EQ(value_text(-1E30F), "-1E+30");
    EXPECT_EQ(value_text(123456789012345.0), "123456789012345");
    EXPECT_EQ(value_text(1E15), "1E+15");
    EXPECT_EQ(value_text(1E-300), "1E-300");
}

TEST(ValueText, of_a_damaged_value_is_a_number_all_the_same) {
    EXPECT_EQ(value_text(-0.0F), "0");
    EXPECT_EQ(value_text(nan), "0");
    EXPECT_EQ(value_text(inf), "3.402823E+38");
    EXPECT_EQ(value_text(-double{inf}), "-1.79769313486232E+308");
    EXPECT_EQ(value_text(1E-45F), "1.401298E-45");
}

TEST(BareText, has_no_zero_before_the_point) {
    EXPECT_EQ(bare_text(0.1F), ".1");
    EXPECT_EQ(bare_text(-0.5), "-.5");
    EXPECT_EQ(bare_text(0.0F), "0");
    EXPECT_EQ(bare_text(-999.99F), "-999.99");
    EXPECT_EQ(bare_text(10.5F), "10.5");
}

TEST(Printed, leads_with_a_blank_or_the_minus_and_closes_with_a_blank) {
    EXPECT_EQ(printed(0.5F), " .5 ");
    EXPECT_EQ(printed(-3.0), "-3 ");
    EXPECT_EQ(printed(0.0F), " 0 ");
    EXPECT_EQ(printed(30), " 30 ");
    EXPECT_EQ(printed(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808 ");
}

TEST(ExactText, takes_the_digits_that_reading_back_needs) {
    EXPECT_EQ(exact_text(0.1F), "0.1");
    EXPECT_EQ(exact_text(16777216.0F), "1.6777216E+07");
    EXPECT_EQ(exact_text(0.1 + 0.2), "3.0000000000000004E-01");
    EXPECT_EQ(exact_text(1.0F / 3), "3.3333334E-01");
    EXPECT_EQ(exact_text(0.25), "0.25");
}

TEST(LeadingNumber, takes_the_longest_numeric_prefix) {
    EXPECT_EQ(leading_number(" \t-12.5m"), -12.5);
    EXPECT_EQ(leading_number("+.5"), 0.5);
    EXPECT_EQ(leading_number("12."), 12);
    EXPECT_EQ(leading_number("1 000"), 1);
    EXPECT_EQ(leading_number("3,5"), 3);
    EXPECT_EQ(leading_number("1.2.3"), 1.2);
}

TEST(LeadingNumber, takes_exponents_with_E_and_with_D) {
    EXPECT_EQ(leading_number("1E-3"), 1E-3);
    EXPECT_EQ(leading_number("2.5d+3x"), 2500);
    EXPECT_EQ(leading_number("1D-3"), 1E-3);
    EXPECT_EQ(leading_number("1E"), 1);
    EXPECT_EQ(leading_number("7D-"), 7);
    EXPECT_EQ(leading_number("1E2D3"), 100);
}

TEST(LeadingNumber, is_zero_where_no_number_begins) {
    for (const char* text : {"", " ", "abc", "-", "+-5", "- 5", ".", ".E5", "inf", "nan", "-inf"})
        EXPECT_EQ(leading_number(text), 0) << text;
    EXPECT_EQ(leading_number("0x10"), 0);
}

TEST(LeadingNumber, stays_inside_the_range_of_a_double) {
    constexpr double largest = std::numeric_limits<double>::max();
    EXPECT_EQ(leading_number("1E999"), largest);
    EXPECT_EQ(leading_number("-1D99999999999999999999"), -largest);
    EXPECT_EQ(leading_number("1E-999"), 0);
    EXPECT_EQ(leading_number("1E-99999999999999999999"), 0);
    EXPECT_EQ(leading_number("0E999"), 0);
    EXPECT_EQ(leading_number(std::string(400, '9')), largest);
    EXPECT_EQ(leading_number("0." + std::string(400, '0') + "1"), 0);
    EXPECT_EQ(leading_number("0." + std::string(400, '0') + "1E401"), 1);
}

TEST(LeadingNumber, is_clamped_to_the_narrower_type) {
    EXPECT_EQ(leading_single("1E39"), std::numeric_limits<float>::max());
    EXPECT_EQ(leading_single("-1E39"), std::numeric_limits<float>::lowest());
    EXPECT_EQ(leading_single("0.1"), 0.1F);
    EXPECT_EQ(leading_int16("40000"), 32767);
    EXPECT_EQ(leading_int16("-1E9"), -32768);
    EXPECT_EQ(leading_int32("2147483648"), 2147483647);
    EXPECT_EQ(leading_int16("2.5"), 2);
    EXPECT_EQ(leading_int16("3.5"), 4);
}

TEST(WholeNumber, has_nothing_behind_it) {
    EXPECT_EQ(whole_number("-1.5D2"), -150);
    EXPECT_EQ(whole_number("+2"), 2);
    for (const char* text : {"", "1x", " 1", "1 ", "x", "1E999", "nan"})
        EXPECT_EQ(whole_number(text), std::nullopt) << text;
    EXPECT_EQ(whole_integer("-12"), -12);
    EXPECT_EQ(whole_integer("+12"), 12);
    for (const char* text : {"", "1.0", "+-1", "+", "9223372036854775808"})
        EXPECT_EQ(whole_integer(text), std::nullopt) << text;
}

TEST(FormatPrint, puts_a_point_into_every_real) {
    EXPECT_EQ(Format_Print(0.25F, 12), "12*0.25 ");
    EXPECT_EQ(Format_Print(1E-12F, 1), "1.E-12 ");
    EXPECT_EQ(Format_Print(1.5E-10F, 2), "2*1.5E-10 ");
    EXPECT_EQ(Format_Print(-5.0F, 1), "-5. ");
    EXPECT_EQ(Format_Print(-0.0F, 48000), "48000*0. ");
    EXPECT_EQ(pointed_text(1E8F), "1.E+08");
}

TEST(FormatPrint, of_a_zone_number_has_no_point) {
    EXPECT_EQ(Format_Print_zone(3, 1), "3 ");
    EXPECT_EQ(Format_Print_zone(3, 12), "12*3 ");
}

TEST(FormatPrint, takes_a_complete_text_as_it_stands) {
    EXPECT_EQ(run_item("1.0", 3), "3*1.0 ");
    EXPECT_EQ(run_item(" 0.5 ", 1), "0.5 ");
    EXPECT_EQ(with_point("1E-12"), "1.E-12");
    EXPECT_EQ(with_point("750"), "750.");
    EXPECT_EQ(with_point(".5"), ".5");
}

} // namespace

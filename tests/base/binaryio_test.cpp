#include "base/binaryio.h"

#include "support/failureof.h"

#include <gtest/gtest.h>

#include <array>

namespace {
using namespace base;
using namespace std::string_literals;

TEST(ByteWriter, puts_the_low_byte_first) {
    ByteWriter out;
    out.int16(-2);
    out.int32(0x01020304);
    out.single(1.0F);
    out.zeros(2);
    EXPECT_EQ(out.data(), "\xFE\xFF\x04\x03\x02\x01\x00\x00\x80\x3F\x00\x00"s);
}

TEST(ByteWriter, cuts_or_fills_a_fixed_text) {
    ByteWriter out;
    out.fixed_text("Brühl", 8);
    out.fixed_text("a name too long", 8);
    EXPECT_EQ(out.data(), "Br\xFChl   a name t");
}

TEST(ByteReader, reads_what_was_written) {
    ByteWriter out;
    out.int16(-12345);
    out.int32(-1234567890);
    out.single(-1.5E-10F);
    out.fixed_text("Süd", 8);
    ByteReader in(out.data(), "m.pol");
    EXPECT_EQ(in.int16("a"), -12345);
    EXPECT_EQ(in.int32("b"), -1234567890);
    EXPECT_EQ(in.single("c"), -1.5E-10F);
    EXPECT_EQ(in.fixed_text(8, "d"), "Süd     ");
    EXPECT_EQ(in.remaining(), 0U);
}

TEST(ByteReader, tells_where_the_file_ends) {
    ByteReader in("abc", "m.wel");
    in.skip(2, "the table");
    const auto beyond = [&] { in.bytes(static_cast<std::size_t>(-1), "the record of period 1"); };
    EXPECT_EQ(support::failure_of(beyond, "m.wel"),
              "ends at byte 3, where the record of period 1 was expected");
    EXPECT_EQ(in.bytes(1, "the rest"), "c");
}

TEST(Singles, lie_in_a_file_with_the_low_byte_first) {
    const std::array<float, 2> values = {1.0F, -0.25F};
    std::array<char, 8> bytes{};
    singles_to_bytes(values, bytes);
    EXPECT_EQ(std::string(bytes.data(), 8), "\x00\x00\x80\x3F\x00\x00\x80\xBE"s);
    std::array<float, 2> back{};
    bytes_to_singles(bytes, back);
    EXPECT_EQ(back, values);
    EXPECT_EQ(int16_at("\x01\x02\xFF\xFF"s, 2), -1);
}

} // namespace

#include "base/textfile.h"

#include "support/failureof.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {
using namespace base;

using support::failure_of;

TEST(ReadBytes, names_what_the_system_says) {
    const support::TempFolder folder;
    const std::filesystem::path none = folder.path() / "none.trn";
    EXPECT_EQ(failure_of([&] { read_bytes(none); }, none),
              "cannot be read: No such file or directory");
    EXPECT_EQ(failure_of([&] { read_bytes(folder.path()); }, folder.path()),
              "cannot be read: Is a directory");
}

TEST(ReadBytes, takes_files_of_any_size_whole) {
    const support::TempFolder folder;
    for (const std::size_t size : {0U, 1U, 4095U, 4096U, 1U << 20U, (3U << 20U) + 7U}) {
        const std::string bytes(size, 'x');
        EXPECT_EQ(read_bytes(folder.write("file", bytes)), bytes) << size;
    }
}

TEST(ReadBytes, does_not_trust_the_size_of_a_special_file) {
    EXPECT_EQ(read_bytes("/dev/null"), "");
    EXPECT_FALSE(read_bytes("/proc/self/status").empty()); // claims no size at all
}

TEST(Ansi, every_byte_survives_a_round_trip) {
    std::string bytes;
    for (int i = 0; i < 256; ++i)
        bytes += static_cast<char>(i);
    EXPECT_EQ(to_ansi(to_utf8(bytes)), bytes);
    EXPECT_EQ(to_utf8("10\xB0"
                      "C \x80"),
              "10°C €");
    EXPECT_EQ(to_ansi("Hückel"), "H\xFC"
                                 "ckel");
}

TEST(Ansi, what_has_no_byte_becomes_a_question_mark) {
    EXPECT_EQ(to_ansi("\xCE\xA9-\xF0\x9F\x98\x80."), "?-?.");
    EXPECT_EQ(to_ansi("a\xFF"
                      "b\xC3"),
              "a?b?");
}

TEST(Lines, end_in_CR_LF_or_LF) {
    using Lines = std::vector<std::string>;
    EXPECT_EQ(text_lines("a\r\n\nb\xE4\n"), (Lines{"a", "", "bä"}));
    EXPECT_EQ(text_lines("a\nlast"), (Lines{"a", "last"}));
    EXPECT_EQ(text_lines(""), Lines{});
    EXPECT_EQ(to_text_file({"ä", ""}), "\xE4\r\n\r\n");
}

TEST(Text, is_trimmed_folded_and_cut_by_characters) {
    EXPECT_EQ(trimmed("\t a b \r\n"), "a b");
    EXPECT_EQ(trimmed(" \t"), "");
    EXPECT_EQ(trimmed_right(" a "), " a");
    EXPECT_EQ(lower("TD1-ÄÞ×ß"), "td1-äþ×ß");
    EXPECT_EQ(upper("nlo äþ÷ß"), "NLO ÄÞ÷ß");
    EXPECT_TRUE(same_ignoring_case("Rückhalt", "RÜCKHALT"));
    EXPECT_FALSE(same_ignoring_case("a", "ab"));
    EXPECT_EQ(character_count("10 °C"), 5U);
    EXPECT_EQ(first_characters("°°°", 2), "°°");
    EXPECT_EQ(first_characters("ab", 9), "ab");
}

TEST(FixedField, counts_characters_and_ends_with_the_line) {
    EXPECT_EQ(fixed_field("°ab12345", 3, 3), "123");
    EXPECT_EQ(fixed_field("abc", 2, 5), "c");
    EXPECT_EQ(fixed_field("abc", 7, 5), "");
}

TEST(NumberReader, takes_numbers_over_line_ends) {
    NumberReader reader(" 1,2\t3.5\r\n\r\n-1D2 x 70000000000", "m.l");
    EXPECT_EQ(reader.next_int("a"), 1);
    EXPECT_EQ(reader.next_single("b"), 2);
    EXPECT_EQ(reader.next("c"), 3.5);
    EXPECT_EQ(reader.next("d"), -100);
    EXPECT_EQ(reader.line(), 3U);
    EXPECT_EQ(reader.next("a word reads as 0"), 0);
    EXPECT_EQ(reader.next_int("a large integer is clamped"), 2147483647);
    EXPECT_EQ(reader.next_if(), std::nullopt);
}

TEST(NumberReader, goes_on_with_the_next_line) {
    NumberReader reader("1 rest of it \r\n2 3\n4", "m.l");
    EXPECT_EQ(reader.next_int("a"), 1);
    EXPECT_EQ(reader.rest_of_line(), "rest of it");
    EXPECT_EQ(reader.next_int("b"), 2);
    reader.skip_line();
    EXPECT_EQ(reader.next_int("c"), 4);
    EXPECT_EQ(reader.rest_of_line(), "");
}

TEST(NumberReader, tells_where_the_file_ends) {
    const auto ended = [](std::string_view text) {
        NumberReader reader(text, "m.xy");
        const auto read_on = [&] {
            while (true)
                reader.next("the width of column 3");
        };
        return failure_of(read_on, "m.xy");
    };
    EXPECT_EQ(ended(""), "ends at line 1, where the width of column 3 was expected");
    EXPECT_EQ(ended("1\n2\n"), "ends at line 2, where the width of column 3 was expected");
    EXPECT_EQ(ended("1\n2\n 3"), "ends at line 3, where the width of column 3 was expected");
}

} // namespace

#include "results/streamreader.h"

#include "base/failure.h"
#include "base/numbertext.h"
#include "base/textfile.h"
#include "input/compact.h"
#include "input/keywordstream.h"
#include "support/failureof.h"
#include "support/scripteduser.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <functional>
#include <random>

namespace {

namespace fs = std::filesystem;
using results::BlockReader;
using results::RepeatCount;
using results::StreamReader;
using support::failure_of;

class Stream : public testing::Test {
protected:
    StreamReader open(std::string_view bytes) const {
        return StreamReader(folder_.write("m.nlo", bytes));
    }
    std::vector<float> values(std::string_view bytes, std::size_t count,
                              RepeatCount repeat = RepeatCount::rounded_32,
                              bool drops_behind_cr = false) const {
        StreamReader stream = open(bytes);
        std::vector<float> read(count);
        BlockReader(stream, repeat, "# TEMP", drops_behind_cr).read(read);
        return read;
    }
    // The byte that the search goes to; nothing without a match.
    std::optional<std::uint64_t> jump(std::string_view bytes, std::string_view word) const {
        StreamReader stream = open(bytes);
        const bool found = stream.JumpToPos(word);
        EXPECT_TRUE(found || stream.at_end());
        return found ? std::optional(stream.position()) : std::nullopt;
    }

    support::TempFolder folder_;
};

// Line by line, as the search is defined.
std::optional<std::size_t> slow_jump(const std::string& bytes, std::size_t at,
                                     std::string_view word) {
    while (at < bytes.size()) {
        const std::size_t end = std::min(bytes.find('\n', at), bytes.size() - 1) + 1;
        const std::string_view line = base::split_lines(std::string_view(bytes).substr(at)).front();
        if (line.starts_with(word) &&
            (base::trimmed(line, " ").size() == word.size() || end == bytes.size())) {
            return end;
        }
        at = end;
    }
    return std::nullopt;
}

} // namespace

TEST_F(Stream, a_search_is_for_the_whole_line) {
    EXPECT_EQ(jump("# CONCM\r\n# CONC           1\r\n# CONC\r\n1 ", "# CONC"), 37);
    EXPECT_EQ(jump("# CONC          11\n# CONC           1  \r\n5\n", "# CONC           1"), 41);
    EXPECT_EQ(jump("x\n # TEMP\n# TEMP kelvin\n# TEMP\t\n# TEM\n1\n", "# TEMP"), std::nullopt);
    EXPECT_EQ(jump("# A\r\r\n# A\r\n1\n", "# A"), 11) << "only one CR belongs to the end of a line";
    EXPECT_EQ(jump("a\nword \nb\n", "word"), 8);
    const std::string blanks(3'000'000, ' ');
    EXPECT_EQ(jump("# A" + blanks + "x\n# A" + blanks + "\r\n1\n", "# A"), 6'000'010);
}

TEST_F(Stream, on_the_last_line_the_beginning_is_enough) {
    for (const std::string end : {"", "\n", "\r\n"}) {
        EXPECT_EQ(jump("# TEMP of\n# TEMP at the end" + end, "# TEMP"), 27 + end.size());
        EXPECT_EQ(jump("# TEMP" + end + "\n1", "# TEMP"), 6 + end.size() + (end.empty() ? 1 : 0));
    }
    EXPECT_EQ(jump("# TEMP at\n\n", "# TEMP"), std::nullopt);
    EXPECT_EQ(jump("", "# TEMP"), std::nullopt);
}

TEST_F(Stream, a_search_goes_forward_and_begins_with_the_rest_of_the_present_line) {
    StreamReader stream = open("# A\r\n1 # B\r\n2\r\n# B\r\n3\r\n");
    ASSERT_TRUE(stream.JumpToPos("# A"));
    EXPECT_EQ(stream.InputNumber("a value"), "1");
    EXPECT_TRUE(stream.JumpToPos("# B"));
    EXPECT_EQ(stream.next_line(), "2");
    EXPECT_FALSE(stream.JumpToPos("# A"));
    EXPECT_TRUE(stream.at_end());
    stream.rewind();
    EXPECT_TRUE(stream.JumpToPos("# A"));
}

TEST_F(Stream, the_prefix_search_takes_any_line_that_begins_so) {
    StreamReader stream = open("# PORE\n1\n# CONC           12\n2\n# CONC           1\n3\n");
    EXPECT_TRUE(stream.find_prefix("# POR"));
    EXPECT_EQ(stream.next_line(), "1");
    EXPECT_TRUE(stream.find_prefix("# CONC           1"));
    EXPECT_EQ(stream.next_line(), "2");
    EXPECT_TRUE(stream.find_prefix("# CONC           1"));
    EXPECT_FALSE(stream.find_prefix("# CONC"));
}

// Key lines are remembered; no search may tell that from reading line after line.
TEST_F(Stream, searches_in_any_order_find_what_reading_line_by_line_finds) {
    constexpr std::string_view words[] = {"# A", "# AB", "# B", "A", "# A 1", "", "#"};
    std::mt19937 random(5);
    for (int round = 0; round < 12; ++round) {
        std::string bytes;
        for (unsigned line = 0; line < 40; ++line) {
            bytes += words[random() % std::size(words)];
            bytes += random() % 5 == 0 ? " x" : std::string(random() % 3, ' ');
            bytes += random() % 3 == 0 ? std::string(random() % 900'000, '7') : "";
            bytes += random() % 2 == 0 ? "\r\n" : "\n";
        }
        StreamReader stream = open(bytes);
        for (int search = 0; search < 60; ++search) {
            const std::string_view word = words[random() % 5];
            const auto begin = static_cast<std::uint64_t>(random() % bytes.size());
            if (random() % 3 == 0) {
                stream.go_to(begin);
            } else if (random() % 4 == 0) {
                stream.next_line();
            }
            const auto expected = slow_jump(bytes, stream.position(), word);
            ASSERT_EQ(stream.JumpToPos(word), expected.has_value()) << word;
            ASSERT_EQ(stream.position(), expected.value_or(bytes.size())) << word;
        }
    }
}

TEST_F(Stream, a_later_search_does_not_read_again_what_lies_between) {
    std::string bytes;
    for (const char key : {'A', 'B', 'C', 'D'}) {
        bytes += std::string("# ") + key + "\r\n" + std::string(5'000'000, '1') + "\r\n";
    }
    StreamReader stream = open(bytes);
    EXPECT_TRUE(stream.JumpToPos("# D"));
    EXPECT_LE(stream.bytes_read(), bytes.size() + 20);
    stream.rewind();
    EXPECT_TRUE(stream.JumpToPos("# C"));
    EXPECT_EQ(stream.next_line(3), "111");
    EXPECT_FALSE(stream.JumpToPos("# A"));
    const std::uint64_t again = stream.bytes_read() - bytes.size();
    EXPECT_LE(again, 3U * (1U << 20U) + 5'000'000);
}

TEST_F(Stream, more_key_lines_than_are_kept_are_all_found) {
    constexpr int count = 60'000;
    std::string bytes;
    for (int n = 0; n < count; ++n) {
        bytes += "# " + std::to_string(n) + "\n1\n";
    }
    StreamReader stream = open(bytes);
    for (const int n : {59'999, 10, 50'010, 49'999, 50'000, 0}) {
        stream.rewind();
        EXPECT_TRUE(stream.JumpToPos("# " + std::to_string(n))) << n;
    }
    EXPECT_TRUE(stream.JumpToPos("# 55555"));
    EXPECT_EQ(stream.next_key(), "# 55556");
    int keys = 0;
    for (stream.rewind(); stream.next_key();) {
        ++keys;
    }
    EXPECT_EQ(keys, count);
}

TEST_F(Stream, lines_and_key_lines_of_any_length_are_cut_at_a_limit) {
    const std::string longer(2'500'000, 'x');
    StreamReader stream =
        open("# " + longer + "\r\nab\r\n\r\n\n" + longer + "\r\n 12.5abc\n# B  \n# C");
    EXPECT_EQ(stream.next_key()->size(), 200U);
    EXPECT_EQ(stream.next_line(), "ab");
    EXPECT_EQ(stream.next_line(), "");
    EXPECT_EQ(stream.next_line(), "");
    EXPECT_EQ(stream.next_line(7), "xxxxxxx");
    EXPECT_EQ(stream.next_line_int("the count"), 12);
    EXPECT_EQ(stream.next_key(), "# B");
    EXPECT_EQ(stream.next_key(), "# C");
    EXPECT_EQ(stream.next_key(), std::nullopt);
    EXPECT_EQ(stream.next_line(), std::nullopt);
    EXPECT_EQ(failure_of([&] { stream.next_line_int("the count"); }),
              "ends at byte " + std::to_string(stream.size()) + ", where the count was expected");
}

TEST_F(Stream, blanks_tabs_commas_CR_and_LF_separate_in_any_mix) {
    const std::vector<float> expected{1, 2.5F, -3};
    for (const std::string separator :
         {" ", "\t", ",", "\n", "\r\n", "  \t,, \r\n\r\n\t", ", ", " \r\n"}) {
        for (const bool drops : {false, true}) {
            EXPECT_EQ(values(separator + "1" + separator + "2.5" + separator + "-3" + separator, 3,
                             RepeatCount::rounded_32, drops),
                      expected);
        }
    }
}

TEST_F(Stream, InputNumber_drops_a_character_behind_a_CR_and_blocks_may_take_it_as_a_separator) {
    StreamReader stream = open("1\r23\r\n4 \r56,x*y\n7");
    for (const char* const token : {"1", "3", "4", "56", "x*y"}) {
        EXPECT_EQ(stream.InputNumber("a value"), token);
    }
    EXPECT_EQ(failure_of([&] { stream.InputNumber("the next value"); }),
              "ends at byte 17 within the next value");
    EXPECT_EQ(values("1\r23\r4\r\n", 2, RepeatCount::strict_32, true), (std::vector<float>{1, 3}));
    EXPECT_EQ(values("1\r23\r4\r\n", 3), (std::vector<float>{1, 23, 4}));
}

TEST_F(Stream, a_value_is_the_numeric_prefix_of_its_token) {
    constexpr std::string_view tokens[] = {"0.25",     "1.E-12",
                                           "-1.2E-13", "99.87031",
                                           "1.0D-3",   "1d+2",
                                           "1.0-100",  "+5",
                                           "-.5",      ".5e1",
                                           "5.",       ".",
                                           "-",        "--1",
                                           "inf",      "-inf",
                                           "nan",      "NaN",
                                           "0x10",     "1e",
                                           "1E+",      "1e400",
                                           "-1e400",   "1e-400",
                                           "1e39",     "3.4028236e38",
                                           "1.5abc",   "#",
                                           "\xE4",     "1e-45",
                                           "0.1e-320", "-0",
                                           "16777217", "1.00000017881393432617187499"};
    for (const std::string_view token : tokens) {
        for (const std::string prefix : {"", "3*"}) {
            const float value = values(prefix + std::string(token) + " ", 1).front();
            EXPECT_EQ(std::bit_cast<std::uint32_t>(value),
                      std::bit_cast<std::uint32_t>(base::leading_single(token)))
                << token;
        }
    }
    StreamReader stream = open("0.1 2*1.0D-3 1e400 ");
    std::vector<double> doubles(4);
    BlockReader(stream, RepeatCount::rounded_32, "# TEMP", false).read(doubles);
    EXPECT_EQ(doubles, (std::vector<double>{0.1, 0.001, 0.001, base::leading_number("1e400")}));
}

TEST_F(Stream, repeat_counts_are_taken_by_consumer) {
    using enum RepeatCount;
    const struct {
        RepeatCount repeat;
        const char* count;
        std::size_t expected; // 0: fails with `failure`
        const char* failure;
    } cases[] = {
        {rounded_16, "3", 3, ""},
        {rounded_16, "2.5", 2, ""},
        {rounded_16, "3.5x", 4, ""},
        {rounded_16, "32767", 32767, ""},
        {rounded_16, "32768", 0, "\"32768\", where at most 32767 was expected"},
        {rounded_32, "32768", 32768, ""},
        {rounded_32, "", 1, ""},
        {rounded_32, "abc", 1, ""},
        {rounded_32, "0", 1, ""},
        {rounded_32, "-7", 1, ""},
        {rounded_32, "3000000000", 0, "\"3000000000\", where at most 2147483647 was expected"},
        {strict_32, "+4", 4, ""},
        {strict_32, "1e1", 10, ""},
        {strict_32, "3x", 0, "\"3x\", where a number was expected"},
        {strict_32, "", 0, "\"\", where a number was expected"},
        {strict_32, "\xE4", 0, "\"ä\", where a number was expected"},
        {strict_32, "2147483648", 0, "\"2147483648\", where at most 2147483647 was expected"},
    };
    for (const auto& c : cases) {
        const std::string text = "9 " + std::string(c.count) + "*5 6 ";
        std::vector<float> read;
        const std::string failure =
            failure_of([&] { read = values(text, 2 + c.expected, c.repeat); });
        if (c.expected == 0) {
            EXPECT_EQ(failure,
                      "byte 2: the repeat count of value 2 of # TEMP is " + std::string(c.failure));
        } else {
            ASSERT_EQ(failure, "");
            EXPECT_EQ(std::ranges::count(read, 5.0F), std::ptrdiff_t(c.expected)) << c.count;
            EXPECT_EQ(read.back(), 6) << c.count;
        }
    }
}

TEST_F(Stream, a_run_ends_with_its_block) {
    StreamReader stream = open("5*1 4*2\n");
    std::vector<float> row(3);
    BlockReader first(stream, RepeatCount::rounded_32, "# TEMP", false);
    first.read(row);
    first.skip(1);
    EXPECT_EQ(first.left_of_run(), 1);
    BlockReader second(stream, RepeatCount::rounded_32, "# POR", false);
    second.read(row);
    EXPECT_EQ(row, (std::vector<float>{2, 2, 2}));
    second.skip(1);
    EXPECT_EQ(failure_of([&] { second.skip(1); }),
              "ends at byte 8, where value 5 of # POR was expected");
}

TEST_F(Stream, what_was_written_is_read_back_whatever_the_block_borders) {
    std::mt19937 random(7);
    std::vector<float> written;
    while (written.size() < 700'000) {
        const double digits = static_cast<double>(random() % 1'000'000) - 400'000;
        const auto value = static_cast<float>(digits * std::pow(10, int(random() % 20) - 15));
        written.insert(written.end(), random() % 3 == 0 ? 1 + random() % 40 : 1,
                       base::leading_single(base::value_text(value)));
    }
    input::KeywordStream out(folder_.path() / "m.nlo", "m.nlo");
    out.key("TEMP");
    input::Runs runs = input::real_runs(out);
    runs.add(written);
    runs.finish();
    out.end_line();
    out.finish();
    StreamReader stream(folder_.path() / "m.nlo");
    ASSERT_TRUE(stream.JumpToPos("# TEMP"));
    std::vector<float> read(written.size());
    BlockReader block(stream, RepeatCount::strict_32, "# TEMP", true);
    for (std::span<float> rest = read; !rest.empty();) {
        const std::span row = rest.first(std::min<std::size_t>(rest.size(), 1 + random() % 900));
        block.read(row);
        rest = rest.subspan(row.size());
    }
    EXPECT_TRUE(read == written);
    EXPECT_EQ(block.left_of_run(), 0);
    EXPECT_EQ(stream.position(), stream.size() - 2);
}

TEST_F(Stream, a_file_cut_off_in_front_of_the_end_of_a_value_gives_a_failure) {
    const std::string bytes = "# TEMP\r\n1.5 3*2\t,7\r\n";
    for (std::size_t size = 0; size <= bytes.size(); ++size) {
        StreamReader stream = open(bytes.substr(0, size));
        std::vector<float> read(5);
        const std::string failure = failure_of([&] {
            if (stream.find_prefix("# TEMP")) {
                BlockReader(stream, RepeatCount::strict_32, "# TEMP", true).read(read);
            }
        });
        EXPECT_EQ(failure.empty(), size < 6 || size >= bytes.size() - 1) << size;
    }
    EXPECT_EQ(failure_of([&] { values("1 2", 2); }), "ends at byte 3 within value 2 of # TEMP");
    EXPECT_EQ(failure_of([&] { values("1 2 ", 3); }),
              "ends at byte 4, where value 3 of # TEMP was expected");
    EXPECT_EQ(failure_of([&] { values(" " + std::string(70'000, '1') + " ", 1); }),
              "byte 1: holds a word of more than 65536 characters, where a number was expected");
}

TEST_F(Stream, a_file_that_changes_while_it_is_read_gives_a_failure) {
    const std::string bytes = "# A\n" + std::string(3'000'000, '1') + "\n2\n";
    const fs::path file = folder_.path() / "m.nlo";
    const struct {
        std::function<void()> change;
        const char* failure;
    } cases[] = {
        {[] {}, ""},
        {[&] { folder_.write("m.nlo", bytes + "3"); }, "has become longer while it was read"},
        {[&] { fs::resize_file(file, 2'000'000); }, "has become shorter while it was read"},
        {[&] { folder_.write("m.nlo", bytes); }, "was written to while it was read"},
        {[&] { fs::rename(folder_.write("new", bytes), file); }, "was replaced while it was read"},
        {[&] { fs::remove(file); }, "was replaced while it was read"},
    };
    for (const auto& c : cases) {
        StreamReader stream = open(bytes);
        EXPECT_TRUE(stream.JumpToPos("# A"));
        c.change();
        EXPECT_EQ(failure_of([&] { stream.require_unchanged(); }), c.failure);
        EXPECT_EQ(failure_of([&] {
                      stream.next_line();
                      stream.next_line();
                      stream.next_line_int("more");
                  }),
                  *c.failure == '\0' ? "ends at byte 3000007, where more was expected" : c.failure);
    }
}

TEST_F(Stream, only_an_ordinary_file_is_opened) {
    EXPECT_EQ(failure_of([&] { StreamReader(folder_.path()); }), "is no ordinary file");
    EXPECT_EQ(failure_of([&] { StreamReader(folder_.path() / "none"); }),
              "cannot be read: No such file or directory");
}

TEST_F(Stream, searches_tell_what_is_missing_but_for_four_words) {
    StreamReader stream = open("# ANZMINS\n 7 \n");
    support::ScriptedUser user;
    constexpr const char* title = "Tervex Desk";
    for (const char* const word : {"# CONC", "# CONCM", "# ANZCHEM"}) {
        EXPECT_FALSE(results::jump_or_tell(stream, word, user));
    }
    user.expect_message(title, "Error in file format. Can't find choosen parameter # VX");
    user.expect_message(title, "Error in input file structure: Can't find # VX");
    EXPECT_FALSE(results::LookForString(stream, "# VX", user));
    user.expect_message(title, "Error in input file structure: Can't find # CONC");
    EXPECT_FALSE(results::LookForString(stream, "# CONC", user));
    EXPECT_EQ(results::read_counter(stream, "# ANZMINS", user), 7);
    EXPECT_EQ(results::read_counter(stream, "# ANZCHEM", user), 0);
    user.expect_message(title, "Error in file format. Can't find choosen parameter # ANZSUBS");
    EXPECT_EQ(results::read_counter(stream, "# ANZSUBS", user), 0);
}

TEST(NumberedKey, the_number_ends_in_a_fixed_column) {
    EXPECT_EQ(results::numbered_key("# CONC", 1), "# CONC           1");
    EXPECT_EQ(results::numbered_key("# CONC", 99), "# CONC          99");
    EXPECT_EQ(results::numbered_key("# CONCM", 9).size(), 19U);
    EXPECT_EQ(results::numbered_key("# CONC", 0), "");
    EXPECT_EQ(results::numbered_key("# CONC", 100), "");
}

#include "input/keywordstream.h"

#include "support/failureof.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <functional>

using input::KeywordStream;

namespace {

std::string written(const std::function<void(KeywordStream&)>& write) {
    const support::TempFolder folder;
    KeywordStream stream(folder.path() / "m.nml", folder.path() / "m.nml");
    write(stream);
    stream.finish();
    return folder.read("m.nml");
}

} // namespace

TEST(KeywordStream, each_form_of_a_value_line_has_its_bytes) {
    EXPECT_EQ(written([](auto& s) { s.key("TITLE"); }), "# TITLE\r\n");
    EXPECT_EQ(written([](auto& s) { s.text_line("F----"); }), "F----\r\n");
    EXPECT_EQ(written([](auto& s) { s.text_line(""); }), "\r\n");
    EXPECT_EQ(written([](auto& s) { s.integer_line(7); }), " 7 \r\n");
    EXPECT_EQ(written([](auto& s) { s.integer_line(-7); }), "-7 \r\n");
    EXPECT_EQ(written([](auto& s) { s.tabbed_integer_line(30); }), "       30 \r\n");
    EXPECT_EQ(written([](auto& s) { s.real_line(0.5); }), " .5 \r\n");
    EXPECT_EQ(written([](auto& s) { s.real_line(-0.001); }), "-.001 \r\n");
    EXPECT_EQ(written([](auto& s) { s.put_run(1E-12F, 1); }), "1.E-12 ");
    EXPECT_EQ(written([](auto& s) { s.put_run(0, 5); }), "5*0. ");
}

TEST(KeywordStream, texts_are_windows_1252) {
    EXPECT_EQ(written([](auto& s) { s.text_line("Tie\xC3\x9F \xCE\xB1"); }), "Tie\xDF ?\r\n");
}

TEST(KeywordStream, the_number_of_a_block_of_a_family_ends_in_the_18th_column) {
    EXPECT_EQ(written([](auto& s) { s.key("CONC", 3); }), "# CONC           3\r\n");
    EXPECT_EQ(written([](auto& s) { s.key("CONC", 12); }), "# CONC          12\r\n");
}

TEST(KeywordStream, a_line_is_closed_once) {
    EXPECT_EQ(written([](auto& s) {
                  s.put("2*1. ");
                  s.close_line();
                  s.close_line();
              }),
              "2*1. \r\n");
}

TEST(KeywordStream, a_block_can_be_dropped_even_when_a_part_of_it_is_on_disk) {
    const std::string long_line(3'000'000, 'x');
    const std::string bytes = written([&](auto& s) {
        s.key("PERM");
        const auto begin = s.position();
        s.text_line(long_line);
        s.text_line("y");
        s.cut_back(begin);
        s.key("PHI");
    });
    EXPECT_EQ(bytes, "# PERM\r\n# PHI\r\n");
}

TEST(KeywordStream, a_file_that_cannot_be_written_is_named_with_the_reason) {
    const auto expect_failure = [](const std::string& reason, const std::function<void()>& step) {
        EXPECT_EQ(support::failure_of(step, "m.nml"), "cannot be written: " + reason);
    };
    const support::TempFolder folder;
    expect_failure("No such file or directory",
                   [&] { KeywordStream stream(folder.path() / "missing" / "new.1", "m.nml"); });
    // A full disk shows at the end of the block.
    KeywordStream stream("/dev/full", "m.nml");
    stream.text_line(std::string(3'000'000, 'x'));
    stream.cut_back(0);
    expect_failure("No space left on device", [&] { stream.require_written(); });
    expect_failure("No space left on device", [&] { stream.finish(); });
}

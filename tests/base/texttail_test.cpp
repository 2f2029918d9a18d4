#include "base/texttail.h"

#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <fstream>

namespace {

class Tail : public testing::Test {
protected:
    void print(const std::string& bytes) { std::ofstream(file, std::ios::app) << bytes; }

    const support::TempFolder folder;
    const std::filesystem::path file = folder.path() / "m.log";
    base::TextTail tail{file};
};

TEST_F(Tail, only_what_has_come_is_news) {
    EXPECT_EQ(tail.news().text, "");
    print("one\ntw");
    EXPECT_EQ(tail.news().text, "one\ntw");
    EXPECT_EQ(tail.news().text, "");
    print("o\n");
    EXPECT_EQ(tail.news().text, "o\n");
}

TEST_F(Tail, line_ends_and_characters_may_be_cut_in_two) {
    print("a\r");
    EXPECT_EQ(tail.news().text, "a\n");
    print("\nb\rc\x1B\t\xC3");
    EXPECT_EQ(tail.news().text, "b\nc\t");
    print("\xA4\n");
    EXPECT_EQ(tail.news().text, "\xC3\xA4\n");
    print("\xE4 ansi");
    EXPECT_EQ(tail.news().text, "\xC3\xA4 ansi");
}

TEST_F(Tail, of_much_news_the_end_counts_and_a_shorter_file_begins_anew) {
    print(std::string(base::TextTail::most, 'x') + "end\n");
    const auto news = tail.news();
    EXPECT_TRUE(news.skipped);
    EXPECT_EQ(news.text.size(), base::TextTail::most);
    EXPECT_TRUE(news.text.ends_with("xend\n"));
    std::ofstream(file) << "new\n";
    const auto begun = tail.news();
    EXPECT_TRUE(begun.restarted);
    EXPECT_EQ(begun.text, "new\n");
}

} // namespace

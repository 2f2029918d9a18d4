#include "base/inifile.h"

#include <gtest/gtest.h>

namespace {
using base::IniFile;
using Keys = std::vector<std::string>;

TEST(IniFile, finds_sections_and_keys_in_any_case) {
    const IniFile file("[color]\r\nReservoir=8404992\r\n");
    EXPECT_EQ(file.get("COLOR", "RESERVOIR"), "8404992");
    EXPECT_EQ(file.get("Color", "Mesh"), std::nullopt);
    EXPECT_EQ(file.get("Grid", "Reservoir"), std::nullopt);
}

TEST(IniFile, drops_blanks_tabs_and_one_pair_of_quotes) {
    const IniFile file(
        "[ A ]\n  k1 \t=\t 1 2 \t\nk2=\" x \"\nk3='\"y\"'\nk4=\"z\nk5=\nk6=\"\nk7=a=b");
    EXPECT_EQ(file.get("A", "k1"), "1 2");
    EXPECT_EQ(file.get("A", "k2"), " x ");
    EXPECT_EQ(file.get("A", "k3"), "\"y\"");
    EXPECT_EQ(file.get("A", "k4"), "\"z");
    EXPECT_EQ(file.get("A", "k5"), "");
    EXPECT_EQ(file.get("A", "k6"), "\"");
    EXPECT_EQ(file.get("A", "k7"), "a=b");
}

TEST(IniFile, the_first_section_and_the_first_key_count) {
    IniFile file("[A]\nk=1\nk=2\n[B]\n[A]\nk=3\nother=4\n");
    EXPECT_EQ(file.get("A", "k"), "1");
    EXPECT_EQ(file.get("A", "other"), std::nullopt);
    file.set("A", "k", "9");
    EXPECT_EQ(file.bytes(), "[A]\r\nk=9\r\nk=2\r\n[B]\r\n[A]\r\nk=3\r\nother=4\r\n");
}

TEST(IniFile, only_a_semicolon_makes_a_comment) {
    const IniFile file("k=outside\n[A]\n;k=1\n #k=2\n no key\nk=3 ; kept\n");
    EXPECT_EQ(file.get("A", "k"), "3 ; kept");
    EXPECT_EQ(file.get("A", "#k"), "2");
    EXPECT_EQ(file.keys("a"), (Keys{"#k", "k"}));
}

TEST(IniFile, a_damaged_head_line_still_names_its_section) {
    const IniFile file("[A\nk=1\n[B]]\nk=2");
    EXPECT_EQ(file.get("A", "k"), "1");
    EXPECT_EQ(file.get("B", "k"), "2");
}

TEST(IniFile, a_change_leaves_everything_else_as_it_is) {
    IniFile file("; mine\n\n[Info]\n  Name = old\n\n; next\n[Foreign]\nx\n");
    file.set("INFO", "NAME", "new");
    file.set("info", "Added", "1");
    file.set("Foreign", "key", "2");
    file.set("Last", "k", "3");
    EXPECT_EQ(file.bytes(), "; mine\r\n\r\n[Info]\r\n  Name = new\r\n\r\n; next\r\nAdded=1\r\n"
                            "[Foreign]\r\nx\r\nkey=2\r\n[Last]\r\nk=3\r\n");
}

TEST(IniFile, a_new_key_stands_before_the_empty_lines_of_its_section) {
    IniFile file("[A]\r\nk=1\r\n\r\n \r\n[B]\r\n");
    file.set("A", "n", "2");
    EXPECT_EQ(file.bytes(), "[A]\r\nk=1\r\nn=2\r\n\r\n \r\n[B]\r\n");
}

TEST(IniFile, a_line_break_in_a_value_makes_no_new_key) {
    IniFile file;
    file.set("A", "k", "1\r\n[B]");
    EXPECT_EQ(file.bytes(), "[A]\r\nk=1  [B]\r\n");
}

TEST(IniFile, keeps_the_encoding_that_it_was_read_in) {
    IniFile ansi("[A]\nk=10\xB0"
                 "C\n");
    EXPECT_EQ(ansi.get("A", "k"), "10°C");
    ansi.set("A", "l", "Ω°");
    EXPECT_EQ(ansi.bytes(), "[A]\r\nk=10\xB0"
                            "C\r\nl=?\xB0\r\n");
    IniFile utf8("\xEF\xBB\xBF[A]\nk=10°C\n");
    EXPECT_EQ(utf8.get("A", "k"), "10°C");
    utf8.set("A", "l", "Ω");
    EXPECT_EQ(utf8.bytes(), "\xEF\xBB\xBF[A]\r\nk=10°C\r\nl=Ω\r\n");
}

} // namespace

#include "results/viewersettings.h"

#include "support/scripteduser.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using results::ViewerSettings;

class ViewSettings : public testing::Test {
protected:
    ViewerSettings load(std::string_view bytes) { return ViewerSettings::LoadINI(bytes, user_); }

    support::ScriptedUser user_;
};

const std::string default_file =
    "45\r\n0\r\n45\r\n 0 \r\n 0 \r\n 0 \r\n 0 \r\n 0 \r\n 0 \r\n 0 \r\n 0 \r\n 0 \r\n"
    "False\r\nFalse\r\nFalse\r\nFalse\r\nFalse\r\nFalse\r\nFalse\r\nTrue\r\n"
    "False\r\nElement\r\nFalse\r\nMineral\r\nFalse\r\nFalse\r\n"
    "100\r\n100\r\n1\r\nFalse\r\nFalse\r\nTrue\r\n"
    " 1 \r\n 1 \r\n 0 \r\n 1 \r\n 0 \r\n 0 \r\n 1 \r\n 1 \r\n 1 \r\n 1 \r\n 0 \r\n 0 \r\n"
    "2.5\r\n 0 \r\n";

} // namespace

TEST_F(ViewSettings, are_46_lines_and_one_more_with_another_parameter) {
    EXPECT_EQ(ViewerSettings().SaveINI(), default_file);
    ViewerSettings settings;
    for (const auto& [field, value] :
         {std::pair("OTHER", "True"), std::pair("OtherName", "RHOCM"), std::pair("CutX", "True"),
          std::pair("PlotType", "1"), std::pair("SpeciesName", " Ca "), std::pair("Layer", "")}) {
        EXPECT_TRUE(settings.set(field, value)) << field;
    }
    const std::string file = settings.SaveINI();
    EXPECT_EQ(std::ranges::count(file, '\n'), 47);
    EXPECT_NE(file.find("False\r\nTrue\r\nRHOCM\r\n100\r\n100\r\n1\r\nTrue\r\nFalse\r\nFalse\r\n"),
              std::string::npos);
    EXPECT_TRUE(file.ends_with("2.5\r\n 1 \r\n"));
    EXPECT_EQ(load(file).SaveINI(), file);
    EXPECT_EQ(load(file).parameter_code(), "RHOCM");
    EXPECT_EQ(load(file).value("TEMP") + load(file).value("SpeciesName"), "FalseCa");
}

TEST_F(ViewSettings, keep_the_defaults_of_fields_that_are_missing_at_the_end) {
    EXPECT_EQ(load("").SaveINI(), default_file);
    const auto settings = load("30,359\n1 , 1 ,0,2,x");
    EXPECT_EQ(settings.value("YAngle") + settings.value("XSpin") + settings.value("ZSpin"),
              "35911");
    EXPECT_EQ(settings.value("XXY") + settings.value("Perspective"), "02.5");
    EXPECT_EQ(load("1,1,1,0,0,0,0,0,0,0,0,0,0,True,True").parameter_code(), "DICHTE");
}

TEST_F(ViewSettings, fall_back_on_the_defaults_when_an_angle_is_not_valid) {
    const char* texts[] = {
        " The input file has changed!\n All parameters will be set to the default value! ",
        " Your input file has changed!\n All parameters are default! ",
        " You have a new version from input file!\n All parameters are default! "};
    const char* files[] = {" \r\n1\r\n1\r\n 1 \r\n", "0\r\n-5\r\n1\r\n 1 \r\n",
                           "1\r\n1\r\nTrue\r\n 1 \r\n"};
    for (int n = 0; n < 3; ++n) {
        user_.expect_message(" Default settings", texts[n]);
        EXPECT_EQ(load(files[n]).SaveINI(), default_file);
    }
}

TEST_F(ViewSettings, refuse_what_a_field_cannot_hold) {
    ViewerSettings settings;
    for (const auto& [field, value] :
         {std::pair("XAngle", "-1"), std::pair("YAngle", ""), std::pair("Mesh", "2"),
          std::pair("VX", "true"), std::pair("SpeciesName", "a,b"), std::pair("Foo", "1")}) {
        EXPECT_FALSE(settings.set(field, value)) << field;
    }
    EXPECT_EQ(settings.SaveINI(), default_file);
}

TEST_F(ViewSettings, turn_by_a_degree_a_tick_on_the_axes_that_spin) {
    ViewerSettings settings;
    settings.set("XSpin", "1");
    settings.set("XAngle", "359");
    settings.turn(1);
    EXPECT_EQ(settings.value("XAngle") + settings.value("YAngle"), "00");
    settings.turn(359 + 360 * 5);
    EXPECT_EQ(settings.value("XAngle"), "359");
    settings.set("XAngle", "400");
    settings.turn(3);
    EXPECT_EQ(settings.value("XAngle"), "2");
}

// The worksheet drawn on a device: what the user sees of it, and what Escape leaves.
#include "core/project.h"
#include "plot/hpgl.h"
#include "plot/plotpage.h"
#include "support/scripteduser.h"

#include <gtest/gtest.h>

namespace {

using Texts = std::vector<std::string>;

// 3 x 2 cells of 10 m, values rising to the east.
plot::PlotData make_data(const core::Project& project) {
    plot::PlotData data{project,
                        {{0, 10, 20, 30}, {0, 10, 20}, {5, 15, 25}, {5, 15}},
                        {0, 2, 4, 0, 2, 4},
                        {},
                        {},
                        {},
                        {{.level = 3, .fill = 0xFF}, {.level = 1, .fill = 0xFF0000}, {.level = 9}},
                        {}};
    return data;
}

std::string drawn(const plot::PlotData& data, const plot::PlotShow& show,
                  support::ScriptedUser& user, bool complete) {
    const plot::PlotFrame frame(data.project, data.cells, plot::Display::local);
    plot::HpglFile file(frame.sheet());
    EXPECT_EQ(plot::draw_worksheet(file, frame, data, show, user), complete);
    return file.Plot_Close().substr(16);
}

TEST(Worksheet, contours_tell_how_far_they_are) {
    const core::Project project;
    support::ScriptedUser user;
    EXPECT_EQ(drawn(make_data(project), {.contours = true}, user, true),
              "FT 1;IP 0,0,30,20;\r\nPU20,15;PD20,5;PU10,15;PD10,5;PU;SP0;");
    EXPECT_EQ(user.meter(), (std::vector<int>{0, 50, 75, 100}));
    EXPECT_EQ(user.statuses(), (Texts{"Drawing Contours; Press ESC to Break", ""}));
    EXPECT_FALSE(user.is_busy());
}

TEST(Worksheet, escape_ends_the_drawing_at_once_and_the_file_is_whole) {
    const core::Project project;
    support::ScriptedUser user;
    user.set_stop(true);
    EXPECT_EQ(
        drawn(make_data(project), {.mesh = true, .contours = true, .fill = true}, user, false),
        "FT 1;IP 0,0,30,20;\r\nPU;SP0;");
    EXPECT_EQ(user.statuses(), (Texts{"Filling colors; Press ESC to Break", ""}));
    EXPECT_EQ(drawn(make_data(project), {.contours = true}, user, false),
              "FT 1;IP 0,0,30,20;\r\nPU20,15;PD20,5;PU;SP0;");
    EXPECT_FALSE(user.is_busy());
}

TEST(Worksheet, bands_follow_their_levels_whatever_the_order_of_the_table) {
    const core::Project project;
    support::ScriptedUser user;
    EXPECT_EQ(drawn(make_data(project), {.fill = true}, user, true),
              "FT 1;IP 0,0,30,20;\r\nSP2;PU10,15;RA15,5;PU15,15;RA20,5;SP5;PU20,15;RA25,5;PU;SP0;");
}

TEST(Worksheet, what_is_drawn_later_lies_over_what_was_drawn_before) {
    const core::Project project;
    support::ScriptedUser user;
    plot::PlotData data = make_data(project);
    data.levels = {{.level = 3, .fill = 0xFF}};
    data.boundary = {0, 1, 1, 1, 1, 1};
    data.cell_colours.assign(6, plot::PlotData::ground);
    data.cell_colours[5] = 0xFFFFFF;
    data.bores.bores[0].Active = true;
    data.digitized = {{5, 5}};
    EXPECT_EQ(
        drawn(data, {.inactive = true, .contours = true, .fill = true, .bores = true}, user, true),
        "FT 1;IP 0,0,30,20;\r\nSP8;PU0,20;RA10,10;PU20,10;RA30,0;SP5;PU20,15;RA25,5;"
        "SP1;PU20,15;PD20,5;PU0,20;CI0, 15;PU5,15;CI0, 15;PU;SP0;");
}

TEST(Worksheet, the_sheet_is_drawn_in_10000_plotter_units) {
    const plot::Sheet sheet{0, 300, 500, 500, 1};
    EXPECT_EQ(plot::default_Plot_Unit(plot::Plot_Format::HPGL, sheet), 0.05);
    EXPECT_EQ(plot::default_Plot_Unit(plot::Plot_Format::DXF, sheet), 1);
}

} // namespace

// Plot files to the byte, colours, levels and the stroke font.
#include "core/project.h"
#include "plot/bitmap.h"
#include "plot/colourtable.h"
#include "plot/contourlevels.h"
#include "plot/dxf.h"
#include "plot/hpgl.h"
#include "plot/strokefont.h"
#include "support/failureof.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using plot::Point;

// Of 8 m x 4 m, drawn in units of 2 m.
constexpr plot::Sheet sheet{0, 8, 4, 4, 2};
constexpr std::int32_t red = 0xFF, blue = 0xFF0000;

void draw(plot::PlotDevice& device) {
    device.Plot_Line({0, 0}, {8, 4});
    device.Plot_Pen(red);
    device.Plot_Circle({4, 1}, 1);
    device.Plot_Pen(blue);
    device.Plot_Solid({Point{0, 0}, {2, 0}, {0, 4}, {2, 4}});
    device.Plot_Vertex({4, 4});
}

// Lines of a DXF, each with its end.
std::string dxf(const std::string& text) {
    std::string lines = "  0\r\nSECTION\r\n  2\r\nENTITIES\r\n";
    for (const char c : text) {
        lines += c == '|' ? "\r\n" : std::string(1, c);
    }
    return lines + "  0\r\nENDSEC\r\n  0\r\nEOF\r\n";
}

TEST(Dxf, has_entities_with_printed_numbers_and_y_upward) {
    plot::DxfFile file(sheet);
    draw(file);
    EXPECT_EQ(file.Plot_Close(),
              dxf("  0|LINE|  8|0| 62| 178 | 10| 0 | 20| 2 | 11| 4 | 21| 0 |"
                  "  0|CIRCLE|  8|0| 62| 10 | 10| 2 | 20| 1.5 | 40| .5 |"
                  "  0|SOLID|  8|0| 62| 170 | 10| 0 | 20| 2 | 30|0| 11| 1 | 21| 2 | 31|0|"
                  " 12| 0 | 22| 0 | 32|0| 13| 1 | 23| 0 | 33|0|"
                  "  0|VERTEX|  8|0| 62| 170 | 10| 2 | 20| 0 |"));
}

TEST(Dxf, polygons_become_quads_in_the_order_of_the_entity) {
    plot::DxfFile file({0, 1, 1, 0, 1});
    file.Plot_Polygon(std::array<Point, 3>{Point{0, 0}, {1, 0}, {1, -1}});
    EXPECT_EQ(file.Plot_Close(),
              dxf("  0|SOLID|  8|0| 62| 178 | 10| 0 | 20| 0 | 30|0| 11| 1 | 21| 0 | 31|0|"
                  " 12| 1 | 22| 1 | 32|0| 13| 1 | 23| 1 | 33|0|"));
}

TEST(Hpgl, has_whole_units_and_chooses_a_pen_when_it_changes) {
    plot::HpglFile file(sheet);
    draw(file);
    file.Plot_Solid({Point{2, 2}, {3, 3}, {1, 3}, {2, 4}});
    EXPECT_EQ(file.Plot_Close(), "IN;VS10.0;SP1;\r\nFT 1;IP 0,0,4,2;\r\n"
                                 "PU0,2;PD4,0;SP5;PU2,2;CI0, 15;SP2;PU0,2;RA1,0;PD2,0;"
                                 "PU1,1;PD2,0;PU2,0;PD1,0;PU1,0;PD0,0;PU0,0;PD1,1;PU;SP0;");
}

TEST(Hpgl, fills_polygons_and_draws_upright_ones_as_rectangles) {
    plot::HpglFile file({0, 10, 10, 10, 1});
    file.Plot_Polygon(std::array<Point, 4>{Point{0, 0}, {4, 0}, {4, 2}, {0, 2}});
    file.Plot_Polygon(std::array<Point, 3>{Point{0, 0}, {4, 0}, {4, 2}});
    EXPECT_EQ(file.Plot_Close(), "IN;VS10.0;SP1;\r\nFT 1;IP 0,0,10,10;\r\n"
                                 "PU0,10;RA4,8;PU0,10;PM0;PD4,10,4,8;PM2;FP;PU;SP0;");
}

// A pixel as its colour; `y` from the top.
int pixel(const std::string& bmp, int x, int y) {
    const auto number = [&](std::size_t at) { return int{static_cast<unsigned char>(bmp.at(at))}; };
    const int height = number(22) + number(23) * 256;
    const int row_bytes = (3 * (number(18) + number(19) * 256) + 3) / 4 * 4;
    const auto at = static_cast<std::size_t>(54 + (height - 1 - y) * row_bytes + 3 * x);
    return number(at + 2) + number(at + 1) * 256 + number(at) * 65536;
}

TEST(Bitmap, has_1000_pixels_along_the_longer_side_and_a_plain_head) {
    plot::BitmapFile file(sheet);
    draw(file);
    EXPECT_EQ(file.width(), 1000);
    EXPECT_EQ(file.height(), 501);
    const std::string bmp = file.Plot_Close();
    ASSERT_EQ(bmp.size(), 54U + 3000 * 501);
    EXPECT_EQ(bmp.substr(0, 34),
              std::string("BM\x4E\xEF\x16\0\0\0\0\0\x36\0\0\0\x28\0\0\0\xE8\3\0\0"
                          "\xF5\1\0\0\1\0\x18\0\0\0\0\0",
                          34));
    EXPECT_EQ(pixel(bmp, 999, 500), 0) << "the end of the line";
    EXPECT_EQ(pixel(bmp, 375, 125), red) << "the left of the circle";
    EXPECT_EQ(pixel(bmp, 100, 400), blue);
    EXPECT_EQ(pixel(bmp, 260, 400), 0xFFFFFF);
}

TEST(Bitmap, polygons_share_no_pixel_and_leave_none_between_them) {
    std::mt19937 random(1);
    std::uniform_real_distribution<double> inside(1, 99);
    for (int run = 0; run < 20; ++run) {
        plot::BitmapFile file({0, 100, 1, 100, 1});
        const Point corners[] = {{0, 0}, {100, 0}, {100, 1}, {0, 1}}, middle{inside(random), 0.3};
        for (std::size_t n = 0; n < 4; ++n) {
            file.Plot_Pen(red);
            file.Plot_Polygon(std::array{corners[n], corners[(n + 1) % 4], middle});
        }
        const std::string bmp = file.Plot_Close();
        for (int x = 0; x < 999; ++x) {
            EXPECT_EQ(pixel(bmp, x, 5), red) << x;
        }
    }
}

TEST(Bitmap, what_lies_outside_or_is_no_number_draws_nothing) {
    plot::BitmapFile file({0, 1, 0, 1, 1});
    EXPECT_EQ(file.height(), 1);
    for (const double far : {1E30, -1E30, std::nan(""), double(INFINITY)}) {
        file.Plot_Line({far, 5}, {far, far});
        file.Plot_Circle({far, 0}, far);
        file.Plot_Polygon(std::array<Point, 3>{Point{far, far}, {far, 5}, {2, 5}});
    }
    EXPECT_EQ(pixel(file.Plot_Close(), 500, 0), 0xFFFFFF);
}

TEST(Colours, have_the_last_of_the_nearest_numbers_and_one_of_eight_pens) {
    const std::pair<int, plot::ColourBytes> entries[] = {
        {13, {166, 83, 83}}, {20, {255, 64, 0}}, {21, {255, 159, 128}}, {251, {118, 118, 118}}};
    for (const auto& [number, bytes] : entries) {
        EXPECT_EQ(plot::DXF_colour(plot::colour_of(bytes)), number);
    }
    const auto numbers = [](std::int32_t colour) {
        return std::pair{plot::DXF_colour(colour), plot::HPGL_pen(colour)};
    };
    EXPECT_EQ(numbers(0), std::pair(178, 1));
    EXPECT_EQ(numbers(red), std::pair(10, 5));
    EXPECT_EQ(numbers(0xFFFFFF), std::pair(255, 8));
    EXPECT_EQ(numbers(blue), std::pair(170, 2));
    EXPECT_EQ(numbers(0xC0C0C0), std::pair(253, 8));
    EXPECT_EQ(numbers(127 * 256 + 126), std::pair(plot::DXF_colour(127 * 256 + 126), 3));
    EXPECT_EQ(plot::blended(0x0000FF, 0xFF0000, 1, 3), 0x800080);
    EXPECT_EQ(plot::blended(7, 9, 0, 1), 7);
}

TEST(Levels, reach_to_the_maximum_as_written) {
    const auto last = [](plot::LevelRange range) {
        const auto levels = plot::make_levels(range);
        return std::pair{levels.size(), levels.back().level};
    };
    EXPECT_EQ(last({0, 1, 0.1}), std::pair(std::size_t{11}, 1.0F));
    EXPECT_EQ(last({0, 1, 0.3}), std::pair(std::size_t{4}, 0.9F));
    EXPECT_EQ(last({5, 5, 1}), std::pair(std::size_t{1}, 5.0F));
    EXPECT_EQ(last({0, 999, 1}), std::pair(std::size_t{1000}, 999.0F));
    const auto text = [](plot::LevelRange range) { return plot::range_refusal(range)->text; };
    EXPECT_EQ(text({2, 1, 0}), "Minimum > Maximum");
    EXPECT_EQ(text({1, 1, 0}), "Value must be > 0");
    EXPECT_EQ(text({0, 1000, 1}), "Valid range is 1 to 1000");
}

TEST(Levels, keep_their_22_bytes_and_are_read_whole_or_not_at_all) {
    const plot::ContourLevels levels{{1.5F, 255, 65280, true, 2, 3}};
    const std::string bytes("\1\0\0\0\xC0\x3F\xFF\0\0\0\0\xFF\0\0\xFF\xFF\0\0\0\x40\0\0\x40\x40",
                            24);
    EXPECT_EQ(plot::levels_bytes(levels), bytes);
    EXPECT_EQ(plot::levels_bytes(*plot::levels_from_bytes(bytes)), bytes);
    for (const std::string& wrong :
         {bytes + '\0', bytes.substr(0, 23), std::string(), std::string("\xFF\xFF", 2)}) {
        EXPECT_FALSE(plot::levels_from_bytes(wrong));
    }
    EXPECT_TRUE(plot::levels_from_bytes(std::string(2, '\0'))->empty());
}

TEST(Levels, restored_defaults_are_eleven_labelled_ones_in_the_colours_of_the_project) {
    core::Project project;
    project.set_integer("COLOR", "MaxContour", 100);
    const auto levels = plot::default_levels(10, 20, 300, 100, project);
    ASSERT_EQ(levels.size(), 11U);
    EXPECT_EQ(levels[1].level, 11);
    EXPECT_EQ(levels[5].line, 50);
    EXPECT_TRUE(levels[3].label);
    EXPECT_EQ(levels[3].label_height, 4);
    EXPECT_EQ(levels[3].label_spacing, 40);
    EXPECT_EQ(plot::default_levels(3, 3, 1, 1, project).size(), 1U);
}

TEST(Font, is_read_back_as_strokes_and_says_what_is_wrong) {
    const auto font = plot::StrokeFont::read("65 4 2\r\n0 2 0\r\n2 9 1\r\n", "f");
    EXPECT_EQ(font.width("AA?", 7), 8);
    plot::HpglFile file({0, 100, 100, 100, 1});
    plot::Plot_Text(file, font, "AA", {10, 90}, 7, 0);
    plot::Plot_Text(file, font, "A", {10, 90}, 14, 90);
    EXPECT_EQ(file.Plot_Close().substr(38),
              "PU10,10;PD12,17;PU14,10;PD16,17;PU10,10;PD-4,14;PU;SP0;");
    const auto fault = [](const char* text) {
        return support::failure_of([&] { plot::StrokeFont::read(text, "f"); });
    };
    EXPECT_EQ(fault("65 4 1\n0 12 0"), "line 2: y has to be a whole number from 0 to 9");
    EXPECT_EQ(fault("65 4 1\n0"), "ends at line 2, where y was expected");
    EXPECT_EQ(fault("300 4 0"), "line 1: the code of a character has to be a whole number from 0 "
                                "to 255");
}

TEST(Font, of_the_first_folder_that_has_one_is_taken) {
    const support::TempFolder none, own;
    own.write("screen.fon", "65 4 0\r\n");
    const std::filesystem::path folders[] = {none.path(), own.path()};
    EXPECT_FALSE(plot::StrokeFont::load(folders).empty());
    EXPECT_TRUE(plot::StrokeFont::load(std::span(folders).first(1)).empty());
}

} // namespace

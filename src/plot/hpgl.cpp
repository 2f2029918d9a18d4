#include "plot/hpgl.h"

#include "plot/colourtable.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace plot {

namespace {

// No plotter knows larger numbers.
constexpr double largest = 1 << 30;

std::int64_t whole(double units) {
    return std::llrint(std::clamp(std::isnan(units) ? 0 : units, -largest, largest));
}

} // namespace

HpglFile::HpglFile(const Sheet& sheet) : sheet_(sheet) {
    text_ = fmt::format("IN;VS10.0;SP1;\r\nFT 1;IP 0,0,{},{};\r\n", length(sheet.width),
                        length(sheet.height));
}

std::string HpglFile::place(Point point) const {
    const Point plotted = sheet_.plotted(point);
    return fmt::format("{},{}", whole(plotted.x), whole(plotted.y));
}

std::string HpglFile::length(double metres) const {
    return fmt::to_string(whole(metres / sheet_.Plot_Unit));
}

void HpglFile::put(std::string_view command) {
    if (std::exchange(pen_held_, pen_) != pen_) {
        text_ += fmt::format("SP{};", pen_);
    }
    text_ += command;
}

void HpglFile::Plot_Pen(std::int32_t colour) {
    pen_ = HPGL_pen(colour);
}

void HpglFile::Plot_Line(Point from, Point to) {
    put(fmt::format("PU{};PD{};", place(from), place(to)));
}

void HpglFile::Plot_Vertex(Point point) {
    put(fmt::format("PD{};", place(point)));
}

void HpglFile::Plot_Circle(Point centre, double radius) {
    put(fmt::format("PU{};CI{}, 15;", place(centre), length(radius)));
}

bool HpglFile::put_upright(const Corners& corners) {
    const auto& [upper_left, upper_right, lower_left, lower_right] = corners;
    const Point across{lower_right.x, upper_left.y}, down{upper_left.x, lower_right.y};
    if (place(upper_right) != place(across) || place(lower_left) != place(down)) {
        return false;
    }
    put(fmt::format("PU{};RA{};", place(upper_left), place(lower_right)));
    return true;
}

void HpglFile::Plot_Solid(const Corners& corners) {
    if (put_upright(corners)) {
        return;
    }
    const auto& [upper_left, upper_right, lower_left, lower_right] = corners;
    Plot_Line(upper_left, upper_right);
    Plot_Line(upper_right, lower_right);
    Plot_Line(lower_right, lower_left);
    Plot_Line(lower_left, upper_left);
}

void HpglFile::Plot_Polygon(std::span<const Point> corners) {
    if (corners.size() == 4 && put_upright({corners[0], corners[1], corners[3], corners[2]})) {
        return;
    }
    std::string around;
    for (const Point& corner : corners.subspan(1)) {
        around += (around.empty() ? "" : ",") + place(corner);
    }
    put(fmt::format("PU{};PM0;PD{};PM2;FP;", place(corners[0]), around));
}

std::string HpglFile::Plot_Close() {
    text_ += "PU;SP0;";
    return std::move(text_);
}

} // namespace plot

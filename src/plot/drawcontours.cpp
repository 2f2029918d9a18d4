#include "plot/drawcontours.h"

#include "base/busy.h"
#include "core/project.h"
#include "plot/contourfill.h"
#include "plot/contourlabels.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace plot {

namespace {

// Room that a label takes on its line, beside the width of its text.
constexpr double label_room = 1.1;

std::vector<std::uint8_t> holes_of(const PlotData& data) {
    const bool ignore = data.project.integer("GRID_APPEARANCE", "IGNORE_INACTIVE") != 0;
    return find_holes(data.values, data.hole_rule(ignore));
}

void draw_polyline(PlotDevice& device, const PlotFrame& frame, std::span<const Point> points) {
    for (std::size_t n = 1; n < points.size(); ++n) {
        device.Plot_Line(frame.from_grid(points[n - 1]), frame.from_grid(points[n]));
    }
}

class LevelDrawing {
public:
    LevelDrawing(PlotDevice& device, const PlotFrame& frame, const PlotData& data,
                 const Contour_Level& level)
        : device_(device), frame_(frame), data_(data), level_(level),
          text_(label_text(LabelFormat(data.project), level.level)),
          width_(data.font.width(text_, level.label_height)),
          uphill_(data.project.integer("CONTOURS", "LabelUphill") != 0) {}

    void draw(const ContourLine& line) const {
        device_.Plot_Pen(level_.line);
        std::vector<LabelPlace> labels;
        if (level_.label) {
            labels = place_labels(line.points, level_.label_spacing, label_room * width_);
        }
        for (const auto& part : line_around(line.points, labels)) {
            draw_polyline(device_, frame_, part);
        }
        for (const LabelPlace& label : labels) {
            draw_label(label, line.high_on_right);
        }
    }

private:
    // In the middle of its chord.
    void draw_label(const LabelPlace& label, bool high_on_right) const {
        const Point from = frame_.from_grid(label.from), to = frame_.from_grid(label.to);
        const double chord = chord_angle(to.x - from.x, from.y - to.y);
        const bool backward = label_runs_backward(chord, uphill_, high_on_right);
        const double angle = chord + (backward ? 180 : 0);
        const double radians = angle * std::numbers::pi / 180;
        const double c = std::cos(radians), s = std::sin(radians);
        const double along = width_ / 2, down = level_.label_height / 2;
        const Point start{(from.x + to.x) / 2 - along * c + down * s,
                          (from.y + to.y) / 2 + along * s + down * c};
        Plot_Text(device_, data_.font, text_, start, level_.label_height, angle);
    }

    PlotDevice& device_;
    const PlotFrame& frame_;
    const PlotData& data_;
    const Contour_Level& level_;
    std::string text_;
    double width_;
    bool uphill_;
};

bool draw_levels(PlotDevice& device, const PlotFrame& frame, const PlotData& data,
                 base::Interaction& user) {
    Isoline2 isolines(data.layer(), holes_of(data));
    const std::size_t Level_Count = data.levels.size();
    for (std::size_t n = 1; n <= Level_Count; ++n) {
        const Contour_Level& level = data.levels[n - 1];
        const LevelDrawing drawing(device, frame, data, level);
        for (const ContourLine& line : isolines.trace(level.level)) {
            drawing.draw(line);
        }
        if (user.show_meter(static_cast<int>((n + 1) * 100 / (Level_Count + 1)))) {
            return false;
        }
    }
    return true;
}

} // namespace

bool fill_contours(PlotDevice& device, const PlotFrame& frame, const PlotData& data,
                   base::Interaction& user) {
    user.status("Filling colors; Press ESC to Break");
    ContourLevels levels = data.levels;
    std::ranges::stable_sort(levels, {}, &Contour_Level::level);
    std::vector<float> bounds;
    for (const Contour_Level& level : levels) {
        bounds.push_back(level.level);
    }
    std::vector<Point> on_sheet;
    bool complete = true;
    fill_bands(
        data.layer(), holes_of(data), bounds,
        [&](std::size_t level, std::span<const Point> corners) {
            on_sheet.clear();
            for (const Point& corner : corners) {
                on_sheet.push_back(frame.from_grid(corner));
            }
            device.Plot_Pen(levels[level].fill);
            device.Plot_Polygon(on_sheet);
        },
        [&](int row) {
            const auto rows = static_cast<int>(data.cells.y_centres.size());
            complete = !user.show_meter(row * 100 / rows);
            return complete;
        });
    user.status("");
    return complete;
}

bool draw_contour_lines(PlotDevice& device, const PlotFrame& frame, const PlotData& data,
                        base::Interaction& user) {
    user.show_meter(0);
    user.status("Drawing Contours; Press ESC to Break");
    const base::Busy hourglass(user);
    const bool complete = draw_levels(device, frame, data, user);
    user.status("");
    return complete;
}

} // namespace plot

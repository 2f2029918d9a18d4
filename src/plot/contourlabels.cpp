#include "plot/contourlabels.h"

#include <cmath>
#include <numbers>
#include <optional>

namespace plot {

namespace {

double distance(Point a, Point b) {
    return std::hypot(b.x - a.x, b.y - a.y);
}

std::optional<std::size_t> first_away(std::span<const Point> line, std::size_t from, Point spot,
                                      double length) {
    for (std::size_t n = from; n < line.size(); ++n) {
        if (distance(spot, line[n]) >= length) {
            return n;
        }
    }
    return std::nullopt;
}

} // namespace

std::vector<LabelPlace> place_labels(std::span<const Point> line, double spacing, double length) {
    std::vector<LabelPlace> places;
    if (line.empty() || !(spacing > 0) || !(length > 0)) {
        return places;
    }
    Point at = line[0];
    double sum = 0;
    for (std::size_t n = 1; n < line.size(); ++n) {
        const double step = distance(at, line[n]);
        sum += step;
        if (sum < spacing) {
            at = line[n];
            continue;
        }
        const double back = step > 0 ? (sum - spacing) / step : 0;
        const Point spot{line[n].x - (line[n].x - at.x) * back,
                         line[n].y - (line[n].y - at.y) * back};
        const auto end = first_away(line, n, spot, length);
        if (!end) {
            break;
        }
        places.push_back({spot, line[*end], n, *end});
        at = line[*end];
        n = *end;
        sum = 0;
    }
    return places;
}

std::vector<std::vector<Point>> line_around(std::span<const Point> line,
                                            std::span<const LabelPlace> labels) {
    std::vector<std::vector<Point>> parts;
    std::size_t begin = 0;
    for (const LabelPlace& label : labels) {
        const auto part = line.subspan(begin, label.first_behind_from - begin);
        parts.emplace_back(part.begin(), part.end());
        parts.back().push_back(label.from);
        begin = label.to_index;
    }
    const auto rest = line.subspan(begin);
    parts.emplace_back(rest.begin(), rest.end());
    return parts;
}

double chord_angle(double dx, double dy) {
    if (dx == 0) {
        return dy > 0 ? 90 : 270;
    }
    return std::atan(dy / dx) * 180 / std::numbers::pi + (dx > 0 ? 0 : 180);
}

bool label_runs_backward(double angle, bool uphill, bool high_on_right) {
    return uphill ? high_on_right : angle > 90;
}

} // namespace plot

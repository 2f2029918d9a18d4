#include "grid/zones.h"

#include "grid/griddefinition.h"
#include "grid/nearestsingle.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace grid {

namespace {

constexpr std::size_t value_slots = 12; // of Zone::param
constexpr std::size_t box_slot = 12;
constexpr double far_away = 1E15;
constexpr int max_nudges = 20;

struct Point {
    double x, y;
};

// Turn of p, q, r: 1 clockwise in a frame with y downward, -1 the other way. On one line -1 when r
// lies behind p, 1 when it lies beyond q, 0 between.
int turn(Point p, Point q, Point r) {
    const double dx1 = q.x - p.x, dy1 = q.y - p.y;
    const double dx2 = r.x - p.x, dy2 = r.y - p.y;
    if (dx1 * dy2 != dy1 * dx2) {
        return dx1 * dy2 > dy1 * dx2 ? 1 : -1;
    }
    if (dx1 * dx2 < 0 || dy1 * dy2 < 0) {
        return -1;
    }
    return dx1 * dx1 + dy1 * dy1 < dx2 * dx2 + dy2 * dy2 ? 1 : 0;
}

struct Box {
    explicit Box(const core::Zone& zone)
        : x_min(zone.param[box_slot]), y_min(zone.param[box_slot + 1]),
          x_max(zone.param[box_slot + 2]), y_max(zone.param[box_slot + 3]) {}
    bool holds_x(double x) const { return x_min <= x && x <= x_max; }
    bool holds_y(double y) const { return y_min <= y && y <= y_max; }

    double x_min, y_min, x_max, y_max;
};

// The rays from points at one y to the far right, against the edges of a zone. No node lies on the
// ray, so an edge can be crossed only when its ends lie on both sides of it.
class Ray {
public:
    Ray(const core::Zone& zone, double y) : y_(y) {
        if (!nudge(zone)) {
            return;
        }
        for (std::size_t node = 1; node <= static_cast<std::size_t>(zone.nodes); ++node) {
            const Point from{zone.x[node], zone.y[node]};
            const Point to{zone.x[node + 1], zone.y[node + 1]};
            if ((from.y < y_) != (to.y < y_)) {
                edges_[count_++] = {from, to, turn(from, to, {far_away, y_})};
            }
        }
    }

    bool starts_inside(double x) const {
        bool inside = false;
        for (std::size_t edge = 0; edge < count_; ++edge) {
            const Edge& e = edges_[edge];
            inside ^= turn(e.from, e.to, {x, y_}) * e.far_turn <= 0;
        }
        return inside;
    }

private:
    struct Edge {
        Point from, to;
        int far_turn; // of the far end of the ray
    };

    // Moves the ray off all nodes; false when it stays on one.
    bool nudge(const core::Zone& zone) {
        const auto first = zone.y.begin() + 1;
        const auto last = first + zone.nodes;
        for (int nudges = 0; std::find(first, last, y_) != last; ++nudges) {
            if (y_ == 0) {
                throw base::RangeFailure("a point and a node of a zone lie both on y = 0");
            }
            if (nudges == max_nudges) {
                return false;
            }
            y_ += std::pow(10.0, std::floor(std::log10(std::abs(y_)) - 6));
        }
        return true;
    }

    double y_;
    std::array<Edge, core::Zone::max_nodes> edges_;
    std::size_t count_ = 0;
};

struct Candidate {
    std::size_t index;
    double centre;
};

// The centres that `in_box` takes, rounded to singles as nodes are: a centre that a user sees on an
// edge lies on it.
template <typename InBox>
std::vector<Candidate> candidates(const std::vector<double>& centres, InBox in_box) {
    std::vector<Candidate> found;
    for (std::size_t i = 0; i < centres.size(); ++i) {
        const double centre = nearest_single(centres[i]);
        if (in_box(centre)) {
            found.push_back({i, centre});
        }
    }
    return found;
}

// Where to put the value of each array for cell `at`.
void set_cell(std::span<core::LayerValues> values, std::span<const float> of_zone, std::size_t at) {
    for (std::size_t array = 0; array < values.size(); ++array) {
        values[array][at] = of_zone[array];
    }
}

void require_slot(std::size_t array) {
    if (array > value_slots) {
        throw base::RangeFailure(
            fmt::format("a zone has no value for array {} of a session", array + 1));
    }
}

} // namespace

float zone_value(const core::Zone& zone, std::size_t array) {
    require_slot(array);
    return array == 0 ? zone.value : zone.param[array - 1];
}

void set_zone_value(core::Zone& zone, std::size_t array, float value) {
    require_slot(array);
    (array == 0 ? zone.value : zone.param[array - 1]) = value;
}

bool Zone_Contains(double x, double y, const core::Zone& zone) {
    const Box box(zone);
    return box.holds_x(x) && box.holds_y(y) && Ray(zone, y).starts_inside(x);
}

int Find_Zone(double x, double y, std::span<const core::Zone> zones) {
    const auto found = std::ranges::find_if(
        zones, [x, y](const core::Zone& zone) { return Zone_Contains(x, y, zone); });
    return found == zones.end() ? 0 : static_cast<int>(found - zones.begin()) + 1;
}

std::size_t transfer_zone(const core::Zone& zone, const CellCoordinates& cells,
                          std::span<core::LayerValues> values) {
    std::vector<float> of_zone;
    for (std::size_t array = 0; array < values.size(); ++array) {
        of_zone.push_back(zone_value(zone, array));
    }
    const Box box(zone);
    const auto columns = candidates(cells.x_centres, [&](double x) { return box.holds_x(x); });
    const auto rows = candidates(cells.y_centres, [&](double y) { return box.holds_y(y); });
    std::size_t count = 0;
    for (const Candidate& row : rows) {
        const Ray ray(zone, row.centre);
        const std::size_t first = row.index * cells.x_centres.size();
        for (const Candidate& column : columns) {
            if (ray.starts_inside(column.centre)) {
                set_cell(values, of_zone, first + column.index);
                ++count;
            }
        }
    }
    return count;
}

base::Refusal no_zones_allowed(std::string_view caption) {
    return {base::desk_title, fmt::format("Specification of zones is not allowed for {}", caption)};
}

} // namespace grid

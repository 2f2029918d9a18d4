#include "plot/contours.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <optional>

namespace plot {

namespace {

// Bits of an edge mark: the level crosses the edge; no line has used it yet.
constexpr std::uint8_t row_free = 1, column_free = 2, row_crossed = 4, column_crossed = 8;
constexpr std::uint8_t row_edge = row_free | row_crossed,
                       column_edge = column_free | column_crossed;
constexpr float hole_value = 1E25F;

std::uint8_t without(std::uint8_t mark, std::uint8_t bits) {
    return static_cast<std::uint8_t>(mark & ~bits);
}

// Loops of a fixed length become vector instructions at any level of optimisation.
constexpr std::size_t chunk = 32;

// 255 for values above the level, 0 for the others; the last one once more behind them.
void compare(std::span<const float> values, float bound, std::uint8_t* above) {
    const float* value = values.data();
    std::size_t i = 0;
    for (; i + chunk <= values.size(); i += chunk) {
        std::uint8_t some[chunk];
        for (std::size_t n = 0; n < chunk; ++n) {
            some[n] = value[i + n] > bound ? 0xFF : 0;
        }
        std::memcpy(above + i, some, chunk);
    }
    for (; i < values.size(); ++i) {
        above[i] = value[i] > bound ? 0xFF : 0;
    }
    above[values.size()] = above[values.size() - 1];
}

// Marks of a row of nodes from its own comparisons and those of the next row.
void put_marks(const std::uint8_t* here, const std::uint8_t* next, const std::uint8_t* passable,
               std::uint8_t* marks, std::size_t columns) {
    const auto mark = [=](std::size_t i) {
        return static_cast<std::uint8_t>(passable[i] & (((here[i] ^ here[i + 1]) & row_edge) |
                                                        ((here[i] ^ next[i]) & column_edge)));
    };
    std::size_t i = 0;
    for (; i + chunk <= columns; i += chunk) {
        std::uint8_t some[chunk];
        for (std::size_t n = 0; n < chunk; ++n) {
            some[n] = mark(i + n);
        }
        std::memcpy(marks + i, some, chunk);
    }
    for (; i < columns; ++i) {
        marks[i] = mark(i);
    }
}

// The first node from `at` on whose mark has a free edge; `marks.size()` when there is none.
std::size_t next_free(std::span<const std::uint8_t> marks, std::size_t at) {
    constexpr std::uint64_t free_bits = 0x0101010101010101U * (row_free | column_free);
    std::uint64_t eight = 0;
    for (; at + sizeof eight <= marks.size(); at += sizeof eight) {
        std::memcpy(&eight, marks.data() + at, sizeof eight);
        if ((eight & free_bits) != 0) {
            break;
        }
    }
    while (at < marks.size() && (marks[at] & (row_free | column_free)) == 0) {
        ++at;
    }
    return at;
}

} // namespace

std::vector<std::uint8_t> find_holes(std::span<const float> values, const HoleRule& rule) {
    std::vector<std::uint8_t> holes(values.size());
    for (std::size_t n = 0; n < values.size(); ++n) {
        const float value = values[n];
        const bool number = value < hole_value && value > -std::numeric_limits<float>::infinity();
        const bool active = rule.boundary.empty() || rule.boundary[n] != 0;
        holes[n] = number && active && value != rule.HNOFLO && value != rule.HDRY ? 0 : 1;
    }
    return holes;
}

LevelTest::LevelTest(float level) : level_(level), shifted_(level + level * 1E-5F), bound_(level) {
    if (shifted_ == 0) {
        shifted_ = 1E-20F;
    }
    if (shifted_ > level) {
        bound_ = std::nextafter(level, -std::numeric_limits<float>::infinity());
    }
}

bool LevelTest::middle_above(const std::array<float, 4>& corners) const {
    double sum = 0;
    for (const float corner : corners) {
        sum += shifted(corner);
    }
    return sum / 4 > level_;
}

double LevelTest::crossing(float value_a, float value_b, double c_a, double c_b) const {
    const double a = shifted(value_a), b = shifted(value_b);
    const double part = std::abs(level_ - a), whole = std::abs(b - a);
    return part == 0 || whole == 0 ? c_a : c_a + part * std::abs(c_b - c_a) / whole;
}

Isoline2::Isoline2(const ContourLayer& layer, std::span<const std::uint8_t> holes)
    : layer_(layer), passable_(layer.values.size(), row_edge | column_edge),
      Crossing_Mark_(layer.values.size()) {
    block(holes);
}

void Isoline2::block(std::span<const std::uint8_t> holes) {
    const auto columns = static_cast<std::size_t>(layer_.columns);
    for (std::size_t node = 0; node < holes.size(); ++node) {
        if (holes[node] == 0) {
            continue;
        }
        passable_[node] = 0;
        if (node % columns > 0) {
            passable_[node - 1] = without(passable_[node - 1], row_edge);
        }
        if (node >= columns) {
            passable_[node - columns] = without(passable_[node - columns], column_edge);
        }
    }
}

void Isoline2::mark_crossings(const LevelTest& test) {
    const auto columns = static_cast<std::size_t>(layer_.columns);
    std::vector<std::uint8_t> here(columns + 1), next(columns + 1);
    compare(layer_.values.first(columns), test.bound(), here.data());
    for (std::size_t start = 0; start < layer_.values.size(); start += columns) {
        if (start + columns < layer_.values.size()) {
            compare(layer_.values.subspan(start + columns, columns), test.bound(), next.data());
        } else {
            next = here;
        }
        put_marks(here.data(), next.data(), passable_.data() + start, Crossing_Mark_.data() + start,
                  columns);
        here.swap(next);
    }
}

std::vector<ContourLine> Isoline2::trace(float level) {
    std::vector<ContourLine> lines;
    if (layer_.columns < 2 || layer_.rows < 2) {
        return lines;
    }
    const LevelTest test(level);
    mark_crossings(test);
    const auto columns = static_cast<std::size_t>(layer_.columns);
    for (std::size_t node = next_free(Crossing_Mark_, 0); node < Crossing_Mark_.size();
         node = next_free(Crossing_Mark_, node + 1)) {
        const int i = static_cast<int>(node % columns), j = static_cast<int>(node / columns);
        if ((Crossing_Mark_[node] & row_free) != 0) {
            trace_from({i, j, true}, test, lines);
        }
        // A line through the last column's edges also crosses others.
        if ((Crossing_Mark_[node] & column_free) != 0 && i + 1 < layer_.columns) {
            trace_from({i, j, false}, test, lines);
        }
    }
    return lines;
}

void Isoline2::trace_from(const Edge& start, const LevelTest& test,
                          std::vector<ContourLine>& lines) {
    take(start);
    std::vector<Point> forward{crossing(start, test)}, backward;
    const bool closed = follow(start, {start.i, start.j}, max_points - 1, test, forward);
    if (!closed) {
        const Quad other = start.row ? Quad{start.i, start.j - 1} : Quad{start.i - 1, start.j};
        follow(start, other, max_points - forward.size(), test, backward);
    }
    if (forward.size() + backward.size() < 2) {
        return;
    }
    ContourLine line{{backward.rbegin(), backward.rend()}, high_on_right(start, test)};
    line.points.insert(line.points.end(), forward.begin(), forward.end());
    lines.push_back(std::move(line));
}

bool Isoline2::follow(const Edge& start, Quad quad, std::size_t limit, const LevelTest& test,
                      std::vector<Point>& points) {
    Edge edge = start;
    for (std::size_t count = 0; count < limit && is_inside(quad); ++count) {
        const auto next = exit(quad, edge, test);
        if (!next) {
            return false;
        }
        points.push_back(crossing(*next, test));
        if (!take(*next)) {
            return *next == start;
        }
        const bool upper_left = next->i == quad.i && next->j == quad.j;
        if (next->row) {
            quad.j += upper_left ? -1 : 1;
        } else {
            quad.i += upper_left ? -1 : 1;
        }
        edge = *next;
    }
    return false;
}

std::optional<Isoline2::Edge> Isoline2::exit(const Quad& quad, const Edge& entered,
                                             const LevelTest& test) const {
    const int i = quad.i, j = quad.j;
    const Edge round[] = {{i, j, true}, {i + 1, j, false}, {i, j + 1, true}, {i, j, false}};
    std::size_t crossed = 0, at = 0, other = std::size(round);
    for (std::size_t n = 0; n < std::size(round); ++n) {
        const std::uint8_t bit = round[n].row ? row_crossed : column_crossed;
        if ((Crossing_Mark_[layer_.node(round[n].i, round[n].j)] & bit) == 0) {
            continue;
        }
        ++crossed;
        (round[n] == entered ? at : other) = n;
    }
    if (crossed == std::size(round)) {
        const auto value = [&](int di, int dj) {
            return layer_.values[layer_.node(i + di, j + dj)];
        };
        const float corner = value(0, 0);
        const bool joined = test.above(corner) ==
                            test.middle_above({corner, value(1, 0), value(1, 1), value(0, 1)});
        // The middle joins the upper left corner to its opposite, or the two lines part them.
        return round[joined ? at ^ 1U : 3 - at];
    }
    return other < std::size(round) ? std::optional(round[other]) : std::nullopt;
}

bool Isoline2::is_inside(const Quad& quad) const {
    return quad.i >= 0 && quad.j >= 0 && quad.i + 1 < layer_.columns && quad.j + 1 < layer_.rows;
}

// Marks an edge as used; false when a line has used it before.
bool Isoline2::take(const Edge& edge) {
    std::uint8_t& mark = Crossing_Mark_[layer_.node(edge.i, edge.j)];
    const std::uint8_t bit = edge.row ? row_free : column_free;
    const bool was_free = (mark & bit) != 0;
    mark = without(mark, bit);
    return was_free;
}

Point Isoline2::crossing(const Edge& edge, const LevelTest& test) const {
    const auto [i, j, row] = edge;
    const float a = layer_.values[layer_.node(i, j)];
    if (row) {
        const float b = layer_.values[layer_.node(i + 1, j)];
        return {test.crossing(a, b, layer_.x_of(i), layer_.x_of(i + 1)), layer_.y_of(j)};
    }
    const float b = layer_.values[layer_.node(i, j + 1)];
    return {layer_.x_of(i), test.crossing(a, b, layer_.y_of(j), layer_.y_of(j + 1))};
}

// A line leaves a row edge downward and a column edge to the right.
bool Isoline2::high_on_right(const Edge& start, const LevelTest& test) const {
    const bool first_above = test.above(layer_.values[layer_.node(start.i, start.j)]);
    return first_above == start.row;
}

} // namespace plot

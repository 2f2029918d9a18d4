// Contour lines, bands and labels of small and random layers.
#include "plot/contourfill.h"
#include "plot/contourlabels.h"
#include "plot/contourlevels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>

namespace {

using plot::ContourLine;
using plot::Point;

// A layer whose centres stand at the square roots of whole numbers or at 0, 1, 2 ...
struct Layer {
    int columns, rows;
    std::vector<float> values;
    std::vector<std::uint8_t> holes;
    std::vector<double> x, y;

    Layer(int nx, std::vector<float> v)
        : columns(nx), rows(static_cast<int>(v.size()) / nx), values(std::move(v)),
          holes(values.size()), x(static_cast<std::size_t>(columns)),
          y(static_cast<std::size_t>(rows)) {
        std::iota(x.begin(), x.end(), 0.0);
        std::iota(y.begin(), y.end(), 0.0);
    }
    plot::ContourLayer view() const { return {columns, rows, values, x, y}; }
    std::vector<ContourLine> trace(float level) const {
        return plot::Isoline2(view(), holes).trace(level);
    }
    float at(int i, int j) const { return values[view().node(i, j)]; }
    bool is_hole(int i, int j) const { return holes[view().node(i, j)] != 0; }
};

// Whole numbers, so that nodes lie on levels and saddles are many; a tenth of the cells are holes.
Layer random_layer(std::mt19937& random, int columns, int rows, bool with_holes) {
    std::vector<float> values(static_cast<std::size_t>(columns * rows));
    std::ranges::generate(values, [&] { return static_cast<float>(random() % 8) - 3; });
    Layer layer(columns, values);
    for (double& x : layer.x) {
        x = std::sqrt(x);
    }
    for (std::uint8_t& hole : layer.holes) {
        hole = with_holes && random() % 10 == 0 ? 1 : 0;
    }
    return layer;
}

// The lines of each edge: columns first x, then y of the crossing.
using Crossings = std::vector<std::pair<double, double>>;

Crossings sorted_points(const std::vector<ContourLine>& lines) {
    Crossings points;
    for (const ContourLine& line : lines) {
        const bool closed = line.points.front() == line.points.back();
        for (std::size_t n = closed ? 1 : 0; n < line.points.size(); ++n) {
            points.emplace_back(line.points[n].x, line.points[n].y);
        }
    }
    std::ranges::sort(points);
    return points;
}

// What the crossing rule says, edge by edge.
Crossings expected_points(const Layer& layer, float level) {
    Crossings points;
    const auto shifted = [&](float v) {
        const float moved = level + level * 1E-5F;
        return double{v != level ? v : moved == 0 ? 1E-20F : moved};
    };
    const auto add = [&](int i, int j, int di, int dj) {
        if (layer.is_hole(i, j) || layer.is_hole(i + di, j + dj)) {
            return;
        }
        const double a = shifted(layer.at(i, j)), b = shifted(layer.at(i + di, j + dj));
        if ((a > level) == (b > level)) {
            return;
        }
        const double part = std::abs(level - a) / std::abs(b - a);
        const auto n = static_cast<std::size_t>(i), m = static_cast<std::size_t>(j);
        points.emplace_back(
            di == 0 ? layer.x[n] : layer.x[n] + part * (layer.x[n + 1] - layer.x[n]),
            dj == 0 ? layer.y[m] : layer.y[m] + part * (layer.y[m + 1] - layer.y[m]));
    };
    for (int j = 0; j < layer.rows; ++j) {
        for (int i = 0; i < layer.columns; ++i) {
            if (i + 1 < layer.columns) {
                add(i, j, 1, 0);
            }
            if (j + 1 < layer.rows) {
                add(i, j, 0, 1);
            }
        }
    }
    std::ranges::sort(points);
    return points;
}

bool is_near(const Crossings& a, const Crossings& b) {
    return std::ranges::equal(a, b, [](const auto& p, const auto& q) {
        return std::abs(p.first - q.first) < 1E-9 && std::abs(p.second - q.second) < 1E-9;
    });
}

TEST(Isoline2, every_crossed_edge_is_a_point_of_exactly_one_line) {
    std::mt19937 random(1);
    for (int run = 0; run < 200; ++run) {
        const Layer layer = random_layer(random, 2 + run % 9, 2 + run % 7, false);
        for (const float level : {-3.0F, -1.5F, 0.25F, 1.0F, 2.5F}) {
            EXPECT_TRUE(is_near(sorted_points(layer.trace(level)), expected_points(layer, level)))
                << run << " " << level;
        }
    }
}

TEST(Isoline2, lines_are_closed_or_end_at_the_border_and_stay_in_one_quad_per_step) {
    std::mt19937 random(2);
    int closed = 0;
    for (int run = 0; run < 200; ++run) {
        const Layer layer = random_layer(random, 12, 9, false);
        const auto on_border = [&](Point p) {
            return p.x == 0 || p.y == 0 || p.x == layer.x.back() || p.y == layer.y.back();
        };
        for (const ContourLine& line : layer.trace(0.5F)) {
            if (line.points.front() == line.points.back()) {
                ++closed;
            } else {
                EXPECT_TRUE(on_border(line.points.front()) && on_border(line.points.back()));
            }
            for (std::size_t n = 1; n < line.points.size(); ++n) {
                const Point a = line.points[n - 1], b = line.points[n];
                const auto i = std::ranges::upper_bound(layer.x, std::min(a.x, b.x)) - 1;
                EXPECT_LE(std::max(a.x, b.x), *std::min(i + 1, layer.x.end() - 1)) << "a gap";
                EXPECT_LE(std::abs(a.y - b.y), 1);
            }
        }
    }
    EXPECT_GT(closed, 100);
}

TEST(Isoline2, a_closed_line_is_found_once_and_ends_on_its_first_point) {
    const Layer hill(3, {0, 0, 0, 0, 2, 0, 0, 0, 0});
    const auto lines = hill.trace(1);
    ASSERT_EQ(lines.size(), 1U);
    const std::vector<Point> around{{1, 0.5}, {1.5, 1}, {1, 1.5}, {0.5, 1}, {1, 0.5}};
    const std::vector<Point> backward(around.rbegin(), around.rend());
    EXPECT_TRUE(lines[0].points == around || lines[0].points == backward);
    // The hill lies to the right of a clockwise line.
    EXPECT_EQ(lines[0].high_on_right, lines[0].points == around);
}

TEST(Isoline2, a_node_on_the_level_counts_as_a_little_more_below_zero_as_less) {
    const auto x_of = [](const Layer& layer, float level) {
        const auto lines = layer.trace(level);
        return lines.empty() ? -1 : lines[0].points[0].x;
    };
    EXPECT_NEAR(x_of(Layer(3, {1, 5, 9, 1, 5, 9}), 5), 1 - 1.25E-5, 1E-7);
    EXPECT_NEAR(x_of(Layer(3, {-9, -5, -1, -9, -5, -1}), -5), 1 + 1.25E-5, 1E-7);
    EXPECT_EQ(x_of(Layer(3, {-1, 0, 1, -1, 0, 1}), 0), 1);
    EXPECT_EQ(x_of(Layer(2, {0, 0, 0, 0}), 0), -1) << "a constant layer has no line";
    EXPECT_EQ(x_of(Layer(1, {0, 1, 2}), 1), -1) << "and neither has a single column";
}

TEST(Isoline2, at_a_saddle_the_middle_stays_on_its_side) {
    // Corners 4 and 0; the mean is 2.
    const Layer saddle(2, {4, 0, 0, 4});
    const auto cuts_off = [&](float level) {
        std::vector<double> sums; // of x and y of the middle of each line
        for (const ContourLine& line : saddle.trace(level)) {
            sums.push_back(line.points[0].x - line.points[0].y + line.points[1].x -
                           line.points[1].y);
        }
        std::ranges::sort(sums);
        return sums;
    };
    EXPECT_EQ(cuts_off(3), (std::vector<double>{0, 0})) << "round the high corners";
    EXPECT_EQ(cuts_off(1), (std::vector<double>{-1.5, 1.5})) << "round the low corners";
}

TEST(Isoline2, holes_have_no_line_on_their_own_edges) {
    const std::vector<float> values{1, 2, 1E25F, -999, 7, std::nanf("")};
    const std::vector<float> boundary{1, 0, 1, 1, -1, 1};
    EXPECT_EQ(plot::find_holes(values, {-999, 7, {}}),
              (std::vector<std::uint8_t>{0, 0, 1, 1, 1, 1}));
    EXPECT_EQ(plot::find_holes(values, {0, 0, boundary}),
              (std::vector<std::uint8_t>{0, 1, 1, 0, 0, 1}));

    std::mt19937 random(3);
    for (int run = 0; run < 100; ++run) {
        const Layer layer = random_layer(random, 8, 8, true);
        const Crossings allowed = expected_points(layer, 0.5F);
        for (const auto& point : sorted_points(layer.trace(0.5F))) {
            EXPECT_TRUE(std::ranges::any_of(
                allowed, [&](const auto& other) { return is_near({point}, {other}); }));
        }
    }
}

TEST(Isoline2, a_line_of_more_than_10000_points_goes_on_as_another_without_a_gap) {
    // A comb whose teeth make one long line.
    const int columns = 150, rows = 150;
    std::vector<float> values;
    for (int n = 0; n < columns * rows; ++n) {
        const int i = n % columns, j = n / columns;
        values.push_back(j == 0 || (i % 2 == 0 && j < rows - 1) ? 2.0F : 0.0F);
    }
    const Layer comb(columns, values);
    const auto lines = comb.trace(1);
    ASSERT_GT(lines.size(), 1U);
    EXPECT_EQ(lines[0].points.size(), plot::Isoline2::max_points);
    const Crossings all = expected_points(comb, 1);
    std::size_t points = 0;
    for (const ContourLine& line : lines) {
        points += line.points.size();
    }
    EXPECT_EQ(points, all.size() + lines.size() - 1)
        << "neighbours share the point where they meet";
}

double area(std::span<const Point> corners) {
    double twice = 0;
    for (std::size_t n = 0; n < corners.size(); ++n) {
        const Point a = corners[n], b = corners[(n + 1) % corners.size()];
        twice += a.x * b.y - b.x * a.y;
    }
    return twice / 2;
}

bool is_convex(std::span<const Point> corners) {
    for (std::size_t n = 0; n < corners.size(); ++n) {
        const Point a = corners[n], b = corners[(n + 1) % corners.size()],
                    c = corners[(n + 2) % corners.size()];
        if ((b.x - a.x) * (c.y - b.y) - (b.y - a.y) * (c.x - b.x) < -1E-9) {
            return false;
        }
    }
    return true;
}

TEST(Bands, tile_the_layer_in_convex_pieces_that_end_on_the_lines) {
    std::mt19937 random(4);
    const std::vector<float> levels{-10, -2, -0.5F, 0, 1, 1.5F, 3};
    for (int run = 0; run < 200; ++run) {
        const Layer layer = random_layer(random, 7, 6, false);
        std::vector<double> areas(levels.size());
        plot::fill_bands(
            layer.view(), layer.holes, levels,
            [&](std::size_t level, std::span<const Point> corners) {
                EXPECT_TRUE(is_convex(corners));
                EXPECT_GE(area(corners), -1E-12) << "clockwise on the screen";
                areas[level] += area(corners);
            },
            [](int) { return true; });
        const double all = layer.x.back() * layer.y.back();
        EXPECT_NEAR(std::accumulate(areas.begin(), areas.end(), 0.0), all, 1E-9);

        // What lies above a level is what its lines enclose together with the border.
        double above = 0;
        for (std::size_t n = levels.size(); n-- > 1;) {
            above += areas[n];
            double alone = 0;
            plot::fill_bands(
                layer.view(), layer.holes, std::span(levels).subspan(n, 1),
                [&](std::size_t, std::span<const Point> corners) { alone += area(corners); },
                [](int) { return true; });
            EXPECT_NEAR(above, alone, 1E-3) << levels[n];
        }
    }
}

TEST(Bands, leave_out_what_is_below_the_first_level_and_beside_a_hole) {
    Layer layer(3, {0, 0, 5, 0, 0, 5, 0, 0, 5});
    layer.holes[8] = 1;
    std::vector<std::vector<Point>> pieces;
    plot::fill_bands(
        layer.view(), layer.holes, std::vector<float>{2.5F},
        [&](std::size_t, std::span<const Point> corners) {
            pieces.emplace_back(corners.begin(), corners.end());
        },
        [](int) { return true; });
    ASSERT_EQ(pieces.size(), 1U);
    EXPECT_EQ(area(pieces[0]), 0.5);
}

TEST(Bands, are_none_in_a_layer_of_one_value) {
    const Layer layer(2, {5, 5, 5, 5});
    plot::fill_bands(
        layer.view(), layer.holes, std::vector<float>{2.5F},
        [](std::size_t, std::span<const Point>) { ADD_FAILURE(); }, [](int) { return true; });
}

TEST(Labels, stand_a_spacing_apart_and_cut_their_chord_out_of_the_line) {
    const std::vector<Point> line{{0, 0}, {4, 0}, {8, 0}, {9, 0}, {10, 0}, {20, 0}, {21, 0}};
    const auto places = plot::place_labels(line, 5, 3.5);
    ASSERT_EQ(places.size(), 2U);
    EXPECT_EQ(places[0].from, (Point{5, 0}));
    EXPECT_EQ(places[0].to, (Point{9, 0}));
    EXPECT_EQ(places[1].from, (Point{14, 0}));
    EXPECT_EQ(places[1].to, (Point{20, 0}));
    EXPECT_EQ(plot::line_around(line, places),
              (std::vector<std::vector<Point>>{
                  {{0, 0}, {4, 0}, {5, 0}}, {{9, 0}, {10, 0}, {14, 0}}, {{20, 0}, {21, 0}}}));
    EXPECT_TRUE(plot::place_labels(line, 22, 1).empty());
    EXPECT_TRUE(plot::place_labels(line, 0, 1).empty());
}

TEST(Labels, follow_the_chord_with_their_top_uphill_or_readable) {
    EXPECT_EQ(plot::chord_angle(0, 1), 90);
    EXPECT_EQ(plot::chord_angle(0, -1), 270);
    EXPECT_NEAR(plot::chord_angle(1, -1), -45, 1E-12);
    EXPECT_NEAR(plot::chord_angle(-1, 1), 135, 1E-12);
    EXPECT_TRUE(plot::label_runs_backward(0, true, true));
    EXPECT_FALSE(plot::label_runs_backward(180, true, false));
    EXPECT_TRUE(plot::label_runs_backward(180, false, false));
    EXPECT_FALSE(plot::label_runs_backward(90, false, true));
}

} // namespace

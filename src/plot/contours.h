// Contour lines of one layer.
//
// Values stand at the cell centres; a line runs through the edges between neighbouring centres and
// is straight inside the quad of four centres. All comparisons are made in single.
#pragma once

#include "plot/plotdevice.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace plot {

// Node of column i, row j (from 0) at j * columns + i. The spans have to outlive their user.
struct ContourLayer {
    int columns = 0, rows = 0;
    std::span<const float> values;
    std::span<const double> x, y; // centres of columns and rows, ascending

    std::size_t node(int i, int j) const {
        return static_cast<std::size_t>(j) * static_cast<std::size_t>(columns) +
               static_cast<std::size_t>(i);
    }
    double x_of(int i) const { return x[static_cast<std::size_t>(i)]; }
    double y_of(int j) const { return y[static_cast<std::size_t>(j)]; }
};

// What no line comes near to: cells with one of two marker values, with 1E25 or more or no number
// at all, and inactive cells where a flow boundary array is given (its value is 0 there).
struct HoleRule {
    float HNOFLO = 0, HDRY = 0;
    std::span<const float> boundary; // empty: all cells are active
};
// 1 for each node that is a hole, otherwise 0.
std::vector<std::uint8_t> find_holes(std::span<const float> values, const HoleRule& rule);

// Values held against one level. A value equal to it counts as a little more (less below 0), so
// that no node lies on the line.
class LevelTest {
public:
    explicit LevelTest(float level);
    bool above(float value) const { return value > bound_; }
    float bound() const { return bound_; }
    float shifted(float value) const { return value == level_ ? shifted_ : value; }
    // Whether the middle of four nodes lies above the level.
    bool middle_above(const std::array<float, 4>& corners) const;
    // Where the level lies on an edge from a to b, as a coordinate; c(a) < c(b).
    double crossing(float value_a, float value_b, double c_a, double c_b) const;

private:
    float level_, shifted_;
    float bound_; // values above it are above the level
};

struct ContourLine {
    std::vector<Point> points;  // a closed line ends on its first point
    bool high_on_right = false; // the higher values lie to the right of its direction, on a screen
};

// Traces the lines of a layer, level after level.
class Isoline2 {
public:
    static constexpr std::size_t max_points = 10000; // a longer line goes on as another one

    Isoline2(const ContourLayer& layer, std::span<const std::uint8_t> holes);
    // All lines of one level, each once. Lines meet the border, a hole or themselves; a line that
    // meets another one of its level ends on it.
    std::vector<ContourLine> trace(float level);

private:
    // From node (i, j) to its right neighbour (row edge) or to the node of the next row.
    struct Edge {
        int i, j;
        bool row;
        bool operator==(const Edge&) const = default;
    };
    // The quad whose upper left node is (i, j).
    struct Quad {
        int i, j;
    };

    void block(std::span<const std::uint8_t> holes);
    void mark_crossings(const LevelTest& test);
    void trace_from(const Edge& start, const LevelTest& test, std::vector<ContourLine>& lines);
    // Follows the line through `start` into `quad`; true when it comes back to its start.
    bool follow(const Edge& start, Quad quad, std::size_t limit, const LevelTest& test,
                std::vector<Point>& points);
    std::optional<Edge> exit(const Quad& quad, const Edge& entered, const LevelTest& test) const;
    bool is_inside(const Quad& quad) const;
    bool take(const Edge& edge);
    Point crossing(const Edge& edge, const LevelTest& test) const;
    bool high_on_right(const Edge& start, const LevelTest& test) const;

    ContourLayer layer_;
    std::vector<std::uint8_t> passable_;      // edges of each node that a line may cross
    std::vector<std::uint8_t> Crossing_Mark_; // edges that the level crosses, and those still free
};

} // namespace plot

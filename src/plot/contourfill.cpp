#include "plot/contourfill.h"

#include <algorithm>
#include <array>

namespace plot {

namespace {

// Band 0 lies below the first level, band n above level n - 1.
using Bands = std::vector<std::size_t>; // of each column of a row of nodes

constexpr std::size_t sides = 4;

// A quad of four centres, its corners clockwise from the upper left one; side n begins at corner n.
struct Quad {
    std::array<float, sides> values;
    std::array<std::size_t, sides> bands;
    std::array<Point, sides> corners;
};

std::size_t behind(std::size_t corner) {
    return (corner + 1) % sides;
}

class BandFill {
public:
    BandFill(const ContourLayer& layer, std::span<const std::uint8_t> holes,
             std::span<const float> levels, const BandPiece& piece)
        : layer_(layer), holes_(holes), tests_(levels.begin(), levels.end()), piece_(piece),
          here_(static_cast<std::size_t>(layer.columns)), next_(here_.size()) {
        read_bands(0, next_);
    }

    // Fills between the rows of nodes j and j + 1.
    void fill_row(int j) {
        here_.swap(next_);
        read_bands(j + 1, next_);
        for (int i = 0; i + 1 < layer_.columns;) {
            const int end = end_of_run(i, j);
            if (end > i) {
                put_run(i, end, j);
                i = end;
            } else {
                fill_quad(i, j);
                ++i;
            }
        }
    }

private:
    void read_bands(int j, Bands& bands) const {
        const auto row = layer_.values.subspan(layer_.node(0, j), bands.size());
        std::ranges::transform(row, bands.begin(), [&](float value) {
            const auto first_above = std::ranges::partition_point(
                tests_, [&](const LevelTest& test) { return test.above(value); });
            return static_cast<std::size_t>(first_above - tests_.begin());
        });
    }

    bool is_hole(int i, int j) const { return holes_[layer_.node(i, j)] != 0; }
    bool is_open(int i, int j) const {
        return is_hole(i, j) || is_hole(i + 1, j) || is_hole(i, j + 1) || is_hole(i + 1, j + 1);
    }
    // The quads from column i on that lie whole in the band of the first one end before this one.
    int end_of_run(int i, int j) const {
        const std::size_t band = here_[static_cast<std::size_t>(i)];
        const auto same = [&](int column) {
            const auto n = static_cast<std::size_t>(column);
            return here_[n] == band && next_[n] == band;
        };
        int end = i;
        while (end + 1 < layer_.columns && same(end) && same(end + 1) && !is_open(end, j)) {
            ++end;
        }
        return end;
    }

    void put_run(int i, int end, int j) const {
        const double left = layer_.x_of(i), right = layer_.x_of(end), top = layer_.y_of(j),
                     bottom = layer_.y_of(j + 1);
        put(here_[static_cast<std::size_t>(i)],
            std::array<Point, 4>{Point{left, top}, {right, top}, {right, bottom}, {left, bottom}});
    }
    void put(std::size_t band, std::span<const Point> corners) const {
        if (band > 0 && corners.size() > 2) {
            piece_(band - 1, corners);
        }
    }

    Quad quad_at(int i, int j) const {
        Quad quad{};
        constexpr int di[] = {0, 1, 1, 0}, dj[] = {0, 0, 1, 1};
        for (std::size_t n = 0; n < sides; ++n) {
            const int column = i + di[n], row = j + dj[n];
            quad.values[n] = layer_.values[layer_.node(column, row)];
            quad.bands[n] = (dj[n] == 0 ? here_ : next_)[static_cast<std::size_t>(column)];
            quad.corners[n] = {layer_.x_of(column), layer_.y_of(row)};
        }
        return quad;
    }

    void fill_quad(int i, int j) const {
        if (is_open(i, j)) {
            return;
        }
        const Quad quad = quad_at(i, j);
        const auto [least, largest] = std::ranges::minmax(quad.bands);
        for (std::size_t band = std::max<std::size_t>(least, 1); band <= largest; ++band) {
            fill_band(quad, band);
        }
    }

    // A saddle at the band's lower level parts it into the corners above that level, one at its
    // upper level into the corners below that.
    void fill_band(const Quad& quad, std::size_t band) const {
        if (is_parted(quad, band - 1, true)) {
            put_two(quad, band, quad.bands[0] >= band ? 0 : 1);
        } else if (band < tests_.size() && is_parted(quad, band, false)) {
            put_two(quad, band, quad.bands[0] <= band ? 0 : 1);
        } else {
            put_piece(quad, band, {0, 1, 2, 3});
        }
    }

    // Whether the corners above the level (below it) are cut off from each other.
    bool is_parted(const Quad& quad, std::size_t level, bool above) const {
        const auto is_above = [&](std::size_t n) { return quad.bands[n] > level; };
        const bool saddle =
            is_above(0) == is_above(2) && is_above(1) == is_above(3) && is_above(0) != is_above(1);
        return saddle && tests_[level].middle_above(quad.values) != above;
    }

    // Two pieces round opposite corners, of which `corner` is one.
    void put_two(const Quad& quad, std::size_t band, std::size_t corner) const {
        for (const std::size_t n : {corner, corner + 2}) {
            put_piece(quad, band, {(n + sides - 1) % sides, n});
        }
    }

    // The points of a band on sides that follow each other.
    void put_piece(const Quad& quad, std::size_t band,
                   std::initializer_list<std::size_t> on_sides) const {
        std::array<Point, 3 * sides> points;
        std::size_t count = 0;
        for (const std::size_t side : on_sides) {
            const std::size_t from = quad.bands[side], to = quad.bands[behind(side)];
            if (from == band) {
                points[count++] = quad.corners[side];
            }
            const std::size_t first = from < to ? band - 1 : band,
                              second = from < to ? band : band - 1;
            for (const std::size_t level : {first, second}) {
                if (level < tests_.size() && (from > level) != (to > level)) {
                    points[count++] = crossing(quad, side, level);
                }
            }
        }
        put(band, std::span(points).first(count));
    }

    Point crossing(const Quad& quad, std::size_t side, std::size_t level) const {
        const bool backward = side > 1; // the lower and the left side run against the axes
        const std::size_t a = backward ? behind(side) : side, b = backward ? side : behind(side);
        const auto at = [&](double Point::*c) {
            return tests_[level].crossing(quad.values[a], quad.values[b], quad.corners[a].*c,
                                          quad.corners[b].*c);
        };
        return side % 2 == 0 ? Point{at(&Point::x), quad.corners[a].y}
                             : Point{quad.corners[a].x, at(&Point::y)};
    }

    const ContourLayer& layer_;
    std::span<const std::uint8_t> holes_;
    std::vector<LevelTest> tests_;
    const BandPiece& piece_;
    Bands here_, next_;
};

} // namespace

void fill_bands(const ContourLayer& layer, std::span<const std::uint8_t> holes,
                std::span<const float> levels, const BandPiece& piece,
                const std::function<bool(int row)>& go_on) {
    const auto differs = [&](float value) { return value != layer.values.front(); };
    if (layer.columns < 2 || layer.rows < 2 || levels.empty() ||
        std::ranges::none_of(layer.values, differs)) {
        return;
    }
    BandFill fill(layer, holes, levels, piece);
    for (int j = 0; j + 1 < layer.rows && go_on(j); ++j) {
        fill.fill_row(j);
    }
}

} // namespace plot

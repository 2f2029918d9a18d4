// The bands between contour lines as filled polygons.
#pragma once

#include "plot/contours.h"

#include <functional>

namespace plot {

// One convex piece of the band above the level with this index, its corners in order round it.
using BandPiece = std::function<void(std::size_t level, std::span<const Point> corners)>;

// The bands of a layer, row by row; `levels` ascend. Bands meet in the lines of Isoline2. Nothing
// below the first level, in quads that a hole is a corner of, and in a layer of one value. `go_on`
// is asked before each row.
void fill_bands(const ContourLayer& layer, std::span<const std::uint8_t> holes,
                std::span<const float> levels, const BandPiece& piece,
                const std::function<bool(int row)>& go_on);

} // namespace plot

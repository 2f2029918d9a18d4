#include "minitervex/grid.h"

namespace minitervex {

bool Grid::touches_outside(int cell) const {
    for (int axis = X; axis <= Z; ++axis)
        if (place(cell, axis) == 0 || !has_upper(cell, axis))
            return true;
    return false;
}

double Grid::depth(int cell) const {
    const int layer = place(cell, Z);
    double depth = size[Z][std::size_t(layer)] / 2;
    for (int k = layer + 1; k < count[Z]; ++k)
        depth += size[Z][std::size_t(k)];
    return depth;
}

Faces::Faces(const Grid& grid) {
    along.fill(Vector::Zero(grid.cells()));
}

Faces harmonic(const Grid& grid, const std::array<const Vector*, 3>& property) {
    Faces faces(grid);
    each_face(grid, [&](int axis, int lower, int upper) {
        const Vector& values = *property[std::size_t(axis)];
        if (values[lower] > 0 && values[upper] > 0) {
            const double resistance =
                grid.width(lower, axis) / values[lower] + grid.width(upper, axis) / values[upper];
            faces.at(axis, lower) = 2 * grid.area(lower, axis) / resistance;
        }
    });
    return faces;
}

} // namespace minitervex

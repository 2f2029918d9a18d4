// The grid in the simulator's own indices: I to the east, J to the north, K upward.
#pragma once

#include <Eigen/Core>

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <vector>

namespace minitervex {

using Vector = Eigen::VectorXd;

// The nearest single; beyond the range of a single, the largest one.
inline float single(double value) {
    constexpr double largest = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(value, -largest, largest));
}

enum Axis { X = 0, Y = 1, Z = 2 };

// A rectilinear grid. Indices here count from 0; a cell's number runs through I, then J, then K.
struct Grid {
    std::array<int, 3> count{1, 1, 1};
    std::array<std::vector<double>, 3> size; // of columns, rows and layers, in m

    int cells() const { return count[X] * count[Y] * count[Z]; }
    // What is added to a cell's number to get its neighbour's.
    int stride(int axis) const {
        return axis == X ? 1 : axis == Y ? count[X] : count[X] * count[Y];
    }
    int number(int i, int j, int k) const { return i + count[X] * (j + count[Y] * k); }
    // Place of a cell along an axis.
    int place(int cell, int axis) const { return cell / stride(axis) % count[std::size_t(axis)]; }
    bool has_upper(int cell, int axis) const {
        return place(cell, axis) + 1 < count[std::size_t(axis)];
    }
    double width(int cell, int axis) const {
        return size[std::size_t(axis)][std::size_t(place(cell, axis))];
    }
    // Of the face across `axis`, in m2.
    double area(int cell, int axis) const {
        return width(cell, (axis + 1) % 3) * width(cell, (axis + 2) % 3);
    }
    double volume(int cell) const { return width(cell, X) * width(cell, Y) * width(cell, Z); }
    bool touches_outside(int cell) const;
    // Depth of the cell's centre below the top of the model, in m.
    double depth(int cell) const;
};

// One value for each face between two cells: the value of a cell belongs to the face between it and
// the next cell along the axis. Those of the last cells are 0.
struct Faces {
    std::array<Vector, 3> along;

    Faces() = default;
    explicit Faces(const Grid& grid);
    double& at(int axis, int cell) { return along[std::size_t(axis)][cell]; }
    double at(int axis, int cell) const { return along[std::size_t(axis)][cell]; }
};

// Calls visit(axis, lower cell, upper cell) for each face between two cells.
template <class Visit>
void each_face(const Grid& grid, const Visit& visit) {
    for (int axis = X; axis <= Z; ++axis) {
        const int stride = grid.stride(axis);
        for (int k = 0; k < grid.count[Z] - (axis == Z ? 1 : 0); ++k)
            for (int j = 0; j < grid.count[Y] - (axis == Y ? 1 : 0); ++j)
                for (int i = 0; i < grid.count[X] - (axis == X ? 1 : 0); ++i) {
                    const int lower = grid.number(i, j, k);
                    visit(axis, lower, lower + stride);
                }
    }
}

// Calls visit(cell, neighbour, axis, face, sign) for the neighbours of one cell in the order of
// their numbers. `face` is the cell that holds the face's value; `sign` is +1 where a flux along
// the axis comes into the cell, -1 where it leaves.
template <class Visit>
void each_neighbour(const Grid& grid, int cell, const Visit& visit) {
    for (int axis = Z; axis >= X; --axis) {
        const int below = cell - grid.stride(axis);
        if (grid.place(cell, axis) > 0)
            visit(cell, below, axis, below, 1);
    }
    for (int axis = X; axis <= Z; ++axis)
        if (grid.has_upper(cell, axis))
            visit(cell, cell + grid.stride(axis), axis, cell, -1);
}

// Conductances between the centres of neighbours from a property of the cells (conductivity along
// each axis): the two halves in series (harmonic mean).
Faces harmonic(const Grid& grid, const std::array<const Vector*, 3>& property);

} // namespace minitervex

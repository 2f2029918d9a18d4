// The spatial views of the Result Viewer: one plane of a field with its coordinates and titles, as
// a chart takes it.
#pragma once

#include "results/field.h"
#include "results/resultfile.h"

#include <string>
#include <string_view>
#include <vector>

namespace results {

// Cells of the grid along a cut axis 'X', 'Y' or 'Z': the planes that there are across it.
int planes_across(const StreamGrid& grid, char cut);

// Positions of the cell centres along an axis, from the beginning of the first cell, in the order
// of `sizes` [m].
std::vector<float> cell_centres(std::span<const float> sizes);

struct Plane {
    std::string title, x_title, y_title, value_title;
    std::vector<float> x, y; // [m]
    Field values;            // one layer: row b belongs to y[b - 1], column a to x[a - 1]
};

// Plane `index` of `field`, which is in the viewer's order: layer `index` for the cut axis 'Z', row
// `index` from the south for 'Y', column `index` for 'X'; an index outside counts as the nearest
// one. Heights count from the base of the lowest layer. `label` is that of the parameter,
// `file_name` the shown file's without its folder.
Plane cut_plane(const Field& field, const Axes& axes, char cut, int index, std::string_view label,
                std::string_view file_name);

// The plane as a Result Viewer data file: "IRGRID" and the two counts, the x coordinates, the y
// coordinates, then one line for each row, all in the plain printed form.
std::string plane_data_file(const Plane& plane);

} // namespace results

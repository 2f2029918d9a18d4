// Labels on contour lines: where they stand and how they are turned.
#pragma once

#include "plot/contours.h"

#include <vector>

namespace plot {

// A label lies on the chord between two points of its line.
struct LabelPlace {
    Point from, to;
    std::size_t first_behind_from; // index of the first point of the line behind `from`
    std::size_t to_index;          // `to` is this point of the line
};

// A label of this length each `spacing` along the line; lengths in metres. None for a line that is
// shorter, and for lengths that are not above 0.
std::vector<LabelPlace> place_labels(std::span<const Point> line, double spacing, double length);

// The parts of the line that its labels leave.
std::vector<std::vector<Point>> line_around(std::span<const Point> line,
                                            std::span<const LabelPlace> labels);

// Angle of a chord in degrees, 0 to the right, counter-clockwise, from above -90 to 270; dy counts
// upward.
double chord_angle(double dx, double dy);

// Whether a label has to run against its chord: to have its top uphill (`uphill`), or else to be
// readable at this angle.
bool label_runs_backward(double angle, bool uphill, bool high_on_right);

} // namespace plot

// Contours of a layer drawn on any device.
#pragma once

#include "plot/plotpage.h"

namespace plot {

// `Draw_Contours` in its two parts: the bands, then lines with their labels, both by data.levels.
// Inactive cells are left out where the project says so. A status text and, for the lines, a meter
// tell how far they are; Escape ends each at once, with false.
bool fill_contours(PlotDevice& device, const PlotFrame& frame, const PlotData& data,
                   base::Interaction& user);
bool draw_contour_lines(PlotDevice& device, const PlotFrame& frame, const PlotData& data,
                        base::Interaction& user);

} // namespace plot

// The layer that the worksheet shows, as the drawing library takes it.
#pragma once

#include "plot/plotsource.h"

#include <optional>

namespace app {
struct Workspace;
}
namespace grid {
class Worksheet;
}

namespace ui {

// Grid, values of the array that the project contours, and zones: those of the session, as they are
// in memory, or the bare grid without one. FileFailure as plot::load_grid. The data keep a
// reference to the model's project.
plot::PlotData shown_layer(const app::Workspace& model, grid::Worksheet* worksheet);
// The array (from 1) that the project contours in this session.
int contoured_array(const core::Project& project, const grid::Worksheet& worksheet);
// Puts the values of another array (from 1) of the session in their place.
void show_array(plot::PlotData& data, const grid::Worksheet& worksheet, int k);

} // namespace ui

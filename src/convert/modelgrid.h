// The grid of the model that a result is converted for.
#pragma once

#include "base/failure.h"
#include "results/field.h"

#include <array>
#include <optional>
#include <string_view>
#include <vector>

namespace core {
class ModelFiles;
class Project;
} // namespace core

namespace convert {

// Cells of the model along the simulator's axes: in a cross-section its layers are the J, its rows
// the K.
results::StreamGrid model_grid(const core::Project& project);

// "The grid of the result file differs from the model." when one of # I0, # J0 and # K0 is there
// and has another count. The stream stands at its beginning afterwards.
std::optional<base::Refusal> grid_refusal(results::StreamReader& stream,
                                          const results::StreamGrid& grid, std::string_view title);

// Cell sizes [m] along the three axes.
using AxisSizes = std::array<std::vector<float>, 3>;

// Columns, rows and layers as on the worksheet: <base>.xy and <base>.l or, where the layers are
// given by their faces, the mean distance of top and bottom. FileFailure when a file is missing or
// has another grid than the project.
AxisSizes worksheet_sizes(const core::Project& project, core::ModelFiles& files);
// The same along the simulator's I, J and K.
AxisSizes simulator_sizes(const AxisSizes& worksheet, bool horizontal);
// Edges of the cells [m] along the simulator's axes, from 0, in double precision; `scales` stretch
// the axes.
std::array<std::vector<double>, 3> cell_edges(const AxisSizes& simulator,
                                              const std::array<double, 3>& scales);

} // namespace convert

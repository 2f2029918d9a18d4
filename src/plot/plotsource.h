// What a picture of the worksheet needs, read from a model.
#pragma once

#include "plot/plotpage.h"

#include <filesystem>

namespace core {
class ModelFiles;
}

namespace plot {

// One array of the item that is shown.
struct PlotParameter {
    int number;
    int zone_number; // of the item's zones; 0: it has none
    float default_value;
    int layer = 1, period = 1;
};

// The grid and the layer's flow boundaries. FileFailure when the grid file is missing or is not as
// large as the project says.
PlotData load_grid(const core::Project& project, core::ModelFiles& files, int layer);
// Values and zones of the parameter; an array without a file has its default everywhere.
void load_parameter(PlotData& data, core::ModelFiles& files, const PlotParameter& parameter);

// The levels of "Restore Defaults" for the values; none when all cells are holes.
ContourLevels restored_levels(const PlotData& data);

struct LevelsRead {
    ContourLevels levels;
    std::optional<base::Refusal> refusal;
};
// The model's own levels, <base>.ctr, or those of "Restore Defaults" for the values.
LevelsRead load_levels(const PlotData& data, const core::ModelFiles& files);
// A level file by its own name. FileFailure when it cannot be read.
LevelsRead load_level_file(const std::filesystem::path& file);

} // namespace plot

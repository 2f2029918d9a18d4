// Depth logs, <base>.cal: the parameters of a result down the columns of the Monitoring Points.
#pragma once

#include "results/monitoringcells.h"

#include <chrono>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace results {

// What a chart of a log can show, in the order of its menu: the axis label and the field of a row
// of <base>.cal, from 1.
struct LogParameter {
    const char* label;
    int field;
};
inline constexpr LogParameter log_parameters[] = {
    {"Temperature [°C]", 8}, {"Hydraulic Head [m]", 7}, {"Pressure [MPa]", 12},
    {"Density [kg/m3]", 6},  {"Porosity [-]", 5},       {"Permeability [m2]", 4},
    {"Vx [m/s]", 9},         {"Vy [m/s]", 10},          {"Vz [m/s]", 11},
    {"Solute [mmol/L]", 13}, {"Mineral [mol/m3]", 13}, // behind the solutes
};
inline constexpr int solute_index = 9, mineral_index = 10;
inline constexpr const char* altitude_title = "Altitude [m]";

// Writes <base>.cal of `target` from the result file: for each point with a cell a row for every
// layer, the lowest first. Values stand as in the result: velocities in m/s, fixed values with
// their sign. `now` is the time of the second line. A result of another grid is refused; where a
// block is missing or not whole, nothing is written. `target` belongs to the model or, for a result
// under another name, to that. Commits it.
Imported Import_Data_Monitor(const core::Project& project, const core::ModelFiles& files,
                             const std::vector<MonitoringCell>& points,
                             const std::filesystem::path& result, core::ModelFiles& target,
                             std::chrono::system_clock::time_point now, base::Interaction& user);

// One line of the chart of a log.
struct LogChart {
    std::string title; // "Monitoring Point: WELL"
    std::string label; // of the horizontal axis
    std::vector<float> values, altitudes;
};
// The log of a point in the bytes of a .cal. `index` is that of log_parameters, `number` the solute
// or mineral. As many rows are read as the first point has, and at most 24 fields of each.
// FileFailure when the point or the parameter is not there or a row ends early.
LogChart Get_Array(std::string_view bytes, const std::filesystem::path& file,
                   std::string_view point, int index, int number);

} // namespace results

// Wells as the simulator sees them: gathered from the arrays of rates and temperatures.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace core {
class ModelFiles;
class Project;
} // namespace core

namespace input {

inline constexpr int MaxWells = 100;

// Simulator indices: I = column; J and K count from the far end of the grid (see SimulatorGrid).
struct WellEntry {
    float rate = 0;        // m3/s, negative for discharge
    float temperature = 0; // degrees Celsius
    std::int16_t I = 0, J = 0, K = 0;
};

struct WellTable {
    // All wells over all periods, by K, then J, then I.
    std::vector<WellEntry> master;
    // Wells of the p-th active period at index p - 1, in the same order.
    std::vector<std::vector<WellEntry>> periods;
    bool too_many = false; // more than MaxWells in a period or in all
};

WellTable Get_Well_Data(const core::Project& project, core::ModelFiles& files);

} // namespace input

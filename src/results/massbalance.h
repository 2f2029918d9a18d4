// Mass balance of a boundary, <base>.fwp: water and substances that pass through the faces of
// chosen Monitoring Points from step to step.
#pragma once

#include "base/failure.h"
#include "results/monitoringcells.h"

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace results {

// Axis across the faces. Y and Z are the simulator's: in a cross-section Y runs along the sections
// and Z up the worksheet's rows.
enum class Direction : int { X = 0, Y = 1, Z = 2 };
// "X - axis"
std::string direction_text(Direction direction);

// A row of the table of the window: an active point with its cell. Coordinates in metres; Z is the
// height above the base of the lowest layer (in a cross-section Y the way along the sections).
struct BalanceRow {
    MonitoringCell point;
    float X = 0, Y = 0, Z = 0;
    bool has_file = false; // its monitoring file exists
};
std::vector<BalanceRow> Grid_Parameters_Load(const core::Project& project,
                                             const core::ModelFiles& files,
                                             const std::vector<MonitoringCell>& points);

// Names of the substances that the model transports: "H+" and the species of its chemistry, then
// "Tracer 1" and so on. Chemistry takes them from the result or input file.
std::vector<std::string> balance_substances(const core::Project& project,
                                            const core::ModelFiles& files, base::Interaction& user);

// Why the import does not start: no direction, no point chosen, no file of a chosen point. `chosen`
// are slots.
std::optional<base::Refusal> import_refusal(const std::optional<Direction>& direction,
                                            const std::vector<int>& chosen,
                                            const std::vector<BalanceRow>& table);

// The content of a .fwp. Values of a step: time [days], length of the step [days], q [m3], then q
// times the concentration of each substance, summed over the points.
struct MassBalance {
    std::string project;             // file name without extension
    std::vector<std::string> points; // names
    Direction direction = Direction::X;
    std::vector<std::string> substances;
    std::vector<double> values; // steps by 3 + substances

    std::size_t width() const { return 3 + substances.size(); }
    std::size_t steps() const { return values.size() / width(); }
    // "Water" and the substances, as the window lists them.
    std::vector<std::string> parameters() const;

    std::string bytes() const;
};

// Sums the monitoring files of the chosen slots and writes <base>.fwp. Step n is record n of each
// file, as many as the first one has; velocities are metres a year of 365.25 days. Commits it.
Imported Import_Mass_Balance_Boundary(const core::Project& project, core::ModelFiles& files,
                                      const std::vector<BalanceRow>& table,
                                      const std::vector<int>& chosen, Direction direction,
                                      base::Interaction& user);

// Reads a .fwp. FileFailure when the third line has no direction or a step is not whole.
MassBalance Get_Existing_Data(std::string_view bytes, const std::filesystem::path& file);

// "[m³/day]" for water, "[mmol/L]" and "[mol]" for a substance.
std::vector<std::string> balance_modes(std::string_view parameter);
// Why the graph is not shown: no parameter of the file, no mode of the parameter.
std::optional<base::Refusal> graph_refusal(const MassBalance& balance, std::string_view parameter,
                                           std::string_view mode);

struct BalanceChart {
    std::string title; // "Mass Balance in direction of X - axis"
    std::vector<double> times, values;
};
inline constexpr const char* balance_caption = "Mass Balance Boundary";
inline constexpr const char* balance_x_title = "Time [days]";
// The graph of a parameter: water as q / dt, a substance as its column or that over q (0 where
// nothing flows).
BalanceChart Get_MB_Array(const MassBalance& balance, std::string_view parameter,
                          std::string_view mode);

} // namespace results

// The cells of the Monitoring Points and the names under which the simulator writes their series.
#pragma once

#include "grid/griddefinition.h"
#include "grid/monitoring.h"

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace base {
class Interaction;
}
namespace core {
class ModelFiles;
class Project;
} // namespace core

namespace results {

// The file part of the point with that number: 7 gives "700", 42 "420" and 100 "100". The points 1,
// 10 and 100 share one name, as do 2 and 20 and so on.
std::string file_part(int number);

struct MonitoringCell {
    int slot = 1; // from 1
    grid::Bore bore;
    int column = 0, row = 0, layer = 0; // of the worksheet; 0 when the point has no cell
    std::string file_part = "-";        // "-" for an inactive point

    bool has_cell() const { return column > 0; }
};

struct MonitoringCells {
    std::vector<MonitoringCell> slots; // all of the list, slot n at index n - 1
    std::vector<int> outside;          // slots of active points outside the grid; they count as off
};

// Places the points as the simulator's input does. A point whose x or y is 0 gets no cell. Files
// are numbered by rank among the active points, because the simulator knows no others.
MonitoringCells place_points(const grid::MonitoringList& list, const grid::GridFile& grid,
                             const grid::GridPosition& position);
// The points of a model. FileFailure without a grid file that fits the project.
MonitoringCells locate_points(const core::Project& project, const core::ModelFiles& files);

// locate_points, then tells about each point outside the grid and switches it off in <base>.pol.
// Writes only when there is such a point; commits nothing.
MonitoringCells Calculate_Monitoring(const core::Project& project, core::ModelFiles& files,
                                     base::Interaction& user);

// The model's grid; FileFailure when the file is missing or has another size than the project.
grid::GridFile grid_of_project(const core::Project& project, const core::ModelFiles& files);
// Thicknesses [m] of the layers (cross-section: of the sections) in <base>.l, layer 1 first.
// FileFailure when there are not as many as the project has.
std::vector<float> Layerdicke(const core::Project& project, const core::ModelFiles& files);
// Heights [m] of the cell centres above the base of the lowest cell. Index 0 is the highest one, in
// `sizes` as in the result.
std::vector<float> centre_altitudes(std::span<const float> sizes);

// Title of the boxes that end an import.
inline constexpr const char* import_title = "Import Data";

enum class Imported {
    done,
    refused, // `table` gave nothing and has told why
    failed,  // a file could not be read or written, which the user has been told
};
// Writes what `table` gives to <base> and `extension` (".cal") and ends with the box that tells how
// it went. `procedure` names the import where it fails. Commits what was written.
Imported import_table(std::string_view procedure, core::ModelFiles& files,
                      std::string_view extension,
                      const std::function<std::optional<std::string>()>& table,
                      base::Interaction& user);

} // namespace results

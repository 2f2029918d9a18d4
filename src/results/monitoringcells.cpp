#include "results/monitoringcells.h"

#include "base/failure.h"
#include "base/interaction.h"
#include "core/modelfiles.h"
#include "core/project.h"
#include "report/attempt.h"

#include <fmt/format.h>

namespace results {

namespace {

// The cell of an active point; false when it lies outside the grid.
bool place(MonitoringCell& point, const grid::GridFile& grid, const grid::GridPosition& position) {
    const grid::Bore& bore = point.bore;
    if (bore.X == 0 || bore.Y == 0) {
        return true;
    }
    const auto cell = grid::find_cell(grid, position, bore.X, bore.Y);
    if (cell) {
        point.column = cell->column;
        point.row = cell->row;
        point.layer = bore.Layer;
    }
    return cell.has_value();
}

void number_files(std::vector<MonitoringCell>& slots) {
    int rank = 0;
    for (MonitoringCell& point : slots) {
        if (point.bore.Active) {
            point.file_part = file_part(++rank);
        }
    }
}

} // namespace

std::string file_part(int number) {
    return fmt::format("{}{}", number, number < 10 ? "00" : number < 100 ? "0" : "");
}

MonitoringCells place_points(const grid::MonitoringList& list, const grid::GridFile& grid,
                             const grid::GridPosition& position) {
    MonitoringCells cells;
    for (const grid::Bore& bore : list.bores) {
        MonitoringCell point;
        point.slot = static_cast<int>(cells.slots.size()) + 1;
        point.bore = bore;
        if (bore.Active && !place(point, grid, position)) {
            cells.outside.push_back(point.slot);
            point.bore.Active = false;
        }
        cells.slots.push_back(std::move(point));
    }
    number_files(cells.slots);
    return cells;
}

MonitoringCells locate_points(const core::Project& project, const core::ModelFiles& files) {
    return place_points(grid::Read_Monitoring_Points(files), grid_of_project(project, files),
                        grid::GridPosition(project));
}

MonitoringCells Calculate_Monitoring(const core::Project& project, core::ModelFiles& files,
                                     base::Interaction& user) {
    MonitoringCells cells = locate_points(project, files);
    if (cells.outside.empty()) {
        return cells;
    }
    grid::MonitoringList list = grid::Read_Monitoring_Points(files);
    for (const int slot : cells.outside) {
        user.message(
            base::Icon::warning, "Message",
            fmt::format("Monitoring Point {} not in Grid area. Will be shut to non-active.", slot));
        list.bores[static_cast<std::size_t>(slot - 1)].Active = false;
    }
    grid::Write_Monitoring_Points(list, files);
    return cells;
}

grid::GridFile grid_of_project(const core::Project& project, const core::ModelFiles& files) {
    auto grid = grid::GridFile::load(files);
    if (!grid) {
        throw base::FileFailure("the grid file is missing", files.name_of(".xy"));
    }
    if (grid->NX != project.NX() || grid->NY != project.NY()) {
        throw base::FileFailure(
            fmt::format("has {} columns and {} rows, where the project has {} and {}", grid->NX,
                        grid->NY, project.NX(), project.NY()),
            files.name_of(".xy"));
    }
    return *std::move(grid);
}

std::vector<float> Layerdicke(const core::Project& project, const core::ModelFiles& files) {
    const auto file = grid::LayerFile::load(files, project.NZ());
    if (!file) {
        throw base::FileFailure("has no layer data for the grid", files.name_of(".l"));
    }
    std::vector<float> thicknesses;
    for (const grid::LayerFile::Layer& layer : file->layers) {
        thicknesses.push_back(layer.thickness);
    }
    return thicknesses;
}

std::vector<float> centre_altitudes(std::span<const float> sizes) {
    std::vector<float> altitudes(sizes.size());
    double base = 0;
    for (std::size_t i = sizes.size(); i > 0; --i) {
        const double size = sizes[i - 1];
        altitudes[i - 1] = static_cast<float>(base + size / 2);
        base += size;
    }
    return altitudes;
}

Imported import_table(std::string_view procedure, core::ModelFiles& files,
                      std::string_view extension,
                      const std::function<std::optional<std::string>()>& table,
                      base::Interaction& user) {
    bool refused = false;
    const report::Outcome outcome = report::attempt(user, procedure, [&] {
        const std::optional<std::string> bytes = table();
        refused = !bytes;
        if (bytes) {
            files.write(extension, *bytes);
            files.commit(); // the box must not tell of a file that then cannot take its place
        }
    });
    if (outcome != report::Outcome::done) {
        user.message(base::Icon::warning, import_title,
                     fmt::format("Error occured -> {}{} not complete.", files.base(), extension));
        return Imported::failed;
    }
    if (refused) {
        return Imported::refused;
    }
    user.message(base::Icon::information, import_title,
                 fmt::format("File {}{} sucessfully written.", files.base(), extension));
    return Imported::done;
}

} // namespace results

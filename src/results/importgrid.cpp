#include "results/importparts.h"

#include "grid/griddefinition.h"
#include "grid/monitoring.h"
#include "input/timeblocks.h"

#include <fmt/format.h>

#include <algorithm>

namespace results {

namespace {

// Sizes in the order of the stream; 1 m where it has none.
std::vector<float> sizes_of(ImportedStream& stream, std::string_view keyword, int count) {
    auto sizes = stream.values(keyword, static_cast<std::uint64_t>(count));
    if (sizes.empty()) {
        sizes.assign(static_cast<std::size_t>(count), 1);
    }
    for (const float size : sizes) {
        if (!(size > 0)) {
            stream.fail(fmt::format("# {} holds the size {}, where a positive one was expected",
                                    keyword, size));
        }
    }
    return sizes;
}

// Types of the layers of a horizontal model from the simulator's numbers of the unconfined ones.
void set_types(ModelImport& import, grid::LayerFile& layers) {
    const int count = std::clamp(import.stream.integer("NFREE", 0), 0, input::vector_size);
    const auto numbers = import.stream.values("KFREE", static_cast<std::uint64_t>(count));
    for (const float number : numbers) {
        if (number >= 1 && number <= static_cast<float>(import.grid.K0())) {
            const int layer = import.grid.cell({1, 1, static_cast<int>(number)}).layer;
            layers.layers[static_cast<std::size_t>(layer - 1)].type = 1;
        }
    }
}

// Upper left corner at the left edge and at the height of all rows.
void set_place(core::Project& project, const grid::GridFile& grid) {
    const auto edges = grid::Build_Cell_Coordinates(grid);
    const auto height = static_cast<float>(edges.y_edges.back());
    project.set_single("GRIDPOSITION", "LEFT", 0);
    project.set_single("GRIDPOSITION", "TOP", height);
    project.set_integer("GRIDPOSITION", "MOVED", -1);
    grid::set_sheet(project, edges.x_edges.back(), edges.y_edges.back());
}

} // namespace

void Set_Grid(ModelImport& import) {
    const bool horizontal = import.grid.horizontal();
    grid::GridFile grid;
    grid.NX = import.project.NX();
    grid.NY = import.project.NY();
    grid.NZ = import.project.NZ();
    grid.Column_Width = sizes_of(import.stream, "DELX", grid.NX);
    grid.Row_Height = sizes_of(import.stream, horizontal ? "DELY" : "DELZ", grid.NY);
    std::ranges::reverse(grid.Row_Height);
    auto thicknesses = sizes_of(import.stream, horizontal ? "DELZ" : "DELY", grid.NZ);
    grid::LayerFile layers = grid::LayerFile::defaults(grid.NZ);
    if (horizontal) {
        std::ranges::reverse(thicknesses);
        set_types(import, layers);
    }
    for (std::size_t i = 0; i < thicknesses.size(); ++i) {
        layers.layers[i].thickness = thicknesses[i];
    }
    grid::Save_Grid_File(grid, import.project, import.files);
    layers.save(import.files);
    core::ModelFlags& flags = import.project.flags;
    flags.set(0, 0, 1);
    flags.mark_defined(1, 2);
    flags.mark_defined(1, 3);
    flags.mark_defined(1, 6);
    set_place(import.project, grid);
}

namespace {

struct PointCells {
    std::vector<float> I, J, K;
};

bool inside(float number, int count) {
    return number >= 1 && number <= static_cast<float>(count);
}

} // namespace

void Create_Monitors(ModelImport& import) {
    ImportedStream& stream = import.stream;
    constexpr std::uint64_t places = grid::MonitoringList::slot_count;
    const PointCells cells{stream.values("PMONIX", places), stream.values("PMONIY", places),
                           stream.values("PMONIZ", places)};
    grid::MonitoringList list;
    const auto edges = grid::Build_Cell_Coordinates(*grid::GridFile::load(import.files));
    const bool whole = !cells.I.empty() && !cells.J.empty() && !cells.K.empty();
    std::size_t slot = 0;
    for (std::size_t n = 0; whole && n < places; ++n) {
        if (!inside(cells.I[n], import.grid.I0()) || !inside(cells.J[n], import.grid.J0()) ||
            !inside(cells.K[n], import.grid.K0())) {
            continue;
        }
        const auto cell =
            import.grid.cell({static_cast<int>(cells.I[n]), static_cast<int>(cells.J[n]),
                              static_cast<int>(cells.K[n])});
        grid::Bore& bore = list.bores[slot++];
        bore.Name = fmt::format("P{}", slot);
        bore.Active = true;
        bore.X = static_cast<float>(edges.x_centres[static_cast<std::size_t>(cell.column - 1)]);
        bore.Y = static_cast<float>(edges.y_edges.back() -
                                    edges.y_centres[static_cast<std::size_t>(cell.row - 1)]);
        bore.Layer = static_cast<std::int16_t>(cell.layer);
    }
    grid::Write_Monitoring_Points(list, import.files);
}

} // namespace results

#include "convert/modelgrid.h"

#include "core/arraystore.h"
#include "core/modelfiles.h"
#include "core/project.h"
#include "input/gridblocks.h"
#include "input/simulatorfield.h"
#include "results/monitoringcells.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace convert {

namespace {

// As the input file has it: one sum in single precision, from the last row on.
float layer_thickness(const core::ArrayStore& store, int layer) {
    core::LayerValues top = store.layer_values(input::arrays::top.number);
    core::LayerValues bottom = store.layer_values(input::arrays::bot.number);
    store.read_array(input::arrays::top.number, 1, layer, top, 0);
    store.read_array(input::arrays::bot.number, 1, layer, bottom, 0);
    return input::mean_thickness(top, bottom, store.NX());
}

std::vector<float> thicknesses(const core::Project& project, core::ModelFiles& files) {
    if (project.flags.layers_by_thickness()) {
        return results::Layerdicke(project, files);
    }
    const core::ArrayStore store(files, project);
    std::vector<float> sizes;
    for (int layer = 1; layer <= project.NZ(); ++layer) {
        sizes.push_back(layer_thickness(store, layer));
    }
    return sizes;
}

} // namespace

results::StreamGrid model_grid(const core::Project& project) {
    const input::SimulatorGrid grid(project);
    return {grid.I0(), grid.J0(), grid.K0()};
}

std::optional<base::Refusal> grid_refusal(results::StreamReader& stream,
                                          const results::StreamGrid& grid, std::string_view title) {
    struct Axis {
        const char* key;
        int count;
    };
    bool differs = false;
    for (const Axis& axis : {Axis{"# I0", grid.I0}, Axis{"# J0", grid.J0}, Axis{"# K0", grid.K0}}) {
        stream.rewind();
        differs =
            differs || (stream.JumpToPos(axis.key) && stream.next_line_int(axis.key) != axis.count);
    }
    stream.rewind();
    if (!differs) {
        return std::nullopt;
    }
    return base::Refusal{std::string(title), "The grid of the result file differs from the model."};
}

AxisSizes worksheet_sizes(const core::Project& project, core::ModelFiles& files) {
    grid::GridFile grid = results::grid_of_project(project, files);
    return {std::move(grid.Column_Width), std::move(grid.Row_Height), thicknesses(project, files)};
}

AxisSizes simulator_sizes(const AxisSizes& worksheet, bool horizontal) {
    AxisSizes sizes = worksheet;
    std::ranges::reverse(sizes[1]);
    if (horizontal) {
        std::ranges::reverse(sizes[2]);
    } else {
        std::swap(sizes[1], sizes[2]);
    }
    return sizes;
}

std::array<std::vector<double>, 3> cell_edges(const AxisSizes& simulator,
                                              const std::array<double, 3>& scales) {
    std::array<std::vector<double>, 3> edges;
    for (std::size_t axis = 0; axis < edges.size(); ++axis) {
        double edge = 0;
        edges[axis].push_back(0);
        for (const float size : simulator[axis]) {
            edge += double{size};
            edges[axis].push_back(edge * scales[axis]);
        }
    }
    return edges;
}

} // namespace convert

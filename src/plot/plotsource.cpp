#include "plot/plotsource.h"

#include "base/textfile.h"
#include "core/arraystore.h"
#include "core/modelfiles.h"
#include "core/project.h"

#include <fmt/format.h>

#include <algorithm>

namespace plot {

namespace {

constexpr int flow_boundaries = 5;

core::LayerValues layer_values(const core::ArrayStore& store, const PlotParameter& parameter) {
    core::LayerValues values = store.layer_values(parameter.number);
    const int layer = std::min(parameter.layer, store.layers(parameter.number));
    store.layer_reader_if(parameter.number, parameter.period, parameter.default_value)
        .read(layer, values);
    return values;
}

LevelsRead levels_read(std::string_view bytes, const std::filesystem::path& file) {
    if (auto levels = levels_from_bytes(bytes)) {
        return {*std::move(levels), std::nullopt};
    }
    return {{}, no_contour_file(file)};
}

} // namespace

PlotData load_grid(const core::Project& project, core::ModelFiles& files, int layer) {
    const auto grid = grid::GridFile::load(files);
    if (!grid || grid->NX != project.NX() || grid->NY != project.NY()) {
        throw base::FileFailure(fmt::format("is no grid of {} columns and {} rows, as the project "
                                            "file has it",
                                            project.NX(), project.NY()),
                                files.name_of(".xy"));
    }
    PlotData data{project, grid::Build_Cell_Coordinates(*grid), {}, {}, {}, {}, {}, {}};
    const core::ArrayStore store(files, project);
    if (store.exists(flow_boundaries)) {
        data.boundary = layer_values(store, {flow_boundaries, 0, 1, layer, 1});
    }
    return data;
}

void load_parameter(PlotData& data, core::ModelFiles& files, const PlotParameter& parameter) {
    const core::ArrayStore store(files, data.project);
    data.values = layer_values(store, parameter);
    if (parameter.zone_number > 0) {
        const int layers = store.layers(parameter.number);
        data.zones = core::ZoneFile(files, layers)
                         .read_zones(parameter.period, std::min(parameter.layer, layers),
                                     parameter.zone_number);
    }
}

ContourLevels restored_levels(const PlotData& data) {
    const bool ignore = data.project.integer("GRID_APPEARANCE", "IGNORE_INACTIVE") != 0;
    const std::vector<std::uint8_t> holes = find_holes(data.values, data.hole_rule(ignore));
    std::optional<float> least, largest;
    for (std::size_t n = 0; n < holes.size(); ++n) {
        if (holes[n] == 0) {
            least = std::min(least.value_or(data.values[n]), data.values[n]);
            largest = std::max(largest.value_or(data.values[n]), data.values[n]);
        }
    }
    if (!least) {
        return {};
    }
    return default_levels(*least, *largest, data.cells.x_edges.back(), data.cells.y_edges.back(),
                          data.project);
}

LevelsRead load_levels(const PlotData& data, const core::ModelFiles& files) {
    if (const auto bytes = files.read_if(".ctr")) {
        return levels_read(*bytes, files.name_of(".ctr"));
    }
    return {restored_levels(data), std::nullopt};
}

LevelsRead load_level_file(const std::filesystem::path& file) {
    return levels_read(base::read_bytes(file), file);
}

} // namespace plot

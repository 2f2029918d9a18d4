#include "grid/refinement.h"

#include "base/failure.h"
#include "core/extensions.h"
#include "core/modelfiles.h"
#include "core/project.h"
#include "grid/griddefinition.h"
#include "grid/monitoring.h"
#include "grid/worksheetfiles.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>

namespace grid {

namespace {

constexpr std::int64_t cells_of_a_megabyte = 2000;
constexpr int first_scratch = 199, last_scratch = 200;
constexpr int passed_over[] = {42, 44};
constexpr int any_zones = 1501; // no item of the worksheet has a single layer

std::vector<float> divided(const std::vector<float>& sizes, const std::vector<int>& factors) {
    std::vector<float> result;
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        const auto factor = static_cast<float>(factors[i]);
        result.insert(result.end(), static_cast<std::size_t>(factors[i]), sizes[i] / factor);
    }
    return result;
}

void refine_layers(const std::vector<int>& factors, core::ModelFiles& files) {
    const int nz = static_cast<int>(factors.size());
    const LayerFile old = LayerFile::load(files, nz).value_or(LayerFile::defaults(nz));
    LayerFile fresh;
    std::ranges::copy(old.closing, fresh.closing);
    for (std::size_t i = 0; i < factors.size(); ++i) {
        LayerFile::Layer layer = old.layers[i];
        layer.thickness /= static_cast<float>(factors[i]);
        fresh.layers.insert(fresh.layers.end(), static_cast<std::size_t>(factors[i]), layer);
    }
    fresh.save(files);
}

void refine_points(const std::vector<int>& factors, core::ModelFiles& files) {
    if (!files.has(".pol")) {
        return;
    }
    MonitoringList list = Read_Monitoring_Points(files);
    for (Bore& bore : list.bores) {
        if (bore.Layer >= 1 && bore.Layer <= static_cast<int>(factors.size())) {
            bore.Layer = static_cast<std::int16_t>(middle_of_layer(bore.Layer, factors));
        }
    }
    Write_Monitoring_Points(list, files);
}

GridFile refined_grid(const core::Division& division, const GridFile& old) {
    GridFile fresh;
    fresh.NX = core::divided_count(division.columns);
    fresh.NY = core::divided_count(division.rows);
    fresh.NZ = core::divided_count(division.layers);
    fresh.Column_Width = divided(old.Column_Width, division.columns);
    fresh.Row_Height = divided(old.Row_Height, division.rows);
    return fresh;
}

void Transfer(int number, const core::Division& division, core::ModelFiles& files) {
    const bool is_scratch = number >= first_scratch && number <= last_scratch;
    if (is_scratch || core::file_ext(number).empty() ||
        std::ranges::find(passed_over, number) != std::end(passed_over)) {
        return;
    }
    const auto file = files.name_of(core::file_ext(number));
    if (!core::is_primary(number)) {
        core::refine_zone_file(number, file, division, files);
        return;
    }
    core::refine_array_file(number, file, division, files);
    // The copy of a worksheet session that was cut off has to fit once it is put back.
    core::refine_array_file(number, scratch_path(files, backup_extension(number)), division, files);
}

bool transfer_all(const core::Division& division, core::ModelFiles& files,
                  base::Interaction& user) {
    user.status("Preparing data for the new grid; Please Wait...");
    for (int number = 1; number <= core::parameter_count; ++number) {
        Transfer(number, division, files);
        if (user.show_meter(100 * number / core::parameter_count)) {
            return false;
        }
    }
    core::refine_zone_file(any_zones, scratch_path(files, zone_scratch), division, files);
    return true;
}

GridFile grid_to_divide(const core::Division& division, const core::Project& project,
                        const core::ModelFiles& files) {
    auto grid = GridFile::load(files);
    if (!grid) {
        throw base::FileFailure("does not exist", files.name_of(".xy"));
    }
    const bool fits = static_cast<int>(division.columns.size()) == grid->NX &&
                      static_cast<int>(division.rows.size()) == grid->NY &&
                      static_cast<int>(division.layers.size()) == project.NZ();
    if (!fits) {
        throw base::FileFailure(
            fmt::format("has {} columns and {} rows, where {} and {} were expected", grid->NX,
                        grid->NY, division.columns.size(), division.rows.size()),
            files.name_of(".xy"));
    }
    return *std::move(grid);
}

bool is_accepted(const core::Division& division, base::Interaction& user) {
    if (const auto refusal = refinement_refusal(division)) {
        base::show(user, *refusal);
        return false;
    }
    return user.ask(refinement_title, refinement_question(division), base::Buttons::yes_no) ==
           base::Answer::yes;
}

} // namespace

core::Division no_division(const GridFile& grid, int layers) {
    const auto ones = [](int count) {
        return std::vector<int>(static_cast<std::size_t>(std::max(count, 0)), 1);
    };
    return {ones(grid.NX), ones(grid.NY), ones(layers)};
}

bool divides(const core::Division& division) {
    const auto above_one = [](int factor) { return factor > 1; };
    return std::ranges::any_of(division.columns, above_one) ||
           std::ranges::any_of(division.rows, above_one) ||
           std::ranges::any_of(division.layers, above_one);
}

std::optional<base::Refusal> refinement_refusal(const core::Division& division) {
    const std::int64_t cells =
        std::int64_t{core::divided_count(division.columns)} * core::divided_count(division.rows);
    if (cells > max_refined_cells) {
        return base::Refusal{base::desk_title,
                             "The total number of cells will exceed 250000. The grid refinement "
                             "cannot be processed.",
                             base::Icon::critical};
    }
    if (core::divided_count(division.layers) > max_refined_layers) {
        return base::Refusal{base::desk_title,
                             "The total number of layers of the refined grid exceeds 80. The grid "
                             "refinement cannot be processed.",
                             base::Icon::critical};
    }
    return std::nullopt;
}

std::string refinement_question(const core::Division& division) {
    const std::int64_t cells = std::int64_t{core::divided_count(division.columns)} *
                               core::divided_count(division.rows) *
                               core::divided_count(division.layers);
    return fmt::format("After the grid refinement, your model will have {} cells. You will need "
                       "about {} Megabytes of RAM for a simulation. Continue anyway?",
                       cells, cells / cells_of_a_megabyte);
}

int middle_of_layer(int layer, const std::vector<int>& factors) {
    const auto before = factors.begin() + (layer - 1);
    return core::divided_count({factors.begin(), before}) + (*before + 1) / 2;
}

bool Do_Grid_Refinement(const core::Division& division, core::Project& project,
                        core::ModelFiles& files, base::Interaction& user, bool showPanel) {
    if (!divides(division)) {
        return true;
    }
    const GridFile old = grid_to_divide(division, project, files);
    if (showPanel && !is_accepted(division, user)) {
        return false;
    }
    refine_layers(division.layers, files);
    refine_points(division.layers, files);
    if (!transfer_all(division, files, user)) {
        return false;
    }
    Save_Grid_File(refined_grid(division, old), project, files);
    project.flags.mark_edited();
    project.Write_Project_File(files);
    return true;
}

} // namespace grid

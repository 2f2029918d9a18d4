// Text forms of the worksheet: zones, rules of a search, arrays and grid files.
#include "checks.h"
#include "targets.h"

#include "core/project.h"
#include "grid/arrayexchange.h"
#include "grid/griddefinition.h"
#include "grid/searchmodify.h"
#include "grid/zones.h"

#include <algorithm>
#include <array>

namespace fuzz {

namespace {

constexpr int columns = 7, rows = 5;
constexpr std::size_t cells = std::size_t{columns} * rows;

grid::GridFile small_mesh() {
    return {columns, rows, 1, {1, 2, 3, 4, 5, 6, 7}, {0.5F, 1, 2, 10, 100}};
}

// Zones as they are after their coordinates were rounded to the digits of the file.
std::string rewritten_zones(std::string_view bytes) {
    const std::string once = grid::zones_text(grid::zones_from_text(bytes, "m.zon").zones);
    return grid::zones_text(grid::zones_from_text(once, "m.zon").zones);
}

void require_same_cells(const core::Zone& zone) {
    const auto centres = grid::Build_Cell_Coordinates(small_mesh());
    std::vector<core::LayerValues> layer(1, core::LayerValues(cells));
    core::Zone marked = zone;
    marked.value = 1;
    const std::size_t count = grid::transfer_zone(marked, centres, layer);
    std::size_t cell = 0;
    for (const double y : centres.y_centres) {
        for (const double x : centres.x_centres) {
            require((layer[0][cell++] == 1) == grid::Zone_Contains(x, y, zone),
                    "a transfer and the point test differ");
        }
    }
    require(std::ranges::count(layer[0], 1.0F) == static_cast<std::ptrdiff_t>(count),
            "a transfer counts other cells than it sets");
}

void load(std::string_view bytes, grid::MatrixFile form) {
    const grid::GridFile mesh = small_mesh();
    const grid::GridPosition place{core::Project()};
    const auto rewritten = [&](std::string_view text, grid::MatrixFile as, grid::FirstCell first) {
        std::vector<float> layer(cells, 3);
        const auto refusal = grid::load_matrix(text, "m.dat", as, first, columns, rows, layer);
        require(!refusal || layer == std::vector<float>(cells, 3),
                "a refused file changes the layer");
        return grid::array_text(grid::ArrayForm::wrap, layer, mesh, place);
    };
    rewritten(bytes, form, {columns, 2});
    const std::string once = rewritten(bytes, form, {});
    require(once == rewritten(once, grid::MatrixFile::ascii, {}),
            "a written array is read otherwise");
}

} // namespace

void zon(std::string_view bytes) {
    require_stable(bytes, rewritten_zones);
    const grid::ZonesRead read = grid::zones_from_text(bytes, "m.zon");
    require(read.zones.size() <= core::max_zones, "too many zones");
    std::ranges::for_each(read.zones, require_same_cells);
}

void trs(std::string_view bytes) {
    require_stable(
        bytes, [](std::string_view b) { return grid::TraceRules::read(b, "m.trs").rules.bytes(); });
    const grid::TraceRules rules = grid::TraceRules::read(bytes, "m.trs").rules;
    std::array<float, 6> values = {-1E30F, -1, 0, 0, 1, 1E30F};
    constexpr std::array<float, 6> boundary = {1, -1, 1, 0, 2, 1};
    std::array<std::uint8_t, 6> matched{};
    grid::trace_cells(rules, values, boundary, matched);
    require(matched[3] == 0 && values[3] == 0, "an inactive cell is changed");
    for (const std::uint8_t row : matched) {
        require(row == 0 || rules.rows.at(row - std::size_t{1}).active, "a rule at rest matches");
    }
}

void arraytext(std::string_view bytes) {
    load(bytes, grid::MatrixFile::ascii);
}

void grd(std::string_view bytes) {
    load(bytes, grid::MatrixFile::grd);
}

} // namespace fuzz

// Periods, wells and monitoring points of the stream.

#include "minitervex/modelreader.h"

#include "base/numbertext.h"

#include <fmt/format.h>

#include <cmath>

namespace minitervex {

namespace {

constexpr int table = 100; // places of the tables of periods and of wells
constexpr double most_steps = 1E8;

// Cells of the wells by their numbers, from 1; -1 where the number has no cell.
std::vector<int> well_cells(const InputStream& input, const Grid& grid) {
    std::vector<int> cells(table + 1, -1);
    std::int64_t cell = 0;
    for (const Item& item : input.items("IWL", grid.cells())) {
        if (item.value != 0) {
            const int number = static_cast<int>(std::clamp(item.value, -1.0, table + 1.0));
            if (item.value < 1 || item.value > table || number != item.value || item.count != 1 ||
                cells[static_cast<std::size_t>(number)] >= 0)
                input.fail("IWL", fmt::format("\"{}\" is no well's number, or is there twice",
                                              base::value_text(item.value)));
            cells[static_cast<std::size_t>(number)] = static_cast<int>(cell);
        }
        cell += item.count;
    }
    return cells;
}

void require_counts(const InputStream& input, const Model& model) {
    const Vector counts = input.values("NWELAR", table);
    for (std::size_t p = 0; p < model.periods.size(); ++p) {
        const std::size_t wells = model.periods[p].wells.size();
        const double count = counts[static_cast<Eigen::Index>(p)];
        if (count != static_cast<double>(wells))
            input.fail("NWELAR", fmt::format("says {} wells in period {}, where # WELLAR has {}",
                                             base::value_text(count), p + 1, wells));
    }
}

void read_wells(const InputStream& input, Model& model) {
    const std::vector<int> cells = well_cells(input, model.grid);
    const Vector rates = input.values("WELLAR", table * table);
    if (!model.flow.active) {
        if (!rates.isZero(0))
            model.notes.emplace_back("wells are left out, since there is no flow");
        return;
    }
    const Vector temperatures = input.values("TCON", table * table);
    const Vector concentrations = input.values("SCON", table * table);
    for (std::size_t period = 0; period < table; ++period) {
        for (std::size_t well = 0; well < table; ++well) {
            const auto place = static_cast<Eigen::Index>(table * period + well);
            const double rate = rates[place];
            if (rate == 0 || period >= model.periods.size())
                continue;
            const int cell = cells[well + 1];
            if (cell < 0)
                input.fail("WELLAR", fmt::format("well {} is in no cell of # IWL", well + 1));
            const Vector own =
                concentrations.segment(static_cast<Eigen::Index>(table * well), model.substances);
            model.periods[period].wells.push_back(
                {cell, rate, temperatures[place], {own.begin(), own.end()}});
        }
    }
    require_counts(input, model);
}

} // namespace

void read_periods(const InputStream& input, Model& model) {
    const int count = input.integer("NPER", 1, table);
    const Vector ends = input.values("TMAXAR", table);
    const Vector steps = input.values("DELTAR", table);
    const Vector monitoring = input.values("PMONIFR", table);
    double begin = 0, all_steps = 0;
    for (int p = 0; p < count; ++p) {
        const double length = ends[p] - begin;
        if (!(length > 0))
            input.fail("TMAXAR", fmt::format("period {} has no length", p + 1));
        const double number = steps[p] > 0 ? std::max(1.0, std::round(length / steps[p])) : 1;
        all_steps += number;
        if (!(all_steps <= most_steps))
            input.fail("DELTAR", fmt::format("more than {} steps", base::value_text(most_steps)));
        const double every = std::clamp(std::round(monitoring[p]), 0.0, most_steps);
        model.periods.push_back({.end = ends[p],
                                 .step = length / number,
                                 .steps = static_cast<int>(number),
                                 .monitoring_every = static_cast<int>(every),
                                 .wells = {}});
        begin = ends[p];
    }
    read_wells(input, model);
}

void read_points(const InputStream& input, Model& model) {
    constexpr std::array<const char*, 3> blocks{"PMONIX", "PMONIY", "PMONIZ"};
    std::array<Vector, 3> places;
    for (std::size_t axis = X; axis <= Z; ++axis)
        places[axis] = input.values(blocks[axis], table);
    for (int n = 0; n < table; ++n) {
        if (places[X][n] == 0 || places[Y][n] == 0 || places[Z][n] == 0)
            continue;
        int cell = 0;
        for (std::size_t axis = X; axis <= Z; ++axis) {
            const double place = places[axis][n];
            if (!(place >= 1 && place <= model.grid.count[axis]))
                input.fail(blocks[axis], fmt::format("point {} lies outside the grid", n + 1));
            cell += (static_cast<int>(place) - 1) * model.grid.stride(static_cast<int>(axis));
        }
        model.points.push_back({static_cast<int>(model.points.size()) + 1, cell});
    }
}

} // namespace minitervex

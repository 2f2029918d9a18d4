#include "input/timeblocks.h"

#include "base/interaction.h"
#include "base/numbertext.h"
#include "core/modelfiles.h"
#include "core/project.h"
#include "grid/griddefinition.h"
#include "grid/monitoring.h"
#include "input/compact.h"
#include "input/creation.h"
#include "input/gridblocks.h"

#include <fmt/format.h>

#include <algorithm>
#include <functional>
#include <string>

namespace input {

ActivePeriods::ActivePeriods(const sim::PeriodTable& table) : unit(table.unit) {
    for (std::size_t row = 0; row < table.rows.size(); ++row) {
        const sim::Period& period = table.rows[row];
        monitoring_frequencies[row] = period.monitoring_frequency;
        if (!period.active) {
            continue;
        }
        if (const std::size_t place = periods.size(); place < row) {
            monitoring_frequencies[place] = period.monitoring_frequency;
            monitoring_frequencies[row] = 0;
        }
        periods.push_back(period);
        rows.push_back(static_cast<int>(row) + 1);
    }
}

void NPER(Creation& creation) {
    creation.periods = ActivePeriods(sim::PeriodTable::load(creation.files));
    creation.stream.tabbed_integer_line(static_cast<int>(creation.periods->periods.size()));
}

namespace {

// One value for each active period, "0.0 " at the other places.
void period_values(Creation& creation, const char* keyword,
                   const std::function<std::string(const sim::Period&)>& text) {
    creation.block(keyword, [&creation, &text] {
        if (!creation.periods) {
            return;
        }
        const auto& periods = creation.periods->periods;
        for (const sim::Period& period : periods) {
            creation.stream.put(completed(text(period), ".0"));
            creation.stream.put(" ");
        }
        for (std::size_t place = periods.size(); place < vector_size; ++place) {
            creation.stream.put("0.0 ");
        }
        creation.stream.end_line();
    });
}

double step_length(const sim::Period& period, double unit, const core::ModelFiles& files) {
    if (period.steps < 1) {
        throw base::FileFailure(fmt::format("holds a period of {} time steps", period.steps),
                                files.name_of(".trn"));
    }
    return period.length * unit / period.steps;
}

} // namespace

void Time_Parameter(Creation& creation) {
    if (creation.ended()) {
        return;
    }
    const double unit = creation.periods ? sim::seconds_of_unit(creation.periods->unit) : 0;
    if (creation.periods && unit == 0) {
        creation.end_with("Missing Data", "Please define first the time unit in: |Time|Periods");
    }
    period_values(creation, "DELTATMP", [](const sim::Period& period) {
        return base::value_text(period.temperature_shift);
    });
    double end = 0;
    period_values(creation, "TMAXAR", [&end, unit](const sim::Period& period) {
        end += period.length * unit;
        return base::value_text(end);
    });
    period_values(creation, "DELTAR", [&creation, unit](const sim::Period& period) {
        return base::value_text(step_length(period, unit, creation.files));
    });
}

void PMONIFR(Creation& creation) {
    if (!creation.periods) {
        return;
    }
    for (const float frequency : creation.periods->monitoring_frequencies) {
        creation.stream.put(base::value_text(frequency));
        creation.stream.put(" ");
    }
    creation.stream.end_line();
}

namespace {

// Cells of the active points, moved together; a point outside the grid keeps its place with zeros.
std::vector<SimulatorIndex> point_cells(Creation& creation) {
    const auto list = grid::Read_Monitoring_Points(creation.files);
    if (std::ranges::none_of(list.bores, &grid::Bore::Active)) {
        return {};
    }
    const grid::GridFile grid = grid_of_model(creation);
    const grid::GridPosition position(creation.project);
    std::vector<SimulatorIndex> cells;
    for (std::size_t slot = 0; slot < list.bores.size(); ++slot) {
        const grid::Bore& bore = list.bores[slot];
        if (!bore.Active) {
            continue;
        }
        if (const auto cell = grid::find_cell(grid, position, bore.X, bore.Y)) {
            cells.push_back(creation.grid.index({cell->column, cell->row, bore.Layer}));
            continue;
        }
        cells.push_back({0, 0, 0});
        creation.user.message(
            base::Icon::warning, "Message",
            fmt::format("Monitoring Point {} not in Grid area. Will be shut to non-active.",
                        slot + 1));
    }
    return cells;
}

} // namespace

void Monitoring(Creation& creation) {
    std::vector<SimulatorIndex> cells;
    const bool found =
        creation.attempt("Monitoring", [&creation, &cells] { cells = point_cells(creation); });
    cells.resize(vector_size, {0, 0, 0});
    const auto indices = [&](const char* keyword, int SimulatorIndex::*index) {
        creation.block(keyword, [&creation, &cells, found, index] {
            if (!found) {
                return;
            }
            for (const SimulatorIndex& cell : cells) {
                creation.stream.put_integer(cell.*index);
            }
            creation.stream.end_line();
        });
    };
    indices("PMONIX", &SimulatorIndex::I);
    indices("PMONIY", &SimulatorIndex::J);
    indices("PMONIZ", &SimulatorIndex::K);
}

} // namespace input

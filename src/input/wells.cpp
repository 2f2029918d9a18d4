#include "input/wells.h"

#include "core/project.h"
#include "input/simulatorfield.h"
#include "input/timeblocks.h"
#include "sim/periods.h"

#include <algorithm>
#include <tuple>

namespace input {

namespace {

bool comes_before(const WellEntry& a, const WellEntry& b) {
    return std::tie(a.K, a.J, a.I) < std::tie(b.K, b.J, b.I);
}

WellEntry well_at(const ModelArrays& arrays, const SimulatorIndex& index, float rate, int period) {
    WellEntry well;
    well.rate = rate;
    well.I = static_cast<std::int16_t>(index.I);
    well.J = static_cast<std::int16_t>(index.J);
    well.K = static_cast<std::int16_t>(index.K);
    if (arrays.exists(arrays::well_temperature)) {
        const WorksheetCell cell = arrays.grid().cell(index);
        well.temperature = arrays.store()
                               .read_cell_value(arrays::well_temperature.number, period, cell.layer,
                                                cell.row, cell.column, 0)
                               .value;
    }
    return well;
}

// The wells of one period of the arrays, at most MaxWells and one more.
std::vector<WellEntry> wells_of_period(const ModelArrays& arrays, int period) {
    std::vector<WellEntry> wells;
    arrays.visit_rows(arrays::wel, period, [&](std::span<const float> rates, int J, int K) {
        for (std::size_t i = 0; i < rates.size() && wells.size() <= MaxWells; ++i) {
            if (rates[i] != 0) {
                const SimulatorIndex index{static_cast<int>(i) + 1, J, K};
                wells.push_back(well_at(arrays, index, rates[i], period));
            }
        }
    });
    std::ranges::sort(wells, comes_before);
    return wells;
}

void merge(std::vector<WellEntry>& master, const std::vector<WellEntry>& wells) {
    for (const WellEntry& well : wells) {
        const auto place = std::ranges::lower_bound(master, well, comes_before);
        if (place == master.end() || comes_before(well, *place)) {
            master.insert(place, well);
        }
    }
}

} // namespace

WellTable Get_Well_Data(const core::Project& project, core::ModelFiles& files) {
    WellTable table;
    const ModelArrays arrays(files, project);
    if (!arrays.is_defined(arrays::wel)) {
        return table;
    }
    if (arrays.has(arrays::wel)) {
        const ActivePeriods periods(sim::PeriodTable::load(files));
        for (const int row : periods.rows) {
            table.periods.push_back(wells_of_period(arrays, row));
            merge(table.master, table.periods.back());
            table.too_many = table.too_many || table.periods.back().size() > MaxWells;
        }
    }
    table.too_many = table.too_many || table.master.size() > MaxWells;
    return table;
}

} // namespace input

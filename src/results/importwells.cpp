#include "results/importparts.h"

#include "base/interaction.h"
#include "base/textfile.h"
#include "core/itemcells.h"
#include "core/modelfiles.h"
#include "input/simulatorfield.h"
#include "input/timeblocks.h"
#include "input/wells.h"
#include "sim/reinjection.h"
#include "sim/transport.h"

#include <algorithm>
#include <map>

namespace results {

namespace {

constexpr std::size_t places = input::vector_size;

struct Well {
    std::size_t number; // in the stream, from 1
    input::WorksheetCell cell;
};

// A value of each well in each period: wells fastest, a hundred of both.
using WellValues = std::vector<float>;

float value_of(const WellValues& values, const Well& well, std::size_t period) {
    return values.empty() ? 0 : values[(period - 1) * places + well.number - 1];
}

// Wells of # IWL that ever work, in the order of the grid; at most one more than there may be.
std::vector<Well> wells_of(ModelImport& import, const WellValues& rates) {
    std::vector<Well> wells;
    const Field numbers = import.stream.field("IWL", import.extents, import.user);
    const auto ever_works = [&](const Well& well) {
        for (std::size_t period = 1; period <= places; ++period) {
            if (value_of(rates, well, period) != 0) {
                return true;
            }
        }
        return false;
    };
    for (int K = 1; K <= numbers.nK(); ++K) {
        for (int J = 1; J <= numbers.nJ(); ++J) {
            int I = 0;
            for (const float number : numbers.row(K, J)) {
                ++I;
                if (!(number >= 1 && number <= static_cast<float>(places)) ||
                    wells.size() > input::MaxWells) {
                    continue;
                }
                const Well well{static_cast<std::size_t>(number), import.grid.cell({I, J, K})};
                if (ever_works(well)) {
                    wells.push_back(well);
                }
            }
        }
    }
    return wells;
}

using WellsByLayer = std::map<int, std::vector<const Well*>>;

WellsByLayer working_wells(const std::vector<Well>& wells, const WellValues& rates,
                           std::size_t period) {
    WellsByLayer by_layer;
    for (const Well& well : wells) {
        if (value_of(rates, well, period) != 0) {
            by_layer[well.cell.layer].push_back(&well);
        }
    }
    return by_layer;
}

// One period of an array that is 0 but at the wells that work.
void save_period(ModelImport& import, int number, std::size_t period, const WellsByLayer& by_layer,
                 const WellValues& values) {
    core::LayerValues cells(import.store.cells_of_layer());
    for (const auto& [layer, of_layer] : by_layer) {
        std::ranges::fill(cells, 0.0F);
        for (const Well* well : of_layer) {
            const auto row = static_cast<std::size_t>(well->cell.row - 1);
            cells[row * static_cast<std::size_t>(import.store.NX()) +
                  static_cast<std::size_t>(well->cell.column - 1)] =
                value_of(values, *well, period);
        }
        import.store.write_array(number, static_cast<int>(period), layer, cells);
    }
}

// Concentrations of the injected water: a hundred species of each well.
void save_concentrations(ModelImport& import, const std::vector<Well>& wells,
                         const WellValues& rates) {
    constexpr std::string_view none = "10000*0.0";
    const int species = sim::TracerTable::load(import.files).ActiveTracers();
    const bool given = import.transport() && species > 0 && import.stream.has("SCON") &&
                       base::trimmed(import.stream.line("SCON", 40)) != none;
    if (!given) {
        return;
    }
    const auto values = import.stream.values("SCON", places * places);
    const auto components =
        static_cast<std::size_t>(std::clamp(import.stream.integer("ANZCHEM", 0), 0, 95));
    sim::ReinjectionTable table;
    table.species = species;
    for (const Well& well : wells) {
        sim::ReinjectionTable::Row row{value_of(rates, well, 1), {}};
        for (std::size_t tracer = 0; tracer < static_cast<std::size_t>(species); ++tracer) {
            row.concentrations.push_back(values[(well.number - 1) * places + components + tracer]);
        }
        table.rows.push_back(std::move(row));
    }
    import.files.write(sim::reinjection_extension(import.project.flags), table.bytes());
    import.project.flags.mark_defined(10, 7);
}

} // namespace

void Save_Wells(ModelImport& import) {
    const WellValues rates = import.stream.values("WELLAR", places * places);
    const WellValues temperatures = import.stream.values("TCON", places * places);
    if (rates.empty() || !import.stream.has("IWL")) {
        return;
    }
    auto wells = wells_of(import, rates);
    if (wells.empty()) {
        return;
    }
    if (wells.size() > input::MaxWells) {
        import.user.message(base::Icon::warning, "Message",
                            "Too many wells defined (maximum 100).");
        wells.resize(input::MaxWells);
    }
    constexpr int rate = input::arrays::wel.number;
    constexpr int temperature = input::arrays::well_temperature.number;
    import.store.create_array_file(rate, 0);
    import.store.create_array_file(temperature, 0);
    const auto periods = static_cast<std::size_t>(
        std::clamp(import.stream.integer("NPER", 1), 1, input::vector_size));
    for (std::size_t period = 1; period <= periods; ++period) {
        const WellsByLayer by_layer = working_wells(wells, rates, period);
        save_period(import, rate, period, by_layer, rates);
        save_period(import, temperature, period, by_layer, temperatures);
    }
    core::mark_item_defined(import.project.flags, rate);
    save_concentrations(import, wells, rates);
}

} // namespace results

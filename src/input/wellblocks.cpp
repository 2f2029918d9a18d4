#include "input/wellblocks.h"

#include "base/interaction.h"
#include "core/modelfiles.h"
#include "core/project.h"
#include "input/compact.h"
#include "input/creation.h"
#include "sim/reinjection.h"

#include <fmt/format.h>

namespace input {

namespace {

constexpr const char* no_rates = "10000*0.";
constexpr const char* no_concentrations = "10000*0.0";

bool has_wells(const Creation& creation) {
    return creation.project.flags.is_defined(3, 2);
}

bool same_cell(const WellEntry& a, const WellEntry& b) {
    return a.I == b.I && a.J == b.J && a.K == b.K;
}

void put_counts(Creation& creation, const WellTable& wells) {
    for (std::size_t period = 0; period < vector_size; ++period) {
        creation.stream.put_integer(period < wells.periods.size()
                                        ? static_cast<std::int64_t>(wells.periods[period].size())
                                        : 0);
    }
    creation.stream.end_line();
}

} // namespace

void Set_NWELAR(Creation& creation) {
    if (!has_wells(creation)) {
        creation.stream.text_line("100*0");
        return;
    }
    creation.wells = Get_Well_Data(creation.project, creation.files);
    if (creation.wells->too_many) {
        creation.end_with("Message", "Too many wells defined (maximum 100).");
        return;
    }
    put_counts(creation, *creation.wells);
    if (creation.wells->master.empty()) {
        creation.project.flags.set(3, 2, 0);
    }
}

namespace {

// A value of each well of the master list in each period, 0 where the well rests. Wells fastest,
// both filled up to 100.
void Print_Well_Arrays(Creation& creation, float WellEntry::*value) {
    const WellTable& wells = *creation.wells;
    Runs runs = real_runs(creation.stream);
    for (const auto& period : wells.periods) {
        std::size_t next = 0;
        for (const WellEntry& well : wells.master) {
            const bool runs_now = next < period.size() && same_cell(period[next], well);
            runs.add(runs_now ? period[next++].*value : 0);
        }
        runs.add(0, vector_size - static_cast<std::int64_t>(wells.master.size()));
    }
    const auto rest = vector_size - static_cast<std::int64_t>(wells.periods.size());
    if (rest > 0) {
        runs.add(0, rest * vector_size);
    }
    runs.finish();
    creation.stream.end_line();
}

// Wells that could not be read leave their blocks empty.
void well_values(Creation& creation, float WellEntry::*value) {
    if (creation.wells) {
        Print_Well_Arrays(creation, value);
    }
}

} // namespace

void TCON(Creation& creation) {
    const core::ModelFlags& flags = creation.project.flags;
    if (has_wells(creation) && flags.FlowActive() == 1 && flags.HeatActive() == 1) {
        well_values(creation, &WellEntry::temperature);
    } else {
        creation.stream.text_line(no_concentrations);
    }
}

void WELLAR(Creation& creation) {
    if (has_wells(creation)) {
        well_values(creation, &WellEntry::rate);
    } else {
        creation.stream.text_line(no_rates);
    }
}

void IWL(Creation& creation) {
    const std::int64_t cells = creation.grid.N();
    if (!has_wells(creation)) {
        creation.stream.text_line(fmt::format("{}*0", cells));
        return;
    }
    if (!creation.wells) {
        return;
    }
    std::int64_t number = 0, next = 0; // cell behind the last well
    for (const WellEntry& well : creation.wells->master) {
        const std::int64_t place = creation.grid.place({well.I, well.J, well.K});
        if (place > next) {
            creation.stream.put(fmt::format("{}*0 ", place - next));
        }
        creation.stream.put_integer(++number);
        next = place + 1;
    }
    if (next < cells) {
        creation.stream.put(fmt::format("{}*0", cells - next));
    }
    creation.stream.end_line();
}

namespace {

bool takes_concentrations(const Creation& creation) {
    const core::ModelFlags& flags = creation.project.flags;
    return !flags.is_defined(1, 1) && creation.TotalSpecies() > 0 && has_wells(creation) &&
           creation.wells && flags.TransportActive() == 1 && flags.is_defined(9, 8);
}

// A hundred species of each of a hundred wells, species fastest.
void Print_SCON(KeywordStream& stream, const sim::ReinjectionTable& table, int wells) {
    Runs runs = real_runs(stream);
    for (int well = 1; well <= wells; ++well) {
        for (int species = 1; species <= table.species; ++species) {
            runs.add(table.concentration(well, species));
        }
        runs.add(0, vector_size - table.species);
    }
    runs.add(0, (vector_size - std::int64_t{wells}) * vector_size);
    runs.finish();
    stream.end_line();
}

} // namespace

void SCON(Creation& creation) {
    const char* extension = sim::reinjection_extension(creation.project.flags);
    const auto bytes =
        takes_concentrations(creation) ? creation.files.read_if(extension) : std::nullopt;
    if (!bytes) {
        creation.stream.text_line(no_concentrations);
        return;
    }
    const auto table = sim::ReinjectionTable::read(*bytes, creation.files.name_of(extension));
    if (table.species == creation.TotalSpecies()) {
        Print_SCON(creation.stream, table, static_cast<int>(creation.wells->master.size()));
        return;
    }
    creation.user.message(
        base::Icon::warning, base::desk_title,
        "The total number of species do not coincide with the reinjected species concentrations\n"
        "All reinjected concentrations will be set to zero in the input file!");
    creation.stream.text_line(no_concentrations);
}

} // namespace input

#include "input/inputarrays.h"

#include "base/failure.h"
#include "base/numbertext.h"
#include "base/textfile.h"
#include "core/modelfiles.h"
#include "core/project.h"
#include "input/compact.h"
#include "input/creation.h"
#include "sim/rockfile.h"

#include <fmt/format.h>

#include <array>
#include <cmath>

namespace input {

namespace {

constexpr float initial_pressure = 0.1F; // MPa

void array_block(Creation& creation, const SimulatorField& field) {
    Runs runs = real_runs(creation.stream);
    field.add_to(runs);
    runs.finish();
    creation.stream.end_line();
}

void array_block(Creation& creation, const ArrayItem& item) {
    array_block(creation, creation.arrays.read(item));
}

// Marks are put wherever there is a boundary file. Only a process that runs can miss it.
void marked_block(Creation& creation, SimulatorField field, const ArrayItem& boundary,
                  int process_active) {
    const bool marked =
        process_active == 1 ? creation.arrays.has(boundary) : creation.arrays.exists(boundary);
    if (marked) {
        field.Constant_Parameter(creation.arrays, boundary);
    }
    array_block(creation, field);
}

} // namespace

void GEOLOGY(Creation& creation) {
    Runs runs = zone_runs(creation.stream);
    creation.arrays.read(arrays::mds).add_to(runs);
    runs.finish();
    creation.stream.end_line();
}

void PRES(Creation& creation) {
    marked_block(creation, SimulatorField(creation.grid, initial_pressure), arrays::tic,
                 creation.project.flags.TransportActive());
}

void POR(Creation& creation) {
    marked_block(creation, creation.arrays.read(arrays::por), arrays::hbo,
                 creation.project.flags.HeatActive());
}

void PERM(Creation& creation) {
    marked_block(creation, creation.arrays.read(arrays::per), arrays::ibd,
                 creation.project.flags.FlowActive());
}

void PHI(Creation& creation) {
    array_block(creation, arrays::hea);
}

void TEMP(Creation& creation) {
    array_block(creation, arrays::tem);
}

void Permafrost_Arrays(Creation& creation) {
    const core::ModelFlags& flags = creation.project.flags;
    if (flags.Permafrost() != 1 || flags.HeatActive() != 1) {
        return;
    }
    creation.block("ICE", [&] { array_block(creation, arrays::ice); });
    creation.block("TSOL", [&] { array_block(creation, arrays::sol); });
    creation.block("TLIQ", [&] { array_block(creation, arrays::liq); });
}

void Velocities(Creation& creation) {
    const core::ModelFlags& flags = creation.project.flags;
    const bool prescribed = flags.FlowPrescribed() == 1 && flags.FlowActive() == 1;
    const auto velocity = [&](const char* keyword, const ArrayItem& item) {
        creation.block(keyword, [&creation, &item, prescribed] {
            prescribed ? array_block(creation, item) : all_cells(creation, "0.");
        });
    };
    velocity("VX", arrays::vx);
    velocity("VY", arrays::vy);
    velocity("VZ", arrays::vz);
}

void all_cells(Creation& creation, const char* value) {
    creation.stream.text_line(fmt::format("{}*{}", creation.grid.N(), value));
}

namespace {

// Completed texts of zone z at index z - 1.
using ZoneTexts = std::array<std::string, sim::PropertyZonesMax>;

ZoneTexts zone_texts(const sim::RockFile& rock, const ZoneProperty& property) {
    ZoneTexts texts;
    for (int zone = 1; zone <= sim::PropertyZonesMax; ++zone) {
        const std::string field = rock.field(property.line, zone);
        const bool pointed = field.find('.') != std::string::npos;
        texts[static_cast<std::size_t>(zone - 1)] =
            field + (pointed ? property.with_point : property.without_point);
    }
    return texts;
}

const std::string& text_of_zone(const ZoneTexts& texts, float zone, const Creation& creation) {
    const float number = std::nearbyint(zone);
    if (!(number >= 1 && number <= sim::PropertyZonesMax)) {
        throw base::FileFailure(
            fmt::format("holds the Property Zone {}, where 1 to {} was expected",
                        base::exact_text(zone), sim::PropertyZonesMax),
            creation.files.name_of(".mds"));
    }
    return texts[static_cast<std::size_t>(number) - 1];
}

} // namespace

void Matrix_Parameter(Creation& creation, const ZoneProperty& property) {
    ZoneTexts texts = zone_texts(sim::RockFile::load(creation.files), property);
    bool first_alone = property.marked_by_sign && base::leading_number(texts[0]) < 0;
    if (first_alone) {
        texts[0].erase(0, 1);
    }
    TextRuns items(creation.stream);
    Runs zones([&](float zone, std::int64_t count) {
        const std::string& text = text_of_zone(texts, zone, creation);
        if (first_alone) {
            items.add(text);
            items.finish();
            --count;
            first_alone = false;
        }
        items.add(text, count);
    });
    creation.arrays.read(arrays::mds).add_to(zones);
    zones.finish();
    items.finish();
    creation.stream.end_line();
}

void COMPM(Creation& creation) {
    bool by_zones = false;
    const bool known = creation.attempt(
        "COMPM", [&] { by_zones = sim::RockFile::load(creation.files).has_compressibilities(); });
    creation.block(by_zones ? "COMP3D" : "COMPM", [&] {
        if (by_zones) {
            Matrix_Parameter(creation, {.line = sim::rock::Compress});
        } else if (known && creation.settings) {
            creation.stream.text_line(creation.settings->COMPM);
        }
    });
}

namespace {

void tracer_by_zones(Creation& creation, int tracer, float concentration) {
    const std::string text = base::value_text(concentration);
    TextRuns items(creation.stream);
    Runs zones([&](float zone, std::int64_t count) {
        const bool inside = std::nearbyint(zone) == static_cast<float>(tracer);
        items.add(inside ? completed(text, ".") : "0.", count);
    });
    creation.arrays.read(arrays::itr).add_to(zones);
    zones.finish();
    items.finish();
    creation.stream.end_line();
}

} // namespace

void Tracer_Distribution(Creation& creation) {
    if (creation.project.flags.TransportActive() != 1 || !creation.tracers) {
        return;
    }
    const bool by_zones = creation.arrays.is_defined(arrays::itr);
    int species = creation.ChemicalSpecies();
    for (int tracer = 1; tracer <= sim::TracerTable::row_count; ++tracer) {
        const sim::Tracer& row = creation.tracers->rows[static_cast<std::size_t>(tracer - 1)];
        if (!row.active) {
            continue;
        }
        creation.block("CONC", ++species, [&] {
            by_zones ? tracer_by_zones(creation, tracer, row.concentration)
                     : array_block(creation, arrays::tracer(tracer));
        });
    }
}

} // namespace input

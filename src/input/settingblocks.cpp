#include "input/settingblocks.h"

#include "base/numbertext.h"
#include "base/textfile.h"
#include "core/modelfiles.h"
#include "core/notes.h"
#include "core/project.h"
#include "input/compact.h"
#include "input/creation.h"
#include "sim/continua.h"

#include <fmt/format.h>

#include <array>
#include <cmath>

namespace input {

void TITLE(Creation& creation) {
    constexpr std::size_t limit = 132;
    const std::string title = base::first_characters(creation.project.title(), limit);
    creation.stream.text_line(base::trimmed(title));
}

namespace {

struct WaterProperty {
    const char* key;
    const char* initial;
};

constexpr WaterProperty water_properties[] = {
    {"Density", "998.0"},   {"Conduct", "0.61"},      {"Compress", "4.5E-10"},
    {"Capacity", "4179.0"}, {"Viscosity", "8.9E-04"},
};

} // namespace

void KOPPX_FLAG(Creation& creation) {
    constexpr int first_row = 10;
    for (int property = 0; property < static_cast<int>(std::size(water_properties)); ++property) {
        creation.stream.put_integer(creation.project.flags(first_row, property));
    }
    creation.stream.end_line();
}

void KOPPX_FIELD(Creation& creation) {
    std::string line;
    for (const auto& [key, initial] : water_properties) {
        const std::string value = core::Get_IZV_Data(creation.files, "koppx", key);
        line += (value.empty() ? initial : value) + " ";
    }
    creation.stream.text_line(line);
}

namespace {

struct PicardBlock {
    const char* keyword;
    const char* key;
    const char* initial; // when the outer iteration was never set
    bool integer = false;
};

constexpr PicardBlock picard_blocks[] = {
    {"PICARD", "Active", "1", true},         {"CHI", "Chi", " 0.5"},
    {"MAXPICARDIT", "Iteration", "5", true}, {"ABSPICARDF", "FlowLimit", " 0.001"},
    {"ABSPICARDT", "HeatLimit", " 0.001"},   {"ABSPICARDS", "TransLimit", "0"},
};

void picard_value(Creation& creation, const PicardBlock& block) {
    const auto note = [&creation](const char* key) {
        return core::Get_IZV_Data(creation.files, "PICARD", key);
    };
    if (note("Active").empty()) {
        creation.stream.text_line(block.initial);
        return;
    }
    const double value = base::leading_number(note(block.key));
    creation.stream.real_line(block.integer ? std::trunc(value) : value);
}

} // namespace

void Write_PICARD(Creation& creation) {
    for (const PicardBlock& block : picard_blocks) {
        creation.block(block.keyword, [&] { picard_value(creation, block); });
    }
}

void Rock_Capacity(Creation& creation) {
    using Text = std::string TervexSteuerzeichen::*;
    const auto coefficient = [&creation](const char* keyword, Text text) {
        creation.block(keyword, [&creation, text] {
            if (!creation.settings) {
                return;
            }
            const bool coupled = creation.settings->KOPLNG.back() == 'P';
            creation.stream.text_line(coupled ? *creation.settings.*text : "0.00000");
        });
    };
    coefficient("CMA1", &TervexSteuerzeichen::A0);
    coefficient("CMA2", &TervexSteuerzeichen::A1);
    coefficient("CMA3", &TervexSteuerzeichen::A2);
}

namespace {

void no_transport_properties(Creation& creation) {
    creation.block("MDIFS1", "0.5E-08");
    creation.block("MDIFD1", "0.000");
    creation.block("MDIFD2", "0.000");
    creation.block("MDIFD3", "0.000");
    creation.block("DIFTS1", "2.01");
    creation.block("DIFLS1", "2.01");
}

} // namespace

void Transport_Properties(Creation& creation) {
    if (creation.project.flags.TransportActive() != 1) {
        no_transport_properties(creation);
        return;
    }
    sim::Dispersion dispersion;
    const bool known = creation.attempt(
        "Transport_Properties", [&] { dispersion = sim::Dispersion::load(creation.files); });
    const auto length = [&](const std::string& text) {
        if (known) {
            creation.stream.put_run(base::leading_single(text), 1);
            creation.stream.end_line();
        }
    };
    creation.block("MDIFS1", [&] {
        if (known) {
            creation.stream.text_line(fmt::format("{}E-08", base::trimmed(dispersion.diffusion)));
        }
    });
    creation.block("MDIFD1", "0.000");
    creation.block("MDIFD2", "0.000");
    creation.block("MDIFD3", "0.000");
    creation.block("DIFTS1", [&] { length(dispersion.transverse); });
    creation.block("DIFLS1", [&] { length(dispersion.longitudinal); });
}

namespace {

using SystemTexts = std::array<std::string, sim::Boxmodel::system_count>;

void fracture_systems(KeywordStream& stream, const SystemTexts& texts) {
    for (const std::string& text : texts) {
        stream.put(base::printed(base::leading_single(text)));
    }
    stream.end_line();
}

void continua(KeywordStream& stream, const sim::Boxmodel& box, const std::vector<int>& zones) {
    stream.integer_line(static_cast<int>(zones.size()));
    for (const int zone : zones) {
        stream.put(base::printed(zone));
    }
    stream.end_line();
    fracture_systems(stream, box.density);
    fracture_systems(stream, box.aperture);
    fracture_systems(stream, box.tortuosity);
    stream.end_line();
}

} // namespace

void BOX(Creation& creation) {
    constexpr int on = 1;
    sim::Boxmodel box;
    const bool read = creation.project.flags(10, 6) == on &&
                      creation.attempt("BOX", [&] { box = sim::Boxmodel::load(creation.files); });
    if (!read || base::leading_number(box.active) < on) {
        return;
    }
    const std::vector<int> zones = sim::parse_zone_list(box.P_Zones);
    creation.block("BOX", [&] {
        if (!zones.empty()) {
            continua(creation.stream, box, zones);
        }
    });
    if (zones.empty()) {
        creation.end_with("Incomplete Data",
                          "Multiple continua are chosen to be active but no property zone is "
                          "defined.\nCheck settings in Transport/Multiple Continua.");
    }
}

void ANZSUBS(Creation& creation) {
    creation.tracers = sim::TracerTable::load(creation.files);
    creation.stream.integer_line(creation.TotalSpecies());
}

void BETAC(Creation& creation) {
    if (!creation.tracers) {
        return;
    }
    int species = 0;
    for (const sim::Tracer& tracer : creation.tracers->rows) {
        if (tracer.active) {
            creation.stream.put(completed(base::value_text(tracer.betac), ".") + " ");
            ++species;
        }
    }
    for (; species < vector_size; ++species) {
        creation.stream.put("0. ");
    }
    creation.stream.end_line();
}

} // namespace input

// Grid, layers, points and the settings of the simulation.
#include "checks.h"
#include "targets.h"

#include "core/project.h"
#include "grid/griddefinition.h"
#include "grid/monitoring.h"
#include "sim/periods.h"
#include "sim/rockfile.h"
#include "sim/transport.h"
#include "sim/typfile.h"

#include "base/textfile.h"

#include <algorithm>

namespace fuzz {

namespace {

std::string rewritten_layers(std::string_view bytes) {
    const auto layers = grid::LayerFile::read(bytes, "m.l", 3);
    return (layers ? *layers : grid::LayerFile::defaults(3)).bytes();
}

// The columns of the indices are four wide; a wider number would join its neighbour.
std::string rewritten_exchange(std::string_view bytes) {
    grid::MonitoringList list;
    if (grid::observations_from_text(bytes, list)) {
        return grid::observations_text(list);
    }
    grid::bores_from_text(bytes, list);
    for (grid::Bore& bore : list.bores) {
        bore.Layer = static_cast<std::int16_t>(bore.Layer % 100);
        bore.Second_Index = static_cast<std::int16_t>(bore.Second_Index % 100);
    }
    return grid::bores_text(list);
}

// Columns count characters, so that both forms of a text must have as many of them.
void count_characters(std::string_view text) {
    const std::size_t count = base::character_count(text);
    require(base::to_ansi(text).size() == count, "a text has another length in a file");
    require(base::first_characters(text, count) == text, "the first characters are not all");
}

// Changes one field of every line: it reads as it was set, and its neighbours stay.
void change_fields(sim::RockFile rock, std::string_view text) {
    constexpr int zone = 2;
    for (int line = sim::rock::Por; line <= std::min(rock.lines(), sim::rock::line_count); ++line) {
        const std::string before = rock.field(line, zone - 1), behind = rock.field(line, zone + 1);
        rock.set_field(line, zone, text);
        const std::string field = rock.field(line, zone);
        rock.set_field(line, zone, field);
        require(rock.field(line, zone) == field, "a field set again has another text");
        require(rock.field(line, zone - 1) == before, "a field changes the one before it");
        require(rock.field(line, zone + 1) == behind, "a field changes the one behind it");
    }
    sim::RockFile::read(rock.bytes(), "m.mco");
}

} // namespace

void gridfile(std::string_view bytes) {
    require_stable(bytes,
                   [](std::string_view b) { return grid::GridFile::read(b, "m.xy").bytes(); });
    const auto cells = grid::GridFile::read(bytes, "m.xy");
    const auto edges = grid::Build_Cell_Coordinates(cells);
    require(edges.x_edges.size() == cells.Column_Width.size() + 1, "edges do not fit the columns");
    grid::find_cell(cells, grid::GridPosition(core::Project()), 10, -5);
}

void layerfile(std::string_view bytes) {
    require_stable(bytes, rewritten_layers);
}

void exchange(std::string_view bytes) {
    require_stable(bytes, rewritten_exchange);
}

void typfile(std::string_view bytes) {
    require_stable(bytes, [](std::string_view b) {
        sim::TypFile file = sim::TypFile::read(b, "m.typ");
        file.KOPLNG();
        file.IPUTDI();
        file.LINFO();
        for (int n = 0; n < 4; ++n) {
            sim::piece_behind_hash(file.line(sim::typ::KOPLNG), n);
        }
        return file.bytes();
    });
    sim::TypFile file = sim::TypFile::read(bytes, "m.typ");
    file.set_line(sim::typ::f1, bytes);
    sim::TypFile::read(file.bytes(), "m.typ");
}

void periods(std::string_view bytes) {
    require_stable(bytes, [](std::string_view b) {
        const auto table = sim::PeriodTable::read(b, "m.trn");
        table.totals();
        return table.bytes();
    });
}

void timeparameters(std::string_view bytes) {
    require_stable(bytes, [](std::string_view b) {
        const auto table = sim::PeriodTable::read_time_parameters(b, "m.tpr");
        return table.value_or(sim::PeriodTable()).time_parameters();
    });
    sim::TemporalDiscretization form;
    form.load_time_parameters(bytes, "m.tpr");
    form.check();
    form.status_texts();
}

void rockfile(std::string_view bytes) {
    require_stable(bytes,
                   [](std::string_view b) { return sim::RockFile::read(b, "m.mco").bytes(); });
    sim::RockFile rock = sim::RockFile::read(bytes, "m.mco");
    count_characters(bytes);
    rock.has_compressibilities();
    change_fields(rock, bytes.substr(bytes.size() - std::min<std::size_t>(bytes.size(), 24)));
    const int zones = 1 + static_cast<int>(bytes.size()) % sim::PropertyZonesMax;
    const bool stays = rock.zones() == zones;
    rock.set_zones(zones);
    require(stays || rock.zones() == zones, "the number of zones is not the one that was set");
    sim::RockFile::read(rock.bytes(), "m.mco");
}

void tracer(std::string_view bytes) {
    require_stable(bytes, [](std::string_view b) {
        const auto table = sim::TracerTable::read(b, "m.ttc");
        const int active = table.ActiveTracers();
        require(active >= 0 && active <= sim::TracerTable::row_count, "too many active tracers");
        return table.bytes();
    });
}

void dispersion(std::string_view bytes) {
    require_stable(bytes,
                   [](std::string_view b) { return sim::Dispersion::read(b, "m.tma").bytes(); });
}

} // namespace fuzz

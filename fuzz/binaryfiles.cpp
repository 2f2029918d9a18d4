// Array files, zone files, monitoring points, injected concentrations.
#include "checks.h"
#include "scratchfolder.h"
#include "targets.h"

#include "base/binaryio.h"
#include "core/arraystore.h"
#include "core/modelfiles.h"
#include "core/zonefile.h"
#include "grid/monitoring.h"
#include "sim/reinjection.h"

#include <algorithm>
#include <bit>
#include <vector>

namespace fuzz {

namespace {

constexpr int columns = 3, rows = 2, layers = 2;
constexpr int permeability = 1401, permeability_zones = 1501;
constexpr std::size_t most_periods = 8;

// A good file, changed as `differences` say: two bytes for the length that is missing at its end,
// then four bytes for each change, place and new value, 16 bits each. The bulk of these files is
// values, for which any bits will do: inputs of this form come sooner to the tables.
std::string changed(std::string good, std::string_view differences) {
    const auto number = [&](std::size_t at) {
        return static_cast<std::uint16_t>(base::int16_at(differences, at));
    };
    if (differences.size() < 2) {
        return std::string(differences);
    }
    for (std::size_t at = 2; at + 4 <= differences.size(); at += 4) {
        const std::size_t place = number(at);
        if (place + 2 <= good.size()) {
            good.replace(place, 2, differences.substr(at + 2, 2));
        }
    }
    good.resize(good.size() - std::min<std::size_t>(number(0), good.size()));
    return good;
}

// Three periods, the last one in the second record.
std::string good_array() {
    const ScratchFolder folder;
    core::ModelFiles files(folder.path() / "m.td1", core::Access::write);
    core::ArrayStore store(files, columns, rows, layers);
    for (const int period : {1, 7, 3}) {
        store.write_array(permeability, period, 1, std::vector<float>(columns * rows, 1.5F));
    }
    return files.read(".per");
}

core::Zone triangle() {
    core::Zone zone;
    zone.nodes = 3;
    zone.value = 2;
    zone.x = {0, 1, 9, 9};
    zone.y = {0, 1, 1, 4};
    return zone;
}

std::string good_zones() {
    const ScratchFolder folder;
    core::ModelFiles files(folder.path() / "m.td1", core::Access::write);
    core::ZoneFile zones(files, layers);
    zones.write_zones(1, 1, permeability_zones, {triangle(), triangle()});
    zones.write_zones(5, 2, permeability_zones, {triangle()});
    return files.read(".pez");
}

bool same_bits(const core::LayerValues& a, const core::LayerValues& b) {
    return std::ranges::equal(
        a, b, {}, [](float v) { return std::bit_cast<std::uint32_t>(v); },
        [](float v) { return std::bit_cast<std::uint32_t>(v); });
}

void read_periods(const core::ArrayStore& store) {
    std::vector<core::ArrayStore::Period> periods = store.periods(permeability);
    periods.resize(std::min(periods.size(), most_periods));
    periods.push_back({1, 0});
    periods.push_back({1000, 0});
    for (const auto& [period, record] : periods) {
        for (int layer = 1; layer <= layers; ++layer) {
            core::LayerValues values = store.layer_values(permeability);
            store.read_array(permeability, period, layer, values, -1);
            const auto cell = store.read_cell_value(permeability, period, layer, 2, 3, -1);
            require(same_bits({cell.value}, {values.back()}), "a cell differs from its layer");
        }
    }
}

void write_period(core::ArrayStore& store, int period) {
    const core::LayerValues values = {1, 2, 3, 4, 5, 6};
    core::LayerValues read(values.size());
    store.write_array(permeability, period, 2, values);
    store.read_array(permeability, period, 2, read, -1);
    require(read == values, "a written layer reads other values");
    require(store.has_period(permeability, period), "a written period is not there");
    store.copy_period(permeability, period, 9, -1);
    store.read_array(permeability, 9, 2, read, -1);
    require(read == values, "a copied period reads other values");
}

bool same_zones(const std::vector<core::Zone>& a, const std::vector<core::Zone>& b) {
    return std::ranges::equal(a, b, [](const core::Zone& one, const core::Zone& other) {
        return one.nodes == other.nodes && one.value == other.value && one.x == other.x &&
               one.y == other.y;
    });
}

} // namespace

void arrayfile(std::string_view differences) {
    static const std::string good = good_array();
    const ScratchFolder folder;
    folder.write("m.per", changed(good, differences));
    core::ModelFiles files(folder.path() / "m.td1", core::Access::write);
    core::ArrayStore store(files, columns, rows, layers);
    succeeds([&] { read_periods(store); });
    for (const int period : {1, 3, 500}) {
        succeeds([&] { write_period(store, period); });
    }
    succeeds([&] { store.backup_for_edit(permeability, 0); });
    files.commit();
}

void zonefile(std::string_view differences) {
    static const std::string good = good_zones();
    const ScratchFolder folder;
    folder.write("m.pez", changed(good, differences));
    core::ModelFiles files(folder.path() / "m.td1", core::Access::write);
    core::ZoneFile zones(files, layers);
    for (const int period : {1, 5, 1000}) {
        for (int layer = 1; layer <= layers; ++layer) {
            succeeds([&] { zones.read_zones(period, layer, permeability_zones); });
        }
    }
    succeeds([&] { zones.Upgrade_Zone_File(permeability_zones); });
    for (const int period : {5, 6}) {
        succeeds([&] {
            const std::vector<core::Zone> written(core::max_zones, triangle());
            zones.write_zones(period, 2, permeability_zones, written);
            std::vector<core::Zone> closed = written;
            std::ranges::for_each(closed, core::Close_Zone);
            require(same_zones(zones.read_zones(period, 2, permeability_zones), closed),
                    "written zones read otherwise");
            require(zones.has_period(period, permeability_zones), "a written period is not there");
        });
    }
    files.commit();
}

void points(std::string_view bytes) {
    require_stable(bytes, [](std::string_view file) {
        const grid::ReadPoints read = grid::read_points(file);
        require(read.list.observations.size() <= grid::MonitoringList::max_observations,
                "more observations than the list takes");
        return grid::points_bytes(read.list);
    });
}

void reinjection(std::string_view bytes) {
    require_stable(bytes, [](std::string_view file) {
        const auto table = sim::ReinjectionTable::read(file, "m.sco");
        for (const int number : {-1, 0, 1, table.species, 101}) {
            table.concentration(number, 1);
            table.concentration(1, number);
        }
        return table.bytes();
    });
}

} // namespace fuzz

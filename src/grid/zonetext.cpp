#include "grid/zones.h"

#include "base/numbertext.h"
#include "base/textfile.h"

#include <fmt/format.h>

#include <algorithm>

namespace grid {

namespace {

constexpr std::string_view first_line = "BALDO4000_ASCII_ZONEFILE";
constexpr int least_nodes = 3;

std::string head_line(const core::Zone& zone) {
    std::string line = base::printed(zone.nodes) + base::printed(zone.value);
    for (const float value : zone.param) {
        line += base::printed(value);
    }
    return line;
}

// The nodes are read even where there are too few of them for a zone.
core::Zone read_zone(base::NumberReader& numbers, int nodes) {
    core::Zone zone;
    zone.nodes = std::max(nodes, 0);
    zone.value = numbers.next_single("the value of a zone");
    for (float& value : zone.param) {
        value = numbers.next_single("a value of a zone");
    }
    for (std::size_t node = 1; node <= static_cast<std::size_t>(zone.nodes); ++node) {
        zone.x[node] = numbers.next_single("the x of a node");
        zone.y[node] = numbers.next_single("the y of a node");
    }
    core::Close_Zone(zone);
    return zone;
}

} // namespace

std::string zones_text(std::span<const core::Zone> zones) {
    std::vector<std::string> lines{std::string(first_line),
                                   base::printed(static_cast<std::int64_t>(zones.size()))};
    for (const core::Zone& zone : zones) {
        lines.push_back(head_line(zone));
        for (std::size_t node = 1; node <= static_cast<std::size_t>(zone.nodes); ++node) {
            lines.push_back(base::printed(zone.x[node]) + base::printed(zone.y[node]));
        }
    }
    return base::to_text_file(lines);
}

ZonesRead zones_from_text(std::string_view bytes, const std::filesystem::path& file) {
    base::NumberReader numbers(bytes, file);
    if (numbers.rest_of_line() != first_line) {
        return {{},
                base::Refusal{"Load Zones", fmt::format("{} is not a zone file!", file.string())}};
    }
    const int count = numbers.next_int("the number of zones");
    if (count > core::max_zones) {
        return {{}, too_many_zones()};
    }
    ZonesRead read;
    for (int zone = 0; zone < count; ++zone) {
        const int nodes = numbers.next_int("the number of nodes");
        if (nodes > core::Zone::max_nodes) {
            return {{}, too_many_nodes()};
        }
        const core::Zone next = read_zone(numbers, nodes);
        if (nodes >= least_nodes) {
            read.zones.push_back(next);
        }
    }
    return read;
}

} // namespace grid

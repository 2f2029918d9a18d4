#include "grid/nearestsingle.h"
#include "grid/zones.h"

#include <fmt/format.h>

#include <algorithm>

namespace grid {

namespace {

constexpr int least_nodes = 3;

bool within(double x, double y, double node_x, double node_y, double tolerance) {
    const double dx = x - node_x, dy = y - node_y;
    return dx * dx + dy * dy < tolerance * tolerance;
}

// Index of the node of an open zone at exactly this place; 0 for none.
std::size_t node_at(const core::Zone& zone, ZoneNode place) {
    for (std::size_t node = 1; node <= static_cast<std::size_t>(zone.nodes); ++node) {
        if (zone.x[node] == place.x && zone.y[node] == place.y) {
            return node;
        }
    }
    return 0;
}

void append_node(core::Zone& zone, ZoneNode place) {
    const auto node = static_cast<std::size_t>(++zone.nodes);
    zone.x[node] = place.x;
    zone.y[node] = place.y;
}

} // namespace

base::Refusal too_many_zones() {
    return {zones_title,
            fmt::format("Too many zones!\nThe maximum number of zones is {}.", core::max_zones)};
}

base::Refusal too_many_nodes() {
    return {zones_title, fmt::format("Too many nodes!\nThe maximum number of nodes is {}.\n\nClose "
                                     "the zone or Press the right mouse button to abort.",
                                     core::Zone::max_nodes)};
}

bool Snap_To_Start(double x, double y, double pixel, const core::Zone& open) {
    return open.nodes > 0 && within(x, y, open.x[1], open.y[1], snap_pixels * pixel);
}

std::optional<ZoneNode> Snap_To_Node(double x, double y, double pixel,
                                     std::span<const core::Zone> zones) {
    for (const core::Zone& zone : zones) {
        for (std::size_t node = 1; node <= static_cast<std::size_t>(zone.nodes); ++node) {
            if (within(x, y, zone.x[node], zone.y[node], snap_pixels * pixel)) {
                return ZoneNode{zone.x[node], zone.y[node]};
            }
        }
    }
    return std::nullopt;
}

ZoneDigitizer::Step ZoneDigitizer::click(double x, double y, double pixel) {
    const bool to_start = Zone_Open && Snap_To_Start(x, y, pixel, *Zone_Open);
    const ZoneNode clicked{nearest_single(x), nearest_single(y)};
    const ZoneNode place = to_start ? ZoneNode{Zone_Open->x[1], Zone_Open->y[1]}
                                    : Snap_To_Node(x, y, pixel, zones).value_or(clicked);
    if (!Zone_Open) {
        return start(place);
    }
    const std::size_t meant = node_at(*Zone_Open, place);
    if (meant == 1 && Zone_Open->nodes >= least_nodes) {
        return close();
    }
    if (Zone_Open->nodes == core::Zone::max_nodes) {
        return {Effect::none, too_many_nodes()};
    }
    if (meant != 0) {
        return {};
    }
    append_node(*Zone_Open, place);
    return {Effect::added, {}};
}

ZoneDigitizer::Step ZoneDigitizer::start(ZoneNode place) {
    if (Zone_Count() >= core::max_zones) {
        return {Effect::none, too_many_zones()};
    }
    append_node(Zone_Open.emplace(), place);
    return {Effect::started, {}};
}

ZoneDigitizer::Step ZoneDigitizer::close() {
    core::Close_Zone(*Zone_Open);
    zones.push_back(*Zone_Open);
    Zone_Open.reset();
    Zone_Current = Zone_Count();
    return {Effect::closed, {}};
}

void ZoneDigitizer::select(double x, double y) {
    Zone_Current = Find_Zone(x, y, zones);
}

void ZoneDigitizer::remove(int number) {
    if (number < 1 || number > Zone_Count()) {
        throw base::RangeFailure(fmt::format("there is no zone {}", number));
    }
    zones.erase(zones.begin() + (number - 1));
    Zone_Current = 0;
}

void ZoneDigitizer::clear() {
    zones.clear();
    Zone_Current = 0;
}

const char* nodes_fault(std::span<const ZoneNode> nodes) {
    std::vector<ZoneNode> places;
    const auto is = [](ZoneNode a, ZoneNode b) { return a.x == b.x && a.y == b.y; };
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        if (places.size() >= least_nodes && is(nodes[i], places[0])) {
            return i + 1 < nodes.size() ? "a zone is closed before its last node" : nullptr;
        }
        if (std::ranges::none_of(places, [&](ZoneNode place) { return is(place, nodes[i]); })) {
            places.push_back(nodes[i]);
        }
    }
    return places.size() < least_nodes ? "a zone has fewer than 3 nodes" : nullptr;
}

} // namespace grid

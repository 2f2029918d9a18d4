// Zones of the worksheet: polygons whose value goes to the cells with their centre inside.
//
// Coordinates are those of the grid itself: x to the right and y downward from its upper left
// corner, in metres. core/zonefile.h has the record and the binary files.
#pragma once

#include "base/failure.h"
#include "core/arraystore.h"
#include "core/zonefile.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace grid {

struct CellCoordinates;

// Value of a closed zone for the array of the session with this index (from 0): `value` for the
// first one, slots of `param` for the others. RangeFailure beyond the 12 slots.
float zone_value(const core::Zone& zone, std::size_t array);
void set_zone_value(core::Zone& zone, std::size_t array, float value);

// True when a closed zone holds the point. A point on the bounding box counts as inside the box, a
// point on an edge as one crossing of it. RangeFailure when y is 0 and so is that of a node, which
// no cell centre can meet.
bool Zone_Contains(double x, double y, const core::Zone& zone);
// Number (from 1) of the first closed zone that holds the point; 0 for none.
int Find_Zone(double x, double y, std::span<const core::Zone> zones);

// Gives every cell with its centre in the zone the zone's values: values[k] is a layer (NX * NY) of
// the session's array k. Number of cells.
std::size_t transfer_zone(const core::Zone& zone, const CellCoordinates& cells,
                          std::span<core::LayerValues> values);

// The boxes of too many zones and too many nodes, and the question before a layer loses its zones.
base::Refusal too_many_zones();
base::Refusal too_many_nodes();
inline constexpr const char* zones_title = "Zones";
inline constexpr const char* delete_all_question = "Delete all zones in the current layer?";

// The box when the item `caption` has no zones.
base::Refusal no_zones_allowed(std::string_view caption);

struct ZoneNode {
    float x = 0, y = 0;
};

// Clicks nearer than this many pixels mean the node.
inline constexpr double snap_pixels = 5;
// True when a click at x, y means the first node of the open zone. `pixel` is the length of a pixel
// in metres.
bool Snap_To_Start(double x, double y, double pixel, const core::Zone& open);
// The first node of the closed zones that a click at x, y means.
std::optional<ZoneNode> Snap_To_Node(double x, double y, double pixel,
                                     std::span<const core::Zone> zones);

// The zones of one layer while they are digitized; without a window, so that a script and a mouse
// follow the same rules.
struct ZoneDigitizer {
    std::vector<core::Zone> zones;       // closed ones, number z at index z - 1
    std::optional<core::Zone> Zone_Open; // the polygon that is being digitized
    int Zone_Current = 0;                // selected zone, 0 for none

    int Zone_Count() const { return static_cast<int>(zones.size()); }

    enum class Effect {
        started, // a new zone is open with this node
        added,   // the open zone has one node more
        closed,  // the open zone is the last one of `zones` now, and selected; its values are 0
        none,    // a beep
    };
    struct Step {
        Effect effect = Effect::none;
        std::optional<base::Refusal> refusal; // the box that comes with the beep
    };
    // A click of the left button.
    Step click(double x, double y, double pixel);
    // A click of the right button: drops the open zone.
    void abort() { Zone_Open.reset(); }
    // Selects the zone at the point; 0 for none.
    void select(double x, double y);
    // Removes closed zone `number`, later ones move up. RangeFailure when there is none.
    void remove(int number);
    // Removes all closed zones.
    void clear();

private:
    Step start(ZoneNode place);
    Step close();
};

// Why clicks at these places do not make one closed zone: too few nodes (a place that has one
// already counts once), or a node behind the one that closes it. Null when they do.
const char* nodes_fault(std::span<const ZoneNode> nodes);

// Exchange form of the zones of a layer (.zon), free-form text.
std::string zones_text(std::span<const core::Zone> zones);
struct ZonesRead {
    std::vector<core::Zone> zones; // closed
    std::optional<base::Refusal> refusal;
};
// Zones with fewer than 3 nodes are left out; the bounding boxes are computed anew. Refused:
// another first line, more than 20 zones, more than 40 nodes. FileFailure when the numbers end
// early. `file` is named in messages.
ZonesRead zones_from_text(std::string_view bytes, const std::filesystem::path& file);

} // namespace grid

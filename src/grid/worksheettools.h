// What the menus of the worksheet do to the shown layer: zones, array exchange, search and modify.
//
// Each function is one step of the session. A refusal leaves the layer as it was. Zone numbers and
// array numbers count from 1; one that is not there is a RangeFailure.
#pragma once

#include "base/failure.h"
#include "grid/arrayexchange.h"
#include "grid/searchmodify.h"
#include "grid/zones.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <span>
#include <string>

namespace grid {

struct EditRequest;
class Worksheet;

// Name of array k in the lists of the array browser and of the search.
std::string array_label(const EditRequest& request, int k);

// Why the item has no zones.
std::optional<base::Refusal> zones_refusal(const EditRequest& request);

// Digitizes the nodes and closes the zone, which becomes the last one; arrays without a value get
// 0. RangeFailure when the nodes, one at the place of another left out, do not make a zone, or when
// it is closed before the last node.
std::optional<base::Refusal> add_zone(Worksheet& worksheet, std::span<const ZoneNode> nodes,
                                      std::span<const float> values);
// Arrays without a value keep theirs.
std::optional<base::Refusal> set_zone_values(Worksheet& worksheet, int zone,
                                             std::span<const float> values);
void delete_zone(Worksheet& worksheet, int zone);
void clear_zones(Worksheet& worksheet);
// Values of a zone to the cells; number of cells.
std::size_t transfer_zone(Worksheet& worksheet, int zone);
// Takes the zones of an exchange file. FileFailure when it cannot be read.
std::optional<base::Refusal> load_zones(Worksheet& worksheet, const std::filesystem::path& file);

// Takes the values of a text file into a layer of nx columns and ny rows, which is not changed by a
// refusal.
std::optional<base::Refusal> load_array_file(const std::filesystem::path& file, MatrixFile form,
                                             FirstCell first, int nx, int ny,
                                             std::span<float> values);
// The same into array k.
std::optional<base::Refusal> load_array(Worksheet& worksheet, int k,
                                        const std::filesystem::path& file, MatrixFile form,
                                        FirstCell first);

// The dialog that copies the data of one period to another one: why `to` cannot be the target, and
// the question when it has data.
inline constexpr const char* copy_data_title = "Copy Data";
std::optional<base::Refusal> copy_target_refusal(int to);
std::string copy_data_question(int to);

// The layers of a search, as typed.
struct LayerRange {
    int first, last;
};
struct TraceResult {
    TraceOutcome outcome;
    std::optional<base::Refusal> refusal;
};
// Keeps the rules as those of the model, then searches array k in the current period.
TraceResult search_and_modify(Worksheet& worksheet, int k, const TraceRules& rules,
                              LayerRange layers, base::Interaction& user);

} // namespace grid

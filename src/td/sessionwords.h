// Words of worksheet commands, on the command line and in session scripts, and what they print.
#pragma once

#include "grid/worksheettools.h"

#include <string>
#include <string_view>
#include <vector>

namespace td {

// Words and their forms, by grid::ArrayForm, TraceOption and MatrixFile.
inline constexpr const char* array_form_words = "wrap|ascii|surfer|surfer-world";
inline constexpr const char* trace_option_words = "display|replace|add|multiply";
inline constexpr const char* matrix_file_words = "ascii|grd";

// Text between separators, empty pieces too.
std::vector<std::string> pieces(std::string_view text, char separator);

// "V1[,V2[,V3]]", read as the value dialogs read them; UsageError for more than `most`.
std::vector<float> values_of(std::string_view text, int most);
// "X,Y" in metres; UsageError for anything else.
grid::ZoneNode place_of(std::string_view text);
// Places of a new zone; UsageError when they do not make one.
std::vector<grid::ZoneNode> nodes_of(const std::vector<std::string>& places);
// Number of a zone that is there; UsageError otherwise.
int zone_of(std::string_view text, std::size_t count);
// "COL,ROW".
grid::FirstCell first_cell_of(std::string_view text);
// "L1-L2" or "L".
grid::LayerRange layers_of(std::string_view text);

// Number, nodes, value, bounding box, nodes.
std::vector<std::string> zone_record(std::size_t number, const core::Zone& zone);
// One record for each active rule that matched a cell: row, option, number of cells.
std::vector<std::vector<std::string>> match_records(const grid::TraceRules& rules,
                                                    const grid::TraceOutcome& outcome);
const char* trace_option_word(grid::TraceOption option);

} // namespace td

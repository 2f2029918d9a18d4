// A field as a table of its cells, for other programs.
#pragma once

#include "results/fieldreading.h"
#include "results/resultfile.h"

#include <filesystem>
#include <optional>
#include <string_view>

namespace results {

// Writes one line for each cell: column, row and layer as in the worksheet, x, y and z of the cell
// centre in metres (x from the west edge, y northward from the south edge, z upward from the base
// of the lowest layer), and the value, with commas between them and a point in the numbers. The
// first line holds names and units. UTF-8, lines closed by LF as scripts of the shell expect them.
// `field` is in the order of the worksheet; with `layer` only that one is written. The file appears
// under its name when it is complete. RangeFailure for a layer that the field does not have,
// FileFailure when the file cannot be written.
void write_field_csv(const ParameterField& field, const Axes& axes, int GridOrientation,
                     std::string_view label, std::optional<int> layer,
                     const std::filesystem::path& target);

// RangeFailure when the field has no such layer.
void require_layer(const ParameterField& field, int layer);

} // namespace results

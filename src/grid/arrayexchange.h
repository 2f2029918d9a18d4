// Layers of an array as text: what other programs read and write.
#pragma once

#include "base/failure.h"

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace grid {

struct GridFile;
struct GridPosition;

// In the order of the dialog's filters.
enum class ArrayForm {
    wrap,         // columns and rows, then at most 20 values a line
    ascii,        // columns and rows, then one line a row
    surfer,       // x, y upward from the lower edge, value: a line a cell
    surfer_world, // the same with positions in the world
};
// `values` (NX * NY) of one layer; every value right-aligned in 14 columns.
std::string array_text(ArrayForm form, std::span<const float> values, const GridFile& grid,
                       const GridPosition& position);

inline constexpr const char* load_matrix_title = "Load Matrix";

// The worksheet cell that takes the first value of a file.
struct FirstCell {
    int column = 1, row = 1;
};
// Why the grid has no such cell.
std::optional<base::Refusal> first_cell_refusal(FirstCell first, int nx, int ny);

enum class MatrixFile { ascii, grd };
// By the name: .grd in any case, everything else is ASCII.
MatrixFile matrix_file_of(const std::filesystem::path& file);

// Puts the values of a text file into a layer of nx columns and ny rows; what lies outside the grid
// is dropped, and cells that the file does not have keep their values. Of a grid file (.grd), row 1
// goes to the last row of the layer, and `first` counts for columns only. Refused, with the layer
// as it was: more than 250000 values or 500 columns or rows, and a grid file that begins otherwise.
// `file` is named in messages.
std::optional<base::Refusal> load_matrix(std::string_view bytes, const std::filesystem::path& file,
                                         MatrixFile form, FirstCell first, int nx, int ny,
                                         std::span<float> values);

// The box for a file that does not exist.
base::Refusal no_matrix_file(const std::filesystem::path& file);

} // namespace grid

#include "grid/arrayexchange.h"

#include "base/numbertext.h"
#include "base/textfile.h"
#include "grid/griddefinition.h"
#include "grid/nearestsingle.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace grid {

namespace {

constexpr std::string_view line_end = "\r\n";
constexpr std::size_t value_width = 14;
constexpr int wrapped_values = 20;
constexpr int range_lines = 3; // of a grid file
constexpr std::int64_t max_values = 250'000;
constexpr int max_side = 500;

void append_value(std::string& text, float value) {
    text += base::right_aligned(base::value_text(value), value_width);
}

std::string rows_text(std::span<const float> values, int nx, int ny, int values_a_line) {
    std::string text = base::printed(nx) + base::printed(ny);
    text += line_end;
    std::size_t at = 0;
    for (int row = 0; row < ny; ++row) {
        for (int column = 1; column <= nx; ++column) {
            append_value(text, values[at++]);
            if (column == nx || column % values_a_line == 0) {
                text += line_end;
            }
        }
    }
    return text;
}

// `place` gives the position of a cell's centre.
template <typename Place>
std::string points_text(std::span<const float> values, const CellCoordinates& cells, Place place) {
    std::string text;
    std::size_t at = 0;
    for (const double y : cells.y_centres) {
        for (const double x : cells.x_centres) {
            const GridPosition::Point point = place(x, y);
            append_value(text, static_cast<float>(point.x));
            append_value(text, static_cast<float>(point.y));
            append_value(text, values[at++]);
            text += line_end;
        }
    }
    return text;
}

std::int64_t next_size(base::NumberReader& numbers) {
    constexpr double largest = std::numeric_limits<std::int32_t>::max();
    return std::llrint(std::clamp(numbers.next_if().value_or(0), -largest, largest));
}

base::Refusal matrix_refusal(const std::filesystem::path& file, std::string_view what) {
    return {load_matrix_title, file.string() + std::string(what)};
}

std::optional<base::Refusal> size_refusal(const std::filesystem::path& file, std::int64_t columns,
                                          std::int64_t rows) {
    if (columns < 1 || rows < 1 || columns * rows > max_values) {
        return matrix_refusal(file, " contains more than 250000 cell values.\n"
                                    "The maximum number of cells is 250000.");
    }
    if (std::max(columns, rows) > max_side) {
        return matrix_refusal(file, " contains invalid number of columns or rows.\n"
                                    "Valid range of the number of rows/column is 1 to 500.");
    }
    return std::nullopt;
}

} // namespace

std::string array_text(ArrayForm form, std::span<const float> values, const GridFile& grid,
                       const GridPosition& position) {
    if (form == ArrayForm::wrap || form == ArrayForm::ascii) {
        return rows_text(values, grid.NX, grid.NY,
                         form == ArrayForm::wrap ? wrapped_values : grid.NX);
    }
    const CellCoordinates cells = Build_Cell_Coordinates(grid);
    if (form == ArrayForm::surfer_world) {
        return points_text(values, cells, [&](double x, double y) { return position.world(x, y); });
    }
    const auto height = static_cast<float>(cells.y_edges.back());
    return points_text(values, cells, [height](double x, double y) {
        return GridPosition::Point{x, height - static_cast<float>(y)};
    });
}

std::optional<base::Refusal> first_cell_refusal(FirstCell first, int nx, int ny) {
    for (const auto& [index, extent] : {std::pair(first.column, nx), std::pair(first.row, ny)}) {
        if (index < 1 || index > extent) {
            return base::Refusal{load_matrix_title, fmt::format("Valid range is 1 to {}", extent)};
        }
    }
    return std::nullopt;
}

MatrixFile matrix_file_of(const std::filesystem::path& file) {
    return base::same_ignoring_case(file.extension().string(), ".grd") ? MatrixFile::grd
                                                                       : MatrixFile::ascii;
}

std::optional<base::Refusal> load_matrix(std::string_view bytes, const std::filesystem::path& file,
                                         MatrixFile form, FirstCell first, int nx, int ny,
                                         std::span<float> values) {
    const bool grd = form == MatrixFile::grd;
    base::NumberReader numbers(bytes, file);
    if (grd && numbers.rest_of_line() != "DSAA") {
        return matrix_refusal(file, "is not a SURFER .GRD file.");
    }
    const std::int64_t columns = next_size(numbers), rows = next_size(numbers);
    if (const auto refusal = size_refusal(file, columns, rows)) {
        return refusal;
    }
    for (int line = 0; grd && line <= range_lines; ++line) {
        numbers.skip_line();
    }
    for (std::int64_t k = 0; k < columns * rows; ++k) {
        const auto value = numbers.next_if();
        if (!value) {
            break;
        }
        const std::int64_t column = first.column + k % columns;
        const std::int64_t row = grd ? ny - k / columns : first.row + k / columns;
        if (column <= nx && row >= 1 && row <= ny) {
            values[static_cast<std::size_t>((row - 1) * nx + column - 1)] = nearest_single(*value);
        }
    }
    return std::nullopt;
}

base::Refusal no_matrix_file(const std::filesystem::path& file) {
    return {load_matrix_title, fmt::format("The file {} does not exist.", file.string())};
}

} // namespace grid

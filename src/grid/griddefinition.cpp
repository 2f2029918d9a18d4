#include "grid/griddefinition.h"

#include "base/failure.h"
#include "base/numbertext.h"
#include "base/textfile.h"
#include "core/modelfiles.h"
#include "core/project.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>

namespace grid {

namespace {

constexpr std::string_view line_end = "\r\n";

int read_extent(base::NumberReader& reader, const char* name, const std::filesystem::path& file) {
    const std::string what = fmt::format("the number of {}", name);
    const std::int32_t extent = reader.next_int(what);
    if (extent < 1 || extent > std::numeric_limits<std::int16_t>::max()) {
        throw base::FileFailure(fmt::format("{} in line {} is {}, where 1 to 32767 was expected",
                                            what, reader.line(), extent),
                                file);
    }
    return extent;
}

std::vector<float> read_sizes(base::NumberReader& reader, int count, const char* name) {
    std::vector<float> sizes;
    sizes.reserve(static_cast<std::size_t>(count));
    for (int i = 1; i <= count; ++i) {
        sizes.push_back(reader.next_single(fmt::format("{} {} of {}", name, i, count)));
    }
    return sizes;
}

std::vector<double> edges_of(const std::vector<float>& sizes) {
    std::vector<double> edges = {0};
    edges.reserve(sizes.size() + 1);
    for (const float size : sizes) {
        edges.push_back(edges.back() + size);
    }
    return edges;
}

std::vector<double> centres_of(const std::vector<double>& edges) {
    std::vector<double> centres;
    centres.reserve(edges.size() - 1);
    for (std::size_t i = 1; i < edges.size(); ++i) {
        centres.push_back((edges[i - 1] + edges[i]) / 2);
    }
    return centres;
}

float to_single(double value) {
    constexpr double largest = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(value, -largest, largest));
}

std::vector<double> all_numbers(std::string_view bytes, const std::filesystem::path& file) {
    base::NumberReader reader(bytes, file);
    std::vector<double> numbers;
    while (const auto number = reader.next_if()) {
        numbers.push_back(*number);
    }
    return numbers;
}

// Number (from 1) of the first cell whose far edge reaches `position`. Both sides are rounded to
// single first: ten widths of 0.7 m reach exactly 7 m in no other way.
std::optional<int> first_reaching(const std::vector<float>& sizes, double position) {
    if (!(position >= 0)) {
        return std::nullopt;
    }
    const float wanted = to_single(position);
    double sum = 0;
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        sum += sizes[i];
        if (to_single(sum) >= wanted) {
            return static_cast<int>(i) + 1;
        }
    }
    return std::nullopt;
}

} // namespace

GridFile GridFile::read(std::string_view bytes, const std::filesystem::path& file) {
    base::NumberReader reader(bytes, file);
    GridFile grid;
    grid.NX = read_extent(reader, "columns", file);
    grid.NY = read_extent(reader, "rows", file);
    grid.NZ = read_extent(reader, "layers", file);
    // A size takes a digit and a separator; the last one may end the file.
    const std::uint64_t sizes = std::uint64_t(grid.NX) + std::uint64_t(grid.NY);
    if (reader.remaining() < 2 * sizes - 1) {
        throw base::FileFailure(
            fmt::format("has {} bytes behind the extents, too few for {} column widths and {} row "
                        "heights",
                        reader.remaining(), grid.NX, grid.NY),
            file);
    }
    grid.Column_Width = read_sizes(reader, grid.NX, "column width");
    grid.Row_Height = read_sizes(reader, grid.NY, "row height");
    return grid;
}

std::string GridFile::bytes() const {
    std::string text = base::printed(NX) + base::printed(NY) + base::printed(NZ);
    text += line_end;
    for (const std::vector<float>* sizes : {&Column_Width, &Row_Height}) {
        for (const float size : *sizes) {
            text.append(base::printed(size)).append(line_end);
        }
    }
    return text;
}

std::optional<GridFile> GridFile::load(const core::ModelFiles& files) {
    const auto bytes = files.read_if(".xy");
    return bytes ? std::optional(read(*bytes, files.name_of(".xy"))) : std::nullopt;
}

std::optional<LayerFile> LayerFile::read(std::string_view bytes, const std::filesystem::path& file,
                                         int nz) {
    const std::vector<double> numbers = all_numbers(bytes, file);
    const double stored = numbers.empty() ? 0 : numbers.front();
    // The types of all stored layers come first, then the thicknesses, at least those of the model.
    if (nz < 1 || stored < nz || double(numbers.size()) < 1 + std::floor(stored) + nz) {
        return std::nullopt;
    }
    const auto count = static_cast<std::size_t>(stored);
    const auto number = [&](std::size_t index) {
        return index < numbers.size() ? to_single(numbers[index]) : 0;
    };
    LayerFile result;
    result.layers.resize(static_cast<std::size_t>(nz));
    for (std::size_t i = 0; i < result.layers.size(); ++i) {
        Layer& layer = result.layers[i];
        layer.type = static_cast<int>(std::clamp(numbers[1 + i], -32768., 32767.));
        layer.thickness = number(1 + count + i);
        for (std::size_t option = 0; option < option_count; ++option) {
            layer.options[option] = number(1 + 2 * count + option_count * i + option);
        }
    }
    result.closing[0] = number(1 + (2 + option_count) * count);
    result.closing[1] = number(2 + (2 + option_count) * count);
    return result;
}

LayerFile LayerFile::defaults(int nz) {
    LayerFile result;
    result.layers.resize(static_cast<std::size_t>(std::max(nz, 0)));
    return result;
}

std::string LayerFile::bytes() const {
    std::string text = base::printed(static_cast<std::int64_t>(layers.size()));
    text += line_end;
    for (const Layer& layer : layers) {
        text.append(base::printed(layer.type)).append(line_end);
    }
    for (const Layer& layer : layers) {
        text.append(base::printed(layer.thickness)).append(line_end);
    }
    for (const Layer& layer : layers) {
        for (const float option : layer.options) {
            text += base::printed(option);
        }
        text += line_end;
    }
    for (const float value : closing) {
        text.append(base::printed(value)).append(line_end);
    }
    return text;
}

std::optional<LayerFile> LayerFile::load(const core::ModelFiles& files, int nz) {
    const auto bytes = files.read_if(".l");
    return bytes ? read(*bytes, files.name_of(".l"), nz) : std::nullopt;
}

void LayerFile::save(core::ModelFiles& files) const {
    files.write(".l", bytes());
}

CellCoordinates Build_Cell_Coordinates(const GridFile& grid) {
    CellCoordinates cells;
    cells.x_edges = edges_of(grid.Column_Width);
    cells.y_edges = edges_of(grid.Row_Height);
    cells.x_centres = centres_of(cells.x_edges);
    cells.y_centres = centres_of(cells.y_edges);
    return cells;
}

GridPosition::GridPosition(const core::Project& project)
    : Grid_Left(project.single("GRIDPOSITION", "LEFT")),
      Grid_Top(project.single("GRIDPOSITION", "TOP")),
      Grid_Angle(project.single("GRIDPOSITION", "ANGLE")),
      Grid_Rad(project.single("GRIDPOSITION", "RAD")) {}

GridPosition::Point GridPosition::world(double x, double y) const {
    const double c = std::cos(Grid_Rad), s = std::sin(Grid_Rad);
    return {Grid_Left + x * c + y * s, Grid_Top + x * s - y * c};
}

GridPosition::Point GridPosition::local(double world_x, double world_y) const {
    const double dx = world_x - Grid_Left, dy = world_y - Grid_Top;
    const double c = std::cos(Grid_Rad), s = std::sin(Grid_Rad);
    return {c * dx + s * dy, s * dx - c * dy};
}

std::optional<CellIndex> find_cell(const GridFile& grid, const GridPosition& position, double x,
                                   double y) {
    const GridPosition::Point point = position.local(x, y);
    const auto column = first_reaching(grid.Column_Width, point.x);
    const auto row = first_reaching(grid.Row_Height, point.y);
    if (!column || !row) {
        return std::nullopt;
    }
    return CellIndex{*column, *row};
}

void place_grid(core::Project& project, const GridFile& grid) {
    if (!project.flags.is_defined(1, 2) || project.integer("GRIDPOSITION", "MOVED") != 0) {
        return;
    }
    const CellCoordinates cells = Build_Cell_Coordinates(grid);
    // A sheet that was never placed is twice as high as the grid.
    project.set_single("GRIDPOSITION", "TOP", project.single("DIMENSION", "SHEET_Y2") / 2);
    project.set_single("GRIDPOSITION", "LEFT", 0);
    project.set_integer("GRIDPOSITION", "MOVED", -1);
    set_sheet(project, cells.x_edges.back(), cells.y_edges.back());
}

void set_position(core::Project& project, double left, double top, double angle) {
    project.set_single("GRIDPOSITION", "LEFT", to_single(left));
    project.set_single("GRIDPOSITION", "TOP", to_single(top));
    project.set_single("GRIDPOSITION", "ANGLE", to_single(angle));
    project.set_single("GRIDPOSITION", "RAD", to_single(angle * std::numbers::pi / 180));
    project.set_integer("GRIDPOSITION", "MOVED", -1);
}

void set_sheet(core::Project& project, double x, double y) {
    set_sheet(project, {0, 0, to_single(x), to_single(y)});
}

std::optional<base::Refusal> sheet_refusal(const SheetEdges& edges) {
    if (edges.x1 < edges.x2 && edges.y1 < edges.y2) {
        return std::nullopt;
    }
    return base::Refusal{"Coordinate System", "Minimum > Maximum"};
}

void set_sheet(core::Project& project, const SheetEdges& edges) {
    project.set_single("DIMENSION", "SHEET_X1", edges.x1);
    project.set_single("DIMENSION", "SHEET_Y1", edges.y1);
    project.set_single("DIMENSION", "SHEET_X2", edges.x2);
    project.set_single("DIMENSION", "SHEET_Y2", edges.y2);
}

void Save_Grid_File(const GridFile& grid, core::Project& project, core::ModelFiles& files) {
    files.write(".xy", grid.bytes());
    project.set_integer("DIMENSION", "NX", grid.NX);
    project.set_integer("DIMENSION", "NY", grid.NY);
    project.set_integer("DIMENSION", "NZ", grid.NZ);
}

const OrientationWords& orientation_words(int GridOrientation) {
    static constexpr OrientationWords map_view = {"Layers", "Layer:", "&Layer Type...",
                                                  "&Top of Layers", "&Bottom of Layers"};
    static constexpr OrientationWords section = {
        "Cross Sections", "Cross Section:", "&Cross Section Options...",
        "&Front of Vertical Cross Sections", "&Back of Vertical Cross Sections"};
    const bool is_section =
        GridOrientation == core::vertical || GridOrientation == core::cylindrical;
    return is_section ? section : map_view;
}

} // namespace grid

// The rectilinear grid: columns, rows, layers, their sizes and the grid's place in the world.
#pragma once

#include "base/failure.h"
#include "core/modelflags.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace core {
class ModelFiles;
class Project;
} // namespace core

namespace grid {

inline constexpr int max_columns = 2000;
inline constexpr int max_rows = 2000;

// <base>.xy. Widths and heights in metres, column (row) i at index i - 1.
struct GridFile {
    int NX = 0, NY = 0, NZ = 0;
    std::vector<float> Column_Width;
    std::vector<float> Row_Height;

    // FileFailure when the numbers end early or an extent is not within 1 to 32767.
    static GridFile read(std::string_view bytes, const std::filesystem::path& file);
    std::string bytes() const;
    // The model's grid; nothing when there is no file.
    static std::optional<GridFile> load(const core::ModelFiles& files);
};

// <base>.l: type (0 confined, 1 unconfined), thickness in metres and six passive options of each
// layer.
struct LayerFile {
    static constexpr int option_count = 6;
    struct Layer {
        int type = 0;
        float thickness = 1;
        float options[option_count] = {};
    };
    std::vector<Layer> layers;
    float closing[2] = {};

    // The first `nz` layers, as many as the model has: nothing when the file has fewer types or
    // thicknesses ("no data for the grid"). Options and closing values that are not there are 0.
    static std::optional<LayerFile> read(std::string_view bytes, const std::filesystem::path& file,
                                         int nz);
    // Confined layers, 1 m thick.
    static LayerFile defaults(int nz);
    std::string bytes() const;
    // Nothing when there is no file or no data for the grid.
    static std::optional<LayerFile> load(const core::ModelFiles& files, int nz);
    void save(core::ModelFiles& files) const;
};

// Edges and centres, made by Build_Cell_Coordinates; index 0 is the left (upper) edge of the grid.
struct CellCoordinates {
    std::vector<double> x_edges, y_edges;     // NX + 1, NY + 1, metres from the upper left corner
    std::vector<double> x_centres, y_centres; // NX, NY
};
CellCoordinates Build_Cell_Coordinates(const GridFile& grid);

// The grid's place: origin (upper left corner) and rotation.
struct GridPosition {
    double Grid_Left = 0, Grid_Top = 0;
    double Grid_Angle = 0; // degrees
    double Grid_Rad = 0;   // radians; cosine and sine come from here

    explicit GridPosition(const core::Project& project);
    // World position of a point x to the right and y downward from the upper left corner.
    struct Point {
        double x, y;
    };
    Point world(double x, double y) const;
    // The way back: x to the right and y downward from the upper left corner.
    Point local(double world_x, double world_y) const;
};

struct CellIndex {
    int column, row; // from 1
};
// The cell at a world position: the first column and row whose far edge reaches it, so that a point
// on an edge belongs to the cell left of (above) it. Nothing outside the grid.
std::optional<CellIndex> find_cell(const GridFile& grid, const GridPosition& position, double x,
                                   double y);

// Puts the grid's upper left corner there and turns the grid round it, degrees counter-clockwise.
void set_position(core::Project& project, double left, double top, double angle);

// Places a defined mesh that was not placed yet: origin 0 and half the sheet's height, the
// sheet becomes the grid's extent. In memory only.
void place_grid(core::Project& project, const GridFile& grid);

// Makes the drawing sheet reach from 0, 0 to x, y.
void set_sheet(core::Project& project, double x, double y);
// The edges of the sheet in the world: left, lower, right, upper.
struct SheetEdges {
    float x1 = 0, y1 = 0, x2 = 1, y2 = 1;
};
// Why a sheet cannot have these edges.
std::optional<base::Refusal> sheet_refusal(const SheetEdges& edges);
void set_sheet(core::Project& project, const SheetEdges& edges);

// Writes <base>.xy and puts its extents into the three DIMENSION keys.
void Save_Grid_File(const GridFile& grid, core::Project& project, core::ModelFiles& files);

// Words that follow the orientation.
struct OrientationWords {
    const char* plural;   // "Layers" or "Cross Sections"
    const char* singular; // "Layer:" or "Cross Section:"
    const char* layer_type;
    const char* top_of_layers;
    const char* bottom_of_layers;
};
const OrientationWords& orientation_words(int GridOrientation);

// The hint of array commands without a mesh, under "Message".
inline constexpr const char* mesh_hint = "The size of the model mesh has to be specified first.";

} // namespace grid

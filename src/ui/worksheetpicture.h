// What the worksheet shows, as data: one layer with its colours, lines and marks. It knows neither
// a widget nor a session, so that the picture on the screen and the one on paper are the same.
#pragma once

#include "core/zonefile.h"
#include "grid/griddefinition.h"
#include "grid/worksheetdisplay.h"
#include "ui/contourpaths.h"

#include <QColor>
#include <QString>

#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace core {
class Project;
}

namespace ui {

// How the values of cells become colours. `classes`: inactive cells, fixed heads, wells and the
// like; the others: a scale from the least to the largest value.
enum class CellColours { classes, viridis, cividis, diverging, grey };

// Colour of a value on a scale, 0 the least and 1 the largest one. classes has no scale.
QRgb scale_colour(CellColours scale, double position);

// A colour key of the project.
QColor key_colour(const core::Project& project, const char* key);
bool key_shown(const core::Project& project, const char* key);

// Colours of classes, scales and marks that a picture can have.
inline constexpr int scale_colours = 200, mark_colours = 50;

struct LegendRow {
    QColor colour;
    QString text;
    bool outline = false; // a line, not a filled field
};

struct WorksheetPicture {
    struct Mark {
        grid::GridPosition::Point local; // metres in the grid's own frame
        QString name;
        QColor colour;
    };
    struct Well {
        grid::CellIndex cell;
        QRgb colour;
    };

    grid::GridFile grid;
    grid::CellCoordinates cells;
    std::optional<grid::GridPosition> position;
    QColor mesh_colour;
    bool mesh_shown = true;
    // Colour number of column i, row j at (j - 1) * NX + i - 1: 0 the ground, n the colour at n
    // - 1. Empty: all cells have the ground's.
    std::vector<std::uint8_t> cell_classes;
    std::vector<QRgb> colour_table;
    std::vector<Well> wells; // drawn at least a few pixels large
    std::vector<core::Zone> zones;
    bool zones_shown = false;
    std::vector<Mark> points;    // Monitoring Points
    std::vector<Mark> digitized; // without names
    std::shared_ptr<const ContourPaths> contours;
    // Factors by which columns and rows will be divided, in the mesh editor.
    std::vector<int> column_factors, row_factors;
    std::vector<LegendRow> legend;
    CellColours colours = CellColours::classes;
    double scale_least = 0, scale_largest = 0;
    QString scale_title;
};

// What the colours of one layer are made of; values and boundary have one item a cell or none.
struct LayerData {
    int number = 0;          // parameter of the values; 0: none
    float default_value = 0; // of a cell that nobody has set
    std::span<const float> values;
    std::span<const float> boundary; // flow boundaries (0: inactive)
    bool cross_section = false;
};

// Gives the picture its cell colours, wells, scale and legend for `picture.colours`.
void colour_cells(WorksheetPicture& picture, const core::Project& project, const LayerData& layer);
// The same for one cell whose value was changed. False: the whole layer has to be coloured.
bool recolour_cell(WorksheetPicture& picture, const core::Project& project, const LayerData& layer,
                   grid::CellIndex cell);

// A picture of the mesh in its place, with the model's colours for lines, without cells.
WorksheetPicture mesh_picture(const core::Project& project, const grid::GridFile& grid);

} // namespace ui

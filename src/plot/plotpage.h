// The worksheet as a picture: mesh, cells, zones, monitoring points and contours of one layer.
#pragma once

#include "core/zonefile.h"
#include "grid/griddefinition.h"
#include "grid/monitoring.h"
#include "plot/contourlevels.h"
#include "plot/contours.h"
#include "plot/plotdevice.h"
#include "plot/strokefont.h"

#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace base {
class Interaction;
}
namespace core {
class Project;
}

namespace plot {

enum class Display {
    world, // the sheet, with the grid in its place
    local, // the grid alone, not turned, its lower left corner at 0, 0
};

// The way from the grid's own frame and from the world to the sheet.
class PlotFrame {
public:
    PlotFrame(const core::Project& project, const grid::CellCoordinates& cells, Display display);

    // `Plot_Unit` stays 1.
    const Sheet& sheet() const { return sheet_; }
    Point from_grid(Point point) const;
    Point from_world(Point point) const; // y upward

private:
    grid::GridPosition position_;
    Display display_;
    Sheet sheet_;
};

// What a picture shows.
struct PlotShow {
    bool mesh = false, inactive = false, zones = false, contours = false, fill = false,
         bores = false;
};

// The data of one layer; what is not to be shown may be empty.
struct PlotData {
    const core::Project& project;
    grid::CellCoordinates cells;
    std::vector<float> values;   // to be contoured, NX * NY
    std::vector<float> boundary; // flow boundaries (0: inactive), NX * NY; empty: all active
    std::vector<core::Zone> zones;
    grid::MonitoringList bores;
    ContourLevels levels;
    StrokeFont font;
    // Colours of the cells as they are shown, `ground` for those that have none, NX * NY; empty:
    // none has a colour.
    std::vector<std::int32_t> cell_colours = {};
    std::vector<Point> digitized = {}; // points in the grid's own frame

    static constexpr std::int32_t ground = -1;

    ContourLayer layer() const;
    // Inactive cells are holes where `ignore_inactive` is set.
    HoleRule hole_rule(bool ignore_inactive) const;
};

// Draws the worksheet. Escape ends the drawing where it is; false then.
bool draw_worksheet(PlotDevice& device, const PlotFrame& frame, const PlotData& data,
                    const PlotShow& show, base::Interaction& user);

enum class Plot_Format { DXF, HPGL, BMP };
// The format of a name in the list of formats, or of a file name by its extension; in any case of
// letters. Nothing for others.
std::optional<Plot_Format> format_named(std::string_view name);
std::optional<Plot_Format> format_of_extension(std::string_view extension);
// World length of a plot unit: 1 m, for a plotter 1/10000 of the sheet's longer side.
double default_Plot_Unit(Plot_Format format, const Sheet& sheet);
std::unique_ptr<PlotFile> Plot_Open(Plot_Format format, const Sheet& sheet);

} // namespace plot

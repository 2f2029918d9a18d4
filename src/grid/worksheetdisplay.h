// How the worksheet lies on the screen: from pixels to the grid and back, in both displays.
#pragma once

#include "grid/griddefinition.h"

#include <optional>

namespace grid {

// "Real-World": the grid on its sheet, where it was placed and turned; y upward. "Local": the grid
// alone, unturned, its upper left corner at 0, 0.
enum class DisplayMode { world, local };

// The place of a picture, in pixels from its upper left corner, y downward.
struct Pixel {
    double x, y;
};

class WorksheetDisplay {
public:
    // Shows the whole grid in a picture of this size.
    WorksheetDisplay(DisplayMode mode, const GridFile& grid, const GridPosition& position,
                     double width, double height);

    // Metres of a pixel.
    double pixel_size() const { return pixel_size_; }
    // Zooms about a pixel, which stays; above 1 the picture becomes larger.
    void zoom(Pixel about, double factor);
    void shift(double pixels_x, double pixels_y);

    // Point of the grid's own frame, x to the right and y downward from its upper left corner.
    GridPosition::Point local(Pixel pixel) const;
    Pixel pixel(GridPosition::Point local) const;
    // Coordinates that the status bar shows: those of the world, or the local ones.
    GridPosition::Point shown(Pixel pixel) const;
    // The cell under a pixel; nothing outside the grid (a beep).
    std::optional<CellIndex> cell(Pixel pixel) const;

private:
    DisplayMode mode_;
    GridFile grid_;
    GridPosition position_;
    double left_ = 0, top_ = 0; // shown coordinates of the picture's upper left corner
    double pixel_size_ = 1;
};

} // namespace grid

#include "grid/worksheetdisplay.h"

#include <algorithm>

namespace grid {

namespace {

constexpr double margin = 1.05; // of the picture to what it shows

struct Box {
    double x1, y1, x2, y2; // y1 below y2
};

// Around the four corners of the grid in the world.
Box world_box(const CellCoordinates& cells, const GridPosition& position) {
    const double width = cells.x_edges.back(), height = cells.y_edges.back();
    const GridPosition::Point corners[] = {position.world(0, 0), position.world(width, 0),
                                           position.world(0, height),
                                           position.world(width, height)};
    Box box{corners[0].x, corners[0].y, corners[0].x, corners[0].y};
    for (const GridPosition::Point& corner : corners) {
        box.x1 = std::min(box.x1, corner.x);
        box.x2 = std::max(box.x2, corner.x);
        box.y1 = std::min(box.y1, corner.y);
        box.y2 = std::max(box.y2, corner.y);
    }
    return box;
}

} // namespace

WorksheetDisplay::WorksheetDisplay(DisplayMode mode, const GridFile& grid,
                                   const GridPosition& position, double width, double height)
    : mode_(mode), grid_(grid), position_(position) {
    const CellCoordinates cells = Build_Cell_Coordinates(grid);
    // The local frame has its y downward: seen upward, the grid lies below 0.
    const Box box = mode == DisplayMode::world
                        ? world_box(cells, position)
                        : Box{0, -cells.y_edges.back(), cells.x_edges.back(), 0};
    pixel_size_ = margin * std::max((box.x2 - box.x1) / width, (box.y2 - box.y1) / height);
    left_ = (box.x1 + box.x2 - width * pixel_size_) / 2;
    top_ = (box.y1 + box.y2 + height * pixel_size_) / 2;
}

void WorksheetDisplay::zoom(Pixel about, double factor) {
    left_ += about.x * (pixel_size_ - pixel_size_ / factor);
    top_ -= about.y * (pixel_size_ - pixel_size_ / factor);
    pixel_size_ /= factor;
}

void WorksheetDisplay::shift(double pixels_x, double pixels_y) {
    left_ -= pixels_x * pixel_size_;
    top_ += pixels_y * pixel_size_;
}

GridPosition::Point WorksheetDisplay::local(Pixel pixel) const {
    const double x = left_ + pixel.x * pixel_size_, y = top_ - pixel.y * pixel_size_;
    return mode_ == DisplayMode::world ? position_.local(x, y) : GridPosition::Point{x, -y};
}

Pixel WorksheetDisplay::pixel(GridPosition::Point local) const {
    const GridPosition::Point at = mode_ == DisplayMode::world
                                       ? position_.world(local.x, local.y)
                                       : GridPosition::Point{local.x, -local.y};
    return {(at.x - left_) / pixel_size_, (top_ - at.y) / pixel_size_};
}

GridPosition::Point WorksheetDisplay::shown(Pixel pixel) const {
    const GridPosition::Point point = local(pixel);
    return mode_ == DisplayMode::world ? position_.world(point.x, point.y) : point;
}

std::optional<CellIndex> WorksheetDisplay::cell(Pixel pixel) const {
    const GridPosition::Point point = local(pixel);
    const GridPosition::Point world = position_.world(point.x, point.y);
    return find_cell(grid_, position_, world.x, world.y);
}

} // namespace grid

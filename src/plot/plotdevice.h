// The primitives of all drawing: a picture is drawn once, on whatever implements them.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>

namespace plot {

// A position in metres. On the grid: x to the right and y downward from its upper left corner. On
// the sheet: x to the right, y downward from the sheet's upper edge.
struct Point {
    double x = 0, y = 0;
    bool operator==(const Point&) const = default;
};

// As plot files and tables hold numbers: beyond the range of a single the largest one, 0 for what
// is no number.
float to_single(double value);

// Corners of a rectangle: upper left, upper right, lower left, lower right.
using Corners = std::array<Point, 4>;

// What a picture is drawn on. Points are on the sheet, turned with the grid already.
class PlotDevice {
public:
    virtual ~PlotDevice() = default;

    // Colour of all that follows: 24 bits, red in the lowest byte, blue in the highest.
    virtual void Plot_Pen(std::int32_t colour) = 0;
    virtual void Plot_Line(Point from, Point to) = 0;
    // The next point of a polyline.
    virtual void Plot_Vertex(Point point) = 0;
    virtual void Plot_Circle(Point centre, double radius) = 0;
    // A filled rectangle, upright or turned with the grid.
    virtual void Plot_Solid(const Corners& corners) = 0;
    // A filled convex polygon, its corners in order round it.
    virtual void Plot_Polygon(std::span<const Point> corners) = 0;
};

// The sheet, and the world length of one unit in a plot file: a file holds x / Plot_Unit and
// (Sheet_Height - y) / Plot_Unit.
struct Sheet {
    double left = 0; // x of the left edge
    double width = 1, height = 1;
    double Sheet_Height = 1; // the height from which y counts downward
    double Plot_Unit = 1;

    Point plotted(Point point) const {
        return {point.x / Plot_Unit, (Sheet_Height - point.y) / Plot_Unit};
    }
};

// A device that makes a file. Its head is there from the beginning (`Plot_Open`).
class PlotFile : public PlotDevice {
public:
    // Writes the tail; all bytes of the file.
    virtual std::string Plot_Close() = 0;
};

} // namespace plot

// Plots for a pen plotter: HPGL in whole plot units, eight pens.
#pragma once

#include "plot/plotdevice.h"

#include <string_view>

namespace plot {

class HpglFile : public PlotFile {
public:
    explicit HpglFile(const Sheet& sheet);

    void Plot_Pen(std::int32_t colour) override;
    void Plot_Line(Point from, Point to) override;
    void Plot_Vertex(Point point) override;
    void Plot_Circle(Point centre, double radius) override;
    // One that is turned has no fill: the plotter fills upright rectangles only.
    void Plot_Solid(const Corners& corners) override;
    void Plot_Polygon(std::span<const Point> corners) override;
    std::string Plot_Close() override;

private:
    // "x,y" of a point of the sheet.
    std::string place(Point point) const;
    std::string length(double metres) const;
    // Fills the rectangle when its sides are parallel to those of the sheet, otherwise false.
    bool put_upright(const Corners& corners);
    // A command that draws, with the pen that belongs to it.
    void put(std::string_view command);

    Sheet sheet_;
    int pen_ = 1;      // the pen wanted
    int pen_held_ = 1; // the one that the plotter holds
    std::string text_;
};

} // namespace plot

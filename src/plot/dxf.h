// Plots as DXF drawings: entities alone, on layer 0.
#pragma once

#include "plot/plotdevice.h"

#include <string_view>

namespace plot {

class DxfFile : public PlotFile {
public:
    explicit DxfFile(const Sheet& sheet);

    void Plot_Pen(std::int32_t colour) override;
    void Plot_Line(Point from, Point to) override;
    void Plot_Vertex(Point point) override;
    void Plot_Circle(Point centre, double radius) override;
    void Plot_Solid(const Corners& corners) override;
    void Plot_Polygon(std::span<const Point> corners) override;
    std::string Plot_Close() override;

private:
    void line(std::string_view text);
    void number(std::string_view code, double value);
    void begin(std::string_view entity);
    // x and y as groups 10 + index and 20 + index.
    void point(int index, Point point);

    Sheet sheet_;
    std::string colour_; // as it is printed
    std::string text_;
};

} // namespace plot

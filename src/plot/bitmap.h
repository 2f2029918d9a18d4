// Plots as Windows bitmaps: 24 bits a pixel, uncompressed, on white.
#pragma once

#include "plot/plotdevice.h"

namespace plot {

class BitmapFile : public PlotFile {
public:
    static constexpr int longer_side = 1000; // pixels

    explicit BitmapFile(const Sheet& sheet);

    void Plot_Pen(std::int32_t colour) override { colour_ = colour; }
    void Plot_Line(Point from, Point to) override;
    // A line from the last vertex, or from the end of the last line.
    void Plot_Vertex(Point point) override;
    void Plot_Circle(Point centre, double radius) override;
    void Plot_Solid(const Corners& corners) override;
    void Plot_Polygon(std::span<const Point> corners) override;
    std::string Plot_Close() override;

    int width() const { return width_; }
    int height() const { return height_; }

private:
    // In pixels from the middle of the upper left one, y downward.
    Point pixel(Point point) const;
    void set(int x, int y);
    void fill_row(int y, std::span<const Point> corners);

    Sheet sheet_;
    double scale_; // pixels per metre
    int width_ = 1, height_ = 1;
    std::size_t row_bytes_; // filled up to a multiple of 4
    std::int32_t colour_ = 0;
    Point last_;
    std::string pixels_; // lowest row first; blue, green, red
};

} // namespace plot

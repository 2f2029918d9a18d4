// Contours of one layer, traced once and kept, so that a change of zoom only maps them anew.
#pragma once

#include "plot/plotdevice.h"

#include <QImage>
#include <QTransform>

#include <cstdint>
#include <vector>

class QPainter;

namespace ui {

// A device that remembers what is drawn on it, in sheet coordinates.
class ContourPaths : public plot::PlotDevice {
public:
    void Plot_Pen(std::int32_t colour) override { pen_ = colour; }
    void Plot_Line(plot::Point from, plot::Point to) override;
    void Plot_Vertex(plot::Point) override {}
    void Plot_Circle(plot::Point, double) override {}
    void Plot_Solid(const plot::Corners& corners) override;
    void Plot_Polygon(std::span<const plot::Point> corners) override;

    // `to_pixel` takes sheet coordinates to pixels. Bands go into the picture before the mesh,
    // lines on it behind the zones.
    void fill(QImage& picture, const QTransform& to_pixel) const;
    void draw_bands(QPainter& painter, const QTransform& to_pixel) const;
    void draw_lines(QPainter& painter, const QTransform& to_pixel) const;
    bool empty() const { return lines_.empty() && bands_.empty(); }

private:
    struct Path {
        std::int32_t colour;
        std::size_t first, end; // of points_
    };
    void add(std::vector<Path>& paths, std::span<const plot::Point> points);
    bool widen_last(std::span<const plot::Point> corners);

    std::int32_t pen_ = 0;
    std::vector<plot::Point> points_;
    std::vector<Path> lines_, bands_;
};

} // namespace ui

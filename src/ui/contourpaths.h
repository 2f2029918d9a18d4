// Contours of one layer, traced once and kept in the grid's own frame, so that a change of zoom
// only maps them anew.
#pragma once

#include "plot/plotdevice.h"

#include <QColor>
#include <QImage>
#include <QTransform>

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

class QPainter;

namespace ui {

// A device that remembers what is drawn on it.
class ContourPaths : public plot::PlotDevice {
public:
    // The way from the sheet coordinates of what follows to the grid's own frame.
    void set_sheet(const QTransform& to_local) { to_local_ = to_local; }

    void Plot_Pen(std::int32_t colour) override { pen_ = colour; }
    void Plot_Line(plot::Point from, plot::Point to) override;
    void Plot_Vertex(plot::Point) override {}
    void Plot_Circle(plot::Point, double) override {}
    void Plot_Solid(const plot::Corners&) override {}
    void Plot_Polygon(std::span<const plot::Point> corners) override;

    // Bands and lines, mapped from the grid's own frame to pixels; `fill` works on an image's own
    // pixels and leaves no seam between bands.
    void fill(QImage& picture, const QTransform& to_pixel) const;
    void draw_bands(QPainter& painter, const QTransform& to_pixel) const;
    // `ink` gives a line's colour on this ground.
    void draw_lines(QPainter& painter, const QTransform& to_pixel,
                    const std::function<QColor(const QColor&)>& ink) const;
    bool has_bands() const { return !bands_.empty(); }

private:
    struct Path {
        QRgb colour;
        std::size_t first, end; // of points_
    };
    void add(std::vector<Path>& paths, std::span<const QPointF> points);
    bool widen_last(std::span<const QPointF> corners);
    QRgb colour() const;

    QTransform to_local_;
    std::int32_t pen_ = 0;
    std::vector<QPointF> line_points_, band_points_;
    std::vector<Path> lines_, bands_;
};

// Fills a convex polygon: the pixels whose centre lies in it.
void fill_convex(QImage& picture, std::span<const QPointF> corners, QRgb colour);

} // namespace ui

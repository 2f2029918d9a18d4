#include "ui/contourpaths.h"

#include "ui/colours.h"
#include "ui/worksheetpicture.h"

#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>

namespace ui {

namespace {

// Points of a line nearer than this are one, in pixels.
constexpr double finest = 0.7;

int first_centre(double edge, int limit) {
    return static_cast<int>(std::clamp(std::ceil(edge - 0.5), 0., double(limit)));
}

} // namespace

void fill_convex(QImage& picture, std::span<const QPointF> corners, QRgb colour) {
    double top = corners[0].y(), bottom = top;
    for (const QPointF& corner : corners) {
        top = std::min(top, corner.y());
        bottom = std::max(bottom, corner.y());
    }
    const int end = first_centre(bottom, picture.height());
    for (int row = first_centre(top, picture.height()); row < end; ++row) {
        const double y = row + 0.5;
        double left = picture.width(), right = 0;
        QPointF from = corners.back();
        for (const QPointF& to : corners) {
            if ((from.y() <= y) != (to.y() <= y)) {
                const double x =
                    from.x() + (y - from.y()) / (to.y() - from.y()) * (to.x() - from.x());
                left = std::min(left, x);
                right = std::max(right, x);
            }
            from = to;
        }
        auto* const line = reinterpret_cast<QRgb*>(picture.scanLine(row));
        const int last = first_centre(right, picture.width());
        for (int x = first_centre(left, picture.width()); x < last; ++x) {
            line[x] = colour;
        }
    }
}

QRgb ContourPaths::colour() const {
    return to_qt_colour(pen_).rgb();
}

void ContourPaths::Plot_Line(plot::Point from, plot::Point to) {
    const QPointF a = to_local_.map(QPointF(from.x, from.y)),
                  b = to_local_.map(QPointF(to.x, to.y));
    const QRgb pen = colour();
    if (lines_.empty() || lines_.back().colour != pen || line_points_.back() != a) {
        lines_.push_back({pen, line_points_.size(), 0});
        line_points_.push_back(a);
    }
    line_points_.push_back(b);
    lines_.back().end = line_points_.size();
}

// Bands are made of the quads of a row: those that are whole and follow each other become one.
bool ContourPaths::widen_last(std::span<const QPointF> corners) {
    if (bands_.empty() || corners.size() != 4 || bands_.back().colour != colour() ||
        bands_.back().end - bands_.back().first != 4) {
        return false;
    }
    QPointF* const last = &band_points_[bands_.back().first];
    const auto straight = [](QPointF a, QPointF b, QPointF c) {
        return (a.y() == b.y() && b.y() == c.y()) || (a.x() == b.x() && b.x() == c.x());
    };
    for (int n = 0; n < 4; ++n) { // the side of the last one that this one shares
        const QPointF &a = last[n], &b = last[(n + 1) % 4];
        for (int m = 0; m < 4; ++m) {
            const auto at = [&](int k) { return corners[static_cast<std::size_t>((m + k) % 4)]; };
            if (at(1) == a && at(0) == b && straight(last[(n + 3) % 4], a, at(2)) &&
                straight(last[(n + 2) % 4], b, at(3))) {
                last[n] = at(2);
                last[(n + 1) % 4] = at(3);
                return true;
            }
        }
    }
    return false;
}

void ContourPaths::Plot_Polygon(std::span<const plot::Point> corners) {
    std::array<QPointF, 16> local;
    const std::size_t count = std::min(corners.size(), local.size());
    for (std::size_t n = 0; n < count; ++n) {
        local[n] = to_local_.map(QPointF(corners[n].x, corners[n].y));
    }
    const std::span<const QPointF> points(local.data(), count);
    if (count < 3 || widen_last(points)) {
        return;
    }
    bands_.push_back({colour(), band_points_.size(), band_points_.size() + count});
    band_points_.insert(band_points_.end(), points.begin(), points.end());
}

void ContourPaths::fill(QImage& picture, const QTransform& to_pixel) const {
    std::array<QPointF, 16> corners;
    for (const Path& band : bands_) {
        const std::size_t count = band.end - band.first;
        for (std::size_t n = 0; n < count; ++n) {
            corners[n] = to_pixel.map(band_points_[band.first + n]);
        }
        fill_convex(picture, {corners.data(), count}, band.colour);
    }
}

void ContourPaths::draw_bands(QPainter& painter, const QTransform& to_pixel) const {
    QPolygonF polygon;
    painter.setPen(Qt::NoPen);
    for (const Path& band : bands_) {
        polygon.clear();
        for (std::size_t n = band.first; n < band.end; ++n) {
            polygon.append(to_pixel.map(band_points_[n]));
        }
        painter.setBrush(QColor(band.colour));
        painter.drawConvexPolygon(polygon);
    }
}

void ContourPaths::draw_lines(QPainter& painter, const QTransform& to_pixel,
                              const std::function<QColor(const QColor&)>& ink) const {
    QPolygonF polyline;
    painter.setBrush(Qt::NoBrush);
    QRgb colour = 0;
    for (const Path& line : lines_) {
        polyline.clear();
        for (std::size_t n = line.first; n < line.end; ++n) {
            const QPointF point = to_pixel.map(line_points_[n]);
            if (polyline.isEmpty() || n + 1 == line.end ||
                (point - polyline.back()).manhattanLength() >= finest) {
                polyline.append(point);
            }
        }
        if (line.colour != colour || painter.pen().style() == Qt::NoPen) {
            colour = line.colour;
            painter.setPen(QPen(ink(QColor(colour)), 0));
        }
        painter.drawPolyline(polyline);
    }
}

} // namespace ui

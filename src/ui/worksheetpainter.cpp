#include "ui/worksheetpainter.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace ui {

namespace {

// Cells smaller than this have no mesh lines, wells are not smaller than the second; pixels.
constexpr double finest_mesh = 4, least_well = 4;
constexpr double point_radius = 3;

// Edges behind the far one of a cell: columns `first` to `last` (from 0) reach into low to high.
struct Range {
    std::size_t first, last;
};
Range visible(const std::vector<double>& edges, double low, double high) {
    const auto count = edges.size() - 1;
    const auto first = std::upper_bound(edges.begin(), edges.end(), low) - edges.begin();
    const auto end = std::lower_bound(edges.begin(), edges.end(), high) - edges.begin();
    return {static_cast<std::size_t>(std::max<std::ptrdiff_t>(first - 1, 0)),
            std::min(static_cast<std::size_t>(std::max<std::ptrdiff_t>(end, 0)), count)};
}

// For each of `count` pixels the index of the cell that holds its centre, from 0; -1 outside. The
// position of pixel n is start + n * step.
std::vector<int> cells_of_pixels(const std::vector<double>& edges, double start, double step,
                                 int count) {
    std::vector<int> found(static_cast<std::size_t>(count), -1);
    for (int n = 0; n < count; ++n) {
        const double at = start + n * step;
        if (at < edges.front() || at > edges.back()) {
            continue;
        }
        // A point on an edge belongs to the cell before it.
        const auto edge = std::lower_bound(edges.begin() + 1, edges.end(), at);
        found[static_cast<std::size_t>(n)] = static_cast<int>(edge - edges.begin()) - 1;
    }
    return found;
}

bool is_upright(const QTransform& transform) {
    return transform.m12() == 0 && transform.m21() == 0;
}

double length(QPointF vector) {
    return std::hypot(vector.x(), vector.y());
}

} // namespace

QTransform local_to_pixel(const grid::WorksheetDisplay& display) {
    // Far from the origin, so that the digits of world coordinates are not lost in differences.
    constexpr double far = 1e4;
    const grid::Pixel origin = display.pixel({0, 0}), right = display.pixel({far, 0}),
                      down = display.pixel({0, far});
    const auto flat = [&](double part) {
        return std::fabs(part) < 1e-9 / display.pixel_size() ? 0 : part;
    };
    return {flat((right.x - origin.x) / far),
            flat((right.y - origin.y) / far),
            flat((down.x - origin.x) / far),
            flat((down.y - origin.y) / far),
            origin.x,
            origin.y};
}

WorksheetInks::WorksheetInks(const QPalette& palette)
    : surround(palette.color(QPalette::Window)), ground(palette.color(QPalette::Base)),
      text(palette.color(QPalette::Text)), frame(palette.color(QPalette::Mid)), zone(text),
      open_zone(Qt::red), selected_zone(Qt::blue) {
    if (is_dark()) {
        open_zone = QColor(255, 96, 96);
        selected_zone = QColor(112, 160, 255);
    }
}

QColor WorksheetInks::readable(const QColor& colour) const {
    constexpr int least_contrast = 60;
    return std::abs(colour.lightness() - ground.lightness()) < least_contrast ? text : colour;
}

QColor WorksheetInks::mesh(const QColor& colour) const {
    if (!is_dark() || colour.lightness() < 128) {
        return colour;
    }
    return QColor((colour.red() + 2 * ground.red()) / 3, (colour.green() + 2 * ground.green()) / 3,
                  (colour.blue() + 2 * ground.blue()) / 3);
}

QColor WorksheetInks::cell_class(const QColor& colour) const {
    constexpr int palest = 190;
    constexpr float lightness = 0.28F;
    if (!is_dark() || colour.lightness() < palest) {
        return colour;
    }
    return QColor::fromHslF(colour.hslHueF(), colour.hslSaturationF() / 2, lightness);
}

QImage WorksheetPainter::image(QSize size, double ratio, const QFont& font) const {
    QImage image(size, QImage::Format_RGB32);
    image.fill(inks_.surround);
    map_cells(image, ratio);
    if (picture_.contours) {
        picture_.contours->fill(image, to_pixel_ * QTransform::fromScale(ratio, ratio));
    }
    image.setDevicePixelRatio(ratio);
    QPainter painter(&image);
    painter.setFont(font);
    draw_lines_and_marks(painter, QRectF(QPointF(0, 0), QSizeF(size) / ratio));
    return image;
}

void WorksheetPainter::draw(QPainter& painter, const QRectF& area) const {
    painter.save();
    painter.setClipRect(area, Qt::IntersectClip);
    draw_cells(painter);
    if (picture_.contours) {
        picture_.contours->draw_bands(painter, to_pixel_);
    }
    draw_lines_and_marks(painter, area);
    painter.restore();
}

std::vector<QRgb> WorksheetPainter::colours() const {
    std::vector<QRgb> table(256, inks_.ground.rgb());
    const bool is_scale = picture_.colours != CellColours::classes;
    for (std::size_t n = 0; n < picture_.colour_table.size(); ++n) {
        if (picture_.colour_table[n] != 0) {
            const QColor colour(picture_.colour_table[n]);
            table[n + 1] = (is_scale ? colour : inks_.cell_class(colour)).rgb();
        }
    }
    return table;
}

QRgb WorksheetPainter::colour_at(std::size_t cell, const std::vector<QRgb>& table) const {
    if (!marked_.empty() && marked_[cell] != 0) {
        return mark_colours_[marked_[cell] - 1U];
    }
    return picture_.cell_classes.empty() ? table[0] : table[picture_.cell_classes[cell]];
}

void WorksheetPainter::map_cells(QImage& image, double ratio) const {
    const QTransform to_device = to_pixel_ * QTransform::fromScale(ratio, ratio);
    const QTransform to_local = to_device.inverted();
    if (is_upright(to_local)) {
        map_upright(image, to_local);
    } else {
        map_turned(image, to_local);
    }
}

void WorksheetPainter::map_upright(QImage& image, const QTransform& to_local) const {
    const std::vector<QRgb> table = colours();
    const QPointF start = to_local.map(QPointF(0.5, 0.5));
    const auto columns =
        cells_of_pixels(picture_.cells.x_edges, start.x(), to_local.m11(), image.width());
    const auto rows =
        cells_of_pixels(picture_.cells.y_edges, start.y(), to_local.m22(), image.height());
    const auto inside = [](int cell) { return cell >= 0; };
    const auto first = std::ranges::find_if(columns, inside) - columns.begin();
    const auto end = columns.rend() - std::find_if(columns.rbegin(), columns.rend(), inside);
    const auto NX = picture_.cells.x_centres.size();
    int above = -1;
    for (int y = 0; y < image.height(); ++y) {
        const int row = rows[static_cast<std::size_t>(y)];
        if (row >= 0 && end > first) {
            auto* const line = reinterpret_cast<QRgb*>(image.scanLine(y));
            if (row == above) {
                std::memcpy(line + first, image.constScanLine(y - 1) + 4 * first,
                            static_cast<std::size_t>(end - first) * sizeof(QRgb));
            } else {
                const std::size_t base = static_cast<std::size_t>(row) * NX;
                for (auto x = first; x < end; ++x) {
                    const auto column =
                        static_cast<std::size_t>(columns[static_cast<std::size_t>(x)]);
                    line[x] = colour_at(base + column, table);
                }
            }
        }
        above = row;
    }
}

// A line of pixels runs through the grid as a straight line: from pixel to pixel the cell is a
// neighbour of the last one, or near to it.
void WorksheetPainter::map_turned(QImage& image, const QTransform& to_local) const {
    const std::vector<QRgb> table = colours();
    const auto& x_edges = picture_.cells.x_edges;
    const auto& y_edges = picture_.cells.y_edges;
    const double dx = to_local.m11(), dy = to_local.m12();
    const auto step_to = [](const std::vector<double>& edges, std::size_t& cell, double at) {
        while (at > edges[cell + 1]) {
            ++cell;
        }
        while (cell > 0 && at <= edges[cell]) {
            --cell;
        }
    };
    std::size_t column = 0, row = 0;
    const std::size_t NX = picture_.cells.x_centres.size();
    for (int y = 0; y < image.height(); ++y) {
        const QPointF start = to_local.map(QPointF(0.5, y + 0.5));
        auto* const line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const double at_x = start.x() + x * dx, at_y = start.y() + x * dy;
            if (at_x < 0 || at_y < 0 || at_x > x_edges.back() || at_y > y_edges.back()) {
                continue;
            }
            step_to(x_edges, column, at_x);
            step_to(y_edges, row, at_y);
            line[x] = colour_at(row * NX + column, table);
        }
    }
}

// As rectangles of equal cells; the ground first.
void WorksheetPainter::draw_cells(QPainter& painter) const {
    const auto& x = picture_.cells.x_edges;
    const auto& y = picture_.cells.y_edges;
    painter.setPen(Qt::NoPen);
    const auto rectangle = [&](std::size_t c1, std::size_t c2, std::size_t r, std::size_t r2,
                               QRgb colour) {
        painter.setBrush(QColor(colour));
        painter.drawPolygon(
            to_pixel_.map(QPolygonF(QRectF(QPointF(x[c1], y[r]), QPointF(x[c2], y[r2])))));
    };
    const std::vector<QRgb> table = colours();
    const std::size_t NX = picture_.cells.x_centres.size(), NY = picture_.cells.y_centres.size();
    rectangle(0, NX, 0, NY, table[0]);
    for (std::size_t row = 0; row < NY; ++row) {
        for (std::size_t first = 0, end = 0; first < NX; first = end) {
            const QRgb colour = colour_at(row * NX + first, table);
            for (end = first + 1; end < NX && colour_at(row * NX + end, table) == colour;) {
                ++end;
            }
            if (colour != table[0]) {
                rectangle(first, end, row, row + 1, colour);
            }
        }
    }
}

void WorksheetPainter::draw_lines_and_marks(QPainter& painter, const QRectF& area) const {
    draw_mesh(painter, area);
    draw_division(painter, area);
    if (picture_.zones_shown) {
        for (const core::Zone& zone : picture_.zones) {
            draw_zone(painter, zone, inks_.zone);
        }
    }
    if (picture_.contours) {
        picture_.contours->draw_lines(painter, to_pixel_, [this](const QColor& colour) {
            return picture_.contours->has_bands() ? colour : inks_.readable(colour);
        });
    }
    draw_wells(painter, area);
    draw_points(painter);
}

void WorksheetPainter::draw_mesh(QPainter& painter, const QRectF& area) const {
    const auto& x = picture_.cells.x_edges;
    const auto& y = picture_.cells.y_edges;
    const QRectF seen =
        to_pixel_.inverted().mapRect(area).intersected(QRectF(0, 0, x.back(), y.back()));
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(picture_.mesh_shown ? inks_.mesh(picture_.mesh_colour) : inks_.frame, 0));
    const QRectF whole(0, 0, x.back(), y.back());
    painter.drawPolygon(to_pixel_.map(QPolygonF(whole)));
    if (!picture_.mesh_shown || seen.isEmpty()) {
        return;
    }
    QVector<QLineF> lines;
    const auto lines_at = [&](const std::vector<double>& edges, double low, double high,
                              double scale, auto&& line) {
        const Range range = visible(edges, low, high);
        const auto wide = [&](std::size_t cell) {
            return (edges[cell + 1] - edges[cell]) * scale >= finest_mesh;
        };
        for (std::size_t n = std::max<std::size_t>(range.first, 1);
             n <= range.last && n + 1 < edges.size(); ++n) {
            if (wide(n - 1) || wide(n)) {
                lines.append(line(edges[n]));
            }
        }
    };
    const QPointF zero = to_pixel_.map(QPointF(0, 0));
    lines_at(x, seen.left(), seen.right(), length(to_pixel_.map(QPointF(1, 0)) - zero),
             [&](double at) { return to_pixel_.map(QLineF(at, seen.top(), at, seen.bottom())); });
    lines_at(y, seen.top(), seen.bottom(), length(to_pixel_.map(QPointF(0, 1)) - zero),
             [&](double at) { return to_pixel_.map(QLineF(seen.left(), at, seen.right(), at)); });
    painter.drawLines(lines);
}

// Where columns and rows will be divided.
void WorksheetPainter::draw_division(QPainter& painter, const QRectF& area) const {
    const auto& x = picture_.cells.x_edges;
    const auto& y = picture_.cells.y_edges;
    QVector<QLineF> lines;
    const auto divide = [&](const std::vector<double>& edges, const std::vector<int>& factors,
                            auto&& line) {
        for (std::size_t n = 0; n < factors.size(); ++n) {
            for (int part = 1; part < factors[n]; ++part) {
                const double at = edges[n] + (edges[n + 1] - edges[n]) * part / factors[n];
                const QLineF found = to_pixel_.map(line(at));
                if (area.intersects(
                        QRectF(found.p1(), found.p2()).normalized().adjusted(-1, -1, 1, 1))) {
                    lines.append(found);
                }
            }
        }
    };
    divide(x, picture_.column_factors, [&](double at) { return QLineF(at, 0, at, y.back()); });
    divide(y, picture_.row_factors, [&](double at) { return QLineF(0, at, x.back(), at); });
    if (!lines.isEmpty()) {
        painter.setPen(QPen(inks_.text, 0, Qt::DashLine));
        painter.drawLines(lines);
    }
}

void WorksheetPainter::draw_zone(QPainter& painter, const core::Zone& zone,
                                 const QColor& colour) const {
    QPolygonF outline;
    for (std::size_t n = 1; n <= static_cast<std::size_t>(zone.nodes); ++n) {
        outline.append(to_pixel_.map(QPointF(double{zone.x[n]}, double{zone.y[n]})));
    }
    QPen pen(colour, 1.5);
    pen.setJoinStyle(Qt::MiterJoin);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.drawPolygon(outline);
    painter.setRenderHint(QPainter::Antialiasing, false);
}

QPolygonF WorksheetPainter::cell_outline(grid::CellIndex cell) const {
    const auto column = static_cast<std::size_t>(cell.column),
               row = static_cast<std::size_t>(cell.row);
    const auto& x = picture_.cells.x_edges;
    const auto& y = picture_.cells.y_edges;
    const QRectF place(QPointF(x[column - 1], y[row - 1]), QPointF(x[column], y[row]));
    QPolygonF outline = to_pixel_.map(QPolygonF(place));
    outline.removeLast(); // repeats the first corner
    return outline;
}

void WorksheetPainter::draw_wells(QPainter& painter, const QRectF& area) const {
    painter.setPen(Qt::NoPen);
    for (const WorksheetPicture::Well& well : picture_.wells) {
        const QPolygonF outline = cell_outline(well.cell);
        QRectF box = outline.boundingRect();
        if (!area.intersects(box) || std::min(box.width(), box.height()) >= least_well) {
            continue; // its cell is large enough to be seen
        }
        const QPointF middle = box.center();
        box.setSize(box.size().expandedTo(QSizeF(least_well, least_well)));
        box.moveCenter(middle);
        painter.fillRect(box, QColor(well.colour));
    }
}

void WorksheetPainter::draw_points(QPainter& painter) const {
    painter.setRenderHint(QPainter::Antialiasing, true);
    for (const auto* marks : {&picture_.points, &picture_.digitized}) {
        for (const WorksheetPicture::Mark& mark : *marks) {
            const QPointF at = to_pixel_.map(QPointF(mark.local.x, mark.local.y));
            // With a rim, so that it is readable on every colour.
            QPainterPath name;
            name.addEllipse(at, point_radius, point_radius);
            name.addText(at + QPointF(2 * point_radius, -point_radius), painter.font(), mark.name);
            painter.strokePath(name, QPen(inks_.ground, 3));
            const QColor ink = inks_.readable(mark.colour);
            painter.setPen(QPen(ink, 1.5));
            painter.setBrush(Qt::NoBrush);
            painter.drawEllipse(at, point_radius, point_radius);
            painter.setPen(ink);
            painter.drawText(at + QPointF(2 * point_radius, -point_radius), mark.name);
        }
    }
    painter.setRenderHint(QPainter::Antialiasing, false);
}

} // namespace ui

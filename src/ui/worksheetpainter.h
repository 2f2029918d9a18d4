// Paints a picture of the worksheet: into an image, pixel by pixel, or with any painter.
#pragma once

#include "ui/worksheetpicture.h"

#include <QImage>
#include <QPalette>
#include <QTransform>

#include <span>

class QPainter;

namespace ui {

// Where a picture lies: the way from the grid's own frame to pixels, y downward in both.
QTransform local_to_pixel(const grid::WorksheetDisplay& display);

// Colours of the picture that come from the palette of the program.
struct WorksheetInks {
    QColor surround, ground, text, frame;
    QColor zone, open_zone, selected_zone;
    explicit WorksheetInks(const QPalette& palette);
    // The colour, or that of texts where it cannot be told from the ground.
    QColor readable(const QColor& colour) const;
    // Lines of the mesh stay in the background of a dark picture, too.
    QColor mesh(const QColor& colour) const;
    // The same for the pale colours of whole numbers, on which texts and outlines are to be seen.
    QColor cell_class(const QColor& colour) const;

private:
    bool is_dark() const { return ground.lightness() < 128; }
};

class WorksheetPainter {
public:
    // `to_pixel` takes the grid's own frame to logical pixels.
    WorksheetPainter(const WorksheetPicture& picture, const QTransform& to_pixel,
                     const WorksheetInks& inks)
        : picture_(picture), to_pixel_(to_pixel), inks_(inks) {}

    // Colours of cells over those of the picture: one number a cell, 0 for none.
    void set_marks(std::span<const std::uint8_t> cells, std::span<const QRgb> colours) {
        marked_ = cells;
        mark_colours_ = colours;
    }

    // The whole picture in device pixels; `size` in device pixels, `ratio` of them to a logical
    // one.
    QImage image(QSize size, double ratio, const QFont& font) const;
    // The same with lines that can be enlarged; nothing is filled outside the grid.
    void draw(QPainter& painter, const QRectF& area) const;

    void draw_zone(QPainter& painter, const core::Zone& zone, const QColor& colour) const;
    QPolygonF cell_outline(grid::CellIndex cell) const;

private:
    void map_cells(QImage& image, double ratio) const;
    void map_upright(QImage& image, const QTransform& to_local) const;
    void map_turned(QImage& image, const QTransform& to_local) const;
    void draw_cells(QPainter& painter) const;
    void draw_lines_and_marks(QPainter& painter, const QRectF& area) const;
    void draw_mesh(QPainter& painter, const QRectF& area) const;
    void draw_division(QPainter& painter, const QRectF& area) const;
    void draw_wells(QPainter& painter, const QRectF& area) const;
    void draw_points(QPainter& painter) const;
    std::vector<QRgb> colours() const;
    QRgb colour_at(std::size_t cell, const std::vector<QRgb>& table) const;

    const WorksheetPicture& picture_;
    QTransform to_pixel_;
    WorksheetInks inks_;
    std::span<const std::uint8_t> marked_;
    std::span<const QRgb> mark_colours_;
};

} // namespace ui

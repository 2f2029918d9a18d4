#include "ui/worksheetlegend.h"

#include "ui/worksheetpainter.h"

#include <QPainter>

#include <algorithm>

namespace ui {

namespace {

std::vector<LegendRow> rows_of(const WorksheetPicture& picture, const WorksheetInks& inks) {
    std::vector<LegendRow> rows = picture.legend;
    if (picture.zones_shown && !picture.zones.empty()) {
        rows.push_back({inks.zone, "Zone", true});
        rows.push_back({inks.selected_zone, "Selected zone", true});
        rows.push_back({inks.open_zone, "Open zone", true});
    }
    return rows;
}

// Values beside the scale, from the top.
QStringList scale_texts(const WorksheetPicture& picture) {
    QStringList texts;
    constexpr int last = 4;
    for (int n = 0; n <= last; ++n) {
        const double part = 1 - double(n) / last;
        const double value =
            picture.scale_least + part * (picture.scale_largest - picture.scale_least);
        texts.append(QString::number(value, 'g', 4));
    }
    return texts;
}

bool has_scale(const WorksheetPicture& picture) {
    return picture.colours != CellColours::classes && !picture.cell_classes.empty();
}

// What the legend needs for its texts, in pixels.
class Measure {
public:
    Measure(const WorksheetPicture& picture, const std::vector<LegendRow>& rows, const QFont& font)
        : picture_(picture), rows_(rows), metrics_(font) {}

    double line() const { return metrics_.height() * 1.25; }
    double gap() const { return line() / 2; }
    double scale_height() const { return has_scale(picture_) ? 6.75 * line() : 0; }

    // In the upper right corner of the area; empty when there is nothing to explain.
    QRectF box(const QRectF& area) const {
        if (rows_.empty() && !has_scale(picture_)) {
            return {};
        }
        const QSizeF size(width(),
                          scale_height() + (static_cast<double>(rows_.size()) + 1) * line());
        return {QPointF(area.right() - size.width() - gap(), area.top() + gap()), size};
    }

private:
    double width() const {
        // The same for all layers of an item, as far as their texts allow.
        double width = row_width("+0.000e+00");
        if (has_scale(picture_)) {
            width = std::max(width, metrics_.horizontalAdvance(picture_.scale_title));
        }
        for (const LegendRow& row : rows_) {
            width = std::max(width, row_width(row.text));
        }
        return width + line();
    }
    double row_width(const QString& text) const {
        return 1.5 * line() + metrics_.horizontalAdvance(text);
    }

    const WorksheetPicture& picture_;
    const std::vector<LegendRow>& rows_;
    QFontMetricsF metrics_;
};

class Legend {
public:
    Legend(QPainter& painter, const WorksheetPicture& picture, const WorksheetInks& inks)
        : painter_(painter), picture_(picture), inks_(inks), rows_(rows_of(picture, inks)),
          metrics_(painter.font()), measure_(picture, rows_, painter.font()),
          line_(measure_.line()) {}

    void draw(const QRectF& area) {
        const QRectF box = measure_.box(area);
        if (box.isEmpty()) {
            return;
        }
        const double gap = measure_.gap();
        QColor ground = inks_.ground;
        ground.setAlpha(230);
        painter_.setPen(QPen(inks_.frame, 0));
        painter_.setBrush(ground);
        painter_.drawRect(box);
        QPointF at = box.topLeft() + QPointF(gap, gap);
        if (has_scale(picture_)) {
            draw_scale(at);
            at.ry() += measure_.scale_height();
        }
        for (const LegendRow& row : rows_) {
            draw_row(row, at);
            at.ry() += line_;
        }
    }

private:
    void draw_scale(QPointF at) {
        painter_.setPen(inks_.text);
        painter_.drawText(at + QPointF(0, metrics_.ascent()), picture_.scale_title);
        const QRectF bar(at.x(), at.y() + 1.5 * line_, line_, 5 * line_);
        constexpr int steps = 100;
        for (int n = 0; n < steps; ++n) {
            const QRectF part(bar.left(), bar.top() + bar.height() * n / steps, bar.width(),
                              bar.height() / steps + 1);
            painter_.fillRect(part.intersected(bar),
                              QColor(scale_colour(picture_.colours, 1 - double(n) / steps)));
        }
        painter_.setBrush(Qt::NoBrush);
        painter_.setPen(QPen(inks_.frame, 0));
        painter_.drawRect(bar);
        painter_.setPen(inks_.text);
        const QStringList texts = scale_texts(picture_);
        for (qsizetype n = 0; n < texts.size(); ++n) {
            const double y = bar.top() + bar.height() * static_cast<double>(n) /
                                             static_cast<double>(texts.size() - 1);
            painter_.drawText(QPointF(bar.right() + line_ / 2, y + metrics_.ascent() / 2.5),
                              texts[n]);
        }
    }

    void draw_row(const LegendRow& row, QPointF at) {
        const double side = metrics_.ascent();
        const QRectF swatch(at.x(), at.y() + (line_ - side) / 2, line_, side);
        painter_.setPen(QPen(row.outline ? row.colour : inks_.frame, row.outline ? 1.5 : 0));
        painter_.setBrush(row.outline ? QBrush(Qt::NoBrush) : QBrush(inks_.cell_class(row.colour)));
        painter_.drawRect(swatch);
        painter_.setPen(inks_.text);
        painter_.drawText(
            QPointF(swatch.right() + line_ / 2, swatch.bottom() - metrics_.descent() / 2.),
            row.text);
    }

    QPainter& painter_;
    const WorksheetPicture& picture_;
    const WorksheetInks& inks_;
    std::vector<LegendRow> rows_;
    QFontMetricsF metrics_;
    Measure measure_;
    double line_;
};

} // namespace

QRectF legend_box(const QRectF& area, const WorksheetPicture& picture, const QFont& font) {
    const std::vector<LegendRow> rows = rows_of(picture, WorksheetInks(QPalette()));
    const Measure measure(picture, rows, font);
    const QRectF box = measure.box(area);
    return box.isEmpty()
               ? box
               : box.adjusted(-measure.gap(), -measure.gap(), measure.gap(), measure.gap());
}

void draw_legend(QPainter& painter, const QRectF& area, const WorksheetPicture& picture,
                 const WorksheetInks& inks) {
    Legend(painter, picture, inks).draw(area);
}

} // namespace ui

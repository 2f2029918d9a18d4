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

class Legend {
public:
    Legend(QPainter& painter, const WorksheetPicture& picture, const WorksheetInks& inks)
        : painter_(painter), picture_(picture), inks_(inks), rows_(rows_of(picture, inks)),
          metrics_(painter.font()), line_(metrics_.height() * 1.25),
          has_scale_(picture.colours != CellColours::classes && !picture.cell_classes.empty()) {}

    void draw(const QRectF& area) {
        if (rows_.empty() && !has_scale_) {
            return;
        }
        const QSizeF size = this->size();
        const double gap = line_ / 2;
        const QRectF box(QPointF(area.right() - size.width() - gap, area.top() + gap), size);
        QColor ground = inks_.ground;
        ground.setAlpha(230);
        painter_.setPen(QPen(inks_.frame, 0));
        painter_.setBrush(ground);
        painter_.drawRect(box);
        QPointF at = box.topLeft() + QPointF(gap, gap);
        if (has_scale_) {
            draw_scale(at);
            at.ry() += scale_height();
        }
        for (const LegendRow& row : rows_) {
            draw_row(row, at);
            at.ry() += line_;
        }
    }

private:
    double scale_height() const { return has_scale_ ? 6.75 * line_ : 0; }

    QSizeF size() const {
        double width = has_scale_ ? metrics_.horizontalAdvance(picture_.scale_title) : 0;
        for (const QString& text : has_scale_ ? scale_texts(picture_) : QStringList()) {
            width = std::max(width, 1.5 * line_ + metrics_.horizontalAdvance(text));
        }
        for (const LegendRow& row : rows_) {
            width = std::max(width, 1.5 * line_ + metrics_.horizontalAdvance(row.text));
        }
        return {width + line_, scale_height() + (static_cast<double>(rows_.size()) + 1) * line_};
    }

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
    double line_;
    bool has_scale_;
};

} // namespace

void draw_legend(QPainter& painter, const QRectF& area, const WorksheetPicture& picture,
                 const WorksheetInks& inks) {
    Legend(painter, picture, inks).draw(area);
}

} // namespace ui

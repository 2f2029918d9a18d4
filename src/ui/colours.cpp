#include "ui/colours.h"

#include "plot/colourtable.h"

#include <QPainter>
#include <QPixmap>

namespace ui {

QColor to_qt_colour(std::int32_t colour) {
    const auto [red, green, blue] = plot::colour_bytes(colour);
    return {red, green, blue};
}

std::int32_t from_qt_colour(const QColor& colour) {
    return plot::colour_of({colour.red(), colour.green(), colour.blue()});
}

ColourButton::ColourButton(const Choosers& choosers, std::int32_t colour, QWidget* parent)
    : QPushButton(parent), choosers_(choosers) {
    setAutoDefault(false);
    const int height = fontMetrics().height();
    setIconSize({3 * height, height});
    set_colour(colour);
    connect(this, &QPushButton::clicked, this, [this] {
        if (const auto chosen = choosers_.colour(window(), to_qt_colour(colour_))) {
            set_colour(from_qt_colour(*chosen));
        }
    });
}

void ColourButton::set_colour(std::int32_t colour) {
    colour_ = colour;
    const QColor shown = to_qt_colour(colour);
    QPixmap picture(iconSize() * devicePixelRatioF());
    picture.setDevicePixelRatio(devicePixelRatioF());
    picture.fill(shown);
    QPainter painter(&picture);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawRect(QRect(QPoint(), iconSize()).adjusted(0, 0, -1, -1));
    setIcon(picture);
    setToolTip(shown.name());
    setAccessibleDescription(shown.name());
}

} // namespace ui

#include "ui/theme.h"

#include <QApplication>
#include <QIcon>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleOption>

namespace ui {

namespace {

struct Shade {
    QPalette::ColorRole role;
    QRgb light, dark;
};

constexpr Shade shades[] = {
    {QPalette::Window, 0xffefefef, 0xff2b2d30},
    {QPalette::WindowText, 0xff111111, 0xffe6e6e6},
    {QPalette::Base, 0xffffffff, 0xff1e1f22},
    {QPalette::AlternateBase, 0xfff5f5f5, 0xff26282b},
    {QPalette::ToolTipBase, 0xffffffdc, 0xff3a3d41},
    {QPalette::ToolTipText, 0xff111111, 0xffe6e6e6},
    {QPalette::PlaceholderText, 0xff6f6f6f, 0xff9a9a9a},
    {QPalette::Text, 0xff111111, 0xffe6e6e6},
    {QPalette::Button, 0xffefefef, 0xff323438},
    {QPalette::ButtonText, 0xff111111, 0xffe6e6e6},
    {QPalette::BrightText, 0xffffffff, 0xffff6b5f},
    {QPalette::Light, 0xffffffff, 0xff4a4d52},
    {QPalette::Midlight, 0xffcacaca, 0xff414449},
    {QPalette::Mid, 0xffb8b8b8, 0xff232528},
    {QPalette::Dark, 0xff9f9f9f, 0xff17181a},
    {QPalette::Shadow, 0xff767676, 0xff0c0c0d},
    {QPalette::Highlight, 0xff2a76c6, 0xff3d7fc4},
    {QPalette::HighlightedText, 0xffffffff, 0xffffffff},
    {QPalette::Link, 0xff0b57a4, 0xff6cb2f5},
    {QPalette::LinkVisited, 0xff6b3fa0, 0xffb99af0},
};

constexpr QPalette::ColorRole greyed[] = {QPalette::WindowText, QPalette::Text,
                                          QPalette::ButtonText};

// Two arrows to the right: a bar that is too short for its entries has more of them.
QPixmap extension_arrows(const QColor& colour) {
    constexpr int side = 16, ratio = 3; // for all scales, made smaller
    QPixmap picture(side * ratio, side * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour, 1.5));
    for (const double x : {3.5, 8.5}) {
        painter.drawPolyline(QPolygonF({{x, 3.5}, {x + 4.5, 8}, {x, 12.5}}));
    }
    return picture;
}

// The toolkit darkens the colour of the window for outlines, which is lost on a dark window; so are
// the black arrows of its bars.
class DeskStyle : public QProxyStyle {
public:
    DeskStyle() : QProxyStyle("Fusion") {}

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        const bool is_dark = option->palette.color(QPalette::Window).lightness() < 128;
        if (is_dark && !shows_focus(element, option->state)) {
            draw_outline(element, *option, *painter);
        }
    }

    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option,
                       const QWidget* widget) const override {
        if (icon != SP_ToolBarHorizontalExtensionButton) {
            return QProxyStyle::standardIcon(icon, option, widget);
        }
        const QPalette palette = widget ? widget->palette() : QApplication::palette();
        return extension_arrows(palette.color(QPalette::Active, QPalette::ButtonText));
    }

private:
    static bool shows_focus(PrimitiveElement element, State state) {
        return state & State_HasFocus &&
               (element == PE_FrameLineEdit || state & State_KeyboardFocusChange);
    }

    static void draw_outline(PrimitiveElement element, const QStyleOption& option,
                             QPainter& painter) {
        const bool is_frame = element == PE_FrameLineEdit;
        if (!is_frame && element != PE_IndicatorCheckBox && element != PE_IndicatorRadioButton) {
            return;
        }
        const double weight = is_frame ? 0.3 : 0.55;
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setBrush(Qt::NoBrush);
        painter.setPen(line_colour(option.palette, option.state & State_Enabled ? weight : 0.25));
        const QRectF edge = QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5);
        if (element == PE_IndicatorRadioButton) {
            painter.drawEllipse(edge);
        } else {
            painter.drawRoundedRect(edge, is_frame ? 2 : 0, is_frame ? 2 : 0);
        }
        painter.restore();
    }
};

} // namespace

QStyle* make_style() {
    return new DeskStyle;
}

QColor line_colour(const QPalette& palette, double weight) {
    const QColor ground = palette.color(QPalette::Base), text = palette.color(QPalette::Text);
    const auto mixed = [weight](int from, int to) { return int(from + (to - from) * weight); };
    return QColor(mixed(ground.red(), text.red()), mixed(ground.green(), text.green()),
                  mixed(ground.blue(), text.blue()));
}

void use_theme(bool dark) {
    QPalette palette;
    for (const Shade& shade : shades) {
        palette.setColor(shade.role, QColor::fromRgb(dark ? shade.dark : shade.light));
    }
    for (const QPalette::ColorRole role : greyed) {
        palette.setColor(QPalette::Disabled, role, QColor::fromRgb(dark ? 0xff7c7c7c : 0xff9a9a9a));
    }
    palette.setColor(QPalette::Disabled, QPalette::Highlight,
                     palette.color(QPalette::Active, QPalette::Dark));
    QApplication::setPalette(palette);
}

} // namespace ui

#include "ui/theme.h"

#include <QApplication>
#include <QPalette>

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
    {QPalette::Button, 0xffefefef, 0xff383a3e},
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

} // namespace

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

// Colours between the model's files (red in the lowest byte) and the toolkit.
#pragma once

#include "ui/choosers.h"

#include <QPushButton>

#include <cstdint>

namespace ui {

QColor to_qt_colour(std::int32_t colour);
std::int32_t from_qt_colour(const QColor& colour);

// A button that shows a colour and lets another one be chosen.
class ColourButton : public QPushButton {
    Q_OBJECT

public:
    ColourButton(const Choosers& choosers, std::int32_t colour, QWidget* parent = nullptr);

    std::int32_t colour() const { return colour_; }
    void set_colour(std::int32_t colour);

private:
    const Choosers& choosers_;
    std::int32_t colour_ = 0;
};

} // namespace ui

// Light and dark colours, and the style that draws controls in both.
#pragma once

#include <QColor>

class QPalette;
class QStyle;

namespace ui {

// Instead of what the desktop has set.
void use_theme(bool dark);

// The toolkit's own style, with outlines of boxes, buttons and fields that show on dark grounds
// too. The application becomes its owner.
QStyle* make_style();

// Between the ground of fields (0) and their text (1).
QColor line_colour(const QPalette& palette, double weight);

} // namespace ui

// The legend of a worksheet: colours of classes and zones, or the scale of the values.
#pragma once

#include <QRectF>

class QFont;
class QPainter;

namespace ui {

struct WorksheetInks;
struct WorksheetPicture;

// What it takes of the area with a little room around it; empty when there is nothing to explain.
QRectF legend_box(const QRectF& area, const WorksheetPicture& picture, const QFont& font);

// Draws it into the upper right corner of the area, as large as its texts need; nothing when there
// is nothing to explain.
void draw_legend(QPainter& painter, const QRectF& area, const WorksheetPicture& picture,
                 const WorksheetInks& inks);

} // namespace ui

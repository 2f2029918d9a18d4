// The legend of a worksheet: colours of classes and zones, or the scale of the values.
#pragma once

class QPainter;
class QRectF;

namespace ui {

struct WorksheetInks;
struct WorksheetPicture;

// Draws it into the upper right corner of the area, as large as its texts need; nothing when there
// is nothing to explain.
void draw_legend(QPainter& painter, const QRectF& area, const WorksheetPicture& picture,
                 const WorksheetInks& inks);

} // namespace ui

#include "ui/worksheetview.h"

#include <QPainter>

namespace ui {

WorksheetView::WorksheetView(QWidget* parent) : QAbstractScrollArea(parent) {}

WorksheetView::~WorksheetView() = default;

bool WorksheetView::viewportEvent(QEvent* event) {
    return QAbstractScrollArea::viewportEvent(event);
}
void WorksheetView::paintEvent(QPaintEvent*) {}
void WorksheetView::resizeEvent(QResizeEvent*) {}
void WorksheetView::scrollContentsBy(int, int) {}
void WorksheetView::mousePressEvent(QMouseEvent*) {}
void WorksheetView::mouseMoveEvent(QMouseEvent*) {}
void WorksheetView::mouseReleaseEvent(QMouseEvent*) {}
void WorksheetView::mouseDoubleClickEvent(QMouseEvent*) {}
void WorksheetView::wheelEvent(QWheelEvent*) {}
void WorksheetView::keyPressEvent(QKeyEvent*) {}
void WorksheetView::contextMenuEvent(QContextMenuEvent*) {}
QSize WorksheetView::sizeHint() const {
    return QAbstractScrollArea::sizeHint();
}
QSize WorksheetView::minimumSizeHint() const {
    return QAbstractScrollArea::minimumSizeHint();
}

} // namespace ui

// Mouse, wheel and keys of the worksheet's view.
#include "ui/worksheetview.h"

#include "base/numbertext.h"
#include "ui/text.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QScrollBar>
#include <QToolTip>

#include <cmath>

namespace ui {

WorksheetPointer WorksheetView::pointer(const QMouseEvent& event) const {
    WorksheetPointer pointer = pointer_at(event.position());
    pointer.button = event.button();
    pointer.buttons = event.buttons();
    pointer.modifiers = event.modifiers();
    return pointer;
}

bool WorksheetView::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::Leave && input_) {
        input_->gone();
    }
    // Also when a dialog that lay above the pointer has closed.
    if (event->type() == QEvent::Enter && input_ && picture_) {
        input_->move(pointer_at(static_cast<const QEnterEvent&>(*event).position()));
    }
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) {
        redraw();
    }
    if (event->type() == QEvent::ToolTip && input_ && picture_) {
        const auto& help = static_cast<const QHelpEvent&>(*event);
        const QString text = input_->tip(pointer_at(help.pos()));
        if (text.isEmpty()) {
            QToolTip::hideText();
        } else {
            QToolTip::showText(help.globalPos(), text, viewport());
        }
        return true;
    }
    return QAbstractScrollArea::viewportEvent(event);
}

void WorksheetView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    if (placing_) {
        return; // a scroll bar came or went
    }
    // What stood in the middle stays there.
    if (event->oldSize().isValid() && zoom_ > 1 && whole_) {
        const QSizeF old = event->oldSize(), now = event->size();
        const QPointF middle = offset_ + QPointF(old.width(), old.height()) / 2;
        offset_ = QPointF(middle.x() * now.width() / old.width(),
                          middle.y() * now.height() / old.height()) -
                  QPointF(now.width(), now.height()) / 2;
    }
    fit();
}

void WorksheetView::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::MiddleButton) {
        pan_from_ = event->position();
        viewport()->setCursor(Qt::ClosedHandCursor);
        return;
    }
    if (rectangle_mode_ && event->button() == Qt::LeftButton) {
        rectangle_from_ = rectangle_to_ = event->position();
        return;
    }
    if (input_ && picture_) {
        input_->press(pointer(*event));
    }
}

void WorksheetView::mouseMoveEvent(QMouseEvent* event) {
    if (pan_from_) {
        offset_ -= event->position() - *pan_from_;
        pan_from_ = event->position();
        place();
        return;
    }
    if (rectangle_from_) {
        rectangle_to_ = event->position();
        viewport()->update();
        return;
    }
    if (input_ && picture_) {
        input_->move(pointer(*event));
    }
}

void WorksheetView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::MiddleButton && pan_from_) {
        pan_from_.reset();
        viewport()->unsetCursor();
        return;
    }
    if (rectangle_from_ && event->button() == Qt::LeftButton) {
        end_rectangle(event->position());
        return;
    }
    if (input_ && picture_) {
        input_->release(pointer(*event));
    }
}

void WorksheetView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (rectangle_mode_ || event->button() == Qt::MiddleButton) {
        mousePressEvent(event);
    } else if (input_ && picture_) {
        input_->double_click(pointer(*event));
    }
}

void WorksheetView::wheelEvent(QWheelEvent* event) {
    if (!(event->modifiers() & Qt::ControlModifier)) {
        QAbstractScrollArea::wheelEvent(event);
        return;
    }
    constexpr double notch = 120; // eighths of a degree
    zoom({event->position().x(), event->position().y()},
         std::pow(1.25, event->angleDelta().y() / notch));
    event->accept();
}

void WorksheetView::keyPressEvent(QKeyEvent* event) {
    if (rectangle_mode_ && event->key() == Qt::Key_Escape) {
        rectangle_mode_ = false;
        rectangle_from_.reset();
        viewport()->unsetCursor();
        viewport()->update();
        emit zoom_rectangle_done();
        return;
    }
    if (input_ && picture_ && input_->key(*event)) {
        event->accept();
        return;
    }
    QAbstractScrollArea::keyPressEvent(event);
}

void WorksheetView::contextMenuEvent(QContextMenuEvent* event) {
    QMenu menu(this);
    if (input_ && picture_ && input_->menu(menu) && !menu.isEmpty()) {
        menu.exec(event->globalPos());
    }
}

void WorksheetView::find_cell() {
    if (!picture_) {
        return;
    }
    const int gap = fontMetrics().height() / 2;
    cell_field_->move(gap, gap);
    cell_field_->resize(fontMetrics().averageCharWidth() * 24, cell_field_->sizeHint().height());
    cell_field_->clear();
    cell_field_->show();
    cell_field_->raise();
    cell_field_->setFocus();
}

// Enter and Escape would go on to the worksheet.
bool WorksheetView::eventFilter(QObject* watched, QEvent* event) {
    if (watched != cell_field_) {
        return QAbstractScrollArea::eventFilter(watched, event);
    }
    if (event->type() == QEvent::KeyPress) {
        switch (static_cast<const QKeyEvent&>(*event).key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            take_cell_text();
            return true;
        case Qt::Key_Escape:
            cell_field_->hide();
            setFocus();
            return true;
        default:
            break;
        }
    }
    if (event->type() == QEvent::FocusOut &&
        static_cast<const QFocusEvent&>(*event).reason() != Qt::ActiveWindowFocusReason) {
        cell_field_->hide();
    }
    return false;
}

void WorksheetView::take_cell_text() {
    const std::string text = from_qt(cell_field_->text());
    const std::size_t comma = text.find_first_of(",; ");
    const int column = base::leading_int32(text.substr(0, comma));
    const int row = comma == std::string::npos
                        ? 0
                        : base::leading_int32(std::string_view(text).substr(comma + 1));
    if (!picture_ || column < 1 || row < 1 || column > picture_->grid.NX ||
        row > picture_->grid.NY) {
        cell_field_->selectAll();
        if (picture_) {
            QToolTip::showText(cell_field_->mapToGlobal(QPoint(0, cell_field_->height())),
                               QString("Valid range is 1 to %1, 1 to %2")
                                   .arg(picture_->grid.NX)
                                   .arg(picture_->grid.NY),
                               cell_field_);
        }
        return;
    }
    cell_field_->hide();
    setFocus();
    show_cell({column, row});
    if (input_) {
        input_->find({column, row});
    }
}

} // namespace ui

#include "ui/colourcells.h"

#include "ui/colours.h"

#include <QKeyEvent>

namespace ui {

QVariant colour_cell_data(std::int32_t colour, int role) {
    switch (role) {
    case colour_role:
        return colour;
    case Qt::BackgroundRole:
    case Qt::DecorationRole: // seen in a selected cell too
        return to_qt_colour(colour);
    case Qt::ToolTipRole:
    case Qt::AccessibleTextRole:
        return to_qt_colour(colour).name();
    default:
        return {};
    }
}

ColourCells::ColourCells(TableView& table, const Choosers& choosers)
    : QObject(&table), table_(table), choosers_(choosers) {
    table.installEventFilter(this);
    connect(&table, &QAbstractItemView::clicked, this, &ColourCells::choose);
}

bool ColourCells::eventFilter(QObject*, QEvent* event) {
    if (event->type() != QEvent::KeyPress) {
        return false;
    }
    const int key = static_cast<QKeyEvent*>(event)->key();
    return (key == Qt::Key_Space || key == Qt::Key_F2) && choose(table_.currentIndex());
}

bool ColourCells::choose(const QModelIndex& cell) {
    const QVariant colour = cell.data(colour_role);
    if (!colour.isValid()) {
        return false;
    }
    if (const auto chosen = choosers_.colour(table_.window(), to_qt_colour(colour.toInt()))) {
        table_.model()->setData(cell, from_qt_colour(*chosen), colour_role);
    }
    return true;
}

} // namespace ui

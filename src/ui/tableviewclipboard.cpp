// Copying and pasting of the tables.
#include "ui/tablemodel.h"
#include "ui/tableview.h"
#include "ui/tabseparated.h"

#include <QApplication>
#include <QClipboard>

#include <algorithm>

namespace ui {

namespace {

QRect bounds_of(const QItemSelection& selection) {
    QRect bounds;
    for (const QItemSelectionRange& range : selection) {
        bounds |= QRect(QPoint(range.left(), range.top()), QPoint(range.right(), range.bottom()));
    }
    return bounds;
}

QString copied_text(const QModelIndex& cell) {
    const QVariant kind = cell.data(kind_role);
    const bool choice = kind.isValid() && kind.toInt() == int(core::FieldKind::choice);
    return cell.data(choice ? Qt::DisplayRole : Qt::EditRole).toString();
}

} // namespace

void TableView::copy() const {
    const QItemSelection selection = selectionModel()->selection();
    const QRect bounds = bounds_of(selection);
    if (bounds.isEmpty()) {
        return;
    }
    std::vector<QStringList> rows;
    for (int row = bounds.top(); row <= bounds.bottom(); ++row) {
        QStringList cells;
        for (int column = bounds.left(); column <= bounds.right(); ++column) {
            const QModelIndex cell = model()->index(row, column);
            cells << (selection.contains(cell) ? copied_text(cell) : QString());
        }
        rows.push_back(cells);
    }
    QApplication::clipboard()->setText(tab_separated(rows));
}

void TableView::paste() {
    const auto rows = parse_tab_separated(QApplication::clipboard()->text());
    const QRect bounds = bounds_of(selectionModel()->selection());
    if (rows.empty()) {
        return;
    }
    if (rows.size() == 1 && rows[0].size() == 1 && !bounds.isEmpty()) {
        fill_selection(rows[0][0]);
        return;
    }
    const QPoint start = bounds.isEmpty() ? QPoint(0, 0) : bounds.topLeft();
    change([&] {
        const int missing = start.y() + int(rows.size()) - model()->rowCount();
        if (auto* growing = qobject_cast<TableModel*>(model()); growing && missing > 0) {
            growing->grow(missing);
        }
        const int height = std::min(int(rows.size()), model()->rowCount() - start.y());
        for (int row = 0; row < height; ++row) {
            const QStringList& cells = rows[std::size_t(row)];
            const int width = std::min(int(cells.size()), model()->columnCount() - start.x());
            for (int column = 0; column < width; ++column) {
                put(model()->index(start.y() + row, start.x() + column), cells[column]);
            }
        }
    });
}

void TableView::fill_selection(const QString& text) {
    change([&] {
        for (const QModelIndex& cell : selectionModel()->selectedIndexes()) {
            put(cell, text);
        }
    });
}

void TableView::empty_cells() {
    fill_selection({});
}

} // namespace ui

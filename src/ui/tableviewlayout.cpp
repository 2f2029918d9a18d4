// The room that tables ask for, and the widths of their columns.
#include "ui/tablemodel.h"
#include "ui/tableview.h"

#include <QHeaderView>
#include <QScrollBar>

#include <algorithm>
#include <numeric>

namespace ui {

void TableView::set_shown_rows(int rows) {
    shown_rows_ = rows;
    updateGeometry();
}

void TableView::fit_columns() {
    const int digit = fontMetrics().horizontalAdvance('0');
    const int margin = 2 * (style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 1);
    natural_widths_.clear();
    for (int column = 0; column < model()->columnCount(); ++column) {
        const auto head = [&](int role) {
            return model()->headerData(column, Qt::Horizontal, role);
        };
        const bool check = head(kind_role).toInt() == int(core::FieldKind::check);
        int width = (head(kind_role).isValid() && check ? 6 : 12) * digit;
        for (const QString& item : head(choices_role).toStringList()) {
            width =
                std::max(width, fontMetrics().horizontalAdvance(item) + 2 * fontMetrics().height());
        }
        natural_widths_.push_back(
            std::max(width + margin, horizontalHeader()->sectionSizeHint(column)));
    }
    spread_columns();
    updateGeometry();
}

void TableView::spread_columns() {
    const int columns = int(natural_widths_.size());
    if (columns == 0 || columns != model()->columnCount()) {
        return;
    }
    const int natural = std::accumulate(natural_widths_.begin(), natural_widths_.end(), 0);
    const int free = std::max(viewport()->width() - natural, 0);
    spreading_ = true;
    for (int i = 0; i < columns; ++i) {
        const int share = free * (i + 1) / columns - free * i / columns;
        setColumnWidth(i, natural_widths_[std::size_t(i)] + share);
    }
    spreading_ = false;
}

void TableView::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    spread_columns();
}

QSize TableView::sizeHint() const {
    const int rows = std::clamp(model()->rowCount(), 3, shown_rows_);
    const int frame = 2 * frameWidth();
    const int bar = verticalScrollBar()->sizeHint().width();
    const int columns = natural_widths_.empty()
                            ? horizontalHeader()->length()
                            : std::accumulate(natural_widths_.begin(), natural_widths_.end(), 0);
    // Of an empty table as if it had rows.
    const int heads = verticalHeader()->isHidden()
                          ? 0
                          : std::max(verticalHeader()->sizeHint().width(),
                                     fontMetrics().horizontalAdvance("00000"));
    return {columns + heads + bar + frame, rows * verticalHeader()->defaultSectionSize() +
                                               horizontalHeader()->sizeHint().height() + frame};
}

} // namespace ui

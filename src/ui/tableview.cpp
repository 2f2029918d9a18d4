#include "ui/tableview.h"

#include "ui/desk.h"
#include "ui/dialogs/allrows.h"
#include "ui/tabledelegate.h"
#include "ui/tablemodel.h"

#include <QAction>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMenu>

#include <algorithm>
#include <utility>

namespace ui {

namespace {

bool can_change(const QModelIndex& cell) {
    return bool(cell.flags() & (Qt::ItemIsEditable | Qt::ItemIsUserCheckable));
}

} // namespace

TableView::TableView(Desk& desk, core::TableForm& form, QWidget* parent)
    : QTableView(parent), desk_(desk), form_model_(new FormTableModel(form, this)) {
    setModel(form_model_);
    set_up();
    fit_columns();
}

TableView::TableView(Desk& desk, QAbstractItemModel& model, QWidget* parent)
    : QTableView(parent), desk_(desk) {
    setModel(&model);
    set_up();
}

void TableView::set_up() {
    auto* cells = new TableDelegate(this);
    setItemDelegate(cells);
    connect(cells, &TableDelegate::check_clicked, this, &TableView::toggle);
    connect(cells, &TableDelegate::choice_clicked, this, &TableView::open_list);
    setEditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed);
    setSelectionMode(ExtendedSelection);
    setWordWrap(false);
    setCornerButtonEnabled(true);
    setShowGrid(false); // the cells draw it
    horizontalHeader()->setResizeContentsPrecision(0);
    verticalHeader()->setResizeContentsPrecision(0);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 3 / 2);
    verticalHeader()->setDefaultAlignment(Qt::AlignRight | Qt::AlignVCenter);
    horizontalHeader()->setHighlightSections(true);
    horizontalHeader()->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(horizontalHeader(), &QWidget::customContextMenuRequested, this,
            &TableView::show_head_menu);
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this] {
        if (!spreading_) {
            natural_widths_.clear();
        }
    });
    if (const auto* refusing = qobject_cast<TableModel*>(model())) {
        connect(refusing, &TableModel::refused, this, [this](const base::Refusal& refusal) {
            if (!refusal_) {
                refusal_ = refusal;
            }
        });
    }
    add_actions();
}

void TableView::add_actions() {
    const auto add = [this](const char* name, const QString& caption, const QKeySequence& keys,
                            auto work) {
        auto* action = new QAction(caption, this);
        action->setObjectName(name);
        action->setShortcut(keys);
        action->setShortcutContext(Qt::WidgetShortcut);
        connect(action, &QAction::triggered, this, work);
        addAction(action);
    };
    add("table_copy", tr("&Copy"), QKeySequence::Copy, [this] { copy(); });
    add("table_paste", tr("&Paste"), QKeySequence::Paste, [this] { paste(); });
    add("table_all_rows", tr("Set &All Rows..."), tr("Ctrl+Shift+A"),
        [this] { set_all_rows(currentIndex().column()); });
}

void TableView::reload() {
    if (form_model_) {
        form_model_->reload();
    }
}

void TableView::change(const std::function<void()>& work) {
    work();
    emit edited();
    show_refusal();
}

void TableView::show_refusal() {
    if (const auto refusal = std::exchange(refusal_, std::nullopt)) {
        base::show(desk_.user(), *refusal);
    }
}

void TableView::put(const QModelIndex& cell, const QString& text) {
    if (can_change(cell)) {
        model()->setData(cell, text, Qt::EditRole);
    }
}

void TableView::toggle(const QModelIndex& cell) {
    const bool on = cell.data(Qt::CheckStateRole).toInt() != Qt::Checked;
    change([&] {
        const auto selected = selectionModel()->selectedIndexes();
        for (const QModelIndex& each : selected.contains(cell) ? selected : QModelIndexList{cell}) {
            if (each.flags() & Qt::ItemIsUserCheckable) {
                model()->setData(each, on ? Qt::Checked : Qt::Unchecked, Qt::CheckStateRole);
            }
        }
    });
}

void TableView::open_list(const QModelIndex& cell) {
    edit(cell);
    if (auto* list = qobject_cast<QComboBox*>(indexWidget(cell))) {
        list->showPopup();
    }
}

QWidget* TableView::open_editor() const {
    return state() == EditingState ? indexWidget(currentIndex()) : nullptr;
}

void TableView::give_up_editing() {
    if (QWidget* editor = open_editor()) {
        QTableView::closeEditor(editor, QAbstractItemDelegate::RevertModelCache);
    }
}

bool TableView::finish_editing() {
    QWidget* editor = open_editor();
    if (!editor) {
        return true;
    }
    commitData(editor);
    const bool accepted = !refusal_;
    closeEditor(editor, QAbstractItemDelegate::NoHint);
    return accepted;
}

void TableView::commitData(QWidget* editor) {
    QTableView::commitData(editor);
    emit edited();
}

// A box must not come while the editor is still open: it would take the focus, and the editor
// would hand in its text once more.
void TableView::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
    QTableView::closeEditor(editor, QAbstractItemDelegate::NoHint);
    if (refusal_) {
        show_refusal();
        return;
    }
    if (hint == QAbstractItemDelegate::EditNextItem) {
        move_current(MoveNext);
    } else if (hint == QAbstractItemDelegate::EditPreviousItem) {
        move_current(MovePrevious);
    } else if (hint == QAbstractItemDelegate::SubmitModelCache) {
        move_current(MoveDown);
    }
}

void TableView::move_current(CursorAction action) {
    const QModelIndex next = moveCursor(action, Qt::NoModifier);
    if (next.isValid()) {
        setCurrentIndex(next);
    }
}

void TableView::set_all_rows(int column) {
    const int row = std::max(currentIndex().row(), 0);
    const QModelIndex cell = model()->index(row, column);
    if (!cell.isValid() || !finish_editing() || !can_change(cell)) {
        desk_.user().beep();
        return;
    }
    AllRows dialog(desk_, *model(), cell, window());
    if (dialog.exec() == QDialog::Accepted) {
        emit edited();
    }
}

void TableView::show_head_menu(const QPoint& place) {
    const int column = horizontalHeader()->logicalIndexAt(place);
    if (column < 0) {
        return;
    }
    QMenu menu(this);
    QAction* all =
        menu.addAction(tr("Set &All Rows..."), this, [=, this] { set_all_rows(column); });
    all->setEnabled(can_change(model()->index(0, column)));
    menu.exec(horizontalHeader()->mapToGlobal(place));
}

void TableView::contextMenuEvent(QContextMenuEvent* event) {
    QMenu menu(this);
    menu.addActions(actions());
    const bool keyboard = event->reason() == QContextMenuEvent::Keyboard;
    menu.exec(keyboard ? viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft())
                       : event->globalPos());
}

void TableView::focusInEvent(QFocusEvent* event) {
    if (!currentIndex().isValid() && model()->rowCount() > 0) {
        // Behind columns such as the number of the layer.
        int column = 0;
        while (column + 1 < model()->columnCount() && !can_change(model()->index(0, column))) {
            ++column;
        }
        setCurrentIndex(model()->index(0, column));
    }
    QTableView::focusInEvent(event);
}

// The first and the last cell let Tab go on to the fields before and behind the table.
bool TableView::focusNextPrevChild(bool next) {
    const QModelIndex edge =
        next ? model()->index(model()->rowCount() - 1, model()->columnCount() - 1)
             : model()->index(0, 0);
    return currentIndex() == edge || !edge.isValid() ? QAbstractScrollArea::focusNextPrevChild(next)
                                                     : QTableView::focusNextPrevChild(next);
}

bool TableView::handle_key(const QKeyEvent& event) {
    const bool check = currentIndex().flags() & Qt::ItemIsUserCheckable;
    const bool control = event.modifiers() & Qt::ControlModifier;
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        move_current(MoveDown);
        return true;
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
        empty_cells();
        return true;
    case Qt::Key_Space:
        if (check) {
            toggle(currentIndex());
        }
        return check;
    case Qt::Key_Down:
        return (event.modifiers() & Qt::AltModifier) &&
               edit(currentIndex(), AllEditTriggers, nullptr);
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return control && QAbstractScrollArea::focusNextPrevChild(event.key() == Qt::Key_Tab);
    default:
        return false;
    }
}

void TableView::keyPressEvent(QKeyEvent* event) {
    if (state() == EditingState) {
        QTableView::keyPressEvent(event);
    } else if (event->matches(QKeySequence::Copy)) {
        copy();
    } else if (event->matches(QKeySequence::Paste)) {
        paste();
    } else if (handle_key(*event)) {
        event->accept();
    } else {
        QTableView::keyPressEvent(event);
    }
}

} // namespace ui

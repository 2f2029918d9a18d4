// The table of a dialog, for the keyboard and for spreadsheets.
//
// Typing replaces a cell, F2 edits it, Enter moves down, Tab right, Space toggles checks, Delete
// empties, Ctrl+C and Ctrl+V exchange TAB-separated blocks, Ctrl+Tab leaves the table. A right
// click on a head, or the menu of the cells, sets all rows of a column.
#pragma once

#include "base/failure.h"

#include <QTableView>

#include <functional>
#include <optional>
#include <vector>

namespace core {
class TableForm;
}

namespace ui {

class Desk;
class FormTableModel;

class TableView : public QTableView {
    Q_OBJECT

public:
    // `desk` shows the refusals of cells. Desk, form and model outlive the view.
    TableView(Desk& desk, core::TableForm& form, QWidget* parent = nullptr);
    // Any model; one of class TableModel may refuse texts and set whole columns.
    TableView(Desk& desk, QAbstractItemModel& model, QWidget* parent = nullptr);

    // The model of a form; nullptr in a view of another model.
    FormTableModel* form_model() const { return form_model_; }
    // Shows the form anew, after it was changed by other means than its cells.
    void reload();
    // Columns as wide as their heads and a number, a name or the longest item of a list. Looks at
    // no cell.
    void fit_columns();
    // Rows that sizeHint() makes room for, when there are so many.
    void set_shown_rows(int rows);

    // Accepts the text of the open editor. False: it was refused, which is shown.
    bool finish_editing();
    // Closes the open editor; the cell keeps its old text.
    void give_up_editing();
    // The selected cells as TAB-separated text; nothing when none is selected.
    void copy() const;
    // Puts the text of the clipboard into the cells from the first selected one on, as far as the
    // table goes; a single text into all selected cells. Cells that cannot be edited are left out.
    void paste();
    void empty_cells();
    // Asks for a text and sets it in all rows of the column.
    void set_all_rows(int column);

    QSize sizeHint() const override;

signals:
    // The user has changed cells.
    void edited();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void focusInEvent(QFocusEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void commitData(QWidget* editor) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    void set_up();
    QWidget* open_editor() const; // nullptr when no cell is open
    // Shares the width that the columns leave free among them, until the user sets one.
    void spread_columns();
    void add_actions();
    void show_head_menu(const QPoint& place);
    // Runs `work`, then shows the first refusal that came from the model.
    void change(const std::function<void()>& work);
    void show_refusal();
    void toggle(const QModelIndex& cell);
    void open_list(const QModelIndex& cell);
    void put(const QModelIndex& cell, const QString& text);
    void fill_selection(const QString& text);
    bool handle_key(const QKeyEvent& event);
    void move_current(CursorAction action);

    Desk& desk_;
    FormTableModel* form_model_ = nullptr;
    std::optional<base::Refusal> refusal_; // not shown yet
    int shown_rows_ = 12;
    std::vector<int> natural_widths_; // of the columns; empty: they are not spread
    bool spreading_ = false;
};

} // namespace ui

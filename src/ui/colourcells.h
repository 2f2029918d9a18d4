// Cells of a table that hold a colour.
#pragma once

#include "ui/choosers.h"
#include "ui/tableview.h"

namespace ui {

// A model gives the cell's colour as the file has it, and takes it by the same role.
inline constexpr int colour_role = Qt::UserRole + 20;

// What a model answers of a colour cell for the other roles.
QVariant colour_cell_data(std::int32_t colour, int role);

// Opens the colour dialog on a click, Space or F2 in such a cell.
class ColourCells : public QObject {
    Q_OBJECT

public:
    // Both outlive the object, which belongs to the table.
    ColourCells(TableView& table, const Choosers& choosers);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool choose(const QModelIndex& cell);

    TableView& table_;
    const Choosers& choosers_;
};

} // namespace ui

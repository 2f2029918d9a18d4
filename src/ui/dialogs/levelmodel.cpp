#include "ui/dialogs/levelmodel.h"

#include "base/numbertext.h"
#include "plot/colourtable.h"
#include "ui/cellroles.h"
#include "ui/colourcells.h"
#include "ui/text.h"

namespace ui {

namespace {

using plot::Contour_Level;

constexpr const char* heads[] = {"Level", "Line", "Fill", "Label", "Label Height", "Label Spacing"};

// Null for columns of another kind.
float Contour_Level::*number_of(int column) {
    switch (column) {
    case LevelModel::level:
        return &Contour_Level::level;
    case LevelModel::label_height:
        return &Contour_Level::label_height;
    case LevelModel::label_spacing:
        return &Contour_Level::label_spacing;
    default:
        return nullptr;
    }
}

std::int32_t Contour_Level::*colour_of(int column) {
    switch (column) {
    case LevelModel::line:
        return &Contour_Level::line;
    case LevelModel::fill:
        return &Contour_Level::fill;
    default:
        return nullptr;
    }
}

} // namespace

const char* LevelModel::head(int column) {
    return heads[column];
}

void LevelModel::set_levels(plot::ContourLevels levels) {
    beginResetModel();
    levels_ = std::move(levels);
    endResetModel();
}

void LevelModel::blend(Column column, const plot::ColourRange& colours) {
    const auto colour = colour_of(column);
    const int count = int(levels_.size());
    for (int n = 0; n < count; ++n) {
        levels_[std::size_t(n)].*colour = plot::blended(colours.low, colours.high, n, count);
    }
    emit dataChanged(index(0, column), index(count - 1, column));
}

int LevelModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(levels_.size());
}

int LevelModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(column_count);
}

QVariant LevelModel::data(const QModelIndex& cell, int role) const {
    const Contour_Level& row = levels_[std::size_t(cell.row())];
    if (const auto number = number_of(cell.column())) {
        return number_cell_data(row.*number, role);
    }
    if (const auto colour = colour_of(cell.column())) {
        return colour_cell_data(row.*colour, role);
    }
    return check_cell_data(row.label, role);
}

QVariant LevelModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role == Qt::ToolTipRole && orientation == Qt::Horizontal) {
        return tr("Click to change the whole column");
    }
    if (role != Qt::DisplayRole) {
        return {};
    }
    return orientation == Qt::Vertical ? QVariant(section + 1) : QVariant(heads[section]);
}

Qt::ItemFlags LevelModel::flags(const QModelIndex& cell) const {
    const Qt::ItemFlags flags = TableModel::flags(cell);
    if (cell.column() == label) {
        return flags | Qt::ItemIsUserCheckable;
    }
    return number_of(cell.column()) ? flags | Qt::ItemIsEditable : flags;
}

bool LevelModel::setData(const QModelIndex& cell, const QVariant& value, int role) {
    const auto colour = colour_of(cell.column());
    if (role != colour_role || !colour) {
        return TableModel::setData(cell, value, role);
    }
    levels_[std::size_t(cell.row())].*colour = value.toInt();
    emit dataChanged(cell, cell);
    return true;
}

std::optional<base::Refusal> LevelModel::put(const QModelIndex& cell, const QString& text) {
    Contour_Level& row = levels_[std::size_t(cell.row())];
    const std::string typed = from_qt(text);
    if (const auto number = number_of(cell.column())) {
        const bool size = cell.column() != level;
        if (auto refusal = plot::label_size_refusal(heads[cell.column()], typed); size && refusal) {
            return refusal;
        }
        row.*number = base::leading_single(typed);
    } else if (cell.column() == label) {
        row.label = base::leading_number(typed) != 0;
    }
    emit dataChanged(cell, cell);
    return std::nullopt;
}

} // namespace ui

#include "ui/dialogs/rulemodel.h"

#include "base/numbertext.h"
#include "plot/colourtable.h"
#include "ui/cellroles.h"
#include "ui/colourcells.h"
#include "ui/text.h"

#include <algorithm>

namespace ui {

namespace {

constexpr const char* heads[] = {"Active", "Color", "Minimum", "Maximum", "Value", "Options"};
constexpr const char* option_names[] = {"Display Only", "Replace", "Add", "Multiply"};

// Null for a column that holds no number.
float grid::Trace_Row::*number_of(int column) {
    switch (column) {
    case RuleModel::minimum:
        return &grid::Trace_Row::minimum;
    case RuleModel::maximum:
        return &grid::Trace_Row::maximum;
    case RuleModel::value:
        return &grid::Trace_Row::value;
    default:
        return nullptr;
    }
}

QVariant option_data(grid::TraceOption option, int role) {
    switch (role) {
    case kind_role:
        return int(core::FieldKind::choice);
    case choices_role:
        return QStringList(std::begin(option_names), std::end(option_names));
    case Qt::DisplayRole:
        return option_names[std::size_t(option)];
    case Qt::EditRole:
        return QString::number(int(option));
    default:
        return {};
    }
}

// By its index or its name.
std::optional<grid::TraceOption> option_of(const QString& text) {
    for (int i = 0; i < int(std::size(option_names)); ++i) {
        if (text == QString::number(i) || text.compare(option_names[i], Qt::CaseInsensitive) == 0) {
            return grid::TraceOption(i);
        }
    }
    return std::nullopt;
}

// Told apart from each other, from the ground and from inactive cells.
constexpr plot::ColourBytes first_colours[] = {
    {230, 159, 0},  {0, 114, 178}, {0, 158, 115},  {213, 94, 0},   {204, 121, 167},
    {86, 180, 233}, {160, 32, 48}, {120, 94, 190}, {140, 110, 40}, {200, 200, 40},
};

bool is_empty(const grid::Trace_Row& row) {
    return !row.active && row.colour == 0 && row.minimum == 0 && row.maximum == 0 &&
           row.value == 0 && row.option == grid::TraceOption::display_only;
}

// Rules of one black show nothing: a row that nobody has filled has a colour of its own, paler from
// ten rows to ten rows.
void give_colours(grid::TraceRules& rules) {
    constexpr std::size_t count = std::size(first_colours);
    constexpr int shades = static_cast<int>(grid::TraceRules::row_count / count);
    const std::int32_t white = plot::colour_of({255, 255, 255});
    for (std::size_t n = 0; n < rules.rows.size(); ++n) {
        if (is_empty(rules.rows[n])) {
            const std::int32_t full = plot::colour_of(first_colours[n % count]);
            const int shade = static_cast<int>(n / count);
            rules.rows[n].colour = plot::blended(full, white, shade, shades + 1);
        }
    }
}

} // namespace

void RuleModel::set_rules(const grid::TraceRules& rules) {
    rules_ = rules;
    give_colours(rules_);
    emit dataChanged(index(0, 0), index(rowCount() - 1, column_count - 1));
}

int RuleModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(grid::TraceRules::row_count);
}

int RuleModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(column_count);
}

QVariant RuleModel::data(const QModelIndex& cell, int role) const {
    const grid::Trace_Row& row = rules_.rows[std::size_t(cell.row())];
    if (const auto number = number_of(cell.column())) {
        return number_cell_data(row.*number, role);
    }
    switch (cell.column()) {
    case active:
        return check_cell_data(row.active, role);
    case colour:
        return colour_cell_data(row.colour, role);
    default:
        return option_data(row.option, role);
    }
}

QVariant RuleModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole) {
        return {};
    }
    return orientation == Qt::Vertical ? QVariant(section + 1) : QVariant(heads[section]);
}

Qt::ItemFlags RuleModel::flags(const QModelIndex& cell) const {
    const Qt::ItemFlags flags = TableModel::flags(cell);
    switch (cell.column()) {
    case active:
        return flags | Qt::ItemIsUserCheckable;
    case colour:
        return flags;
    default:
        return flags | Qt::ItemIsEditable;
    }
}

bool RuleModel::setData(const QModelIndex& cell, const QVariant& given, int role) {
    if (role != colour_role) {
        return TableModel::setData(cell, given, role);
    }
    rules_.rows[std::size_t(cell.row())].colour = given.toInt();
    emit dataChanged(cell, cell);
    return true;
}

std::optional<base::Refusal> RuleModel::put(const QModelIndex& cell, const QString& text) {
    grid::Trace_Row& row = rules_.rows[std::size_t(cell.row())];
    if (const auto number = number_of(cell.column())) {
        const double typed = base::leading_number(from_qt(text));
        if (auto refusal = grid::trace_value_refusal(typed)) {
            return refusal;
        }
        row.*number = float(typed);
    } else if (cell.column() == active) {
        row.active = base::leading_number(from_qt(text)) != 0;
    } else if (cell.column() == options) {
        row.option = option_of(text).value_or(row.option);
    }
    emit dataChanged(cell, cell);
    return std::nullopt;
}

} // namespace ui

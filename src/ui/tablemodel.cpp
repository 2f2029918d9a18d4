#include "ui/tablemodel.h"

#include "ui/text.h"

#include <QGuiApplication>
#include <QPalette>

#include <algorithm>

namespace ui {

namespace {

using core::FieldKind;

constexpr QChar no_break_space(0x00a0);

bool is_on(const QString& text) {
    for (const char* word : {"true", "yes", "x"}) {
        if (text.compare(QLatin1String(word), Qt::CaseInsensitive) == 0) {
            return true;
        }
    }
    return false;
}

QStringList items_of(const core::FieldInfo& column) {
    QStringList items;
    for (const char* item : column.choices) {
        items << to_qt(item);
    }
    return items;
}

} // namespace

std::optional<base::Refusal> TableModel::put_all(int column, const QString& text) {
    std::optional<base::Refusal> first;
    for (int row = 0; row < rowCount(); ++row) {
        const auto refusal = put(index(row, column), text);
        if (!first) {
            first = refusal;
        }
    }
    return first;
}

bool TableModel::setData(const QModelIndex& cell, const QVariant& value, int role) {
    if (role != Qt::EditRole && role != Qt::CheckStateRole) {
        return false;
    }
    const bool check = role == Qt::CheckStateRole;
    const QString text = !check                         ? value.toString()
                         : value.toInt() == Qt::Checked ? QStringLiteral("1")
                                                        : QStringLiteral("0");
    const auto refusal = put(cell, text);
    if (refusal) {
        emit refused(*refusal);
    }
    return !refusal;
}

FormTableModel::FormTableModel(core::TableForm& form, QObject* parent)
    : TableModel(parent), form_(form), rows_(form.rows()), columns_(int(form.columns().size())) {}

void FormTableModel::set_row_name(const QString& name) {
    row_name_ = name;
}

void FormTableModel::set_unit(std::string_view column, const QString& unit) {
    const int number = column_of(column);
    units_[number] = unit;
    emit headerDataChanged(Qt::Horizontal, number, number);
}

void FormTableModel::set_grower(std::function<bool()> add_row) {
    add_row_ = std::move(add_row);
}

void FormTableModel::reload() {
    if (columns_ != int(form_.columns().size())) {
        beginResetModel();
        rows_ = form_.rows();
        columns_ = int(form_.columns().size());
        endResetModel();
        return;
    }
    fit_rows();
    changed_rows(0, rows_ - 1);
    emit headerDataChanged(Qt::Horizontal, 0, columns_ - 1);
}

void FormTableModel::fit_rows() {
    const int rows = form_.rows();
    if (rows > rows_) {
        beginInsertRows({}, rows_, rows - 1);
        rows_ = rows;
        endInsertRows();
    } else if (rows < rows_) {
        beginRemoveRows({}, rows, rows_ - 1);
        rows_ = rows;
        endRemoveRows();
    }
}

void FormTableModel::changed_rows(int first, int last) {
    if (first <= last && columns_ > 0) {
        emit dataChanged(index(first, 0), index(last, columns_ - 1));
    }
}

int FormTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_;
}

int FormTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : columns_;
}

const core::FieldInfo& FormTableModel::info(int column) const {
    return form_.columns()[std::size_t(column)];
}

int FormTableModel::column_of(std::string_view name) const {
    const auto columns = form_.columns();
    const auto found = std::ranges::find_if(
        columns, [name](const core::FieldInfo& each) { return each.name == name; });
    return found == columns.end() ? -1 : int(found - columns.begin());
}

bool FormTableModel::editable(int column) const {
    return form_.enabled(info(column).name);
}

QString FormTableModel::text(const QModelIndex& cell) const {
    return to_qt(form_.cell(cell.row() + 1, info(cell.column()).name));
}

QVariant FormTableModel::data(const QModelIndex& cell, int role) const {
    const core::FieldInfo& column = info(cell.column());
    const bool check = column.kind == FieldKind::check;
    switch (role) {
    case Qt::EditRole:
        return text(cell);
    case Qt::DisplayRole:
        return check                              ? QVariant()
               : column.kind == FieldKind::choice ? items_of(column).value(text(cell).toInt())
                                                  : text(cell);
    case Qt::CheckStateRole:
        return check ? QVariant(int(text(cell) == "1" ? Qt::Checked : Qt::Unchecked)) : QVariant();
    case Qt::TextAlignmentRole:
        return int((column.kind == FieldKind::number ? Qt::AlignRight : Qt::AlignLeft) |
                   Qt::AlignVCenter);
    case Qt::BackgroundRole:
        return editable(cell.column()) ? QVariant() : QGuiApplication::palette().window();
    case Qt::AccessibleTextRole:
        return check ? (text(cell) == "1" ? tr("Yes") : tr("No")) : data(cell, Qt::DisplayRole);
    case kind_role:
        return int(column.kind);
    case choices_role:
        return items_of(column);
    default:
        return {};
    }
}

QString FormTableModel::caption(int column) const {
    const core::FieldInfo& named = info(column);
    const QString label = to_qt(named.label);
    const auto other = units_.find(column);
    const QString unit = other == units_.end() ? to_qt(named.unit) : other->second;
    return unit.isEmpty() || label.contains('[') ? label : label + " [" + unit + "]";
}

QVariant FormTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Horizontal && role == kind_role) {
        return int(info(section).kind);
    }
    if (orientation == Qt::Horizontal && role == choices_role) {
        return items_of(info(section));
    }
    if (role != Qt::DisplayRole && role != Qt::EditRole) {
        return {};
    }
    if (orientation == Qt::Vertical) {
        return row_name_ + QString::number(section + 1);
    }
    const QString text = caption(section);
    return role == Qt::EditRole ? text : broken_into_lines(text);
}

Qt::ItemFlags FormTableModel::flags(const QModelIndex& cell) const {
    if (!cell.isValid()) {
        return {};
    }
    const Qt::ItemFlags shown = Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
    if (!editable(cell.column())) {
        return shown;
    }
    return shown | (info(cell.column()).kind == FieldKind::check ? Qt::ItemIsUserCheckable
                                                                 : Qt::ItemIsEditable);
}

std::optional<std::string> FormTableModel::form_text(int column, const QString& text) const {
    const core::FieldInfo& target = info(column);
    if (target.kind == FieldKind::check && is_on(text.trimmed())) {
        return "1";
    }
    if (target.kind != FieldKind::choice) {
        return from_qt(text);
    }
    if (text.trimmed().isEmpty()) {
        return target.initial;
    }
    const QStringList items = items_of(target);
    bool number = false;
    const int typed = text.toInt(&number);
    const qsizetype item = number ? typed : items.indexOf(text.trimmed());
    if (item < 0 || item >= items.size()) {
        return std::nullopt;
    }
    return std::to_string(item);
}

std::optional<base::Refusal> FormTableModel::put(const QModelIndex& cell, const QString& text) {
    if (!editable(cell.column())) {
        return std::nullopt;
    }
    const auto taken = form_text(cell.column(), text);
    if (!taken) {
        return base::Refusal{
            "Error", from_qt(tr("There is no item \"%1\" in the list of the column.").arg(text))};
    }
    const auto refusal = form_.set_cell(cell.row() + 1, info(cell.column()).name, *taken);
    emit dataChanged(cell, cell);
    return refusal;
}

std::optional<base::Refusal> FormTableModel::put_all(int column, const QString& text) {
    const auto taken = form_text(column, text);
    if (!editable(column) || !taken) {
        return TableModel::put_all(column, text);
    }
    const auto refusal = form_.set_all(info(column).name, *taken);
    changed_rows(0, rows_ - 1);
    return refusal;
}

bool FormTableModel::grow(int rows) {
    bool grown = false;
    while (add_row_ && rows-- > 0 && add_row_()) {
        grown = true;
    }
    fit_rows();
    return grown;
}

QString broken_into_lines(const QString& caption) {
    constexpr qsizetype line_length = 14;
    QString text;
    qsizetype length = 0;
    for (const QString& word : caption.split(' ')) {
        // A unit such as "[W/(m K)]" stays in one piece.
        const bool inside = text.lastIndexOf('[') > text.lastIndexOf(']');
        if (!text.isEmpty() && inside) {
            text += no_break_space + word;
            length += word.size() + 1;
        } else if (!text.isEmpty() && length + 1 + word.size() <= line_length) {
            text += ' ' + word;
            length += word.size() + 1;
        } else {
            text += (text.isEmpty() ? "" : "\n") + word;
            length = word.size();
        }
    }
    return text;
}

} // namespace ui

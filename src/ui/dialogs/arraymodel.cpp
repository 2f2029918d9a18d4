#include "ui/dialogs/arraymodel.h"

#include "base/numbertext.h"
#include "grid/worksheet.h"
#include "ui/text.h"

#include <QFontDatabase>

namespace ui {

namespace {

constexpr std::size_t mask_width = 14;

} // namespace

ArrayModel::ArrayModel(grid::Worksheet& worksheet, QObject* parent)
    : TableModel(parent), worksheet_(worksheet), changed_(std::size_t(worksheet.Array_Count())),
      font_(QFontDatabase::systemFont(QFontDatabase::FixedFont)) {}

void ArrayModel::show_array(int k) {
    beginResetModel();
    array_ = k;
    endResetModel();
}

const core::LayerValues& ArrayModel::values() const {
    const auto& changed = changed_[std::size_t(array_ - 1)];
    return changed ? *changed : worksheet_.array(array_);
}

void ArrayModel::set_values(core::LayerValues values) {
    beginResetModel();
    changed() = std::move(values);
    endResetModel();
}

void ArrayModel::keep() {
    const grid::Worksheet::Step step(worksheet_);
    for (std::size_t k = 0; k < changed_.size(); ++k) {
        if (changed_[k]) {
            worksheet_.set_array(int(k) + 1, *std::move(changed_[k]));
            changed_[k].reset();
        }
    }
}

int ArrayModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : worksheet_.NY();
}

int ArrayModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : worksheet_.NX();
}

std::size_t ArrayModel::place(const QModelIndex& index) const {
    return std::size_t(index.row()) * std::size_t(worksheet_.NX()) + std::size_t(index.column());
}

QVariant ArrayModel::data(const QModelIndex& index, int role) const {
    const auto value = [&] { return values()[place(index)]; };
    switch (role) {
    case Qt::DisplayRole:
        return to_qt(base::right_aligned(base::value_text(value()), mask_width));
    case Qt::EditRole:
        return to_qt(base::exact_text(value()));
    case Qt::TextAlignmentRole:
        return int(Qt::AlignRight | Qt::AlignVCenter);
    case Qt::FontRole:
        return font_;
    default:
        return {};
    }
}

QVariant ArrayModel::headerData(int section, Qt::Orientation, int role) const {
    return role == Qt::DisplayRole ? QVariant(section + 1) : QVariant();
}

Qt::ItemFlags ArrayModel::flags(const QModelIndex& index) const {
    return TableModel::flags(index) | Qt::ItemIsEditable;
}

std::optional<base::Refusal> ArrayModel::put(const QModelIndex& index, const QString& text) {
    if (text == data(index, Qt::EditRole).toString()) {
        return std::nullopt;
    }
    const grid::EditRequest& request = worksheet_.request();
    const float typed = base::leading_single(from_qt(text));
    if (auto refusal = request.value_refusal(array_, typed)) {
        return refusal;
    }
    if (!changed()) {
        changed() = worksheet_.array(array_);
    }
    (*changed())[place(index)] = request.kept_value(typed);
    emit dataChanged(index, index);
    return std::nullopt;
}

} // namespace ui

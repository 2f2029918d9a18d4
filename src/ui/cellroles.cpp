#include "ui/cellroles.h"

#include "base/numbertext.h"
#include "ui/tablemodel.h"
#include "ui/text.h"

namespace ui {

QVariant number_cell_data(float number, int role) {
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return to_qt(base::exact_text(number));
    case Qt::TextAlignmentRole:
        return int(Qt::AlignRight | Qt::AlignVCenter);
    default:
        return {};
    }
}

QVariant check_cell_data(bool on, int role) {
    switch (role) {
    case kind_role:
        return int(core::FieldKind::check);
    case Qt::CheckStateRole:
        return int(on ? Qt::Checked : Qt::Unchecked);
    case Qt::EditRole:
        return on ? "1" : "0";
    default:
        return {};
    }
}

} // namespace ui

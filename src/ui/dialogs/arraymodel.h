// The shown layer of the arrays of a session as tables of columns by rows.
#pragma once

#include "core/arraystore.h"

#include "ui/tablemodel.h"

#include <QFont>

#include <optional>
#include <vector>

namespace grid {
class Worksheet;
}

namespace ui {

// Values are changed in copies, one for each array that is touched; the session keeps its own until
// keep(). What the item refuses stays out.
class ArrayModel : public TableModel {
    Q_OBJECT

public:
    ArrayModel(grid::Worksheet& worksheet, QObject* parent);

    // The array that is shown, from 1.
    int array() const { return array_; }
    void show_array(int k);
    const core::LayerValues& values() const;
    void set_values(core::LayerValues values);
    // Gives the session what was changed, as one step.
    void keep();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    std::optional<base::Refusal> put(const QModelIndex& index, const QString& text) override;

private:
    std::optional<core::LayerValues>& changed() { return changed_[std::size_t(array_ - 1)]; }

    std::size_t place(const QModelIndex& index) const;

    grid::Worksheet& worksheet_;
    int array_ = 1;
    std::vector<std::optional<core::LayerValues>> changed_; // by array
    QFont font_;
};

} // namespace ui

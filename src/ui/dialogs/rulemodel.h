// The rules of Search And Modify as a table.
#pragma once

#include "grid/searchmodify.h"
#include "ui/tablemodel.h"

namespace ui {

class RuleModel : public TableModel {
    Q_OBJECT

public:
    enum Column { active, colour, minimum, maximum, value, options, column_count };

    using TableModel::TableModel;

    const grid::TraceRules& rules() const { return rules_; }
    // Rows that are empty get a colour each.
    void set_rules(const grid::TraceRules& rules);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& cell, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& cell) const override;
    bool setData(const QModelIndex& cell, const QVariant& given, int role) override;
    std::optional<base::Refusal> put(const QModelIndex& cell, const QString& text) override;

private:
    grid::TraceRules rules_;
};

} // namespace ui

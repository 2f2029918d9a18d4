// The contour levels as a table.
#pragma once

#include "plot/contourlevels.h"
#include "ui/tablemodel.h"

namespace ui {

class LevelModel : public TableModel {
    Q_OBJECT

public:
    enum Column { level, line, fill, label, label_height, label_spacing, column_count };

    using TableModel::TableModel;

    const plot::ContourLevels& levels() const { return levels_; }
    void set_levels(plot::ContourLevels levels);
    // Gives the colours of a column the blends from the first row to the last.
    void blend(Column column, const plot::ColourRange& colours);
    static const char* head(int column);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& cell, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& cell) const override;
    bool setData(const QModelIndex& cell, const QVariant& value, int role) override;
    std::optional<base::Refusal> put(const QModelIndex& cell, const QString& text) override;

private:
    plot::ContourLevels levels_;
};

} // namespace ui

// The tables of the forms as item models.
#pragma once

#include "base/failure.h"
#include "core/form.h"

#include <QAbstractTableModel>
#include <QStringList>

#include <functional>
#include <map>
#include <optional>
#include <string_view>

namespace ui {

// Besides the toolkit's roles. A model without them has cells of free text.
enum TableRole {
    kind_role = Qt::UserRole + 1, // of a cell, and of a column's head: core::FieldKind as int
    choices_role,                 // the items as QStringList
};

// A table whose cells may refuse a text. Texts of checks are "1" and "0", those of choices the
// index of the item; put() takes the item's text too.
class TableModel : public QAbstractTableModel {
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    // Refused: the cell keeps its old text. A cell that cannot be edited stays as it is.
    virtual std::optional<base::Refusal> put(const QModelIndex& cell, const QString& text) = 0;
    // The same text in all rows. Gives the first refusal; rows that do not refuse have the text.
    virtual std::optional<base::Refusal> put_all(int column, const QString& text);
    // Makes room for rows that are pasted behind the last one. False: the table keeps its size.
    virtual bool grow(int /*rows*/) { return false; }

    // Texts (Qt::EditRole) and checks (Qt::CheckStateRole), through put().
    bool setData(const QModelIndex& cell, const QVariant& value, int role) override;

signals:
    void refused(const base::Refusal& refusal);
};

class FormTableModel : public TableModel {
    Q_OBJECT

public:
    // `form` outlives the model.
    explicit FormTableModel(core::TableForm& form, QObject* parent = nullptr);

    // "Zone " names the rows "Zone 1", "Zone 2" ...
    void set_row_name(const QString& name);
    // Replaces the unit that the column's head shows; empty: none.
    void set_unit(std::string_view column, const QString& unit);
    // `add_row` makes one more row in the form; false when it is full.
    void set_grower(std::function<bool()> add_row);
    // After the form was changed by other means than its cells.
    void reload();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& cell, int role) const override;
    // Qt::DisplayRole breaks the caption into lines, Qt::EditRole gives it in one.
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& cell) const override;

    std::optional<base::Refusal> put(const QModelIndex& cell, const QString& text) override;
    std::optional<base::Refusal> put_all(int column, const QString& text) override;
    bool grow(int rows) override;

    // -1 for a name that the form does not have.
    int column_of(std::string_view name) const;

private:
    const core::FieldInfo& info(int column) const;
    bool editable(int column) const;
    QString text(const QModelIndex& cell) const;
    QString caption(int column) const;
    // What the form takes for `text`, or why it takes nothing.
    std::optional<std::string> form_text(int column, const QString& text) const;
    void changed_rows(int first, int last);
    void fit_rows();

    core::TableForm& form_;
    int rows_, columns_;
    QString row_name_;
    std::map<int, QString> units_; // by column
    std::function<bool()> add_row_;
};

// "Thermal Conductivity [W/(m K)]" in lines of about 14 characters; broken at blanks only.
QString broken_into_lines(const QString& caption);

} // namespace ui

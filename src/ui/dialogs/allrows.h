// Asks for the text that all rows of a table's column get.
#pragma once

#include <QDialog>
#include <QModelIndex>

namespace ui {

class Desk;

class AllRows : public QDialog {
    Q_OBJECT

public:
    // Begins with the text of `cell`. OK writes into the model; a refusal is shown, and the dialog
    // stays.
    AllRows(Desk& desk, QAbstractItemModel& model, const QModelIndex& cell, QWidget* parent);

    void accept() override;

private:
    QWidget* make_field();
    QString text() const;

    Desk& desk_;
    QAbstractItemModel& model_;
    QModelIndex cell_;
    QWidget* field_;
};

} // namespace ui

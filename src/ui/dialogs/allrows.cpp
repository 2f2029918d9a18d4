#include "ui/dialogs/allrows.h"

#include "ui/desk.h"
#include "ui/tablemodel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace ui {

AllRows::AllRows(Desk& desk, QAbstractItemModel& model, const QModelIndex& cell, QWidget* parent)
    : QDialog(parent), desk_(desk), model_(model), cell_(cell) {
    setObjectName("AllRows");
    setWindowTitle(tr("Set All Rows"));
    field_ = make_field();
    field_->setObjectName("Value");
    auto* label =
        new QLabel(model.headerData(cell.column(), Qt::Horizontal, Qt::EditRole).toString());
    label->setBuddy(field_);
    auto* ok = new QPushButton(tr("OK"));
    ok->setObjectName("cmdOK");
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &AllRows::accept);
    auto* cancel = new QPushButton(tr("Cancel"));
    cancel->setObjectName("cmdCancel");
    connect(cancel, &QPushButton::clicked, this, &AllRows::reject);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(field_);
    layout->addStretch();
    layout->addLayout(buttons);
}

QWidget* AllRows::make_field() {
    const QVariant kind = cell_.data(kind_role);
    if (kind.isValid() && kind.toInt() == int(core::FieldKind::check)) {
        auto* check = new QCheckBox(tr("On"));
        check->setChecked(cell_.data(Qt::CheckStateRole).toInt() == Qt::Checked);
        return check;
    }
    if (kind.isValid() && kind.toInt() == int(core::FieldKind::choice)) {
        auto* list = new QComboBox;
        list->addItems(cell_.data(choices_role).toStringList());
        list->setCurrentIndex(cell_.data(Qt::EditRole).toInt());
        return list;
    }
    auto* field = new QLineEdit(cell_.data(Qt::EditRole).toString());
    field->selectAll();
    return field;
}

QString AllRows::text() const {
    if (const auto* check = qobject_cast<QCheckBox*>(field_)) {
        return check->isChecked() ? "1" : "0";
    }
    if (const auto* list = qobject_cast<QComboBox*>(field_)) {
        return QString::number(list->currentIndex());
    }
    return static_cast<QLineEdit*>(field_)->text();
}

void AllRows::accept() {
    auto* refusing = qobject_cast<TableModel*>(&model_);
    if (!refusing) {
        for (int row = 0; row < model_.rowCount(); ++row) {
            model_.setData(model_.index(row, cell_.column()), text());
        }
        QDialog::accept();
        return;
    }
    if (const auto refusal = refusing->put_all(cell_.column(), text())) {
        base::show(desk_.user(), *refusal);
        field_->setFocus();
        if (auto* field = qobject_cast<QLineEdit*>(field_)) {
            field->selectAll();
        }
        return;
    }
    QDialog::accept();
}

} // namespace ui

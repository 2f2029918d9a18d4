// How the cells of tables look and are edited: numbers right-aligned, checks as boxes in the
// middle, choices as lists.
#pragma once

#include <QStyledItemDelegate>

namespace ui {

class TableDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& cell) const override;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& cell) const override;
    void setEditorData(QWidget* editor, const QModelIndex& cell) const override;
    // A text that was not changed is not written.
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& cell) const override;

protected:
    // A click on a check toggles it, a click on a choice opens its list.
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& cell) override;

signals:
    void check_clicked(const QModelIndex& cell);
    void choice_clicked(const QModelIndex& cell);
};

} // namespace ui

#include "ui/tabledelegate.h"

#include "ui/tablemodel.h"
#include "ui/theme.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QPalette>

namespace ui {

namespace {

bool has_kind(const QModelIndex& cell, core::FieldKind kind) {
    const QVariant value = cell.data(kind_role);
    return value.isValid() && value.toInt() == int(kind);
}

void draw_grid(QPainter* painter, const QStyleOptionViewItem& option) {
    const QRect& cell = option.rect;
    painter->setPen(line_colour(option.palette, 0.2));
    painter->drawLine(cell.bottomLeft(), cell.bottomRight());
    painter->drawLine(cell.topRight(), cell.bottomRight());
}

void draw_check(QPainter* painter, QStyleOptionViewItem option, const QModelIndex& cell,
                const QStyle& style) {
    option.rect = QStyle::alignedRect(
        option.direction, Qt::AlignCenter,
        QSize(style.pixelMetric(QStyle::PM_IndicatorWidth, &option, option.widget),
              style.pixelMetric(QStyle::PM_IndicatorHeight, &option, option.widget)),
        option.rect);
    option.state &= ~QStyle::State_HasFocus;
    option.state |=
        cell.data(Qt::CheckStateRole).toInt() == Qt::Checked ? QStyle::State_On : QStyle::State_Off;
    if (!(cell.flags() & Qt::ItemIsUserCheckable)) {
        option.state &= ~QStyle::State_Enabled;
    }
    style.drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &option, painter, option.widget);
    painter->setPen(line_colour(option.palette, 0.5));
    painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
}

void draw_arrow(QPainter* painter, QStyleOptionViewItem option, const QStyle& style) {
    const int side = option.fontMetrics.height();
    option.rect =
        QRect(option.rect.right() - side, option.rect.center().y() - side / 2, side, side);
    style.drawPrimitive(QStyle::PE_IndicatorArrowDown, &option, painter, option.widget);
}

} // namespace

void TableDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                          const QModelIndex& cell) const {
    QStyleOptionViewItem shown = option;
    initStyleOption(&shown, cell);
    const QStyle& style = shown.widget ? *shown.widget->style() : *QApplication::style();
    shown.features &= ~QStyleOptionViewItem::HasCheckIndicator;
    style.drawControl(QStyle::CE_ItemViewItem, &shown, painter, shown.widget);
    painter->save();
    draw_grid(painter, shown);
    if (has_kind(cell, core::FieldKind::check)) {
        draw_check(painter, shown, cell, style);
    } else if (has_kind(cell, core::FieldKind::choice) && (cell.flags() & Qt::ItemIsEditable)) {
        draw_arrow(painter, shown, style);
    }
    painter->restore();
}

QWidget* TableDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                     const QModelIndex& cell) const {
    if (has_kind(cell, core::FieldKind::choice)) {
        auto* list = new QComboBox(parent);
        list->addItems(cell.data(choices_role).toStringList());
        auto* self = const_cast<TableDelegate*>(this);
        connect(list, &QComboBox::activated, self, [self, list] {
            emit self->commitData(list);
            emit self->closeEditor(list);
        });
        return list;
    }
    auto* field = new QLineEdit(parent);
    field->setFrame(false);
    field->setAlignment(Qt::Alignment(cell.data(Qt::TextAlignmentRole).toInt()));
    return field;
}

void TableDelegate::setEditorData(QWidget* editor, const QModelIndex& cell) const {
    if (auto* list = qobject_cast<QComboBox*>(editor)) {
        list->setCurrentIndex(cell.data(Qt::EditRole).toInt());
    } else {
        QStyledItemDelegate::setEditorData(editor, cell);
    }
}

void TableDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                 const QModelIndex& cell) const {
    const auto* list = qobject_cast<QComboBox*>(editor);
    const QString text = list ? QString::number(list->currentIndex())
                              : static_cast<const QLineEdit*>(editor)->text();
    if (text != cell.data(Qt::EditRole).toString()) {
        model->setData(cell, text, Qt::EditRole);
    }
}

bool TableDelegate::editorEvent(QEvent* event, QAbstractItemModel*, const QStyleOptionViewItem&,
                                const QModelIndex& cell) {
    if (event->type() != QEvent::MouseButtonRelease ||
        static_cast<QMouseEvent*>(event)->button() != Qt::LeftButton ||
        static_cast<QMouseEvent*>(event)->modifiers() != Qt::NoModifier) {
        return false;
    }
    if (cell.flags() & Qt::ItemIsUserCheckable) {
        emit check_clicked(cell);
        return true;
    }
    if (has_kind(cell, core::FieldKind::choice) && (cell.flags() & Qt::ItemIsEditable)) {
        emit choice_clicked(cell);
        return true;
    }
    return false;
}

} // namespace ui

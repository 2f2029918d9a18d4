#include "ui/valuefield.h"

#include "base/numbertext.h"
#include "ui/text.h"

#include <QStyle>
#include <QStyleOptionFrame>

namespace ui {

namespace {

constexpr int value_digits = 12, count_digits = 6;

} // namespace

void set_digits(QLineEdit& field, int digits) {
    field.ensurePolished();
    const QMargins margins = field.textMargins();
    const QFontMetrics metrics = field.fontMetrics();
    QStyleOptionFrame option;
    option.initFrom(&field);
    option.lineWidth = field.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, &field);
    // One digit more for the cursor.
    const int width = metrics.horizontalAdvance(u'0') * (digits + 1);
    const QSize contents(width + margins.left() + margins.right(), field.sizeHint().height());
    field.setMinimumWidth(
        field.style()->sizeFromContents(QStyle::CT_LineEdit, &option, contents, &field).width());
    field.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

ValueField::ValueField(float value, QWidget* parent) : QLineEdit(parent) {
    set_digits(*this, value_digits);
    set_value(value);
}

void ValueField::set_value(float value) {
    value_ = value;
    shown_ = to_qt(base::exact_text(value));
    setText(shown_);
}

float ValueField::value() const {
    return typed() ? base::leading_single(from_qt(text())) : value_;
}

CountField::CountField(int value, QWidget* parent) : QLineEdit(QString::number(value), parent) {
    set_digits(*this, count_digits);
}

int CountField::value() const {
    return base::leading_int32(from_qt(text()));
}

} // namespace ui

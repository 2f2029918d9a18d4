#include "ui/dialogs/contourdialogs.h"

#include "base/numbertext.h"
#include "ui/colours.h"
#include "ui/desk.h"
#include "ui/plaindialog.h"
#include "ui/text.h"
#include "ui/valuefield.h"

#include <QFormLayout>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

#include <cmath>

namespace ui {

namespace {

constexpr const char* page = "plots.md#In the window";

// A dialog whose body is a column of labelled fields.
class FieldsDialog : public PlainDialog {
public:
    FieldsDialog(Desk& desk, const char* object_name, const QString& title, QWidget* parent)
        : PlainDialog(desk, object_name, title, page, parent), rows_(new QFormLayout) {
        body().addLayout(rows_);
    }

protected:
    template <typename Field>
    Field* add(Field* field, const char* name, const QString& caption) {
        field->setObjectName(name);
        rows_->addRow(label_of(field, caption), field);
        return field;
    }
    QFormLayout& rows() { return *rows_; }
    bool take() override { return true; }

private:
    QFormLayout* rows_;
};

class LevelsDialog : public FieldsDialog {
public:
    LevelsDialog(Desk& desk, const plot::LevelRange& preset, QWidget* parent)
        : FieldsDialog(desk, "ContourLevels", "Contour Levels", parent),
          minimum_(add(new ValueField(float(preset.minimum)), "txtMinimum", tr("M&inimum="))),
          maximum_(add(new ValueField(float(preset.maximum)), "txtMaximum", tr("M&aximum="))),
          interval_(add(new ValueField(float(preset.interval)), "txtInterval", tr("In&terval="))) {}

    plot::LevelRange range() const {
        const auto number = [](const ValueField* field) {
            return base::leading_number(from_qt(field->text()));
        };
        return {number(minimum_), number(maximum_), number(interval_)};
    }

protected:
    bool take() override {
        // With an interval that gives two levels, only the limits can be wrong.
        plot::LevelRange limits = range();
        limits.interval = std::abs(limits.maximum - limits.minimum) + 1;
        return !refused(plot::range_refusal(limits), minimum_) &&
               !refused(plot::range_refusal(range()), interval_);
    }

private:
    ValueField* minimum_;
    ValueField* maximum_;
    ValueField* interval_;
};

class LabelsDialog : public FieldsDialog {
public:
    LabelsDialog(Desk& desk, std::size_t levels, QWidget* parent)
        : FieldsDialog(desk, "ContourLabels", "Contour Labels", parent), levels_(levels),
          first_(add(new CountField(1), "txtFirst", tr("&First labeled contour line:"))),
          frequency_(add(new CountField(1), "txtFrequency", tr("&Labeled line frequency:"))) {}

    plot::LabelChoice choice() const { return {first_->value(), frequency_->value()}; }

protected:
    bool take() override {
        return !refused(plot::labels_refusal({first_->value(), 1}, levels_), first_) &&
               !refused(plot::labels_refusal(choice(), levels_), frequency_);
    }

private:
    std::size_t levels_;
    CountField* first_;
    CountField* frequency_;
};

class SizeDialog : public FieldsDialog {
public:
    SizeDialog(Desk& desk, const char* column, float preset, QWidget* parent)
        : FieldsDialog(desk, "LabelSize", column, parent), column_(column),
          field_(add(new ValueField(preset), "txtValue", QString("%1=").arg(column))) {}

    float value() const { return field_->value(); }

protected:
    bool take() override {
        return !refused(plot::label_size_refusal(column_, from_qt(field_->text())), field_);
    }

private:
    const char* column_;
    ValueField* field_;
};

class ColoursDialog : public FieldsDialog {
public:
    ColoursDialog(Desk& desk, const QString& title, const plot::ColourRange& preset,
                  QWidget* parent)
        : FieldsDialog(desk, "ColorSpecturm", title, parent),
          low_(add(new ColourButton(desk.choosers(), preset.low), "cmdMinColor",
                   tr("Color of the &lowest level:"))),
          high_(add(new ColourButton(desk.choosers(), preset.high), "cmdMaxColor",
                    tr("Color of the &highest level:"))) {}

    plot::ColourRange range() const { return {low_->colour(), high_->colour()}; }

private:
    ColourButton* low_;
    ColourButton* high_;
};

class FormatDialog : public FieldsDialog {
public:
    FormatDialog(Desk& desk, const plot::LabelFormat& preset, QWidget* parent);

    plot::LabelFormat format() const;

protected:
    bool take() override { return !refused(plot::decimals_refusal(digits_->value()), digits_); }

private:
    void show_sample();

    QRadioButton* exponential_;
    QRadioButton* fixed_;
    CountField* digits_;
    QLineEdit* prefix_;
    QLineEdit* suffix_;
    QLabel* sample_;
};

FormatDialog::FormatDialog(Desk& desk, const plot::LabelFormat& preset, QWidget* parent)
    : FieldsDialog(desk, "labelFormat", "Label Format", parent),
      exponential_(new QRadioButton(tr("&Exponential"))), fixed_(new QRadioButton(tr("&Fixed"))),
      sample_(new QLabel) {
    exponential_->setObjectName("optExponential");
    fixed_->setObjectName("optFixed");
    (preset.fixed ? fixed_ : exponential_)->setChecked(true);
    rows().addRow(exponential_);
    rows().addRow(fixed_);
    digits_ = add(new CountField(preset.decimals), "txtDecimal", tr("&Decimal digits:"));
    prefix_ = add(new QLineEdit(to_qt(preset.prefix)), "txtPrefix", tr("&Prefix:"));
    suffix_ = add(new QLineEdit(to_qt(preset.suffix)), "txtSuffix", tr("&Suffix:"));
    constexpr int longest = 20; // as the project file keeps them
    for (QLineEdit* const field : {prefix_, suffix_}) {
        field->setMaxLength(longest);
        set_digits(*field, longest);
    }
    rows().addRow(tr("Example:"), sample_);
    for (QLineEdit* const field : {static_cast<QLineEdit*>(digits_), prefix_, suffix_}) {
        connect(field, &QLineEdit::textChanged, this, &FormatDialog::show_sample);
    }
    connect(fixed_, &QRadioButton::toggled, this, &FormatDialog::show_sample);
    show_sample();
}

plot::LabelFormat FormatDialog::format() const {
    plot::LabelFormat format;
    format.fixed = fixed_->isChecked();
    format.decimals = digits_->value();
    format.prefix = from_qt(prefix_->text());
    format.suffix = from_qt(suffix_->text());
    return format;
}

void FormatDialog::show_sample() {
    constexpr float number = 1234.5678F;
    const plot::LabelFormat shown = format();
    sample_->setText(plot::decimals_refusal(shown.decimals)
                         ? QString()
                         : to_qt(plot::label_text(shown, number)));
}

} // namespace

std::optional<plot::LevelRange> ask_level_range(Desk& desk, const plot::LevelRange& preset,
                                                QWidget* parent) {
    LevelsDialog dialog(desk, preset, parent);
    return dialog.exec() == QDialog::Accepted ? std::optional(dialog.range()) : std::nullopt;
}

std::optional<plot::LabelChoice> ask_labels(Desk& desk, std::size_t levels, QWidget* parent) {
    LabelsDialog dialog(desk, levels, parent);
    return dialog.exec() == QDialog::Accepted ? std::optional(dialog.choice()) : std::nullopt;
}

std::optional<plot::ColourRange> ask_colours(Desk& desk, const QString& title,
                                             const plot::ColourRange& preset, QWidget* parent) {
    ColoursDialog dialog(desk, title, preset, parent);
    return dialog.exec() == QDialog::Accepted ? std::optional(dialog.range()) : std::nullopt;
}

std::optional<float> ask_label_size(Desk& desk, const char* column, float preset, QWidget* parent) {
    SizeDialog dialog(desk, column, preset, parent);
    return dialog.exec() == QDialog::Accepted ? std::optional(dialog.value()) : std::nullopt;
}

std::optional<plot::LabelFormat> ask_label_format(Desk& desk, const plot::LabelFormat& preset,
                                                  QWidget* parent) {
    FormatDialog dialog(desk, preset, parent);
    return dialog.exec() == QDialog::Accepted ? std::optional(dialog.format()) : std::nullopt;
}

} // namespace ui

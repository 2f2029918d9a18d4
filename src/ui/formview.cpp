#include "ui/formview.h"

#include "base/failure.h"
#include "base/textfile.h"
#include "sim/fieldvalue.h"
#include "ui/text.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSlider>

#include <fmt/format.h>

#include <algorithm>

namespace ui {

namespace {

using core::FieldInfo;
using core::FieldKind;

constexpr std::size_t most_radio_buttons = 6;
constexpr int number_width = 12; // characters

// A number that a user would not have to look for behind the frame of a narrow field.
int width_of(const QWidget& widget, int characters) {
    return widget.fontMetrics().horizontalAdvance(QString(characters + 2, '0'));
}

bool typed(const FieldInfo& info) {
    return info.kind == FieldKind::text || info.kind == FieldKind::number;
}

QWidget* checked_button(const QWidget& group) {
    const auto buttons = group.findChildren<QRadioButton*>();
    const auto on = std::ranges::find_if(
        buttons, [](const QRadioButton* button) { return button->isChecked(); });
    return on != buttons.end() ? *on : buttons.value(0);
}

} // namespace

FormView::FormView(base::Interaction& user, core::Form& form, QObject* parent)
    : QObject(parent), user_(user), form_(form) {}

const FieldInfo& FormView::info(std::string_view name) const {
    for (const FieldInfo& field : form_.fields()) {
        if (name == field.name) {
            return field;
        }
    }
    throw base::RangeFailure(fmt::format("the form has no field \"{}\"", name));
}

QWidget* FormView::field(std::string_view name, Look look) {
    return bind(name, look).placed;
}

FormView::Bound& FormView::bind(std::string_view name, Look look) {
    if (const auto known = fields_.find(name); known != fields_.end()) {
        return known->second;
    }
    const FieldInfo& field = info(name);
    Bound& bound = fields_[field.name];
    bound.info = &field;
    if (look == Look::slider || field.kind == FieldKind::slider) {
        make_slider(bound);
    } else if (field.kind == FieldKind::check) {
        make_check(bound);
    } else if (field.kind == FieldKind::choice) {
        look == Look::list || field.choices.size() > most_radio_buttons ? make_list(bound)
                                                                        : make_choice(bound, look);
    } else {
        make_edit(bound);
    }
    bound.control->setObjectName(field.name);
    if (bound.control->accessibleName().isEmpty() && *field.label != '\0') {
        bound.control->setAccessibleName(to_qt(field.label).replace("&&", "&"));
    }
    return bound;
}

void FormView::make_edit(Bound& bound) {
    auto* edit = new QLineEdit;
    edit->setMinimumWidth(width_of(*edit, number_width));
    bound.placed = bound.control = edit;
    bound.read = [edit] { return from_qt(edit->text()); };
    bound.write = [edit](const std::string& text) { edit->setText(to_qt(text)); };
    connect(edit, &QLineEdit::editingFinished, this, [this, &bound] { take(bound); });
}

void FormView::make_check(Bound& bound) {
    auto* box = new QCheckBox(with_mnemonic(to_qt(bound.info->label)));
    bound.placed = bound.control = box;
    bound.read = [box] { return std::string(box->isChecked() ? "1" : "0"); };
    bound.write = [box](const std::string& text) { box->setChecked(text == "1"); };
    connect(box, &QCheckBox::toggled, this, [this, &bound] { take(bound); });
}

void FormView::make_choice(Bound& bound, Look look) {
    auto* place = new QWidget;
    auto* layout = new QBoxLayout(
        look == Look::across ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom, place);
    layout->setContentsMargins({});
    auto* group = new QButtonGroup(place);
    for (const char* choice : bound.info->choices) {
        const int index = int(group->buttons().size());
        auto* button = new QRadioButton(with_mnemonic(to_qt(choice)));
        button->setObjectName(QString("%1_%2").arg(bound.info->name).arg(index));
        group->addButton(button, index);
        layout->addWidget(button);
    }
    layout->addStretch();
    bound.placed = bound.control = place;
    bound.read = [group] { return std::to_string(group->checkedId()); };
    // An index that has no button is left as the model has it: no button is down.
    bound.write = [group](const std::string& text) {
        group->setExclusive(false);
        for (QAbstractButton* button : group->buttons()) {
            button->setChecked(to_qt(text) == QString::number(group->id(button)));
        }
        group->setExclusive(true);
    };
    connect(group, &QButtonGroup::idToggled, this, [this, &bound](int, bool on) {
        if (on) {
            take(bound);
        }
    });
}

void FormView::make_list(Bound& bound) {
    auto* list = new QComboBox;
    for (const char* choice : bound.info->choices) {
        list->addItem(to_qt(choice));
    }
    bound.placed = bound.control = list;
    bound.read = [list] { return std::to_string(list->currentIndex()); };
    bound.write = [list](const std::string& text) {
        list->setCurrentIndex(text.empty() ? -1 : to_qt(text).toInt());
    };
    connect(list, &QComboBox::currentIndexChanged, this, [this, &bound] { take(bound); });
}

void FormView::make_slider(Bound& bound) {
    auto* place = new QWidget;
    auto* layout = new QHBoxLayout(place);
    layout->setContentsMargins({});
    auto* slider = new QSlider(Qt::Horizontal);
    slider->setRange(0, sim::slider_end);
    slider->setPageStep(1);
    slider->setMinimumWidth(width_of(*slider, number_width));
    auto* value = new QLabel;
    value->setMinimumWidth(width_of(*value, 1));
    value->setObjectName(QString("%1_value").arg(bound.info->name));
    layout->addWidget(slider, 1);
    layout->addWidget(value);
    bound.placed = place;
    bound.control = slider;
    const bool position = bound.info->kind == FieldKind::slider;
    bound.read = [slider, position] {
        return position ? std::to_string(slider->value()) : sim::tenth_text(slider->value());
    };
    bound.write = [slider, value, position](const std::string& text) {
        slider->setValue(position ? to_qt(text).toInt() : sim::tenth_position(text));
        value->setText(to_qt(position ? sim::tenth_text(slider->value()) : text));
    };
    connect(slider, &QSlider::valueChanged, this, [this, &bound] {
        if (!filling_) {
            bound.write(bound.read());
            take(bound);
        }
    });
}

QLabel* FormView::label(std::string_view name, const QString& text) {
    Bound& bound = bind(name, Look::by_kind);
    if (!bound.label) {
        QString caption = text.isEmpty() ? to_qt(bound.info->label) : text;
        if (!caption.endsWith(':') && !caption.isEmpty()) {
            caption += ':';
        }
        bound.label = new QLabel(with_mnemonic(caption));
        bound.label->setWordWrap(false);
        bound.label->setBuddy(bound.control);
    }
    return bound.label;
}

QLabel* FormView::unit(std::string_view name) {
    Bound& bound = bind(name, Look::by_kind);
    // Some captions have it themselves: "Size [m]:".
    const bool in_caption = std::string_view(bound.info->label).find('[') != std::string_view::npos;
    if (!bound.unit && !in_caption && *bound.info->unit != '\0') {
        bound.unit = new QLabel(to_qt(bound.info->unit));
    }
    return bound.unit;
}

void FormView::add_row(QGridLayout& grid, std::string_view name, Look look) {
    const Bound& bound = bind(name, look);
    const int row = grid.count() == 0 ? 0 : grid.rowCount();
    const bool has_caption = bound.info->kind != FieldKind::check && *bound.info->label != '\0';
    if (!has_caption) {
        grid.addWidget(bound.placed, row, 0, 1, 3);
        return;
    }
    const bool tall = bound.info->kind == FieldKind::choice && look == Look::by_kind;
    grid.addWidget(label(name), row, 0, tall ? Qt::AlignTop : Qt::Alignment());
    grid.addWidget(bound.placed, row, 1);
    QLabel* const unit_label = unit(name);
    if (unit_label) {
        grid.addWidget(unit_label, row, 2);
    }
}

QGroupBox* FormView::frame(const QString& caption) {
    auto* box = new QGroupBox(caption);
    auto* grid = new QGridLayout(box);
    grid->setColumnStretch(1, 1);
    return box;
}

QGridLayout* FormView::grid_of(QGroupBox* frame) {
    return qobject_cast<QGridLayout*>(frame->layout());
}

void FormView::set_accessible_name(std::string_view name, const QString& text) {
    bind(name, Look::by_kind).control->setAccessibleName(text);
}

void FormView::set_hint(std::string_view name, const QString& text) {
    Bound& bound = bind(name, Look::by_kind);
    bound.placed->setToolTip(text);
    bound.control->setAccessibleDescription(text);
    if (bound.label) {
        bound.label->setToolTip(text);
    }
}

void FormView::write(Bound& bound) {
    bound.value = form_.get(bound.info->name);
    bound.write(bound.value);
    bound.shown = bound.read();
}

void FormView::show_values() {
    filling_ = true;
    for (auto& [name, bound] : fields_) {
        write(bound);
    }
    filling_ = false;
    update();
}

void FormView::update() {
    filling_ = true;
    for (auto& [name, bound] : fields_) {
        if (form_.get(name) != bound.value) {
            write(bound);
        }
        const bool on = form_.enabled(name);
        bound.placed->setEnabled(on);
        for (QLabel* text : {bound.label, bound.unit}) {
            if (text) {
                text->setEnabled(on);
            }
        }
    }
    filling_ = false;
}

bool FormView::take(Bound& bound) {
    const std::string text = bound.read();
    if (filling_ || given_up_ || text == bound.shown) {
        return true;
    }
    bound.shown = text;
    const std::vector<core::Notice> notices = form_.set(bound.info->name, text);
    // The text stays as it was typed unless the form made another of it.
    bound.value = typed(*bound.info) ? std::string(base::trimmed(text)) : text;
    update();
    emit changed(to_qt(bound.info->name));
    for (const core::Notice& notice : notices) {
        user_.message(notice.icon, notice.title, notice.text);
    }
    return notices.empty();
}

bool FormView::commit() {
    bool quiet = true;
    for (const FieldInfo& field : form_.fields()) {
        if (const auto bound = fields_.find(field.name); bound != fields_.end()) {
            quiet = take(bound->second) && quiet;
        }
    }
    return quiet;
}

void FormView::focus(std::string_view name) {
    const auto bound = fields_.find(name);
    if (bound == fields_.end()) {
        return;
    }
    QWidget* control = bound->second.control;
    if (control->focusPolicy() == Qt::NoFocus) {
        control = checked_button(*control);
    }
    if (!control) {
        return;
    }
    control->setFocus(Qt::OtherFocusReason);
    if (auto* edit = qobject_cast<QLineEdit*>(control)) {
        edit->selectAll();
    }
}

QString FormView::with_mnemonic(QString text) {
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar letter = text[i].toLower();
        const bool begins = i == 0 || text[i - 1] == ' ';
        const bool plain = letter.isLetter() && letter.unicode() < 128;
        if (begins && plain && !mnemonics_.contains(letter)) {
            mnemonics_ += letter;
            return text.insert(i, '&');
        }
    }
    return text;
}

} // namespace ui

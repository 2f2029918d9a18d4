#include "ui/plaindialog.h"

#include "ui/desk.h"
#include "ui/mainwindow.h"
#include "ui/tableview.h"
#include "ui/text.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QButtonGroup>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QScrollArea>
#include <QShortcut>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>
#include <vector>

namespace ui {

namespace {

// As large as what is in it, with scroll bars where the screen is smaller than that.
class BodyArea : public QScrollArea {
public:
    BodyArea() {
        setWidget(new QWidget);
        setWidgetResizable(true);
        setFrameShape(QFrame::NoFrame);
        setSizeAdjustPolicy(AdjustToContents);
        setFocusPolicy(Qt::NoFocus);
        viewport()->setAutoFillBackground(false);
        widget()->setAutoFillBackground(false);
    }

    QSize sizeHint() const override { return fitted(widget()->sizeHint()); }
    QSize minimumSizeHint() const override { return fitted(widget()->minimumSizeHint()); }

private:
    QSize fitted(QSize content) const {
        // The buttons and the frame of the window need room, too.
        const QSize space = screen()->availableSize();
        const QSize largest(space.width() * 19 / 20, space.height() * 3 / 4);
        const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
        const QSize bars(content.height() > largest.height() ? bar : 0,
                         content.width() > largest.width() ? bar : 0);
        return (content + bars).boundedTo(largest);
    }
};

bool takes_tab(const QWidget& widget) {
    return (widget.focusPolicy() & Qt::TabFocus) != 0 && !widget.focusProxy();
}

// Controls below `parent` in the order in which they were laid out.
void collect_controls(const QWidget& parent, std::vector<QWidget*>& controls) {
    for (QObject* const child : parent.children()) {
        auto* const widget = qobject_cast<QWidget*>(child);
        if (!widget || widget->isWindow()) {
            continue;
        }
        if (takes_tab(*widget)) {
            controls.push_back(widget);
        }
        const bool whole = qobject_cast<QAbstractSpinBox*>(widget) ||
                           qobject_cast<QAbstractItemView*>(widget) ||
                           qobject_cast<QComboBox*>(widget);
        if (!whole) {
            collect_controls(*widget, controls);
        }
    }
}

bool gives_way(const QWidget* control) {
    const auto* button = qobject_cast<const QRadioButton*>(control);
    const QButtonGroup* group = button ? button->group() : nullptr;
    return group && group->checkedButton() && !button->isChecked();
}

// Of radio buttons the chosen one.
bool can_begin(const QWidget* control) {
    return control->isEnabled() && !control->isHidden() && !gives_way(control);
}

void put_cursor(QWidget* field) {
    field->setFocus(Qt::TabFocusReason);
    if (auto* const line = qobject_cast<QLineEdit*>(field)) {
        line->selectAll();
    }
}

} // namespace

PlainDialog::PlainDialog(Desk& desk, const char* object_name, const QString& title,
                         const char* page, QWidget* parent)
    : QDialog(parent), desk_(desk), page_(to_qt(page)), buttons_(new QHBoxLayout) {
    setObjectName(to_qt(object_name));
    setWindowTitle(title);
    auto* const whole = new QVBoxLayout(this);
    auto* const place = new BodyArea;
    body_ = new QVBoxLayout(place->widget());
    body_->setContentsMargins({});
    whole->addWidget(place, 1);
    whole->addSpacing(fontMetrics().height() / 2);
    whole->addLayout(buttons_);
    // The frame of the window needs room for its own buttons beside the title.
    const int height = fontMetrics().height();
    whole->addItem(new QSpacerItem(fontMetrics().horizontalAdvance(title) + 8 * height, 0));
    buttons_->addStretch();
    const auto add = [this](const char* name, const QString& text, auto work) {
        QPushButton* const button = plain_button(name, text);
        buttons_->addWidget(button);
        connect(button, &QPushButton::clicked, this, work);
        return button;
    };
    add("cmdOK", tr("OK"), &PlainDialog::accept)->setDefault(true);
    add("cmdCancel", tr("Cancel"), &PlainDialog::reject);
    add("cmdHelp", tr("Help"), &PlainDialog::show_page);
    auto* const key = new QShortcut(QKeySequence::HelpContents, this);
    connect(key, &QShortcut::activated, this, &PlainDialog::show_page);
}

QPushButton& PlainDialog::add_button(const char* object_name, const QString& text) {
    QPushButton* const button = plain_button(object_name, text);
    buttons_->insertWidget(further_buttons_++, button);
    return *button;
}

void PlainDialog::show_page() {
    for (QWidget* above = parentWidget(); above; above = above->parentWidget()) {
        if (auto* const window = qobject_cast<MainWindow*>(above)) {
            window->show_help(page_);
            return;
        }
    }
}

bool PlainDialog::refused(const std::optional<base::Refusal>& refusal, QWidget* field) {
    if (!refusal) {
        return false;
    }
    base::show(desk_.user(), *refusal);
    if (field) {
        put_cursor(field);
    }
    return true;
}

void PlainDialog::accept() {
    if (take()) {
        QDialog::accept();
    }
}

void PlainDialog::reject() {
    for (TableView* const table : findChildren<TableView*>()) {
        table->give_up_editing();
    }
    QDialog::reject();
}

void PlainDialog::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (!shown_) {
        shown_ = true;
        order_focus();
    }
}

void PlainDialog::order_focus() {
    std::vector<QWidget*> controls;
    const QWidget* const place = body_->parentWidget();
    collect_controls(*place, controls);
    const auto first = std::ranges::find_if(controls, can_begin);
    QWidget* const start = first != controls.end() ? *first : nullptr;
    for (int i = 0; i < buttons_->count(); ++i) {
        if (QWidget* const button = buttons_->itemAt(i)->widget()) {
            controls.push_back(button);
        }
    }
    for (std::size_t i = 1; i < controls.size(); ++i) {
        setTabOrder(controls[i - 1], controls[i]);
    }
    // Tab comes to the chosen radio button, as the toolkit keeps it from then on: Space on another
    // one would choose that.
    for (QWidget* const control : controls) {
        if (gives_way(control)) {
            control->setFocusPolicy(Qt::FocusPolicy(control->focusPolicy() & ~Qt::TabFocus));
        }
    }
    if (start && !(focusWidget() && place->isAncestorOf(focusWidget()))) {
        put_cursor(start);
    }
}

QPushButton* plain_button(const char* object_name, const QString& text) {
    auto* const button = new QPushButton(text);
    button->setObjectName(to_qt(object_name));
    button->setAutoDefault(false);
    // A click leaves the cursor in its field, whose text then is not taken over by Cancel.
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

QLabel* label_of(QWidget* field, const QString& text) {
    auto* const label = new QLabel(text);
    label->setBuddy(field);
    return label;
}

QLabel* wrapped_label(const QString& text) {
    auto* const label = new QLabel(text);
    label->setWordWrap(true);
    return label;
}

} // namespace ui

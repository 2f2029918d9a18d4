#include "ui/formdialog.h"

#include "ui/desk.h"
#include "ui/mainwindow.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QButtonGroup>
#include <QComboBox>
#include <QGroupBox>
#include <QKeySequence>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QScrollArea>
#include <QShortcut>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>

namespace ui {

namespace {

bool takes_tab(const QWidget& widget) {
    return (widget.focusPolicy() & Qt::TabFocus) != 0 && !widget.focusProxy();
}

// Controls below `parent` in the order in which they were laid out.
void collect_controls(const QWidget& parent, std::vector<QWidget*>& controls) {
    for (QObject* child : parent.children()) {
        auto* widget = qobject_cast<QWidget*>(child);
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

// Of radio buttons the chosen one.
bool can_begin(const QWidget* control) {
    const auto* button = qobject_cast<const QRadioButton*>(control);
    const QButtonGroup* group = button ? button->group() : nullptr;
    const bool other_is_chosen = group && group->checkedButton() && !button->isChecked();
    return control->isEnabled() && !control->isHidden() && !other_is_chosen;
}

} // namespace

FormDialog::FormDialog(CommandContext& context, core::Form& form, const char* object_name,
                       const QString& title, const char* help_page)
    : QDialog(&context.window), context_(context), form_(form),
      view_(context.desk.user(), form, this) {
    setObjectName(object_name);
    setWindowTitle(title);
    auto* layout = new QVBoxLayout(this);
    auto* place = new BodyArea;
    body_ = new QVBoxLayout(place->widget());
    body_->setContentsMargins({});
    layout->addWidget(place, 1);
    layout->addSpacing(fontMetrics().height() / 2);
    buttons_ = new QHBoxLayout;
    layout->addLayout(buttons_);
    build_buttons(help_page);
    // The frame of the window needs room for its own buttons beside the title.
    const int height = fontMetrics().height();
    layout->addItem(new QSpacerItem(fontMetrics().horizontalAdvance(title) + 8 * height, 0));
}

void FormDialog::build_buttons(const char* help_page) {
    buttons_->addStretch();
    const auto add = [this](const char* name, const QString& caption) {
        auto* button = new QPushButton(caption);
        button->setObjectName(name);
        // A click leaves the cursor in its field, whose text then is not taken over by Cancel.
        button->setFocusPolicy(Qt::TabFocus);
        buttons_->addWidget(button);
        return button;
    };
    QPushButton* ok = add("cmdOK", tr("OK"));
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &FormDialog::accept);
    connect(add("cmdCancel", tr("Cancel")), &QPushButton::clicked, this, &FormDialog::reject);
    QPushButton* help = add("cmdHelp", tr("Help"));
    const std::string page = help_page;
    const auto show_help = [this, page] { context_.window.run_command("help_contents"); };
    connect(help, &QPushButton::clicked, this, show_help);
    connect(new QShortcut(QKeySequence::HelpContents, this), &QShortcut::activated, this,
            show_help);
}

QGridLayout* FormDialog::add_frame(const QString& caption) {
    QGroupBox* frame = FormView::frame(caption);
    body_->addWidget(frame);
    return FormView::grid_of(frame);
}

QPushButton* FormDialog::add_button(const char* object_name, const QString& caption) {
    auto* button = new QPushButton(caption);
    button->setObjectName(object_name);
    button->setAutoDefault(false);
    buttons_->insertWidget(extra_buttons_++, button);
    return button;
}

bool FormDialog::load() {
    if (loaded_) {
        return true;
    }
    const app::Workspace* model = context_.desk.model();
    if (!model) {
        return false;
    }
    const auto outcome =
        context_.desk.attempt(signature_.empty() ? "Form_Load()" : signature_, [&] {
            form_.load(model->project, model->files);
            loaded_ = true;
        });
    if (outcome != report::Outcome::done) {
        return false;
    }
    view_.show_values();
    loaded();
    return true;
}

int FormDialog::run(const std::string& step, std::string_view signature) {
    step_ = step;
    signature_ = signature;
    return load() ? exec() : int(Rejected);
}

void FormDialog::accept() {
    if (!commit()) {
        return;
    }
    if (const auto refusal = form_.check()) {
        base::show(context_.desk.user(), *refusal);
        refused(*refusal);
        return;
    }
    if (!form_.ask(context_.desk.user())) {
        return;
    }
    const bool saved = context_.desk.change(signature_, step_, [this](app::Workspace& model) {
        form_.save(model.project, model.files);
        return true;
    });
    if (!saved) {
        return;
    }
    QDialog::accept();
    for (const core::Notice& notice : form_.saved_notices()) {
        context_.desk.user().message(notice.icon, notice.title, notice.text);
    }
}

bool FormDialog::commit() {
    view_.commit();
    return true;
}

void FormDialog::refused(const base::Refusal& refusal) {
    view_.focus(refusal.field);
}

void FormDialog::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (!shown_) {
        shown_ = true;
        order_focus();
    }
}

void FormDialog::order_focus() {
    std::vector<QWidget*> controls;
    collect_controls(*body_->parentWidget(), controls);
    const std::size_t in_body = controls.size();
    for (int i = 0; i < buttons_->count(); ++i) {
        if (QWidget* button = buttons_->itemAt(i)->widget()) {
            controls.push_back(button);
        }
    }
    for (std::size_t i = 1; i < controls.size(); ++i) {
        setTabOrder(controls[i - 1], controls[i]);
    }
    const auto end = controls.begin() + std::ptrdiff_t(in_body);
    const auto first = std::find_if(controls.begin(), end, can_begin);
    if (first != end) {
        (*first)->setFocus(Qt::TabFocusReason);
    }
    if (auto* edit = qobject_cast<QLineEdit*>(focusWidget())) {
        edit->selectAll();
    }
}

} // namespace ui

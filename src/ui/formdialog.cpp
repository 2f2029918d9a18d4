#include "ui/formdialog.h"

#include "ui/desk.h"
#include "ui/mainwindow.h"

#include <QGroupBox>
#include <QVBoxLayout>

namespace ui {

FormDialog::FormDialog(CommandContext& context, core::Form& form, const char* object_name,
                       const QString& title, const char* help_page)
    : PlainDialog(context.desk, object_name, title, help_page, &context.window), context_(context),
      form_(form), view_(context.desk.user(), form, this) {}

QGridLayout* FormDialog::add_frame(const QString& caption) {
    QGroupBox* frame = FormView::frame(caption);
    body().addWidget(frame);
    return FormView::grid_of(frame);
}

bool FormDialog::load() {
    if (loaded_) {
        return true;
    }
    const app::Workspace* model = desk().model();
    if (!model) {
        return false;
    }
    const auto outcome = desk().attempt(signature_.empty() ? "Form_Load()" : signature_, [&] {
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

bool FormDialog::take() {
    if (!commit()) {
        return false;
    }
    if (const auto refusal = form_.check()) {
        base::show(desk().user(), *refusal);
        show_refused(*refusal);
        return false;
    }
    return form_.ask(desk().user()) &&
           desk().change(signature_, step_, [this](app::Workspace& model) {
               form_.save(model.project, model.files);
               return true;
           });
}

void FormDialog::accept() {
    PlainDialog::accept();
    if (result() == Accepted) {
        for (const core::Notice& notice : form_.saved_notices()) {
            desk().user().message(notice.icon, notice.title, notice.text);
        }
    }
}

void FormDialog::reject() {
    view_.give_up();
    PlainDialog::reject();
}

bool FormDialog::commit() {
    view_.commit();
    return true;
}

void FormDialog::show_refused(const base::Refusal& refusal) {
    view_.focus(refusal.field);
}

} // namespace ui

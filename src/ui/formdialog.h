// A dialog over a form of the library.
#pragma once

#include "core/form.h"
#include "ui/commandtables.h"
#include "ui/formview.h"
#include "ui/plaindialog.h"

#include <string>
#include <string_view>

namespace ui {

class FormDialog : public PlainDialog {
    Q_OBJECT

public:
    // `form` outlives the dialog; `help_page` is a page of the manual, such as "settings.md".
    FormDialog(CommandContext& context, core::Form& form, const char* object_name,
               const QString& title, const char* help_page);

    FormView& view() { return view_; }
    // The control of a field as FormView makes it.
    QWidget* field(const char* name) { return view_.field(name); }
    // A frame at the end of the body, with a grid of captions, fields and units.
    QGridLayout* add_frame(const QString& caption);

    // Fills the form from the open model and shows it; once, before the dialog is shown. False: it
    // could not be read, which was shown. Called by run().
    bool load();

    // Shows the dialog until OK has saved the form or the user has cancelled: QDialog::Accepted or
    // Rejected. `step` names what can be taken back, `signature` the procedure for the report of a
    // failure. What OK refuses leaves the dialog open, with the cursor in the refused field.
    int run(const std::string& step, std::string_view signature);

    void accept() override;
    void reject() override;

protected:
    // After the form has been loaded, and before the dialog is shown: for bodies that show more
    // than fields.
    virtual void loaded() {}
    // What a refusal of OK does behind its box; moves the cursor to the field that it names.
    virtual void show_refused(const base::Refusal& refusal);
    // Takes over what was typed into the body, before OK checks it. False: stays open.
    virtual bool commit();

    // Checks, asks and saves the form.
    bool take() override;

    CommandContext& context() { return context_; }

private:
    CommandContext context_;
    core::Form& form_;
    FormView view_;
    bool loaded_ = false;
    std::string step_;
    std::string signature_;
};

} // namespace ui

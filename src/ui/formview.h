// Widgets over a form of the library: one for each field, by its kind and under its control name.
#pragma once

#include "core/form.h"

#include <QObject>
#include <QString>

#include <functional>
#include <map>
#include <string>
#include <string_view>

class QBoxLayout;
class QGridLayout;
class QGroupBox;
class QLabel;
class QWidget;

namespace ui {

// How a field is shown. By its kind: text and number as a line edit, check as a check box, choice
// as radio buttons below each other or, with more than six items, as a list; slider as a slider
// with the stored value beside it.
enum class Look {
    by_kind,
    across, // radio buttons side by side
    list,   // a choice as a list
    slider, // a number from 0 to 1 in tenths, such as "0.3"
};

// Keeps a form and its widgets at one. Typed text goes into the form when the field is left or when
// commit() is called, everything else at once. After each change all fields show what the form
// holds, are enabled as it says, and its notices are shown; a text that was not changed is never
// written back.
class FormView : public QObject {
    Q_OBJECT

public:
    // Both outlive the view, whose widgets are placed by the owner of the window.
    FormView(base::Interaction& user, core::Form& form, QObject* parent);

    // What is laid out for a field. Its control bears the object name: for a slider it is inside,
    // and radio buttons are named FIELD_0, FIELD_1 ... A name that the form does not have is a
    // RangeFailure.
    QWidget* field(std::string_view name, Look look = Look::by_kind);
    // The caption of a field with its mnemonic, ended by a colon; `text` instead of the form's own.
    QLabel* label(std::string_view name, const QString& text = {});
    // The unit of a field, nullptr when it has none.
    QLabel* unit(std::string_view name);

    // Caption, field and unit as the next row of a grid of three columns. A check has its caption
    // itself, and takes the row.
    void add_row(QGridLayout& grid, std::string_view name, Look look = Look::by_kind);
    // A frame with a grid of three columns in it.
    static QGroupBox* frame(const QString& caption);
    static QGridLayout* grid_of(QGroupBox* frame);

    // The name that a screen reader speaks, for fields whose caption is the head of a column.
    void set_accessible_name(std::string_view name, const QString& text);
    // Tooltip and description of a field.
    void set_hint(std::string_view name, const QString& text);

    // Shows what the form holds, whatever was typed.
    void show_values();
    // Takes over typed text that is not in the form yet. False: a field's new text raised a notice.
    bool commit();
    // From now on takes nothing over, not even the text of a field that the cursor leaves.
    void give_up() { given_up_ = true; }
    // Puts the cursor into the field and selects its text.
    void focus(std::string_view name);

    core::Form& form() const { return form_; }

signals:
    // After a field has its new text in the form.
    void changed(const QString& name);

private:
    struct Bound {
        const core::FieldInfo* info = nullptr;
        QWidget* placed = nullptr;  // in the layout
        QWidget* control = nullptr; // bears the name
        QLabel* label = nullptr;
        QLabel* unit = nullptr;
        std::function<std::string()> read;
        std::function<void(const std::string&)> write;
        std::string shown; // what read() gave when the form was shown or asked last
        std::string value; // what the form held then
    };

    Bound& bind(std::string_view name, Look look);
    const core::FieldInfo& info(std::string_view name) const;
    void make_edit(Bound& bound);
    void make_check(Bound& bound);
    void make_choice(Bound& bound, Look look);
    void make_list(Bound& bound);
    void make_slider(Bound& bound);

    // Gives the field's text to the form. False: that raised a notice.
    bool take(Bound& bound);
    void write(Bound& bound);
    void update();
    // `text` with "&" before a letter that no other caption of this view has yet.
    QString with_mnemonic(QString text);

    base::Interaction& user_;
    core::Form& form_;
    std::map<std::string, Bound, std::less<>> fields_;
    QString mnemonics_;
    bool filling_ = false;
    bool given_up_ = false;
};

} // namespace ui

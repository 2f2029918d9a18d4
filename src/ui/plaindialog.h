// The frame of a dialog: what it asks for, and OK, Cancel and Help at the bottom right.
#pragma once

#include "base/failure.h"

#include <QDialog>

#include <optional>

class QHBoxLayout;
class QLabel;
class QPushButton;
class QVBoxLayout;

namespace ui {

class Desk;

// Enter is OK, Escape is Cancel, F1 is Help. The focus begins in the first control of the body
// unless the dialog has put it elsewhere, and goes through the body in the order in which it was
// laid out, then through the buttons. A body larger than the screen scrolls.
class PlainDialog : public QDialog {
    Q_OBJECT

public:
    // `page` of the manual ("heat.md") is what Help opens.
    PlainDialog(Desk& desk, const char* object_name, const QString& title, const char* page,
                QWidget* parent);

    // Where the dialog lays out what it asks for.
    QVBoxLayout& body() { return *body_; }
    // A further button at the left of the lowest row.
    QPushButton& add_button(const char* object_name, const QString& text);

    // Shows a refusal and brings the person back to the field, with its text selected. False when
    // nothing was refused.
    bool refused(const std::optional<base::Refusal>& refusal, QWidget* field);

    // OK: closes when take() says so.
    void accept() override;
    // Cancel: cells that are still open are given up, so that nobody is told what was wrong in
    // them.
    void reject() override;

protected:
    // Takes over what was typed. False: the dialog stays.
    virtual bool take() = 0;
    Desk& desk() { return desk_; }

    void showEvent(QShowEvent* event) override;

private:
    void order_focus();
    void show_page();

    Desk& desk_;
    QString page_;
    QVBoxLayout* body_;
    QHBoxLayout* buttons_;
    int further_buttons_ = 0;
    bool shown_ = false;
};

// A label that names `field` for the keyboard ("&Column:") and for screen readers.
QLabel* label_of(QWidget* field, const QString& text);
// A push button that never answers Enter.
QPushButton* plain_button(const char* object_name, const QString& text);
// A label of several lines.
QLabel* wrapped_label(const QString& text);

} // namespace ui

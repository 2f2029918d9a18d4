#include "ui/qtuser.h"

#include "ui/mainwindow.h"
#include "ui/text.h"

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>

namespace ui {

void QtUser::set_window(MainWindow* window) {
    window_ = window;
}

void QtUser::message(base::Icon, std::string_view title, std::string_view text) {
    QMessageBox::information(window_, to_qt(title), to_qt(text));
}

base::Answer QtUser::ask(std::string_view title, std::string_view text, base::Buttons) {
    return QMessageBox::question(window_, to_qt(title), to_qt(text)) == QMessageBox::Yes
               ? base::Answer::yes
               : base::Answer::no;
}

std::optional<std::filesystem::path> QtUser::choose_file(base::FileChoice, std::string_view title,
                                                         std::string_view, std::string_view name) {
    const QString file = QFileDialog::getOpenFileName(window_, to_qt(title), to_qt(name));
    return file.isEmpty() ? std::nullopt : std::optional<std::filesystem::path>(from_qt(file));
}

void QtUser::status(std::string_view) {}

bool QtUser::show_meter(int) {
    return false;
}

void QtUser::busy(bool) {}

void QtUser::beep() {
    QApplication::beep();
}

base::Reaction QtUser::failure(const base::Failure& failure) {
    message(base::Icon::critical, base::desk_title, failure.what);
    return base::Reaction::leave;
}

} // namespace ui

// The person in front of the desktop program: boxes, file dialogs, status bar.
#pragma once

#include "base/interaction.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>

#include <memory>

class QFileDialog;
class QMessageBox;

namespace report {
class FailureLog;
}

namespace ui {

class MainWindow;

class QtUser : public QObject, public base::Interaction {
    Q_OBJECT

public:
    QtUser();
    ~QtUser() override;

    // Where status, meter and boxes are shown; boxes come before any window without a parent.
    void set_window(MainWindow* window);
    // Keeps calls and failures for the error report; without one a failure is a plain box.
    void set_log(report::FailureLog* log) { log_ = log; }

    void message(base::Icon icon, std::string_view title, std::string_view text) override;
    base::Answer ask(std::string_view title, std::string_view text, base::Buttons buttons) override;
    std::optional<std::filesystem::path> choose_file(base::FileChoice kind, std::string_view title,
                                                     std::string_view filter,
                                                     std::string_view name) override;

    // The text and the meter stay until the operation gives control back to the event loop.
    std::optional<FilteredFile> choose_filtered_file(base::FileChoice kind, std::string_view title,
                                                     std::string_view filter,
                                                     std::string_view name) override;
    void status(std::string_view text) override;
    // Draws, and takes keys: Escape stops, others beep; the mouse, menus and toolbar are dead.
    bool show_meter(int percent) override;
    void busy(bool on) override;
    void beep() override;
    base::Reaction failure(const base::Failure& failure) override;
    void called(std::string_view signature) override;

    // An operation shows its meter, or the hourglass: nothing else may begin.
    bool in_operation() const { return in_operation_; }

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    QWidget* parent() const;
    base::Answer run(QMessageBox& box);
    void handle_events();
    void end_operation();

    QPointer<MainWindow> window_;
    report::FailureLog* log_ = nullptr;
    QElapsedTimer since_events_;
    int busy_ = 0;
    int failures_ = 0;
    bool in_operation_ = false;
    bool handling_ = false; // of events within an operation
    bool stop_ = false;
};

// "TD models (*.td1)|*.td1|All files|*.*" as the toolkit has it, one text a filter.
QStringList qt_filters(std::string_view filter);
// Ending of the files of a filter in that form ("td1"); empty for all files.
QString suffix_of(const QString& qt_filter);

} // namespace ui

#include "ui/snapshot.h"

#include "base/version.h"
#include "report/errorreport.h"
#include "ui/commandtables.h"
#include "ui/desk.h"
#include "ui/dialogs/errptnr.h"
#include "ui/dialogs/orientation.h"
#include "ui/editor.h"
#include "ui/mainwindow.h"
#include "ui/text.h"
#include "ui/toolbar.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableView>
#include <QTimer>

namespace ui {

namespace {

constexpr int settle_ms = 120; // until a window has its final layout

void wait(int ms) {
    QElapsedTimer time;
    time.start();
    while (time.elapsed() < ms) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, settle_ms);
    }
}

void settle() {
    wait(settle_ms);
}

// Does what a step in a dialog says: presses a button ("cmdLoad"), chooses a page of tabs
// ("Environment_Tabs=2") or clicks on a table's head ("TDBGrid2=0"). False for what there is not.
bool take_step(const QDialog& dialog, const QString& step) {
    const QString name = step.section('=', 0, 0);
    const int number = step.section('=', 1).toInt();
    if (auto* const button = dialog.findChild<QAbstractButton*>(name)) {
        button->click();
    } else if (auto* const tabs = dialog.findChild<QTabWidget*>(name)) {
        tabs->setCurrentIndex(number);
    } else if (auto* const table = dialog.findChild<QTableView*>(name)) {
        emit table->horizontalHeader()->sectionClicked(number);
    } else {
        return false;
    }
    return true;
}

// Watches for modal windows while a command runs: answers questions, and takes the picture of the
// dialog in which no step is left to be taken, when it is asked for one.
class Watcher {
public:
    explicit Watcher(MainWindow& window) : window_(window) {
        QObject::connect(&timer_, &QTimer::timeout, [this] { look(); });
        timer_.start(settle_ms);
    }

    // A command of the menus, or what else has a name: "tool_zone", "view_colours_viridis",
    // "layer=6", "wait=5" (seconds); also the dialogs that no command opens by itself,
    // "error_report" and "import_orientation". Behind it the steps in its dialogs, each after a
    // ">". False for what there is not.
    bool run(const QString& command, bool takes_picture) {
        takes_picture_ = takes_picture;
        steps_ = command.split('>');
        const QString name = steps_.takeFirst();
        if (find_command(from_qt(name))) {
            window_.run_command(from_qt(name));
        } else if (name == "error_report") {
            show_failure();
        } else if (name == "import_orientation") {
            CommandContext context{window_.desk(), window_};
            choose_orientation(context);
        } else if (name.startsWith("layer=")) {
            window_.tools().layer_spin().setValue(name.section('=', 1).toInt());
        } else if (name.startsWith("wait=")) {
            wait(name.section('=', 1).toInt() * 1000);
        } else if (QAction* action = find_action(name)) {
            action->trigger();
        } else {
            return false;
        }
        settle();
        return missing_.isEmpty();
    }

    void leave_editor() {
        answer_ = QMessageBox::No;
        takes_picture_ = false;
        steps_ = {};
        if (window_.desk().editor_open()) {
            window_.editor().leave();
        }
    }

    const QPixmap& picture() const { return picture_; }
    const std::string& refusal() const { return refusal_; }

private:
    // A failure as it is met when a disk is full, kept nowhere.
    void show_failure() {
        report::FailureLog log({base::desk_title, "td", report::version_numbers(base::version)},
                               [] { return std::chrono::system_clock::now(); });
        log.calls().CallStack("[Grid] Worksheet::leave(answer)");
        const base::Failure full{"cannot be written: No space left on device", "doublet.tem",
                                 "[Grid] Worksheet::leave(answer)"};
        show_error_report(&window_, full, log, 1, window_.desk().user());
    }

    QAction* find_action(const QString& name) const {
        for (QMenu* menu : window_.findChildren<QMenu*>()) {
            QMetaObject::invokeMethod(menu, "aboutToShow"); // some are filled only then
        }
        auto* const action = window_.findChild<QAction*>(name);
        return action && action->isEnabled() ? action : nullptr;
    }

    void look() {
        QWidget* const modal = QApplication::activeModalWidget();
        if (auto* box = qobject_cast<QMessageBox*>(modal)) {
            press(*box);
        } else if (auto* dialog = qobject_cast<QDialog*>(modal)) {
            if (!steps_.isEmpty()) {
                // By an event of its own: while this one lasts, the timer rests.
                QTimer::singleShot(0, dialog, [this, dialog] { go_on(*dialog); });
                return;
            }
            if (takes_picture_ && picture_.isNull()) {
                picture_ = dialog->grab();
            }
            close(*dialog);
        } else if (modal) {
            modal->close();
        }
    }

    void go_on(QDialog& dialog) {
        if (!steps_.isEmpty()) {
            const QString step = steps_.takeFirst();
            if (!take_step(dialog, step)) {
                steps_ = {};
                missing_ = step;
                takes_picture_ = false;
            }
        }
    }

    // The dialog of the periods stands before the question of leaving: its Cancel stays.
    void close(QDialog& dialog) {
        auto* const ok = dialog.findChild<QPushButton*>("cmdOK");
        const bool leaves = answer_ == QMessageBox::No;
        leaves&& ok ? ok->click() : dialog.reject();
    }

    void press(QMessageBox& box) {
        QAbstractButton* button = box.button(answer_);
        if (!button) {
            button = box.defaultButton();
        }
        const bool is_message = box.buttons().size() == 1;
        if (is_message && refusal_.empty()) {
            refusal_ = from_qt(box.text());
        }
        button ? button->click() : box.reject();
    }

    MainWindow& window_;
    QTimer timer_;
    QMessageBox::StandardButton answer_ = QMessageBox::Yes;
    bool takes_picture_ = false;
    QStringList steps_; // in the dialogs of the present command
    QString missing_;   // a step that could not be taken
    QPixmap picture_;
    std::string refusal_;
};

// A window that the command has opened beside the main window.
QWidget* other_window(const MainWindow& window) {
    for (QWidget* candidate : QApplication::topLevelWidgets()) {
        if (candidate != &window && candidate->isVisible() &&
            (candidate->windowType() == Qt::Window || candidate->windowType() == Qt::Dialog)) {
            return candidate;
        }
    }
    return nullptr;
}

QPixmap picture_behind(MainWindow& window, bool was_open) {
    if (QWidget* other = other_window(window)) {
        return other->grab();
    }
    return window.desk().editor_open() || was_open ? window.grab() : QPixmap();
}

} // namespace

std::string take_snapshot(MainWindow& window, const std::string& name,
                          const std::filesystem::path& out) {
    settle();
    QPixmap picture;
    Watcher watcher(window);
    if (name == "main") {
        picture = window.grab();
    } else {
        const QStringList commands = to_qt(name).split('+', Qt::SkipEmptyParts);
        bool was_open = false;
        for (const QString& command : commands) {
            was_open = window.desk().editor_open();
            if (!watcher.run(command, &command == &commands.back())) {
                watcher.leave_editor();
                return "there is no dialog of " + from_qt(command);
            }
        }
        picture = watcher.picture();
        if (picture.isNull() && watcher.refusal().empty()) {
            picture = picture_behind(window, was_open);
        }
    }
    watcher.leave_editor();
    if (picture.isNull()) {
        return watcher.refusal().empty() ? "there is no dialog of " + name : watcher.refusal();
    }
    return picture.save(to_qt(out), "PNG") ? std::string() : out.string() + " cannot be written";
}

} // namespace ui

#include "ui/qtuser.h"

#include "app/settings.h"
#include "report/errorreport.h"
#include "ui/desk.h"
#include "ui/dialogs/errptnr.h"
#include "ui/mainwindow.h"
#include "ui/statuspanes.h"
#include "ui/text.h"

#include <QApplication>
#include <QFileDialog>
#include <QKeyEvent>
#include <QMessageBox>
#include <QTimer>

#include <algorithm>

namespace ui {

namespace {

constexpr int events_every_ms = 20;

struct ButtonRow {
    QMessageBox::StandardButton button;
    base::Answer answer;
};
constexpr ButtonRow button_rows[] = {{QMessageBox::Ok, base::Answer::ok},
                                     {QMessageBox::Yes, base::Answer::yes},
                                     {QMessageBox::No, base::Answer::no},
                                     {QMessageBox::Cancel, base::Answer::cancel}};

QMessageBox::Icon box_icon(base::Icon icon) {
    switch (icon) {
    case base::Icon::question:
        return QMessageBox::Question;
    case base::Icon::warning:
        return QMessageBox::Warning;
    case base::Icon::critical:
        return QMessageBox::Critical;
    default:
        return QMessageBox::Information;
    }
}

void set_buttons(QMessageBox& box, base::Buttons buttons) {
    switch (buttons) {
    case base::Buttons::ok_cancel:
        box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
        box.setDefaultButton(QMessageBox::Ok);
        box.setEscapeButton(QMessageBox::Cancel);
        return;
    case base::Buttons::yes_no_cancel:
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
        box.setDefaultButton(QMessageBox::Yes);
        box.setEscapeButton(QMessageBox::Cancel);
        return;
    default:
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        box.setDefaultButton(buttons == base::Buttons::yes_no_risky ? QMessageBox::No
                                                                    : QMessageBox::Yes);
        box.setEscapeButton(QMessageBox::No);
    }
}

// A box within an operation is no part of it: it has its own pointer.
class PlainPointer {
public:
    PlainPointer() { QApplication::setOverrideCursor(Qt::ArrowCursor); }
    ~PlainPointer() { QApplication::restoreOverrideCursor(); }
    PlainPointer(const PlainPointer&) = delete;
    PlainPointer& operator=(const PlainPointer&) = delete;
};

// Settings that cannot be read keep no dialog from opening.
QString model_folder(const Desk& desk) {
    try {
        return to_qt(app::ProgramSettings(desk.folders().program).GetModelPath()).trimmed();
    } catch (const base::FileFailure&) {
        return {};
    }
}

QString start_folder(const QString& filters, const Desk& desk) {
    if (filters.contains("*.td1", Qt::CaseInsensitive)) {
        const QString stored = model_folder(desk);
        if (!stored.isEmpty()) {
            return stored;
        }
    }
    return desk.model() ? to_qt(desk.model()->Model_Folder()) : QString();
}

void propose(QFileDialog& dialog, const QString& folder, const QString& name) {
    const QFileInfo file(name);
    if (file.isAbsolute()) {
        dialog.setDirectory(file.path());
        dialog.selectFile(file.fileName());
        return;
    }
    if (!folder.isEmpty()) {
        dialog.setDirectory(folder);
    }
    if (!name.isEmpty()) {
        dialog.selectFile(name);
    }
}

bool is_key_or_mouse(QEvent::Type type) {
    constexpr QEvent::Type dead[] = {
        QEvent::KeyPress,         QEvent::KeyRelease,          QEvent::Shortcut,
        QEvent::ShortcutOverride, QEvent::MouseButtonPress,    QEvent::MouseButtonRelease,
        QEvent::MouseMove,        QEvent::MouseButtonDblClick, QEvent::Wheel,
        QEvent::ContextMenu,      QEvent::DragEnter,           QEvent::Drop,
        QEvent::TouchBegin,       QEvent::TouchUpdate,         QEvent::TouchEnd,
        QEvent::TabletPress,      QEvent::NativeGesture};
    return std::find(std::begin(dead), std::end(dead), type) != std::end(dead);
}

bool is_modifier(int key) {
    return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt ||
           key == Qt::Key_Meta || key == Qt::Key_AltGr || key == Qt::Key_CapsLock;
}

} // namespace

QStringList qt_filters(std::string_view filter) {
    const QStringList parts = to_qt(filter).split('|', Qt::SkipEmptyParts);
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QString caption = parts[i];
        // Its own pattern is left out, a remark in parentheses stays.
        caption.truncate(caption.contains("(*") ? caption.lastIndexOf("(*") : caption.size());
        QString patterns = parts[i + 1];
        filters << QString("%1 (%2)").arg(caption.trimmed(), patterns.replace(';', ' '));
    }
    return filters;
}

QString suffix_of(const QString& qt_filter) {
    const qsizetype begin = qt_filter.lastIndexOf("(*.");
    const QString first = begin < 0 ? QString() : qt_filter.mid(begin + 3).section(' ', 0, 0);
    const QString suffix = first.section(')', 0, 0);
    return suffix.contains('*') ? QString() : suffix;
}

QtUser::QtUser() = default;
QtUser::~QtUser() = default;

void QtUser::set_window(MainWindow* window) {
    window_ = window;
}

QWidget* QtUser::parent() const {
    QWidget* const modal = QApplication::activeModalWidget();
    return modal ? modal : window_;
}

base::Answer QtUser::run(QMessageBox& box) {
    const PlainPointer pointer;
    box.setObjectName("MessageBox");
    // File names in a text are no mark-up.
    box.setTextFormat(Qt::PlainText);
    const int pressed = box.exec();
    const auto* const row =
        std::find_if(std::begin(button_rows), std::end(button_rows),
                     [&](const ButtonRow& candidate) { return candidate.button == pressed; });
    return row == std::end(button_rows) ? base::Answer::cancel : row->answer;
}

void QtUser::message(base::Icon icon, std::string_view title, std::string_view text) {
    QMessageBox box(box_icon(icon), to_qt(title), to_qt(text), QMessageBox::Ok, parent());
    run(box);
}

base::Answer QtUser::ask(std::string_view title, std::string_view text, base::Buttons buttons) {
    QMessageBox box(QMessageBox::Question, to_qt(title), to_qt(text), QMessageBox::NoButton,
                    parent());
    set_buttons(box, buttons);
    return run(box);
}

std::optional<std::filesystem::path> QtUser::choose_file(base::FileChoice kind,
                                                         std::string_view title,
                                                         std::string_view filter,
                                                         std::string_view name) {
    const auto chosen = choose_filtered_file(kind, title, filter, name);
    return chosen ? std::optional(chosen->file) : std::nullopt;
}

std::optional<base::Interaction::FilteredFile> QtUser::choose_filtered_file(base::FileChoice kind,
                                                                            std::string_view title,
                                                                            std::string_view filter,
                                                                            std::string_view name) {
    const PlainPointer pointer;
    QFileDialog dialog(parent(), to_qt(title));
    dialog.setObjectName("FileDialog");
    const QStringList filters = qt_filters(filter);
    dialog.setNameFilters(filters);
    if (kind == base::FileChoice::folder) {
        dialog.setFileMode(QFileDialog::Directory);
        dialog.setOption(QFileDialog::ShowDirsOnly);
    } else if (kind == base::FileChoice::open) {
        dialog.setFileMode(QFileDialog::ExistingFile);
    } else {
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        // Commands ask themselves, in their own words.
        dialog.setOption(QFileDialog::DontConfirmOverwrite);
        dialog.setDefaultSuffix(filters.isEmpty() ? QString() : suffix_of(filters.front()));
        connect(&dialog, &QFileDialog::filterSelected, &dialog,
                [&](const QString& chosen) { dialog.setDefaultSuffix(suffix_of(chosen)); });
    }
    propose(dialog, window_ ? start_folder(filters.join(' '), window_->desk()) : QString(),
            to_qt(name));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return std::nullopt;
    }
    const qsizetype chosen = filters.indexOf(dialog.selectedNameFilter());
    return FilteredFile{from_qt(dialog.selectedFiles().front()),
                        int(std::max(chosen, qsizetype{0})) + 1};
}

void QtUser::status(std::string_view text) {
    if (window_) {
        window_->panes().set_progress(to_qt(text));
        handle_events();
    }
}

bool QtUser::show_meter(int percent) {
    if (window_) {
        window_->panes().set_meter(std::clamp(percent, 0, 100));
    }
    if (!since_events_.isValid() || since_events_.elapsed() >= events_every_ms) {
        handle_events();
    }
    return stop_;
}

void QtUser::handle_events() {
    if (handling_) {
        return;
    }
    if (!in_operation_) {
        in_operation_ = true;
        stop_ = false;
        // Comes when the operation is over and the event loop runs again.
        QTimer::singleShot(0, this, &QtUser::end_operation);
    }
    handling_ = true;
    qApp->installEventFilter(this);
    if (window_) {
        window_->hold_ticks(true);
    }
    QCoreApplication::processEvents();
    qApp->removeEventFilter(this);
    if (window_) {
        window_->hold_ticks(false);
    }
    handling_ = false;
    since_events_.start();
}

void QtUser::end_operation() {
    if (handling_) {
        QTimer::singleShot(events_every_ms, this, &QtUser::end_operation);
        return;
    }
    in_operation_ = false;
    stop_ = false;
    since_events_.invalidate();
    if (window_) {
        window_->panes().set_meter(-1);
        window_->panes().set_progress({});
    }
}

bool QtUser::eventFilter(QObject*, QEvent* event) {
    if (event->type() == QEvent::Close) {
        event->ignore();
        return true;
    }
    if (!is_key_or_mouse(event->type())) {
        return false;
    }
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Escape) {
            stop_ = true;
        } else if (!is_modifier(key)) {
            beep();
        }
    }
    return true;
}

void QtUser::busy(bool on) {
    if (on && busy_++ == 0) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
    } else if (!on && busy_ > 0 && --busy_ == 0) {
        QApplication::restoreOverrideCursor();
    }
}

void QtUser::beep() {
    QApplication::beep();
}

base::Reaction QtUser::failure(const base::Failure& failure) {
    if (!log_) {
        message(base::Icon::critical, base::desk_title, failure.what);
        return base::Reaction::leave;
    }
    const PlainPointer pointer;
    return show_error_report(parent(), failure, *log_, ++failures_, *this);
}

void QtUser::called(std::string_view signature) {
    if (log_) {
        log_->calls().CallStack(signature);
    }
}

} // namespace ui

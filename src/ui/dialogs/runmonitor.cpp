#include "ui/dialogs/runmonitor.h"

#include "base/interaction.h"
#include "ui/desk.h"
#include "ui/text.h"

#include <fmt/format.h>

#include <QDesktopServices>
#include <QFontDatabase>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTreeWidget>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>

namespace ui {

namespace {

constexpr const char* window_name = "RunMonitor";
constexpr const char* window_title = "Run TERVEX";
constexpr int poll_interval = 500;       // ms
constexpr qint64 patience = 10000;       // ms until a program is pressed harder to end
constexpr int kept_lines = 2000;         // of the log
constexpr int kept_characters = 1 << 20; // likewise, for a log without line ends
constexpr int signal_base = 128;         // of the exit status of a program ended by a signal

enum Column { name_column, process_column, state_column, time_column, column_count };

QString time_text(qint64 ms) {
    const qint64 seconds = ms / 1000;
    return to_qt(fmt::format("{}:{:02}:{:02}", seconds / 3600, seconds / 60 % 60, seconds % 60));
}

} // namespace

RunMonitor::RunMonitor(base::Interaction& user, std::filesystem::path model, QWidget* parent)
    : QDialog(parent), user_(user), model_(std::move(model)),
      opener_([](const QUrl& folder) { QDesktopServices::openUrl(folder); }) {
    setObjectName(window_name);
    setWindowTitle(window_title);
    build();
    timer_.setInterval(poll_interval);
    connect(&timer_, &QTimer::timeout, this, &RunMonitor::poll);
}

RunMonitor* RunMonitor::of_model(const Desk& desk, const QWidget& parent) {
    for (RunMonitor* monitor : parent.findChildren<RunMonitor*>(window_name)) {
        if (desk.model() && monitor->model_ == desk.model()->Model_Path()) {
            return monitor;
        }
    }
    return nullptr;
}

void RunMonitor::build() {
    auto* column = new QVBoxLayout(this);
    auto* model = new QLabel("Model: " + to_qt(model_), this);
    model->setObjectName("lblModel");
    model->setTextFormat(Qt::PlainText);
    model->setWordWrap(true);
    model->setTextInteractionFlags(Qt::TextSelectableByMouse);
    column->addWidget(model);
    column->addWidget(make_list());
    log_name_ = new QLabel(this);
    log_name_->setTextFormat(Qt::PlainText);
    log_name_->setWordWrap(true);
    column->addWidget(log_name_);
    log_ = new QPlainTextEdit(this);
    log_->setObjectName("txtLog");
    log_->setReadOnly(true);
    log_->setTabChangesFocus(true);
    log_->setLineWrapMode(QPlainTextEdit::NoWrap);
    log_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    log_->setMaximumBlockCount(kept_lines);
    log_->setPlaceholderText("Nothing was printed yet.");
    log_name_->setBuddy(log_);
    column->addWidget(log_, 1);

    auto* buttons = new QHBoxLayout;
    const auto add = [&](const char* name, const char* caption, auto action) {
        auto* button = new QPushButton(caption, this);
        button->setObjectName(name);
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, action);
        buttons->addWidget(button);
        return button;
    };
    stop_ = add("cmdStop", "&Stop...", &RunMonitor::stop);
    add("cmdFolder", "Show Log &Folder", &RunMonitor::show_folder);
    buttons->addStretch();
    add("cmdClose", "&Close", &QDialog::reject);
    column->addLayout(buttons);
    resize(fontMetrics().averageCharWidth() * 120, fontMetrics().lineSpacing() * 26);
    log_->setFocus();
}

QWidget* RunMonitor::make_list() {
    list_ = new QTreeWidget(this);
    list_->setObjectName("lstPrograms");
    list_->setAccessibleName("Programs");
    list_->setRootIsDecorated(false);
    list_->setSelectionMode(QAbstractItemView::NoSelection);
    list_->setAllColumnsShowFocus(true);
    list_->setColumnCount(column_count);
    list_->setHeaderLabels({"Program", "Process", "State", "Time"});
    list_->header()->setStretchLastSection(false);
    list_->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    list_->header()->setSectionResizeMode(state_column, QHeaderView::Stretch);
    list_->setFixedHeight(list_->fontMetrics().lineSpacing() * 5);
    return list_;
}

void RunMonitor::show_run(std::vector<input::Started> started) {
    programs_.clear();
    list_->clear();
    log_->clear();
    since_stop_.invalidate();
    since_start_.start();
    for (input::Started& program : started) {
        tail_ = base::TextTail(program.log);
        log_name_->setText("&Last lines of " + to_qt(program.log.filename()).replace("&", "&&") +
                           ":");
        auto* item = new QTreeWidgetItem(list_);
        item->setText(name_column, to_qt(program.program.filename()));
        item->setToolTip(name_column, to_qt(program.program));
        item->setText(process_column, QString::number(program.process.id()));
        programs_.push_back({std::move(program), std::nullopt});
    }
    poll();
    timer_.start();
    bring_to_front();
}

bool RunMonitor::is_running() const {
    return std::ranges::any_of(programs_, [](const Program& p) { return !p.ended_at; });
}

void RunMonitor::bring_to_front() {
    show();
    raise();
    activateWindow();
}

void RunMonitor::poll() {
    // First the programs: behind the end of the last one nothing more is printed.
    show_programs();
    press_on();
    show_log();
    const bool running = is_running();
    stop_->setEnabled(running);
    if (!running) {
        timer_.stop();
        if (!isVisible() && !programs_.empty()) {
            const QTreeWidgetItem* first = list_->topLevelItem(0);
            emit ended_unseen(first->text(name_column) + " " + first->text(state_column));
        }
    }
}

void RunMonitor::show_programs() {
    int row = 0;
    for (Program& program : programs_) {
        const bool ended = program.started.process.exit_status().has_value();
        if (ended && !program.ended_at) {
            program.ended_at = since_start_.elapsed();
        }
        QTreeWidgetItem* item = list_->topLevelItem(row++);
        item->setText(state_column, state_of(program));
        item->setText(time_column, time_text(program.ended_at.value_or(since_start_.elapsed())));
    }
}

QString RunMonitor::state_of(Program& program) const {
    const auto status = program.started.process.exit_status();
    if (!status) {
        return since_stop_.isValid() ? "stopping" : "running";
    }
    const QString end = *status > signal_base
                            ? QString("ended by signal %1").arg(*status - signal_base)
                            : QString("ended with exit status %1").arg(*status);
    return since_stop_.isValid() ? "stopped, " + end : end;
}

void RunMonitor::show_log() {
    const base::TextTail::News news = tail_.news();
    if (news.restarted || news.skipped) {
        log_->clear();
    }
    if (news.text.empty()) {
        return;
    }
    QScrollBar* bar = log_->verticalScrollBar();
    const bool at_end = bar->value() == bar->maximum();
    QTextCursor cursor(log_->document());
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(to_qt((news.skipped ? "...\n" : "") + news.text));
    if (const int excess = log_->document()->characterCount() - kept_characters; excess > 0) {
        cursor.setPosition(0);
        cursor.setPosition(excess, QTextCursor::KeepAnchor);
        cursor.removeSelectedText();
    }
    if (at_end) {
        bar->setValue(bar->maximum());
    }
}

// A program that does not end is asked again, less friendly.
void RunMonitor::press_on() {
    if (!since_stop_.isValid() || since_stop_.elapsed() < patience) {
        return;
    }
    const bool long_ago = since_stop_.elapsed() > 2 * patience;
    for (const Program& program : programs_) {
        if (!program.ended_at) {
            program.started.process.send(long_ago ? base::Process::Ending::kill
                                                  : base::Process::Ending::terminate);
        }
    }
}

void RunMonitor::stop() {
    std::string names;
    for (const Program& program : programs_) {
        if (!program.ended_at) {
            names += (names.empty() ? "" : " and ") + program.started.program.filename().string();
        }
    }
    const std::string question = fmt::format(
        "Do you want to stop {}?\n\nWhat was written until now stays in the folder.", names);
    if (names.empty() ||
        user_.ask(window_title, question, base::Buttons::yes_no) != base::Answer::yes) {
        return;
    }
    since_stop_.start();
    for (Program& program : programs_) {
        if (!program.started.process.exit_status()) {
            program.started.process.send(base::Process::Ending::interrupt);
        }
    }
    poll();
}

void RunMonitor::show_folder() {
    if (!programs_.empty()) {
        opener_(QUrl::fromLocalFile(to_qt(programs_.front().started.log.parent_path())));
    }
}

} // namespace ui

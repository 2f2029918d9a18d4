// The window "Run TERVEX": the programs that run on a model, and what they print.
#pragma once

#include "base/texttail.h"
#include "input/runcontrol.h"

#include <QDialog>
#include <QElapsedTimer>
#include <QTimer>

#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

class QLabel;
class QPlainTextEdit;
class QPushButton;
class QTreeWidget;
class QUrl;

namespace base {
class Interaction;
}

namespace ui {

class Desk;

class RunMonitor final : public QDialog {
    Q_OBJECT

public:
    // `user` outlives the window, which shows the runs of one model.
    RunMonitor(base::Interaction& user, std::filesystem::path model, QWidget* parent);

    // The window of the model; nullptr when it had no run yet.
    static RunMonitor* of_model(const Desk& desk, const QWidget& parent);

    // Shows a new run in the place of the last one.
    void show_run(std::vector<input::Started> started);
    bool is_running() const;
    void bring_to_front();

    // What shows a folder: the file manager, unless a test has its own.
    void set_opener(std::function<void(const QUrl&)> opener) { opener_ = std::move(opener); }

signals:
    // The run is over while the window is hidden: how it has ended.
    void ended_unseen(const QString& end);

private:
    struct Program {
        input::Started started;
        std::optional<qint64> ended_at; // ms from the start of the run
    };

    void build();
    QWidget* make_list();
    void poll();
    void show_programs();
    void show_log();
    void press_on();
    void stop();
    void show_folder();
    QString state_of(Program& program) const;

    base::Interaction& user_;
    std::filesystem::path model_;
    std::vector<Program> programs_;
    base::TextTail tail_{{}};
    std::function<void(const QUrl&)> opener_;
    QElapsedTimer since_start_;
    QElapsedTimer since_stop_; // valid once the user wanted to stop
    QTimer timer_;
    QTreeWidget* list_ = nullptr;
    QLabel* log_name_ = nullptr;
    QPlainTextEdit* log_ = nullptr;
    QPushButton* stop_ = nullptr;
};

} // namespace ui

// The six panes of the status bar: cell, pointer, caption, progress, values, meter.
#pragma once

#include <QStatusBar>

#include <array>

class QLabel;
class QProgressBar;

namespace ui {

class StatusPanes : public QStatusBar {
    Q_OBJECT

public:
    explicit StatusPanes(QWidget* parent = nullptr);

    // Texts that are too long for their pane are cut there; its tooltip has the whole.
    void set_cell(const QString& text);
    void set_pointer(const QString& text);
    void set_caption(const QString& text);
    void set_progress(const QString& text);
    void set_values(const QString& text);
    // 0 to 100; -1 hides it.
    void set_meter(int percent);

    // What has come of the last operation: shown while there is no progress, until the next one.
    void set_result(const QString& text);

    // What the chosen tool of the editor does, shown while there is no progress; stays until it is
    // changed.
    void set_hint(const QString& text);

    // Covers the progress text until it is empty again: what the pointer rests on.
    void set_tip(const QString& text);

private:
    void set(int pane, const QString& text);
    void show_text();

    std::array<QLabel*, 5> texts_{};
    QProgressBar* meter_ = nullptr;
    QString progress_;
    QString hint_;
    QString result_;
    QString tip_;
};

} // namespace ui

// The person in front of the desktop program: boxes, file dialogs, status bar.
#pragma once

#include "base/interaction.h"

#include <QPointer>

class QWidget;

namespace ui {

class MainWindow;

class QtUser : public base::Interaction {
public:
    // Where status, meter and boxes are shown; boxes come before any window without a parent.
    void set_window(MainWindow* window);

    void message(base::Icon icon, std::string_view title, std::string_view text) override;
    base::Answer ask(std::string_view title, std::string_view text, base::Buttons buttons) override;
    std::optional<std::filesystem::path> choose_file(base::FileChoice kind, std::string_view title,
                                                     std::string_view filter,
                                                     std::string_view name) override;
    void status(std::string_view text) override;
    bool show_meter(int percent) override;
    void busy(bool on) override;
    void beep() override;
    base::Reaction failure(const base::Failure& failure) override;

private:
    QPointer<MainWindow> window_;
};

} // namespace ui

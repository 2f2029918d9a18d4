// The main window: menu tree, toolbar, worksheet, status bar.
#pragma once

#include <QMainWindow>

#include <string_view>

namespace ui {

class Desk;

class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    // `desk` outlives the window.
    explicit MainWindow(Desk& desk, QWidget* parent = nullptr);
    ~MainWindow() override;

    Desk& desk() { return desk_; }

    // Runs the command of that name behind its guard, as its menu item does. Its action has the
    // same object name.
    void run_command(std::string_view name);

private:
    void build_menus();
    void refresh();

    Desk& desk_;
};

} // namespace ui

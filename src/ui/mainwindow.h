// The main window: menu tree, toolbar, worksheet, status bar.
#pragma once

#include <QMainWindow>

#include <string>
#include <string_view>

class QAction;
class QStackedWidget;

namespace app {
struct MenuItemState;
}

namespace ui {

class Desk;
class EmptySheet;
class StatusPanes;
class ToolBar;

class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    // `desk` outlives the window. Size and place are those of the last session.
    explicit MainWindow(Desk& desk, QWidget* parent = nullptr);
    ~MainWindow() override;

    Desk& desk() { return desk_; }
    StatusPanes& panes() { return *panes_; }
    ToolBar& tools() { return *tools_; }

    // Runs the command of that name behind its guard, as its menu item does. Its action has the
    // same object name.
    void run_command(std::string_view name);

    // Action of a menu, a submenu or an item; nullptr for a name that the menu does not have.
    QAction* command(std::string_view name) const;
    // Ticks of items that no model knows about, such as the input method.
    void set_tick(std::string_view name, bool on);

    // Opens that page of the manual ("heat.md"), its first one when there is no such page.
    void show_help(const QString& page);

    // Offers to end a worksheet session that was cut off, then opens the model. False: it is not
    // open.
    bool open_model(const std::string& path);

    // Writes the program's settings and ends it; an open editor is not asked.
    void exit_program();

    // Menus, toolbar and title after a change of the model or of what the user remembers.
    void refresh();

signals:
    // Every 250 ms, but not while a menu is open.
    void tick();

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void build_menus();
    QAction* add_command(const char* name, const char* caption);
    void build_tools();
    void show_state(const app::MenuItemState& state);
    void save_session();

    Desk& desk_;
    ToolBar* tools_ = nullptr;
    StatusPanes* panes_ = nullptr;
    QStackedWidget* sheets_ = nullptr;
    EmptySheet* empty_ = nullptr;
    bool ends_ = false;
};

} // namespace ui

// The main window: menu tree, toolbar, worksheet, status bar.
#pragma once

#include <QMainWindow>
#include <QPointer>

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

class QAction;
class QStackedWidget;

namespace app {
struct MenuItemState;
}

namespace ui {

class Desk;
class Editor;
class EmptySheet;
class ManualWindow;
class StatusPanes;
class ToolBar;
class WorksheetView;

class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    // `desk` outlives the window. Size and place are those of the last session.
    explicit MainWindow(Desk& desk, QWidget* parent = nullptr);
    ~MainWindow() override;

    Desk& desk() { return desk_; }
    StatusPanes& panes() { return *panes_; }
    ToolBar& tools() { return *tools_; }
    WorksheetView& view() { return *view_; }
    Editor& editor() { return *editor_; }

    // Runs the command of that name behind its guard, as its menu item does. Its action has the
    // same object name.
    void run_command(std::string_view name);

    // Action of a menu, a submenu or an item; nullptr for a name that the menu does not have.
    QAction* command(std::string_view name) const;
    // Ticks of items that no model knows about, such as the input method, until the next refresh().
    void set_tick(std::string_view name, bool on);

    // Opens that page of the manual ("heat.md"), its first one when there is no such page.
    void show_help(const QString& page);
    // The same with the focus in the field that searches all pages.
    void search_help();

    // Offers to end a worksheet session that was cut off, then opens the model. False: it is not
    // open.
    bool open_model(const std::filesystem::path& path);
    // A model was made, opened or copied by a command.
    void tell_opened() { emit opened(); }

    // Writes the program's settings and ends it; an open editor is not asked.
    void exit_program();

    // No tick() while a long operation lets events in.
    void hold_ticks(bool on) { holds_ticks_ = on; }

    // Menus, toolbar and title after a change of the model or of what the user remembers.
    void refresh();

signals:
    // Every 250 ms, but not while a menu is open.
    void tick();
    // Another model is open.
    void opened();
    // The session has ended.
    void closed();

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void build_menus();
    void build_sheets();
    void build_tools();
    void show_menus();
    void show_state(const app::MenuItemState& state);
    void show_tools();
    // What the next session begins with: place of the window and recent models.
    void save_session();

    Desk& desk_;
    ToolBar* tools_ = nullptr;
    StatusPanes* panes_ = nullptr;
    QStackedWidget* sheets_ = nullptr;
    EmptySheet* empty_ = nullptr;
    WorksheetView* view_ = nullptr;
    std::unique_ptr<Editor> editor_;
    QPointer<ManualWindow> manual_;
    bool ends_ = false;
    bool holds_ticks_ = false;
};

} // namespace ui

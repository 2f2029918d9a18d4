#include "ui/mainwindow.h"

#include "app/commands.h"
#include "app/menustate.h"
#include "ui/commandtables.h"
#include "ui/desk.h"
#include "ui/text.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

namespace ui {

MainWindow::MainWindow(Desk& desk, QWidget* parent) : QMainWindow(parent), desk_(desk) {
    build_menus();
    connect(&desk_, &Desk::model_changed, this, &MainWindow::refresh);
    connect(&desk_, &Desk::editor_changed, this, &MainWindow::refresh);
    refresh();
}

MainWindow::~MainWindow() = default;

void MainWindow::build_menus() {
    QMenu* menu = nullptr;
    QMenu* submenu = nullptr;
    for (const app::MenuEntry& entry : app::menu_table()) {
        if (entry.depth == 0) {
            menu = menuBar()->addMenu(to_qt(entry.caption));
            menu->menuAction()->setObjectName(entry.name);
            continue;
        }
        QMenu* parent = entry.depth == 1 ? menu : submenu;
        if (entry.kind == app::MenuKind::submenu) {
            submenu = parent->addMenu(to_qt(entry.caption));
            submenu->menuAction()->setObjectName(entry.name);
            continue;
        }
        if (entry.kind == app::MenuKind::separator) {
            parent->addSeparator()->setObjectName(entry.name);
            continue;
        }
        QAction* action = parent->addAction(to_qt(entry.caption));
        action->setObjectName(entry.name);
        const std::string name = entry.name;
        connect(action, &QAction::triggered, this, [this, name] { run_command(name); });
    }
}

void MainWindow::refresh() {
    setWindowTitle(to_qt(desk_.model() ? desk_.model()->window_title() : base::desk_title));
    const auto states = desk_.model()
                            ? app::Menu_Refresh(desk_.model()->project, desk_.editor_open())
                            : app::Menu_without_model();
    for (const app::MenuItemState& state : states) {
        if (QAction* action = findChild<QAction*>(to_qt(state.name))) {
            action->setVisible(state.visible);
            action->setEnabled(state.enabled);
        }
    }
}

void MainWindow::run_command(std::string_view name) {
    if (const auto refusal = app::command_guard(name, desk_.model())) {
        base::show(desk_.user(), *refusal);
        return;
    }
    if (const CommandRow* command = find_command(name)) {
        CommandContext context{desk_, *this};
        command->run(context);
    }
}

} // namespace ui

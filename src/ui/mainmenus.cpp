// The menus of the main window: what they show, by the model's state.

#include "app/commands.h"
#include "app/menustate.h"
#include "app/recentfiles.h"
#include "ui/commandtables.h"
#include "ui/desk.h"
#include "ui/emptysheet.h"
#include "ui/mainwindow.h"
#include "ui/text.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include <optional>

namespace ui {

namespace {

constexpr const char* tick_property = "ticked";
constexpr const char* missing_tip = "This tool is not part of this version.";

struct Shortcut {
    const char* command;
    const char* keys;
};

constexpr Shortcut shortcuts[] = {
    {"file_new_model", "Ctrl+N"}, {"file_open_model", "Ctrl+O"}, {"help_contents", "F1"}};

// Nothing when the list cannot be read: it is a convenience.
std::optional<app::RecentFiles> recent_files(const Desk& desk) {
    if (desk.folders().settings.empty()) {
        return std::nullopt;
    }
    try {
        return app::RecentFiles(desk.folders().settings);
    } catch (const base::FileFailure&) {
        return std::nullopt;
    }
}

} // namespace

void MainWindow::build_menus() {
    QMenu* menus[2] = {};
    for (const app::MenuEntry& entry : app::menu_table()) {
        const bool is_menu = entry.kind == app::MenuKind::menu;
        if (is_menu || entry.kind == app::MenuKind::submenu) {
            QMenu* menu = is_menu ? menuBar()->addMenu(to_qt(entry.caption))
                                  : menus[0]->addMenu(to_qt(entry.caption));
            menu->setToolTipsVisible(true);
            menu->menuAction()->setObjectName(entry.name);
            menus[is_menu ? 0 : 1] = menu;
            continue;
        }
        QMenu& parent = *menus[entry.depth - 1];
        if (entry.kind == app::MenuKind::separator) {
            parent.addSeparator()->setObjectName(entry.name);
            continue;
        }
        QAction* action = parent.addAction(to_qt(entry.caption));
        action->setObjectName(entry.name);
        const std::string name = entry.name;
        connect(action, &QAction::triggered, this, [this, action, name] {
            // The click has turned the tick, which only the model does.
            set_tick(name, action->property(tick_property).toBool());
            run_command(name);
        });
    }
    for (const Shortcut& shortcut : shortcuts) {
        command(shortcut.command)->setShortcut(QKeySequence(shortcut.keys));
    }
}

QAction* MainWindow::command(std::string_view name) const {
    return menuBar()->findChild<QAction*>(to_qt(name));
}

void MainWindow::set_tick(std::string_view name, bool on) {
    if (QAction* action = command(name)) {
        action->setProperty(tick_property, on);
        // An item without a tick has no empty box either.
        action->setCheckable(on);
        action->setChecked(on);
    }
}

void MainWindow::show_state(const app::MenuItemState& state) {
    QAction* action = command(state.name);
    if (!action) {
        return;
    }
    const bool is_command = !action->menu() && !action->isSeparator();
    const bool missing = is_command && !find_command(state.name);
    action->setVisible(state.visible);
    action->setEnabled(state.enabled && !missing);
    if (is_command) {
        action->setText(to_qt(state.caption));
        action->setStatusTip(missing ? missing_tip : QString());
        action->setToolTip(missing ? missing_tip : QString());
        set_tick(state.name, state.ticked);
    }
}

void MainWindow::show_menus() {
    const auto recent = recent_files(desk_);
    const app::RecentFiles* list = recent ? &*recent : nullptr;
    const bool open = desk_.model() != nullptr;
    auto states = open ? app::Menu_Refresh(desk_.model()->project, desk_.editor_open(), list)
                       : app::Menu_without_model(list);
    for (app::MenuItemState& state : states) {
        // Without a model the commands say what they need.
        state.enabled = state.enabled || !open;
        show_state(state);
    }
    if (!recent) {
        return;
    }
    empty_->show_recent(*recent);
    for (int number = 1; number <= app::RecentFiles::count; ++number) {
        command("RecentUsed(" + std::to_string(number) + ")")->setData(to_qt(recent->path(number)));
    }
}

} // namespace ui

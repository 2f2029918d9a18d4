#include "ui/mainwindow.h"

#include "app/commands.h"
#include "app/menustate.h"
#include "app/recentfiles.h"
#include "ui/commandtables.h"
#include "ui/desk.h"
#include "ui/editor.h"
#include "ui/emptysheet.h"
#include "ui/icons.h"
#include "ui/manualwindow.h"
#include "ui/modelopening.h"
#include "ui/statuspanes.h"
#include "ui/text.h"
#include "ui/toolbar.h"
#include "ui/windowplace.h"
#include "ui/worksheetview.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QStackedWidget>
#include <QStatusTipEvent>
#include <QTimer>

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

// The file of a drag that can be opened here.
QString dropped_model(const QMimeData& data) {
    const QList<QUrl> urls = data.urls();
    const QString path = urls.size() == 1 ? urls.front().toLocalFile() : QString();
    const bool model =
        path.endsWith(".td1", Qt::CaseInsensitive) || path.endsWith(".bd5", Qt::CaseInsensitive);
    return model ? path : QString();
}

} // namespace

MainWindow::MainWindow(Desk& desk, QWidget* parent) : QMainWindow(parent), desk_(desk) {
    setObjectName("MainWindow");
    setWindowIcon(program_icon());
    setAcceptDrops(true);
    // Its menu hides the toolbar for good.
    setContextMenuPolicy(Qt::PreventContextMenu);
    build_menus();
    build_tools();
    build_sheets();
    connect(&desk_, &Desk::model_changed, this, &MainWindow::refresh);
    connect(&desk_, &Desk::editor_changed, this, &MainWindow::refresh);
    editor_ = std::make_unique<Editor>(desk_, *this);
    refresh();
    try {
        restore_place(*this, desk_.folders().settings);
    } catch (const base::FileFailure&) {
        restore_place(*this, {}); // settings that cannot be read are as good as none
    }
}

MainWindow::~MainWindow() {
    // The editor uses the other members until it is gone.
    disconnect(&desk_, nullptr, this, nullptr);
    editor_.reset();
}

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

void MainWindow::build_tools() {
    tools_ = new ToolBar(this);
    addToolBar(Qt::TopToolBarArea, tools_);
    panes_ = new StatusPanes(this);
    setStatusBar(panes_);
    constexpr const char* commands[][2] = {{"open_model", "file_open_model"},
                                           {"check", "check_model"}};
    for (const auto& [key, name] : commands) {
        connect(tools_->action(key), &QAction::triggered, this,
                [this, command = std::string(name)] { run_command(command); });
    }
    constexpr const char* steps[][2] = {{"undo", "tool_undo"}, {"redo", "tool_redo"}};
    for (const auto& [name, tool] : steps) {
        connect(tools_->action(name), &QAction::triggered, this,
                [this, command = std::string(name), in_editor = std::string(tool)] {
                    desk_.editor_open() ? editor_->run(in_editor) : run_command(command);
                });
    }
    auto* timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, [this] {
        if (!holds_ticks_ && !QApplication::activePopupWidget()) {
            emit tick();
        }
    });
    timer->start(250);
}

void MainWindow::build_sheets() {
    sheets_ = new QStackedWidget(this);
    empty_ = new EmptySheet(*this);
    view_ = new WorksheetView(this);
    view_->setObjectName("worksheet");
    view_->setAccessibleName("Worksheet");
    sheets_->addWidget(empty_);
    sheets_->addWidget(view_);
    setCentralWidget(sheets_);
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

void MainWindow::show_tools() {
    ToolStage stage = ToolStage::no_model;
    if (desk_.editor_open()) {
        grid::Worksheet* const worksheet = editor_ ? editor_->worksheet() : nullptr;
        stage = !worksheet ? ToolStage::mesh
                : worksheet->request().Current_Parameter() == grid::digitizer
                    ? ToolStage::digitizer
                    : ToolStage::worksheet;
    } else if (desk_.model()) {
        stage = desk_.model()->files.has(".xy") ? ToolStage::model : ToolStage::no_grid;
    }
    tools_->set_stage(stage);
    if (!desk_.editor_open()) {
        tools_->show_step("undo", desk_.undo_name());
        tools_->show_step("redo", desk_.redo_name());
    }
}

void MainWindow::refresh() {
    setWindowTitle(to_qt(desk_.model() ? desk_.model()->window_title() : base::desk_title));
    show_menus();
    show_tools();
    QWidget* const sheet = desk_.model() ? static_cast<QWidget*>(view_) : empty_;
    if (sheets_->currentWidget() != sheet) {
        sheets_->setCurrentWidget(sheet);
        sheet->setFocus();
    }
}

void MainWindow::run_command(std::string_view name) {
    if (desk_.editor_open() && command(name) && !app::works_in_editor(name)) {
        desk_.user().beep();
        return;
    }
    if (const auto refusal = app::command_guard(name, desk_.model())) {
        base::show(desk_.user(), *refusal);
        return;
    }
    if (const CommandRow* command = find_command(name)) {
        CommandContext context{desk_, *this};
        command->run(context);
    }
}

bool MainWindow::open_model(const std::filesystem::path& path) {
    if (!open_with_recovery(desk_, path)) {
        return false;
    }
    emit opened();
    return true;
}

void MainWindow::show_help(const QString& page) {
    const auto folder = manual_folder();
    if (!folder) {
        desk_.user().message(base::Icon::warning, base::desk_title,
                             "The manual was not found beside the program.");
        return;
    }
    // A window beside a modal dialog gets no input, one that belongs to it does.
    QWidget* const modal = QApplication::activeModalWidget();
    QWidget* const owner = modal ? modal : this;
    if (manual_ && manual_->parentWidget() != owner) {
        delete manual_;
    }
    if (!manual_) {
        manual_ = new ManualWindow(to_qt(*folder), owner);
        manual_->setAttribute(Qt::WA_DeleteOnClose);
    }
    manual_->show_page(page);
    manual_->show();
    manual_->raise();
    manual_->activateWindow();
}

void MainWindow::search_help() {
    if (!manual_) {
        show_help({});
    }
    if (manual_) {
        manual_->raise();
        manual_->activateWindow();
        manual_->begin_search();
    }
}

void MainWindow::save_session() {
    const std::filesystem::path& settings = desk_.folders().settings;
    if (settings.empty()) {
        return;
    }
    const QRect area = isMaximized() || isMinimized() ? normalGeometry() : geometry();
    try {
        store_place(settings, {area, isMaximized()});
        app::RecentFiles(settings).save(); // without the models that are gone
    } catch (const base::FileFailure&) {
        // A folder that cannot be written keeps no program from ending.
    }
}

void MainWindow::exit_program() {
    ends_ = true;
    close();
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (!ends_ && desk_.editor_open() && !editor_->leave()) {
        event->ignore();
        return;
    }
    save_session();
    delete manual_;
    QMainWindow::closeEvent(event);
}

bool MainWindow::event(QEvent* event) {
    if (event->type() == QEvent::StatusTip) {
        panes_->set_tip(static_cast<QStatusTipEvent*>(event)->tip());
        return true;
    }
    return QMainWindow::event(event);
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (!desk_.editor_open() && !dropped_model(*event->mimeData()).isEmpty()) {
        event->acceptProposedAction();
    }
}

void MainWindow::dropEvent(QDropEvent* event) {
    const QString path = dropped_model(*event->mimeData());
    if (path.isEmpty() || desk_.editor_open()) {
        return;
    }
    event->acceptProposedAction();
    // The program that the file came from waits until this handler is left.
    QTimer::singleShot(0, this, [this, path] { open_model(from_qt(path)); });
}

} // namespace ui

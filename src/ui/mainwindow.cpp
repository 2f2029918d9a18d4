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
#include <QMimeData>
#include <QStackedWidget>
#include <QStatusTipEvent>
#include <QTimer>

namespace ui {

namespace {

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
    manual_->show();
    manual_->show_page(page); // where it stands depends on the window's width
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
    emit closed();
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

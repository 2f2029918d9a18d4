#include "ui/editor.h"

#include "core/project.h"
#include "grid/worksheetfiles.h"
#include "ui/commandtables.h"
#include "ui/desk.h"
#include "ui/dialogs/editordialogs.h"
#include "ui/dialogs/settingsdialogs.h"
#include "ui/editorpictures.h"
#include "ui/mainwindow.h"
#include "ui/meshsession.h"
#include "ui/statuspanes.h"
#include "ui/text.h"
#include "ui/worksheetsession.h"

#include <algorithm>

namespace ui {

Editor::Editor(Desk& desk, MainWindow& window) : desk_(desk), window_(window), idle_(window) {
    WorksheetView& view = window_.view();
    view.set_input(&idle_);
    view.show_legend(true);
    connect(&desk_, &Desk::model_changed, this, &Editor::show_model);
    connect(&window_, &MainWindow::tick, this, &Editor::tick);
    connect(&window_, &MainWindow::opened, this, [this] { Current_Period_ = 1; });
    connect(&view, &WorksheetView::zoom_rectangle_done, this, &Editor::sync);
    connect(&view, &WorksheetView::display_changed, this, [this] {
        if (session_) {
            session_->redraw(); // labels of contours stand upright in each display
        }
        sync();
    });
    connect_tools();
    add_view_button();
    show_model();
}

Editor::~Editor() {
    window_.view().set_input(nullptr);
}

grid::Worksheet* Editor::worksheet() const {
    auto* const session = dynamic_cast<WorksheetSession*>(session_.get());
    return session ? &session->worksheet() : nullptr;
}

grid::MeshEditor* Editor::mesh() const {
    auto* const session = dynamic_cast<MeshSession*>(session_.get());
    return session ? &session->mesh() : nullptr;
}

SessionPlace Editor::place() {
    return {desk_, window_, *model_, [this] { sync(); }};
}

// Opening.

void Editor::open(std::string_view command) {
    if (is_open() || !desk_.model()) {
        return;
    }
    if (command == "grid_mesh_size") {
        open_mesh();
        return;
    }
    if (const auto refusal = app::mesh_refusal(*desk_.model())) {
        base::show(desk_.user(), *refusal);
        return;
    }
    const auto commands = grid::worksheet_commands();
    const auto found =
        std::ranges::find_if(commands, [&](const auto& row) { return row.command == command; });
    const int orientation = desk_.model()->project.flags.GridOrientation();
    if (found == commands.end()) {
        return;
    }
    if (const auto request = grid::find_request(found->number, orientation)) {
        open_request(*request);
    }
}

bool Editor::begin(std::string_view signature, const std::string& step) {
    auto workspace = desk_.begin_session(signature, step);
    if (!workspace) {
        return false;
    }
    model_.emplace(*std::move(workspace));
    desk_.lend(&*model_);
    return true;
}

void Editor::open_request(const grid::EditRequest& request) {
    if (is_open() || !begin("Edit_data_for(DefaultValue, Caption)", request.Edit_Caption)) {
        return;
    }
    const std::vector<int> offered = periods();
    const bool is_offered = std::ranges::find(offered, Current_Period_) != offered.end();
    const int period = is_offered ? Current_Period_ : 1;
    std::unique_ptr<grid::Worksheet> worksheet;
    desk_.attempt("Edit_data_for(DefaultValue, Caption)", [&] {
        worksheet = grid::Worksheet::Edit_data_for(request, model_->project, model_->files,
                                                   desk_.user(), period);
    });
    if (!worksheet) {
        end();
        return;
    }
    show_session(std::make_unique<WorksheetSession>(place(), std::move(worksheet)));
}

void Editor::open_mesh() {
    if (!desk_.model()->project.flags.is_defined(1, 2) || !desk_.model()->files.has(".xy")) {
        CommandContext context{desk_, window_};
        edit_grid_number(context);
        return;
    }
    if (!begin("Mesh_Editor()", grid::MeshEditor::caption)) {
        return;
    }
    std::unique_ptr<EditorSession> session;
    desk_.attempt("Mesh_Editor()", [&] { session = std::make_unique<MeshSession>(place()); });
    if (!session) {
        end();
        return;
    }
    show_session(std::move(session));
}

void Editor::show_session(std::unique_ptr<EditorSession> session) {
    session_ = std::move(session);
    const bool world = key_shown(model_->project, "DisplayFullExtent");
    WorksheetView& view = window_.view();
    view.set_input(session_.get());
    desk_.set_editor_open(true);
    view.set_display(world ? grid::DisplayMode::world : grid::DisplayMode::local);
    view.show_all();
    session_->redraw();
    view.setFocus();
    sync();
}

// Leaving.

bool Editor::leave() {
    if (!session_) {
        return true;
    }
    if (!session_->leave()) {
        return false;
    }
    end();
    return true;
}

void Editor::end() {
    const bool was_open = is_open();
    if (worksheet()) {
        Current_Period_ = session_->period();
    }
    WorksheetView& view = window_.view();
    view.set_input(&idle_);
    view.set_overlay({});
    session_.reset();
    model_.reset();
    if (was_open) {
        view.set_display(grid::DisplayMode::world);
        view.show_all();
        window_.panes().set_hint({});
    }
    desk_.end_session();
    if (was_open) {
        desk_.set_editor_open(false);
        idle_.gone();
    }
    sync();
}

// Commands.

bool Editor::run_anywhere(std::string_view command) {
    WorksheetView& view = window_.view();
    if (command == "tool_zoom_in") {
        view.begin_zoom_rectangle();
    } else if (command == "tool_zoom_out") {
        view.show_all();
    } else if (command == "tool_model_grid" || command == "options_display_mode_local") {
        view.set_display(grid::DisplayMode::local);
    } else if (command == "tool_full_extent" || command == "options_display_mode_global") {
        view.set_display(grid::DisplayMode::world);
    } else if (command == "tool_leave_editor" || command == "File_Leave_Editor") {
        leave();
    } else if (command == "mesh_dimension") {
        CommandContext context{desk_, window_};
        if (mesh() && leave()) {
            edit_grid_number(context);
        }
    } else if (command == "tool_set_borehole" || command == "Value_Boreholes") {
        CommandContext context{desk_, window_};
        if (const CommandRow* monitoring = find_command("estimation_observations")) {
            monitoring->run(context);
        }
    } else {
        return false;
    }
    return true;
}

void Editor::run(std::string_view command) {
    const app::Workspace* const model = model_ ? &*model_ : desk_.model();
    if (!model) {
        return;
    }
    if (!(session_ && session_->run(command)) && !run_anywhere(command)) {
        if (command == "file_save_plot_as") {
            save_plot_as(desk_, *model, worksheet(), window_.view(), &window_);
        } else if (command == "file_print_plot") {
            print_plot(desk_, *model, worksheet(), window_.view(), &window_);
        } else if (command == "options_environment") {
            environment_options(desk_, *model, worksheet(), window_.view(), &window_);
        }
    }
    sync();
}

// What the window shows when no session does.
void Editor::show_model() {
    if (session_) {
        session_->redraw();
        sync();
        return;
    }
    if (desk_.in_session()) {
        return; // it is being opened or left
    }
    WorksheetView& view = window_.view();
    const PicturePointer picture = desk_.model() ? placed_picture(*desk_.model()) : nullptr;
    view.set_picture(picture, desk_.model() ? "Grid | Mesh Size... makes the mesh of the model."
                                            : "File | New Model... or File | Open Model...");
    sync();
}

} // namespace ui

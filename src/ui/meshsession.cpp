#include "ui/meshsession.h"

#include "app/workspace.h"
#include "grid/arrayfiles.h"
#include "ui/desk.h"
#include "ui/dialogs/editordialogs.h"
#include "ui/editor.h"
#include "ui/editorpictures.h"
#include "ui/mainwindow.h"
#include "ui/statuspanes.h"
#include "ui/text.h"
#include "ui/viewmenu.h"

#include <QKeyEvent>
#include <QMenu>

#include <fmt/format.h>

#include <cmath>
#include <numbers>

namespace ui {

namespace {

constexpr double degree = std::numbers::pi / 180;

// Of the tools, in their order.
constexpr const char* hints[] = {"",
                                 "Rotate grid; Drag = Turn round its upper left corner; Esc = End",
                                 "Shift grid; Drag = Move; Esc = End"};

} // namespace

MeshSession::MeshSession(SessionPlace place)
    : EditorSession(std::move(place)), mesh_(place_.model.project, place_.model.files) {}

QString MeshSession::caption() const {
    return to_qt(fmt::format("Number of Columns = {}; Number of Rows = {}; Current Position "
                             "(Column, Row) = ({},{})",
                             mesh_.grid().NX, mesh_.grid().NY, mesh_.column(), mesh_.row()));
}

// Leaving.

bool MeshSession::leave() {
    from_.reset();
    const base::Answer answer = place_.desk.user().ask(
        grid::MeshEditor::caption, grid::MeshEditor::question, base::Buttons::yes_no_cancel);
    const bool ends = answer == base::Answer::no || (answer == base::Answer::yes && save());
    if (!ends) {
        redraw();
    }
    return ends;
}

bool MeshSession::save() {
    bool saved = false;
    app::Workspace& model = place_.model;
    attempt("File_Leave_Editor()", [&] {
        try {
            core::Project project = placed();
            saved = mesh_.save(project, model.files, place_.desk.user());
            if (saved) {
                model.files.commit();
                model.project = std::move(project);
            }
        } catch (...) {
            saved = false;
            model.files.rollback();
            throw;
        }
        if (!saved) {
            model.files.rollback();
        }
    });
    return saved;
}

// Drawing.

core::Project MeshSession::placed() const {
    core::Project project = place_.model.project;
    if (placement_) {
        grid::set_position(project, placement_->left, placement_->top, placement_->angle);
    }
    return project;
}

MeshSession::Placement MeshSession::current() const {
    const grid::GridPosition position(placed());
    return {position.Grid_Left, position.Grid_Top, position.Grid_Angle};
}

void MeshSession::redraw() {
    place_.window.view().set_picture(mesh_editor_picture(mesh_, placed()));
    show_overlay();
    place_.changed();
}

// With the outline of the grid where it would lie.
void MeshSession::show_overlay(const std::optional<Placement>& target) {
    WorksheetOverlay overlay;
    overlay.current = {mesh_.column(), mesh_.row()};
    if (target) {
        core::Project project = place_.model.project;
        grid::set_position(project, target->left, target->top, target->angle);
        const grid::GridPosition there(project), here(placed());
        const auto cells = grid::Build_Cell_Coordinates(mesh_.grid());
        const double width = cells.x_edges.back(), height = cells.y_edges.back();
        const grid::GridPosition::Point corners[] = {
            {0, 0}, {width, 0}, {width, height}, {0, height}};
        for (const auto& [x, y] : corners) {
            const auto world = there.world(x, y);
            overlay.outline.push_back(here.local(world.x, world.y));
        }
    }
    place_.window.view().set_overlay(std::move(overlay));
}

// The mesh.

void MeshSession::show_layer(int layer) {
    if (!mesh_.go_layer(layer)) {
        beep();
    }
    place_.changed();
}

void MeshSession::go(int column, int row) {
    if (!mesh_.go(column, row)) {
        beep();
        return;
    }
    place_.window.view().show_cell({column, row});
    show_overlay();
    place_.changed();
}

void MeshSession::find(grid::CellIndex cell) {
    go(cell.column, cell.row);
}

void MeshSession::press_key(grid::MeshKey key) {
    const auto effect = mesh_.press(key);
    if (!effect.done) {
        beep();
    } else {
        remember(std::nullopt);
    }
    if (effect.refusal) {
        base::show(place_.desk.user(), *effect.refusal);
    }
    redraw();
}

void MeshSession::edit_size() {
    bool changed = false;
    attempt("GridSize()",
            [&] { changed = edit_mesh_size(place_.desk, mesh_, place_.model, &place_.window); });
    if (changed) {
        remember(std::nullopt);
    }
    redraw();
}

void MeshSession::press(const WorksheetPointer& pointer) {
    show_pointer(pointer);
    if (pointer.button != Qt::LeftButton) {
        return;
    }
    if (tool_ != Tool::none) {
        from_ = pointer.shown;
        return;
    }
    if (!pointer.cell) {
        beep();
    } else if (pointer.cell->column == mesh_.column() && pointer.cell->row == mesh_.row()) {
        edit_size();
    } else {
        go(pointer.cell->column, pointer.cell->row);
    }
}

bool MeshSession::key(QKeyEvent& event) {
    struct Arrow {
        int key, columns, rows;
        grid::MeshKey meaning;
    };
    static constexpr Arrow arrows[] = {{Qt::Key_Left, -1, 0, grid::MeshKey::left},
                                       {Qt::Key_Right, 1, 0, grid::MeshKey::right},
                                       {Qt::Key_Up, 0, -1, grid::MeshKey::up},
                                       {Qt::Key_Down, 0, 1, grid::MeshKey::down}};
    for (const Arrow& arrow : arrows) {
        if (arrow.key == event.key()) {
            if (event.modifiers() & Qt::ControlModifier) {
                press_key(arrow.meaning);
            } else {
                go(mesh_.column() + arrow.columns, mesh_.row() + arrow.rows);
            }
            return true;
        }
    }
    switch (event.key()) {
    case Qt::Key_PageUp:
        show_layer(layer() - 1);
        return true;
    case Qt::Key_PageDown:
        show_layer(layer() + 1);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        edit_size();
        return true;
    case Qt::Key_Escape:
        choose(Tool::none);
        return true;
    default:
        return false;
    }
}

QString MeshSession::tip(const WorksheetPointer& pointer) {
    return pointer.cell ? place_tip(pointer, place_.window.view()) : QString();
}

bool MeshSession::menu(QMenu& menu) {
    fill_view_menu(menu, place_.window, this);
    menu.addSeparator();
    QAction* const dimension = menu.addAction("&Model Dimension...");
    dimension->setObjectName("mesh_dimension");
    // Arrays would get out of step with the mesh.
    dimension->setEnabled(grid::existing_arrays(place_.model.files).empty());
    // It leaves this session, so the menu has to be gone.
    QObject::connect(
        dimension, &QAction::triggered, &place_.window,
        [&window = place_.window] { window.editor().run("mesh_dimension"); }, Qt::QueuedConnection);
    return true;
}

// The grid's place.

void MeshSession::choose(Tool tool) {
    from_.reset();
    tool_ = tool_ == tool ? Tool::none : tool;
    if (tool_ != Tool::none) {
        place_.window.view().set_display(grid::DisplayMode::world);
    }
    place_.window.panes().set_hint(hints[static_cast<std::size_t>(tool_)]);
    show_overlay();
    place_.changed();
}

MeshSession::Placement MeshSession::dragged_to(const WorksheetPointer& pointer) const {
    Placement target = current();
    if (tool_ == Tool::shift) {
        target.left += pointer.shown.x - from_->x;
        target.top += pointer.shown.y - from_->y;
        return target;
    }
    const auto direction = [&](grid::GridPosition::Point at) {
        return std::atan2(at.y - target.top, at.x - target.left) / degree;
    };
    const double angle = target.angle + direction(pointer.shown) - direction(*from_);
    target.angle = std::round(std::remainder(angle, 360) * 10) / 10;
    return target;
}

void MeshSession::move(const WorksheetPointer& pointer) {
    show_pointer(pointer);
    if (!from_) {
        return;
    }
    const Placement target = dragged_to(pointer);
    place_.window.panes().set_hint(to_qt(
        tool_ == Tool::rotate ? fmt::format("Angle = {:.1f}", target.angle)
                              : fmt::format("X = {:.7g}; Y = {:.7g}", target.left, target.top)));
    show_overlay(target);
}

void MeshSession::release(const WorksheetPointer& pointer) {
    if (!from_ || pointer.button != Qt::LeftButton) {
        return;
    }
    const Placement target = dragged_to(pointer);
    from_.reset();
    remember(placement_);
    placement_ = target;
    redraw();
}

// History.

void MeshSession::remember(Step step) {
    done_.push_back(step);
    undone_.clear();
}

std::optional<std::string> MeshSession::undo_name() const {
    return done_.empty() ? std::nullopt : std::optional<std::string>(grid::MeshEditor::caption);
}

std::optional<std::string> MeshSession::redo_name() const {
    return undone_.empty() ? std::nullopt : std::optional<std::string>(grid::MeshEditor::caption);
}

void MeshSession::go_back(std::vector<Step>& from, std::vector<Step>& to, bool undo) {
    if (from.empty()) {
        beep();
        return;
    }
    Step step = from.back();
    from.pop_back();
    if (step) {
        std::swap(placement_, *step);
    } else if (!(undo ? mesh_.undo() : mesh_.redo())) {
        beep();
        from.clear(); // older ones are no longer kept
        return;
    }
    to.push_back(step);
    redraw();
}

bool MeshSession::run(std::string_view command) {
    if (command == "tool_rotate_grid") {
        choose(Tool::rotate);
    } else if (command == "tool_shift_grid") {
        choose(Tool::shift);
    } else if (command == "tool_set_value") {
        edit_size();
    } else if (command == "tool_undo") {
        go_back(done_, undone_, true);
    } else if (command == "tool_redo") {
        go_back(undone_, done_, false);
    } else {
        return false;
    }
    return true;
}

} // namespace ui

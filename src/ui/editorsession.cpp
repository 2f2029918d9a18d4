#include "ui/editorsession.h"

#include "base/numbertext.h"
#include "ui/desk.h"
#include "ui/mainwindow.h"
#include "ui/statuspanes.h"
#include "ui/text.h"
#include "ui/viewmenu.h"

#include <fmt/format.h>

namespace ui {

namespace {

// Up to 7 digits.
std::string short_number(double value) {
    return base::value_text(static_cast<float>(value));
}

std::string pair_text(grid::GridPosition::Point point) {
    return short_number(point.x) + ", " + short_number(point.y);
}

// The grid's own frame with y upward from its lower edge.
grid::GridPosition::Point upward(const WorksheetPointer& pointer, const WorksheetView& view) {
    return {pointer.local.x, view.picture()->cells.y_edges.back() - pointer.local.y};
}

} // namespace

QString cell_text(const WorksheetPointer& pointer) {
    return pointer.cell ? to_qt(base::masked(pointer.cell->column, "0000") + "," +
                                base::masked(pointer.cell->row, "0000"))
                        : QString();
}

QString pointer_text(const WorksheetPointer& pointer, const WorksheetView& view) {
    const bool world = view.display() == grid::DisplayMode::world;
    return to_qt(pair_text(world ? pointer.shown : upward(pointer, view)));
}

QString place_tip(const WorksheetPointer& pointer, const WorksheetView& view) {
    const grid::GridPosition::Point world =
        view.picture()->position->world(pointer.local.x, pointer.local.y);
    return to_qt(fmt::format("Column {}, Row {}\nReal-World: {}\nLocal: {}", pointer.cell->column,
                             pointer.cell->row, pair_text(world),
                             pair_text(upward(pointer, view))));
}

void EditorSession::show_pointer(const WorksheetPointer& pointer) {
    last_pixel_ = pointer.pixel;
    StatusPanes& panes = place_.window.panes();
    panes.set_cell(cell_text(pointer));
    panes.set_pointer(pointer_text(pointer, place_.window.view()));
    panes.set_values(values_text(pointer));
}

void EditorSession::refresh_pointer() {
    const WorksheetView& view = place_.window.view();
    if (last_pixel_ && view.picture()) {
        show_pointer(view.pointer_at({last_pixel_->x, last_pixel_->y}));
    }
}

void EditorSession::gone() {
    last_pixel_.reset();
    StatusPanes& panes = place_.window.panes();
    panes.set_cell({});
    panes.set_pointer({});
    panes.set_values({});
}

bool EditorSession::attempt(std::string_view signature, const std::function<void()>& step) {
    return place_.desk.attempt(signature, step) == report::Outcome::done;
}

void EditorSession::beep() {
    place_.desk.user().beep();
}

void IdleInput::press(const WorksheetPointer& pointer) {
    if (pointer.button == Qt::LeftButton) {
        window_.desk().user().beep();
    }
}

void IdleInput::move(const WorksheetPointer& pointer) {
    window_.panes().set_cell(cell_text(pointer));
    window_.panes().set_pointer(pointer_text(pointer, window_.view()));
}

void IdleInput::gone() {
    window_.panes().set_cell({});
    window_.panes().set_pointer({});
}

QString IdleInput::tip(const WorksheetPointer& pointer) {
    return pointer.cell ? place_tip(pointer, window_.view()) : QString();
}

bool IdleInput::menu(QMenu& menu) {
    fill_view_menu(menu, window_, nullptr);
    return true;
}

} // namespace ui

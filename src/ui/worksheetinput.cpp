// Mouse and keys of a worksheet session.
#include "app/workspace.h"
#include "base/numbertext.h"
#include "core/project.h"
#include "grid/nearestsingle.h"
#include "grid/worksheettools.h"
#include "ui/desk.h"
#include "ui/mainwindow.h"
#include "ui/text.h"
#include "ui/viewmenu.h"
#include "ui/worksheetsession.h"

#include <QKeyEvent>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace ui {

namespace {

// A button that goes up nearer than this to where it went down was a click, pixels.
constexpr double click_slack = 2;

// Where nodes may lie beside the grid, of its longer extent.
constexpr double margin_of_grid = 0.05;

double distance(grid::Pixel a, grid::Pixel b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

} // namespace

void WorksheetSession::press(const WorksheetPointer& pointer) {
    show_pointer(pointer);
    if (worksheet_->Editor_State == grid::EditorState::zone) {
        press_in_zones(pointer);
    } else if (pointer.button == Qt::LeftButton) {
        if (!pointer.cell) {
            beep();
        } else if (digitizing_) {
            digitize(pointer);
        } else {
            press_in_cells(pointer);
        }
    }
    place_.changed();
}

void WorksheetSession::move(const WorksheetPointer& pointer) {
    show_pointer(pointer);
    if (zones_.Zone_Open) {
        rubber_end_ = pointer.local;
        show_overlay();
    } else if (drag_) {
        drag_node(pointer);
    } else if (pressed_cell_ && pointer.cell && (pointer.buttons & Qt::LeftButton)) {
        draw_stroke(*pointer.cell);
    }
}

void WorksheetSession::release(const WorksheetPointer& pointer) {
    if (pointer.button != Qt::LeftButton) {
        return;
    }
    if (drag_) {
        drop_node(pointer);
    }
    const bool was_click = pressed_cell_ && !stroke_;
    pressed_cell_.reset();
    stroke_.reset();
    if (was_click) {
        edit_cell();
    }
    place_.changed();
}

void WorksheetSession::double_click(const WorksheetPointer& pointer) {
    const bool on_selected = worksheet_->Editor_State == grid::EditorState::zone &&
                             pointer.button == Qt::LeftButton && !zones_.Zone_Open &&
                             zones_.Zone_Current > 0 && zone_at(pointer) == zones_.Zone_Current;
    if (on_selected) {
        edit_zone(zones_.Zone_Current);
    } else {
        press(pointer);
    }
}

void WorksheetSession::find(grid::CellIndex cell) {
    worksheet_->move_to(cell.column, cell.row);
    show_overlay();
}

QString WorksheetSession::tip(const WorksheetPointer& pointer) {
    if (!pointer.cell || zones_.Zone_Open) {
        return {}; // it would lie on the ground of the next node
    }
    std::string text = from_qt(place_tip(pointer, place_.window.view()));
    for (int k = 1; k <= worksheet_->Array_Count(); ++k) {
        text += fmt::format(
            "\n{} {}", worksheet_->request().prompts[static_cast<std::size_t>(k - 1)],
            base::value_text(worksheet_->cell(k, pointer.cell->column, pointer.cell->row)));
    }
    return to_qt(text);
}

bool WorksheetSession::menu(QMenu& menu) {
    if (worksheet_->Editor_State == grid::EditorState::zone) {
        return false; // the right button belongs to the zones
    }
    fill_view_menu(menu, place_.window, this);
    return true;
}

bool WorksheetSession::key(QKeyEvent& event) {
    const bool in_zones = worksheet_->Editor_State == grid::EditorState::zone;
    const bool ctrl = event.modifiers() & Qt::ControlModifier;
    switch (event.key()) {
    case Qt::Key_PageUp:
        show_layer(layer() - 1);
        return true;
    case Qt::Key_PageDown:
        show_layer(layer() + 1);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        set_value();
        return true;
    case Qt::Key_Escape:
        if (in_zones) {
            zones_.Zone_Open ? zones_.abort() : zones_.select(-1, -1);
            zones_.Zone_Current = 0;
            show_overlay();
        }
        return in_zones;
    case Qt::Key_Delete:
        if (in_zones) {
            delete_zone();
        }
        return in_zones;
    default:
        break;
    }
    struct Arrow {
        int key, columns, rows;
    };
    static constexpr Arrow arrows[] = {
        {Qt::Key_Left, -1, 0}, {Qt::Key_Right, 1, 0}, {Qt::Key_Up, 0, -1}, {Qt::Key_Down, 0, 1}};
    for (const Arrow& arrow : arrows) {
        if (arrow.key == event.key() && !ctrl && !in_zones) {
            move_current(arrow.columns, arrow.rows);
            return true;
        }
    }
    return false;
}

// Cell by cell.

void WorksheetSession::press_in_cells(const WorksheetPointer& pointer) {
    worksheet_->move_to(pointer.cell->column, pointer.cell->row);
    show_overlay();
    if (worksheet_->Cell_Copy && !worksheet_->last_values().empty()) {
        pressed_cell_ = pointer.cell; // a stroke, or a click that ends with its release
    } else {
        edit_cell();
    }
}

void WorksheetSession::edit_cell() {
    EditorContext editor = context();
    if (edit_cell_values(editor)) {
        cell_changed({worksheet_->Current_Column(), worksheet_->Current_Row()});
    }
    show_overlay();
    place_.changed();
}

// The pointer may have jumped over cells: they are on the stroke too.
void WorksheetSession::draw_stroke(grid::CellIndex cell) {
    const int column = worksheet_->Current_Column(), row = worksheet_->Current_Row();
    const int columns = cell.column - column, rows = cell.row - row;
    const int steps = std::max(std::abs(columns), std::abs(rows));
    if (steps == 0) {
        return;
    }
    if (!stroke_) {
        stroke_ = std::make_unique<grid::Worksheet::Step>(*worksheet_);
        const std::vector<float> values = worksheet_->last_values();
        worksheet_->set_cell(pressed_cell_->column, pressed_cell_->row, values);
        cell_changed(*pressed_cell_);
    }
    for (int n = 1; n <= steps; ++n) {
        const auto part = [&](int whole) {
            return static_cast<int>(std::lround(double(whole) * n / steps));
        };
        const grid::CellIndex next{column + part(columns), row + part(rows)};
        worksheet_->move_to(next.column, next.row, true);
        cell_changed(next);
    }
    show_overlay();
}

void WorksheetSession::move_current(int columns, int rows) {
    const grid::CellIndex cell{worksheet_->Current_Column() + columns,
                               worksheet_->Current_Row() + rows};
    if (!worksheet_->move_to(cell.column, cell.row, true)) {
        beep();
        return;
    }
    if (worksheet_->Cell_Copy) {
        cell_changed(cell);
    }
    place_.window.view().show_cell(cell);
    show_overlay();
    place_.changed();
}

// Zones.

void WorksheetSession::sync_zones() {
    zones_.zones = worksheet_->zones();
    if (zones_.Zone_Current > zones_.Zone_Count()) {
        zones_.Zone_Current = 0;
    }
}

// A zone along the edge of the grid is drawn round its cells, so a margin belongs to the sheet.
bool WorksheetSession::on_sheet(const WorksheetPointer& pointer) const {
    const core::Project& project = place_.model.project;
    const WorksheetPicture& picture = *place_.window.view().picture();
    const double width = picture.cells.x_edges.back(), height = picture.cells.y_edges.back();
    const double margin = std::max(width, height) * margin_of_grid;
    const auto [x, y] = pointer.local;
    if (x >= -margin && x <= width + margin && y >= -margin && y <= height + margin) {
        return true;
    }
    const auto edge = [&](const char* key) { return double{project.single("DIMENSION", key)}; };
    const auto at = picture.position->world(x, y);
    return at.x >= edge("SHEET_X1") && at.x <= edge("SHEET_X2") && at.y >= edge("SHEET_Y1") &&
           at.y <= edge("SHEET_Y2");
}

int WorksheetSession::zone_at(const WorksheetPointer& pointer) {
    int found = 0;
    attempt("Find_Zone(x, y)", [&] {
        found = grid::Find_Zone(pointer.local.x, pointer.local.y, worksheet_->zones());
    });
    return found;
}

void WorksheetSession::press_in_zones(const WorksheetPointer& pointer) {
    if (pointer.button == Qt::RightButton) {
        if (!zones_.Zone_Open) {
            zones_.Zone_Current = 0;
        }
        zones_.abort();
        show_overlay();
        return;
    }
    if (pointer.button != Qt::LeftButton) {
        return;
    }
    if (!on_sheet(pointer)) {
        beep();
        return;
    }
    if (zones_.Zone_Open) {
        click_zone(pointer);
        return;
    }
    if (const std::size_t node = node_near(pointer)) {
        drag_ = Drag{node, pointer,
                     worksheet_->zones()[static_cast<std::size_t>(zones_.Zone_Current - 1)]};
        return;
    }
    if (const int zone = zone_at(pointer)) {
        zones_.Zone_Current = zone;
        show_overlay();
        return;
    }
    click_zone(pointer);
}

void WorksheetSession::click_zone(const WorksheetPointer& pointer) {
    sync_zones();
    zones_.Zone_Current = 0;
    const auto step =
        zones_.click(pointer.local.x, pointer.local.y, place_.window.view().pixel_size());
    rubber_end_ = pointer.local;
    if (step.effect == grid::ZoneDigitizer::Effect::closed) {
        close_zone();
        return;
    }
    show_overlay();
    if (step.effect == grid::ZoneDigitizer::Effect::none) {
        beep();
    }
    if (step.refusal) {
        base::show(place_.desk.user(), *step.refusal);
    }
}

void WorksheetSession::close_zone() {
    worksheet_->set_zones(zones_.zones);
    zones_.Zone_Current = zones_.Zone_Count();
    redraw();
    edit_zone(zones_.Zone_Current);
}

void WorksheetSession::edit_zone(int zone) {
    EditorContext editor = context();
    const int selected = zones_.Zone_Current;
    if (edit_zone_values(editor, zone)) {
        all_changed();
    }
    zones_.Zone_Current = selected;
    show_overlay();
    place_.changed();
}

void WorksheetSession::delete_zone() {
    if (zones_.Zone_Current == 0 || zones_.Zone_Open) {
        beep();
        return;
    }
    grid::delete_zone(*worksheet_, zones_.Zone_Current);
    zones_.Zone_Current = 0;
    all_changed();
}

void WorksheetSession::drop_open_zone() {
    drag_.reset();
    if (zones_.Zone_Open) {
        beep();
        zones_.abort();
        show_overlay();
    }
}

// Node of the selected zone that the pointer means; 0 for none.
std::size_t WorksheetSession::node_near(const WorksheetPointer& pointer) const {
    if (zones_.Zone_Current == 0) {
        return 0;
    }
    const core::Zone& zone = worksheet_->zones()[static_cast<std::size_t>(zones_.Zone_Current - 1)];
    const WorksheetView& view = place_.window.view();
    for (std::size_t n = 1; n <= static_cast<std::size_t>(zone.nodes); ++n) {
        const QPointF at = view.pixel_of({double{zone.x[n]}, double{zone.y[n]}});
        if (distance(pointer.pixel, {at.x(), at.y()}) < grid::snap_pixels) {
            return n;
        }
    }
    return 0;
}

void WorksheetSession::drag_node(const WorksheetPointer& pointer) {
    if (!drag_->moved && distance(pointer.pixel, drag_->from.pixel) <= click_slack) {
        return;
    }
    drag_->moved = true;
    std::vector<core::Zone> others = worksheet_->zones();
    others.erase(others.begin() + (zones_.Zone_Current - 1));
    const grid::ZoneNode free{grid::nearest_single(pointer.local.x),
                              grid::nearest_single(pointer.local.y)};
    const grid::ZoneNode place = grid::Snap_To_Node(pointer.local.x, pointer.local.y,
                                                    place_.window.view().pixel_size(), others)
                                     .value_or(free);
    drag_->zone.x[drag_->node] = place.x;
    drag_->zone.y[drag_->node] = place.y;
    show_overlay();
}

void WorksheetSession::drop_node(const WorksheetPointer& pointer) {
    drag_node(pointer);
    const Drag drag = *drag_;
    drag_.reset();
    if (!drag.moved) {
        if (zone_at(drag.from) == 0) {
            click_zone(drag.from); // a zone that begins on a node of the selected one
        }
        return;
    }
    const core::Zone& zone = drag.zone;
    for (std::size_t n = 1; n <= static_cast<std::size_t>(zone.nodes); ++n) {
        if (n != drag.node && zone.x[n] == zone.x[drag.node] && zone.y[n] == zone.y[drag.node]) {
            beep(); // two nodes at one place make no zone
            show_overlay();
            return;
        }
    }
    std::vector<core::Zone> zones = worksheet_->zones();
    core::Zone& moved = zones[static_cast<std::size_t>(zones_.Zone_Current - 1)];
    moved = zone;
    core::Close_Zone(moved);
    worksheet_->set_zones(std::move(zones));
    all_changed();
}

// Digitized points.

void WorksheetSession::digitize(const WorksheetPointer& pointer) {
    if (pointer.modifiers & Qt::ControlModifier) {
        const double near = grid::snap_pixels * place_.window.view().pixel_size();
        if (!worksheet_->erase_point(pointer.local.x, pointer.local.y, near)) {
            beep();
        }
    } else {
        const auto& last = worksheet_->last_values();
        const float value = last.empty() ? worksheet_->request().default_value(1) : last[0];
        const auto refusal = worksheet_->add_point({value, grid::nearest_single(pointer.local.x),
                                                    grid::nearest_single(pointer.local.y), value});
        if (refusal) {
            beep();
            base::show(place_.desk.user(), *refusal);
        }
    }
    redraw();
}

} // namespace ui

// Zones of a worksheet session, by the mouse.
#include "app/workspace.h"
#include "core/project.h"
#include "grid/nearestsingle.h"
#include "grid/worksheettools.h"
#include "ui/desk.h"
#include "ui/mainwindow.h"
#include "ui/worksheetsession.h"

#include <algorithm>
#include <cmath>

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
    let_go();
    if (zones_.Zone_Current == 0 || zones_.Zone_Open) {
        beep();
        return;
    }
    grid::delete_zone(*worksheet_, zones_.Zone_Current);
    zones_.Zone_Current = 0;
    all_changed();
}

void WorksheetSession::drop_open_zone() {
    let_go();
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

} // namespace ui

// Mouse and keys of a worksheet session.
#include "base/numbertext.h"
#include "grid/nearestsingle.h"
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

void WorksheetSession::press(const WorksheetPointer& pointer) {
    let_go();
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
    } else if (!(pointer.buttons & Qt::LeftButton)) {
        return;
    } else if (drag_) {
        drag_node(pointer);
    } else if (pressed_cell_ && pointer.cell) {
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

void WorksheetSession::let_go() {
    drag_.reset();
    stroke_.reset();
    pressed_cell_.reset();
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
            let_go();
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
        const grid::CellIndex cell{worksheet_->Current_Column(), worksheet_->Current_Row()};
        cells_changed({&cell, 1});
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
    std::vector<grid::CellIndex> cells;
    if (!stroke_) {
        stroke_ = std::make_unique<grid::Worksheet::Step>(*worksheet_);
        const std::vector<float> values = worksheet_->last_values();
        worksheet_->set_cell(pressed_cell_->column, pressed_cell_->row, values);
        cells.push_back(*pressed_cell_);
    }
    for (int n = 1; n <= steps; ++n) {
        const auto part = [&](int whole) {
            return static_cast<int>(std::lround(double(whole) * n / steps));
        };
        cells.push_back({column + part(columns), row + part(rows)});
        worksheet_->move_to(cells.back().column, cells.back().row, true);
    }
    cells_changed(cells);
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
        cells_changed({&cell, 1});
    }
    place_.window.view().show_cell(cell);
    show_overlay();
    place_.changed();
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

#include "ui/worksheetsession.h"

#include "app/workspace.h"
#include "core/extensions.h"
#include "grid/worksheetfiles.h"
#include "grid/worksheettools.h"
#include "sim/periods.h"
#include "ui/desk.h"
#include "ui/mainwindow.h"
#include "ui/statuspanes.h"
#include "ui/text.h"

#include <fmt/format.h>

#include <algorithm>

namespace ui {

namespace {

constexpr int wells = 11;

constexpr const char* digitizer_hint =
    "Digitizer; Left Mouse Button = Digitize; Ctrl+Left Mouse Button = Erase";
constexpr const char* zone_hint =
    "Zone; Left Mouse Button = Node, on Node 1 = Close; Right Mouse Button = Abort";

} // namespace

WorksheetSession::WorksheetSession(SessionPlace place, std::unique_ptr<grid::Worksheet> worksheet)
    : EditorSession(std::move(place)), worksheet_(std::move(worksheet)),
      pictures_(*worksheet_, place_.model), file_times_(file_times()) {
    sync_zones();
}

WorksheetSession::~WorksheetSession() = default;

EditorContext WorksheetSession::context() {
    return {place_.desk, place_.model, *worksheet_, place_.window.view(), &place_.window};
}

QString WorksheetSession::caption() const {
    return to_qt(worksheet_->status_text());
}

QString WorksheetSession::values_text(const WorksheetPointer& pointer) {
    return to_qt(worksheet_->pointer_status(pointer.cell).values);
}

// Leaving.

bool WorksheetSession::leave() {
    drop_open_zone();
    look_for_strangers();
    place_.window.view().set_overlay({});
    const bool written =
        attempt("write_array(CurrentPeriod, CurrentLayer)", [&] { worksheet_->write_shown(); });
    file_times_ = file_times();
    const auto answer = written ? answer_to_leave() : std::nullopt;
    if (answer && finish(*answer)) {
        return true;
    }
    file_times_ = file_times();
    show_overlay();
    place_.changed();
    return false;
}

// Nothing: the session goes on.
std::optional<base::Answer> WorksheetSession::answer_to_leave() {
    const core::Project& project = place_.model.project;
    const int number = worksheet_->request().Current_Parameter();
    int periods = 1;
    attempt("Read_Stress_Periods()",
            [&] { periods = sim::PeriodTable::load(place_.model.files).totals().periods; });
    if (project.transient() && periods > 1) {
        EditorContext editor = context();
        const TransientChoice choice = transient_data(editor);
        all_changed();
        if (choice.result == 3) {
            show_period(choice.period);
        }
        if (choice.result != 1) {
            return std::nullopt;
        }
        if (number == wells || number == grid::presentation) {
            return base::Answer::yes;
        }
    }
    const base::Answer answer =
        place_.desk.user().ask(worksheet_->request().Edit_Caption, worksheet_->leave_question(),
                               base::Buttons::yes_no_cancel);
    return answer == base::Answer::cancel ? std::nullopt : std::optional(answer);
}

bool WorksheetSession::finish(base::Answer answer) {
    attempt("File_Leave_Editor()", [&] {
        try {
            worksheet_->leave(answer);
        } catch (...) {
            place_.model.files.rollback();
            grid::edit_in_place(worksheet_->request(), place_.model.files);
            throw;
        }
    });
    return worksheet_->ended();
}

WorksheetSession::FileTimes WorksheetSession::file_times() const {
    FileTimes times;
    for (int k = 1; k <= worksheet_->Array_Count(); ++k) {
        const auto file = place_.model.files.find(core::file_ext(worksheet_->request().number(k)));
        std::error_code failed;
        const auto time = file ? std::filesystem::last_write_time(*file, failed)
                               : std::filesystem::file_time_type();
        if (file && !failed) {
            times[*file] = time;
        }
    }
    return times;
}

void WorksheetSession::look_for_strangers() {
    const FileTimes now = file_times();
    if (now == file_times_) {
        return;
    }
    for (const auto& [file, time] : file_times_) {
        const auto found = now.find(file);
        if (found != now.end() && found->second == time) {
            continue;
        }
        place_.desk.user().message(
            base::Icon::warning, worksheet_->request().Edit_Caption,
            fmt::format("{} has been changed by another program. The layer that you see is kept; "
                        "other layers are as that program left them. Answer No when you leave the "
                        "editor to return to the data before the editor was opened.",
                        file.filename().string()));
    }
    file_times_ = now;
}

// Layers and periods.

void WorksheetSession::show_layer(int layer) {
    if (layer == worksheet_->Current_Layer()) {
        return;
    }
    drop_open_zone();
    look_for_strangers();
    bool shown = false;
    attempt("layer_spin_edit_Change()", [&] { shown = worksheet_->show_layer(layer); });
    if (!shown) {
        beep();
    }
    all_changed();
}

void WorksheetSession::show_period(int period) {
    if (period == worksheet_->Current_Period()) {
        return;
    }
    drop_open_zone();
    look_for_strangers();
    attempt("Period_Change()", [&] { worksheet_->show_period(period); });
    all_changed();
}

// Drawing.

void WorksheetSession::redraw() {
    WorksheetView& view = place_.window.view();
    const bool zones = worksheet_->Editor_State == grid::EditorState::zone;
    attempt("Draw_Grid()", [&] {
        view.set_picture(pictures_.make(colours_, view.display(), zones, place_.desk.user()));
    });
    show_overlay();
}

void WorksheetSession::all_changed() {
    pictures_.values_changed();
    file_times_ = file_times();
    sync_zones();
    redraw();
    place_.changed();
}

void WorksheetSession::cells_changed(std::span<const grid::CellIndex> cells) {
    PicturePointer picture;
    for (const grid::CellIndex cell : cells) {
        picture = pictures_.with_cell(cell);
        if (!picture) {
            return redraw(); // of all cells at once
        }
    }
    place_.window.view().set_picture(std::move(picture));
}

void WorksheetSession::set_colours(CellColours colours) {
    colours_ = colours;
    redraw();
}

void WorksheetSession::show_overlay() {
    WorksheetOverlay overlay;
    if (worksheet_->Editor_State == grid::EditorState::cell_by_cell) {
        overlay.current = {worksheet_->Current_Column(), worksheet_->Current_Row()};
    }
    if (zones_.Zone_Open) {
        const core::Zone& open = *zones_.Zone_Open;
        for (std::size_t n = 1; n <= static_cast<std::size_t>(open.nodes); ++n) {
            overlay.open_zone.push_back({double{open.x[n]}, double{open.y[n]}});
        }
        overlay.rubber_end = rubber_end_;
    }
    if (worksheet_->Editor_State == grid::EditorState::zone) {
        overlay.selected_zone = zones_.Zone_Current;
    }
    if (drag_ && drag_->moved) {
        overlay.dragged = drag_->zone;
    }
    place_.window.view().set_overlay(std::move(overlay));
}

// Commands and tools.

std::span<const WorksheetSession::Command> WorksheetSession::commands() {
    using Session = WorksheetSession;
    // The dialog on the session's context, then everything drawn anew.
    static constexpr auto with = [](Session& session, void (*dialog)(EditorContext&)) {
        session.drop_open_zone();
        EditorContext editor = session.context();
        dialog(editor);
        session.all_changed();
    };
    static constexpr Command table[] = {
        {"value_matrix_browse", [](Session& s) { with(s, browse_array); }},
        {"value_matrix_reset", [](Session& s) { with(s, reset_array); }},
        {"value_zones_delete_all", [](Session& s) { with(s, delete_all_zones); }},
        {"value_zones_save_as", [](Session& s) { with(s, save_zones_as); }},
        {"value_zones_load", [](Session& s) { with(s, load_zones); }},
        {"value_points_delete_all", [](Session& s) { with(s, delete_all_points); }},
        {"value_points_save_as", [](Session& s) { with(s, save_points_as); }},
        {"value_points_load", [](Session& s) { with(s, load_points); }},
        {"value_trace", [](Session& s) { s.search(); }},
        {"options_environment", [](Session& s) { s.set_environment(); }},
        {"options_input_method_zones", [](Session& s) { s.set_mode(grid::EditorState::zone); }},
        {"options_input_method_CBC",
         [](Session& s) { s.set_mode(grid::EditorState::cell_by_cell); }},
        {"file_save_plot_as", [](Session& s) { s.plot_as(); }},
        {"file_print_plot", [](Session& s) { s.print(); }},
        {"tool_set_value", [](Session& s) { s.set_value(); }},
        {"tool_cell_by_cell", [](Session& s) { s.set_mode(grid::EditorState::cell_by_cell); }},
        {"tool_zone", [](Session& s) { s.set_mode(grid::EditorState::zone); }},
        {"tool_cell_copy", [](Session& s) { s.worksheet_->Cell_Copy = !s.worksheet_->Cell_Copy; }},
        {"tool_layer_copy",
         [](Session& s) { s.worksheet_->Layer_Copy = !s.worksheet_->Layer_Copy; }},
        {"tool_digitizer",
         [](Session& s) {
             s.digitizing_ = !s.digitizing_;
             s.place_.window.panes().set_hint(s.digitizing_ ? digitizer_hint : "");
         }},
        {"tool_undo", [](Session& s) { s.go_back(true); }},
        {"tool_redo", [](Session& s) { s.go_back(false); }},
    };
    return table;
}

bool WorksheetSession::run(std::string_view command) {
    for (const Command& candidate : commands()) {
        if (candidate.name == command) {
            candidate.run(*this);
            place_.changed();
            return true;
        }
    }
    return false;
}

void WorksheetSession::set_value() {
    let_go();
    if (worksheet_->Editor_State == grid::EditorState::cell_by_cell) {
        edit_cell();
    } else if (zones_.Zone_Current > 0 && !zones_.Zone_Open) {
        edit_zone(zones_.Zone_Current);
    } else {
        beep();
    }
}

void WorksheetSession::set_mode(grid::EditorState mode) {
    if (mode == worksheet_->Editor_State) {
        return;
    }
    if (mode == grid::EditorState::zone) {
        if (const auto refusal = grid::zones_refusal(worksheet_->request())) {
            beep();
            base::show(place_.desk.user(), *refusal);
            return;
        }
    }
    drop_open_zone();
    zones_.Zone_Current = 0;
    worksheet_->Editor_State = mode;
    place_.window.panes().set_hint(mode == grid::EditorState::zone ? zone_hint
                                   : digitizing_                   ? digitizer_hint
                                                                   : "");
    redraw();
}

void WorksheetSession::go_back(bool undo) {
    drop_open_zone();
    bool done = false;
    attempt(undo ? "Undo()" : "Redo()",
            [&] { done = undo ? worksheet_->undo() : worksheet_->redo(); });
    if (!done) {
        beep();
    }
    all_changed();
}

void WorksheetSession::search() {
    drop_open_zone();
    EditorContext editor = context();
    const SearchMarks marks = search_and_modify(editor);
    all_changed();
    if (!marks.matched.empty()) {
        place_.window.view().mark_cells(marks.matched, marks.colours);
    }
}

void WorksheetSession::plot_as() {
    save_plot_as(place_.desk, place_.model, worksheet_.get(), place_.window.view(), &place_.window);
}

void WorksheetSession::print() {
    print_plot(place_.desk, place_.model, worksheet_.get(), place_.window.view(), &place_.window);
}

void WorksheetSession::set_environment() {
    drop_open_zone();
    if (environment_options(place_.desk, place_.model, worksheet_.get(), place_.window.view(),
                            &place_.window)) {
        all_changed();
    }
}

} // namespace ui

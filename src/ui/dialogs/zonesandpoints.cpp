// Value|Zones and Value|Points: the zones of the shown layer and the digitized points as files.

#include "base/paths.h"
#include "base/textfile.h"
#include "grid/worksheet.h"
#include "grid/worksheetfiles.h"
#include "grid/worksheettools.h"
#include "ui/desk.h"
#include "ui/dialogs/editordialogs.h"
#include "ui/dialogs/savefile.h"

namespace ui {

namespace {

constexpr const char* points_title = "Points";
constexpr const char* points_filter = "Data files (*.dat)|*.dat";

// Shows why the item has no zones.
bool has_zones(EditorContext& editor) {
    const auto refusal = grid::zones_refusal(editor.worksheet.request());
    if (refusal) {
        base::show(editor.desk.user(), *refusal);
    }
    return !refusal;
}

bool wants_to(EditorContext& editor, const char* title, const char* question) {
    return editor.desk.user().ask(title, question, base::Buttons::yes_no_risky) ==
           base::Answer::yes;
}

void show_if(EditorContext& editor, const std::optional<base::Refusal>& refusal) {
    if (refusal) {
        base::show(editor.desk.user(), *refusal);
    }
}

} // namespace

void delete_all_zones(EditorContext& editor) {
    if (has_zones(editor) && !editor.worksheet.zones().empty() &&
        wants_to(editor, grid::zones_title, grid::delete_all_question)) {
        editor.desk.attempt("value_zones_delete_all_Click()",
                            [&] { grid::clear_zones(editor.worksheet); });
    }
}

void save_zones_as(EditorContext& editor) {
    if (!has_zones(editor)) {
        return;
    }
    const auto file =
        choose_to_write(editor.desk.user(), "Save Zones As", "Data files (*.zon)|*.zon");
    if (file) {
        editor.desk.attempt("Save_Zones(Filename)", [&] {
            base::replace_file(file->file, grid::zones_text(editor.worksheet.zones()));
        });
    }
}

void load_zones(EditorContext& editor) {
    if (!has_zones(editor)) {
        return;
    }
    const auto file = editor.desk.user().choose_file(base::FileChoice::open, "Load Zones",
                                                     "Zone Files (*.ZON)|*.ZON", "");
    if (file) {
        editor.desk.attempt("Load_Zones(Filename)",
                            [&] { show_if(editor, grid::load_zones(editor.worksheet, *file)); });
    }
}

void delete_all_points(EditorContext& editor) {
    if (!editor.worksheet.points().empty() &&
        wants_to(editor, points_title, "Delete all points?")) {
        editor.desk.attempt("value_points_delete_all_Click()",
                            [&] { show_if(editor, editor.worksheet.set_points({})); });
    }
}

void save_points_as(EditorContext& editor) {
    const auto file = choose_to_write(editor.desk.user(), "Save Points As", points_filter);
    if (file) {
        editor.desk.attempt("Save_Points(Filename)", [&] {
            base::replace_file(file->file, grid::points_text(editor.worksheet.points()));
        });
    }
}

void load_points(EditorContext& editor) {
    const auto file =
        editor.desk.user().choose_file(base::FileChoice::open, "Load Points", points_filter, "");
    if (file) {
        editor.desk.attempt("Load_Points(Filename)", [&] {
            auto points = grid::points_from_text(base::read_bytes(*file), *file);
            show_if(editor, editor.worksheet.set_points(std::move(points)));
        });
    }
}

} // namespace ui

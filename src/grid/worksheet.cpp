#include "grid/worksheet.h"

#include "base/failure.h"
#include "base/numbertext.h"
#include "core/extensions.h"
#include "core/itemcells.h"
#include "core/modelfiles.h"
#include "core/project.h"
#include "grid/elevations.h"
#include "grid/worksheetfiles.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace grid {

namespace {

constexpr int top_of_layers = 3, bottom_of_layers = 4;

void require(bool holds, const char* what, int number, int last) {
    if (!holds) {
        throw base::RangeFailure(fmt::format("{} {} is outside 1 to {}", what, number, last));
    }
}

GridFile load_grid(const core::Project& project, const core::ModelFiles& files) {
    auto grid = GridFile::load(files);
    if (!grid) {
        throw base::FileFailure("does not exist", files.name_of(".xy"));
    }
    if (grid->NX != project.NX() || grid->NY != project.NY()) {
        throw base::FileFailure(
            fmt::format("has {} columns and {} rows, where {} and {} were expected", grid->NX,
                        grid->NY, project.NX(), project.NY()),
            files.name_of(".xy"));
    }
    grid->NZ = project.NZ();
    return *std::move(grid);
}

// A value in the status bar.
std::string status_value(float value) {
    return std::isfinite(value) ? base::masked(double(value), "+0.000E+00") : "###";
}

bool is_marked(int number) {
    return number != presentation && number != digitizer;
}

std::vector<DigitizedPoint> load_points(const core::ModelFiles& files) {
    const auto file = scratch_path(files, point_scratch);
    return files.has_file(file) ? points_from_text(files.read_file(file), file)
                                : std::vector<DigitizedPoint>();
}

} // namespace

Worksheet::Worksheet(EditRequest request, core::Project& project, core::ModelFiles& files,
                     int period)
    : request_(std::move(request)), project_(project), files_(files), store_(files, project),
      grid_(load_grid(project, files)), cells_(Build_Cell_Coordinates(grid_)), period_(period) {}

Worksheet::~Worksheet() {
    try {
        files_.end_in_place();
    } catch (const base::FileFailure&) {
        // What could not be flushed is no more lost than by a crash.
    }
}

std::unique_ptr<Worksheet> Worksheet::Edit_data_for(EditRequest request, core::Project& project,
                                                    core::ModelFiles& files,
                                                    base::Interaction& user, int Current_Period) {
    require(Current_Period >= 1 && Current_Period <= core::period_count, "period", Current_Period,
            core::period_count);
    std::unique_ptr<Worksheet> worksheet(
        new Worksheet(std::move(request), project, files, Current_Period));
    worksheet->prepare();
    bool cancelled = false;
    try {
        worksheet->open(user, cancelled);
    } catch (...) {
        worksheet->discard();
        throw;
    }
    return cancelled ? nullptr : std::move(worksheet);
}

// What another session left behind stays as it is when this fails.
void Worksheet::prepare() {
    try {
        make_scratch_files(request_, period_, store_, files_);
        files_.commit();
    } catch (...) {
        files_.rollback();
        throw;
    }
    edit_in_place(request_, files_);
}

void Worksheet::open(base::Interaction& user, bool& cancelled) {
    const TakeOver answer = ask_take_over(request_.Current_Parameter(), project_, user);
    cancelled = answer == TakeOver::cancel;
    if (cancelled) {
        return discard();
    }
    if (answer == TakeOver::yes) {
        take_over_elevations(request_.Current_Parameter(), period_, store_, user);
    }
    points_ = load_points(files_);
    read_shown(period_, layer_);
}

void Worksheet::discard() {
    files_.end_in_place();
    files_.rollback();
    restore_session_files(request_, files_);
    files_.commit();
    ended_ = true;
}

// Reading and showing.

const core::LayerValues& Worksheet::array(int k) const {
    require(k >= 1 && k <= Array_Count(), "array", k, Array_Count());
    return arrays_[static_cast<std::size_t>(k - 1)];
}

core::LayerValues& Worksheet::shown_array(int k) {
    return const_cast<core::LayerValues&>(std::as_const(*this).array(k));
}

std::size_t Worksheet::cell_index(int column, int row) const {
    require(column >= 1 && column <= NX(), "column", column, NX());
    require(row >= 1 && row <= NY(), "row", row, NY());
    return static_cast<std::size_t>(row - 1) * static_cast<std::size_t>(NX()) +
           static_cast<std::size_t>(column - 1);
}

float Worksheet::cell(int k, int column, int row) const {
    return array(k)[cell_index(column, row)];
}

std::vector<float> Worksheet::Cell_Values() const {
    std::vector<float> values;
    for (int k = 1; k <= Array_Count(); ++k) {
        values.push_back(cell(k, column_, row_));
    }
    return values;
}

core::LayerValues Worksheet::read_layer(int k, int period, int layer) const {
    core::LayerValues values(store_.cells_of_layer());
    store_.read_array(request_.number(k), period, layer, values, request_.default_value(k));
    return values;
}

std::vector<core::Zone> Worksheet::read_zones(int period, int layer) const {
    return request_.Zones_Allowed
               ? core::ZoneFile(files_, layers()).read_zones(period, layer, core::ZoneFile::scratch)
               : std::vector<core::Zone>();
}

// What cannot be read leaves layer and period as they are shown: their values would be written into
// the other ones.
void Worksheet::read_shown(int period, int layer) {
    std::vector<core::LayerValues> arrays;
    for (int k = 1; k <= Array_Count(); ++k) {
        arrays.push_back(read_layer(k, period, layer));
    }
    zones_ = read_zones(period, layer);
    arrays_ = std::move(arrays);
    period_ = period;
    layer_ = layer;
}

void Worksheet::write_layer(int period, int layer) {
    for (int k = 1; k <= Array_Count(); ++k) {
        store_.write_array(request_.number(k), period, layer, array(k));
    }
    if (request_.Zones_Allowed) {
        core::ZoneFile(files_, layers())
            .write_zones(period, layer, core::ZoneFile::scratch, zones_);
    }
    commit_what_is_aside();
}

void Worksheet::commit_what_is_aside() {
    if (files_.changed()) {
        files_.commit();
        edit_in_place(request_, files_);
    }
}

void Worksheet::write_shown() {
    write_layer(period_, layer_);
}

void Worksheet::show(int period, int layer) {
    write_shown();
    if (period != period_) {
        for (int k = 1; k <= Array_Count(); ++k) {
            store_.complete_period(request_.number(k), period, request_.default_value(k));
        }
        commit_what_is_aside();
    }
    read_shown(period, layer);
}

bool Worksheet::show_layer(int layer) {
    if (layer < 1 || layer > layers()) {
        return false;
    }
    if (Layer_Copy && layer != layer_) {
        copy_shown_to(layer);
    }
    show(period_, layer);
    return true;
}

bool Worksheet::show_period(int period) {
    if (period < 1 || period > core::period_count) {
        return false;
    }
    show(period, layer_);
    return true;
}

bool Worksheet::move_to(int column, int row, bool drawing) {
    if (column < 1 || column > NX() || row < 1 || row > NY()) {
        return false;
    }
    const bool entered = column != column_ || row != row_;
    column_ = column;
    row_ = row;
    if (entered && drawing && Cell_Copy && !last_values_.empty()) {
        const std::vector<float> values = last_values_;
        static_cast<void>(set_cell(column, row, values));
    }
    return true;
}

// Leaving.

std::string Worksheet::leave_question() const {
    return fmt::format("Save changes to {}?", request_.Edit_Caption);
}

void Worksheet::leave(base::Answer answer) {
    const bool yes = answer == base::Answer::yes || answer == base::Answer::ok;
    if (answer == base::Answer::no) {
        return discard();
    }
    if (request_.Current_Parameter() == digitizer) {
        files_.write_file(scratch_path(files_, point_scratch), points_text(points_));
    }
    write_shown();
    if (!yes) {
        return;
    }
    files_.end_in_place();
    core::Project saved = project_;
    if (is_marked(request_.Current_Parameter())) {
        core::mark_item_defined(saved.flags, request_.Current_Parameter());
        saved.flags.mark_edited();
    }
    keep_session_files(request_, files_);
    Save_Grid_File(grid_, saved, files_);
    saved.Write_Project_File(files_);
    files_.commit();
    project_ = std::move(saved);
    ended_ = true;
}

std::vector<std::string> Worksheet::scratch_files() const {
    std::vector<std::string> names;
    for (const std::string& extension : scratch_extensions(request_)) {
        if (const auto file = scratch_path(files_, extension); files_.has_file(file)) {
            names.push_back(file.filename().string());
        }
    }
    std::ranges::sort(names);
    return names;
}

Worksheet::PointerStatus Worksheet::pointer_status(std::optional<CellIndex> cell_index) const {
    if (!cell_index) {
        return {"", "", "---"};
    }
    PointerStatus status{
        base::masked(cell_index->column, "0000"), base::masked(cell_index->row, "0000"), {}};
    for (int k = 1; k <= Array_Count(); ++k) {
        status.values += k == 1 ? "" : "  ";
        status.values += status_value(cell(k, cell_index->column, cell_index->row));
    }
    return status;
}

std::string Worksheet::status_text() const {
    const int number = request_.Current_Parameter();
    if (number == top_of_layers || number == bottom_of_layers || !is_marked(number)) {
        return request_.window_caption + "; Time independent";
    }
    return project_.transient() ? fmt::format("{};  Period {}", request_.window_caption, period_)
                                : request_.window_caption + "; Steady state";
}

} // namespace grid

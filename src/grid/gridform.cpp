#include "grid/gridform.h"

#include "base/failure.h"
#include "base/numbertext.h"
#include "core/extensions.h"
#include "core/modelfiles.h"
#include "core/project.h"
#include "grid/arrayfiles.h"

#include <fmt/format.h>

#include <cstdint>
#include <limits>

namespace grid {

namespace {

constexpr const char* orientations[] = {"Horizontal (map view)", "Vertical (cross section)",
                                        "Cylindrical Symmetry"};

constexpr core::FieldInfo dimension_fields[] = {
    {"GridOrientation", core::FieldKind::choice, "Model development", orientations, "", "0"},
    {"txtLayers", core::FieldKind::number, "Number of layers", {}, "", "1"},
    {"txtColumns", core::FieldKind::number, "Number of columns", {}, "", "30"},
    {"txtColumnSize", core::FieldKind::number, "Size [m]:", {}, "m", "1"},
    {"txtRows", core::FieldKind::number, "Number of rows", {}, "", "30"},
    {"txtRowSize", core::FieldKind::number, "Size [m]:", {}, "m", "1"},
};

constexpr core::FieldInfo size_fields[] = {
    {"txtColumnSize", core::FieldKind::number, "Column:", {}, "m", ""},
    {"txtRowSize", core::FieldKind::number, "Row:", {}, "m", ""},
};

base::Refusal error(std::string text) {
    return {"Error", std::move(text), base::Icon::warning};
}

base::Refusal desk_refusal(std::string text) {
    return {base::desk_title, std::move(text), base::Icon::warning};
}

base::Refusal in_field(base::Refusal refusal, const char* field) {
    refusal.field = field;
    return refusal;
}

std::optional<base::Refusal> check_number(const core::Form& form, const char* field, int limit,
                                          const base::Refusal& too_large) {
    const std::int32_t number = base::leading_int32(form.get(field));
    if (number <= 0) {
        return in_field(error("Please enter a positive value."), field);
    }
    return number > limit ? std::optional(in_field(too_large, field)) : std::nullopt;
}

std::optional<base::Refusal> check_size(const core::Form& form, const char* field,
                                        const char* refusal) {
    return base::leading_single(form.get(field)) > 0
               ? std::nullopt
               : std::optional(in_field(error(refusal), field));
}

void remove_arrays_of_other_size(core::ModelFiles& files, const GridFile& grid) {
    for (const int number : existing_arrays(files)) {
        if (!array_fits(number, files, grid.NX, grid.NY, grid.NZ)) {
            files.remove(core::file_ext(number));
        }
    }
}

void lay_out_sheet(core::Project& project, const GridFile& grid) {
    const CellCoordinates cells = Build_Cell_Coordinates(grid);
    set_sheet(project, 2 * cells.x_edges.back(), 2 * cells.y_edges.back());
    for (const char* key : {"LEFT", "TOP", "RAD", "ANGLE"}) {
        project.set_single("GRIDPOSITION", key, 0);
    }
    // Placed anew by the next reading, which halves the sheet again.
    project.set_integer("GRIDPOSITION", "MOVED", 0);
}

} // namespace

std::span<const core::FieldInfo> Grid_Number::fields() const {
    return dimension_fields;
}

void Grid_Number::load(const core::Project& project, const core::ModelFiles& files) {
    reset_fields();
    defined_ = project.flags.is_defined(1, 2);
    NX_ = project.NX();
    NY_ = project.NY();
    NZ_ = project.NZ();
    orientation_ = project.flags.GridOrientation();
    has_arrays_ = defined_ && !existing_arrays(files).empty();
    put("GridOrientation", fmt::to_string(orientation_));
    put("txtLayers", fmt::to_string(NZ_));
    put("txtColumns", fmt::to_string(NX_));
    put("txtRows", fmt::to_string(NY_));
    const auto grid = defined_ ? GridFile::load(files) : std::nullopt;
    if (grid) {
        put("txtColumnSize", base::value_text(grid->Column_Width.front()));
        put("txtRowSize", base::value_text(grid->Row_Height.front()));
    }
}

bool Grid_Number::enabled(std::string_view name) const {
    return name != "GridOrientation" || !defined_;
}

std::optional<base::Refusal> Grid_Number::check() const {
    constexpr int max_layers = std::numeric_limits<std::int16_t>::max();
    const char* const positive = "Please enter a positive value.";
    if (auto refusal = check_number(*this, "txtLayers", max_layers,
                                    error(fmt::format("Valid range is 1 to {}", max_layers)))) {
        return refusal;
    }
    if (auto refusal = check_number(*this, "txtColumns", max_columns,
                                    desk_refusal("The maximumm number of columns is 2000"))) {
        return refusal;
    }
    if (auto refusal = check_size(*this, "txtColumnSize", positive)) {
        return refusal;
    }
    if (auto refusal = check_number(*this, "txtRows", max_rows,
                                    desk_refusal("The maximumm number of rows is 2000"))) {
        return refusal;
    }
    if (auto refusal = check_size(*this, "txtRowSize", positive)) {
        return refusal;
    }
    if (defined_ && base::leading_int32(get("GridOrientation")) != orientation_) {
        return in_field(desk_refusal(orientation_is_fixed), "GridOrientation");
    }
    if (has_arrays_ && !same_numbers()) {
        return in_field(desk_refusal(arrays_exist), "txtLayers");
    }
    return std::nullopt;
}

void Grid_Number::save(core::Project& project, core::ModelFiles& files) {
    const GridFile grid = new_grid();
    if (!defined_) {
        remove_arrays_of_other_size(files, grid);
        set_orientation(project);
    }
    Save_Grid_File(grid, project, files);
    LayerFile::defaults(grid.NZ).save(files);
    lay_out_sheet(project, grid);
    project.flags.mark_defined(1, 2);
    project.flags.mark_edited();
}

const char* Grid_Number::frame_caption() const {
    return orientation_words(base::leading_int32(get("GridOrientation"))).plural;
}

std::vector<core::Notice> Grid_Number::changed(std::string_view name) {
    const int orientation = base::leading_int32(get("GridOrientation"));
    if (name != "GridOrientation" || defined_ || orientation == core::horizontal) {
        return {};
    }
    const char* const meaning = orientation == core::vertical
                                    ? "Layers are now understood as vertical cross sections."
                                    : "The model is now understood as cylindrical symmetric.";
    return {{base::Icon::information, "Warning",
             fmt::format("{}\nOnce saved, this cannot be changed anymore!", meaning)}};
}

GridFile Grid_Number::new_grid() const {
    GridFile grid;
    grid.NX = base::leading_int32(get("txtColumns"));
    grid.NY = base::leading_int32(get("txtRows"));
    grid.NZ = base::leading_int32(get("txtLayers"));
    grid.Column_Width.assign(static_cast<std::size_t>(grid.NX),
                             base::leading_single(get("txtColumnSize")));
    grid.Row_Height.assign(static_cast<std::size_t>(grid.NY),
                           base::leading_single(get("txtRowSize")));
    return grid;
}

bool Grid_Number::same_numbers() const {
    return base::leading_int32(get("txtColumns")) == NX_ &&
           base::leading_int32(get("txtRows")) == NY_ &&
           base::leading_int32(get("txtLayers")) == NZ_;
}

void Grid_Number::set_orientation(core::Project& project) const {
    const int orientation = base::leading_int32(get("GridOrientation"));
    project.flags.set(1, 4, orientation);
    project.set_title(core::with_orientation_prefix(project.title(), orientation));
}

std::span<const core::FieldInfo> GridSize::fields() const {
    return size_fields;
}

void GridSize::load(const core::Project& project, const core::ModelFiles& files) {
    reset_fields();
    grid_ = project.flags.is_defined(1, 2) ? GridFile::load(files) : std::nullopt;
    if (!grid_) {
        return;
    }
    if (column_ < 1 || column_ > grid_->NX || row_ < 1 || row_ > grid_->NY) {
        throw base::FileFailure(
            fmt::format("has {} columns and {} rows, where column {} and row {} were expected",
                        grid_->NX, grid_->NY, column_, row_),
            files.name_of(".xy"));
    }
    const auto column = static_cast<std::size_t>(column_ - 1);
    const auto row = static_cast<std::size_t>(row_ - 1);
    put("txtColumnSize", base::value_text(grid_->Column_Width[column]));
    put("txtRowSize", base::value_text(grid_->Row_Height[row]));
}

std::optional<base::Refusal> GridSize::check() const {
    if (!grid_) {
        return base::Refusal{"Message", mesh_hint, base::Icon::warning};
    }
    const char* const positive = "Please enter a positive value!";
    if (auto refusal = check_size(*this, "txtColumnSize", positive)) {
        return refusal;
    }
    return check_size(*this, "txtRowSize", positive);
}

void GridSize::save(core::Project& project, core::ModelFiles& files) {
    grid_->Column_Width[static_cast<std::size_t>(column_ - 1)] =
        base::leading_single(get("txtColumnSize"));
    grid_->Row_Height[static_cast<std::size_t>(row_ - 1)] = base::leading_single(get("txtRowSize"));
    Save_Grid_File(*grid_, project, files);
    project.flags.mark_edited();
}

} // namespace grid

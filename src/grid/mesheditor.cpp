#include "grid/mesheditor.h"

#include "base/failure.h"
#include "core/modelfiles.h"
#include "core/project.h"
#include "grid/arrayfiles.h"
#include "grid/refinement.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace grid {

namespace {

constexpr std::size_t most_steps = 100;

std::size_t index_of(int number) {
    return static_cast<std::size_t>(number - 1);
}

GridFile load_mesh(const core::ModelFiles& files) {
    auto grid = GridFile::load(files);
    if (!grid) {
        throw base::FileFailure("does not exist", files.name_of(".xy"));
    }
    return *std::move(grid);
}

base::Refusal desk_box(const char* text) {
    return {base::desk_title, text, base::Icon::information};
}

base::Refusal error(const char* text) {
    return {"Error", text, base::Icon::warning};
}

bool in_range(std::optional<int> factor) {
    return !factor || (*factor >= 1 && *factor <= max_refinement);
}

// One direction of the mesh.
struct Direction {
    int& count;   // of columns or rows
    int& current; // from 1
    std::vector<float>& sizes;
    std::vector<int>& factors;
    int most;
    const char* too_many;
    const char* too_few;
};

template <typename State>
Direction direction_of(State& state, bool is_column) {
    if (is_column) {
        return {state.grid.NX,
                state.column,
                state.grid.Column_Width,
                state.division.columns,
                max_columns,
                "The maximumm number of columns is 2000",
                "At least one column is required"};
    }
    return {state.grid.NY,
            state.row,
            state.grid.Row_Height,
            state.division.rows,
            max_rows,
            "The maximumm number of rows is 2000",
            "At least one row is required"};
}

} // namespace

MeshEditor::MeshEditor(const core::Project& project, const core::ModelFiles& files)
    : refines_(project.flags.is_defined(1, 3)), has_arrays_(!existing_arrays(files).empty()) {
    state_.grid = load_mesh(files);
    state_.grid.NZ = project.NZ();
    state_.division = no_division(state_.grid, project.NZ());
}

bool MeshEditor::go(int column, int row) {
    if (column < 1 || column > state_.grid.NX || row < 1 || row > state_.grid.NY) {
        return false;
    }
    state_.column = column;
    state_.row = row;
    return true;
}

bool MeshEditor::go_layer(int layer) {
    if (layer < 1 || layer > state_.grid.NZ) {
        return false;
    }
    state_.layer = layer;
    return true;
}

MeshEditor::KeyEffect MeshEditor::press(MeshKey key) {
    if (!refines_) {
        return lay_out(key);
    }
    int& column = state_.division.columns[index_of(state_.column)];
    int& row = state_.division.rows[index_of(state_.row)];
    switch (key) {
    case MeshKey::left:
        return change_factor(column, -1);
    case MeshKey::right:
        return change_factor(column, 1);
    case MeshKey::up:
        return change_factor(row, 1);
    case MeshKey::down:
        break;
    }
    return change_factor(row, -1);
}

MeshEditor::KeyEffect MeshEditor::change_factor(int& factor, int by) {
    if (factor + by < 1) {
        return {false, std::nullopt};
    }
    if (factor + by > max_refinement) {
        return {false, desk_box("The maximumm refinement step is 10")};
    }
    remember();
    factor += by;
    return {};
}

MeshEditor::KeyEffect MeshEditor::lay_out(MeshKey key) {
    if (has_arrays_) {
        return {false, std::nullopt}; // they would get out of step with the mesh
    }
    const bool is_column = key == MeshKey::left || key == MeshKey::right;
    const bool inserts = key == MeshKey::right || key == MeshKey::up;
    return inserts ? insert(is_column) : remove(is_column);
}

MeshEditor::KeyEffect MeshEditor::insert(bool is_column) {
    const Direction direction = direction_of(state_, is_column);
    if (direction.count >= direction.most) {
        return {false, desk_box(direction.too_many)};
    }
    remember();
    const auto behind = static_cast<std::ptrdiff_t>(direction.current);
    const float size = direction.sizes[index_of(direction.current)];
    direction.sizes.insert(direction.sizes.begin() + behind, size);
    direction.factors.insert(direction.factors.begin() + behind, 1);
    ++direction.count;
    return {};
}

MeshEditor::KeyEffect MeshEditor::remove(bool is_column) {
    const Direction direction = direction_of(state_, is_column);
    if (direction.count <= 1) {
        return {false, desk_box(direction.too_few)};
    }
    remember();
    const auto at = static_cast<std::ptrdiff_t>(index_of(direction.current));
    direction.sizes.erase(direction.sizes.begin() + at);
    direction.factors.erase(direction.factors.begin() + at);
    --direction.count;
    direction.current = std::min(direction.current, direction.count);
    return {};
}

std::optional<base::Refusal> MeshEditor::size_refusal(const MeshSize& size) {
    for (const float length : {size.width, size.height}) {
        if (!(length > 0) || !std::isfinite(length)) {
            return error("Please enter a positive value!");
        }
    }
    for (const auto& factor : {size.factor_x, size.factor_y, size.factor_layer}) {
        if (!in_range(factor)) {
            return error("Valid range is 1 to 10");
        }
    }
    return std::nullopt;
}

std::optional<base::Refusal> MeshEditor::set_size(const MeshSize& size) {
    if (auto refusal = size_refusal(size)) {
        return refusal;
    }
    remember();
    const auto set = [](int& factor, std::optional<int> given) { factor = given.value_or(factor); };
    state_.grid.Column_Width[index_of(state_.column)] = size.width;
    state_.grid.Row_Height[index_of(state_.row)] = size.height;
    set(state_.division.columns[index_of(state_.column)], size.factor_x);
    set(state_.division.rows[index_of(state_.row)], size.factor_y);
    set(state_.division.layers[index_of(state_.layer)], size.factor_layer);
    return std::nullopt;
}

void MeshEditor::remember() {
    done_.push_back(state_);
    undone_.clear();
    if (done_.size() > most_steps) {
        done_.pop_front();
    }
}

bool MeshEditor::undo() {
    if (done_.empty()) {
        return false;
    }
    undone_.push_back(std::exchange(state_, std::move(done_.back())));
    done_.pop_back();
    return true;
}

bool MeshEditor::redo() {
    if (undone_.empty()) {
        return false;
    }
    done_.push_back(std::exchange(state_, std::move(undone_.back())));
    undone_.pop_back();
    return true;
}

bool MeshEditor::save(core::Project& project, core::ModelFiles& files, base::Interaction& user) {
    Save_Grid_File(state_.grid, project, files);
    project.flags.mark_defined(1, 3);
    project.flags.mark_edited();
    project.Write_Project_File(files);
    return Do_Grid_Refinement(state_.division, project, files, user);
}

} // namespace grid

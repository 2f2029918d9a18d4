// The mesh editor: columns and rows are inserted and deleted while the mesh is laid out; once that
// is done, columns, rows and layers get factors by which they are divided on leaving.
#pragma once

#include "base/interaction.h"
#include "core/refinedfiles.h"
#include "grid/griddefinition.h"

#include <deque>
#include <optional>
#include <string_view>

namespace core {
class ModelFiles;
class Project;
} // namespace core

namespace grid {

enum class MeshKey { left, right, up, down };

// The size dialog of the current position; factors that are not given stay.
struct MeshSize {
    float width, height; // metres
    std::optional<int> factor_x, factor_y, factor_layer;
};

class MeshEditor {
public:
    static constexpr const char* caption = "Mesh Size";
    static constexpr const char* question = "Save changes to Mesh Size?";

    // The mesh of the model, which has to be there: FileFailure otherwise.
    MeshEditor(const core::Project& project, const core::ModelFiles& files);

    // Once the laying out has ended, keys change factors.
    bool refines() const { return refines_; }
    const GridFile& grid() const { return state_.grid; }
    const core::Division& division() const { return state_.division; }
    // From 1.
    int column() const { return state_.column; }
    int row() const { return state_.row; }
    int layer() const { return state_.layer; }

    // False outside the mesh (a beep).
    bool go(int column, int row);
    bool go_layer(int layer);
    // A key with Ctrl. False for a beep, with the box that comes with it.
    struct KeyEffect {
        bool done = true;
        std::optional<base::Refusal> refusal;
    };
    KeyEffect press(MeshKey key);
    std::optional<base::Refusal> set_size(const MeshSize& size);
    static std::optional<base::Refusal> size_refusal(const MeshSize& size);

    bool undo();
    bool redo();
    bool can_undo() const { return !done_.empty(); }
    bool can_redo() const { return !undone_.empty(); }

    // Yes: writes the mesh and the project and divides what has a factor. False when the division
    // was refused or declined: the editor is still open, and the caller must not commit.
    bool save(core::Project& project, core::ModelFiles& files, base::Interaction& user);

private:
    struct State {
        GridFile grid;
        core::Division division;
        int column = 1, row = 1, layer = 1;
    };

    KeyEffect lay_out(MeshKey key);
    KeyEffect insert(bool is_column);
    KeyEffect remove(bool is_column);
    KeyEffect change_factor(int& factor, int by);
    void remember();

    State state_;
    std::deque<State> done_, undone_;
    bool refines_ = false, has_arrays_ = false;
};

} // namespace grid

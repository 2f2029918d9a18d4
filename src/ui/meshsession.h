// A session of the mesh editor in the window: columns, rows and their factors by keys, the grid's
// place by the mouse.
#pragma once

#include "grid/mesheditor.h"
#include "ui/editorsession.h"

#include <vector>

namespace core {
class Project;
}

namespace ui {

class MeshSession final : public EditorSession {
public:
    enum class Tool { none, rotate, shift };

    explicit MeshSession(SessionPlace place);

    grid::MeshEditor& mesh() { return mesh_; }
    Tool tool() const { return tool_; }

    grid::EditorState state() const override { return grid::EditorState::mesh; }
    QString caption() const override;
    bool leave() override;
    void redraw() override;
    bool run(std::string_view command) override;
    int layer() const override { return mesh_.layer(); }
    int layers() const override { return mesh_.grid().NZ; }
    void show_layer(int layer) override;
    std::optional<std::string> undo_name() const override;
    std::optional<std::string> redo_name() const override;
    bool is_idle() const override { return !from_; }

    void press(const WorksheetPointer& pointer) override;
    void move(const WorksheetPointer& pointer) override;
    void release(const WorksheetPointer& pointer) override;
    void double_click(const WorksheetPointer& pointer) override { press(pointer); }
    bool key(QKeyEvent& event) override;
    void find(grid::CellIndex cell) override;
    QString tip(const WorksheetPointer& pointer) override;
    bool menu(QMenu& menu) override;

private:
    // The upper left corner in the world, and the angle in degrees.
    struct Placement {
        double left, top, angle;
    };
    // A step is one of the mesh, or one of the placement, which it has as it was.
    using Step = std::optional<std::optional<Placement>>;

    core::Project placed() const;
    Placement current() const;
    Placement dragged_to(const WorksheetPointer& pointer) const;
    void choose(Tool tool);
    void edit_size();
    void go(int column, int row);
    void press_key(grid::MeshKey key);
    void go_back(std::vector<Step>& from, std::vector<Step>& to, bool undo);
    void remember(Step step);
    bool save();
    void show_overlay(const std::optional<Placement>& target = {});

    grid::MeshEditor mesh_;
    std::optional<Placement> placement_; // unless it is that of the project
    Tool tool_ = Tool::none;
    std::optional<grid::GridPosition::Point> from_; // world; the button is down
    std::vector<Step> done_, undone_;
};

} // namespace ui

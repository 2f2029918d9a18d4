// Makes the pictures that the view shows: the placed grid of a model, the mesh of the mesh editor,
// and the layer of a worksheet session.
#pragma once

#include "grid/mesheditor.h"
#include "grid/worksheet.h"
#include "plot/contourlevels.h"
#include "plot/strokefont.h"
#include "ui/worksheetpicture.h"

#include <memory>
#include <optional>

namespace app {
struct Workspace;
}
namespace base {
class Interaction;
}

namespace ui {

using PicturePointer = std::shared_ptr<const WorksheetPicture>;

// Mesh, inactive cells of layer 1 and Monitoring Points; nullptr without a mesh. Files that cannot
// be read are left out: the command that needs them tells why.
PicturePointer placed_picture(const app::Workspace& model);

// Bands of one black say nothing: levels whose fill colours nobody has chosen yet get a scale.
void give_colours(plot::ContourLevels& levels);

// The mesh being edited, at the place that `placed` gives it.
PicturePointer mesh_editor_picture(const grid::MeshEditor& mesh, const core::Project& placed);

// The pictures of one session. Worksheet and model outlive it.
class SessionPictures {
public:
    SessionPictures(const grid::Worksheet& worksheet, app::Workspace& model);

    // The shown layer. Contours are traced anew when `values_changed` or another display asks for
    // it; long ones show their progress to the user and end on Escape.
    PicturePointer make(CellColours colours, grid::DisplayMode display, bool zones_shown,
                        base::Interaction& user);
    // After the values of one cell were set. nullptr: make() is needed.
    PicturePointer with_cell(grid::CellIndex cell);
    void values_changed() { contours_.reset(); }

private:
    LayerData layer_data();
    void load_boundary();
    void add_points(WorksheetPicture& picture) const;
    std::shared_ptr<const ContourPaths> contours(grid::DisplayMode display,
                                                 base::Interaction& user);

    const grid::Worksheet& worksheet_;
    app::Workspace& model_;
    plot::StrokeFont font_;
    core::LayerValues boundary_;
    int boundary_layer_ = 0;
    std::shared_ptr<WorksheetPicture> picture_;
    std::shared_ptr<const ContourPaths> contours_;
    grid::DisplayMode contours_display_ = grid::DisplayMode::world;
    int contours_layer_ = 0, contours_period_ = 0;
};

} // namespace ui

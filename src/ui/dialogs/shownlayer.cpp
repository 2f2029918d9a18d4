#include "ui/dialogs/shownlayer.h"

#include "app/workspace.h"
#include "grid/worksheet.h"

#include <algorithm>

namespace ui {

namespace {

constexpr int flow_boundaries = 5;

} // namespace

int contoured_array(const core::Project& project, const grid::Worksheet& worksheet) {
    return std::clamp(project.integer("CONTOURS", "DataSource") + 1, 1, worksheet.Array_Count());
}

void show_array(plot::PlotData& data, const grid::Worksheet& worksheet, int k) {
    data.values = worksheet.array(k);
}

plot::PlotData shown_layer(const app::Workspace& model, grid::Worksheet* worksheet) {
    if (!worksheet) {
        // The model at hand may only be looked at.
        core::ModelFiles files(model.Model_Path(), core::Access::read);
        return plot::load_grid(model.project, files, 1);
    }
    plot::PlotData data =
        plot::load_grid(model.project, worksheet->files(), worksheet->Current_Layer());
    if (worksheet->request().Current_Parameter() == flow_boundaries) {
        data.boundary = worksheet->array(1);
    }
    data.zones = worksheet->zones();
    show_array(data, *worksheet, contoured_array(model.project, *worksheet));
    return data;
}

} // namespace ui

// The dialogs of the worksheet and the mesh editor. Each is modal and works on the session that it
// is given; what is refused is shown and changes nothing.
#pragma once

#include <QRgb>

#include <cstdint>
#include <vector>

class QWidget;

namespace app {
struct Workspace;
}
namespace grid {
class MeshEditor;
class Worksheet;
} // namespace grid

namespace ui {

class Desk;
class WorksheetView;

// A session of the worksheet in the window. `model` is the one that the session writes.
struct EditorContext {
    Desk& desk;
    app::Workspace& model;
    grid::Worksheet& worksheet;
    WorksheetView& view;
    QWidget* window;
};

// Values of the current cell ("Cell Value"), of a zone of the shown layer ("Zone Value", with ">>",
// which gives them to the cells too). False after Cancel.
bool edit_cell_values(EditorContext& editor);
bool edit_zone_values(EditorContext& editor, int zone);

// Width, height and factors of the current column, row and layer. True: one of them was changed.
bool edit_mesh_size(Desk& desk, grid::MeshEditor& mesh, const app::Workspace& model,
                    QWidget* window);

// Value|Array, Reset Array, Search And Modify.
void browse_array(EditorContext& editor);
void reset_array(EditorContext& editor);
// The cells that were found: the number of their rule, from 1, 0 for none, and the rules' colours.
// Empty when the shown layer was not searched.
struct SearchMarks {
    std::vector<std::uint8_t> matched;
    std::vector<QRgb> colours;
};
SearchMarks search_and_modify(EditorContext& editor);

// The periods before the question of leaving.
struct TransientChoice {
    int result; // 1 OK, 2 Cancel, 3 edit the data of `period`
    int period;
};
TransientChoice transient_data(EditorContext& editor);

// Value|Zones and Value|Points, for the shown layer.
void delete_all_zones(EditorContext& editor);
void save_zones_as(EditorContext& editor);
void load_zones(EditorContext& editor);
void delete_all_points(EditorContext& editor);
void save_points_as(EditorContext& editor);
void load_points(EditorContext& editor);

// What the worksheet shows: elements and colours, sheet, contours. With `worksheet`, the session
// whose layer is contoured; `model` has to be writable then. Without, the desk changes the model.
// True after OK: the view has to be drawn anew.
bool environment_options(Desk& desk, const app::Workspace& model, grid::Worksheet* worksheet,
                         WorksheetView& view, QWidget* window);

// What the view shows, whatever its zoom: to a file, to the clipboard, on paper.
void save_plot_as(Desk& desk, const app::Workspace& model, grid::Worksheet* worksheet,
                  WorksheetView& view, QWidget* window);
void copy_picture(WorksheetView& view);
void print_plot(Desk& desk, const app::Workspace& model, grid::Worksheet* worksheet,
                WorksheetView& view, QWidget* window);

} // namespace ui

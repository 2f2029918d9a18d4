// The worksheet or the mesh editor in the window: opens a session, brings mouse, keys, toolbar and
// status bar together with it, and leaves it. The rules are those of grid/worksheet and
// grid/mesheditor.
#pragma once

#include "app/workspace.h"
#include "grid/mesheditor.h"
#include "grid/worksheet.h"
#include "ui/worksheetview.h"

#include <QObject>
#include <QTimer>

#include <memory>
#include <optional>
#include <string_view>

namespace ui {

class Desk;
class MainWindow;
struct EditorContext;

class Editor : public QObject {
    Q_OBJECT

public:
    // `desk` and `window`, with its panes, toolbar and view, outlive the editor.
    Editor(Desk& desk, MainWindow& window);
    ~Editor() override;

    bool is_open() const;
    // Opens the session of a menu command: "mnuHeatTemperature", "grid_mesh_size".
    void open(std::string_view command);
    // The same for an item that no command names alone, such as the array of one tracer.
    void open_request(const grid::EditRequest& request);
    // Leaves behind the question. False: the editor stays open.
    bool leave();

    // nullptr when the other one or none is open.
    grid::Worksheet* worksheet() { return worksheet_.get(); }
    grid::MeshEditor* mesh() { return mesh_.get(); }
    // The model that the open session writes; nullptr without one.
    app::Workspace* model() { return model_ ? &*model_ : nullptr; }

    // A command of the editor's own menus and of the toolbar ("value_trace", "tool_zoom_in").
    void run(std::string_view command);

private:
    Desk& desk_;
    MainWindow& window_;
    std::optional<app::Workspace> model_;
    std::unique_ptr<grid::Worksheet> worksheet_;
    std::unique_ptr<grid::MeshEditor> mesh_;
};

} // namespace ui

// The worksheet or the mesh editor in the window: opens a session, brings mouse, keys, toolbar and
// status bar together with it, and leaves it. The rules are those of grid/worksheet and
// grid/mesheditor.
#pragma once

#include "app/workspace.h"
#include "grid/editrequest.h"
#include "ui/editorsession.h"

#include <QObject>

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace grid {
class MeshEditor;
class Worksheet;
} // namespace grid

namespace ui {

class Editor : public QObject {
    Q_OBJECT

public:
    // `desk` and `window`, with its panes, toolbar and view, outlive the editor.
    Editor(Desk& desk, MainWindow& window);
    ~Editor() override;

    bool is_open() const { return session_ != nullptr; }
    // Opens the session of a menu command: "mnuHeatTemperature", "grid_mesh_size". What stands in
    // its way is shown.
    void open(std::string_view command);
    // The same for an item that no command names alone, such as the array of one tracer.
    void open_request(const grid::EditRequest& request);
    // Leaves behind the question. False: the editor stays open.
    bool leave();

    // nullptr when the other one or none is open.
    grid::Worksheet* worksheet() const;
    grid::MeshEditor* mesh() const;
    // The model that the open session writes; nullptr without one.
    app::Workspace* model() { return model_ ? &*model_ : nullptr; }

    // A command of the editor's own menus or of the toolbar ("value_trace", "tool_zoom_in").
    void run(std::string_view command);

private:
    void connect_tools();
    void add_view_button();
    void open_mesh();
    bool begin(std::string_view signature, const std::string& step);
    void show_session(std::unique_ptr<EditorSession> session);
    void end();
    SessionPlace place();
    // The periods to choose from; one when the item has no others.
    std::vector<int> periods() const;

    bool run_anywhere(std::string_view command);
    void show_model();
    void sync();
    void sync_tools();
    void sync_menus();
    void sync_layers();
    void tick();

    Desk& desk_;
    MainWindow& window_;
    std::optional<app::Workspace> model_; // of the session, which refers to it
    std::unique_ptr<EditorSession> session_;
    IdleInput idle_;
    int Current_Period_ = 1; // that the worksheet showed last since the model was opened
    bool syncing_ = false;
};

} // namespace ui

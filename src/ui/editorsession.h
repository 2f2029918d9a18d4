// One session in the window: of the worksheet or of the mesh editor. The editor opens it, gives it
// the tools and keys, and drops it when it has ended.
#pragma once

#include "grid/worksheet.h"
#include "report/attempt.h"
#include "ui/worksheetview.h"

#include <QString>

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace app {
struct Workspace;
}

namespace ui {

class Desk;
class MainWindow;

// What every session works with; all of it outlives the session.
struct SessionPlace {
    Desk& desk;
    MainWindow& window;
    app::Workspace& model;
    std::function<void()> changed; // toolbar, ticks and panes have to follow
};

class EditorSession : public WorksheetInput {
public:
    explicit EditorSession(SessionPlace place) : place_(std::move(place)) {}

    virtual grid::EditorState state() const = 0;
    // Pane 3 of the status bar.
    virtual QString caption() const = 0;
    // Ends behind the question; false: the session goes on.
    virtual bool leave() = 0;
    // Draws what the session shows anew.
    virtual void redraw() = 0;
    // A command of the menus or a tool; false for one that is not the session's.
    virtual bool run(std::string_view command) = 0;

    virtual int layer() const = 0;
    virtual int layers() const = 0;
    virtual void show_layer(int layer) = 0;
    virtual int period() const { return 1; }
    virtual void show_period(int) {}
    virtual void set_colours(CellColours) {}
    virtual CellColours colours() const { return CellColours::classes; }

    // What undo and redo would go over.
    virtual std::optional<std::string> undo_name() const = 0;
    virtual std::optional<std::string> redo_name() const = 0;

    // False while the mouse is in the middle of something that no timer may disturb.
    virtual bool is_idle() const { return true; }

    // Column and row, place and values under the pointer in their panes.
    void show_pointer(const WorksheetPointer& pointer);
    // The same for the last place: the picture under a resting pointer may have changed.
    void refresh_pointer();
    void gone() override;

protected:
    virtual QString values_text(const WorksheetPointer&) { return {}; }
    // Shows a failure of the step; true: it was done.
    bool attempt(std::string_view signature, const std::function<void()>& step);
    void beep();

    SessionPlace place_;

private:
    std::optional<grid::Pixel> last_pixel_;
};

// Pointer panes of the window without a session, and its beep.
class IdleInput : public WorksheetInput {
public:
    explicit IdleInput(MainWindow& window) : window_(window) {}

    void press(const WorksheetPointer& pointer) override;
    void move(const WorksheetPointer& pointer) override;
    void gone() override;
    QString tip(const WorksheetPointer& pointer) override;
    bool menu(QMenu& menu) override;

private:
    MainWindow& window_;
};

// Texts of the first two panes, and of the tooltip: cell, coordinates of the world and of the grid.
QString cell_text(const WorksheetPointer& pointer);
QString pointer_text(const WorksheetPointer& pointer, const WorksheetView& view);
QString place_tip(const WorksheetPointer& pointer, const WorksheetView& view);

} // namespace ui

// A session of the worksheet in the window: cells, zones and digitized points by mouse and keys.
#pragma once

#include "grid/worksheet.h"
#include "grid/zones.h"
#include "ui/dialogs/editordialogs.h"
#include "ui/editorpictures.h"
#include "ui/editorsession.h"

#include <filesystem>
#include <map>
#include <memory>

namespace ui {

class WorksheetSession final : public EditorSession {
public:
    WorksheetSession(SessionPlace place, std::unique_ptr<grid::Worksheet> worksheet);
    ~WorksheetSession() override;

    grid::Worksheet& worksheet() { return *worksheet_; }
    bool digitizing() const { return digitizing_; }

    grid::EditorState state() const override { return worksheet_->Editor_State; }
    QString caption() const override;
    bool leave() override;
    void redraw() override;
    bool run(std::string_view command) override;
    int layer() const override { return worksheet_->Current_Layer(); }
    int layers() const override { return worksheet_->layers(); }
    void show_layer(int layer) override;
    int period() const override { return worksheet_->Current_Period(); }
    void show_period(int period) override;
    void set_colours(CellColours colours) override;
    CellColours colours() const override { return colours_; }
    std::optional<std::string> undo_name() const override { return worksheet_->undo_name(); }
    std::optional<std::string> redo_name() const override { return worksheet_->redo_name(); }
    bool is_idle() const override { return !zones_.Zone_Open && !stroke_; }

    void press(const WorksheetPointer& pointer) override;
    void move(const WorksheetPointer& pointer) override;
    void release(const WorksheetPointer& pointer) override;
    void double_click(const WorksheetPointer& pointer) override;
    bool key(QKeyEvent& event) override;
    void find(grid::CellIndex cell) override;
    QString tip(const WorksheetPointer& pointer) override;
    bool menu(QMenu& menu) override;

protected:
    QString values_text(const WorksheetPointer& pointer) override;

private:
    struct Command {
        const char* name;
        void (*run)(WorksheetSession&);
    };
    static std::span<const Command> commands();
    EditorContext context();

    // Life.
    std::optional<base::Answer> answer_to_leave();
    bool finish(base::Answer answer);
    // Tells when another program has written the session's arrays.
    void look_for_strangers();
    using FileTimes = std::map<std::filesystem::path, std::filesystem::file_time_type>;
    FileTimes file_times() const;

    // Commands and tools.
    void set_value();
    void set_mode(grid::EditorState mode);
    void go_back(bool undo);
    void search();
    void plot_as();
    void print();
    void set_environment();

    // Drawing.
    void show_overlay();
    void cells_changed(std::span<const grid::CellIndex> cells);
    void all_changed();

    // Cell by cell.
    void press_in_cells(const WorksheetPointer& pointer);
    void draw_stroke(grid::CellIndex cell);
    void edit_cell();
    void move_current(int columns, int rows);

    // Zones.
    void press_in_zones(const WorksheetPointer& pointer);
    void click_zone(const WorksheetPointer& pointer);
    void close_zone();
    void edit_zone(int zone);
    void delete_zone();
    void drop_open_zone();
    // Ends a stroke and puts a node on its way back: keys and other buttons come in between, and a
    // dialog keeps the release of the button for itself.
    void let_go();
    void sync_zones();
    int zone_at(const WorksheetPointer& pointer);
    std::size_t node_near(const WorksheetPointer& pointer) const;
    void drag_node(const WorksheetPointer& pointer);
    void drop_node(const WorksheetPointer& pointer);
    bool on_sheet(const WorksheetPointer& pointer) const;

    void digitize(const WorksheetPointer& pointer);

    std::unique_ptr<grid::Worksheet> worksheet_;
    SessionPictures pictures_;
    CellColours colours_ = CellColours::classes;
    grid::ZoneDigitizer zones_;
    std::optional<grid::GridPosition::Point> rubber_end_;

    // While the left button is down: a stroke of cells, or a node of the selected zone on its way.
    std::unique_ptr<grid::Worksheet::Step> stroke_;
    std::optional<grid::CellIndex> pressed_cell_;
    struct Drag {
        std::size_t node = 0;
        WorksheetPointer from;
        core::Zone zone;
        bool moved = false;
    };
    std::optional<Drag> drag_;

    bool digitizing_ = false;
    FileTimes file_times_;
};

} // namespace ui

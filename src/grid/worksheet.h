// The worksheet: a session that edits the arrays and zones of one item, layer by layer.
//
// From the opening on, a copy of each array (<base>.T<n>) lies in the model's folder, and the zones
// are edited in a copy of their file (<base>.{Z}). Layers are written in place when another one is
// shown. Leaving with Yes drops the copies, with No it puts them back: byte for byte what the
// opening had found or completed. A session that was cut off leaves them for the next opening of
// the model (worksheetfiles.h).
#pragma once

#include "base/interaction.h"
#include "core/arraystore.h"
#include "core/zonefile.h"
#include "grid/editrequest.h"
#include "grid/griddefinition.h"
#include "grid/worksheetsteps.h"

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace core {
class ModelFiles;
class Project;
} // namespace core

namespace grid {

enum class EditorState { none = -1, mesh = 0, cell_by_cell = 1, zone = 2 };

// Columns, rows, layers, periods and arrays count from 1; a number that is not there is a
// RangeFailure. File failures are thrown as base::FileFailure; the scratch files are still there
// then, and leave(no) restores.
class Worksheet {
public:
    // Opens the editor on a request; what it needs of the folder is committed before it returns.
    // Completes arrays (missing files get the default, the period a record), makes the scratch
    // copies, asks whether tops are to be taken from bottoms or the reverse, and shows layer 1.
    // Nothing after Cancel; no scratch file is left then. `project` and `files` (with write access,
    // nothing uncommitted) must outlive the worksheet. FileFailure leaves no scratch file either.
    static std::unique_ptr<Worksheet> Edit_data_for(EditRequest request, core::Project& project,
                                                    core::ModelFiles& files,
                                                    base::Interaction& user,
                                                    int Current_Period = 1);
    // Does not leave: a worksheet that is dropped without leave() is a session that was cut off.
    ~Worksheet();
    Worksheet(const Worksheet&) = delete;
    Worksheet& operator=(const Worksheet&) = delete;

    const EditRequest& request() const { return request_; }
    const GridFile& grid() const { return grid_; }
    const CellCoordinates& cells() const { return cells_; }
    // For reading what is not shown: after write_shown() the files hold everything.
    core::ArrayStore& store() { return store_; }
    // The model's folder, for files that a command of the worksheet writes beside the arrays.
    core::ModelFiles& files() { return files_; }
    int NX() const { return grid_.NX; }
    int NY() const { return grid_.NY; }
    // Layers to be shown: 1 for a single-layer parameter.
    int layers() const { return store_.layers(request_.Current_Parameter()); }
    int Array_Count() const { return request_.Array_Count(); }

    // What is shown.
    int Current_Layer() const { return layer_; }
    int Current_Period() const { return period_; }
    int Current_Column() const { return column_; }
    int Current_Row() const { return row_; }
    // Edit_Array of array k: value of column i, row j at (j - 1) * NX + i - 1.
    const core::LayerValues& array(int k) const;
    const std::vector<core::Zone>& zones() const { return zones_; }
    float cell(int k, int column, int row) const;
    // Cell_Values of the current cell.
    std::vector<float> Cell_Values() const;
    // Those that a cell was given last, which Cell_Copy repeats; empty at first.
    const std::vector<float>& last_values() const { return last_values_; }

    EditorState Editor_State = EditorState::cell_by_cell;
    bool Layer_Copy = false;
    bool Cell_Copy = false;

    // Writes the shown layer and shows another one; with Layer_Copy the other one becomes the same
    // first. False, and nothing done, for a layer or period that is not there (a beep).
    bool show_layer(int layer);
    bool show_period(int period);
    // Writes arrays and zones of the shown layer, also unchanged.
    void write_shown();

    // Moves the current cell; false outside the grid (a beep). With Cell_Copy and `drawing` (the
    // left button is held, or an arrow key) the cell gets the values that were set last.
    bool move_to(int column, int row, bool drawing = false);

    // Editing. Each is one step of the history, or part of an open Step.
    //
    // Values of a cell, array 1 first; arrays without a value keep theirs. A refused value changes
    // nothing.
    std::optional<base::Refusal> set_cell(int column, int row, std::span<const float> values);
    // One value a cell of the shown layer.
    void set_array(int k, core::LayerValues values);
    // Fills the shown layer of the arrays that have a value; keeps what it was in <base>.{R}.
    std::optional<base::Refusal> reset(std::span<const float> values);
    // The zones of the shown layer. RangeFailure when the item has no zones.
    void set_zones(std::vector<core::Zone> zones);
    // Runs `work`, which changes `layers` of array k in the current period in the files; the shown
    // layer is written before and read after it.
    void on_files(int k, int first_layer, int last_layer,
                  const std::function<void(core::ArrayStore&)>& work);
    // Arrays and zones of one period become those of another.
    void copy_period(int from, int to);
    // Values for a cell or a zone that the value dialogs would refuse.
    std::optional<base::Refusal> values_refusal(std::span<const float> values) const;

    // Changes made while it lives are one step.
    class Step {
    public:
        explicit Step(Worksheet& worksheet) : worksheet_(worksheet) { ++worksheet_.open_steps_; }
        ~Step();
        Step(const Step&) = delete;
        Step& operator=(const Step&) = delete;

    private:
        Worksheet& worksheet_;
    };
    // Takes the last step back (does it again) and shows its layer; false when there is none. The
    // history ends with the session. A record that a step added to a file stays, with what its
    // period gave before.
    bool undo();
    bool redo();
    // What they would go over.
    std::optional<std::string> undo_name() const;
    std::optional<std::string> redo_name() const;
    // Without a history there is nothing to take back, and steps cost nothing.
    void keep_history(bool on) { steps_.keep(on); }

    // Digitized points of the item Digitizer; `distance` in metres. add_point refuses the point
    // beyond the last one, erase_point gives false when none is near.
    const std::vector<DigitizedPoint>& points() const { return points_; }
    std::optional<base::Refusal> add_point(const DigitizedPoint& point);
    bool erase_point(double x, double y, double distance);
    // All points at once; refused when they are too many.
    std::optional<base::Refusal> set_points(std::vector<DigitizedPoint> points);

    // File_Leave_Editor behind its question; commits. yes: the item is defined, the zones are taken
    // over; no: arrays and project are as at the opening; either way no scratch file is left and
    // the worksheet is at its end. cancel: stays, the layer is written.
    void leave(base::Answer answer);
    // The question: caption and "Save changes to ...?".
    std::string leave_question() const;
    bool ended() const { return ended_; }
    // Names of the session's scratch files that exist, sorted.
    std::vector<std::string> scratch_files() const;

    // Text of the status bar: caption of the window and, behind "; ", the time.
    std::string status_text() const;
    // What it shows of the cell under the pointer; nothing: outside the grid.
    struct PointerStatus {
        std::string column, row, values;
    };
    PointerStatus pointer_status(std::optional<CellIndex> cell) const;

private:
    Worksheet(EditRequest request, core::Project& project, core::ModelFiles& files, int period);

    void prepare();
    void open(base::Interaction& user, bool& cancelled);
    void discard();
    core::LayerValues read_layer(int k, int period, int layer) const;
    std::vector<core::Zone> read_zones(int period, int layer) const;
    void show(int period, int layer);
    void read_shown(int period, int layer);
    void write_layer(int period, int layer);
    void write_other(int k, int period, int layer, core::LayerValues values);
    void copy_shown_to(int layer);
    void commit_what_is_aside();
    std::size_t cell_index(int column, int row) const;
    core::LayerValues& shown_array(int k);
    void require_values(std::span<const float> values) const;
    void record(LayerChange change);
    void apply(const LayerChange& change, bool back);

    EditRequest request_;
    core::Project& project_;
    core::ModelFiles& files_;
    core::ArrayStore store_;
    GridFile grid_;
    CellCoordinates cells_;
    int layer_ = 1, period_ = 1, column_ = 1, row_ = 1;
    std::vector<core::LayerValues> arrays_;
    std::vector<core::Zone> zones_;
    std::vector<float> last_values_; // set last, for Cell_Copy
    std::vector<DigitizedPoint> points_;
    StepHistory steps_;
    int open_steps_ = 0;
    bool ended_ = false;
};

} // namespace grid

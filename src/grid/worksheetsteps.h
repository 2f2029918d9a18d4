// The steps of a worksheet session as data: what each changed, so that it can be taken back and
// done again.
#pragma once

#include "core/arraystore.h"
#include "core/zonefile.h"

#include <cstddef>
#include <deque>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace grid {

struct DigitizedPoint {
    float zone_value = 0;
    float x = 0, y = 0, z = 0; // metres, in the grid's own frame
};
inline constexpr std::size_t max_digitized_points = 10000;

// What one step did to one array, the zones or the points of one layer of one period.
struct LayerChange {
    // Neighbouring cells that changed, from cell index `first` on.
    struct Run {
        std::size_t first;
        std::vector<float> before, after;
    };

    int period = 1, layer = 1;
    int array = 0; // from 1; 0: the zones, -1: the digitized points
    std::vector<Run> runs{};
    std::vector<core::Zone> zones_before{}, zones_after{};
    std::vector<DigitizedPoint> points_before{}, points_after{};

    std::size_t bytes() const;
};

// The runs of cells in which two layers of one size differ, compared by their bits.
std::vector<LayerChange::Run> changed_runs(std::span<const float> before,
                                           std::span<const float> after);

using StepData = std::vector<LayerChange>;

// What the step changed, for people: "Cell 3,2", "Cells", "Zones", "Points". NX columns.
std::string step_name(const StepData& step, int NX);

// The steps that can be taken back and those that can be done again. Keeps the last ones: at most
// 100, with at most 1 GB.
class StepHistory {
public:
    void keep(bool on) { keep_ = on; }
    bool keeps() const { return keep_; }

    // Part of the step that is being done.
    void add(LayerChange change) { open_.push_back(std::move(change)); }
    // Ends the step; one without changes is none. What could be done again is lost.
    void close();

    // The step to be taken back (done again); nothing when there is none.
    const StepData* last_done() const { return done_.empty() ? nullptr : &done_.back(); }
    const StepData* last_undone() const { return undone_.empty() ? nullptr : &undone_.back(); }
    // That step, which there is, was taken back (done again), and changes sides.
    void back();
    void forward();

private:
    static constexpr std::size_t most_steps = 100;
    static constexpr std::size_t most_bytes = std::size_t{1} << 30;

    std::size_t held_bytes() const;

    bool keep_ = true;
    StepData open_;
    std::deque<StepData> done_, undone_;
};

} // namespace grid

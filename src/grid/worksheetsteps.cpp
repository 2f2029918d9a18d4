#include "grid/worksheetsteps.h"

#include <fmt/format.h>

#include <bit>
#include <cstdint>
#include <utility>

namespace grid {

namespace {

// Runs that are this near are one: each has a price of its own.
constexpr std::size_t bridged_gap = 8;

bool differ(float a, float b) {
    return std::bit_cast<std::uint32_t>(a) != std::bit_cast<std::uint32_t>(b);
}

std::size_t bytes_of(const StepData& step) {
    std::size_t bytes = 0;
    for (const LayerChange& change : step) {
        bytes += change.bytes();
    }
    return bytes;
}

} // namespace

std::size_t LayerChange::bytes() const {
    std::size_t bytes = sizeof(LayerChange);
    for (const Run& run : runs) {
        bytes += sizeof(Run) + 2 * sizeof(float) * run.before.size();
    }
    bytes += sizeof(core::Zone) * (zones_before.size() + zones_after.size());
    return bytes + sizeof(DigitizedPoint) * (points_before.size() + points_after.size());
}

std::vector<LayerChange::Run> changed_runs(std::span<const float> before,
                                           std::span<const float> after) {
    std::vector<LayerChange::Run> runs;
    for (std::size_t at = 0; at < before.size(); ++at) {
        if (!differ(before[at], after[at])) {
            continue;
        }
        std::size_t last = at;
        for (std::size_t i = at; i < before.size() && i - last <= bridged_gap; ++i) {
            last = differ(before[i], after[i]) ? i : last;
        }
        const std::size_t count = last - at + 1;
        const auto cut = [&](std::span<const float> values) {
            const auto part = values.subspan(at, count);
            return std::vector<float>(part.begin(), part.end());
        };
        runs.push_back({at, cut(before), cut(after)});
        at = last;
    }
    return runs;
}

std::string step_name(const StepData& step, int NX) {
    std::optional<std::size_t> only;
    bool cells = false, one_cell = true, points = false;
    for (const LayerChange& change : step) {
        points = points || change.array < 0;
        for (const LayerChange::Run& run : change.runs) {
            one_cell = one_cell && run.before.size() == 1 && only.value_or(run.first) == run.first;
            only = run.first;
            cells = true;
        }
    }
    if (!cells) {
        return points ? "Points" : "Zones";
    }
    const auto columns = static_cast<std::size_t>(NX);
    return one_cell ? fmt::format("Cell {},{}", *only % columns + 1, *only / columns + 1)
                    : std::string("Cells");
}

void StepHistory::close() {
    if (open_.empty()) {
        return;
    }
    done_.push_back(std::exchange(open_, {}));
    undone_.clear();
    while (done_.size() > most_steps || (done_.size() > 1 && held_bytes() > most_bytes)) {
        done_.pop_front();
    }
}

void StepHistory::back() {
    undone_.push_back(std::move(done_.back()));
    done_.pop_back();
}

void StepHistory::forward() {
    done_.push_back(std::move(undone_.back()));
    undone_.pop_back();
}

std::size_t StepHistory::held_bytes() const {
    std::size_t bytes = 0;
    for (const StepData& step : done_) {
        bytes += bytes_of(step);
    }
    return bytes;
}

} // namespace grid

// Changes of a worksheet session, and the way back from them.

#include "base/binaryio.h"
#include "base/failure.h"
#include "core/extensions.h"
#include "core/modelfiles.h"
#include "grid/worksheet.h"
#include "grid/worksheetfiles.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace grid {

namespace {

constexpr int points_index = -1, zones_index = 0; // of a LayerChange

void require_period(int period) {
    if (period < 1 || period > core::period_count) {
        throw base::RangeFailure(
            fmt::format("period {} is outside 1 to {}", period, core::period_count));
    }
}

} // namespace

void Worksheet::require_values(std::span<const float> values) const {
    if (values.empty() || static_cast<int>(values.size()) > Array_Count()) {
        throw base::RangeFailure(
            fmt::format("{} values are given for {} arrays", values.size(), Array_Count()));
    }
}

std::optional<base::Refusal> Worksheet::values_refusal(std::span<const float> values) const {
    require_values(values);
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (auto refusal = request_.value_refusal(static_cast<int>(i) + 1, values[i])) {
            return refusal;
        }
    }
    return std::nullopt;
}

std::optional<base::Refusal> Worksheet::set_cell(int column, int row,
                                                 std::span<const float> values) {
    const std::size_t index = cell_index(column, row);
    if (auto refusal = values_refusal(values)) {
        return refusal;
    }
    const Step step(*this);
    for (std::size_t i = 0; i < values.size(); ++i) {
        float& cell = arrays_[i][index];
        const float kept = request_.kept_value(values[i]);
        if (steps_.keeps() && !changed_runs({&cell, 1}, {&kept, 1}).empty()) {
            LayerChange change{period_, layer_, static_cast<int>(i) + 1};
            change.runs.push_back({index, {cell}, {kept}});
            record(std::move(change));
        }
        cell = kept;
    }
    last_values_.assign(values.begin(), values.end());
    column_ = column;
    row_ = row;
    return std::nullopt;
}

void Worksheet::set_array(int k, core::LayerValues values) {
    core::LayerValues& shown = shown_array(k);
    if (values.size() != shown.size()) {
        throw base::RangeFailure(fmt::format("{} values are given for a layer of {} cells",
                                             values.size(), shown.size()));
    }
    const Step step(*this);
    if (steps_.keeps()) {
        record({period_, layer_, k, changed_runs(shown, values)});
    }
    shown = std::move(values);
}

std::optional<base::Refusal> Worksheet::reset(std::span<const float> values) {
    if (auto refusal = values_refusal(values)) {
        return refusal;
    }
    std::string before(arrays_.size() * store_.cells_of_layer() * sizeof(float), '\0');
    std::span<char> rest(before);
    for (const core::LayerValues& layer : arrays_) {
        base::singles_to_bytes(layer, rest.first(layer.size() * sizeof(float)));
        rest = rest.subspan(layer.size() * sizeof(float));
    }
    files_.write_file(scratch_path(files_, reset_scratch), before);
    commit_what_is_aside();
    const Step step(*this);
    for (std::size_t i = 0; i < values.size(); ++i) {
        set_array(static_cast<int>(i) + 1,
                  core::LayerValues(store_.cells_of_layer(), request_.kept_value(values[i])));
    }
    return std::nullopt;
}

void Worksheet::set_zones(std::vector<core::Zone> zones) {
    if (!request_.Zones_Allowed) {
        throw base::RangeFailure(fmt::format("{} has no zones", request_.Edit_Caption));
    }
    const Step step(*this);
    LayerChange change{period_, layer_, zones_index};
    change.zones_before = std::move(zones_);
    change.zones_after = zones;
    zones_ = std::move(zones);
    record(std::move(change));
}

void Worksheet::on_files(int k, int first_layer, int last_layer,
                         const std::function<void(core::ArrayStore&)>& work) {
    write_shown();
    std::vector<core::LayerValues> before;
    const bool keeps = steps_.keeps();
    for (int layer = first_layer; keeps && layer <= last_layer; ++layer) {
        before.push_back(read_layer(k, period_, layer));
    }
    work(store_);
    commit_what_is_aside();
    const Step step(*this);
    for (int layer = first_layer; keeps && layer <= last_layer; ++layer) {
        const auto& old = before[static_cast<std::size_t>(layer - first_layer)];
        record({period_, layer, k, changed_runs(old, read_layer(k, period_, layer))});
    }
    read_shown(period_, layer_);
}

void Worksheet::write_other(int k, int period, int layer, core::LayerValues values) {
    if (steps_.keeps()) {
        record({period, layer, k, changed_runs(read_layer(k, period, layer), values)});
    }
    store_.write_array(request_.number(k), period, layer, values);
}

void Worksheet::copy_shown_to(int layer) {
    const Step step(*this);
    for (int k = 1; k <= Array_Count(); ++k) {
        write_other(k, period_, layer, array(k));
    }
    if (request_.Zones_Allowed) {
        LayerChange change{period_, layer, zones_index};
        change.zones_before = read_zones(period_, layer);
        change.zones_after = zones_;
        record(std::move(change));
        core::ZoneFile(files_, layers())
            .write_zones(period_, layer, core::ZoneFile::scratch, zones_);
    }
}

void Worksheet::copy_period(int from, int to) {
    require_period(from);
    require_period(to);
    if (from == to) {
        return;
    }
    write_shown();
    const Step step(*this);
    for (int k = 1; k <= Array_Count(); ++k) {
        store_.complete_period(request_.number(k), to, request_.default_value(k));
        for (int layer = 1; layer <= layers(); ++layer) {
            write_other(k, to, layer, read_layer(k, from, layer));
        }
    }
    core::ZoneFile zones(files_, layers());
    for (int layer = 1; request_.Zones_Allowed && layer <= layers(); ++layer) {
        LayerChange change{to, layer, zones_index};
        change.zones_before = read_zones(to, layer);
        change.zones_after = read_zones(from, layer);
        zones.write_zones(to, layer, core::ZoneFile::scratch, change.zones_after);
        record(std::move(change));
    }
    commit_what_is_aside();
    read_shown(period_, layer_);
}

// Digitized points.

std::optional<base::Refusal> Worksheet::set_points(std::vector<DigitizedPoint> points) {
    if (points.size() > max_digitized_points) {
        return base::Refusal{base::desk_title, "The maximum number of digitize points is 10000.",
                             base::Icon::warning};
    }
    const Step step(*this);
    LayerChange change{period_, layer_, points_index};
    change.points_before = std::exchange(points_, std::move(points));
    change.points_after = points_;
    record(std::move(change));
    return std::nullopt;
}

std::optional<base::Refusal> Worksheet::add_point(const DigitizedPoint& point) {
    std::vector<DigitizedPoint> points = points_;
    points.push_back(point);
    return set_points(std::move(points));
}

bool Worksheet::erase_point(double x, double y, double distance) {
    const auto squared = [&](const DigitizedPoint& point) {
        const double dx = point.x - x, dy = point.y - y;
        return dx * dx + dy * dy;
    };
    const auto nearest = std::ranges::min_element(points_, {}, squared);
    if (nearest == points_.end() || squared(*nearest) > distance * distance) {
        return false;
    }
    std::vector<DigitizedPoint> points = points_;
    points.erase(points.begin() + (nearest - points_.begin()));
    return !set_points(std::move(points));
}

// History.

Worksheet::Step::~Step() {
    if (--worksheet_.open_steps_ == 0) {
        worksheet_.steps_.close();
    }
}

void Worksheet::record(LayerChange change) {
    const bool is_change = change.array <= zones_index || !change.runs.empty();
    if (steps_.keeps() && is_change) {
        steps_.add(std::move(change));
    }
}

void Worksheet::apply(const LayerChange& change, bool back) {
    if (change.array == points_index) {
        points_ = back ? change.points_before : change.points_after;
        return;
    }
    if (change.period != period_ || change.layer != layer_) {
        show(change.period, change.layer);
    }
    if (change.array == zones_index) {
        zones_ = back ? change.zones_before : change.zones_after;
        return;
    }
    core::LayerValues& values = shown_array(change.array);
    for (const LayerChange::Run& run : change.runs) {
        std::ranges::copy(back ? run.before : run.after,
                          values.begin() + static_cast<std::ptrdiff_t>(run.first));
    }
}

std::optional<std::string> Worksheet::undo_name() const {
    const StepData* const step = steps_.last_done();
    return step ? std::optional(step_name(*step, NX())) : std::nullopt;
}

std::optional<std::string> Worksheet::redo_name() const {
    const StepData* const step = steps_.last_undone();
    return step ? std::optional(step_name(*step, NX())) : std::nullopt;
}

// A step changes sides when all of it is done: one that fails is gone over again.
bool Worksheet::undo() {
    const StepData* const step = steps_.last_done();
    if (step == nullptr) {
        return false;
    }
    for (std::size_t i = step->size(); i > 0; --i) {
        apply((*step)[i - 1], true);
    }
    steps_.back();
    return true;
}

bool Worksheet::redo() {
    const StepData* const step = steps_.last_undone();
    if (step == nullptr) {
        return false;
    }
    for (const LayerChange& change : *step) {
        apply(change, false);
    }
    steps_.forward();
    return true;
}

} // namespace grid

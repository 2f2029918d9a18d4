#include "grid/searchmodify.h"

#include "base/busy.h"
#include "core/extensions.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace grid {

namespace {

constexpr int flow_boundaries = 5;
constexpr double largest_value = 3.402823E38, least_value = 1.401298E-45;

float changed_value(const Trace_Row& row, float value) {
    constexpr float largest = std::numeric_limits<float>::max();
    switch (row.option) {
    case TraceOption::display_only:
        return value;
    case TraceOption::replace:
        return row.value;
    case TraceOption::add:
        return std::clamp(value + row.value, -largest, largest);
    case TraceOption::multiply:
        return std::clamp(value * row.value, -largest, largest);
    }
    return value;
}

// Number (from 1) of the first active rule for the value; 0 for none.
std::size_t matching_row(const TraceRules& rules, float value) {
    const auto found = std::ranges::find_if(rules.rows, [value](const Trace_Row& row) {
        return row.active && row.minimum <= value && value <= row.maximum;
    });
    return found == rules.rows.end() ? 0 : static_cast<std::size_t>(found - rules.rows.begin()) + 1;
}

// One run over the layers of an array.
class Search {
public:
    Search(const TraceRules& rules, const TraceSearch& search, core::ArrayStore& store,
           base::Interaction& user)
        : rules_(rules), search_(search), store_(store), user_(user),
          values_(store.layer_values(search.number)), matched_(values_.size()) {
        if (search.number != flow_boundaries && store.exists(flow_boundaries)) {
            boundary_ = store.layer_values(flow_boundaries);
        }
    }

    TraceOutcome run() {
        bool stopped = false;
        for (int layer = search_.first_layer; layer <= search_.last_layer && !stopped; ++layer) {
            read(layer);
            bool changed = false;
            for (int row = 0; row < store_.NY() && !stopped; ++row) {
                changed |= trace_row(row);
                stopped = user_.show_meter(percent(layer));
            }
            keep(layer, changed);
        }
        return outcome_;
    }

private:
    int percent(int layer) const {
        return 100 * (layer - search_.first_layer) / (search_.last_layer - search_.first_layer + 1);
    }

    void read(int layer) {
        store_.layer_reader_if(search_.number, search_.period, search_.default_value)
            .read(layer, values_);
        if (!boundary_.empty()) {
            store_.read_array(flow_boundaries, 1, layer, boundary_,
                              core::parameter_default(flow_boundaries));
        }
        std::ranges::fill(matched_, std::uint8_t{0});
    }

    bool trace_row(int row) {
        const auto width = static_cast<std::size_t>(store_.NX());
        const std::size_t first = static_cast<std::size_t>(row) * width;
        const std::span<float> values = std::span(values_).subspan(first, width);
        // Of the flow boundaries, a value that stops being 0 has been inactive when it is looked
        // at.
        const std::span<const float> boundary =
            search_.number == flow_boundaries ? std::span<const float>(values)
            : boundary_.empty()               ? std::span<const float>()
                                : std::span<const float>(boundary_).subspan(first, width);
        return trace_cells(rules_, values, boundary, std::span(matched_).subspan(first, width));
    }

    void keep(int layer, bool changed) {
        for (const std::uint8_t row : matched_) {
            if (row != 0) {
                ++outcome_.counts[row - std::size_t{1}];
            }
        }
        if (layer == search_.shown_layer) {
            outcome_.shown = matched_;
        }
        if (changed) {
            store_.write_array(search_.number, search_.period, layer, values_);
        }
    }

    const TraceRules& rules_;
    const TraceSearch& search_;
    core::ArrayStore& store_;
    base::Interaction& user_;
    core::LayerValues values_, boundary_;
    std::vector<std::uint8_t> matched_;
    TraceOutcome outcome_;
};

} // namespace

std::optional<base::Refusal> trace_value_refusal(double value) {
    const double size = std::abs(value);
    if (size <= largest_value && (size >= least_value || size == 0)) {
        return std::nullopt;
    }
    return base::Refusal{"Error",
                         "Out of range, valid range is -3.402823E38 to -1.401298E-45 for negative "
                         "values and from 1.401298E-45 to 3.402823E38 for positive values."};
}

std::optional<base::Refusal> trace_layers_refusal(const TraceSearch& search, int layers) {
    if (std::min(search.first_layer, search.last_layer) >= 1 &&
        std::max(search.first_layer, search.last_layer) <= layers) {
        return std::nullopt;
    }
    return base::Refusal{"Error", fmt::format("Valid range is 1 to {}", layers)};
}

bool trace_cells(const TraceRules& rules, std::span<float> values, std::span<const float> boundary,
                 std::span<std::uint8_t> matched) {
    bool changed = false;
    for (std::size_t cell = 0; cell < values.size(); ++cell) {
        const bool inactive = !boundary.empty() && boundary[cell] == 0;
        const std::size_t row = inactive ? 0 : matching_row(rules, values[cell]);
        matched[cell] = static_cast<std::uint8_t>(row);
        if (row != 0) {
            const float value = changed_value(rules.rows[row - 1], values[cell]);
            changed |= value != values[cell];
            values[cell] = value;
        }
    }
    return changed;
}

TraceOutcome Search_And_Modify(const TraceRules& rules, const TraceSearch& search,
                               core::ArrayStore& store, base::Interaction& user) {
    const base::Busy hourglass(user);
    user.status("Searching and Modifying Cell Values; Press ESC to Break");
    TraceOutcome outcome = Search(rules, search, store, user).run();
    user.status("");
    return outcome;
}

} // namespace grid

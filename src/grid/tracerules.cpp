#include "grid/searchmodify.h"

#include "base/numbertext.h"
#include "base/textfile.h"
#include "core/modelfiles.h"
#include "grid/nearestsingle.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace grid {

namespace {

constexpr std::string_view first_line = "BALDO4000_TRACEFILE";
constexpr std::string_view extension = ".trs";
constexpr double last_option = 3;
constexpr int yes = -1; // of the flag

std::int32_t colour_of(double value) {
    return static_cast<std::int32_t>(
        std::nearbyint(std::clamp<double>(value, std::numeric_limits<std::int32_t>::min(),
                                          std::numeric_limits<std::int32_t>::max())));
}

TraceOption option_of(double value) {
    const double index = std::nearbyint(value);
    return index >= 0 && index <= last_option ? static_cast<TraceOption>(static_cast<int>(index))
                                              : TraceOption::display_only;
}

using SetItem = void (*)(Trace_Row& row, double value);

// The items of a line in their order.
constexpr SetItem set_items[] = {
    [](Trace_Row& row, double value) { row.active = value != 0; },
    [](Trace_Row& row, double value) { row.colour = colour_of(value); },
    [](Trace_Row& row, double value) { row.minimum = nearest_single(value); },
    [](Trace_Row& row, double value) { row.maximum = nearest_single(value); },
    [](Trace_Row& row, double value) { row.value = nearest_single(value); },
    [](Trace_Row& row, double value) { row.option = option_of(value); },
};

std::string line_of(const Trace_Row& row) {
    return fmt::format("{} {} {} {} {} {}", row.active ? yes : 0, row.colour,
                       base::value_text(row.minimum), base::value_text(row.maximum),
                       base::value_text(row.value), static_cast<int>(row.option));
}

} // namespace

TraceRules::Read TraceRules::read(std::string_view bytes, const std::filesystem::path& file) {
    base::NumberReader numbers(bytes, file);
    if (numbers.rest_of_line() != first_line) {
        return {{},
                base::Refusal{"Load Trace File",
                              fmt::format("{} is not a trace file!", file.string())}};
    }
    Read read;
    for (Trace_Row& row : read.rules.rows) {
        for (const SetItem set : set_items) {
            const auto value = numbers.next_if();
            if (!value) {
                return read;
            }
            set(row, *value);
        }
    }
    return read;
}

std::string TraceRules::bytes() const {
    std::vector<std::string> lines{std::string(first_line)};
    for (const Trace_Row& row : rows) {
        lines.push_back(line_of(row));
    }
    return base::to_text_file(lines);
}

TraceRules TraceRules::load(const core::ModelFiles& files) {
    const auto bytes = files.read_if(extension);
    return bytes ? read(*bytes, files.name_of(extension)).rules : TraceRules();
}

void TraceRules::save(core::ModelFiles& files) const {
    files.write(extension, bytes());
}

} // namespace grid

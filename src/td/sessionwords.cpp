#include "td/sessionwords.h"

#include "base/numbertext.h"
#include "grid/nearestsingle.h"
#include "td/command.h"

#include <fmt/format.h>

#include <limits>

namespace td {

namespace {

constexpr std::size_t box_slot = 12; // of Zone::param
constexpr std::size_t box_slots = 4;
constexpr int any_integer = std::numeric_limits<std::int32_t>::max();

[[noreturn]] void wrong_form(std::string_view text, const char* form) {
    throw UsageError(fmt::format("\"{}\" does not have the form {}", text, form));
}

} // namespace

std::vector<std::string> pieces(std::string_view text, char separator) {
    std::vector<std::string> found;
    for (;;) {
        const std::size_t end = text.find(separator);
        found.emplace_back(text.substr(0, end));
        if (end == std::string_view::npos) {
            return found;
        }
        text.remove_prefix(end + 1);
    }
}

std::vector<float> values_of(std::string_view text, int most) {
    std::vector<float> values;
    for (const std::string& piece : pieces(text, ',')) {
        values.push_back(base::leading_single(piece));
    }
    if (values.size() > static_cast<std::size_t>(most)) {
        throw UsageError(
            fmt::format("\"{}\" has {} values, the item has {}", text, values.size(), most));
    }
    return values;
}

grid::ZoneNode place_of(std::string_view text) {
    const std::vector<std::string> numbers = pieces(text, ',');
    if (numbers.size() != 2) {
        wrong_form(text, "X,Y");
    }
    return {grid::nearest_single(number_of(numbers[0], "X")),
            grid::nearest_single(number_of(numbers[1], "Y"))};
}

std::vector<grid::ZoneNode> nodes_of(const std::vector<std::string>& places) {
    std::vector<grid::ZoneNode> nodes;
    for (const std::string& place : places) {
        if (!place.empty()) {
            nodes.push_back(place_of(place));
        }
    }
    if (const char* const fault = grid::nodes_fault(nodes)) {
        throw UsageError(fault);
    }
    return nodes;
}

int zone_of(std::string_view text, std::size_t count) {
    const int number = integer_of(text, "zone", 1, any_integer);
    if (static_cast<std::size_t>(number) > count) {
        throw UsageError(fmt::format("there is no zone {}", number));
    }
    return number;
}

grid::FirstCell first_cell_of(std::string_view text) {
    const std::vector<std::string> numbers = pieces(text, ',');
    if (numbers.size() != 2) {
        wrong_form(text, "COL,ROW");
    }
    return {integer_of(numbers[0], "COL", -any_integer, any_integer),
            integer_of(numbers[1], "ROW", -any_integer, any_integer)};
}

grid::LayerRange layers_of(std::string_view text) {
    const std::vector<std::string> numbers = pieces(text, '-');
    if (numbers.size() > 2) {
        wrong_form(text, "L1-L2");
    }
    return {integer_of(numbers.front(), "L1", 0, any_integer),
            integer_of(numbers.back(), "L2", 0, any_integer)};
}

std::vector<std::string> zone_record(std::size_t number, const core::Zone& zone) {
    std::vector<std::string> record{fmt::to_string(number), fmt::to_string(zone.nodes),
                                    base::exact_text(zone.value)};
    for (std::size_t slot = box_slot; slot < box_slot + box_slots; ++slot) {
        record.push_back(base::exact_text(zone.param[slot]));
    }
    for (std::size_t node = 1; node <= static_cast<std::size_t>(zone.nodes); ++node) {
        record.push_back(base::exact_text(zone.x[node]));
        record.push_back(base::exact_text(zone.y[node]));
    }
    return record;
}

const char* trace_option_word(grid::TraceOption option) {
    switch (option) {
    case grid::TraceOption::display_only:
        return "display";
    case grid::TraceOption::replace:
        return "replace";
    case grid::TraceOption::add:
        return "add";
    case grid::TraceOption::multiply:
        return "multiply";
    }
    return "";
}

std::vector<std::vector<std::string>> match_records(const grid::TraceRules& rules,
                                                    const grid::TraceOutcome& outcome) {
    std::vector<std::vector<std::string>> records;
    for (std::size_t row = 0; row < outcome.counts.size(); ++row) {
        if (outcome.counts[row] != 0) {
            records.push_back({fmt::to_string(row + 1), trace_option_word(rules.rows[row].option),
                               fmt::to_string(outcome.counts[row])});
        }
    }
    return records;
}

} // namespace td

#include "results/massbalance.h"

#include "base/numbertext.h"
#include "base/textfile.h"

#include <fmt/format.h>

#include <algorithm>

namespace results {

namespace {

constexpr const char* graph_box = "Show Mass Balance";
constexpr std::string_view water = "Water";
constexpr std::string_view arrow = "->";
constexpr const char* directions[] = {"X - axis", "Y - axis", "Z - axis"};
constexpr std::size_t column_width = 25;
constexpr std::size_t time = 0, step_length = 1, flow = 2, first_substance = 3;

} // namespace

std::string direction_text(Direction direction) {
    return directions[static_cast<int>(direction)];
}

std::vector<std::string> MassBalance::parameters() const {
    std::vector<std::string> names{std::string(water)};
    names.insert(names.end(), substances.begin(), substances.end());
    return names;
}

namespace {

std::string with_commas(const std::vector<std::string>& words) {
    std::string line;
    for (const std::string& word : words) {
        line += word + ",";
    }
    return line;
}

} // namespace

std::string MassBalance::bytes() const {
    std::vector<std::string> lines{
        project, with_commas(points),
        fmt::format("{}{}t,dt,q,{}", direction_text(direction), arrow, with_commas(substances))};
    for (std::size_t step = 0; step < steps(); ++step) {
        base::PrintLine line;
        for (std::size_t column = 0; column < width(); ++column) {
            line.tab(column_width * column + 1).add(base::printed(values[step * width() + column]));
        }
        lines.push_back(line.text());
    }
    return base::to_text_file(lines);
}

namespace {

std::vector<std::string> comma_separated(std::string_view text) {
    std::vector<std::string> words;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(','), text.size());
        words.emplace_back(base::trimmed(text.substr(0, end)));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return words;
}

Direction direction_of(std::string_view text, const std::filesystem::path& file) {
    for (int axis = 0; axis < static_cast<int>(std::size(directions)); ++axis) {
        if (base::same_ignoring_case(base::trimmed(text), directions[axis])) {
            return static_cast<Direction>(axis);
        }
    }
    throw base::FileFailure(
        fmt::format("has the direction \"{}\" in line 3, where \"X - axis\", \"Y - axis\" or "
                    "\"Z - axis\" was expected",
                    base::first_characters(text, 40)),
        file);
}

void read_step(const std::string& line, std::size_t number, MassBalance& balance,
               const std::filesystem::path& file) {
    base::NumberReader reader(line, file);
    for (std::size_t column = 0; column < balance.width(); ++column) {
        const auto value = reader.next_if();
        if (!value) {
            throw base::FileFailure(fmt::format("has {} numbers in line {}, where {} were expected",
                                                column, number, balance.width()),
                                    file);
        }
        balance.values.push_back(*value);
    }
}

} // namespace

MassBalance Get_Existing_Data(std::string_view bytes, const std::filesystem::path& file) {
    constexpr std::size_t head_lines = 3;
    const std::vector<std::string> lines = base::text_lines(bytes);
    const std::string_view head = lines.size() < head_lines ? "" : std::string_view(lines[2]);
    const std::size_t cut = head.find(arrow);
    if (cut == std::string_view::npos) {
        throw base::FileFailure("has no direction and columns in line 3", file);
    }
    MassBalance balance;
    balance.project = lines[0];
    balance.points = comma_separated(lines[1]);
    balance.direction = direction_of(head.substr(0, cut), file);
    const auto columns = comma_separated(head.substr(cut + arrow.size()));
    if (columns.size() < first_substance) {
        throw base::FileFailure("has no columns t, dt and q in line 3", file);
    }
    balance.substances.assign(columns.begin() + first_substance, columns.end());
    for (std::size_t line = head_lines; line < lines.size(); ++line) {
        if (!base::trimmed(lines[line]).empty()) {
            read_step(lines[line], line + 1, balance, file);
        }
    }
    return balance;
}

std::vector<std::string> balance_modes(std::string_view parameter) {
    if (parameter == water) {
        return {"[m³/day]"};
    }
    return {"[mmol/L]", "[mol]"};
}

std::optional<base::Refusal> graph_refusal(const MassBalance& balance, std::string_view parameter,
                                           std::string_view mode) {
    const auto holds = [](const std::vector<std::string>& list, std::string_view text) {
        return std::ranges::find(list, text) != list.end();
    };
    if (!holds(balance.parameters(), parameter)) {
        return base::Refusal{graph_box, "Choose a parameter for which you want to see the data."};
    }
    if (!holds(balance_modes(parameter), mode)) {
        return base::Refusal{graph_box, "Choose a mode with which you want to see the data."};
    }
    return std::nullopt;
}

namespace {

double quotient(double value, double divisor) {
    return divisor == 0 ? 0 : value / divisor;
}

} // namespace

BalanceChart Get_MB_Array(const MassBalance& balance, std::string_view parameter,
                          std::string_view mode) {
    const auto names = balance.parameters();
    const std::size_t column =
        flow + static_cast<std::size_t>(std::ranges::find(names, parameter) - names.begin());
    if (column >= balance.width()) {
        throw base::RangeFailure(fmt::format("no column of the balance is {}", parameter));
    }
    BalanceChart chart{"Mass Balance in direction of " + direction_text(balance.direction), {}, {}};
    for (std::size_t step = 0; step < balance.steps(); ++step) {
        const double* const row = balance.values.data() + step * balance.width();
        chart.times.push_back(row[time]);
        chart.values.push_back(column == flow       ? quotient(row[flow], row[step_length])
                               : mode == "[mmol/L]" ? quotient(row[column], row[flow])
                                                    : row[column]);
    }
    return chart;
}

} // namespace results

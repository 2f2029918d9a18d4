#include "sim/periods.h"

#include "base/failure.h"
#include "base/numbertext.h"
#include "base/textfile.h"
#include "core/modelfiles.h"

#include <algorithm>

#include <fmt/format.h>

namespace sim {

namespace {

constexpr std::string_view time_file_mark = "BALDO5000_TIME_FILE";

// By the time unit of the table.
constexpr std::array<double, PeriodTable::unit_count> unit_seconds = {0,    1,     60,
                                                                      3600, 86400, 31536000};

int known_unit(int unit) {
    return unit > 0 && unit < PeriodTable::unit_count ? unit : 0;
}

using Reader = base::NumberReader;
using What = std::string_view;

// The seven numbers of a period in the order of both files, each with its name for failures.
struct Item {
    const char* name;
    void (*read)(Reader& reader, What what, Period& period);
    std::string (*print)(const Period& period);
};

constexpr Item items[] = {
    {"use mark", [](Reader& r, What what, Period& p) { p.active = r.next_int(what) == -1; },
     [](const Period& p) { return base::printed(p.active ? -1 : 0); }},
    {"length", [](Reader& r, What what, Period& p) { p.length = r.next(what); },
     [](const Period& p) { return base::printed(p.length); }},
    {"time steps", [](Reader& r, What what, Period& p) { p.steps = r.next_int(what); },
     [](const Period& p) { return base::printed(p.steps); }},
    {"monitoring frequency",
     [](Reader& r, What what, Period& p) { p.monitoring_frequency = r.next_single(what); },
     [](const Period& p) { return base::printed(p.monitoring_frequency); }},
    {"temperature shift",
     [](Reader& r, What what, Period& p) { p.temperature_shift = r.next_single(what); },
     [](const Period& p) { return base::printed(p.temperature_shift); }},
    {"number of transport steps",
     [](Reader& r, What what, Period& p) { p.max_transport_steps = r.next_int(what); },
     [](const Period& p) { return base::printed(p.max_transport_steps); }},
    {"multiplier", [](Reader& r, What what, Period& p) { p.multiplier = r.next_single(what); },
     [](const Period& p) { return base::printed(p.multiplier); }},
};

// Number of items on the three lines of a period in .trn.
constexpr int items_of_line[] = {4, 2, 1};

void read_item(Reader& reader, const Item& item, std::int32_t number, PeriodTable& table) {
    Period beyond; // rows that the table does not hold are read and forgotten
    const bool held = number <= PeriodTable::row_count;
    Period& period = held ? table.rows[std::size_t(number - 1)] : beyond;
    item.read(reader, fmt::format("the {} of period {}", item.name, number), period);
}

// The number of periods that a file announces, and the time unit behind it.
std::int32_t read_count(Reader& reader, const std::filesystem::path& file, PeriodTable& table) {
    const std::size_t line = reader.line();
    const std::int32_t count = reader.next_int("the number of periods");
    if (count < 1)
        throw base::FileFailure(
            fmt::format("line {} holds {}, where the number of periods was expected", line, count),
            file);
    table.unit = known_unit(reader.next_int("the time unit"));
    return count;
}

} // namespace

PeriodTable PeriodTable::read(std::string_view bytes, const std::filesystem::path& file) {
    PeriodTable table;
    Reader reader(bytes, file);
    const std::int32_t count = read_count(reader, file, table);
    for (std::int32_t number = 1; number <= std::min(count, row_count); ++number)
        for (const Item& item : items)
            read_item(reader, item, number, table);
    return table;
}

std::string PeriodTable::bytes() const {
    std::vector<std::string> lines;
    lines.push_back(base::PrintLine().add("100").zone().add(base::printed(unit)).text());
    for (const Period& period : rows) {
        const Item* item = items;
        for (int count : items_of_line) {
            std::string line = item++->print(period);
            for (int i = 1; i < count; ++i)
                line += " " + item++->print(period);
            lines.push_back(std::move(line));
        }
    }
    return base::to_text_file(lines);
}

PeriodTable PeriodTable::load(const core::ModelFiles& files) {
    const auto bytes = files.read_if(".trn");
    return bytes ? read(*bytes, files.name_of(".trn")) : PeriodTable();
}

void PeriodTable::save(core::ModelFiles& files) const {
    files.write(".trn", bytes());
}

std::optional<PeriodTable> PeriodTable::read_time_parameters(std::string_view bytes,
                                                             const std::filesystem::path& file) {
    if (base::trimmed(bytes.substr(0, bytes.find('\n'))) != time_file_mark)
        return std::nullopt;
    PeriodTable table;
    Reader reader(bytes, file);
    reader.skip_line();
    const std::int32_t count = read_count(reader, file, table);
    for (const Item& item : items)
        for (std::int32_t number = 1; number <= count; ++number)
            read_item(reader, item, number, table);
    return table;
}

std::string PeriodTable::time_parameters() const {
    std::vector<std::string> lines = {std::string(time_file_mark),
                                      base::printed(row_count) + base::printed(unit)};
    for (const Item& item : items)
        for (const Period& period : rows)
            lines.push_back(item.print(period));
    return base::to_text_file(lines);
}

PeriodTotals PeriodTable::totals() const {
    PeriodTotals totals;
    for (const Period& period : rows) {
        if (!period.active)
            continue;
        ++totals.periods;
        totals.steps += period.steps;
        totals.time += period.length;
    }
    return totals;
}

const char* time_unit_name(int unit) {
    return time_unit_names[std::size_t(known_unit(unit))];
}

double seconds_of_unit(int unit) {
    return unit_seconds[std::size_t(known_unit(unit))];
}

} // namespace sim

#include "results/timeseries.h"

#include "base/interaction.h"
#include "base/numbertext.h"
#include "base/paths.h"
#include "base/textfile.h"
#include "results/monitoringcells.h"
#include "results/names.h"
#include "results/parameters.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace results {

namespace {

constexpr int last_point = 100;
constexpr double days_a_year = 365;

struct FixedColumn {
    int number;
    const char* name;
    const char* code;
};
constexpr FixedColumn named_columns[] = {
    {3, "Head", "PHI"},          {4, "Velocity (X)", "VX"},   {5, "Velocity (Y)", "VY"},
    {6, "Velocity (Z)", "VZ"},   {7, "Porosity", "POR"},      {8, "Hydraulic Conductivity", "HYCN"},
    {9, "Permeability", "PERM"}, {10, "Temperature", "TEMP"}, {11, "Thermal Conductivity", "WLF"},
    {12, "pe", "REDOX"},
};
constexpr int first_velocity = 4, last_velocity = 6;
constexpr int pH_column = fixed_columns + 1;

// Parameters of the spatial view that have a column.
constexpr std::string_view temporal_codes[] = {"PHI",  "VX",   "VY",   "VZ",    "POR",
                                               "PERM", "TEMP", "CONC", "CONCM", "REDOX"};

} // namespace

std::filesystem::path monitoring_file(const std::filesystem::path& result,
                                      std::string_view extension) {
    constexpr std::size_t ending = 3;
    const std::string name = result.string();
    return name.substr(0, name.size() - std::min(ending, name.size())) + std::string(extension);
}

std::vector<MonitoringFile> monitoring_files(const std::filesystem::path& result) {
    std::vector<MonitoringFile> found;
    for (int number = 1; number <= last_point; ++number) {
        const std::string extension = file_part(number);
        auto file = monitoring_file(result, extension);
        if (base::is_file(file)) {
            found.push_back({number, extension, std::move(file)});
        }
    }
    return found;
}

int column_count(const StreamNames& names) {
    return fixed_columns + names.substances + names.minerals;
}

std::vector<SeriesColumn> series_columns(const StreamNames& names) {
    std::vector<SeriesColumn> columns;
    const auto add = [&](int number, const std::string& name) {
        columns.push_back({number, name, GetDimension(name, names)});
    };
    for (const FixedColumn& column : named_columns) {
        add(column.number, column.name);
    }
    for (const NamedBlock& species : names.species) {
        add(fixed_columns + species.number, species.name);
    }
    for (const NamedBlock& mineral : names.mineral_blocks) {
        add(fixed_columns + names.substances + mineral.number, mineral.name);
    }
    return columns;
}

std::optional<SeriesColumn> Select2DParamNumb(std::string_view name, const StreamNames& names) {
    std::string_view wanted = name == "Heat Conductivity" ? "Thermal Conductivity" : name;
    const auto by_code = std::ranges::find(
        named_columns, wanted, [](const FixedColumn& c) { return std::string_view(c.code); });
    if (by_code != std::end(named_columns)) {
        wanted = by_code->name;
    }
    const auto columns = series_columns(names);
    const auto found = std::ranges::find(columns, wanted, &SeriesColumn::name);
    return found == columns.end() ? std::nullopt : std::optional(*found);
}

std::vector<double> Series::column(int number) const {
    std::vector<double> result;
    result.reserve(rows());
    for (std::size_t row = 0; row < rows(); ++row) {
        result.push_back(at(row, number));
    }
    return result;
}

namespace {

constexpr std::string_view separators = " \t,";

// Puts the numbers of a line behind `values`, at most `columns`; their count.
int add_numbers(std::string_view line, int columns, std::vector<double>& values) {
    int count = 0;
    while (count < columns) {
        line.remove_prefix(std::min(line.find_first_not_of(separators), line.size()));
        if (line.empty()) {
            break;
        }
        const std::string_view word = line.substr(0, line.find_first_of(separators));
        values.push_back(base::leading_number(word));
        line.remove_prefix(word.size());
        ++count;
    }
    return count;
}

// The lines with data: behind the head, before the first one whose number is 0.
std::vector<std::string_view> record_lines(std::string_view bytes) {
    std::vector<std::string_view> lines = base::split_lines(bytes);
    if (!lines.empty()) {
        lines.erase(lines.begin());
    }
    const auto end = std::ranges::find_if(
        lines, [](std::string_view line) { return base::leading_number(line) == 0; });
    lines.erase(end, lines.end());
    return lines;
}

} // namespace

std::optional<Series> read_series(std::string_view bytes, const std::filesystem::path& file,
                                  int columns) {
    const auto lines = record_lines(bytes);
    Series series{columns, {}};
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::size_t complete = series.values.size();
        const int count = add_numbers(lines[i], columns, series.values);
        if (count == columns) {
            continue;
        }
        if (i + 1 < lines.size()) {
            throw base::FileFailure(fmt::format("has {} numbers in line {}, where {} were expected",
                                                count, i + 2, columns),
                                    file);
        }
        series.values.resize(complete);
    }
    return series.rows() > 0 ? std::optional(std::move(series)) : std::nullopt;
}

namespace {

double pH_of(double concentration, std::size_t row, const std::filesystem::path& file) {
    constexpr std::size_t first_line = 2; // behind the head
    if (!(concentration > 0)) {
        throw base::FileFailure(
            fmt::format("has a concentration of hydrogen ions of {} in line {}, which has no pH",
                        base::exact_text(concentration), row + first_line),
            file);
    }
    return -(std::log(concentration / 1000) / std::log(10.0));
}

void convert_row(Series& series, std::size_t row, bool with_pH, const std::filesystem::path& file) {
    for (int column = first_velocity; column <= last_velocity; ++column) {
        series.at(row, column) /= days_a_year;
    }
    if (with_pH) {
        series.at(row, pH_column) = pH_of(series.at(row, pH_column), row, file);
    }
}

} // namespace

std::optional<Series> LoadMatrix(std::string_view bytes, const std::filesystem::path& file,
                                 const StreamNames& names, base::Interaction& user) {
    auto series = read_series(bytes, file, column_count(names));
    if (!series) {
        return series;
    }
    int shown = -1;
    const bool with_pH = names.substances > 0 && names.shown_as_pH(1);
    for (std::size_t row = 0; row < series->rows(); ++row) {
        convert_row(*series, row, with_pH, file);
        if (const int percent = int((row + 1) * 100 / series->rows()); percent != shown) {
            shown = percent;
            user.show_meter(percent);
        }
    }
    return series;
}

base::Refusal file_structure_refusal(const std::filesystem::path& file) {
    return {base::desk_title, file.string() + " Error in file structure - "};
}

namespace {

std::string csv_field(const std::string& text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos) {
        return text;
    }
    std::string quoted = "\"";
    for (const char c : text) {
        quoted += c == '"' ? "\"\"" : std::string(1, c);
    }
    return quoted + "\"";
}

std::vector<std::string> headings_of(const Series& series, const StreamNames& names) {
    std::vector<std::string> headings;
    for (int column = 1; column <= series.columns; ++column) {
        headings.push_back(fmt::format("Column {}", column));
    }
    headings[time_column - 1] = "Time [days]";
    for (const SeriesColumn& column : series_columns(names)) {
        headings[std::size_t(column.number - 1)] =
            csv_field(std::string(base::trimmed(column.name + column.unit)));
    }
    return headings;
}

} // namespace

std::string series_csv(const Series& series, const StreamNames& names) {
    std::string text = fmt::format("{}\n", fmt::join(headings_of(series, names), ","));
    for (std::size_t row = 0; row < series.rows(); ++row) {
        for (int column = 1; column <= series.columns; ++column) {
            text += base::exact_text(series.at(row, column));
            text += column < series.columns ? "," : "\n";
        }
    }
    return text;
}

TimeChart LoadChart(const Series& series, const std::filesystem::path& result,
                    const StreamNames& names, const std::vector<std::string>& parameters,
                    bool show_another) {
    TimeChart chart{fmt::format(" Project file [{}]", base::file_name(result)),
                    " Time [days]",
                    series.column(time_column),
                    {}};
    for (const std::string& parameter : parameters) {
        const auto column = Select2DParamNumb(parameter, names);
        if (!column || column->number > series.columns) {
            throw base::RangeFailure(fmt::format("no column of the series is {}", parameter));
        }
        const bool right = show_another && chart.curves.size() == 1;
        chart.curves.push_back({column->name + column->unit + (right ? " on Y2" : " on Y1"), right,
                                series.column(column->number)});
    }
    return chart;
}

std::optional<base::Refusal> no_files_refusal(const std::vector<MonitoringFile>& files) {
    if (!files.empty()) {
        return std::nullopt;
    }
    return base::Refusal{temporal_title, "No Monitoring Files available."};
}

std::string temporal_parameter(std::string_view code, base::Interaction& user) {
    if (std::ranges::find(temporal_codes, code) != std::end(temporal_codes)) {
        return std::string(code);
    }
    user.message(base::Icon::information, base::desk_title,
                 "Sorry, but this Parameter can't be shown in Time View. Head will be shown "
                 "instead. You may choose another one. For details refer to documentation.");
    return "PHI";
}

} // namespace results

// Monitoring files: the series that the simulator writes at each Monitoring Point, and what a chart
// over time gets of them.
//
// One head line, then one line a time: time [days], a column without a name, ten parameters of the
// cell, substances, minerals.
#pragma once

#include "base/failure.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace base {
class Interaction;
}

namespace results {

struct StreamNames;

// The monitoring file of that extension ("100", without a dot) beside a result or input file.
std::filesystem::path monitoring_file(const std::filesystem::path& result,
                                      std::string_view extension);

struct MonitoringFile {
    int number = 1; // of the point, 1 to 100
    std::string extension;
    std::filesystem::path file;
};
// Those that exist, by number. Points that share a name are all listed.
std::vector<MonitoringFile> monitoring_files(const std::filesystem::path& result);

// Columns from 1. The parameters begin with column 3, the substances with column 13.
inline constexpr int time_column = 1;
inline constexpr int fixed_columns = 12;

struct SeriesColumn {
    int number = 1;
    std::string name; // "Head"
    std::string unit; // " [m]", as behind the name on an axis
};
// How many numbers a line has.
int column_count(const StreamNames& names);
// The columns that a chart can show: those with a name. Minerals that the model does not have in
// the current fluid keep their column and have no name.
std::vector<SeriesColumn> series_columns(const StreamNames& names);
// Column of a display name or a parameter code; nothing for a foreign one. "Heat Conductivity" is
// another name of "Thermal Conductivity".
std::optional<SeriesColumn> Select2DParamNumb(std::string_view name, const StreamNames& names);

// Numbers of a monitoring file, rows by time.
struct Series {
    int columns = 0;
    std::vector<double> values;

    std::size_t rows() const { return columns > 0 ? values.size() / std::size_t(columns) : 0; }
    double at(std::size_t row, int column) const {
        return values[row * std::size_t(columns) + std::size_t(column - 1)];
    }
    double& at(std::size_t row, int column) {
        return values[row * std::size_t(columns) + std::size_t(column - 1)];
    }
    std::vector<double> column(int number) const;
};

// The numbers as they stand, `columns` of each line. The data end with the file or at the first
// line behind the head whose number is 0, so that a first record at time 0 leaves none; a last line
// that is not complete yet does not count. Nothing when there is no record. FileFailure for a line
// with too few numbers that others follow.
std::optional<Series> read_series(std::string_view bytes, const std::filesystem::path& file,
                                  int columns);

// read_series with the conversions of the chart: velocities from metres a year to metres a day
// (365 days), the first substance of a model with chemistry to pH. FileFailure also for a pH of a
// concentration that is not positive.
std::optional<Series> LoadMatrix(std::string_view bytes, const std::filesystem::path& file,
                                 const StreamNames& names, base::Interaction& user);
// The box for a file without records.
base::Refusal file_structure_refusal(const std::filesystem::path& file);

// All columns as comma-separated values in UTF-8, names and units in the first line.
std::string series_csv(const Series& series, const StreamNames& names);

// What the chart over time gets.
struct TimeCurve {
    std::string legend; // "Head [m] on Y1"
    bool right_axis = false;
    std::vector<double> values; // one a time
};
struct TimeChart {
    std::string title; // " Project file [doublet.nlo]"
    std::string x_title;
    std::vector<double> times; // [days]
    std::vector<TimeCurve> curves;
};
// The chart of up to five parameters, by display name. With `show_another` the second one goes to
// the right axis. RangeFailure for a name that is none.
TimeChart LoadChart(const Series& series, const std::filesystem::path& result,
                    const StreamNames& names, const std::vector<std::string>& parameters,
                    bool show_another);

// Title of the view over time and of its boxes.
inline constexpr const char* temporal_title = "Temporal Development";
// Why the view does not open.
std::optional<base::Refusal> no_files_refusal(const std::vector<MonitoringFile>& files);
// The parameter code that the view begins with: `code`, or PHI, after a message, when that cannot
// be shown over time.
std::string temporal_parameter(std::string_view code, base::Interaction& user);

} // namespace results

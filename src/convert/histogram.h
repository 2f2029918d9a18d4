// How the cells of a parameter fall into classes, and the file <base>.his that keeps it.
#pragma once

#include "results/field.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace convert {

// The window's list of parameters, by list index from 0: "Pressure" to "Temperature".
std::span<const char* const> histogram_parameters();
// Nothing for a name that is not in the list.
std::optional<int> histogram_parameter(std::string_view name);

struct HistogramClass {
    float bound = 0; // the upper one, which belongs to the class
    std::int64_t frequency = 0;
    bool operator==(const HistogramClass&) const = default;
};

struct Histogram {
    std::string source; // the file box
    int parameter = 0;  // list index
    float mean = 0, deviation = 0, variance = 0;
    std::vector<HistogramClass> classes;
    bool operator==(const Histogram&) const = default;
};

// Counts of all cells in the stream's order: each value goes to the first class whose bound is at
// or above it; one above all bounds is in no class, but in the mean. Sums in single precision; the
// variance is that of the whole population. RangeFailure for a sum beyond the range of a single.
void Get_Frequency(const results::Field& field, Histogram& histogram);

// Counts the parameter of `histogram` in a result file. Velocities count in metres a day, all
// others as they are stored. False, with the messages of the search, when the grid or the block is
// not there; `histogram` is then as before.
bool count_classes(const std::filesystem::path& file, Histogram& histogram,
                   base::Interaction& user);

// The bytes of <base>.his: file and list index, number of classes, the three values, a line for
// each class.
std::string Save_Histogram_Data(const Histogram& histogram);
// FileFailure for a file that is cut off or damaged; `file` is named in it.
Histogram Load_Histogram_Data(std::string_view bytes, const std::filesystem::path& file);

} // namespace convert

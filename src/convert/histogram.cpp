#include "convert/histogram.h"

#include "base/failure.h"
#include "base/interaction.h"
#include "base/numbertext.h"
#include "base/textfile.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace convert {

namespace fs = std::filesystem;

using results::Field;
using results::FieldOrder;
using results::StreamReader;

namespace {

constexpr std::array<const char*, 9> names = {
    "Pressure", "Porosity", "Density", "Permeability", "Head", "VX", "VY", "VZ", "Temperature"};
constexpr std::array<const char*, names.size()> keywords = {
    "# PRES", "# POR", "# DICHTE", "# PERM", "# PHI", "# VX", "# VY", "# VZ", "# TEMP"};
constexpr double seconds_of_a_day = 86400;

// As the Result Viewer, but for the second message.
bool find_or_tell(StreamReader& stream, std::string_view sSearchWord, base::Interaction& user) {
    const bool found = results::jump_or_tell(stream, sSearchWord, user);
    if (!found) {
        user.message(base::Icon::warning, base::desk_title,
                     fmt::format("Error in output file structure: Can't find {}", sSearchWord));
    }
    return found;
}

bool is_velocity(std::string_view keyword) {
    return keyword.starts_with("# V");
}

std::optional<Field> Get_Matrix_from_NLO(const fs::path& file, const char* keyword,
                                         base::Interaction& user) {
    StreamReader stream(file);
    for (const char* count : {"# I0", "# J0", "# K0"}) {
        if (!find_or_tell(stream, count, user)) {
            return std::nullopt;
        }
    }
    stream.rewind();
    const auto grid = results::read_stream_grid(stream, user);
    stream.rewind();
    if (!grid || !find_or_tell(stream, keyword, user)) {
        return std::nullopt;
    }
    const auto per_day = [](std::span<float> row) {
        std::ranges::transform(row, row.begin(), [](float value) {
            return static_cast<float>(double{value} * seconds_of_a_day);
        });
    };
    return results::read_field(
        stream, *grid, FieldOrder::stream, results::RepeatCount::strict_32, keyword,
        is_velocity(keyword) ? results::RowConversion(per_day) : results::RowConversion(), user);
}

template <class Visit>
void for_each_value(const Field& field, Visit visit) {
    for (int layer = 1; layer <= field.nK(); ++layer) {
        for (int row = 1; row <= field.nJ(); ++row) {
            for (const float value : field.row(layer, row)) {
                visit(value);
            }
        }
    }
}

void add_single(float& sum, double term) {
    const double added = double{sum} + term;
    if (!(std::abs(added) <= double{std::numeric_limits<float>::max()})) {
        throw base::RangeFailure("a sum over the cells is beyond the range of a single");
    }
    sum = static_cast<float>(added);
}

float per_cell(double sum, const Field& field) {
    return static_cast<float>(sum / static_cast<double>(field.grid().cells()));
}

std::string_view next_field(std::string_view& rest) {
    const std::size_t end = std::min(rest.find(','), rest.size());
    const std::string_view field = base::trimmed(rest.substr(0, end));
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return field;
}

// The lines of a .his one after the other.
class Lines {
public:
    Lines(std::string_view bytes, const fs::path& file)
        : file_(file), lines_(base::text_lines(bytes)) {}

    const std::string& next(std::string_view what) {
        if (at_ == lines_.size()) {
            throw base::FileFailure(
                fmt::format("ends at line {}, where {} was expected", at_ + 1, what), file_);
        }
        return lines_[at_++];
    }
    int integer(std::string_view text, std::string_view what, std::size_t low,
                std::size_t high) const {
        const auto number = base::leading_int32(text);
        if (number < static_cast<std::int64_t>(low) || number > static_cast<std::int64_t>(high)) {
            throw base::FileFailure(fmt::format("line {}: {} is \"{}\", where {} to {} was "
                                                "expected",
                                                at_, what, text, low, high),
                                    file_);
        }
        return number;
    }
    std::size_t left() const { return lines_.size() - at_; }

private:
    fs::path file_;
    std::vector<std::string> lines_;
    std::size_t at_ = 0;
};

} // namespace

std::span<const char* const> histogram_parameters() {
    return names;
}

std::optional<int> histogram_parameter(std::string_view name) {
    const auto found =
        std::ranges::find(names, name, [](const char* n) { return std::string_view(n); });
    return found != names.end() ? std::optional(static_cast<int>(found - names.begin()))
                                : std::nullopt;
}

void Get_Frequency(const Field& field, Histogram& histogram) {
    for (HistogramClass& row : histogram.classes) {
        row.frequency = 0;
    }
    float sum = 0;
    for_each_value(field, [&](float value) {
        add_single(sum, double{value});
        const auto row = std::ranges::find_if(
            histogram.classes, [&](const HistogramClass& c) { return c.bound >= value; });
        if (row != histogram.classes.end()) {
            ++row->frequency;
        }
    });
    histogram.mean = per_cell(double{sum}, field);
    float squares = 0;
    for_each_value(field, [&](float value) {
        const double distance = double{histogram.mean - value};
        add_single(squares, distance * distance);
    });
    histogram.variance = per_cell(double{squares}, field);
    histogram.deviation = std::sqrt(histogram.variance);
}

bool count_classes(const fs::path& file, Histogram& histogram, base::Interaction& user) {
    user.status("Count Parameter Frequency");
    const auto field =
        Get_Matrix_from_NLO(file, keywords.at(static_cast<std::size_t>(histogram.parameter)), user);
    if (!field) {
        return false;
    }
    Histogram counted = histogram;
    Get_Frequency(*field, counted);
    histogram = std::move(counted);
    return true;
}

std::string Save_Histogram_Data(const Histogram& histogram) {
    std::vector<std::string> lines{fmt::format("{}, {}", histogram.source, histogram.parameter),
                                   fmt::to_string(histogram.classes.size()),
                                   fmt::format("{}, {}, {}", base::value_text(histogram.mean),
                                               base::value_text(histogram.deviation),
                                               base::value_text(histogram.variance))};
    for (const HistogramClass& row : histogram.classes) {
        lines.push_back(fmt::format("{}, {}", base::exact_text(row.bound), row.frequency));
    }
    return base::to_text_file(lines);
}

Histogram Load_Histogram_Data(std::string_view bytes, const fs::path& file) {
    Lines lines(bytes, file);
    Histogram histogram;
    const std::string& head = lines.next("the file and the parameter");
    const std::size_t comma = std::min(head.rfind(','), head.size());
    histogram.source = base::trimmed(std::string_view(head).substr(0, comma));
    histogram.parameter =
        lines.integer(std::string_view(head).substr(std::min(comma + 1, head.size())),
                      "the parameter", 0, names.size() - 1);
    const std::string& count = lines.next("the number of classes");
    const std::size_t most = std::max<std::size_t>(lines.left(), 1) - 1;
    const int classes = lines.integer(count, "the number of classes", 0, most);
    std::string_view values = lines.next("mean, deviation and variance");
    for (float* value : {&histogram.mean, &histogram.deviation, &histogram.variance}) {
        *value = base::leading_single(next_field(values));
    }
    for (int n = 0; n < classes; ++n) {
        std::string_view row = lines.next("a class");
        const float bound = base::leading_single(next_field(row));
        histogram.classes.push_back({bound, base::leading_int32(next_field(row))});
    }
    return histogram;
}

} // namespace convert

// Levels of contour lines: the table of levels, its file <base>.ctr, how it is made and labelled.
#pragma once

#include "base/failure.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace core {
class Project;
}

namespace plot {

struct Contour_Level {
    float level = 0;
    std::int32_t line = 0; // colour of the line
    std::int32_t fill = 0; // colour of the band above the level
    bool label = false;
    float label_height = 0;  // metres
    float label_spacing = 0; // metres along the line
};
using ContourLevels = std::vector<Contour_Level>;

inline constexpr int max_levels = 1000;

// .ctr: a 16-bit count, then 22 bytes a level. Nothing for bytes of another length than the count
// asks for.
std::optional<ContourLevels> levels_from_bytes(std::string_view bytes);
// RangeFailure for more levels than the count can hold.
std::string levels_bytes(std::span<const Contour_Level> levels);
base::Refusal no_contour_file(const std::filesystem::path& file);

// What the dialog "Contour Levels" asks for.
struct LevelRange {
    double minimum = 0, maximum = 0, interval = 0;
};
std::optional<base::Refusal> range_refusal(const LevelRange& range);
// From the minimum up to the maximum, without labels and colours; for an accepted range.
ContourLevels make_levels(const LevelRange& range);

// Levels of an accepted range in place of others, which they take colours and label sizes from: the
// colours blend from those of the first level to those of the last. All are labelled.
ContourLevels make_levels(const LevelRange& range, std::span<const Contour_Level> old);

struct ColourRange {
    std::int32_t low = 0, high = 0;
};
// Linear blends from the first level to the last.
void set_colours(std::span<Contour_Level> levels, const ColourRange& line, const ColourRange& fill);

// What the dialog "Contour Labels" asks for: the first labelled level (from 1) and the distance to
// the next one, in levels.
struct LabelChoice {
    int first = 1, frequency = 1;
};
std::optional<base::Refusal> labels_refusal(const LabelChoice& choice, std::size_t levels);
void choose_labels(std::span<Contour_Level> levels, const LabelChoice& choice);

// The dialog that gives all rows of the column "Label Height" or "Label Spacing" one value.
std::optional<base::Refusal> label_size_refusal(std::string_view column, std::string_view text);
void set_label_sizes(std::span<Contour_Level> levels, float height, float spacing);

// "Restore Defaults": 11 levels from the least to the largest value, all labelled, in the project's
// colours. One level where they are equal. `width` and `height` of the grid in metres.
ContourLevels default_levels(float least, float largest, double width, double height,
                             const core::Project& project);

// How a level is written beside its line.
struct LabelFormat {
    bool fixed = true; // otherwise with an exponent
    int decimals = 2;  // 0 to 9
    std::string prefix, suffix;

    LabelFormat() = default;
    // The project's section CONTOURS.
    explicit LabelFormat(const core::Project& project);
    void save(core::Project& project) const;
};
std::optional<base::Refusal> decimals_refusal(int decimals);
std::string label_text(const LabelFormat& format, float level);

} // namespace plot

#include "plot/contourlevels.h"

#include "base/binaryio.h"
#include "base/numbertext.h"
#include "core/project.h"
#include "plot/colourtable.h"
#include "plot/plotdevice.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace plot {

namespace {

constexpr std::size_t count_size = 2, record_size = 22;
constexpr int default_count = 11;
constexpr const char* levels_title = "Contour Levels";
constexpr const char* labels_title = "Contour Labels";
constexpr const char* not_positive = "Value must be > 0";

double level_count(const LevelRange& range) {
    return std::floor((range.maximum - range.minimum) / range.interval + 1E-6) + 1;
}

Contour_Level read_level(base::ByteReader& reader) {
    Contour_Level level;
    level.level = reader.single("a level");
    level.line = reader.int32("the colour of a line");
    level.fill = reader.int32("the colour of a band");
    level.label = reader.int16("the mark of a label") != 0;
    level.label_height = reader.single("the height of a label");
    level.label_spacing = reader.single("the spacing of labels");
    return level;
}

} // namespace

std::optional<ContourLevels> levels_from_bytes(std::string_view bytes) {
    if (bytes.size() < count_size) {
        return std::nullopt;
    }
    base::ByteReader reader(bytes, {});
    const std::int16_t count = reader.int16("the number of levels");
    if (count < 0 || reader.remaining() != record_size * static_cast<std::size_t>(count)) {
        return std::nullopt;
    }
    ContourLevels levels;
    for (int n = 0; n < count; ++n) {
        levels.push_back(read_level(reader));
    }
    return levels;
}

std::string levels_bytes(std::span<const Contour_Level> levels) {
    if (levels.size() > std::numeric_limits<std::int16_t>::max()) {
        throw base::RangeFailure("more levels than a contour file can hold");
    }
    base::ByteWriter writer;
    writer.int16(static_cast<std::int16_t>(levels.size()));
    for (const Contour_Level& level : levels) {
        writer.single(level.level);
        writer.int32(level.line);
        writer.int32(level.fill);
        writer.int16(level.label ? -1 : 0);
        writer.single(level.label_height);
        writer.single(level.label_spacing);
    }
    return writer.data();
}

base::Refusal no_contour_file(const std::filesystem::path& file) {
    return {"Open File", file.string() + " is not a contour file!"};
}

std::optional<base::Refusal> range_refusal(const LevelRange& range) {
    if (range.minimum > range.maximum) {
        return base::Refusal{levels_title, "Minimum > Maximum"};
    }
    if (!(range.interval > 0)) {
        return base::Refusal{levels_title, not_positive};
    }
    if (!(level_count(range) <= max_levels)) {
        return base::Refusal{levels_title, fmt::format("Valid range is 1 to {}", max_levels)};
    }
    return std::nullopt;
}

ContourLevels make_levels(const LevelRange& range) {
    ContourLevels levels(static_cast<std::size_t>(level_count(range)));
    for (std::size_t n = 0; n < levels.size(); ++n) {
        levels[n].level = to_single(range.minimum + static_cast<double>(n) * range.interval);
    }
    return levels;
}

void set_colours(std::span<Contour_Level> levels, const ColourRange& line,
                 const ColourRange& fill) {
    const int count = static_cast<int>(levels.size());
    for (int n = 0; n < count; ++n) {
        levels[static_cast<std::size_t>(n)].line = blended(line.low, line.high, n, count);
        levels[static_cast<std::size_t>(n)].fill = blended(fill.low, fill.high, n, count);
    }
}

ContourLevels make_levels(const LevelRange& range, std::span<const Contour_Level> old) {
    ContourLevels levels = make_levels(range);
    if (!old.empty()) {
        set_colours(levels, {old.front().line, old.back().line},
                    {old.front().fill, old.back().fill});
        set_label_sizes(levels, old.front().label_height, old.front().label_spacing);
    }
    choose_labels(levels, {});
    return levels;
}

std::optional<base::Refusal> labels_refusal(const LabelChoice& choice, std::size_t levels) {
    if (choice.first < 1 || static_cast<std::size_t>(choice.first) > levels) {
        return base::Refusal{labels_title, fmt::format("Valid range is 1 to {}", levels)};
    }
    if (choice.frequency <= 0) {
        return base::Refusal{labels_title, not_positive};
    }
    return std::nullopt;
}

void choose_labels(std::span<Contour_Level> levels, const LabelChoice& choice) {
    const auto first = static_cast<std::size_t>(choice.first - 1);
    const auto frequency = static_cast<std::size_t>(choice.frequency);
    for (std::size_t n = 0; n < levels.size(); ++n) {
        levels[n].label = n >= first && (n - first) % frequency == 0;
    }
}

std::optional<base::Refusal> label_size_refusal(std::string_view column, std::string_view text) {
    const auto value = base::whole_number(text);
    if (!value) {
        return base::Refusal{std::string(column), "Please enter a valid value"};
    }
    if (!(*value > 0)) {
        return base::Refusal{std::string(column), not_positive};
    }
    return std::nullopt;
}

void set_label_sizes(std::span<Contour_Level> levels, float height, float spacing) {
    for (Contour_Level& level : levels) {
        level.label_height = height;
        level.label_spacing = spacing;
    }
}

ContourLevels default_levels(float least, float largest, double width, double height,
                             const core::Project& project) {
    const double step = (double{largest} - least) / (default_count - 1);
    ContourLevels levels(step > 0 ? default_count : 1);
    for (std::size_t n = 0; n < levels.size(); ++n) {
        levels[n].level = to_single(least + static_cast<double>(n) * step);
    }
    const auto colour = [&](const char* key) { return project.integer("COLOR", key); };
    set_colours(levels, {colour("MinContour"), colour("MaxContour")},
                {colour("MinFill"), colour("MaxFill")});
    choose_labels(levels, {});
    const double label_height = (width + height) / 100;
    set_label_sizes(levels, to_single(label_height), to_single(10 * label_height));
    return levels;
}

LabelFormat::LabelFormat(const core::Project& project)
    : fixed(project.integer("CONTOURS", "LabelStyle") != 0),
      decimals(std::clamp(project.integer("CONTOURS", "Decimal"), 0, 9)),
      prefix(project.text("CONTOURS", "LabelPrefix")),
      suffix(project.text("CONTOURS", "LabelSuffix")) {}

void LabelFormat::save(core::Project& project) const {
    project.set_integer("CONTOURS", "LabelStyle", fixed ? 1 : 0);
    project.set_integer("CONTOURS", "Decimal", decimals);
    project.set_text("CONTOURS", "LabelPrefix", prefix);
    project.set_text("CONTOURS", "LabelSuffix", suffix);
}

std::optional<base::Refusal> decimals_refusal(int decimals) {
    if (decimals < 0 || decimals > 9) {
        return base::Refusal{"Label Format", "Valid range is 0 to 9"};
    }
    return std::nullopt;
}

std::string label_text(const LabelFormat& format, float level) {
    // The digits of a single, not those of the double next to it.
    const double value = base::leading_number(base::value_text(level));
    const std::string places(static_cast<std::size_t>(format.decimals), '0');
    const std::string mask = format.fixed ? "##########0." + places : "0." + places + "E+00";
    return format.prefix + base::masked(value, mask) + format.suffix;
}

} // namespace plot

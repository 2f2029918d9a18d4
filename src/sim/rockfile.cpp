#include "sim/rockfile.h"

#include "base/failure.h"
#include "base/textfile.h"
#include "core/modelfiles.h"

#include <algorithm>
#include <array>

#include <fmt/format.h>

namespace sim {

namespace {

struct LineInfo {
    const char* label;
    const char* initial; // of a zone; empty on the heads of the blocks
};

// A new file. The misspelt "ANIOSJ" stays until the flow properties are saved for the first time.
constexpr std::array<LineInfo, rock::Minerals> line_table = {{
    {"Fluid Flow", ""},
    {"Por", "0.25"},
    {"Perm", "1E-12"},
    {"Anisotropy", ""},
    {"ANISOI", "1."},
    {"ANIOSJ", "1."},
    {"XANG", "0."},
    {"YANG", "0."},
    {"Heat", ""},
    {"RhoCm", "2.06"},
    {"Cond", "2.9"},
    {"HPF", "0."},
    {"WLXANI", "1."},
    {"WLYANI", "1."},
    {"LOOK MIN", ""},
}};

constexpr const char* unused_mineral_line = "               ";
constexpr const char* new_mineral_content = "0.";
constexpr int head_lines = rock::WLYANI;
constexpr std::size_t label_width = 10;

// Columns from 0.
struct Place {
    std::size_t column;
    std::size_t width;
};

Place place_of(int line, int zone) {
    if (zone < 1)
        throw base::RangeFailure(fmt::format("zone {} of a rock file does not exist", zone));
    const auto z = std::size_t(zone);
    return line == rock::Perm ? Place{20 * z - 10, 20} : Place{10 * z, 10};
}

// Where the fields behind the zones of a mineral line begin.
std::size_t column_behind_zones(int zones) {
    return place_of(rock::Minerals, zones + 1).column;
}

std::string padded(std::string text, std::size_t width) {
    const std::size_t count = base::character_count(text);
    return text.append(width > count ? width - count : 0, ' ');
}

std::string rest_behind(std::string_view line, std::size_t column) {
    return std::string(line.substr(base::first_characters(line, column).size()));
}

// `text` must not be longer than `place`.
void put_at(std::string& line, Place place, std::string_view text) {
    const std::string tail = rest_behind(line, place.column + place.width);
    line = padded(base::first_characters(line, place.column), place.column);
    line += padded(std::string(text), place.width) + tail;
    line.erase(base::trimmed_right(line, " ").size());
}

std::string without_line_ends(std::string_view text) {
    std::string line(text);
    std::replace(line.begin(), line.end(), '\r', ' ');
    std::replace(line.begin(), line.end(), '\n', ' ');
    return line;
}

// A text that is too long leaves a blank, so that it does not run into the next field.
std::string fitted(std::string_view text, std::size_t width) {
    std::string whole(base::trimmed(without_line_ends(text)));
    return base::character_count(whole) > width ? base::first_characters(whole, width - 1) : whole;
}

std::string new_line(int number) {
    return number <= rock::Minerals ? line_table[std::size_t(number - 1)].label
                                    : unused_mineral_line;
}

bool is_mineral(std::string_view line) {
    return !line.empty() && line.front() != ' ';
}

std::string mineral_line_of(const std::string& line, int old_zones, int zones) {
    const std::size_t kept = column_behind_zones(std::min(old_zones, zones));
    std::string moved = padded(base::first_characters(line, kept), kept);
    for (int zone = old_zones + 1; zone <= zones; ++zone)
        moved += padded(new_mineral_content, place_of(rock::Minerals, zone).width);
    moved += rest_behind(line, column_behind_zones(old_zones));
    return std::string(base::trimmed_right(moved, " "));
}

} // namespace

RockFile::RockFile(int zones) {
    for (int number = 1; number <= rock::line_count; ++number)
        lines_.push_back(new_line(number));
    set_zones(zones);
}

RockFile RockFile::read(std::string_view bytes, const std::filesystem::path& file) {
    RockFile result(base::text_lines(bytes));
    if (result.lines() < head_lines)
        throw base::FileFailure(
            fmt::format("ends behind line {}, where line {} of {} ({}) was expected",
                        result.lines(), result.lines() + 1, head_lines,
                        line_table[result.lines_.size()].label),
            file);
    return result;
}

RockFile RockFile::load(const core::ModelFiles& files) {
    const auto bytes = files.read_if(".mco");
    return bytes ? read(*bytes, files.name_of(".mco")) : RockFile();
}

void RockFile::save(core::ModelFiles& files) const {
    files.write(".mco", bytes());
}

std::string RockFile::bytes() const {
    return base::to_text_file(lines_);
}

int RockFile::zones() const {
    int count = 0;
    for (int zone = 1; zone <= PropertyZonesMax; ++zone)
        count += field(rock::Por, zone).empty() ? 0 : 1;
    return count;
}

bool RockFile::holds_values(int line) const {
    if (line == rock::Compress)
        return has_compressibilities();
    return *line_table[std::size_t(line - 1)].initial != '\0';
}

void RockFile::fit_values(int line, int old_zones, int zones) {
    std::string& text = line_to_change(line);
    text = base::first_characters(text, place_of(line, zones + 1).column);
    text.erase(base::trimmed_right(text, " ").size());
    for (int zone = 1; zone <= zones; ++zone)
        if (field(line, zone).empty() && (zone > old_zones || line == rock::Por))
            set_field(line, zone, line_table[std::size_t(line - 1)].initial);
}

void RockFile::set_zones(int zones) {
    if (zones < 1 || zones > PropertyZonesMax)
        throw base::RangeFailure(
            fmt::format("{} Property Zones are not one of 1 to {}", zones, PropertyZonesMax));
    const int old_zones = this->zones();
    if (zones == old_zones)
        return;
    for (int line = 1; line <= head_lines; ++line)
        if (holds_values(line))
            fit_values(line, old_zones, zones);
    const std::size_t end = std::min(lines_.size(), std::size_t(rock::line_count));
    for (std::size_t i = rock::Minerals; i < end; ++i)
        if (is_mineral(lines_[i]))
            lines_[i] = mineral_line_of(lines_[i], old_zones, zones);
}

std::string RockFile::field(int line, int zone) const {
    const Place place = place_of(line, zone);
    return std::string(
        base::trimmed(base::fixed_field(this->line(line), place.column, place.width)));
}

void RockFile::set_field(int line, int zone, std::string_view text) {
    const Place place = place_of(line, zone);
    put_at(line_to_change(line), place, fitted(text, place.width));
}

std::string RockFile::label(int line) const {
    return std::string(base::trimmed(base::fixed_field(this->line(line), 0, label_width)));
}

void RockFile::set_label(int line, std::string_view label) {
    put_at(line_to_change(line), {0, label_width}, base::first_characters(label, label_width));
}

const std::string& RockFile::line(int number) const {
    static const std::string none;
    if (number < 1)
        throw base::RangeFailure(fmt::format("line {} of a rock file does not exist", number));
    return number <= lines() ? lines_[std::size_t(number - 1)] : none;
}

std::string& RockFile::line_to_change(int number) {
    static_cast<void>(line(number));
    while (lines() < number)
        lines_.push_back(new_line(lines() + 1));
    return lines_[std::size_t(number - 1)];
}

void RockFile::set_line(int number, std::string_view text) {
    line_to_change(number) = without_line_ends(text);
}

bool RockFile::has_compressibilities() const {
    return line(rock::Compress).starts_with("Compress");
}

int PropertyZonesCount(const core::ModelFiles& files) {
    return files.has(".mco") ? RockFile::load(files).zones() : PropertyZonesMax;
}

} // namespace sim

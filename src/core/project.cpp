#include "core/project.h"

#include "base/failure.h"
#include "base/inifile.h"
#include "base/numbertext.h"
#include "base/textfile.h"
#include "core/modelfiles.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <map>

namespace core {

namespace {

constexpr int written_version = 5000;
constexpr std::size_t title_limit = 132;
constexpr std::string_view maps_section = "DXF_MAPS";
// The maps stand in front of this section.
constexpr std::string_view section_behind_maps = "GeoReference";
constexpr std::string_view flags_section = "MENUSTATE";
constexpr std::string_view map_file_key = "FILE#";
constexpr int most_maps = 100; // a file that numbers on is not searched any further

// By GridOrientation.
constexpr std::array<std::string_view, 4> orientation_prefixes = {"Horizontal - ", "Vertical - ",
                                                                  "Cylindrical - ", "GHE - "};

std::string flag_key(int a, int b) {
    return fmt::format("MENU_{}_{}", a, b);
}

// What a line of the file can hold: no line ends, no blanks at the ends, so that reading the line
// gives the same text again.
std::string kept_text(std::string_view text, std::size_t limit) {
    std::string line(base::trimmed(text));
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c >= 0 && c < ' ' && c != '\t'; }, ' ');
    return std::string(base::trimmed(base::first_characters(base::trimmed(line), limit)));
}

// Calls `action(a, b)` for every cell of the flags, row by row.
template <typename Action>
void for_each_cell(Action action) {
    for (int a = 0; a < ModelFlags::size; ++a) {
        for (int b = 0; b < ModelFlags::size; ++b) {
            action(a, b);
        }
    }
}

// The number of a map by the key of its file, "3FILE#"; nothing for other keys.
std::optional<int> map_number(std::string_view key) {
    if (key.size() <= map_file_key.size() ||
        !base::same_ignoring_case(key.substr(key.size() - map_file_key.size()), map_file_key)) {
        return std::nullopt;
    }
    key.remove_suffix(map_file_key.size());
    const int number = base::leading_int16(key);
    const bool counts = number > 0 && number <= most_maps && key == std::to_string(number);
    return counts ? std::optional(number) : std::nullopt;
}

DxfMap read_map(const base::IniFile& file, int number) {
    const auto text = [&](std::string_view key, std::string_view initial) {
        return file.get(maps_section, fmt::format("{}{}", number, key))
            .value_or(std::string(initial));
    };
    DxfMap map;
    map.number = number;
    map.file = kept_text(text(map_file_key, ""), KeyInfo{}.limit);
    map.shift_x = base::leading_single(text("SHIFT_X", "0"));
    map.shift_y = base::leading_single(text("SHIFT_Y", "0"));
    map.factor = base::leading_single(text("FACTOR", "1"));
    map.display = base::leading_number(text("DISPLAY", "0")) != 0 ? -1 : 0;
    map.colour = base::leading_int32(text("COLOR", "0"));
    return map;
}

std::vector<DxfMap> read_maps(const base::IniFile& file) {
    std::map<int, DxfMap> by_number;
    for (const std::string& key : file.keys(maps_section)) {
        const auto number = map_number(key);
        if (number && !by_number.contains(*number)) {
            by_number[*number] = read_map(file, *number);
        }
    }
    std::vector<DxfMap> maps;
    for (auto& [number, map] : by_number) {
        if (!map.file.empty()) {
            maps.push_back(std::move(map));
        }
    }
    return maps;
}

void add_map(std::vector<Project::Entry>& entries, const DxfMap& map) {
    const auto add = [&](std::string_view key, std::string value) {
        entries.push_back({std::string(maps_section), fmt::format("{}{}", map.number, key),
                           std::move(value), false});
    };
    add(map_file_key, map.file);
    add("SHIFT_X", base::bare_text(map.shift_x));
    add("SHIFT_Y", base::bare_text(map.shift_y));
    add("FACTOR", base::bare_text(map.factor));
    add("DISPLAY", std::to_string(map.display));
    add("COLOR", std::to_string(map.colour));
}

} // namespace

Project::Project() {
    for (const KeyInfo& key : project_keys()) {
        values_.push_back(converted(key, key.initial));
    }
    set_cells_of_reading();
}

Project Project::read(std::string_view bytes) {
    const base::IniFile file(bytes);
    Project project;
    if (const auto version = file.get("VERSION", "NUMBER")) {
        project.version_ = base::leading_int32(*version);
    }
    project.read_values(file);
    project.maps_ = read_maps(file);
    project.read_flags(file);
    project.set_cells_of_reading();
    return project;
}

void Project::read_values(const base::IniFile& file) {
    const auto keys = project_keys();
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (keys[i].use == KeyUse::write_only) {
            continue;
        }
        if (const auto text = file.get(keys[i].section, keys[i].key)) {
            values_[i] = converted(keys[i], *text);
        }
    }
}

void Project::read_flags(const base::IniFile& file) {
    for_each_cell([&](int a, int b) {
        if (const auto text = file.get(flags_section, flag_key(a, b))) {
            flags.set(a, b, base::leading_int16(*text));
        }
    });
}

// They hold the same in every model, whatever its file says.
void Project::set_cells_of_reading() {
    flags.mark_defined(7, 14);
    flags.set(5, 14, 1);
    flags.set(6, 14, 1);
}

Project::Value Project::converted(const KeyInfo& key, std::string_view text) {
    const auto whole = [](int number) { return Value{std::to_string(number), double(number)}; };
    switch (key.kind) {
    case KeyKind::int16:
        return whole(base::leading_int16(text));
    case KeyKind::flag:
        return whole(base::leading_number(text) != 0 ? -1 : 0);
    case KeyKind::colour:
        return whole(base::leading_int32(text));
    case KeyKind::single: {
        const float number = base::leading_single(text);
        return {base::bare_text(number), double{number}};
    }
    case KeyKind::text:
        break;
    }
    return {kept_text(text, key.limit), 0};
}

std::size_t Project::index_of(std::string_view section, std::string_view key) {
    const auto index = find_project_key(section, key);
    if (!index) {
        throw base::RangeFailure(
            fmt::format("the project file has no key \"{}\" in section \"{}\"", key, section));
    }
    return *index;
}

double Project::number(std::string_view section, std::string_view key, KeyKind widest) const {
    const std::size_t index = index_of(section, key);
    if (project_keys()[index].kind > widest) { // kinds ascend from integers to texts
        throw base::RangeFailure(fmt::format(
            "the project key \"{}\" in section \"{}\" is read as another kind", key, section));
    }
    return values_[index].number;
}

int Project::integer(std::string_view section, std::string_view key) const {
    return static_cast<int>(number(section, key, KeyKind::colour));
}

float Project::single(std::string_view section, std::string_view key) const {
    return static_cast<float>(number(section, key, KeyKind::single));
}

const std::string& Project::text(std::string_view section, std::string_view key) const {
    return values_[index_of(section, key)].text;
}

void Project::set_integer(std::string_view section, std::string_view key, int value) {
    set_text(section, key, std::to_string(value));
}

void Project::set_single(std::string_view section, std::string_view key, float value) {
    const std::size_t index = index_of(section, key);
    values_[index] = converted(project_keys()[index], base::bare_text(value));
    if (project_keys()[index].kind == KeyKind::single) {
        values_[index].number = double{value}; // all its digits, as long as the model is held
    }
}

void Project::set_text(std::string_view section, std::string_view key, std::string_view value) {
    const std::size_t index = index_of(section, key);
    values_[index] = converted(project_keys()[index], value);
}

bool Project::set_from_text(std::string_view section, std::string_view key,
                            std::string_view value) {
    if (const auto index = find_project_key(section, key)) {
        values_[*index] = converted(project_keys()[*index], value);
        return true;
    }
    bool found = false;
    if (base::same_ignoring_case(section, flags_section)) {
        for_each_cell([&](int a, int b) {
            if (base::same_ignoring_case(key, flag_key(a, b))) {
                flags.set(a, b, base::leading_int16(value));
                found = true;
            }
        });
    }
    return found;
}

std::string Project::written_text(std::size_t index) const {
    const bool below_one = values_[index].number < 1;
    return project_keys()[index].use == KeyUse::from_one && below_one ? "1" : values_[index].text;
}

std::vector<Project::Entry> Project::entries() const {
    std::vector<Entry> entries;
    entries.push_back({"VERSION", "NUMBER", std::to_string(written_version)});
    bool maps_are_due = true;
    const auto keys = project_keys();
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (maps_are_due && keys[i].section == section_behind_maps) {
            std::for_each(maps_.begin(), maps_.end(),
                          [&](const DxfMap& map) { add_map(entries, map); });
            maps_are_due = false;
        }
        entries.push_back({std::string(keys[i].section), std::string(keys[i].key), written_text(i),
                           keys[i].use != KeyUse::read_only});
    }
    for_each_cell([&](int a, int b) {
        entries.push_back(
            {std::string(flags_section), flag_key(a, b), std::to_string(flags(a, b))});
    });
    return entries;
}

std::string Project::bytes(std::string_view old_bytes) const {
    base::IniFile file(old_bytes);
    for (const Entry& entry : entries()) {
        if (entry.written) {
            file.set(entry.section, entry.key, entry.value);
        }
    }
    return file.bytes();
}

void Project::Write_Project_File(ModelFiles& files) const {
    const bool exists = files.has_file(files.project());
    files.write_project(bytes(exists ? files.read_project() : std::string()));
}

std::string with_orientation_prefix(std::string_view title, int GridOrientation) {
    title = base::trimmed(title);
    for (const std::string_view prefix : orientation_prefixes) {
        // A title that was nothing but its prefix has lost the last blank in the file.
        if (title.starts_with(prefix) || title == base::trimmed(prefix)) {
            title.remove_prefix(std::min(prefix.size(), title.size()));
            break;
        }
    }
    const auto orientation = static_cast<std::size_t>(GridOrientation);
    std::string full(orientation < orientation_prefixes.size() ? orientation_prefixes[orientation]
                                                               : std::string_view());
    return base::first_characters(full.append(title), title_limit);
}

} // namespace core

#include "results/viewersettings.h"

#include "base/failure.h"
#include "base/interaction.h"
#include "base/numbertext.h"
#include "base/paths.h"
#include "base/textfile.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

namespace results {

namespace {

using enum SettingKind;

constexpr std::array<SettingInfo, viewer_setting_count> table = {{
    {"XAngle", angle, "45"},
    {"YAngle", angle, "0"},
    {"ZAngle", angle, "45"},
    {"XSpin", check, "0"},
    {"YSpin", check, "0"},
    {"ZSpin", check, "0"},
    {"XXY", check, "0"},
    {"YXY", check, "0"},
    {"ZXZ", check, "0"},
    {"XXZ", check, "0"},
    {"YYZ", check, "0"},
    {"ZYZ", check, "0"},
    {"PRES", parameter, "False"},
    {"POR", parameter, "False"},
    {"DICHTE", parameter, "False"},
    {"PERM", parameter, "False"},
    {"VX", parameter, "False"},
    {"VY", parameter, "False"},
    {"VZ", parameter, "False"},
    {"TEMP", parameter, "True"},
    {"CONC", parameter, "False"},
    {"SpeciesName", text, "Element"},
    {"CONCM", parameter, "False"},
    {"MineralName", text, "Mineral"},
    {"PHI", parameter, "False"},
    {"OTHER", parameter, "False"},
    {"OtherName", text, ""},
    {"XScale", text, "100"},
    {"YScale", text, "100"},
    {"Layer", text, "1"},
    {"CutX", cut, "False"},
    {"CutY", cut, "False"},
    {"CutZ", cut, "True"},
    {"Mesh", check, "1"},
    {"Shaded", check, "1"},
    {"Contour", check, "0"},
    {"Zones", check, "1"},
    {"Solid", check, "0"},
    {"HiddenLines", check, "0"},
    {"XMesh", check, "1"},
    {"YMesh", check, "1"},
    {"Legend", check, "1"},
    {"DoubleBuffer", check, "1"},
    {"ContouredFloor", check, "0"},
    {"ZonedFloor", check, "0"},
    {"Perspective", text, "2.5"},
    {"PlotType", plot, "0"},
}};

constexpr std::size_t axis_count = 3;
constexpr std::size_t first_spin = 3; // behind the three angles
constexpr double full_turn = 360;

constexpr std::array<const char*, axis_count> invalid_texts = {
    " The input file has changed!\n All parameters will be set to the default value! ",
    " Your input file has changed!\n All parameters are default! ",
    " You have a new version from input file!\n All parameters are default! ",
};

std::size_t index_of(std::string_view name) {
    return static_cast<std::size_t>(
        std::ranges::find(table, name,
                          [](const SettingInfo& s) { return std::string_view(s.name); }) -
        table.begin());
}

bool is_option(SettingKind kind) {
    return kind == parameter || kind == cut;
}

bool is_number_of_two(SettingKind kind) {
    return kind == check || kind == plot;
}

// The fields of a file: they end at a comma or a line end; one in quotes ends with its quote.
class FieldReader {
public:
    explicit FieldReader(std::string_view rest) : rest_(rest) {}

    // Without the blanks around it; nothing at the end of the file.
    std::optional<std::string_view> next() {
        if (rest_.empty()) {
            return std::nullopt;
        }
        rest_.remove_prefix(std::min(rest_.find_first_not_of(' '), rest_.size()));
        std::string_view quoted;
        const bool in_quotes = rest_.starts_with('"');
        if (in_quotes) {
            quoted = rest_.substr(1, rest_.find('"', 1) - 1);
            rest_.remove_prefix(std::min(quoted.size() + 2, rest_.size()));
        }
        const std::size_t end = std::min(rest_.find_first_of(",\r\n"), rest_.size());
        const std::string_view field = rest_.substr(0, end);
        const std::size_t separator = rest_.substr(end).starts_with("\r\n") ? 2 : 1;
        rest_.remove_prefix(std::min(end + separator, rest_.size()));
        return in_quotes ? quoted : base::trimmed(field);
    }

private:
    std::string_view rest_;
};

bool is_valid_angle(std::string_view field) {
    return field == "0" || base::leading_int32(field) > 0;
}

// Characters that would end a field, or begin one in quotes.
bool ends_field(char c) {
    return c == ',' || c == '"' || static_cast<unsigned char>(c) < ' ';
}

std::string without_field_ends(std::string_view field) {
    std::string kept(field);
    std::erase_if(kept, ends_field);
    return std::string(base::trimmed(kept));
}

// A field as it is held.
std::string held(const SettingInfo& info, std::string_view field) {
    switch (info.kind) {
    case check:
        return base::leading_int32(field) != 0 ? "1" : "0";
    case plot:
        return base::leading_int32(field) == 1 ? "1" : "0";
    case parameter:
    case cut:
        return field == "True" ? "True" : "False";
    default:
        break;
    }
    const std::string kept = without_field_ends(field);
    return kept.empty() && std::string_view(info.name) == "Layer" ? info.initial : kept;
}

bool can_hold(const SettingInfo& info, std::string_view value) {
    if (info.kind == angle) {
        return !value.empty() && value.find_first_not_of("0123456789") == std::string_view::npos;
    }
    if (info.kind == text) {
        return std::ranges::none_of(value, ends_field);
    }
    return is_option(info.kind) ? value == "True" || value == "False"
                                : value == "0" || value == "1";
}

// The angle after that many steps of 1 degree; one that reaches 360 starts at 0.
double turned(double angle, std::int64_t ticks) {
    const auto count = static_cast<double>(ticks);
    if (angle + count < full_turn) {
        return angle + count;
    }
    const double ticks_to_zero = std::max(std::ceil(full_turn - angle), 1.0);
    return std::fmod(count - ticks_to_zero, full_turn);
}

} // namespace

std::span<const SettingInfo, viewer_setting_count> viewer_setting_table() {
    return table;
}

ViewerSettings::ViewerSettings() {
    std::ranges::transform(table, values_.begin(), [](const SettingInfo& s) { return s.initial; });
}

ViewerSettings ViewerSettings::LoadINI(std::string_view bytes, base::Interaction& user) {
    const std::string file_text = base::to_utf8(bytes);
    FieldReader fields(file_text);
    ViewerSettings settings;
    for (std::size_t n = 0; n < table.size(); ++n) {
        if (!settings.is_stored(n)) {
            continue;
        }
        const auto field = fields.next();
        if (!field) {
            break;
        }
        const std::string value = held(table[n], *field);
        if (n < axis_count && !is_valid_angle(value)) {
            user.message(base::Icon::warning, " Default settings", invalid_texts[n]);
            return {};
        }
        settings.store(n, value);
    }
    return settings;
}

ViewerSettings ViewerSettings::load(const std::filesystem::path& file, base::Interaction& user) {
    return base::is_file(file) ? LoadINI(base::read_bytes(file), user) : ViewerSettings();
}

std::string ViewerSettings::SaveINI() const {
    std::vector<std::string> lines;
    for (std::size_t n = 0; n < table.size(); ++n) {
        if (is_stored(n)) {
            const bool printed = is_number_of_two(table[n].kind);
            lines.push_back(printed ? base::printed(base::leading_int32(values_[n])) : values_[n]);
        }
    }
    return base::to_text_file(lines);
}

bool ViewerSettings::is_stored(std::size_t index) const {
    return std::string_view(table[index].name) != "OtherName" || value("OTHER") == "True";
}

const std::string& ViewerSettings::value(std::string_view name) const {
    const std::size_t index = index_of(name);
    if (index == table.size()) {
        throw base::RangeFailure(fmt::format("the view settings have no field {}", name));
    }
    return values_[index];
}

bool ViewerSettings::set(std::string_view name, std::string_view value) {
    const std::size_t index = index_of(name);
    const std::string_view field = base::trimmed(value, " ");
    if (index == table.size() || !can_hold(table[index], field)) {
        return false;
    }
    store(index, held(table[index], field));
    return true;
}

void ViewerSettings::store(std::size_t index, std::string_view value) {
    const SettingKind kind = table[index].kind;
    for (std::size_t n = 0; n < table.size() && is_option(kind) && value == "True"; ++n) {
        if (table[n].kind == kind) {
            values_[n] = "False";
        }
    }
    values_[index] = value;
}

void ViewerSettings::turn(std::int64_t ticks) {
    for (std::size_t axis = 0; axis < axis_count; ++axis) {
        if (values_[first_spin + axis] == "1" && ticks > 0) {
            values_[axis] = base::value_text(turned(base::leading_number(values_[axis]), ticks));
        }
    }
}

std::string ViewerSettings::parameter_code() const {
    for (std::size_t n = 0; n < table.size(); ++n) {
        if (table[n].kind == parameter && values_[n] == "True") {
            const std::string_view name = table[n].name;
            return name == "OTHER" ? value("OtherName") : std::string(name);
        }
    }
    return "TEMP";
}

} // namespace results

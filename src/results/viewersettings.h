// The view settings of a result file: "<file>" with "ini" for its last three characters.
//
// A field is a line of its own: a text as it stands, a check box as a number in the plain printed
// form, an option button as "True" or "False". The name of another parameter follows its option
// only while that is on.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>

namespace base {
class Interaction;
}

namespace results {

enum class SettingKind {
    angle,     // degrees, digits only
    text,      // any, without commas and quotes
    check,     // "0" or "1"
    parameter, // "True" or "False", one of the parameter options
    cut,       // "True" or "False", one of the planes
    plot,      // "0" 2D Projection, "1" 3D Surface
};

struct SettingInfo {
    const char* name;
    SettingKind kind;
    const char* initial;
};

inline constexpr std::size_t viewer_setting_count = 47;
// All fields in the order of the file.
std::span<const SettingInfo, viewer_setting_count> viewer_setting_table();

class ViewerSettings {
public:
    // The defaults.
    ViewerSettings();

    // LoadINI on the bytes of a file: fields end at a comma or a line end, those that are missing
    // at the end keep their defaults. When one of the first three fields is not valid, its message
    // is shown and all are the defaults.
    static ViewerSettings LoadINI(std::string_view bytes, base::Interaction& user);
    // The same for a file; the defaults when there is none.
    static ViewerSettings load(const std::filesystem::path& file, base::Interaction& user);

    // SaveINI: the bytes of the file.
    std::string SaveINI() const;

    // False for a field that is left out of the file now: OtherName while OTHER is off.
    bool is_stored(std::size_t index) const;
    const std::string& value(std::size_t index) const { return values_[index]; }
    // RangeFailure for a name that is not in the table.
    const std::string& value(std::string_view name) const;

    // Sets a field; an option that becomes True sets the others of its group False. False, with
    // nothing changed, for a name that is not in the table and for a text that the field cannot
    // hold.
    bool set(std::string_view name, std::string_view value);

    // `ticks` of the rotation timer: 1 degree each for every axis whose spin is on; 360 is 0.
    void turn(std::int64_t ticks);

    // Code of the parameter whose option is on; TEMP when there is none.
    std::string parameter_code() const;

private:
    void store(std::size_t index, std::string_view value);

    std::array<std::string, viewer_setting_count> values_;
};

} // namespace results

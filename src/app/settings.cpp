#include "app/settings.h"

#include "base/paths.h"
#include "base/textfile.h"

namespace app {

namespace {

constexpr std::string_view utf8_mark = "\xEF\xBB\xBF";
constexpr std::size_t longest_value = 300;

bool fits_ansi(std::string_view text) {
    return base::to_utf8(base::to_ansi(text)) == text;
}

std::string value_or_blank(const SettingsFile& file, std::string_view section,
                           std::string_view key) {
    const auto value = file.get(section, key);
    return value ? base::first_characters(*value, longest_value) : " ";
}

} // namespace

SettingsFile::SettingsFile(const std::filesystem::path& folder, std::string_view name)
    : file_(folder / name) {
    if (const auto found = base::find_ignoring_case(folder, name)) {
        file_ = *found;
        ini_ = base::IniFile(base::read_bytes(file_));
    }
}

void SettingsFile::set(std::string_view section, std::string_view key, std::string_view value) {
    if (const std::string bytes = ini_.bytes();
        !fits_ansi(value) && !bytes.starts_with(utf8_mark)) {
        ini_ = base::IniFile(std::string(utf8_mark) + base::to_utf8(bytes));
    }
    ini_.set(section, key, value);
}

void SettingsFile::save() const {
    base::replace_file(file_, ini_.bytes());
}

std::string ProgramSettings::GetModelPath() const {
    return value_or_blank(file_, "PATH", "MODELPATH");
}

std::string ProgramSettings::GetHelpFormat() const {
    return value_or_blank(file_, "HELP", "FORMAT");
}

void ProgramSettings::SaveModelPath(std::string_view folder) {
    file_.set("PATH", "MODELPATH", folder);
    file_.save();
}

void ProgramSettings::SaveHelpFormat(std::string_view format) {
    file_.set("HELP", "FORMAT", format);
    file_.save();
}

} // namespace app

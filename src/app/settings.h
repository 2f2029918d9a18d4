// Settings that outlive a model, in INI files outside its folder.
#pragma once

#include "base/inifile.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace app {

// One such file. It stays in the ANSI character set until it has to hold a text that this does not
// have; then it becomes UTF-8 behind a byte-order mark.
class SettingsFile {
public:
    // Reads `name` in `folder`, whatever its case; a missing file is empty. FileFailure when it
    // cannot be read.
    SettingsFile(const std::filesystem::path& folder, std::string_view name);

    std::optional<std::string> get(std::string_view section, std::string_view key) const {
        return ini_.get(section, key);
    }
    void set(std::string_view section, std::string_view key, std::string_view value);
    // Makes the folder when it is missing. FileFailure when the file cannot be written.
    void save() const;

private:
    std::filesystem::path file_;
    base::IniFile ini_;
};

// td.ini in the program folder.
class ProgramSettings {
public:
    explicit ProgramSettings(const std::filesystem::path& program_folder)
        : file_(program_folder, "td.ini") {}

    // At most 300 characters; one blank when the key is missing.
    std::string GetModelPath() const;
    std::string GetHelpFormat() const;
    // Written at once.
    void SaveModelPath(std::string_view folder);
    void SaveHelpFormat(std::string_view format);

private:
    SettingsFile file_;
};

} // namespace app

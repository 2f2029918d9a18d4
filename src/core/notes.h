// Per-model notes, <base>.izv: an INI file of free sections and keys.
#pragma once

#include "base/inifile.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace core {

class ModelFiles;

// The whole file, read and written once for many values. Its functions keep the rules of those
// below.
class Notes {
public:
    explicit Notes(const ModelFiles& files);
    std::string get(std::string_view section, std::string_view key) const;
    void set(std::string_view section, std::string_view key, std::string_view value);
    void save(ModelFiles& files) const;

private:
    std::filesystem::path name_; // for failures
    base::IniFile file_;
};

// At most 300 characters; empty when the key or the file is missing.
std::string Get_IZV_Data(const ModelFiles& files, std::string_view section, std::string_view key);

// Makes the file when it is missing. FileFailure when the names cannot stand in such a file: empty
// ones, line ends, "]" in a section, "=" or a leading "[" or ";" in a key.
void Save_IZV_Data(ModelFiles& files, std::string_view section, std::string_view key,
                   std::string_view value);

} // namespace core

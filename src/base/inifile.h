// INI files by the rules of private profiles: first matching section and key, case ignored; blanks
// and tabs round names and values dropped; `;` begins a comment line; one pair of quotes round a value
// is dropped on reading and never added. Writing keeps order, spelling, comments and foreign keys.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace base {

class IniFile {
public:
    IniFile() = default;
    // `bytes` as they are on disk: Windows-1252, or UTF-8 behind a byte-order mark.
    explicit IniFile(std::string_view bytes);

    // The value, empty text for a key that is there with an empty value, nothing for a missing key.
    std::optional<std::string> get(std::string_view section, std::string_view key) const;

    // Replaces the value in place; a new key goes to the end of its section (before trailing empty
    // lines), a new section to the end of the file.
    void set(std::string_view section, std::string_view key, std::string_view value);

    // Keys of the first section of that name, in order, as spelled.
    std::vector<std::string> keys(std::string_view section) const;

    // Bytes for the disk, in the encoding that was read; lines end in CR LF.
    std::string bytes() const;

private:
    // Index behind the section's head line, or npos.
    std::size_t find_section(std::string_view section) const;
    std::size_t section_end(std::size_t first) const;
    std::size_t find_key(std::size_t first, std::string_view key) const;

    std::vector<std::string> lines_;
    bool utf8_mark_ = false;
};

} // namespace base

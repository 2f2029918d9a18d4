// INI files by the rules of private profiles: first matching section and key, case ignored; blanks
// and tabs round names and values dropped; `;` begins a comment line; one pair of quotes round a
// value is dropped on reading and never added. Writing keeps order, spelling, comments and foreign
// keys.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
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
    // The first place of each folded name.
    using Places = std::unordered_map<std::string, std::size_t>;

    // A head line and the lines up to the next one.
    struct Section {
        // Index of the key's first line; that behind the last line when there is none.
        std::size_t find(std::string_view key) const;
        // Behind all lines, or before the empty ones at the end.
        void append(std::string line);
        void add(std::string line);

        std::string head;                            // as it stands in the file
        std::vector<std::string> lines, empty_lines; // without those at the end, and those
        Places keys;                                 // of lines with a "=" that are no comments
    };

    // Index of the first section of that name; 0 when there is none.
    std::size_t find(std::string_view section) const;
    void add_line(std::string line);

    std::vector<Section> sections_ = {{}}; // the first one has no head
    Places names_;                         // of the others
    bool utf8_mark_ = false;
};

} // namespace base

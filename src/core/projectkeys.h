// The keys of the project file: section, spelling, kind and default, in writing order.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace core {

// In ascending order: a key of one kind can be read as any later one.
enum class KeyKind : std::uint8_t {
    int16,  // clamped to 16 bits
    flag,   // -1 or 0; any number but 0 counts as -1
    colour, // 32-bit integer, may be negative
    single,
    text, // at most `limit` characters, without blanks round it
};

enum class KeyUse : std::uint8_t {
    both,
    read_only,  // neither written nor removed
    write_only, // always begins with its default
    from_one,   // written as at least 1
};

struct KeyInfo {
    std::string_view section;
    std::string_view key;
    KeyKind kind;
    std::string_view initial; // the default in the form of the project file
    KeyUse use = KeyUse::both;
    std::size_t limit = 20; // characters of a text
};

// All keys but VERSION, DXF_MAPS and MENUSTATE. The keys that are only read stand at the end of
// their section.
std::span<const KeyInfo> project_keys();

// Index in project_keys(), whatever the case of the two names; nothing for an unknown key.
std::optional<std::size_t> find_project_key(std::string_view section, std::string_view key);

} // namespace core

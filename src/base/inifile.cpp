#include "base/inifile.h"

#include "base/textfile.h"

#include <algorithm>

namespace base {
namespace {

constexpr std::string_view utf8_mark = "\xEF\xBB\xBF";
constexpr std::string_view blanks = " \t";
constexpr std::size_t npos = std::string_view::npos;

bool is_head(std::string_view line) {
    return trimmed(line).starts_with('[');
}

// The name in a head line, which may lack its "]".
std::string_view head_name(std::string_view line) {
    line = trimmed(line).substr(1);
    return trimmed(line.substr(0, line.find(']')));
}

// The key of a "key=value" line; empty for comments and lines without "=".
std::string_view key_of(std::string_view line) {
    line = trimmed(line);
    const std::size_t equals = line.find('=');
    if (equals == npos || line.starts_with(';'))
        return {};
    return trimmed(line.substr(0, equals));
}

std::string_view without_quotes(std::string_view value) {
    const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                        (value.front() == '"' || value.front() == '\'');
    return quoted ? value.substr(1, value.size() - 2) : value;
}

// A line break inside a value would turn its rest into keys and sections.
std::string one_line(std::string_view value) {
    std::string line(value);
    std::replace(line.begin(), line.end(), '\r', ' ');
    std::replace(line.begin(), line.end(), '\n', ' ');
    return line;
}

std::string key_line(std::string_view key, std::string_view value) {
    return std::string(key).append("=").append(one_line(value));
}

} // namespace

IniFile::IniFile(std::string_view bytes) : utf8_mark_(bytes.starts_with(utf8_mark)) {
    if (utf8_mark_)
        bytes.remove_prefix(utf8_mark.size());
    for (const std::string_view line : split_lines(bytes))
        lines_.push_back(utf8_mark_ ? std::string(line) : to_utf8(line));
}

std::optional<std::string> IniFile::get(std::string_view section, std::string_view key) const {
    const std::size_t first = find_section(section);
    const std::size_t at = first == npos ? npos : find_key(first, key);
    if (at == npos)
        return std::nullopt;
    const std::string_view line = lines_[at];
    return std::string(without_quotes(trimmed(line.substr(line.find('=') + 1))));
}

void IniFile::set(std::string_view section, std::string_view key, std::string_view value) {
    const std::size_t first = find_section(section);
    if (first == npos) {
        lines_.push_back(std::string("[").append(section).append("]"));
        lines_.push_back(key_line(key, value));
        return;
    }
    const std::size_t at = find_key(first, key);
    if (at == npos) {
        const auto end = static_cast<std::ptrdiff_t>(section_end(first));
        lines_.insert(lines_.begin() + end, key_line(key, value));
        return;
    }
    std::string& line = lines_[at];
    const std::size_t behind_sign = line.find('=') + 1;
    const bool has_own_blanks = !value.empty() && blanks.find(value.front()) != npos;
    const std::size_t old =
        has_own_blanks ? behind_sign : line.find_first_not_of(blanks, behind_sign);
    line.resize(std::min(old, line.size()));
    line += one_line(value);
}

std::vector<std::string> IniFile::keys(std::string_view section) const {
    std::vector<std::string> keys;
    for (std::size_t at = find_section(section); at < lines_.size() && !is_head(lines_[at]); ++at)
        if (const std::string_view key = key_of(lines_[at]); !key.empty())
            keys.emplace_back(key);
    return keys;
}

std::string IniFile::bytes() const {
    if (!utf8_mark_)
        return to_text_file(lines_);
    std::string bytes(utf8_mark);
    for (const std::string& line : lines_)
        bytes.append(line).append("\r\n");
    return bytes;
}

std::size_t IniFile::find_section(std::string_view section) const {
    for (std::size_t i = 0; i < lines_.size(); ++i)
        if (is_head(lines_[i]) && same_ignoring_case(head_name(lines_[i]), trimmed(section)))
            return i + 1;
    return npos;
}

// Index behind the section's last line that is not empty.
std::size_t IniFile::section_end(std::size_t first) const {
    std::size_t end = first;
    while (end < lines_.size() && !is_head(lines_[end]))
        ++end;
    while (end > first && trimmed(lines_[end - 1]).empty())
        --end;
    return end;
}

std::size_t IniFile::find_key(std::size_t first, std::string_view key) const {
    key = trimmed(key);
    for (std::size_t i = first; i < lines_.size() && !is_head(lines_[i]); ++i)
        if (!key.empty() && same_ignoring_case(key_of(lines_[i]), key))
            return i;
    return npos;
}

} // namespace base

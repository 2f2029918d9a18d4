#include "base/inifile.h"

#include "base/textfile.h"

#include <algorithm>
#include <iterator>
#include <utility>

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

std::size_t IniFile::Section::find(std::string_view key) const {
    const auto found = keys.find(lower(trimmed(key)));
    return found == keys.end() ? lines.size() : found->second;
}

void IniFile::Section::append(std::string line) {
    if (trimmed(line).empty()) {
        empty_lines.push_back(std::move(line));
        return;
    }
    std::ranges::move(empty_lines, std::back_inserter(lines));
    empty_lines.clear();
    add(std::move(line));
}

void IniFile::Section::add(std::string line) {
    if (const std::string_view key = key_of(line); !key.empty())
        keys.try_emplace(lower(key), lines.size());
    lines.push_back(std::move(line));
}

IniFile::IniFile(std::string_view bytes) : utf8_mark_(bytes.starts_with(utf8_mark)) {
    if (utf8_mark_)
        bytes.remove_prefix(utf8_mark.size());
    for (const std::string_view line : split_lines(bytes))
        add_line(utf8_mark_ ? std::string(line) : to_utf8(line));
}

void IniFile::add_line(std::string line) {
    if (is_head(line)) {
        names_.try_emplace(lower(head_name(line)), sections_.size());
        sections_.emplace_back().head = std::move(line);
    } else {
        sections_.back().append(std::move(line));
    }
}

std::size_t IniFile::find(std::string_view section) const {
    const auto found = names_.find(lower(trimmed(section)));
    return found == names_.end() ? 0 : found->second;
}

std::optional<std::string> IniFile::get(std::string_view section, std::string_view key) const {
    const std::size_t place = find(section);
    const std::vector<std::string>& lines = sections_[place].lines;
    const std::size_t at = place == 0 ? lines.size() : sections_[place].find(key);
    if (at == lines.size())
        return std::nullopt;
    const std::string_view line = lines[at];
    return std::string(without_quotes(trimmed(line.substr(line.find('=') + 1))));
}

void IniFile::set(std::string_view section, std::string_view key, std::string_view value) {
    std::size_t place = find(section);
    if (place == 0) {
        add_line(std::string("[").append(section).append("]"));
        place = sections_.size() - 1;
    }
    const std::size_t at = sections_[place].find(key);
    if (at == sections_[place].lines.size()) {
        sections_[place].add(key_line(key, value));
        return;
    }
    std::string& line = sections_[place].lines[at];
    const std::size_t behind_sign = line.find('=') + 1;
    const bool has_own_blanks = !value.empty() && blanks.find(value.front()) != npos;
    const std::size_t old =
        has_own_blanks ? behind_sign : line.find_first_not_of(blanks, behind_sign);
    line.resize(std::min(old, line.size()));
    line += one_line(value);
}

std::vector<std::string> IniFile::keys(std::string_view section) const {
    std::vector<std::string> keys;
    if (const std::size_t place = find(section); place != 0)
        for (const std::string& line : sections_[place].lines)
            if (const std::string_view key = key_of(line); !key.empty())
                keys.emplace_back(key);
    return keys;
}

std::string IniFile::bytes() const {
    std::string bytes(utf8_mark_ ? utf8_mark : std::string_view());
    const auto append = [&](const std::string& line) {
        bytes.append(utf8_mark_ ? line : to_ansi(line)).append("\r\n");
    };
    for (const Section& section : sections_) {
        if (&section != &sections_.front())
            append(section.head);
        std::ranges::for_each(section.lines, append);
        std::ranges::for_each(section.empty_lines, append);
    }
    return bytes;
}

} // namespace base

#include "td/scriptlines.h"

#include "base/textfile.h"
#include "td/command.h"

#include <fmt/format.h>

#include <istream>

namespace td {

namespace {

constexpr std::string_view blanks = " \t\r";

} // namespace

std::vector<std::string> script_words(std::string_view line) {
    std::vector<std::string> words;
    for (std::size_t at = line.find_first_not_of(blanks); at != std::string_view::npos;
         at = line.find_first_not_of(blanks, at)) {
        const bool quoted = line[at] == '"';
        const std::size_t begin = quoted ? at + 1 : at;
        std::size_t end = quoted ? line.find('"', begin) : line.find_first_of(blanks, begin);
        if (quoted && end == std::string_view::npos) {
            throw UsageError(fmt::format("a quote is not closed: {}", line));
        }
        end = std::min(end, line.size());
        words.emplace_back(line.substr(begin, end - begin));
        at = quoted ? end + 1 : end;
    }
    return words;
}

ScriptLines::ScriptLines(const std::string& file, std::istream& standard_input)
    : in_(&standard_input) {
    if (file != "-") {
        file_.str(base::read_bytes(file));
        in_ = &file_;
    }
}

std::optional<std::vector<std::string>> ScriptLines::next() {
    for (std::string line; std::getline(*in_, line);) {
        ++line_;
        const std::string_view text = base::trimmed(line);
        if (!text.empty() && text.front() != '#') {
            return script_words(text);
        }
    }
    return std::nullopt;
}

void ScriptLines::require_end() {
    const int last = line_;
    if (next()) {
        throw UsageError(fmt::format("line {}: leave has to be the last line", last));
    }
}

} // namespace td

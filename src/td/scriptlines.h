// Scripts of editing sessions: a line a step.
#pragma once

#include <iosfwd>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace td {

// A line in its words; file names with blanks stand in double quotes. UsageError for a quote that
// is not closed.
std::vector<std::string> script_words(std::string_view line);

// The lines of a script, one by one as they come, without empty ones and comments.
class ScriptLines {
public:
    // "-" is standard input. FileFailure when the file cannot be read.
    ScriptLines(const std::string& file, std::istream& standard_input);

    // The words of the next line; nothing at the end.
    std::optional<std::vector<std::string>> next();
    // UsageError unless the line that came last is the last one.
    void require_end();
    int line() const { return line_; }

private:
    std::istringstream file_;
    std::istream* in_;
    int line_ = 0;
};

} // namespace td

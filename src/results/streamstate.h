// Where a StreamReader stands in its file, and what it knows of the lines.
#pragma once

#include "results/streamfile.h"
#include "results/streamreader.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace results {

// A line, or the rest of one.
struct StreamLine {
    std::uint64_t begin = 0;
    std::uint64_t end = 0;            // behind its end, CR LF or LF
    std::uint64_t trimmed_length = 0; // without the blanks at both ends
    std::string text;                 // its first bytes
};

// The key lines from the beginning of the file up to a position, as they were passed. No more are
// kept than the memory should hold.
class KeyLines {
public:
    static constexpr std::size_t longest_text = 200;

    // All key lines that begin before this position are known.
    std::uint64_t known_to() const { return known_to_; }
    bool full() const { return lines_.size() >= most_lines; }
    // The first known one that begins at `position` or behind it; nullptr when there is none.
    const StreamLine* first_from(std::uint64_t position) const;

    void add(StreamLine line);
    // There is no key line that begins in these bytes.
    void note_passed(std::uint64_t begin, std::uint64_t end);

private:
    static constexpr std::size_t most_lines = 50'000;

    std::vector<StreamLine> lines_;
    std::uint64_t known_to_ = 0;
};

// A token and where it begins; the text holds until the next reading.
struct StreamToken {
    std::string_view text;
    std::uint64_t begin = 0;
};

struct StreamReader::State {
    using Test = std::function<bool(const StreamLine&)>;

    explicit State(const std::filesystem::path& file) : bytes(file) {}

    // The line from `begin` on, with at most `limit` bytes of its text.
    StreamLine line_at(std::uint64_t begin, std::size_t limit);
    // The first key line that begins at `begin` or behind it; nullptr when there is none. Holds
    // until the next call.
    const StreamLine* key_line_from(std::uint64_t begin);
    // Goes behind the first line that begins with `word` and passes `test`: the rest of the present
    // one or a later one. False: there is none, and the position is the end of the file.
    bool find(std::string_view word, const Test& test);

    // The next token, closed by a separator behind which the position is then; nothing when the
    // file ends before.
    std::optional<StreamToken> next_token(bool drops_behind_cr);
    // Tells that the file ends in `what` or before it.
    [[noreturn]] void fail_at_end(std::string_view what);

    StreamFile bytes;
    std::uint64_t position = 0;
    KeyLines keys;

private:
    std::optional<StreamLine> scan_for_key(std::uint64_t begin);
    bool passes(const StreamLine& line, const Test& test);
    bool rest_of_line_passes(std::string_view word, const Test& test);
    bool skip_separators();
    std::string_view token_with_end(std::size_t& length);

    std::optional<StreamLine> scanned_;
};

constexpr bool is_separator(char c) {
    constexpr std::uint64_t separators =
        1ULL << ' ' | 1ULL << '\t' | 1ULL << ',' | 1ULL << '\r' | 1ULL << '\n';
    const auto code = static_cast<unsigned char>(c);
    return code < 64 && (separators >> code & 1U) != 0;
}

} // namespace results

#include "results/streamstate.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>

namespace results {

namespace {

constexpr std::size_t longest_token = std::size_t{1} << 16U;

// A line that comes in pieces. A CR is part of its end only when nothing follows.
class LinePieces {
public:
    LinePieces(std::uint64_t begin, std::size_t limit) : limit_(limit) { line_.begin = begin; }

    void add(std::string_view piece) {
        if (piece.empty()) {
            return;
        }
        if (closed_by_cr_) {
            note_content(length_ - 1, length_);
        }
        closed_by_cr_ = piece.ends_with('\r');
        line_.text += piece.substr(0, limit_ - line_.text.size());
        const std::string_view inner = piece.substr(0, piece.size() - (closed_by_cr_ ? 1 : 0));
        const std::size_t first = inner.find_first_not_of(' ');
        if (first != std::string_view::npos) {
            note_content(length_ + first, length_ + inner.find_last_not_of(' ') + 1);
        }
        length_ += piece.size();
    }

    StreamLine finished(std::uint64_t end) {
        const std::uint64_t length = length_ - (closed_by_cr_ ? 1 : 0);
        line_.text.resize(std::min<std::size_t>(line_.text.size(), length));
        line_.trimmed_length = content_end_ - content_begin_.value_or(0);
        line_.end = end;
        return std::move(line_);
    }

private:
    void note_content(std::uint64_t begin, std::uint64_t end) {
        content_begin_ = content_begin_.value_or(begin);
        content_end_ = end;
    }

    StreamLine line_;
    std::size_t limit_;
    std::uint64_t length_ = 0, content_end_ = 0;
    std::optional<std::uint64_t> content_begin_;
    bool closed_by_cr_ = false;
};

// The first "#" of `bytes` that begins a line; `before` stands in front of them.
std::size_t find_key(std::string_view bytes, char before) {
    std::size_t at = bytes.find('#');
    while (at != std::string_view::npos && (at == 0 ? before : bytes[at - 1]) != '\n') {
        at = bytes.find('#', at + 1);
    }
    return at;
}

} // namespace

const StreamLine* KeyLines::first_from(std::uint64_t position) const {
    const auto found = std::ranges::lower_bound(lines_, position, {}, &StreamLine::begin);
    return found == lines_.end() ? nullptr : &*found;
}

void KeyLines::add(StreamLine line) {
    known_to_ = line.end;
    lines_.push_back(std::move(line));
}

void KeyLines::note_passed(std::uint64_t begin, std::uint64_t end) {
    if (begin <= known_to_) {
        known_to_ = std::max(known_to_, end);
    }
}

StreamLine StreamReader::State::line_at(std::uint64_t begin, std::size_t limit) {
    LinePieces pieces(begin, limit);
    std::uint64_t at = begin;
    for (std::string_view view = bytes.bytes(at); !view.empty(); view = bytes.bytes(at)) {
        const std::size_t end = view.find('\n');
        pieces.add(view.substr(0, end));
        if (end != std::string_view::npos) {
            at += end + 1;
            break;
        }
        at += view.size();
    }
    return pieces.finished(at);
}

std::optional<StreamLine> StreamReader::State::scan_for_key(std::uint64_t begin) {
    std::string_view view = begin == 0 ? std::string_view() : bytes.bytes(begin - 1);
    char before = view.empty() ? '\n' : view.front();
    for (view = bytes.bytes(begin); !view.empty(); view = bytes.bytes(begin)) {
        const std::size_t found = find_key(view, before);
        if (found != std::string_view::npos) {
            return line_at(begin + found, KeyLines::longest_text);
        }
        before = view.back();
        begin += view.size();
    }
    return std::nullopt;
}

const StreamLine* StreamReader::State::key_line_from(std::uint64_t begin) {
    const StreamLine* known = keys.first_from(begin);
    while (known == nullptr && !keys.full()) {
        std::optional<StreamLine> line = scan_for_key(keys.known_to());
        if (!line) {
            keys.note_passed(keys.known_to(), bytes.size());
            return nullptr;
        }
        keys.add(std::move(*line));
        known = keys.first_from(begin);
    }
    if (known == nullptr) {
        scanned_ = scan_for_key(std::max(begin, keys.known_to()));
        known = scanned_ ? &*scanned_ : nullptr;
    }
    return known;
}

bool StreamReader::State::passes(const StreamLine& line, const Test& test) {
    if (test(line)) {
        position = line.end;
        return true;
    }
    return false;
}

// The rest of an array's line may be long: unless it begins with the word its end does not matter.
bool StreamReader::State::rest_of_line_passes(std::string_view word, const Test& test) {
    std::string_view rest = bytes.bytes(position);
    if (rest.size() < word.size()) {
        rest = bytes.more_bytes(position);
    }
    return rest.starts_with(word) && passes(line_at(position, word.size()), test);
}

bool StreamReader::State::find(std::string_view word, const Test& test) {
    if (rest_of_line_passes(word, test)) {
        return true;
    }
    if (word.starts_with('#') && word.size() <= KeyLines::longest_text) {
        std::uint64_t behind = position + 1;
        while (const StreamLine* const key = key_line_from(behind)) {
            if (passes(*key, test)) {
                return true;
            }
            behind = key->begin + 1;
        }
        position = bytes.size();
        return false;
    }
    position = line_at(position, 0).end;
    while (position < bytes.size()) {
        const StreamLine line = line_at(position, word.size());
        if (passes(line, test)) {
            return true;
        }
        position = line.end;
    }
    return false;
}

bool StreamReader::State::skip_separators() {
    for (std::string_view view = bytes.bytes(position); !view.empty();
         view = bytes.bytes(position)) {
        const auto first = std::ranges::find_if_not(view, is_separator);
        position += static_cast<std::uint64_t>(first - view.begin());
        if (first != view.end()) {
            return true;
        }
    }
    return false;
}

// The token that begins at the present position, with the separator behind it and one character
// more where the file goes on; fewer at the end of the file.
std::string_view StreamReader::State::token_with_end(std::size_t& length) {
    const auto length_of = [](std::string_view view) {
        return static_cast<std::size_t>(std::ranges::find_if(view, is_separator) - view.begin());
    };
    std::string_view view = bytes.bytes(position);
    length = length_of(view);
    if (length + 2 > view.size()) {
        view = bytes.more_bytes(position);
        length = length_of(view);
    }
    if (length > longest_token) {
        bytes.fail(fmt::format("byte {}: holds a word of more than {} characters, where a number "
                               "was expected",
                               position, longest_token));
    }
    return view.substr(0, length + 2);
}

std::optional<StreamToken> StreamReader::State::next_token(bool drops_behind_cr) {
    const std::uint64_t passed_from = position;
    if (!skip_separators()) {
        return std::nullopt;
    }
    const std::uint64_t begin = position;
    std::size_t length = 0;
    const std::string_view view = token_with_end(length);
    if (length == view.size()) {
        position = bytes.size();
        return std::nullopt;
    }
    position += length + 1;
    const std::string_view end = view.substr(length);
    if (end.size() > 1 && end[0] == '\r' && (drops_behind_cr || end[1] == '\n')) {
        ++position;
    }
    if (view[0] != '#') {
        keys.note_passed(passed_from, position);
    }
    return StreamToken{view.substr(0, length), begin};
}

void StreamReader::State::fail_at_end(std::string_view what) {
    const std::uint64_t end = bytes.size();
    const bool within = end > 0 && !is_separator(bytes.bytes(end - 1).front());
    bytes.fail(within ? fmt::format("ends at byte {} within {}", end, what)
                      : fmt::format("ends at byte {}, where {} was expected", end, what));
}

} // namespace results

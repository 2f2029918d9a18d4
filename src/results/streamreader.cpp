#include "results/streamreader.h"

#include "results/streamstate.h"

#include "base/interaction.h"
#include "base/numbertext.h"
#include "base/textfile.h"

#include <fmt/format.h>

#include <algorithm>

namespace results {

StreamReader::StreamReader(const std::filesystem::path& file)
    : state_(std::make_unique<State>(file)) {}
StreamReader::~StreamReader() = default;
StreamReader::StreamReader(StreamReader&&) noexcept = default;
StreamReader& StreamReader::operator=(StreamReader&&) noexcept = default;

const std::filesystem::path& StreamReader::file() const {
    return state_->bytes.file();
}
std::uint64_t StreamReader::size() const {
    return state_->bytes.size();
}
std::uint64_t StreamReader::bytes_read() const {
    return state_->bytes.bytes_read();
}
std::uint64_t StreamReader::position() const {
    return state_->position;
}
bool StreamReader::at_end() const {
    return position() >= size();
}
void StreamReader::go_to(std::uint64_t position) {
    state_->position = std::min(position, size());
}
void StreamReader::rewind() {
    go_to(0);
}
void StreamReader::require_unchanged() const {
    state_->bytes.require_unchanged();
}

bool StreamReader::JumpToPos(std::string_view word) {
    return word.empty() || state_->find(word, [&](const StreamLine& line) {
        return line.text.starts_with(word) &&
               (line.trimmed_length == word.size() || line.end >= size());
    });
}

bool StreamReader::find_prefix(std::string_view key) {
    return state_->find(key, [&](const StreamLine& line) { return line.text.starts_with(key); });
}

std::optional<std::string> StreamReader::next_key() {
    const StreamLine* const key = state_->key_line_from(position());
    if (key == nullptr) {
        go_to(size());
        return std::nullopt;
    }
    go_to(key->end);
    return std::string(base::trimmed_right(key->text, " "));
}

std::optional<std::string> StreamReader::next_line(std::size_t limit) {
    if (at_end()) {
        return std::nullopt;
    }
    const std::uint64_t begin = position();
    StreamLine line = state_->line_at(begin, limit);
    go_to(line.end);
    if (!line.text.starts_with('#')) {
        state_->keys.note_passed(begin, line.end);
    }
    return std::move(line.text);
}

int StreamReader::next_line_int(std::string_view what) {
    const std::optional<std::string> line = next_line();
    if (!line) {
        state_->bytes.fail(fmt::format("ends at byte {}, where {} was expected", size(), what));
    }
    return base::leading_int32(*line);
}

std::string StreamReader::InputNumber(std::string_view what) {
    const std::optional<StreamToken> token = state_->next_token(true);
    if (!token) {
        state_->fail_at_end(what);
    }
    return std::string(token->text);
}

std::string numbered_key(std::string_view keyword, int number) {
    if (number < 1 || number > 99) {
        return {};
    }
    return fmt::format("{}{:>12}", keyword, number);
}

bool jump_or_tell(StreamReader& stream, std::string_view word, base::Interaction& user) {
    constexpr std::string_view quiet[] = {"# CONC", "# CONCM", "# ANZCHEM", "# ANZMINS"};
    const bool found = stream.JumpToPos(word);
    if (!found && std::ranges::find(quiet, word) == std::end(quiet)) {
        user.message(base::Icon::warning, base::desk_title,
                     fmt::format("Error in file format. Can't find choosen parameter {}", word));
    }
    return found;
}

bool LookForString(StreamReader& stream, std::string_view word, base::Interaction& user) {
    const bool found = jump_or_tell(stream, word, user);
    if (!found) {
        user.message(base::Icon::warning, base::desk_title,
                     fmt::format("Error in input file structure: Can't find {}", word));
    }
    return found;
}

int read_counter(StreamReader& stream, std::string_view word, base::Interaction& user) {
    stream.rewind();
    const int count = jump_or_tell(stream, word, user) ? stream.next_line_int(word) : 0;
    stream.require_unchanged();
    return count;
}

} // namespace results

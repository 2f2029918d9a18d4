#include "base/texttail.h"

#include "base/textfile.h"

#include <algorithm>
#include <fstream>

namespace base {

namespace {

// Bytes of the character that begins with `lead`; 0 when none does.
std::size_t length_of(unsigned char lead) {
    return lead < 0x80   ? 1
           : lead < 0xC2 ? 0
           : lead < 0xE0 ? 2
           : lead < 0xF0 ? 3
           : lead < 0xF5 ? 4
                         : 0;
}

bool continues(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

// Where the text stops being whole UTF-8 characters; its size when it does not.
std::size_t end_of_utf8(std::string_view text) {
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t length = length_of(static_cast<unsigned char>(text[at]));
        const std::string_view rest = text.substr(at + 1, length == 0 ? 0 : length - 1);
        if (length == 0 || rest.size() + 1 < length || !std::ranges::all_of(rest, continues)) {
            return at;
        }
        at += length;
    }
    return at;
}

// True when all that keeps the text from being UTF-8 is that its last character is cut off.
bool is_cut_off(std::string_view text) {
    return !text.empty() && text.size() < length_of(static_cast<unsigned char>(text[0])) &&
           std::ranges::all_of(text.substr(1), continues);
}

} // namespace

std::string TextTail::read(std::uintmax_t from, std::uintmax_t to) const {
    std::ifstream in(file_, std::ios::binary);
    in.seekg(static_cast<std::streamoff>(from));
    std::string bytes(to - from, '\0');
    in.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(in.bad() ? 0
                          : static_cast<std::size_t>(std::max<std::streamsize>(in.gcount(), 0)));
    return bytes;
}

TextTail::News TextTail::news() {
    News news;
    std::error_code failed;
    const std::uintmax_t size = std::filesystem::file_size(file_, failed);
    if (failed || size == position_) {
        return news;
    }
    news.restarted = size < position_;
    if (news.restarted) {
        position_ = 0;
        incomplete_.clear();
    }
    news.skipped = size - position_ > most;
    if (news.skipped) {
        position_ = size - most;
        incomplete_.clear();
    }
    const std::string bytes = read(position_, size);
    position_ += bytes.size();
    news.text = decoded(incomplete_ + bytes);
    return news;
}

std::string TextTail::decoded(std::string bytes) {
    const std::size_t end = end_of_utf8(bytes);
    incomplete_ = is_cut_off(std::string_view(bytes).substr(end)) ? bytes.substr(end) : "";
    bytes.resize(bytes.size() - incomplete_.size());
    if (end != bytes.size()) {
        bytes = to_utf8(bytes);
    }
    std::string text;
    for (const char c : bytes) {
        const bool second_of_end = after_return_ && c == '\n';
        after_return_ = c == '\r';
        if (c == '\r') {
            text += '\n';
        } else if (!second_of_end && (c >= ' ' || c < 0 || c == '\n' || c == '\t')) {
            text += c;
        }
    }
    return text;
}

} // namespace base

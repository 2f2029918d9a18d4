#include "base/textfile.h"

#include "base/failure.h"
#include "base/numbertext.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

namespace base {
namespace {

// Windows-1252 bytes 0x80 to 0x9F; the five without a character keep their number.
constexpr std::array<char32_t, 32> ansi_block = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr char32_t not_a_character = 0xFFFFFFFF;

bool is_ascii(char c) {
    return static_cast<unsigned char>(c) < 0x80;
}
bool is_continuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

void append_utf8(std::string& text, char32_t c) {
    if (c < 0x800) {
        text += static_cast<char>(0xC0U | (c >> 6U));
    } else {
        text += static_cast<char>(0xE0U | (c >> 12U));
        text += static_cast<char>(0x80U | ((c >> 6U) & 0x3FU));
    }
    text += static_cast<char>(0x80U | (c & 0x3FU));
}

// The character that begins at `at`, which is moved behind it. A damaged sequence is passed byte by
// byte.
char32_t next_character(std::string_view utf8, std::size_t& at) {
    const auto lead = static_cast<unsigned char>(utf8[at++]);
    if (lead < 0x80)
        return lead;
    const std::size_t more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
    if (lead < 0xC2 || lead > 0xF4 || utf8.size() - at < more)
        return not_a_character;
    char32_t c = lead & (0x3FU >> more);
    for (std::size_t i = 0; i < more; ++i) {
        if (!is_continuation(utf8[at + i]))
            return not_a_character;
        c = (c << 6U) | (static_cast<unsigned char>(utf8[at + i]) & 0x3FU);
    }
    at += more;
    return c;
}

char ansi_byte(char32_t c) {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF))
        return static_cast<char>(c);
    const auto found = std::find(ansi_block.begin(), ansi_block.end(), c);
    return found == ansi_block.end() ? '?' : static_cast<char>(0x80 + (found - ansi_block.begin()));
}

void pass_character(std::string_view utf8, std::size_t& at) {
    if (is_ascii(utf8[at]))
        ++at;
    else
        next_character(utf8, at);
}

// Byte index behind the first `count` characters.
std::size_t index_behind(std::string_view utf8, std::size_t count) {
    std::size_t at = 0;
    for (; at < utf8.size() && count > 0; --count)
        pass_character(utf8, at);
    return at;
}

// The accented letters of Western Europe are two bytes, the second of which tells the case.
constexpr char accented = '\xC3';

bool is_accented_pair(char second, unsigned char first_letter) {
    const auto code = static_cast<unsigned char>(second);
    const bool is_sign = code == first_letter + 0x17; // the signs of multiplication and division
    return code >= first_letter && code <= first_letter + 0x1E && !is_sign;
}

char lower_letter(char before, char c) {
    if (before == accented && is_accented_pair(c, 0x80)) {
        return static_cast<char>(c + 0x20);
    }
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
char upper_letter(char before, char c) {
    if (before == accented && is_accented_pair(c, 0xA0)) {
        return static_cast<char>(c - 0x20);
    }
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

std::string folded(std::string_view text, char (*fold)(char, char)) {
    std::string result;
    result.reserve(text.size());
    char before = '\0';
    for (const char c : text) {
        result += fold(before, c);
        before = c;
    }
    return result;
}

bool is_separator(char c) {
    return c == ' ' || c == '\t' || c == ',' || c == '\n' || c == '\r';
}

// Bytes to ask for at once. Only a plain file knows its size beforehand, and even that is not taken
// on trust.
std::size_t block_size(const struct stat& state) {
    constexpr off_t smallest = off_t{1} << 12U;
    constexpr off_t largest = off_t{1} << 20U;
    return static_cast<std::size_t>(
        S_ISREG(state.st_mode) ? std::clamp(state.st_size + 1, smallest, largest) : largest);
}

// All bytes up to the end; the error number of the system when there is one.
int read_all(int descriptor, std::string& bytes) {
    constexpr std::size_t longest_stream = std::size_t{1} << 30U; // of a device or a pipe
    struct stat state {};
    if (::fstat(descriptor, &state) != 0)
        return errno;
    const std::size_t block = block_size(state);
    std::size_t filled = 0;
    for (ssize_t count = -1; count != 0;) {
        if (!S_ISREG(state.st_mode) && filled > longest_stream)
            return EFBIG;
        bytes.resize(filled + block);
        count = ::read(descriptor, bytes.data() + filled, block);
        if (count < 0 && errno != EINTR)
            return errno;
        filled += static_cast<std::size_t>(std::max(count, ssize_t{0}));
    }
    bytes.resize(filled);
    return 0;
}

} // namespace

std::string read_bytes(const std::filesystem::path& file) {
    std::string bytes;
    const int descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    const int error = descriptor < 0 ? errno : read_all(descriptor, bytes);
    if (descriptor >= 0)
        ::close(descriptor);
    if (error != 0)
        throw FileFailure(fmt::format("cannot be read: {}", std::strerror(error)), file);
    return bytes;
}

std::string to_utf8(std::string_view ansi) {
    std::string utf8;
    utf8.reserve(ansi.size() + ansi.size() / 16);
    for (const char c : ansi) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80)
            utf8 += c;
        else
            append_utf8(utf8, byte < 0xA0 ? ansi_block[byte - 0x80U] : char32_t{byte});
    }
    return utf8;
}

std::string to_ansi(std::string_view utf8) {
    std::string ansi;
    ansi.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();) {
        if (is_ascii(utf8[at]))
            ansi += utf8[at++];
        else
            ansi += ansi_byte(next_character(utf8, at));
    }
    return ansi;
}

std::size_t character_count(std::string_view utf8) {
    std::size_t count = 0;
    for (std::size_t at = 0; at < utf8.size(); ++count)
        pass_character(utf8, at);
    return count;
}

std::string first_characters(std::string_view utf8, std::size_t count) {
    return std::string(utf8.substr(0, index_behind(utf8, count)));
}

std::vector<std::string_view> split_lines(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        lines.push_back(line);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

std::vector<std::string> text_lines(std::string_view ansi_bytes) {
    std::vector<std::string> lines;
    for (const std::string_view line : split_lines(ansi_bytes))
        lines.push_back(to_utf8(line));
    return lines;
}

std::string to_text_file(const std::vector<std::string>& lines) {
    std::string bytes;
    for (const std::string& line : lines)
        bytes.append(to_ansi(line)).append("\r\n");
    return bytes;
}

std::string_view trimmed(std::string_view text, std::string_view characters) {
    text.remove_prefix(std::min(text.find_first_not_of(characters), text.size()));
    return trimmed_right(text, characters);
}

std::string_view trimmed_right(std::string_view text, std::string_view characters) {
    return text.substr(0, text.find_last_not_of(characters) + 1); // npos + 1 is 0
}

std::string lower(std::string_view text) {
    return folded(text, lower_letter);
}

std::string upper(std::string_view text) {
    return folded(text, upper_letter);
}

bool same_ignoring_case(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        const char before = i == 0 ? '\0' : a[i - 1];
        if (lower_letter(before, a[i]) != lower_letter(before, b[i])) {
            return false;
        }
    }
    return true;
}

std::string_view fixed_field(std::string_view line, std::size_t column, std::size_t width) {
    line.remove_prefix(index_behind(line, column));
    return line.substr(0, index_behind(line, width));
}

NumberReader::NumberReader(std::string_view text, std::filesystem::path file)
    : text_(text), file_(std::move(file)) {}

double NumberReader::next(std::string_view what) {
    return leading_number(needed_word(what));
}

float NumberReader::next_single(std::string_view what) {
    return leading_single(needed_word(what));
}

std::int32_t NumberReader::next_int(std::string_view what) {
    return leading_int32(needed_word(what));
}

std::optional<double> NumberReader::next_if() {
    const std::string_view word = next_word();
    if (word.empty())
        return std::nullopt;
    return leading_number(word);
}

void NumberReader::skip_line() {
    rest_of_line();
}

std::string_view NumberReader::rest_of_line() {
    const std::size_t end = std::min(text_.find('\n', at_), text_.size());
    const std::string_view rest = trimmed(text_.substr(at_, end - at_));
    at_ = std::min(end + 1, text_.size());
    if (end < text_.size())
        ++line_;
    return rest;
}

std::string_view NumberReader::next_word() {
    for (; at_ < text_.size() && is_separator(text_[at_]); ++at_)
        if (text_[at_] == '\n')
            ++line_;
    const std::size_t first = at_;
    while (at_ < text_.size() && !is_separator(text_[at_]))
        ++at_;
    return text_.substr(first, at_ - first);
}

std::string_view NumberReader::needed_word(std::string_view what) {
    const std::string_view word = next_word();
    if (!word.empty())
        return word;
    // Behind the last line end there is no further line.
    const bool line_is_begun = at_ == 0 || text_[at_ - 1] != '\n';
    throw FileFailure(fmt::format("ends at line {}, where {} was expected",
                                  line_is_begun ? line_ : line_ - 1, what),
                      file_);
}

} // namespace base

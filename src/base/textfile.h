// Text files of the model: Windows-1252 with CR LF on disk, UTF-8 without line ends in memory.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace base {

// All bytes of a file. FileFailure when it cannot be read.
std::string read_bytes(const std::filesystem::path& file);

// Windows-1252 bytes to UTF-8. The five bytes without a character keep their number (U+0081 ...),
// so that every byte survives a round trip.
std::string to_utf8(std::string_view ansi);
// UTF-8 to Windows-1252; characters that it does not have become "?".
std::string to_ansi(std::string_view utf8);

// Number of characters of UTF-8 text, and its first `count` characters. Each byte that is part of no
// character counts as one, as it becomes one "?" in a file.
std::size_t character_count(std::string_view utf8);
std::string first_characters(std::string_view utf8, std::size_t count);

// The lines of `text` without their ends (CR LF, LF; a last line without end counts, an empty rest
// behind the last end does not).
std::vector<std::string_view> split_lines(std::string_view text);

// Decoded lines of a text file's bytes.
std::vector<std::string> text_lines(std::string_view ansi_bytes);

// Lines to bytes: Windows-1252, each closed by CR LF.
std::string to_text_file(const std::vector<std::string>& lines);

// Text without the given characters at both ends.
std::string_view trimmed(std::string_view text, std::string_view characters = " \t\r\n");
std::string_view trimmed_right(std::string_view text, std::string_view characters = " \t\r\n");

// Letters folded to lower (upper) case, whatever the locale: those of ASCII and the accented ones
// of Western Europe.
std::string lower(std::string_view text);
std::string upper(std::string_view text);
bool same_ignoring_case(std::string_view a, std::string_view b);

// The n-th field (0-based column, fixed width) of a fixed-column line; empty beyond its end.
std::string_view fixed_field(std::string_view line, std::size_t column, std::size_t width);

// Free-form numbers: separated by blanks, tabs, commas or line ends. A word that begins with no
// number reads as 0, as everywhere.
class NumberReader {
public:
    // `file` is named in failures.
    NumberReader(std::string_view text, std::filesystem::path file);

    // The next number; FileFailure "ends at line N, where WHAT was expected" at the end of the
    // text.
    double next(std::string_view what);
    float next_single(std::string_view what);
    std::int32_t next_int(std::string_view what);
    // Nothing at the end of the text.
    std::optional<double> next_if();
    // Goes to the beginning of the next line.
    void skip_line();
    // The rest of the present line, trimmed; goes to the next line.
    std::string_view rest_of_line();
    std::size_t line() const { return line_; }
    std::size_t remaining() const { return text_.size() - at_; }

private:
    std::string_view next_word();
    std::string_view needed_word(std::string_view what);

    std::string_view text_;
    std::filesystem::path file_;
    std::size_t at_ = 0;
    std::size_t line_ = 1;
};

} // namespace base

// Numbers to text and back: the only place in the program that does either. No locale anywhere.
//
// Singles show at most 7 significant digits, doubles 15. A value is written plainly when that takes
// at most 7 (15) digits behind the point and fewer than 8 (16) before it; otherwise with "E", a sign
// and at least two exponent digits: 0.0015, 1.5E-10, 1E+07.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace base {

// Value text: "0.5", "-12", "1E-12". Keeps the 0 before the point; no blanks.
std::string value_text(float value);
std::string value_text(double value);

// The number as the project file holds it: value text without the 0 before the point (".1", "-.5").
std::string bare_text(float value);
std::string bare_text(double value);

// The plain printed form: a blank (or minus), the bare text, a blank: " .5 ", "-3 ".
std::string printed(float value);
std::string printed(double value);
std::string printed(std::int64_t value);
inline std::string printed(int value) { return printed(std::int64_t{value}); }

// For people and scripts: the form of value text with as many digits (at most 9, doubles 17) as
// reading back the same value needs.
std::string exact_text(float value);
std::string exact_text(double value);

// The longest numeric prefix of `text` (blanks and tabs in front are skipped; exponents with E or D);
// 0 when there is none. Values beyond the range of a double become the largest one.
double leading_number(std::string_view text);

// The same, rounded to single; beyond the range of a single, the largest single.
float leading_single(std::string_view text);

// The same, rounded to the nearest integer (halves to even) and clamped to the type's range.
std::int16_t leading_int16(std::string_view text);
std::int32_t leading_int32(std::string_view text);

// A whole text as one number, without anything behind it; nothing otherwise. For command lines.
std::optional<double> whole_number(std::string_view text);
std::optional<std::int64_t> whole_integer(std::string_view text);

// One item of the compact notation: `count` times `value`, with one blank behind:
// "12*0.25 ", "1.E-12 ", "0. ".
std::string Format_Print(float value, std::int64_t count);
// The same, put behind `text`.
void append_Format_Print(std::string& text, float value, std::int64_t count);
// The same for a zone number, which gets no point: "12*3 ".
std::string Format_Print_zone(float value, std::int64_t count);
// The item of a text that is complete as it stands.
std::string run_item(std::string_view text, std::int64_t count);
// Value text with the point that the simulator expects: "5.", "1.E-12", "0.25", "0.".
std::string pointed_text(float value);
// Puts "." before an "E", or behind a text that has none; a text with a point stays.
std::string with_point(std::string_view text);

// A value in a number mask: "0.000E+00", "+0.000E+00", "##0.0##", " #.#####E+###", "0000".
// `0` is a digit that always shows, `#` one that shows when it is needed.
std::string masked(double value, std::string_view mask);
// Text in a mask of `width` "@": right-aligned; longer text stays whole.
std::string right_aligned(std::string_view text, std::size_t width);

// Column writers of the exchange files of points and observations: an integer or a real
// right-aligned in `width`. A real whose plain text (without blanks and without a 0 before the point)
// is not shorter than the width takes a scientific form with width - 7 (negative: width - 8) zeros
// behind the point and a blank behind it.
std::string column_integer(std::int64_t value, std::size_t width);
std::string column_real(float value, std::size_t width);
std::string column_real(double value, std::size_t width);

// A text line whose items go to print zones of 14 columns or to given columns.
class PrintLine {
public:
    // Appends directly behind what is there.
    PrintLine& add(std::string_view text);
    // Goes on to the next 14-column print zone (nothing at the beginning of a line).
    PrintLine& zone();
    // Goes on to the 1-based column; when the line is already past it, to that column of a new line.
    PrintLine& tab(std::size_t column);
    const std::string& text() const { return text_; }

private:
    std::size_t column() const;
    std::string text_;
};

} // namespace base

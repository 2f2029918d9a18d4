// Number text both ways.
#include "checks.h"
#include "targets.h"

#include "base/numbertext.h"

#include <bit>
#include <cmath>
#include <cstring>

namespace fuzz {

namespace {

constexpr const char* masks[] = {"0.000E+00", "+0.000E+00", "##0.0##", " #.#####E+###",
                                 "0000",      "0.00",       "#",       ""};
constexpr std::size_t longest_number = 400; // the largest double in a plain mask

template <typename Number>
void show(Number value) {
    const std::string text = base::value_text(value);
    require(!text.empty() && text.find_first_of(" ,") == std::string::npos, "no single word");
    require(base::value_text(static_cast<Number>(base::leading_number(text))) == text,
            "value text reads as another value");
    require(static_cast<Number>(base::leading_number(base::exact_text(value))) == value,
            "exact text reads as another value");
    require(base::printed(value).size() < 30, "a printed number is too long");
    for (const std::size_t width : {1U, 4U, 14U}) {
        require(base::column_real(value, width).size() >= width, "a column is too narrow");
    }
}

void show_in_masks(double value) {
    for (const char* const mask : masks) {
        require(base::masked(value, mask).size() < longest_number, "a masked number is too long");
    }
}

void read(std::string_view text) {
    const double number = base::leading_number(text);
    require(std::isfinite(number), "a text reads as no number");
    require(std::isfinite(base::leading_single(text)), "a text reads as no single");
    const std::int32_t whole = base::leading_int32(text);
    require(std::abs(number) > 32767 || base::leading_int16(text) == whole, "integers differ");
    if (const auto all = base::whole_number(text)) {
        require(*all == number, "a whole number differs from its prefix");
    }
    base::whole_integer(text);
    show(number);
    show(base::leading_single(text));
    show_in_masks(number);
    const float single = base::leading_single(text);
    base::Format_Print(single, whole);
    base::Format_Print_zone(single, whole);
}

void arrange(std::string_view text) {
    require(base::with_point(text).size() <= text.size() + 1, "more than a point is added");
    require(base::right_aligned(text, 20).size() >= 20, "a text is not filled up");
    base::PrintLine line;
    line.add(text).zone().add("1").tab(15).add("2").tab(3).add("3").zone();
    require(line.text().size() >= text.size() + 3, "a line has lost a part");
}

// Eight bytes as the values that a file may hold, numbers or not.
void show_bits(std::string_view bytes) {
    double value = 0;
    std::memcpy(&value, bytes.data(), sizeof value);
    float single = 0;
    std::memcpy(&single, bytes.data(), sizeof single);
    show_in_masks(value);
    base::printed(value);
    base::Format_Print(single, 3);
    base::column_real(single, 14);
    if (std::isfinite(value)) {
        show(value);
    }
    if (std::isfinite(single)) {
        show(single);
    }
}

} // namespace

void numbers(std::string_view text) {
    read(text);
    arrange(text);
    if (text.size() >= sizeof(double)) {
        show_bits(text);
    }
}

} // namespace fuzz

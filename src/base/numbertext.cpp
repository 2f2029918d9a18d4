#include "base/numbertext.h"

#include "base/decimaldigits.h"
#include "base/textfile.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>
#include <type_traits>

namespace base {
namespace {

// Digits that the plain form may have on either side of the point.
template <typename Real>
constexpr int plain_limit = std::is_same_v<Real, float> ? 7 : 15;

struct Look {
    bool zero_before_point = true;
    bool always_point = false;
};

// Room for the longest number text, its count, asterisk and blanks.
using Buffer = std::array<char, 80>;

char* put_plain(char* out, const DecimalDigits& number, Look look) {
    const char* const digits = number.digits.data();
    const int before = number.exponent + 1;
    const int whole = std::clamp(before, 0, number.count); // digits before the point
    out = std::copy(digits, digits + whole, out);
    out = std::fill_n(out, std::max(before - whole, 0), '0');
    if (before <= 0 && look.zero_before_point)
        *out++ = '0';
    if (whole < number.count || look.always_point)
        *out++ = '.';
    if (whole < number.count)
        out = std::fill_n(out, std::max(-before, 0), '0');
    return std::copy(digits + whole, digits + number.count, out);
}

char* put_scientific(char* out, const DecimalDigits& number, Look look) {
    const char* const digits = number.digits.data();
    *out++ = *digits;
    if (number.count > 1 || look.always_point)
        *out++ = '.';
    out = std::copy(digits + 1, digits + number.count, out);
    *out++ = 'E';
    *out++ = number.exponent < 0 ? '-' : '+';
    const int exponent = std::abs(number.exponent);
    if (exponent < 10)
        *out++ = '0';
    return std::to_chars(out, out + 4, exponent).ptr;
}

char* put_number(char* out, const DecimalDigits& number, int limit, Look look) {
    if (number.negative && number.count > 0)
        *out++ = '-';
    const int before = number.exponent + 1;
    const bool plain = before <= limit && number.count - before <= limit;
    return plain ? put_plain(out, number, look) : put_scientific(out, number, look);
}

template <typename Real>
char* put_value(char* out, Real value, Look look) {
    return put_number(out, significant_digits(value), plain_limit<Real>, look);
}

template <typename Real>
std::string text_of(Real value, Look look) {
    Buffer buffer;
    return {buffer.data(), put_value(buffer.data(), value, look)};
}

template <typename Real>
std::string exact(Real value) {
    Buffer buffer;
    return {buffer.data(),
            put_number(buffer.data(), shortest_digits(value), plain_limit<Real>, {})};
}

template <typename Real>
std::string printed_real(Real value) {
    Buffer buffer;
    char* const begin = buffer.data() + 1;
    char* end = put_value(begin, value, {.zero_before_point = false});
    *end++ = ' ';
    if (*begin == '-')
        return {begin, end};
    buffer[0] = ' ';
    return {buffer.data(), end};
}

char* put_count(char* out, std::int64_t count) {
    if (count == 1)
        return out;
    out = std::to_chars(out, out + 20, count).ptr;
    *out++ = '*';
    return out;
}

char* put_run(char* out, float value, std::int64_t count, Look look) {
    out = put_value(put_count(out, count), value, look);
    *out++ = ' ';
    return out;
}

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}
bool is_sign(char c) {
    return c == '+' || c == '-';
}

// Whether an unsigned number whose exponent no double can hold is a large one (not one near 0).
bool is_large(std::string_view digits) {
    const std::size_t letter = digits.find_first_of("eE");
    const std::string_view mantissa = digits.substr(0, letter);
    const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
    const std::size_t first = std::min(mantissa.find_first_not_of("0."), mantissa.size());
    const auto places = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(first);
    if (letter == std::string_view::npos)
        return places > 0;
    std::string_view exponent = digits.substr(letter + 1);
    if (exponent.starts_with('+'))
        exponent.remove_prefix(1);
    std::int64_t power = 0;
    const char* const end = exponent.data() + exponent.size();
    if (std::from_chars(exponent.data(), end, power).ec == std::errc::result_out_of_range)
        return !exponent.starts_with('-');
    return power > -places;
}

struct Prefix {
    double value = 0;
    std::size_t length = 0;
    bool too_large = false;
};

// The numeric prefix of a text that begins with an unsigned number.
Prefix unsigned_prefix(std::string_view text) {
    if (text.empty() || !(is_digit(text[0]) || text[0] == '.'))
        return {};
    double value = 0;
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc::invalid_argument)
        return {};
    const auto length = static_cast<std::size_t>(stop - text.data());
    if (error == std::errc() && !std::isinf(value)) [[likely]]
        return {value, length, false};
    const bool too_large = is_large(text.substr(0, length));
    return {too_large ? std::numeric_limits<double>::max() : 0, length, too_large};
}

// Length of an exponent with the letter D at the beginning of `text`; 0 when there is none.
std::size_t d_exponent_length(std::string_view text) {
    if (text.empty() || (text[0] != 'D' && text[0] != 'd'))
        return 0;
    const std::size_t first = text.size() > 1 && is_sign(text[1]) ? 2 : 1;
    std::size_t end = first;
    while (end < text.size() && is_digit(text[end]))
        ++end;
    return end > first ? end : 0;
}

// `prefix` is that of `digits`, which may go on with an exponent of the letter D.
Prefix with_d_exponent(std::string_view digits, const Prefix& prefix) {
    const std::string_view mantissa = digits.substr(0, prefix.length);
    const std::size_t exponent = d_exponent_length(digits.substr(prefix.length));
    if (exponent == 0 || mantissa.find_first_of("eE") != std::string_view::npos)
        return prefix;
    std::string with_e(digits.substr(0, prefix.length + exponent));
    with_e[prefix.length] = 'E';
    return unsigned_prefix(with_e);
}

// The numeric prefix of a text that begins with the number.
Prefix numeric_prefix(std::string_view text) {
    const std::size_t sign = !text.empty() && is_sign(text[0]) ? 1 : 0;
    const std::string_view digits = text.substr(sign);
    Prefix prefix = unsigned_prefix(digits);
    if (prefix.length == 0)
        return prefix;
    if (prefix.length < digits.size()) [[unlikely]]
        prefix = with_d_exponent(digits, prefix);
    prefix.length += sign;
    if (text[0] == '-')
        prefix.value = -prefix.value;
    return prefix;
}

template <typename Integer>
Integer nearest(std::string_view text) {
    constexpr double lowest = std::numeric_limits<Integer>::min();
    constexpr double highest = std::numeric_limits<Integer>::max();
    return static_cast<Integer>(std::clamp(std::nearbyint(leading_number(text)), lowest, highest));
}

} // namespace

std::string value_text(float value) {
    return text_of(value, {});
}
std::string value_text(double value) {
    return text_of(value, {});
}

std::string bare_text(float value) {
    return text_of(value, {.zero_before_point = false});
}
std::string bare_text(double value) {
    return text_of(value, {.zero_before_point = false});
}

std::string printed(float value) {
    return printed_real(value);
}
std::string printed(double value) {
    return printed_real(value);
}

std::string printed(std::int64_t value) {
    Buffer buffer;
    buffer[0] = ' ';
    char* end = std::to_chars(buffer.data() + (value < 0 ? 0 : 1), buffer.data() + 30, value).ptr;
    *end++ = ' ';
    return {buffer.data(), end};
}

std::string exact_text(float value) {
    return exact(value);
}
std::string exact_text(double value) {
    return exact(value);
}

double leading_number(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    return first == std::string_view::npos ? 0 : numeric_prefix(text.substr(first)).value;
}

float leading_single(std::string_view text) {
    constexpr double largest = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(leading_number(text), -largest, largest));
}

std::int16_t leading_int16(std::string_view text) {
    return nearest<std::int16_t>(text);
}
std::int32_t leading_int32(std::string_view text) {
    return nearest<std::int32_t>(text);
}

std::optional<double> whole_number(std::string_view text) {
    const Prefix prefix = numeric_prefix(text);
    if (prefix.length == 0 || prefix.length != text.size() || prefix.too_large)
        return std::nullopt;
    return prefix.value;
}

std::optional<std::int64_t> whole_integer(std::string_view text) {
    if (text.size() > 1 && text[0] == '+' && is_digit(text[1]))
        text.remove_prefix(1);
    std::int64_t value = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end)
        return std::nullopt;
    return value;
}

std::string Format_Print(float value, std::int64_t count) {
    Buffer buffer;
    return {buffer.data(), put_run(buffer.data(), value, count, {.always_point = true})};
}

void append_Format_Print(std::string& text, float value, std::int64_t count) {
    Buffer buffer;
    text.append(buffer.data(), put_run(buffer.data(), value, count, {.always_point = true}));
}

std::string Format_Print_zone(float value, std::int64_t count) {
    Buffer buffer;
    return {buffer.data(), put_run(buffer.data(), value, count, {})};
}

std::string run_item(std::string_view text, std::int64_t count) {
    Buffer buffer;
    std::string item(buffer.data(), put_count(buffer.data(), count));
    item += trimmed(text);
    item += ' ';
    return item;
}

std::string pointed_text(float value) {
    return text_of(value, {.always_point = true});
}

std::string with_point(std::string_view text) {
    std::string pointed(text);
    if (text.find('.') == std::string_view::npos)
        pointed.insert(std::min(text.find('E'), text.size()), 1, '.');
    return pointed;
}

} // namespace base

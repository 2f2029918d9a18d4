#include "base/decimaldigits.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>

namespace base {
namespace {

template <typename Real>
Real finite(Real value) {
    if (std::isnan(value))
        return 0;
    constexpr Real largest = std::numeric_limits<Real>::max();
    return std::clamp(value, -largest, largest);
}

void drop_trailing_zeros(DecimalDigits& number) {
    while (number.count > 0 && number.digits[static_cast<std::size_t>(number.count - 1)] == '0')
        --number.count;
    if (number.count == 0)
        number.exponent = 0;
}

// Reads the form -d.ddde-dd that std::to_chars gives.
template <typename Real, typename... Precision>
DecimalDigits digits_of(Real value, Precision... precision) {
    std::array<char, 48> text;
    const char* const end = std::to_chars(text.data(), text.data() + text.size(), finite(value),
                                          std::chars_format::scientific, precision...)
                                .ptr;
    DecimalDigits number;
    const char* at = text.data();
    number.negative = *at == '-';
    at += number.negative ? 1 : 0;
    std::size_t count = 0;
    for (; *at != 'e'; ++at)
        if (*at != '.')
            number.digits[count++] = *at;
    number.count = static_cast<int>(count);
    at += at[1] == '+' ? 2 : 1;
    std::from_chars(at, end, number.exponent);
    drop_trailing_zeros(number);
    return number;
}

} // namespace

char DecimalDigits::at_power(int power) const {
    const int index = exponent - power;
    return index >= 0 && index < count ? digits[static_cast<std::size_t>(index)] : '0';
}

void DecimalDigits::round_to(int kept) {
    if (kept >= count)
        return;
    const bool up = kept >= 0 && digits[static_cast<std::size_t>(kept)] >= '5';
    count = std::max(kept, 0);
    if (up) {
        while (count > 0 && digits[static_cast<std::size_t>(count - 1)] == '9')
            --count;
        if (count > 0) {
            ++digits[static_cast<std::size_t>(count - 1)];
        } else {
            digits[0] = '1';
            count = 1;
            ++exponent;
        }
    }
    drop_trailing_zeros(*this);
}

DecimalDigits significant_digits(float value) {
    return digits_of(value, std::numeric_limits<float>::digits10);
}

DecimalDigits significant_digits(double value) {
    return digits_of(value, std::numeric_limits<double>::digits10 - 1);
}

DecimalDigits shortest_digits(float value) {
    return digits_of(value);
}
DecimalDigits shortest_digits(double value) {
    return digits_of(value);
}

} // namespace base

#include "base/decimaldigits.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>

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

// Singles of geology and hydraulics lie between 1E-21 and 2^63. There the 7 digits come from whole
// numbers, several times as fast as from std::to_chars and just as exact.
constexpr int single_digits = 7, least_exponent = -21;
constexpr float least_single = 1.1E-21F, end_of_singles = 9.2E18F;
constexpr std::uint32_t end_of_digits = 10'000'000;
__extension__ using Wide = unsigned __int128;

// 5 to the power `count`, and 10: the largest that are needed have 63 bits and 44.
constexpr std::uint64_t power_of(std::uint64_t base, int count) {
    return count == 0 ? 1 : base * power_of(base, count - 1);
}
template <std::uint64_t base, std::size_t... count>
constexpr auto powers(std::index_sequence<count...>) {
    return std::array{power_of(base, int{count})...};
}
constexpr auto powers_of_5 = powers<5>(std::make_index_sequence<28>());
constexpr auto powers_of_10 = powers<10>(std::make_index_sequence<14>());

// The whole part of a number, and what is left of it as a multiple of 1 / `unit`.
struct Parted {
    std::uint64_t whole;
    Wide rest, unit;

    std::uint64_t rounded() const {
        return whole + (rest * 2 > unit || (rest * 2 == unit && whole % 2 != 0) ? 1 : 0);
    }
};

// mantissa * 2^exponent * 10^power of a single in the range.
Parted scaled(std::uint32_t mantissa, int exponent, int power) {
    if (power < 0) {
        const std::uint64_t whole = std::uint64_t{mantissa} << exponent;
        const std::uint64_t divisor = powers_of_10[static_cast<std::size_t>(-power)];
        return {whole / divisor, whole % divisor, divisor};
    }
    const Wide product = Wide{mantissa} * powers_of_5[static_cast<std::size_t>(power)];
    const Wide unit = Wide{1} << (-exponent - power);
    return {static_cast<std::uint64_t>(product / unit), product % unit, unit};
}

// The same digits as digits_of(value, 6) for a single in the range.
DecimalDigits digits_in_range(float value) {
    const auto bits = std::bit_cast<std::uint32_t>(value);
    const std::uint32_t mantissa = (bits & 0x7FFFFFU) | 0x800000U;
    const int exponent = static_cast<int>(bits >> 23 & 0xFFU) - 150;
    // Of the power of two below the value; its own is the same or the next one.
    int decimal = (exponent + 23) * 1233 / 4096 - (exponent + 23 < 0 ? 1 : 0);
    Parted parted = scaled(mantissa, exponent, single_digits - 1 - decimal);
    if (parted.whole >= end_of_digits) {
        ++decimal;
        parted = scaled(mantissa, exponent, single_digits - 1 - decimal);
    }
    std::uint64_t rounded = parted.rounded();
    if (rounded == end_of_digits) {
        ++decimal;
        rounded /= 10;
    }
    DecimalDigits number{.negative = value < 0, .count = single_digits, .exponent = decimal};
    std::to_chars(number.digits.data(), number.digits.data() + single_digits, rounded);
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
    const float size = std::abs(value);
    return size >= least_single && size < end_of_singles
               ? digits_in_range(value)
               : digits_of(value, std::numeric_limits<float>::digits10);
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

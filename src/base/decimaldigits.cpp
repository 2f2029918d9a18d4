#include "base/decimaldigits.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
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

// Most quantities lie in this range. There the 7 digits of a single come from whole numbers,
// several times as fast as from std::to_chars and just as exact.
constexpr float least_in_range = 0x1p-69F, end_of_range = 0x1p63F;
constexpr int single_digits = 7;
constexpr std::uint64_t end_of_digits = 10'000'000;
__extension__ using Wide = unsigned __int128;

template <std::size_t count>
constexpr std::array<std::uint64_t, count> powers_of(std::uint64_t base) {
    std::array<std::uint64_t, count> powers{1};
    for (std::size_t i = 1; i < count; ++i)
        powers[i] = powers[i - 1] * base;
    return powers;
}
constexpr auto powers_of_5 = powers_of<28>(5);
constexpr auto powers_of_10 = powers_of<14>(10);

// A number as its whole part and a rest in units of which `one` make 1.
struct Parted {
    std::uint64_t whole;
    Wide rest, one;

    std::uint64_t rounded() const {
        const bool up = rest * 2 > one || (rest * 2 == one && whole % 2 != 0);
        return whole + (up ? 1 : 0);
    }
};

// mantissa * 2^exponent * 10^power; with a negative power, 2^exponent is whole.
Parted scaled(std::uint32_t mantissa, int exponent, int power) {
    if (power < 0) {
        const std::uint64_t number = std::uint64_t{mantissa} << exponent;
        const std::uint64_t divisor = powers_of_10[static_cast<std::size_t>(-power)];
        return {number / divisor, number % divisor, divisor};
    }
    const Wide product = Wide{mantissa} * powers_of_5[static_cast<std::size_t>(power)];
    const int shift = -exponent - power;
    const Wide one = Wide{1} << shift;
    return {static_cast<std::uint64_t>(product >> shift), product & (one - 1), one};
}

// The same digits as digits_of(value, 6) for a single in the range.
DecimalDigits digits_in_range(float value) {
    const auto bits = std::bit_cast<std::uint32_t>(value);
    const std::uint32_t mantissa = (bits & 0x7FFFFFU) | 0x800000U;
    const int exponent = static_cast<int>(bits >> 23 & 0xFFU) - 150;
    // The decimal exponent of the power of two below the value (log10 of 2 is 1233 / 4096); that of
    // the value is the same or the next one.
    int decimal = (exponent + 23) * 1233 >> 12;
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
    return size >= least_in_range && size < end_of_range
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

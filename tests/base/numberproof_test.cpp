// The number texts held against the standard library on a million values of each kind.
#include "base/numbertext.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <random>

namespace {
using namespace base;

constexpr int values_each = 1'000'000;

template <typename Real>
struct Kind;
template <>
struct Kind<float> {
    using Bits = std::uint32_t;
    static constexpr int digits = 7;
    static constexpr int most_digits = 9;
    static float read(std::string_view text) { return leading_single(text); }
};
template <>
struct Kind<double> {
    using Bits = std::uint64_t;
    static constexpr int digits = 15;
    static constexpr int most_digits = 17;
    static double read(std::string_view text) { return leading_number(text); }
};

// Bit patterns over the whole finite range; every fourth a value such as people type.
template <typename Real>
class RandomValues {
public:
    Real next() {
        if (++count_ % 4 == 0)
            return static_cast<Real>(static_cast<double>(random_() % 2'000'001) - 1'000'000) /
                   powers_[random_() % powers_.size()];
        for (;;) {
            const auto value =
                std::bit_cast<Real>(static_cast<typename Kind<Real>::Bits>(random_()));
            if (std::isfinite(value))
                return value;
        }
    }

private:
    std::mt19937_64 random_{20240517};
    std::array<Real, 6> powers_ = {1, 10, 100, 1E3, 1E6, 1E9};
    int count_ = 0;
};

// Significant digits and the power of ten of the first one, whatever the form of the text.
struct Parts {
    std::array<char, 24> digits{};
    int count = 0;
    int exponent = 0;
    bool negative = false;
    bool scientific = false;

    bool operator==(const Parts& other) const {
        return count == other.count && exponent == other.exponent && negative == other.negative &&
               std::memcmp(digits.data(), other.digits.data(), static_cast<std::size_t>(count)) ==
                   0;
    }
};

Parts parts_of(const char* at, const char* end) {
    Parts parts;
    parts.negative = *at == '-';
    at += parts.negative ? 1 : 0;
    int before = 0;
    bool point = false;
    for (; at != end && *at != 'E' && *at != 'e'; ++at) {
        if (*at == '.') {
            point = true;
            continue;
        }
        if (parts.count == 0 && *at == '0') {
            before -= point ? 1 : 0;
            continue;
        }
        before += point ? 0 : 1;
        parts.digits[static_cast<std::size_t>(parts.count++)] = *at;
    }
    while (parts.count > 0 && parts.digits[static_cast<std::size_t>(parts.count - 1)] == '0')
        --parts.count;
    int power = 0;
    parts.scientific = at != end;
    if (parts.scientific)
        std::from_chars(at + (at[1] == '+' ? 2 : 1), end, power);
    parts.exponent = parts.count > 0 ? before - 1 + power : 0;
    return parts;
}

Parts parts_of(const std::string& text) {
    return parts_of(text.data(), text.data() + text.size());
}

// Length of the text without one superfluous character, in the form that the rule prescribes.
int shortest_length(const Parts& parts, bool scientific) {
    const int sign = parts.negative ? 1 : 0;
    if (scientific)
        return sign + parts.count + (parts.count > 1 ? 1 : 0) +
               (std::abs(parts.exponent) >= 100 ? 5 : 4);
    const int behind = std::max(parts.count - parts.exponent - 1, 0);
    return sign + std::max(parts.exponent + 1, 1) + (behind > 0 ? behind + 1 : 0);
}

template <typename Real>
bool has_right_form(const std::string& text, const Parts& parts) {
    const bool scientific = parts.exponent + 1 > Kind<Real>::digits ||
                            parts.count - parts.exponent - 1 > Kind<Real>::digits;
    return parts.scientific == scientific &&
           static_cast<int>(text.size()) == shortest_length(parts, scientific);
}

template <typename Real>
bool value_text_is_right(Real value) {
    std::array<char, 40> general;
    const char* const end = std::to_chars(general.data(), general.data() + general.size(), value,
                                          std::chars_format::general, Kind<Real>::digits)
                                .ptr;
    const std::string text = value_text(value);
    const Parts parts = parts_of(text);
    double rounded = 0; // the last digits of the range round to beyond it
    if (std::from_chars(general.data(), end, rounded).ec != std::errc())
        rounded = std::copysign(std::numeric_limits<double>::max(), double{value});
    return parts == parts_of(general.data(), end) && has_right_form<Real>(text, parts) &&
           leading_number(text) == rounded;
}

template <typename Real>
bool exact_text_is_right(Real value) {
    const std::string text = exact_text(value);
    const Parts parts = parts_of(text);
    return parts.count <= Kind<Real>::most_digits && has_right_form<Real>(text, parts) &&
           std::bit_cast<typename Kind<Real>::Bits>(Kind<Real>::read(text)) ==
               std::bit_cast<typename Kind<Real>::Bits>(value);
}

template <typename Real>
class MillionValues : public testing::Test {};
using Kinds = testing::Types<float, double>;
TYPED_TEST_SUITE(MillionValues, Kinds);

TYPED_TEST(MillionValues, value_text_is_the_rounded_value_in_the_right_form) {
    RandomValues<TypeParam> values;
    for (int i = 0; i < values_each; ++i) {
        const TypeParam value = values.next();
        if (value != 0) {
            ASSERT_TRUE(value_text_is_right(value)) << value_text(value) << " of " << value;
        }
    }
}

TYPED_TEST(MillionValues, exact_text_reads_back_as_the_same_bits) {
    RandomValues<TypeParam> values;
    for (int i = 0; i < values_each; ++i) {
        const TypeParam value = values.next();
        if (value != 0) {
            ASSERT_TRUE(exact_text_is_right(value)) << exact_text(value) << " of " << value;
        }
    }
}

} // namespace

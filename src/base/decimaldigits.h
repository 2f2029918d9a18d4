// A binary number as decimal digits, before it is laid out as text. Used by the number texts only.
#pragma once

#include <array>

namespace base {

// d1.d2d3... times ten to the power `exponent`; no trailing zeros. The value 0 has no digits.
struct DecimalDigits {
    bool negative = false;
    int count = 0;
    int exponent = 0;
    std::array<char, 20> digits{};

    // The digit that counts for ten to the power `power`: '0' outside the digits.
    char at_power(int power) const;
    // Keeps the first `kept` digits; a half goes away from zero. Below 0 nothing is left.
    void round_to(int kept);
};

// Correctly rounded to 7 (single) or 15 (double) significant digits. NaN counts as 0, an infinity
// as the largest finite value.
DecimalDigits significant_digits(float value);
DecimalDigits significant_digits(double value);

// The fewest digits that read back as the same value: at most 9 (17).
DecimalDigits shortest_digits(float value);
DecimalDigits shortest_digits(double value);

} // namespace base

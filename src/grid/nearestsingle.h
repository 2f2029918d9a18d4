// Doubles to singles where a file or a pointer gives more than a single holds.
#pragma once

#include <algorithm>
#include <limits>

namespace grid {

// The nearest single; beyond the range of a single, the largest one.
inline float nearest_single(double value) {
    constexpr double largest = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(value, -largest, largest));
}

} // namespace grid

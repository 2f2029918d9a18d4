#include "plot/plotdevice.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace plot {

float to_single(double value) {
    constexpr double largest = std::numeric_limits<float>::max();
    return std::isnan(value) ? 0 : static_cast<float>(std::clamp(value, -largest, largest));
}

} // namespace plot

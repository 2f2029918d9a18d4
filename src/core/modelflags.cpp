#include "core/modelflags.h"

#include "base/failure.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>

namespace core {

void ModelFlags::set(int a, int b, int value) {
    using Limits = std::numeric_limits<std::int16_t>;
    cells_[index(a, b)] =
        static_cast<std::int16_t>(std::clamp<int>(value, Limits::min(), Limits::max()));
}

std::size_t ModelFlags::index(int a, int b) {
    if (a < 0 || a >= size || b < 0 || b >= size) {
        throw base::RangeFailure(fmt::format("ModelFlags({}, {}) is outside the table", a, b));
    }
    return static_cast<std::size_t>(a * size + b);
}

} // namespace core

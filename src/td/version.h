#pragma once

namespace td {

inline constexpr const char* version = "0.1.0";

} // namespace td

#pragma once

namespace base {

// Of both programs.
inline constexpr const char* version = "0.1.0";

} // namespace base

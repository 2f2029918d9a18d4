// Opening a model in the window.
#pragma once

#include <filesystem>

namespace ui {

class Desk;

// Asks first what becomes of a worksheet session that was cut off, unless it has changed nothing.
// False: the model is not open, which was shown.
bool open_with_recovery(Desk& desk, const std::filesystem::path& path);

} // namespace ui

// Light and dark colours.
#pragma once

namespace ui {

// Instead of what the desktop has set.
void use_theme(bool dark);

} // namespace ui

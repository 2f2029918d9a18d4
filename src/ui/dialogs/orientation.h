// The question of the model import that no file answers: how the layers lie.
#pragma once

#include <optional>

namespace ui {

struct CommandContext;

// The dialog Orientation. 0 horizontal, 1 vertical, 2 cylindrical; nothing after Cancel.
std::optional<int> choose_orientation(CommandContext& context);

} // namespace ui

#include "ui/commandtables.h"

namespace ui {

std::span<const CommandRow> editor_commands() {
    return {};
}

} // namespace ui

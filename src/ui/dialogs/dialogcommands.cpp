#include "ui/commandtables.h"

namespace ui {

std::span<const CommandRow> dialog_commands() {
    return {};
}

} // namespace ui

#include "ui/commandtables.h"

namespace ui {

std::span<const CommandRow> file_commands() {
    return {};
}

} // namespace ui

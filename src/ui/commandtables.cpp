#include "ui/commandtables.h"

namespace ui {

const CommandRow* find_command(std::string_view name) {
    for (const auto table :
         {file_commands(), dialog_commands(), run_commands(), editor_commands()}) {
        for (const CommandRow& row : table) {
            if (row.name == name) {
                return &row;
            }
        }
    }
    return nullptr;
}

} // namespace ui

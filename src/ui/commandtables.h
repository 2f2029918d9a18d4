// The commands of the menu as data: name and what runs behind the guard of app/commands.h. An item
// of the menu that stands in no table belongs to a tool that this program does not have.
#pragma once

#include <span>
#include <string_view>

namespace ui {

class Desk;
class MainWindow;

struct CommandContext {
    Desk& desk;
    MainWindow& window;
};

struct CommandRow {
    const char* name; // in the menu
    void (*run)(CommandContext&);
};

// One table per group: files and help, dialogs of the model's settings, input file and run,
// worksheet and mesh editor.
std::span<const CommandRow> file_commands();
std::span<const CommandRow> dialog_commands();
std::span<const CommandRow> run_commands();
std::span<const CommandRow> editor_commands();

// Nothing for a name that stands in no table.
const CommandRow* find_command(std::string_view name);

} // namespace ui

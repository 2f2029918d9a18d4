// The menu tree of the main window as one table: the order of its commands is the order in which a
// model is built.
#pragma once

#include "base/failure.h"

#include <optional>
#include <span>
#include <string_view>

namespace app {

struct Workspace;

enum class MenuKind {
    menu,             // of the menu bar
    submenu,          // an item that opens a menu of its own
    separator,        // its caption is "-", its name "-" when nothing refers to it
    command,          // works without a model
    model_command,    // needs an open model
    settings_command, // opens a dialog on the lines of <base>.typ, which has to be there
};

struct MenuEntry {
    int depth; // 0 menu, 1 its items, 2 items of a submenu
    const char* name;
    const char* caption; // "&" before the mnemonic; trailing blanks count
    MenuKind kind;
};

// The whole tree, depth first.
std::span<const MenuEntry> menu_table();

// What every command tests first: why it will not start with this model (none open: nullptr).
// Nothing for names that are no command.
std::optional<base::Refusal> command_guard(std::string_view command, const Workspace* workspace);

} // namespace app

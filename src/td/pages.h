// Pages for the system, made from the command tables: the manual page and the completion of the
// shell.
#pragma once

#include <string>

namespace td {

// Manual page td(1), in the man macros of troff.
std::string man_page();

// Script that completes commands, subcommands, options and project files in bash.
std::string bash_completion();

} // namespace td

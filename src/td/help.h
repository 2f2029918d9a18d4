// Help and version texts of `td`, made from the command tables.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace td {

struct Command;

// Commands on one subject, under the title that help gives them.
struct CommandGroup {
    const char* title;
    std::span<const Command> (*commands)();
};
std::span<const CommandGroup> command_groups();

void for_each_command(const std::function<void(const Command&)>& visit);
// The words of a command's name: "grid", "set".
std::vector<std::string> command_words(const Command& command);

// The text for --version, --help, GROUP --help and COMMAND --help; nothing when no help is asked
// for.
std::optional<std::string> help_for(const std::vector<std::string>& words);

} // namespace td

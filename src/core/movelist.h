// The list of moves in the hidden folder, for whoever comes after the command that has left it.
#pragma once

#include <filesystem>

namespace core {

// There is a list: of a command that was cut off, or whose moves could not be taken back.
bool has_move_list(const std::filesystem::path& hidden);
// Goes through it, to its end or back. FileFailure leaves it for the next command.
void settle_move_list(const std::filesystem::path& hidden);
// Drops the files that a command has kept aside, and what programs that are gone kept for undo.
void drop_files_aside(const std::filesystem::path& hidden) noexcept;

} // namespace core

// File names and the folders of the program.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace base {

// True when there is something of that name that is no folder.
bool is_file(const std::filesystem::path& path);

// The file of that name in `folder`: the exact name first, then the same name without regard to
// case (the first in byte order when there are several). Nothing when there is none or no folder.
std::optional<std::filesystem::path> find_ignoring_case(const std::filesystem::path& folder,
                                                        std::string_view name);

// The file's name from the root on, without "." and "..". FileFailure when it would begin at the
// current folder and that is gone.
std::filesystem::path absolute_path(const std::filesystem::path& file);

// UTF-8 name without its folder. Both "/" and "\" separate.
std::string file_name(const std::filesystem::path& file);

// True when `name` can be the name of a file inside a folder: not empty, at most 200 bytes, no
// separator, no control character, neither "." nor "..".
bool safe_file_name(std::string_view name);

// The folder of the running program.
std::filesystem::path executable_folder();

// The user's folder for settings and for data of this program (XDG), not yet created.
std::filesystem::path user_settings_folder();
std::filesystem::path user_data_folder();

// Writes a file beside the old one and moves it over it; keeps a link a link and the file's mode.
// For files that belong to no model (settings, exchange files); makes missing folders.
void replace_file(const std::filesystem::path& file, std::string_view bytes);

} // namespace base

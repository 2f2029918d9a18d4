// The files of a folder, for commands that work on all spellings of a name.
#pragma once

#include <filesystem>
#include <vector>

namespace app {

// Full names of the files directly inside (links to files count, folders do not). FileFailure when
// the folder cannot be read.
std::vector<std::filesystem::path> files_in(const std::filesystem::path& folder);

} // namespace app

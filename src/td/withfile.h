// Failures of numbers that a file gave rise to.
#pragma once

#include <filesystem>
#include <functional>

namespace td {

// Runs `work`; a number out of its range is told with the file that it comes from.
int with_file(const std::filesystem::path& file, const std::function<int()>& work);

} // namespace td

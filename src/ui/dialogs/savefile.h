// Files that the person names, to be written.
#pragma once

#include "base/interaction.h"

#include <filesystem>
#include <optional>
#include <string_view>

namespace ui {

// Asks before a file that is there is written over.
bool may_write(base::Interaction& user, std::string_view title, const std::filesystem::path& file);

// The file dialog, and that question. Nothing when the person does not want to.
std::optional<base::Interaction::FilteredFile> choose_to_write(base::Interaction& user,
                                                               std::string_view title,
                                                               std::string_view filter);

} // namespace ui

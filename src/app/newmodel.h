// A model from nothing.
#pragma once

#include "app/workspace.h"
#include "base/interaction.h"

#include <filesystem>

namespace app {

// Writes the project file with its defaults, a layer file for one layer and an empty list of
// Monitoring Points, and adds the model to the recent list in `user_folder` (none when empty). An
// existing project of that name asks first; Yes runs Delete_Model_Files in the same unit of work.
// Neither workspace nor refusal: the answer was not Yes. FileFailure when the folder is missing or
// cannot be written.
Loaded new_model(const std::filesystem::path& path, base::Interaction& user,
                 const std::filesystem::path& user_folder = {});

// Why New and Save As will not make a model of that name: it does not end in .td1. `title` is that
// of the command.
std::optional<base::Refusal> new_name_refusal(const std::filesystem::path& path, const char* title);

// Removes the project file and the settings files that an overwritten project leaves behind, in any
// spelling; grid, simulation type, rock and arrays stay.
void Delete_Model_Files(core::ModelFiles& files);

} // namespace app

// Opening a model: the whole sequence, with the companion files that it creates or renews.
#pragma once

#include "app/workspace.h"
#include "base/interaction.h"
#include "grid/worksheetfiles.h"

#include <filesystem>
#include <optional>

namespace app {

// Reads the project file and the companions that every model has, places the grid, offers the
// conversion of a predecessor's model, adds the model to the recent list in `user_folder` (none
// when empty) and saves the project. Blanks round `path` are dropped. Neither workspace nor
// refusal: the path was empty or the question of the conversion not answered. FileFailure when the
// project file is missing, a companion is damaged or the folder cannot be written. All files are as
// before unless there is a workspace. `recovery` ends a worksheet session that was cut off; without
// it the scratch files of one stay.
Loaded open_model(const std::filesystem::path& path, base::Interaction& user,
                  const std::filesystem::path& user_folder = {},
                  std::optional<grid::Recovery> recovery = {});

// The same with files at hand: what is still aside becomes the content of the folder together with
// what the opening writes, or not at all. `shown` names the model in a refusal.
Loaded open_files(core::ModelFiles files, const std::filesystem::path& shown,
                  base::Interaction& user, const std::filesystem::path& user_folder = {});

// Reads the companions as the opening does. Refused when the layer file is missing or has no data
// for the grid; FileFailure when a companion is damaged. `shown` names the model in the refusal.
std::optional<base::Refusal> companions_refusal(const Workspace& workspace,
                                                const std::filesystem::path& shown);

} // namespace app

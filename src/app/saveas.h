// A copy of the open model under a new name, without its results.
#pragma once

#include "app/workspace.h"
#include "base/interaction.h"

#include <filesystem>
#include <string>
#include <vector>

namespace app {

// Why the model cannot be saved as `target`: not a name of a project, or its own.
std::optional<base::Refusal> save_as_refusal(const Workspace& source,
                                             const std::filesystem::path& target);

struct SavedAs {
    Loaded opened;                   // the new model
    std::vector<std::string> copied; // names of the new files, sorted; without folder
};

// Copies every file of the model but results and plot files, and the data files of the chemical
// models that lie beside it, to the name and the (existing) folder of `target`; an existing project
// of that name asks first. The new model is opened as open_model() does, in the same unit of work:
// a model that cannot be opened is not copied, all or nothing. Neither workspace nor refusal in
// `opened`: the answer was not Yes.
SavedAs save_model_as(const Workspace& source, const std::filesystem::path& target,
                      base::Interaction& user, const std::filesystem::path& user_folder = {});

} // namespace app

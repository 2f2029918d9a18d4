// A whole new model from a simulator file.
#pragma once

#include "app/workspace.h"
#include "base/interaction.h"
#include "results/modelimport.h"

#include <filesystem>
#include <optional>

namespace app {

struct ImportAnswers {
    results::ImportChoices choices;
    std::optional<bool> overwrite; // asked when it is needed and not known
};

// Makes the model `target` from the stream `source` (.nlo or .nml) and opens it, all in one unit of
// work: after a refusal or a FileFailure the folder is as before. An existing project asks first;
// Yes also removes its arrays, zones and settings, but never results. Neither workspace nor
// refusal: a question was not answered with Yes.
Loaded file_import_model(const std::filesystem::path& source, const std::filesystem::path& target,
                         const ImportAnswers& answers, base::Interaction& user,
                         const std::filesystem::path& user_folder = {});

} // namespace app

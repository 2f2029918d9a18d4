// A model from a simulator file: the way back of the input file's writer.
#pragma once

#include "base/failure.h"

#include <filesystem>
#include <optional>

namespace base {
class Interaction;
}
namespace core {
class ModelFiles;
class Project;
} // namespace core

namespace results {

// Title of the boxes of the import.
inline constexpr const char* import_title = "Import Model";

// What is known before; what is not is asked.
struct ImportChoices {
    int GridOrientation = 0; // 0 horizontal, 1 vertical, 2 cylindrical
    std::optional<bool> individual_porosity, individual_permeability;
};

struct ImportedModel {
    bool answered = true; // false: a question was not, and nothing is to be kept
    std::optional<base::Refusal> refusal;
    // False: the file holds what this edition cannot take over, which stays out of the model.
    bool complete = true;
};

// Fills `project` and writes the files of a new model through `files` from the stream `source`, an
// input file or a result file: settings, periods, grid, rock, wells, points, and the arrays that
// the stream holds, in worksheet rows and layers. What the stream does not hold stays at the
// defaults of a new model. The project file is the caller's, and nothing is committed. Refused:
// more than 80 layers, and a stream without a grid. FileFailure for a stream that is cut off or
// holds what cannot be. Memory for two fields.
ImportedModel Import_Model(const std::filesystem::path& source, const ImportChoices& choices,
                           core::Project& project, core::ModelFiles& files,
                           base::Interaction& user);

} // namespace results

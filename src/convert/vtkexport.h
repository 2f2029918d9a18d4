// Fields of a result file as legacy VTK text files, one for each field.
#pragma once

#include "convert/fieldchoice.h"
#include "results/streamreader.h"

#include <array>
#include <filesystem>
#include <functional>
#include <string>

namespace core {
class Project;
}

namespace convert {

// A result file and the model that it belongs to.
struct Source {
    const core::Project& project;
    core::ModelFiles& files;  // of the model
    core::ModelFiles& target; // of the folder of the result, with write access
    results::StreamReader& stream;
    base::Interaction& user;
};

struct VtkOptions {
    FieldChoice choice;
    std::array<double, 3> scales{1, 1, 1}; // of the axes
};

// Told of every file that is complete, by its name without folder.
using Written = std::function<void(const std::string& name)>;

// Writes <base>-NAME.vtk for each chosen field (cmdConvert_Click). Blocks are searched forward by
// their prefix, from where the one before ended: one that is not found ends the search for all
// behind it, without a message. Refused when the grid of the file is another one. FileFailure for a
// block that is cut off and for what cannot be written; files that were complete before stay.
std::optional<base::Refusal> export_vtk(const Source& source, DataSet type,
                                        const VtkOptions& options, const Written& written);

} // namespace convert

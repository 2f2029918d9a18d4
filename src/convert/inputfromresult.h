// Fields of a result as the initial arrays of the next run.
#pragma once

#include "base/failure.h"

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace base {
class Interaction;
}
namespace core {
class ModelFiles;
class Project;
} // namespace core

namespace convert {

// A field that can be taken over, in the order of the dialog.
struct InitialField {
    std::string_view name;    // "POR"
    std::string_view caption; // "Porosity"
    int number;               // of its array
    bool Absolute = false;    // without the signs, which are marks
};
std::span<const InitialField> initial_fields();

// What is taken over: names of initial_fields(), and numbers of tracers from 1 to 5.
struct ChosenFields {
    std::vector<std::string> names;
    std::vector<int> tracers;
};

enum class Converted { done, refused };

// Writes period 1 of the arrays of the chosen fields from the result file and marks them as defined
// and the model as edited; worksheet rows and layers, velocities in m/s. A block that is not there
// leaves its array alone. The user is asked before; refused, with its message, are a file that is
// not there, no chosen field, and a result of another grid. FileFailure for a block that is cut
// off. Commits nothing. One field is held at a time.
Converted Convert_Click(const std::filesystem::path& result, const ChosenFields& chosen,
                        core::Project& project, core::ModelFiles& files, base::Interaction& user);

} // namespace convert

// The simulator's input file <base>.nml and the control file tervex.ctl.
#pragma once

#include "base/failure.h"

#include <filesystem>
#include <optional>

namespace base {
class Interaction;
}
namespace core {
class ModelFiles;
class ModelFlags;
class Project;
} // namespace core

namespace input {

// Title of the boxes of the creation.
inline constexpr const char* create_title = "Create TERVEX Input File";
// The question behind a creation without fault; Yes is mnuTervexRun.
inline constexpr const char* run_question =
    "     Inputfile successfully created.\n\n     You want to run TERVEX?";

// Refuses a model with chemistry switched on, which this edition does not write.
std::optional<base::Refusal> chemistry_refusal(const core::ModelFlags& flags);

// The self-check of the number text: a decimal comma would make a stream that nobody can read.
std::optional<base::Refusal> decimal_refusal();

struct CreatedInput {
    bool InputError = false; // the stream is not complete
    bool failed = false;     // because a file could not be read or written
};

// Writes <base>.nml through `files`, block after block, for a horizontal model or a cross-section
// by the model's orientation. Messages go to `user`; a block whose files cannot be read stays
// empty, is reported by user.failure(), and the writer goes on. The flag of wells in `project` is
// cleared when no period has any. Commits nothing.
CreatedInput CreateTervexNml(core::Project& project, core::ModelFiles& files,
                             base::Interaction& user);

// Writes tervex.ctl into the program folder: it tells the simulator which model to run. <proj> is
// the absolute path of the project file without its last four characters.
void CreateTervexCtl(const core::ModelFiles& files, const std::filesystem::path& install);

// The whole command behind "Create TERVEX Input File" but its guard and the check: refusals,
// stream, the edited mark (0,1), the project file, the control file and the commit. A message tells
// that the file is not complete; that it is comes with the run_question, which is the caller's. A
// refusal has changed nothing, nor has a FileFailure because one of the files cannot be written.
struct CreateResult {
    std::optional<base::Refusal> refusal;
    CreatedInput created;
};
CreateResult CreateTervexInput(core::Project& project, core::ModelFiles& files,
                               const std::filesystem::path& install, base::Interaction& user);

} // namespace input

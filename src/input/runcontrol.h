// Starting the simulator on the open model, and the serialized run, in which a result file becomes
// the next run's input.
#pragma once

#include "base/failure.h"
#include "base/process.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace base {
class Interaction;
}
namespace core {
class ModelFiles;
class Project;
} // namespace core

namespace input {

// Where the external programs are.
struct Programs {
    std::filesystem::path install; // program folder: tervex.ctl, flag file, data files, programs
    std::vector<std::filesystem::path> spare; // looked through for what `install` does not have
};

struct Started {
    std::filesystem::path program;
    std::filesystem::path log; // holds what the program prints
    base::Process process;
};

struct RunResult {
    std::optional<base::Refusal> refusal;
    bool cancelled = false; // by the answer to a question
    std::vector<Started> started;
};

// The command behind "Run TERVEX": starts tervex.sh in the program folder, which becomes its
// current one, and with the run-time information level 5 TimeInfo; their output goes to <base>.log.
// Data files are brought to their folders, tervex.ctl is written when it names another model, the
// flag file of a run that is no more is removed with the user's consent. Refuses a model without
// input file or edited since, and one with chemistry whose data files cannot be found. FileFailure
// when the starter is missing or cannot be executed; a failure of TimeInfo goes to `user`.
// Nothing has changed after a refusal, after a cancelled question, and when the starter is missing.
RunResult mnuTervexRun(const core::Project& project, const core::ModelFiles& files,
                       const Programs& programs, base::Interaction& user);

// The fields of the dialog of the serialized run.
struct SerializedRunForm {
    std::filesystem::path NLO_old; // the next input; empty: no run, only the renaming
    std::string new_Names;         // "<project name>.*.ENDING"; empty: asks whether to back up
    bool start = true;             // the simulator, once the input is there
    bool backed_up = false;        // by a renaming before: empty new_Names ask nothing
    std::string proposed = {};     // new_Names of the answer Yes; empty: proposed_names()
};

// What new_Names proposes.
std::string proposed_names(const core::ModelFiles& files);
// Why NLO_old cannot be chosen: it lies in another folder than the model.
std::optional<base::Refusal> folder_refusal(const std::filesystem::path& NLO_old,
                                            const core::ModelFiles& files);

struct SerializedResult : RunResult {
    struct Names {
        std::string from, to; // without folder
    };
    std::vector<Names> renamed;
    std::optional<Names> copied;
};

// Renames <base>.nml and <base>.nlo, as far as they are there, to <base>.nml.ENDING and
// <base>.nlo.ENDING, copies NLO_old (be it the one just renamed) to <base>.nml and starts the
// simulator: tervex in the program folder, otherwise minitervex, there or in a spare folder. All
// files change together or not at all. Refuses a result of another folder, names of another form
// and endings in use. FileFailure when NLO_old or the simulator is missing; nothing has changed.
SerializedResult SerializedRun(const SerializedRunForm& form, core::ModelFiles& files,
                               const Programs& programs, base::Interaction& user);

} // namespace input

#include "input/runcontrol.h"

#include "base/interaction.h"
#include "base/paths.h"
#include "base/textfile.h"
#include "core/filemoves.h"
#include "core/modelfiles.h"
#include "core/project.h"
#include "input/inputfile.h"
#include "report/attempt.h"
#include "sim/typfile.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <functional>
#include <string_view>

namespace input {

namespace fs = std::filesystem;

namespace {

constexpr const char* starter_name = "tervex.sh";
constexpr const char* simulator_name = "tervex";
constexpr const char* own_simulator_name = "minitervex";
constexpr const char* time_window_name = "TimeInfo";
constexpr const char* flag_file_name = "flagfile";
constexpr const char* control_file_name = "tervex.ctl";
constexpr const char* on_screen = "5"; // run-time information level

constexpr const char* running_question =
    "The selected model or modeling tool cannot be started, because a model located in the same "
    "folder is possibly running. Please use the key combination Alt+TAB to check whether a model "
    "is running.\n"
    "1. If there is a running model, you must click on Cancel to close this dialog box.\n"
    "2. If no model is running, you may click on OK to start the simulation or modeling tool. ";

constexpr const char* backup_question =
    "You did not back-up your Result files until now.\n"
    "If you start the serialized run now your Result files will probably be overwritten.\n"
    "Press Yes for back-up, No to go on, or Cancel to return to the Menu.";

base::Refusal message(std::string text) {
    return {"Message", std::move(text)};
}

std::optional<base::Refusal> input_refusal(const core::Project& project,
                                           const core::ModelFiles& files) {
    if (!files.has(".nml")) {
        return message("Creat the input file first in: |Models|Create TERVEX Inputfile");
    }
    if (project.flags(0, 1) == 1) {
        return base::Refusal{"Create a new input file",
                             "You have either edited the model or creation of the input file was "
                             "not successfull."};
    }
    return std::nullopt;
}

// A data file that a run needs in another folder than the one that it is in.
struct DataFile {
    const char* name;
    fs::path from, to; // folders
};

std::vector<DataFile> data_files(const core::ModelFlags& flags, const fs::path& model,
                                 const fs::path& install) {
    const bool chemistry = flags.ChemistryMode() != 0;
    std::vector<DataFile> needed;
    if (chemistry && flags.ActivityModel() == 1) {
        needed.push_back({"kalmexdh.dat", install, model});
    } else {
        needed.push_back({"phrqpitz.dat", install, model});
        needed.push_back({"pitzer.dat", install, model});
    }
    if (chemistry && flags.ActivityModel() == 2) {
        needed.push_back({"caso4.dat", model, install});
    }
    if (chemistry && flags.ActivityModel() == 4) {
        needed.push_back({"quarz.dat", model, install});
    }
    std::erase_if(needed, [](const DataFile& file) {
        return base::find_ignoring_case(file.to, file.name).has_value();
    });
    return needed;
}

std::optional<base::Refusal> data_refusal(const core::ModelFlags& flags,
                                          const std::vector<DataFile>& needed) {
    for (const DataFile& file : needed) {
        if (flags.ChemistryMode() != 0 && !base::find_ignoring_case(file.from, file.name)) {
            return message(fmt::format("The file {} is not available.", file.name));
        }
    }
    return std::nullopt;
}

void bring(const std::vector<DataFile>& needed) {
    for (const DataFile& file : needed) {
        if (const auto source = base::find_ignoring_case(file.from, file.name)) {
            base::replace_file(file.to / file.name, base::read_bytes(*source));
        }
    }
}

// True when no flag file says that a simulation runs in the folder, or the user knows better.
bool may_start(const fs::path& install, base::Interaction& user) {
    return !base::find_ignoring_case(install, flag_file_name) ||
           user.ask(base::desk_title, running_question, base::Buttons::ok_cancel) ==
               base::Answer::ok;
}

void remove_flag_files(const fs::path& install) {
    while (const auto file = base::find_ignoring_case(install, flag_file_name)) {
        if (std::error_code failed; !fs::remove(*file, failed)) {
            throw base::FileFailure(fmt::format("cannot be removed: {}", failed.message()), *file);
        }
    }
}

// The control file's lines without comments: default file, then project and type.
bool names_model(const fs::path& control_file, const std::string& proj) {
    if (!base::is_file(control_file)) {
        return false;
    }
    std::vector<std::string> lines = base::text_lines(base::read_bytes(control_file));
    std::erase_if(lines, [](const std::string& line) { return line.starts_with("#"); });
    return lines.size() >= 2 && lines[0] == proj + ".nml" && lines[1] == proj + " 3";
}

// The program folder as the simulator is to find it.
void prepare_install(const core::ModelFiles& files, const fs::path& install) {
    if (!names_model(install / control_file_name, files.base())) {
        CreateTervexCtl(files, install);
    }
    remove_flag_files(install);
}

// The first of the files that is there; FileFailure, about the one expected first, when none is.
fs::path found_program(const std::vector<fs::path>& places) {
    const auto found = std::ranges::find_if(places, base::is_file);
    const fs::path& program = found == places.end() ? places.front() : *found;
    base::check_program(program);
    return program;
}

fs::path starter(const Programs& programs) {
    std::vector<fs::path> places{programs.install / starter_name};
    for (const fs::path& folder : programs.spare) {
        places.push_back(folder / starter_name);
    }
    return found_program(places);
}

fs::path simulator(const Programs& programs) {
    std::vector<fs::path> places{programs.install / simulator_name,
                                 programs.install / own_simulator_name};
    for (const fs::path& folder : programs.spare) {
        places.push_back(folder / own_simulator_name);
    }
    return found_program(places);
}

Started start(const fs::path& program, const core::ModelFiles& files, const fs::path& install,
              bool append = false) {
    const fs::path log = files.name_of(".log");
    return {program, log,
            base::Process::start({.program = program,
                                  .arguments = {},
                                  .folder = install,
                                  .output = log,
                                  .append = append})};
}

} // namespace

RunResult mnuTervexRun(const core::Project& project, const core::ModelFiles& files,
                       const Programs& programs, base::Interaction& user) {
    RunResult result;
    const auto needed = data_files(project.flags, files.folder(), programs.install);
    result.refusal = input_refusal(project, files);
    if (!result.refusal) {
        result.refusal = data_refusal(project.flags, needed);
    }
    result.cancelled = !result.refusal && !may_start(programs.install, user);
    if (result.refusal || result.cancelled) {
        return result;
    }
    const fs::path program = starter(programs);
    const std::string LINFO = sim::TypFile::load(files).LINFO();
    bring(needed);
    prepare_install(files, programs.install);
    result.started.push_back(start(program, files, programs.install));
    if (LINFO == on_screen) {
        report::attempt(user, "mnuTervexRun()", [&] {
            result.started.push_back(
                start(programs.install / time_window_name, files, programs.install, true));
        });
    }
    return result;
}

namespace {

constexpr std::string_view names_middle = ".*.";
constexpr const char* default_ending = "00";
constexpr std::array backed_up = {".nml", ".nlo"};

// The ending in "<project name>.*.ENDING"; nothing when the names have another form.
std::optional<std::string> ending_of(std::string_view names, const core::ModelFiles& files) {
    const std::string project = files.base_name();
    const std::size_t head = project.size() + names_middle.size();
    if (names.size() <= head ||
        !base::same_ignoring_case(names.substr(0, project.size()), project) ||
        names.substr(project.size(), names_middle.size()) != names_middle) {
        return std::nullopt;
    }
    const std::string_view ending = names.substr(head);
    const bool allowed = base::safe_file_name("x" + std::string(ending)) &&
                         ending.find_first_of("?*") == ending.npos;
    return allowed ? std::optional(std::string(ending)) : std::nullopt;
}

fs::path backup_of(const char* extension, const std::string& ending,
                   const core::ModelFiles& files) {
    return fmt::format("{}{}.{}", files.base(), extension, ending);
}

std::optional<base::Refusal> names_refusal(const std::string& names,
                                           const core::ModelFiles& files) {
    const auto ending = ending_of(names, files);
    if (!ending) {
        return message("The entered filename isn't correct.\n"
                       "You must not change the Projectname!\n"
                       "Please use the following format: [Projectname.*.?]\n"
                       "Vary the [?] only.");
    }
    const auto taken = [&](const char* extension) {
        const fs::path backup = backup_of(extension, *ending, files);
        return files.has_file(backup) ||
               base::find_ignoring_case(files.folder(), backup.filename().string());
    };
    if (std::ranges::any_of(backed_up, taken)) {
        return message("The defined second file extension, already exists.\nChoose another one.");
    }
    return std::nullopt;
}

} // namespace

std::optional<base::Refusal> folder_refusal(const fs::path& NLO_old,
                                            const core::ModelFiles& files) {
    std::error_code ignored;
    const fs::path folder =
        fs::weakly_canonical(base::absolute_path(NLO_old).parent_path(), ignored);
    if (folder == fs::weakly_canonical(files.folder(), ignored)) {
        return std::nullopt;
    }
    return message("Do not change the directory!");
}

namespace {

// A second name of the same content, where the file system has such; otherwise a copy. What is
// behind a link, since the link is going to lead to the next input.
void keep_as(const fs::path& file, const fs::path& backup, core::ModelFiles& files) {
    const fs::path aside = files.open_file_aside(backup, true);
    std::error_code failed;
    const fs::path content = fs::canonical(file, failed);
    fs::remove(aside, failed);
    fs::create_hard_link(content, aside, failed);
    if (!failed) {
        return;
    }
    core::copy_bytes(content, aside, backup);
    fs::permissions(aside, fs::status(content, failed).permissions(), failed);
    if (failed) {
        throw base::FileFailure(fmt::format("cannot be written: {}", failed.message()), backup);
    }
}

std::vector<SerializedResult::Names> rename(const std::string& names, core::ModelFiles& files) {
    std::vector<SerializedResult::Names> renamed;
    const std::string ending = ending_of(names, files).value();
    for (const char* extension : backed_up) {
        if (!files.has(extension)) {
            continue;
        }
        const fs::path file = files.name_of(extension);
        const fs::path backup = backup_of(extension, ending, files);
        keep_as(file, backup, files);
        files.remove_file(file);
        renamed.push_back({file.filename().string(), backup.filename().string()});
    }
    return renamed;
}

SerializedResult::Names copy(const fs::path& NLO_old, core::ModelFiles& files,
                             const std::vector<SerializedResult::Names>& renamed) {
    const fs::path nml = files.name_of(".nml");
    files.copy_file(base::absolute_path(NLO_old), nml);
    const std::string name = NLO_old.filename().string();
    const auto moved = std::ranges::find(renamed, name, &SerializedResult::Names::from);
    return {moved == renamed.end() ? name : moved->to, nml.filename().string()};
}

std::optional<base::Refusal> form_refusal(const SerializedRunForm& form,
                                          const core::ModelFiles& files) {
    if (!form.NLO_old.empty()) {
        if (auto refusal = folder_refusal(form.NLO_old, files)) {
            return refusal;
        }
        if (!base::is_file(form.NLO_old)) {
            throw base::FileFailure("does not exist", form.NLO_old);
        }
    }
    return form.new_Names.empty() ? std::nullopt : names_refusal(form.new_Names, files);
}

} // namespace

std::string proposed_names(const core::ModelFiles& files) {
    return fmt::format("{}{}{}", files.base_name(), names_middle, default_ending);
}

SerializedResult SerializedRun(const SerializedRunForm& form, core::ModelFiles& files,
                               const Programs& programs, base::Interaction& user) {
    SerializedResult result;
    const bool makes_input = !form.NLO_old.empty();
    const bool starts = makes_input && form.start;
    result.refusal = form_refusal(form, files);
    result.cancelled = !result.refusal && starts && !may_start(programs.install, user);
    if (result.refusal || result.cancelled) {
        return result;
    }
    std::string names = form.new_Names;
    if (makes_input && names.empty() && !form.backed_up) {
        const auto answer =
            user.ask("Create back-up files", backup_question, base::Buttons::yes_no_cancel);
        const std::string proposed = form.proposed.empty() ? proposed_names(files) : form.proposed;
        names = answer == base::Answer::yes ? proposed : "";
        result.cancelled = answer == base::Answer::cancel;
        result.refusal = names.empty() ? std::nullopt : names_refusal(names, files);
    }
    if (result.refusal || result.cancelled) {
        return result;
    }
    const fs::path program = starts ? simulator(programs) : fs::path();
    if (!names.empty()) {
        result.renamed = rename(names, files);
    }
    if (makes_input) {
        result.copied = copy(form.NLO_old, files, result.renamed);
    }
    files.commit([&] {
        if (starts) {
            prepare_install(files, programs.install);
        }
    });
    if (starts) {
        result.started.push_back(start(program, files, programs.install));
    }
    return result;
}

} // namespace input

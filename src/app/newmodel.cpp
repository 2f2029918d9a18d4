#include "app/newmodel.h"

#include "app/folderfiles.h"
#include "app/recentfiles.h"
#include "base/paths.h"
#include "base/textfile.h"
#include "grid/griddefinition.h"
#include "grid/monitoring.h"

#include <array>

namespace app {

namespace fs = std::filesystem;

namespace {

constexpr std::array deleted_extensions = {
    ".mdl", ".bd5", ".ini", ".grd", ".l",   ".lmk", ".xfd", ".sth", ".wet", ".pcg", ".sip", ".sor",
    ".ppl", ".pol", ".rcd", ".trn", ".tra", ".prs", ".adv", ".che", ".dps", ".flo", ".spe"};

// Solver number 0 with preconditioner 3: none chosen yet.
constexpr int no_solver_yet = 48;

// A project of the predecessor counts: it would share every companion with the new one.
bool project_exists(const core::ModelFiles& files) {
    const auto is_there = [&](const std::string& name) {
        return base::find_ignoring_case(files.folder(), name).has_value();
    };
    return is_there(base::file_name(files.project())) || is_there(files.base_name() + ".bd5");
}

core::Project new_project() {
    core::Project project;
    project.flags.set(0, 0, 1);
    project.flags.set(8, 4, no_solver_yet);
    project.flags.set(8, 5, no_solver_yet);
    project.flags.set(8, 6, no_solver_yet);
    return project;
}

void remove_spellings(core::ModelFiles& files, const std::vector<fs::path>& present,
                      const std::string& name) {
    for (const fs::path& file : present) {
        if (base::same_ignoring_case(file.filename().string(), name)) {
            files.remove_file(file);
        }
    }
}

} // namespace

std::optional<base::Refusal> new_name_refusal(const fs::path& path, const char* title) {
    if (auto refusal = name_refusal(path)) {
        return refusal;
    }
    if (!base::lower(path.string()).ends_with(".td1")) {
        return base::Refusal{title, path.string() + " is not a model file of TD 1."};
    }
    return std::nullopt;
}

void Delete_Model_Files(core::ModelFiles& files) {
    const std::vector<fs::path> present = files_in(files.folder());
    remove_spellings(files, present, base::file_name(files.project()));
    for (const char* extension : deleted_extensions) {
        remove_spellings(files, present, files.base_name() + extension);
    }
}

Loaded new_model(const fs::path& path, base::Interaction& user, const fs::path& user_folder) {
    if (auto refusal = new_name_refusal(path, "New Model")) {
        return {std::nullopt, std::move(refusal)};
    }
    Workspace workspace{core::ModelFiles(path, core::Access::write), new_project()};
    if (project_exists(workspace.files)) {
        if (user.ask("Overwrite project?",
                     "The project already exists. Do you want to overwrite all project files?",
                     base::Buttons::yes_no_risky) != base::Answer::yes) {
            return {};
        }
        Delete_Model_Files(workspace.files);
    }
    // Nothing of an overwritten project file is carried over.
    workspace.files.write_project(workspace.project.bytes({}));
    grid::LayerFile::defaults(workspace.project.NZ()).save(workspace.files);
    grid::Write_Monitoring_Points(grid::MonitoringList(), workspace.files);
    workspace.files.commit();
    remember_model(workspace.Model_Path(), user_folder);
    return {std::move(workspace), std::nullopt};
}

} // namespace app

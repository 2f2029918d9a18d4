// The whole state of a program: one model, and the folders that outlive it.
#pragma once

#include "base/failure.h"
#include "core/modelfiles.h"
#include "core/project.h"

#include <filesystem>
#include <optional>
#include <string>

namespace app {

// An open model. Companion files are read by the commands that need them.
struct Workspace {
    core::ModelFiles files;
    core::Project project;

    std::filesystem::path Model_Path() const { return files.project(); }
    // File-name part of Model_Path, lower case.
    std::string Model_Name() const;
    std::filesystem::path Model_Folder() const { return files.folder(); }
    // "Tervex Desk - [NAME.TD1]"
    std::string window_title() const;

    // Writes the project file and makes the command's files the content of the folder.
    void save();
};

// Why `path` cannot be a model by its name: it ends in neither .td1 nor .bd5, in any case.
std::optional<base::Refusal> name_refusal(const std::filesystem::path& path);

struct Loaded {
    std::optional<Workspace> workspace;
    std::optional<base::Refusal> refusal; // when there is no workspace
};

// What every command on a model does first: tests the name, reads the project file, tests its
// version, and places a grid that was not placed yet (in memory). FileFailure when the project file
// does not exist or cannot be read.
Loaded load_model(const std::filesystem::path& path, core::Access access);

// The same with files at hand, some of which may still be aside. `shown` names the model in the
// refusal.
Loaded load_files(core::ModelFiles files, const std::filesystem::path& shown);

// The hint of array commands when the model has no grid file yet.
std::optional<base::Refusal> mesh_refusal(const Workspace& workspace);

} // namespace app

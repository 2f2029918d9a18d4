#include "app/workspace.h"

#include "base/paths.h"
#include "base/textfile.h"
#include "grid/griddefinition.h"

#include <fmt/format.h>

namespace app {

namespace {

constexpr int oldest_version = 5000;

} // namespace

std::string Workspace::Model_Name() const {
    return base::lower(base::file_name(files.project()));
}

std::string Workspace::window_title() const {
    return fmt::format("{} - [{}]", base::desk_title,
                       base::upper(base::file_name(files.project())));
}

void Workspace::save() {
    project.Write_Project_File(files);
    files.commit();
}

std::optional<base::Refusal> name_refusal(const std::filesystem::path& path) {
    const std::string text = path.string();
    const std::string ending =
        base::lower(text.substr(text.size() - std::min<std::size_t>(4, text.size())));
    if (ending == ".td1" || ending == ".bd5") {
        return std::nullopt;
    }
    return base::Refusal{"Open model", text + " is not a model file of TD 1 or BD 5."};
}

Loaded load_model(const std::filesystem::path& path, core::Access access) {
    if (auto refusal = name_refusal(path)) {
        return {std::nullopt, std::move(refusal)};
    }
    // Finishes a command that was cut off, which may bring the project file only now.
    static_cast<void>(core::ModelFiles(path, core::Access::read));
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(path, ignored)) {
        throw base::FileFailure("the model does not exist", path);
    }
    return load_files(core::ModelFiles(path, access), path);
}

Loaded load_files(core::ModelFiles files, const std::filesystem::path& shown) {
    Workspace workspace{std::move(files), {}};
    workspace.project = core::Project::read(workspace.files.read_project());
    if (workspace.project.version() < oldest_version) {
        return {std::nullopt,
                base::Refusal{base::desk_title, shown.string() + " is not a model file of BD 5.",
                              base::Icon::critical}};
    }
    if (workspace.project.flags.is_defined(1, 2)) {
        if (const auto grid = grid::GridFile::load(workspace.files)) {
            grid::place_grid(workspace.project, *grid);
        }
    }
    return {std::move(workspace), std::nullopt};
}

std::optional<base::Refusal> mesh_refusal(const Workspace& workspace) {
    if (workspace.files.has(".xy")) {
        return std::nullopt;
    }
    return base::Refusal{"Message", grid::mesh_hint};
}

} // namespace app

#include "app/importmodel.h"

#include "app/folderfiles.h"
#include "app/newmodel.h"
#include "app/openmodel.h"
#include "base/paths.h"
#include "base/textfile.h"
#include "core/extensions.h"
#include "grid/arrayfiles.h"

#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <utility>

namespace app {

namespace fs = std::filesystem;

namespace {

// Settings that an overwritten project would leave to the new one, beside those that are removed
// with every overwritten project.
constexpr std::array settings_extensions = {".xy",  ".izv", ".typ", ".mco", ".tma",
                                            ".ttc", ".sco", ".dhs", ".flu", ".dhf",
                                            ".dhm", ".nkf", ".nkm", ".upl", ".d97"};

bool project_exists(const core::ModelFiles& files) {
    const auto is_there = [&](const std::string& name) {
        return base::find_ignoring_case(files.folder(), name).has_value();
    };
    return is_there(base::file_name(files.project())) || is_there(files.base_name() + ".bd5");
}

// Results share names with some arrays and zones: series of monitoring points (".210") and a plot
// file.
bool may_be_a_result(std::string_view extension) {
    return extension == ".tal" ||
           std::ranges::all_of(extension.substr(1), [](char c) { return c >= '0' && c <= '9'; });
}

std::set<std::string> extensions_to_remove(const core::ModelFiles& files) {
    std::set<std::string> extensions(settings_extensions.begin(), settings_extensions.end());
    for (int number = 1; number <= core::parameter_count; ++number) {
        const std::string& extension = core::file_ext(number);
        if (!extension.empty() && !may_be_a_result(extension)) {
            extensions.insert(extension);
        }
    }
    for (const int number : grid::existing_arrays(files)) {
        extensions.insert(core::file_ext(number));
        if (number + core::zone_offset <= core::parameter_count) {
            extensions.insert(core::file_ext(number + core::zone_offset));
        }
    }
    return extensions;
}

// Arrays of another grid are worse than none.
void remove_old_model(core::ModelFiles& files) {
    const std::set<std::string> extensions = extensions_to_remove(files);
    const std::string base = files.base_name();
    Delete_Model_Files(files);
    for (const fs::path& file : files_in(files.folder())) {
        const std::string name = file.filename().string();
        const std::string_view head = std::string_view(name).substr(0, base.size());
        if (base::same_ignoring_case(head, base) &&
            extensions.contains(base::lower(name.substr(head.size())))) {
            files.remove_file(file);
        }
    }
}

bool may_overwrite(const std::optional<bool>& answer, base::Interaction& user) {
    if (answer) {
        return *answer;
    }
    return user.ask("Overwrite project?",
                    "The project already exists. Do you want to overwrite all project files?",
                    base::Buttons::yes_no_risky) == base::Answer::yes;
}

void tell_the_end(bool complete, base::Interaction& user) {
    user.message(complete ? base::Icon::information : base::Icon::warning, results::import_title,
                 complete ? "Process finished." : "Problems occured during model import!");
}

} // namespace

Loaded file_import_model(const fs::path& source, const fs::path& target,
                         const ImportAnswers& answers, base::Interaction& user,
                         const fs::path& user_folder) {
    if (auto refusal = new_name_refusal(target, results::import_title)) {
        return {std::nullopt, std::move(refusal)};
    }
    if (!base::is_file(source)) {
        throw base::FileFailure("the file does not exist", source);
    }
    user.status("Initialising model import, please wait ...");
    core::ModelFiles files(target, core::Access::write);
    if (project_exists(files)) {
        if (!may_overwrite(answers.overwrite, user)) {
            return {};
        }
        remove_old_model(files);
    }
    core::Project project;
    auto imported = results::Import_Model(source, answers.choices, project, files, user);
    if (imported.refusal || !imported.answered) {
        return {std::nullopt, std::move(imported.refusal)};
    }
    files.write_project(project.bytes({}));
    Loaded opened = open_files(std::move(files), target, user, user_folder);
    if (opened.workspace) {
        tell_the_end(imported.complete, user);
    }
    return opened;
}

} // namespace app

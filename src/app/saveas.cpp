#include "app/saveas.h"

#include "app/folderfiles.h"
#include "app/newmodel.h"
#include "app/openmodel.h"
#include "base/paths.h"
#include "base/textfile.h"
#include "core/filemoves.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>

namespace app {

namespace fs = std::filesystem;

namespace {

constexpr std::array result_extensions = {".nlo", ".txt", ".plt", ".100", ".zip", ".rvb", ".ini"};

constexpr std::array data_files = {"ghe.ini",       "phrqpitz.dat",   "pitzer.dat",
                                   "kalmexdh.dat",  "components.dat", "kinetik.dat",
                                   "pitz_coeff.dat"};

// New names with the files that they are copied from.
using Copies = std::map<std::string, fs::path>;

// By its last extension.
bool is_result(std::string_view name) {
    const std::string extension = base::lower(name.substr(name.rfind('.')));
    return extension.starts_with(".0") ||
           std::find(result_extensions.begin(), result_extensions.end(), extension) !=
               result_extensions.end();
}

bool is_project(std::string_view rest) {
    return base::same_ignoring_case(rest, ".td1") || base::same_ignoring_case(rest, ".bd5");
}

bool is_same_folder(const fs::path& a, const fs::path& b) {
    std::error_code ignored;
    return fs::equivalent(a, b, ignored);
}

Copies model_copies(const core::ModelFiles& source, const core::ModelFiles& target) {
    const std::string old_base = source.base_name();
    Copies copies;
    for (const fs::path& file : files_in(source.folder())) {
        const std::string name = file.filename().string();
        const std::string_view head = std::string_view(name).substr(0, old_base.size());
        const std::string rest = name.substr(head.size());
        if (!base::same_ignoring_case(head, old_base) || !rest.starts_with('.') ||
            is_project(rest) || is_result(name)) {
            continue;
        }
        // Of two spellings of the model's name, its own counts.
        const auto [copy, is_new] = copies.try_emplace(target.base_name() + rest, file);
        if (!is_new && head == old_base) {
            copy->second = file;
        }
    }
    copies[base::file_name(target.project())] = source.project();
    return copies;
}

void add_data_files(const core::ModelFiles& source, const core::ModelFiles& target,
                    Copies& copies) {
    if (is_same_folder(source.folder(), target.folder())) {
        return;
    }
    for (const char* name : data_files) {
        if (const auto file = base::find_ignoring_case(source.folder(), name)) {
            copies[base::file_name(*file)] = *file;
        }
    }
}

// A file of the overwritten model that differs from a copy in its spelling only would be found in
// its place.
void remove_other_spellings(core::ModelFiles& target, const Copies& copies) {
    std::vector<std::string> names;
    for (const auto& [name, from] : copies) {
        names.push_back(base::lower(name));
    }
    std::sort(names.begin(), names.end());
    for (const fs::path& file : files_in(target.folder())) {
        const std::string name = file.filename().string();
        if (!copies.contains(name) &&
            std::binary_search(names.begin(), names.end(), base::lower(name))) {
            target.remove_file(file);
        }
    }
}

std::vector<std::string> copy_files(const core::ModelFiles& source, core::ModelFiles& target) {
    Copies copies = model_copies(source, target);
    add_data_files(source, target, copies);
    std::vector<std::string> names;
    for (const auto& [name, from] : copies) {
        // Straight from the disk: in one folder a copy may have the name of another one's source.
        const fs::path to = target.folder() / name;
        core::copy_bytes(from, target.open_file_aside(to, true), to);
        names.push_back(name);
    }
    remove_other_spellings(target, copies);
    return names;
}

} // namespace

std::optional<base::Refusal> save_as_refusal(const Workspace& source, const fs::path& target) {
    if (auto refusal = new_name_refusal(target, "Save Model As")) {
        return refusal;
    }
    const core::ModelFiles named(target, core::Access::read);
    if (base::same_ignoring_case(named.base_name(), source.files.base_name()) &&
        is_same_folder(named.folder(), source.files.folder())) {
        return base::Refusal{base::desk_title,
                             "Please choose a new project title or seperate folder."};
    }
    return std::nullopt;
}

SavedAs save_model_as(const Workspace& source, const fs::path& target, base::Interaction& user,
                      const fs::path& user_folder) {
    if (auto refusal = save_as_refusal(source, target)) {
        return {{std::nullopt, std::move(refusal)}, {}};
    }
    if (auto refusal = companions_refusal(source, source.Model_Path())) {
        return {{std::nullopt, std::move(refusal)}, {}};
    }
    core::ModelFiles files(target, core::Access::write);
    if (base::find_ignoring_case(files.folder(), base::file_name(files.project())) &&
        user.ask("Save As", "The Filename already exist. Do you want to overwrite the file?",
                 base::Buttons::yes_no_risky) != base::Answer::yes) {
        return {};
    }
    std::vector<std::string> copied = copy_files(source.files, files);
    return {open_files(std::move(files), target, user, user_folder), std::move(copied)};
}

} // namespace app

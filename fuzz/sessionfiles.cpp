// Scripts of worksheet sessions.
#include "checks.h"
#include "scratchfolder.h"
#include "targets.h"

#include "app/workspace.h"
#include "core/arraystore.h"
#include "core/modelfiles.h"
#include "grid/gridform.h"

#include <sstream>
#include <string>

namespace fuzz {

namespace {

// Words after which files elsewhere would be read or written.
bool names_files(std::string_view script) {
    for (const char* word : {"save", "load", "modify"}) {
        if (script.find(word) != std::string_view::npos) {
            return true;
        }
    }
    return false;
}

void make_model(const ScratchFolder& folder) {
    core::Project project;
    core::ModelFiles files(folder.path() / "m.td1", core::Access::write);
    grid::Grid_Number form;
    form.load(project, files);
    for (const auto& [field, value] :
         {std::pair("txtLayers", "2"), {"txtColumns", "3"}, {"txtRows", "2"}}) {
        form.set(field, value);
    }
    form.save(project, files);
    core::ArrayStore(files, project).create_array_file(8, 1);
    core::ArrayStore(files, project).create_array_file(63, 0);
    project.Write_Project_File(files);
    files.commit();
}

int run_script(const ScratchFolder& folder, const std::string& script, const char* answer) {
    std::istringstream in(script);
    std::ostringstream out, err;
    return td::run_program(
        {"edit", (folder.path() / "m.td1").string(), "--param", "8", "--script", "-", answer}, in,
        out, err);
}

} // namespace

void session(std::string_view script) {
    if (names_files(script)) {
        return;
    }
    const ScratchFolder folder;
    make_model(folder);
    run_script(folder, "", "--no"); // makes the zone file
    const ScratchFolder::Files before = folder.files();
    const std::string lines(script);
    const bool is_taken = run_script(folder, lines + "\nleave no", "--no") == td::done;
    require(folder.files() == before, "a session that ended with No has changed the folder");
    const bool is_done = run_script(folder, lines, "--yes") == td::done;
    require(is_done || folder.files() == before, "a refused script has changed the folder");
    require(!is_taken || is_done || script.find("leave") != std::string_view::npos,
            "a script is taken with No but not with Yes");
    for (const auto& [name, bytes] : folder.files()) {
        require(name.find('{') == std::string::npos && !name.starts_with("m.T"),
                "a scratch file is left");
    }
}

} // namespace fuzz

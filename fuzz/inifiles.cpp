// Project file, notes of the model, settings of the program.
#include "checks.h"
#include "scratchfolder.h"
#include "targets.h"

#include "app/recentfiles.h"
#include "app/settings.h"
#include "base/inifile.h"
#include "base/textfile.h"
#include "core/modelfiles.h"
#include "core/notes.h"
#include "core/project.h"
#include "sim/continua.h"
#include "sim/outeriteration.h"

#include <algorithm>

namespace fuzz {

namespace {

// A pair of quotes round a value is dropped on every reading and never added again: values count
// without any.
bool same_values(const core::Project& a, const core::Project& b) {
    return std::ranges::equal(a.entries(), b.entries(), [](const auto& one, const auto& other) {
        return one.section == other.section && one.key == other.key &&
               base::trimmed(one.value, " \t\"'") == base::trimmed(other.value, " \t\"'");
    });
}

// Bytes of the notes after every dialog that keeps its values there was left with OK.
std::string notes_after_dialogs(std::string_view bytes) {
    const ScratchFolder folder;
    folder.write("m.izv", bytes);
    core::Project project;
    core::ModelFiles files(folder.path() / "m.td1", core::Access::write);
    sim::BoxmodelForm continua;
    continua.load(project, files);
    continua.calculated();
    continua.save(project, files);
    sim::OutIter iteration;
    iteration.load(project, files);
    iteration.save(project, files);
    core::Save_IZV_Data(files, "Pitzer_BetaC", "Na", core::Get_IZV_Data(files, "koppx", "Density"));
    return files.read(".izv");
}

} // namespace

void project(std::string_view bytes) {
    const core::Project read = core::Project::read(bytes);
    const std::string saved = read.bytes(bytes);
    const core::Project again = core::Project::read(saved);
    require(same_values(again, read), "a saved project reads other values");
    if (bytes.find_first_of("\"'") == std::string_view::npos) {
        require(again.bytes(saved) == saved, "a second save changes the project file");
    }
}

void inifile(std::string_view bytes) {
    base::IniFile file(bytes);
    require_stable(bytes, [](std::string_view b) { return base::IniFile(b).bytes(); });
    const std::string section = base::to_utf8(bytes.substr(0, bytes.find('[')));
    file.keys(section);
    file.get(section, "Key");
    file.set("Section", "Key", "12");
    const base::IniFile again(file.bytes());
    require(file.get("section", "KEY") == "12", "a value that was set is another one");
    require(again.get("section", "KEY") == "12", "a value that was saved is another one");
}

void notes(std::string_view bytes) {
    require_stable(bytes, notes_after_dialogs);
}

void settings(std::string_view bytes) {
    const ScratchFolder folder;
    folder.write("td.ini", bytes);
    folder.write("BD5.0", bytes);
    app::ProgramSettings program(folder.path());
    program.GetHelpFormat();
    program.SaveModelPath(program.GetModelPath());
    program.SaveHelpFormat("html");
    const app::ProgramSettings again(folder.path());
    require(again.GetHelpFormat() == "html", "a setting that was saved is another one");
    const std::string model = folder.write("m.td1", "").string();
    app::RecentFiles recent(folder.path());
    recent.add(model);
    recent.save();
    require(app::RecentFiles(folder.path()).path(1) == model, "the newest model is not the first");
}

} // namespace fuzz

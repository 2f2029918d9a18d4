// A new model in a folder of its own, for the dialogs of settings.
#pragma once

#include "core/modelfiles.h"
#include "core/project.h"
#include "sim/typfile.h"
#include "support/tempfolder.h"

#include <string>
#include <string_view>

namespace sim {

struct SettingsModel {
    support::TempFolder folder;
    core::Project project;
    core::ModelFiles files{folder.path() / "m.td1", core::Access::write};

    std::string line(int number) const { return TypFile::load(files).line(number); }
    void set_line(int number, std::string_view text) {
        TypFile typ_file = TypFile::load(files);
        typ_file.set_line(number, text);
        typ_file.save(files);
    }
    int flag(int a, int b) const { return project.flags(a, b); }
};

} // namespace sim

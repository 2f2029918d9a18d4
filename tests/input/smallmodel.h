// A small complete model in a folder of its own, made through the library.
#pragma once

#include "base/textfile.h"
#include "core/arraystore.h"
#include "core/modelfiles.h"
#include "core/project.h"
#include "grid/griddefinition.h"
#include "input/inputfile.h"
#include "sim/periods.h"
#include "sim/typfile.h"
#include "support/scripteduser.h"
#include "support/tempfolder.h"

#include <string>
#include <string_view>
#include <vector>

namespace input::test {

// A vector of 100 places.
inline std::string hundred(std::initializer_list<const char*> first, const char* rest) {
    std::string text;
    for (const char* item : first) {
        text += item;
    }
    for (std::size_t place = first.size(); place < 100; ++place) {
        text += rest;
    }
    return text;
}

// Flow only, horizontal, one period of 10 seconds; nothing else is defined.
class SmallModel {
public:
    SmallModel(int nx, int ny, int nz, int orientation = core::horizontal)
        : files(folder_.path() / "m.td1", core::Access::write) {
        grid::GridFile grid{nx, ny, nz, std::vector<float>(std::size_t(nx), 10.0F),
                            std::vector<float>(std::size_t(ny), 5.0F)};
        grid::Save_Grid_File(grid, project, files);
        grid::LayerFile::defaults(nz).save(files);
        periods.unit = 1;
        periods.rows[0].length = 10;
        periods.save(files);
        sim::TypFile().save(files);
        project.flags.set(0, 0, 1);
        project.flags.set(1, 4, orientation);
        project.flags.set(9, 4, 1);
        project.set_single("GRIDPOSITION", "TOP", 5.0F * float(ny));
    }

    core::ArrayStore store() { return {files, project}; }

    // Values in the order of the worksheet: column fastest, then row, then layer.
    void set_array(int number, const std::vector<float>& values, int period = 1) {
        auto arrays = store();
        const std::size_t cells = arrays.cells_of_layer();
        for (int layer = 1; layer <= project.NZ(); ++layer) {
            arrays.write_array(number, period, layer,
                               std::span(values).subspan(std::size_t(layer - 1) * cells, cells));
        }
    }
    void set_array(int number, float everywhere, int period = 1) {
        const std::size_t cells = store().cells_of_layer() * std::size_t(project.NZ());
        set_array(number, std::vector<float>(cells, everywhere), period);
    }

    void set_typ(int line, std::string_view text) {
        auto typ = sim::TypFile::load(files);
        typ.set_line(line, text);
        typ.save(files);
    }
    void save_periods() { periods.save(files); }

    // Writes the stream; the boxes that come are those that `user` expects.
    CreatedInput create() {
        created = CreateTervexNml(project, files, user);
        stream = files.read(".nml");
        return created;
    }

    // The value lines of a block with their ends; "no block" when the key line is missing.
    std::string block(std::string_view keyword) const {
        const std::string key = "# " + std::string(keyword) + "\r\n";
        const std::size_t at = ("\n" + stream).find("\n" + key);
        if (at == std::string::npos) {
            return "no block";
        }
        const std::size_t begin = at + key.size();
        return stream.substr(begin, stream.find("# ", begin) - begin);
    }
    // The one value line without its end.
    std::string line(std::string_view keyword) const {
        const std::string values = block(keyword);
        return values.ends_with("\r\n") ? values.substr(0, values.size() - 2) : values;
    }

private:
    support::TempFolder folder_;

public:
    core::Project project;
    core::ModelFiles files;
    sim::PeriodTable periods;
    support::ScriptedUser user;
    CreatedInput created;
    std::string stream;
};

} // namespace input::test

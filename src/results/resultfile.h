// A result file and the model around it: which file is read, and what the viewer knows of it after
// the first load.
#pragma once

#include "core/modelfiles.h"
#include "results/field.h"
#include "results/names.h"
#include "results/viewersettings.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace base {
class Interaction;
}

namespace results {

struct ResultFile {
    std::filesystem::path file; // the one that is read
    core::ModelFiles files;     // its companions; the project file may be missing

    // The file's name without its folder.
    std::string name() const;
    // <file> with "ini" for its last three characters.
    std::filesystem::path settings_file() const;
    // Of the project file; 0 (horizontal) without one.
    int GridOrientation() const;
};

// `path` is a result file (.nlo), an input file (.nml) or a project file (.td1). Of a project
// <base>.nlo is read when it exists and is not empty, otherwise <base>.nml; when there is neither,
// asks whether to browse for one and gives nothing. FileFailure when `path` does not exist.
std::optional<ResultFile> find_result_file(const std::filesystem::path& path,
                                           base::Interaction& user);

// Cell sizes by index from 1 [m]; `dely` from the south, `delz` by the viewer's layer number.
struct Axes {
    std::vector<float> delx, dely, delz;
};

// # DELX, # DELY and # DELZ, searched one behind the other from the present position on. Nothing,
// with the messages of the search, when one is missing.
std::optional<Axes> read_axes(StreamReader& stream, const StreamGrid& grid,
                              base::Interaction& user);

// The cut axes that a grid offers, of "XYZ", and the one chosen at first.
struct SectionOptions {
    std::string planes = "XYZ";
    char cut = 'Z';
};
SectionOptions section_options(const StreamGrid& grid);

// True when there is a monitoring file of the shown file: its name without its last three
// characters and "000", "100", "200" and so on.
bool Check_for_Time_Files(const ResultFile& result);

struct FirstLoad {
    StreamGrid grid;
    StreamNames names;
    Axes axes;
    SectionOptions sections;
    ViewerSettings settings;
    std::string parameter_code;
    bool temporal = false;
};

// Sets up the viewer from the stream (CheckFile with "FirstLoad"): grid, names, cell sizes, view
// settings, and the parameter of the settings, for which the temperature steps in with a message
// when its key line is not there. Nothing, with the messages of the search, when the grid is
// missing.
std::optional<FirstLoad> first_load(StreamReader& stream, const ResultFile& result,
                                    base::Interaction& user);

} // namespace results

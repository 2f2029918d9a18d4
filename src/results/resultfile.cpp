#include "results/resultfile.h"

#include "base/failure.h"
#include "base/interaction.h"
#include "base/paths.h"
#include "base/textfile.h"
#include "core/project.h"
#include "results/monitoringcells.h"

#include <fmt/format.h>

#include <array>

namespace results {

namespace fs = std::filesystem;

namespace {

constexpr std::array<std::string_view, 2> stream_endings = {".nlo", ".nml"};
constexpr int last_monitoring_number = 100;

bool is_project(const fs::path& path) {
    const std::string ending = base::lower(path.extension().string());
    return ending == ".td1" || ending == ".bd5";
}

bool has_bytes(const fs::path& file) {
    std::error_code failed;
    const auto size = fs::file_size(file, failed);
    return !failed && size > 0;
}

// The project that a result file belongs to. A back-up such as "m.nlo.00" belongs to "m", too.
fs::path project_of(const fs::path& file) {
    fs::path base = file;
    const std::string ending = base::lower(file.stem().extension().string());
    if (ending == stream_endings[0] || ending == stream_endings[1]) {
        base = file.parent_path() / file.stem();
    }
    return base.replace_extension(".td1");
}

std::string why_no_file(const fs::path& path) {
    std::error_code failed;
    switch (fs::status(path, failed).type()) {
    case fs::file_type::directory:
        return "is a folder";
    case fs::file_type::not_found:
        return "does not exist";
    default: // a name that is too long, a folder that cannot be searched
        return fmt::format("cannot be read: {}", failed.message());
    }
}

std::string without_last_three(const fs::path& file) {
    const std::string text = file.string();
    return text.substr(0, text.size() - std::min<std::size_t>(3, file.filename().string().size()));
}

// The file that a project shows; nothing when it has none.
std::optional<fs::path> default_file(const core::ModelFiles& files) {
    const auto output = files.find(stream_endings[0]);
    return output && has_bytes(*output) ? output : files.find(stream_endings[1]);
}

void ask_for_other_file(const core::ModelFiles& files, base::Interaction& user) {
    user.ask("Browse for input file?",
             fmt::format("Can't find default input file!\n({0}.nlo or {0}.nml)\n\n"
                         "Do you want to browse for other files?",
                         files.base()),
             base::Buttons::yes_no);
}

// Tells when the parameter is not in the file, and takes the temperature then.
std::string present_parameter(StreamReader& stream, const std::string& code,
                              base::Interaction& user) {
    if (jump_or_tell(stream, "# " + code, user)) {
        return code;
    }
    user.message(base::Icon::warning, base::desk_title,
                 "Can't find the parameter in the input file!\n"
                 "          The default parameter is = Temperature ");
    return "TEMP";
}

} // namespace

std::string ResultFile::name() const {
    return base::file_name(file);
}

fs::path ResultFile::settings_file() const {
    return without_last_three(file) + "ini";
}

int ResultFile::GridOrientation() const {
    return files.has_file(files.project())
               ? core::Project::read(files.read_project()).flags.GridOrientation()
               : int{core::horizontal};
}

std::optional<ResultFile> find_result_file(const fs::path& path, base::Interaction& user) {
    if (!base::is_file(path)) {
        throw base::FileFailure(why_no_file(path), path);
    }
    if (!is_project(path)) {
        return ResultFile{path, core::ModelFiles(project_of(path), core::Access::read)};
    }
    core::ModelFiles files(path, core::Access::read);
    const auto file = default_file(files);
    if (!file) {
        ask_for_other_file(files, user);
        return std::nullopt;
    }
    return ResultFile{*file, std::move(files)};
}

std::optional<Axes> read_axes(StreamReader& stream, const StreamGrid& grid,
                              base::Interaction& user) {
    Axes axes;
    struct Axis {
        const char* keyword;
        int count;
        bool downward;
        std::vector<float>* sizes;
    };
    for (const Axis& axis :
         {Axis{"# DELX", grid.I0, false, &axes.delx}, Axis{"# DELY", grid.J0, false, &axes.dely},
          Axis{"# DELZ", grid.K0, true, &axes.delz}}) {
        if (!LookForString(stream, axis.keyword, user)) {
            return std::nullopt;
        }
        *axis.sizes = ReadVektorElements(stream, axis.count, axis.downward, axis.keyword);
    }
    return axes;
}

SectionOptions section_options(const StreamGrid& grid) {
    SectionOptions options;
    struct Test {
        int count;
        char cut;
    };
    for (const Test& test : {Test{grid.I0, 'X'}, Test{grid.J0, 'Y'}, Test{grid.K0, 'Z'}}) {
        if (test.count == 1) {
            options = {std::string(1, test.cut), test.cut};
        }
    }
    return options;
}

bool Check_for_Time_Files(const ResultFile& result) {
    const std::string stem = without_last_three(result.file);
    for (int n = 0; n <= last_monitoring_number; ++n) {
        if (base::is_file(stem + file_part(n))) {
            return true;
        }
    }
    return false;
}

std::optional<FirstLoad> first_load(StreamReader& stream, const ResultFile& result,
                                    base::Interaction& user) {
    stream.rewind();
    const auto grid = read_stream_grid(stream, user);
    if (!grid) {
        return std::nullopt;
    }
    FirstLoad load;
    load.grid = *grid;
    load.names = read_names(stream, result.files, user);
    load.sections = section_options(*grid);
    const auto axes = read_axes(stream, *grid, user);
    if (!axes) {
        return std::nullopt;
    }
    load.axes = *axes;
    load.settings = ViewerSettings::load(result.settings_file(), user);
    load.parameter_code = present_parameter(stream, load.settings.parameter_code(), user);
    stream.require_unchanged();
    load.temporal = Check_for_Time_Files(result);
    return load;
}

} // namespace results

#include "app/modelinformation.h"

#include "app/folderfiles.h"
#include "app/menupath.h"
#include "app/menustate.h"
#include "app/workspace.h"
#include "base/numbertext.h"
#include "base/paths.h"
#include "base/textfile.h"
#include "grid/griddefinition.h"
#include "grid/monitoring.h"
#include "input/wells.h"
#include "report/attempt.h"
#include "report/callstack.h"
#include "sim/periods.h"

#include <fmt/format.h>

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <functional>
#include <numeric>

namespace app {

namespace fs = std::filesystem;

namespace {

using Row = InformationSection::Row;
using Rows = std::vector<Row>;

void model_rows(Workspace& model, Rows& rows) {
    rows.push_back({"Title", model.project.title()});
    rows.push_back({"Project file", model.Model_Path().string()});
    rows.push_back({"Version", fmt::to_string(model.project.version())});
}

std::string metres(double length) {
    return base::value_text(static_cast<float>(length)) + " m";
}

// "12 columns, 20 m to 390 m wide, together 6000 m"
Row sizes_row(const char* caption, const char* direction, const std::vector<float>& sizes) {
    const auto [least, most] = std::ranges::minmax(sizes);
    const double sum = std::accumulate(sizes.begin(), sizes.end(), 0.0);
    const std::string each =
        least == most ? metres(least) : fmt::format("{} to {}", metres(least), metres(most));
    return {caption,
            fmt::format("{}, {} {}, together {}", sizes.size(), each, direction, metres(sum))};
}

Row layers_row(Workspace& model) {
    const core::ModelFlags& flags = model.project.flags;
    const char* caption = flags.GridOrientation() == core::horizontal ? "Layers" : "Cross sections";
    const int NZ = model.project.NZ();
    const auto layers = grid::LayerFile::load(model.files, NZ);
    if (!flags.layers_by_thickness() || !layers) {
        return {caption, fmt::to_string(NZ)};
    }
    std::vector<float> thickness;
    for (const auto& layer : layers->layers) {
        thickness.push_back(layer.thickness);
    }
    return sizes_row(caption, "thick", thickness);
}

void grid_rows(Workspace& model, Rows& rows) {
    static constexpr std::array orientations = {"horizontal", "vertical cross-section",
                                                "cylindrical cross-section", "heat exchanger"};
    const auto orientation = static_cast<std::size_t>(model.project.flags.GridOrientation());
    if (orientation < orientations.size()) {
        rows.push_back({"Orientation", orientations[orientation]});
    }
    const auto grid = grid::GridFile::load(model.files);
    if (!grid) {
        rows.push_back({"Mesh", "not defined"});
        return;
    }
    rows.push_back(sizes_row("Columns", "wide", grid->Column_Width));
    rows.push_back(sizes_row("Rows", "high", grid->Row_Height));
    rows.push_back(layers_row(model));
    rows.push_back({"Cells", fmt::to_string(std::int64_t{grid->NX} * grid->NY * grid->NZ)});
    const grid::GridPosition place(model.project);
    rows.push_back({"Upper left corner", fmt::format("x = {}, y = {}", metres(place.Grid_Left),
                                                     metres(place.Grid_Top))});
    rows.push_back(
        {"Rotation", base::value_text(static_cast<float>(place.Grid_Angle)) + " degrees"});
}

const char* switched(int flag) {
    return flag == 1 ? "simulated" : "off";
}

void process_rows(Workspace& model, Rows& rows) {
    const core::ModelFlags& flags = model.project.flags;
    const bool prescribed = flags.FlowActive() == 1 && flags.FlowPrescribed() == 1;
    rows.push_back({"Flow", prescribed ? "prescribed" : switched(flags.FlowActive())});
    rows.push_back({"Heat", switched(flags.HeatActive())});
    rows.push_back({"Permafrost", switched(flags.Permafrost())});
    rows.push_back({"Transport", switched(flags.TransportActive())});
    static constexpr std::array chemistry = {"off", "equilibrium", "kinetic"};
    const auto mode = static_cast<std::size_t>(flags.ChemistryMode());
    rows.push_back({"Reaction", mode < chemistry.size() ? chemistry[mode] : ""});
}

void time_rows(Workspace& model, Rows& rows) {
    rows.push_back({"Simulation", model.project.transient() ? "transient" : "steady state"});
    const sim::PeriodTable table = sim::PeriodTable::load(model.files);
    const sim::PeriodTotals totals = table.totals();
    rows.push_back({"Active periods", fmt::to_string(totals.periods)});
    rows.push_back({"Time steps", fmt::to_string(totals.steps)});
    rows.push_back(
        {"Simulation time", fmt::format("{} {}", base::value_text(totals.time),
                                        table.unit == 0 ? "(time unit not defined)"
                                                        : sim::time_unit_name(table.unit))});
}

void well_rows(Workspace& model, Rows& rows) {
    const bool grid = model.files.has(".xy");
    const input::WellTable wells =
        grid ? input::Get_Well_Data(model.project, model.files) : input::WellTable();
    rows.push_back({"Wells", wells.too_many ? fmt::format("more than {}", input::MaxWells)
                                            : fmt::to_string(wells.master.size())});
    const grid::MonitoringList points = grid::Read_Monitoring_Points(model.files);
    const auto active = std::ranges::count_if(points.bores, &grid::Bore::Active);
    rows.push_back({"Active Monitoring Points", fmt::to_string(active)});
}

// The ticked items of each menu.
void defined_rows(Workspace& model, Rows& rows) {
    std::string menu;
    for (const MenuItemState& item : Menu_Refresh(model.project, false)) {
        if (item.depth == 0) {
            menu = plain_caption(item.caption);
        } else if (item.ticked && item.visible) {
            if (rows.empty() || rows.back().caption != menu) {
                rows.push_back({menu, plain_caption(item.caption)});
            } else {
                rows.back().value += ", " + plain_caption(item.caption);
            }
        }
    }
}

std::string date_of(const fs::path& file) {
    struct stat facts {};
    if (::stat(file.c_str(), &facts) != 0) {
        return "";
    }
    const auto time = std::chrono::system_clock::from_time_t(facts.st_mtime);
    return fmt::format("{} {}", report::date_text(time), report::time_text(time));
}

// The files whose names begin as that of the project.
void file_rows(Workspace& model, Rows& rows) {
    const std::string beginning = base::lower(model.files.base_name()) + ".";
    std::vector<fs::path> files = files_in(model.Model_Folder());
    std::erase_if(files, [&](const fs::path& file) {
        return !base::lower(base::file_name(file)).starts_with(beginning);
    });
    std::ranges::sort(files);
    for (const fs::path& file : files) {
        std::error_code gone;
        if (const std::uintmax_t size = fs::file_size(file, gone); !gone) {
            rows.push_back(
                {base::file_name(file), fmt::format("{}, {}", size_text(size), date_of(file))});
        }
    }
}

void note_rows(Workspace& model, Rows& rows) {
    for (const std::string& line : base::text_lines(model.files.read_if(".izv").value_or(""))) {
        const std::string text(base::trimmed(line));
        const std::size_t equals = text.find('=');
        if (text.starts_with('[')) {
            rows.push_back({text, ""});
        } else if (equals != std::string::npos) {
            rows.push_back({text.substr(0, equals), text.substr(equals + 1)});
        }
    }
}

struct Part {
    const char* title;
    void (*add)(Workspace&, Rows&);
};

constexpr Part parts[] = {
    {"Model", model_rows},
    {"Grid", grid_rows},
    {"Processes", process_rows},
    {"Time", time_rows},
    {"Wells and monitoring", well_rows},
    {"Defined", defined_rows},
    {"Files", file_rows},
    {"Notes", note_rows},
};

} // namespace

std::vector<InformationSection> model_information(Workspace& model, base::Interaction& user) {
    std::vector<InformationSection> sections;
    for (const Part& part : parts) {
        InformationSection section{part.title, {}};
        const auto outcome =
            report::attempt(user, fmt::format("file_model_information({})", part.title), [&] {
                section.rows.clear();
                part.add(model, section.rows);
            });
        if (outcome == report::Outcome::left) {
            break;
        }
        if (!section.rows.empty()) {
            sections.push_back(std::move(section));
        }
    }
    return sections;
}

std::string size_text(std::uintmax_t bytes) {
    if (bytes < 1024) {
        return fmt::format("{} {}", bytes, bytes == 1 ? "byte" : "bytes");
    }
    static constexpr std::array units = {"KB", "MB", "GB", "TB"};
    double size = double(bytes) / 1024;
    std::size_t unit = 0;
    for (; size >= 1024 && unit + 1 < units.size(); ++unit) {
        size /= 1024;
    }
    return base::masked(size, "0.0") + " " + units[unit];
}

} // namespace app

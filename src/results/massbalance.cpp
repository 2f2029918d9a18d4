#include "results/massbalance.h"

#include "base/interaction.h"
#include "base/numbertext.h"
#include "base/textfile.h"
#include "core/modelfiles.h"
#include "core/modelflags.h"
#include "core/project.h"
#include "results/names.h"
#include "results/streamreader.h"
#include "results/timeseries.h"
#include "sim/transport.h"

#include <fmt/format.h>

#include <algorithm>

namespace results {

namespace {

constexpr const char* import_box = "Import Simulation Data";
constexpr double days_a_year = 365.25;
constexpr std::size_t time = 0, step_length = 1, flow = 2, first_substance = 3;
constexpr int first_velocity = 4;

bool is_horizontal(const core::Project& project) {
    return project.flags.GridOrientation() == core::horizontal;
}

// Value of a layer; 0 for one that is not in the grid.
float value_at(std::span<const float> values, int layer) {
    const bool inside = layer >= 1 && static_cast<std::size_t>(layer) <= values.size();
    return inside ? values[static_cast<std::size_t>(layer - 1)] : 0;
}

// Heights of the layers; of the sections, the way to them from the first one's face.
std::vector<float> layer_centres(const std::vector<float>& thicknesses, bool horizontal) {
    if (horizontal) {
        return centre_altitudes(thicknesses);
    }
    auto centres = centre_altitudes(std::vector(thicknesses.rbegin(), thicknesses.rend()));
    std::ranges::reverse(centres);
    return centres;
}

// Thickness of the point's layer; FileFailure when the layer is not in the grid.
float thickness_at(const MonitoringCell& point, std::span<const float> thicknesses,
                   const core::ModelFiles& files) {
    if (point.layer < 1 || static_cast<std::size_t>(point.layer) > thicknesses.size()) {
        throw base::FileFailure(
            fmt::format("has Monitoring Point {} in layer {}, where 1 to {} was expected",
                        point.slot, point.layer, thicknesses.size()),
            files.name_of(".pol"));
    }
    return thicknesses[static_cast<std::size_t>(point.layer - 1)];
}

} // namespace

std::vector<BalanceRow> Grid_Parameters_Load(const core::Project& project,
                                             const core::ModelFiles& files,
                                             const std::vector<MonitoringCell>& points) {
    const bool horizontal = is_horizontal(project);
    const std::vector<float> centres = layer_centres(Layerdicke(project, files), horizontal);
    std::vector<BalanceRow> table;
    for (const MonitoringCell& point : points) {
        if (point.has_cell()) {
            const grid::Bore& bore = point.bore;
            const float centre = value_at(centres, point.layer);
            table.push_back({point, bore.X, horizontal ? bore.Y : centre,
                             horizontal ? centre : bore.Y, files.has("." + point.file_part)});
        }
    }
    return table;
}

namespace {

// The result file; the input file when there is none or an empty one.
std::filesystem::path stream_of_model(const core::ModelFiles& files) {
    std::error_code ignored;
    const auto result = files.find(".nlo");
    if (result && std::filesystem::file_size(*result, ignored) > 0 && !ignored) {
        return *result;
    }
    return files.find(".nml").value_or(files.name_of(".nlo"));
}

} // namespace

std::vector<std::string> balance_substances(const core::Project& project,
                                            const core::ModelFiles& files,
                                            base::Interaction& user) {
    std::vector<std::string> substances;
    if (project.flags.ChemistryMode() > 0) {
        StreamReader stream(stream_of_model(files));
        const StreamNames names = read_names(stream, files, user);
        for (int n = 0; n < std::min(names.components, static_cast<int>(names.species.size()));
             ++n) {
            substances.push_back(n == 0 ? "H+" : names.species[static_cast<std::size_t>(n)].name);
        }
    }
    const int tracers = sim::TracerTable::load(files).ActiveTracers();
    for (int tracer = 1; tracer <= tracers; ++tracer) {
        substances.push_back(fmt::format("Tracer {}", tracer));
    }
    return substances;
}

std::optional<base::Refusal> import_refusal(const std::optional<Direction>& direction,
                                            const std::vector<int>& chosen,
                                            const std::vector<BalanceRow>& table) {
    if (!direction) {
        return base::Refusal{import_box, "Choose Direction for Mass Balance Calculation"};
    }
    if (chosen.empty()) {
        return base::Refusal{import_box, "Choose Monitoring Points for Mass Balance Calculation"};
    }
    for (const int slot : chosen) {
        const auto row =
            std::ranges::find(table, slot, [](const BalanceRow& r) { return r.point.slot; });
        if (row == table.end() || !row->has_file) {
            const std::string part = row == table.end() ? "xxx" : row->point.file_part;
            return base::Refusal{
                import_box,
                fmt::format("Chosen Monitoring File {} not available.\nCheck table again", part)};
        }
    }
    return std::nullopt;
}

namespace {

// What passes through one cell: the face across the direction and the records.
struct BalanceCell {
    double area = 0; // m2
    Series series;
};

// Get_Balance_Boundary: the face of the point's cell across the direction.
double face_area(const core::Project& project, const MonitoringCell& point,
                 const grid::GridFile& grid, float thickness, Direction direction) {
    const double width = grid.Column_Width[static_cast<std::size_t>(point.column - 1)];
    const double height = grid.Row_Height[static_cast<std::size_t>(point.row - 1)];
    if (direction == Direction::X) {
        return height * thickness;
    }
    // Sections lie one behind the other along Y, layers one above the other along Z.
    const Direction across_layers = is_horizontal(project) ? Direction::Z : Direction::Y;
    return width * (direction == across_layers ? height : thickness);
}

Series records_of(const core::ModelFiles& files, const MonitoringCell& point, int columns) {
    const std::string extension = "." + point.file_part;
    auto series = read_series(files.read(extension), files.name_of(extension), columns);
    if (!series) {
        throw base::FileFailure("has no record behind its head line", files.name_of(extension));
    }
    return *std::move(series);
}

void require_steps(const BalanceCell& cell, const BalanceCell& first,
                   const std::filesystem::path& file) {
    if (cell.series.rows() < first.series.rows()) {
        throw base::FileFailure(fmt::format("has {} records, where {} were expected",
                                            cell.series.rows(), first.series.rows()),
                                file);
    }
}

// The sums of one step over all cells.
void add_step(const std::vector<BalanceCell>& cells, std::size_t step, MassBalance& balance) {
    const Series& first = cells.front().series;
    const double now = first.at(step, time_column);
    const double before = step == 0 ? 0 : first.at(step - 1, time_column);
    std::vector<double> sums(balance.width());
    sums[time] = now;
    sums[step_length] = now - before;
    const int velocity = first_velocity + static_cast<int>(balance.direction);
    for (const BalanceCell& cell : cells) {
        const double q =
            cell.series.at(step, velocity) * cell.area * sums[step_length] / days_a_year;
        sums[flow] += q;
        for (std::size_t s = 0; s < balance.substances.size(); ++s) {
            sums[first_substance + s] +=
                q * cell.series.at(step, fixed_columns + 1 + static_cast<int>(s));
        }
    }
    balance.values.insert(balance.values.end(), sums.begin(), sums.end());
}

// The chosen rows in the order of the table.
std::vector<MonitoringCell> chosen_points(const std::vector<BalanceRow>& table,
                                          const std::vector<int>& chosen) {
    std::vector<MonitoringCell> points;
    for (const BalanceRow& row : table) {
        if (std::ranges::find(chosen, row.point.slot) != chosen.end()) {
            points.push_back(row.point);
        }
    }
    return points;
}

class BalanceImport {
public:
    BalanceImport(const core::Project& project, const core::ModelFiles& files,
                  base::Interaction& user)
        : project_(project), files_(files), user_(user) {}

    std::string table(const std::vector<MonitoringCell>& points, Direction direction) {
        user_.status("Data Load and Store (Mass Balance Boundary)");
        MassBalance balance;
        balance.project = files_.base_name();
        balance.direction = direction;
        balance.substances = balance_substances(project_, files_, user_);
        const std::vector<BalanceCell> cells = cells_of(points, balance);
        const std::size_t steps = cells.front().series.rows();
        for (std::size_t step = 0; step < steps; ++step) {
            user_.status(fmt::format("Data Load and Store (File: {} / Step: {})",
                                     points.back().file_part, step + 1));
            add_step(cells, step, balance);
            user_.show_meter(static_cast<int>(100 * (step + 1) / steps));
        }
        return balance.bytes();
    }

private:
    std::vector<BalanceCell> cells_of(const std::vector<MonitoringCell>& points,
                                      MassBalance& balance) {
        const grid::GridFile grid = grid_of_project(project_, files_);
        const std::vector<float> thicknesses = Layerdicke(project_, files_);
        const int columns = fixed_columns + static_cast<int>(balance.substances.size());
        std::vector<BalanceCell> cells;
        for (const MonitoringCell& point : points) {
            balance.points.push_back(point.bore.Name);
            const float thickness = thickness_at(point, thicknesses, files_);
            cells.push_back({face_area(project_, point, grid, thickness, balance.direction),
                             records_of(files_, point, columns)});
            require_steps(cells.back(), cells.front(), files_.name_of("." + point.file_part));
        }
        return cells;
    }

    const core::Project& project_;
    const core::ModelFiles& files_;
    base::Interaction& user_;
};

} // namespace

Imported Import_Mass_Balance_Boundary(const core::Project& project, core::ModelFiles& files,
                                      const std::vector<BalanceRow>& table,
                                      const std::vector<int>& chosen, Direction direction,
                                      base::Interaction& user) {
    const auto balance = [&]() -> std::optional<std::string> {
        return BalanceImport(project, files, user).table(chosen_points(table, chosen), direction);
    };
    return import_table("Import_Mass_Balance_Boundary", files, ".fwp", balance, user);
}

} // namespace results

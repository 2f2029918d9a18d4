#include "minitervex/monitoring.h"

#include "base/failure.h"
#include "base/numbertext.h"

#include <fmt/format.h>

#include <map>
#include <string_view>

namespace minitervex {

namespace {

constexpr double day = 86400, year = 365 * day;
constexpr std::size_t width = 16;

std::string column(std::string_view text) {
    return " " + base::right_aligned(text, width - 1);
}

std::string column(double value) {
    return column(base::value_text(single(value)));
}

std::string head_line(int substances) {
    constexpr std::string_view names[] = {"time[d]",  "step",    "head[m]",        "vx[m/a]",
                                          "vy[m/a]",  "vz[m/a]", "porosity[-]",    "kf[m/s]",
                                          "perm[m2]", "temp[C]", "lambda[W/(mK)]", "pe"};
    std::string line;
    for (const std::string_view name : names)
        line += column(name);
    for (int n = 1; n <= substances; ++n)
        line += column(fmt::format("substance{}", n));
    return line + "\r\n";
}

std::string record_line(const Simulation& simulation, const Faces& velocity, int step, int cell) {
    const Model& model = simulation.model();
    std::string line = column(base::value_text(simulation.seconds() / day));
    line += column(fmt::format("{}", step));
    line += column(simulation.flow().head()[cell]);
    for (int axis = X; axis <= Z; ++axis)
        line += column(centre_velocity(model.grid, velocity, cell, axis) * year);
    line += column(model.porosity[cell]);
    line += column(model.flow.permeability[cell] * model.conductivity_factor());
    line += column(model.flow.permeability[cell]);
    line += column(simulation.temperature()[cell]);
    line += column(model.heat.conductivity[cell]);
    line += column(0.0);
    for (const Vector& concentration : simulation.concentrations())
        line += column(concentration[cell]);
    for (std::size_t n = simulation.concentrations().size();
         n < static_cast<std::size_t>(model.substances); ++n)
        line += column(0.0);
    return line + "\r\n";
}

} // namespace

std::string monitoring_suffix(int rank) {
    return fmt::format("{}{}", rank,
                       std::string_view("00").substr(rank < 10    ? 0
                                                     : rank < 100 ? 1
                                                                  : 2));
}

Monitoring::Monitoring(const Model& model, const std::filesystem::path& base) {
    std::map<std::string, int> taken;
    for (const MonitoringPoint& point : model.points) {
        const std::string suffix = monitoring_suffix(point.rank);
        const auto [at, is_new] = taken.emplace(suffix, point.rank);
        if (!is_new) {
            left_out_.emplace_back(point.rank, at->second);
            continue;
        }
        std::filesystem::path path = base;
        path += "." + suffix;
        std::ofstream out(path, std::ios::binary | std::ios::trunc);
        if (!(out << head_line(model.substances) << std::flush))
            throw base::FileFailure("cannot be written", path);
        files_.push_back({path, std::move(out), point.cell});
    }
}

void Monitoring::record(const Simulation& simulation, int step) {
    if (files_.empty())
        return;
    const Faces velocity = simulation.velocity();
    for (File& file : files_)
        if (!(file.out << record_line(simulation, velocity, step, file.cell) << std::flush))
            throw base::FileFailure("cannot be written", file.path);
}

} // namespace minitervex

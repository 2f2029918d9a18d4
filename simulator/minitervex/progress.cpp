#include "minitervex/progress.h"

#include "base/numbertext.h"

#include <fmt/format.h>

#include <string_view>

namespace minitervex {

namespace {

constexpr std::string_view scientific = "0.0000E+00";

std::string shown(double value) {
    constexpr double digits = 1E4;
    const float rounded = single(value);
    return std::abs(value) >= 1 && std::abs(value) < digits ? base::masked(value, "0.0##")
                                                            : base::value_text(rounded);
}

std::string range_text(std::string_view name, const Vector& values, std::string_view unit) {
    return fmt::format("  {} {} .. {}{}", name, shown(values.minCoeff()), shown(values.maxCoeff()),
                       unit);
}

} // namespace

std::string time_text(double seconds) {
    constexpr struct {
        double seconds;
        std::string_view unit;
    } units[] = {{365 * 86400.0, "a"}, {86400, "d"}, {3600, "h"}, {60, "min"}};
    for (const auto& [length, unit] : units)
        if (seconds >= length)
            return fmt::format("{} {}", shown(seconds / length), unit);
    return fmt::format("{} s", shown(seconds));
}

Progress::Progress(std::ostream& out, std::ostream& warnings, const Model& model)
    : out_(out), warnings_(warnings), model_(model) {
    for (const Period& period : model.periods)
        steps_ += period.steps;
}

void Progress::line(const std::string& text) {
    if (model_.tells_progress)
        out_ << text << '\n' << std::flush;
}

void Progress::warn(const std::string& text) {
    warnings_ << "minitervex: warning: " << text << '\n' << std::flush;
}

void Progress::begin(const std::filesystem::path& input) {
    const auto [nx, ny, nz] = model_.grid.count;
    line(fmt::format("minitervex: {}", input.string()));
    line(fmt::format("{} x {} x {} = {} cells, {} periods, {} steps to {}", nx, ny, nz,
                     model_.grid.cells(), model_.periods.size(), steps_,
                     time_text(model_.periods.back().end)));
    const Water& water = model_.water;
    line(fmt::format("constant water: {} kg/m3, {} Pa s, {} J/(kg K), {} W/(m K)",
                     shown(water.density), shown(water.viscosity), shown(water.heat_capacity),
                     shown(water.conductivity)));
    for (const std::string& note : model_.notes)
        warn(note);
}

void Progress::step(const Simulation& simulation, std::size_t period, int step) {
    constexpr int parts = 20;
    const auto part = static_cast<int>(std::int64_t{parts} * step / steps_);
    if (part == told_)
        return;
    told_ = part;
    const auto [flow, heat, tracers] = simulation.iterations();
    std::string text = fmt::format("period {}  step {} of {} ({} %)  {}  iterations {}/{}/{}",
                                   period, step, steps_, std::int64_t{100} * step / steps_,
                                   time_text(simulation.seconds()), flow, heat, tracers);
    if (model_.flow.active && !model_.flow.prescribed)
        text += range_text("head", simulation.flow().head(), " m");
    if (model_.heat.active)
        text += range_text("temperature", simulation.temperature(), " C");
    for (std::size_t n = 0; model_.tracers.active && n < simulation.concentrations().size(); ++n)
        text += range_text(fmt::format("tracer {}", n + 1), simulation.concentrations()[n], "");
    line(text);
}

void Progress::balances(const Simulation& simulation) {
    for (const Balance& balance : simulation.balances())
        line(fmt::format(
            "balance of {} [{}]: in {}  out {}  stored {}  error {} ({} of what came in)",
            balance.name, balance.unit, base::masked(balance.in, scientific),
            base::masked(balance.out, scientific), base::masked(balance.stored, scientific),
            base::masked(balance.error(), scientific),
            base::masked(balance.relative_error(), "0.0E+00")));
}

void Progress::end(const Simulation& simulation, const std::filesystem::path& result) {
    balances(simulation);
    line(fmt::format("finished: {} written", result.string()));
}

void Progress::interrupted(const Simulation& simulation, const std::filesystem::path& result) {
    balances(simulation);
    warnings_ << fmt::format("minitervex: interrupted at {} ({} s); the state reached is in {}\n",
                             time_text(simulation.seconds()),
                             base::value_text(simulation.seconds()), result.string())
              << std::flush;
}

} // namespace minitervex

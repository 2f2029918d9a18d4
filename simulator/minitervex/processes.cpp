#include "minitervex/processes.h"

#include <fmt/format.h>

#include <cmath>

namespace minitervex {

Transport heat_transport(const Model& model) {
    const HeatInput& heat = model.heat;
    Vector capacity = heat.capacity;
    for (int cell = 0; cell < capacity.size(); ++cell)
        capacity[cell] *= model.grid.volume(cell);
    return {model.grid,
            {.what = "temperature",
             .capacity = std::move(capacity),
             .carried = model.water.density * model.water.heat_capacity,
             .source = heat.source,
             .fixed = heat.fixed,
             .outside_is_own = true,
             .iterations = model.iterations},
            {heat.temperature},
            {{.name = "heat", .unit = "J above 0 deg. C"}}};
}

Transport tracer_transport(const Model& model) {
    Vector capacity = model.porosity;
    for (int cell = 0; cell < capacity.size(); ++cell)
        capacity[cell] *= model.grid.volume(cell);
    std::vector<Balance> balances;
    for (std::size_t n = 1; n <= model.tracers.concentrations.size(); ++n)
        balances.push_back({.name = fmt::format("tracer {}", n), .unit = "mol"});
    return {model.grid,
            {.what = "concentration",
             .capacity = std::move(capacity),
             .carried = 1,
             .source = Vector::Zero(model.grid.cells()),
             .fixed = model.tracers.fixed,
             .outside_is_own = false,
             .iterations = model.iterations},
            model.tracers.concentrations,
            std::move(balances)};
}

Faces heat_conductances(const Model& model) {
    const HeatInput& heat = model.heat;
    const Vector along_x = heat.conductivity.cwiseProduct(heat.anisotropy_x);
    const Vector along_y = heat.conductivity.cwiseProduct(heat.anisotropy_y);
    return harmonic(model.grid, {&along_x, &along_y, &heat.conductivity});
}

Faces dispersion_conductances(const Model& model, const FlowField& field) {
    const Grid& grid = model.grid;
    const TracerInput& tracers = model.tracers;
    const Vector pores = model.porosity * tracers.diffusion;
    Faces conductance = harmonic(grid, {&pores, &pores, &pores});
    if (tracers.longitudinal <= 0 && tracers.transverse <= 0)
        return conductance;
    const Faces velocity = velocities(grid, field);
    each_face(grid, [&](int axis, int lower, int upper) {
        double square = 0;
        const double normal = velocity.at(axis, lower);
        for (int along = X; along <= Z; ++along) {
            const double part = along == axis ? normal
                                              : (centre_velocity(grid, velocity, lower, along) +
                                                 centre_velocity(grid, velocity, upper, along)) /
                                                    2;
            square += part * part;
        }
        const double speed = std::sqrt(square);
        const bool has_pores = model.porosity[lower] > 0 && model.porosity[upper] > 0;
        if (speed <= 0 || !has_pores)
            return;
        const double coefficient =
            tracers.transverse * speed +
            (tracers.longitudinal - tracers.transverse) * normal * normal / speed;
        const double distance = (grid.width(lower, axis) + grid.width(upper, axis)) / 2;
        conductance.at(axis, lower) += coefficient * grid.area(lower, axis) / distance;
    });
    return conductance;
}

} // namespace minitervex

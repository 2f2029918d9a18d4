#include "minitervex/simulation.h"

namespace minitervex {

Simulation::Simulation(const Model& model) : model_(model), flow_(model) {
    if (model.heat.active)
        heat_.emplace(heat_transport(model));
    if (model.tracers.active)
        tracers_.emplace(tracer_transport(model));
}

void Simulation::step(const Period& period) {
    const bool changed = flow_.step(period, period.step) || !begun_;
    begun_ = true;
    if (heat_) {
        if (changed)
            heat_->set_flow(flow_.field(), heat_conductances(model_));
        heat_->step(period, period.step,
                    [](const Well& well, std::size_t) { return well.temperature; });
    }
    if (tracers_) {
        if (changed)
            tracers_->set_flow(flow_.field(), dispersion_conductances(model_, flow_.field()));
        tracers_->step(period, period.step, [](const Well& well, std::size_t substance) {
            return well.concentrations[substance];
        });
    }
    seconds_ += period.step;
}

const Vector& Simulation::temperature() const {
    return heat_ ? heat_->states().front() : model_.heat.temperature;
}

const std::vector<Vector>& Simulation::concentrations() const {
    return tracers_ ? tracers_->states() : model_.tracers.concentrations;
}

std::vector<Balance> Simulation::balances() const {
    std::vector<Balance> all;
    if (model_.flow.active)
        all.push_back(flow_.balance());
    if (heat_)
        all.push_back(heat_->balances().front());
    if (tracers_)
        all.insert(all.end(), tracers_->balances().begin(), tracers_->balances().end());
    return all;
}

std::array<int, 3> Simulation::iterations() const {
    return {flow_.iterations(), heat_ ? heat_->iterations() : 0,
            tracers_ ? tracers_->iterations() : 0};
}

} // namespace minitervex

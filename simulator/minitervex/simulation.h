// All processes of a model, step by step.
#pragma once

#include "minitervex/processes.h"

#include <optional>

namespace minitervex {

class Simulation {
public:
    // The model must outlive it.
    explicit Simulation(const Model& model);

    // Goes on by one step of the period.
    void step(const Period& period);

    const Model& model() const { return model_; }
    double seconds() const { return seconds_; } // since the beginning
    const Flow& flow() const { return flow_; }
    const Vector& temperature() const;
    const std::vector<Vector>& concentrations() const;
    Faces velocity() const { return velocities(model_.grid, flow_.field()); } // m/s
    std::vector<Balance> balances() const;
    // Of the last step: flow, heat, tracers.
    std::array<int, 3> iterations() const;

private:
    const Model& model_;
    Flow flow_;
    std::optional<Transport> heat_, tracers_;
    double seconds_ = 0;
    bool begun_ = false;
};

} // namespace minitervex

// What water carries and what spreads on its own: heat and tracers.
#pragma once

#include "minitervex/flow.h"

namespace minitervex {

// capacity dc/dt = conduction + advection (upwind) + wells + sources, implicit in time, for one or
// more substances that share all coefficients.
class Transport {
public:
    // What is the same for heat and tracers.
    struct Setup {
        std::string what;   // "temperature"
        Vector capacity;    // of each cell: J/K, or m3 of pores
        double carried = 1; // by 1 m3 of water: J/K, or 1
        Vector source;      // J/s
        Marks fixed;
        bool outside_is_own; // water from outside: as the cell itself (true), or free of it
        int iterations = 1;
    };

    Transport(const Grid& grid, Setup setup, std::vector<Vector> states,
              std::vector<Balance> balances);

    // Takes the flow field and the conductances that go with it.
    void set_flow(const FlowField& field, Faces conductance);

    // What a well's water brings, for each substance.
    using Injected = std::function<double(const Well& well, std::size_t substance)>;
    void step(const Period& period, double seconds, const Injected& injected);

    const std::vector<Vector>& states() const { return states_; }
    const std::vector<Balance>& balances() const { return balances_; }
    int iterations() const { return iterations_; }

private:
    void set_matrix(const Period& period, double seconds);
    Vector right_side(const Period& period, double seconds, std::size_t substance,
                      const Injected& injected) const;
    // Rates of exchange with outside: in and out.
    Balance exchange(const Period& period, const Vector& state, std::size_t substance,
                     const Injected& injected) const;
    double fixed_cell_supply(int cell, const Vector& state, const Vector& well_supply) const;

    const Grid& grid_;
    Setup setup_;
    std::vector<Vector> states_;
    std::vector<Balance> balances_;
    std::vector<int> fixed_cells_;
    Links links_;
    Vector outside_, stored_; // m3/s, times what is carried
    System system_;
    LinearSolver solver_;
    double step_length_ = 0;         // of the present matrix; 0: there is none
    const Period* period_ = nullptr; // of the present matrix
    int iterations_ = 0;
};

} // namespace minitervex

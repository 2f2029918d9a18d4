#include "minitervex/transport.h"

#include <utility>

namespace minitervex {

namespace {

std::size_t at(int cell) {
    return static_cast<std::size_t>(cell);
}

} // namespace

Transport::Transport(const Grid& grid, Setup setup, std::vector<Vector> states,
                     std::vector<Balance> balances)
    : grid_(grid), setup_(std::move(setup)), states_(std::move(states)),
      balances_(std::move(balances)),
      solver_(LinearSolver::Kind::general, setup_.what, setup_.iterations) {
    for (int cell = 0; cell < grid.cells(); ++cell)
        if (setup_.fixed[at(cell)] != 0)
            fixed_cells_.push_back(cell);
    links_.flux = Faces(grid);
}

void Transport::set_flow(const FlowField& field, Faces conductance) {
    links_.conductance = std::move(conductance);
    for (std::size_t axis = X; axis <= Z; ++axis)
        links_.flux.along[axis] = field.flux.along[axis] * setup_.carried;
    outside_ = field.outside * setup_.carried;
    stored_ = field.stored * setup_.carried;
    step_length_ = 0;
}

void Transport::set_matrix(const Period& period, double seconds) {
    if (step_length_ == seconds && period_ == &period)
        return;
    Vector diagonal = setup_.capacity / seconds;
    if (!setup_.outside_is_own)
        diagonal += outside_.cwiseMax(0);
    for (const Well& well : period.wells)
        diagonal[well.cell] += std::max(well.rate, 0.0) * setup_.carried;
    system_ = assemble(grid_, links_, diagonal, setup_.fixed);
    solver_.set_matrix(system_.matrix);
    step_length_ = seconds;
    period_ = &period;
}

Vector Transport::right_side(const Period& period, double seconds, std::size_t substance,
                             const Injected& injected) const {
    const Vector& state = states_[substance];
    Vector right = setup_.capacity.cwiseProduct(state) / seconds + setup_.source;
    for (const Well& well : period.wells)
        right[well.cell] += std::max(well.rate, 0.0) * setup_.carried * injected(well, substance);
    close_right_side(grid_, links_, system_.held, state, right);
    return right;
}

void Transport::step(const Period& period, double seconds, const Injected& injected) {
    set_matrix(period, seconds);
    iterations_ = 0;
    for (std::size_t n = 0; n < states_.size(); ++n) {
        const Vector old = states_[n];
        const Vector right = right_side(period, seconds, n, injected);
        iterations_ += solver_.solve(right, states_[n], [&](const Vector& state) {
            return exchange(period, state, n, injected).in;
        });
        const Balance rates = exchange(period, states_[n], n, injected);
        balances_[n].in += rates.in * seconds;
        balances_[n].out += rates.out * seconds;
        balances_[n].stored +=
            setup_.capacity.dot(states_[n] - old) + stored_.dot(states_[n]) * seconds;
    }
}

double Transport::fixed_cell_supply(int cell, const Vector& state,
                                    const Vector& well_supply) const {
    const double outside = outside_[cell];
    const double from_outside = outside > 0 && !setup_.outside_is_own ? 0 : outside * state[cell];
    return stored_[cell] * state[cell] - net_gain(grid_, links_, state, cell) - from_outside -
           setup_.source[cell] - well_supply[cell];
}

Balance Transport::exchange(const Period& period, const Vector& state, std::size_t substance,
                            const Injected& injected) const {
    Balance rates;
    Vector well_supply = Vector::Zero(state.size());
    for (const Well& well : period.wells) {
        const double value = well.rate > 0 ? injected(well, substance) : state[well.cell];
        const double supply = well.rate * setup_.carried * value;
        well_supply[well.cell] += supply;
        rates.exchange(supply);
    }
    for (int cell = 0; cell < state.size(); ++cell) {
        rates.exchange(setup_.source[cell]);
        if (outside_[cell] < 0 || setup_.outside_is_own)
            rates.exchange(outside_[cell] * state[cell]);
    }
    for (const int cell : fixed_cells_)
        rates.exchange(fixed_cell_supply(cell, state, well_supply));
    return rates;
}

} // namespace minitervex

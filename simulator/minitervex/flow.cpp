#include "minitervex/flow.h"

#include "base/failure.h"

#include <fmt/format.h>

#include <vector>

namespace minitervex {

namespace {

std::size_t at(int cell) {
    return static_cast<std::size_t>(cell);
}

bool is_computed(const Model& model) {
    return model.flow.active && !model.flow.prescribed;
}

Faces face_conductances(const Model& model) {
    const FlowInput& flow = model.flow;
    const Vector vertical = flow.permeability * model.conductivity_factor();
    const Vector along_x = vertical.cwiseProduct(flow.anisotropy_x);
    const Vector along_y = vertical.cwiseProduct(flow.anisotropy_y);
    return harmonic(model.grid, {&along_x, &along_y, &vertical});
}

} // namespace

Flow::Flow(const Model& model)
    : model_(model), held_(model.flow.fixed), head_(model.flow.head),
      solver_(LinearSolver::Kind::symmetric, "hydraulic head", model.iterations) {
    const int cells = model.grid.cells();
    field_ = {Faces(model.grid), Vector::Zero(cells), Vector::Zero(cells)};
    if (model.flow.prescribed)
        take_prescribed();
    if (!is_computed(model))
        return;
    links_.conductance = face_conductances(model);
    storage_ = model.flow.steady ? Vector(Vector::Zero(cells)) : model.flow.storage;
    for (int cell = 0; cell < cells; ++cell) {
        storage_[cell] *= model.grid.volume(cell);
        if (model.flow.permeability[cell] <= 0)
            held_[at(cell)] = 1;
    }
    require_permeable_sources();
    require_solvable();
}

void Flow::require_permeable_sources() const {
    for (const Period& period : model_.periods) {
        const Vector source = sources(period);
        for (int cell = 0; cell < source.size(); ++cell)
            if (source[cell] != 0 && model_.flow.permeability[cell] <= 0)
                fail_at(cell, "has a well or recharge but no permeability");
    }
}

void Flow::fail_at(int cell, std::string_view what) const {
    const Grid& grid = model_.grid;
    throw base::RangeFailure(fmt::format("the cell I {} J {} K {} {}", grid.place(cell, X) + 1,
                                         grid.place(cell, Y) + 1, grid.place(cell, Z) + 1, what));
}

void Flow::require_solvable() const {
    const Grid& grid = model_.grid;
    Marks reached(at(grid.cells()), 0);
    std::vector<int> open;
    const auto reach = [&](int cell) {
        if (reached[at(cell)] == 0) {
            reached[at(cell)] = 1;
            open.push_back(cell);
        }
    };
    for (int cell = 0; cell < grid.cells(); ++cell)
        if (held_[at(cell)] != 0 || storage_[cell] > 0)
            reach(cell);
    while (!open.empty()) {
        const int cell = open.back();
        open.pop_back();
        each_neighbour(grid, cell, [&](int, int neighbour, int axis, int face, int) {
            if (links_.conductance_at(axis, face) > 0)
                reach(neighbour);
        });
    }
    const auto lost = std::ranges::find(reached, 0);
    if (lost != reached.end())
        fail_at(static_cast<int>(lost - reached.begin()),
                model_.flow.steady
                    ? "is connected to no fixed head, without which steady flow is undefined"
                    : "has no storage and is connected to no fixed head");
}

void Flow::take_prescribed() {
    const Grid& grid = model_.grid;
    each_face(grid, [&](int axis, int lower, int) {
        field_.flux.at(axis, lower) = model_.flow.velocity.at(axis, lower) * grid.area(lower, axis);
    });
}

bool Flow::step(const Period& period, double seconds) {
    iterations_ = 0;
    if (!model_.flow.active)
        return false;
    bool changed = period_ != &period;
    if (is_computed(model_)) {
        const Vector old_head = head_;
        changed =
            (!changed && model_.flow.steady) ? false : solve_heads(period, seconds) || changed;
        if (changed)
            fill_field(period, old_head, seconds);
    } else if (changed) {
        fill_field(period, head_, seconds);
    }
    period_ = &period;
    add_balance(period, seconds);
    return changed;
}

void Flow::set_step(double seconds) {
    if (step_length_ == seconds || (model_.flow.steady && step_length_ > 0))
        return;
    system_ = assemble(model_.grid, links_, storage_ / seconds, held_);
    solver_.set_matrix(system_.matrix);
    step_length_ = seconds;
}

Vector Flow::sources(const Period& period) const {
    Vector sources = model_.flow.recharge;
    for (const Well& well : period.wells)
        sources[well.cell] += well.rate;
    return sources;
}

double Flow::gross_inflow(const Vector& head, const Vector& sources) const {
    double inflow = 0;
    for (int cell = 0; cell < head.size(); ++cell) {
        if (model_.flow.fixed[at(cell)] != 0 && model_.flow.permeability[cell] > 0)
            inflow += std::max(0.0, -net_gain(model_.grid, links_, head, cell));
        else
            inflow += std::max(0.0, sources[cell]);
    }
    // A model that only empties itself by its wells has no inflow but its storage.
    return inflow > 0 ? inflow : sources.cwiseMin(0).sum() * -1;
}

bool Flow::solve_heads(const Period& period, double seconds) {
    set_step(seconds);
    const Vector source = sources(period);
    Vector right = source + storage_.cwiseProduct(head_) / seconds;
    close_right_side(model_.grid, links_, system_.held, head_, right);
    iterations_ =
        solver_.solve(right, head_, [&](const Vector& head) { return gross_inflow(head, source); });
    const bool moves = iterations_ > 0;
    const bool changed = moves || was_moving_;
    was_moving_ = moves;
    return changed;
}

void Flow::fill_field(const Period& period, const Vector& old_head, double seconds) {
    const Grid& grid = model_.grid;
    const bool computed = is_computed(model_);
    Vector into = Vector::Zero(grid.cells()); // what comes in over inner faces and by wells
    each_face(grid, [&](int axis, int lower, int upper) {
        double& flux = field_.flux.at(axis, lower);
        if (computed)
            flux = links_.conductance_at(axis, lower) * (head_[lower] - head_[upper]);
        into[lower] -= flux;
        into[upper] += flux;
    });
    for (const Well& well : period.wells)
        into[well.cell] += well.rate;
    if (computed)
        field_.stored = storage_.cwiseProduct(head_ - old_head) / seconds;
    for (int cell = 0; cell < grid.cells(); ++cell) {
        if (computed && model_.flow.fixed[at(cell)] == 0)
            field_.outside[cell] = model_.flow.recharge[cell];
        else if (computed || grid.touches_outside(cell))
            field_.outside[cell] = field_.stored[cell] - into[cell];
        else
            field_.stored[cell] = into[cell];
    }
}

void Flow::add_balance(const Period& period, double seconds) {
    for (const Well& well : period.wells)
        balance_.exchange(well.rate * seconds);
    for (int cell = 0; cell < field_.outside.size(); ++cell)
        balance_.exchange(field_.outside[cell] * seconds);
    balance_.stored += field_.stored.sum() * seconds;
}

Faces velocities(const Grid& grid, const FlowField& field) {
    Faces velocity(grid);
    each_face(grid, [&](int axis, int lower, int) {
        velocity.at(axis, lower) = field.flux.at(axis, lower) / grid.area(lower, axis);
    });
    return velocity;
}

double centre_velocity(const Grid& grid, const Faces& velocity, int cell, int axis) {
    const bool has_lower = grid.place(cell, axis) > 0;
    const bool has_upper = grid.has_upper(cell, axis);
    const double lower = has_lower ? velocity.at(axis, cell - grid.stride(axis)) : 0;
    const double upper = has_upper ? velocity.at(axis, cell) : 0;
    return (lower + upper) / (has_lower && has_upper ? 2 : 1);
}

} // namespace minitervex

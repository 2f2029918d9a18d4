// Groundwater flow: hydraulic heads and what passes between the cells.
#pragma once

#include "minitervex/balance.h"
#include "minitervex/linearsolver.h"
#include "minitervex/model.h"

#include <string_view>

namespace minitervex {

// Fluxes of water in m3/s.
struct FlowField {
    Faces flux;     // through the faces between the cells
    Vector outside; // into each cell from outside: fixed heads, recharge, outer faces
    Vector stored;  // into the storage of each cell
};

class Flow {
public:
    // Steady flow needs a fixed head, transient flow a storage or a fixed head in every part of the
    // model that hangs together; RangeFailure otherwise.
    explicit Flow(const Model& model);

    // Goes on by one step of `seconds`. True when the flow field is another one than before.
    bool step(const Period& period, double seconds);

    const Vector& head() const { return head_; }
    const FlowField& field() const { return field_; }
    const Balance& balance() const { return balance_; }
    int iterations() const { return iterations_; } // of the last step

private:
    void require_permeable_sources() const;
    void require_solvable() const;
    [[noreturn]] void fail_at(int cell, std::string_view what) const;
    void set_step(double seconds);
    Vector sources(const Period& period) const;
    double gross_inflow(const Vector& head, const Vector& sources) const;
    bool solve_heads(const Period& period, double seconds);
    void take_prescribed();
    void fill_field(const Period& period, const Vector& old_head, double seconds);
    void add_balance(const Period& period, double seconds);

    const Model& model_;
    Marks held_; // fixed heads and cells without permeability
    Links links_;
    Vector storage_; // m2: water taken up per metre of head
    Vector head_;
    FlowField field_;
    Balance balance_{.name = "water", .unit = "m3"};
    System system_;
    LinearSolver solver_;
    double step_length_ = 0;         // of the present matrix
    const Period* period_ = nullptr; // of the present steady field
    int iterations_ = 0;
    bool was_moving_ = true;
};

// Velocities at the faces in m/s as the stream has them: the value of a cell belongs to the face
// between it and the next one.
Faces velocities(const Grid& grid, const FlowField& field);

// Of the centre of a cell: the mean of its two faces; at the edge of the model the inner one alone.
double centre_velocity(const Grid& grid, const Faces& velocity, int cell, int axis);

} // namespace minitervex

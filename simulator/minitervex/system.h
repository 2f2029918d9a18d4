// Balances of cells as a system of linear equations.
#pragma once

#include "minitervex/grid.h"
#include "minitervex/model.h"

#include <Eigen/SparseCore>

namespace minitervex {

using Matrix = Eigen::SparseMatrix<double, Eigen::RowMajor, int>;

// What passes between neighbours: conductance times the difference, and what a flux carries out of
// the cell that it comes from.
struct Links {
    Faces conductance;
    Faces flux; // positive along the axis; empty vectors: none

    double conductance_at(int axis, int face) const { return conductance.at(axis, face); }
    // What the flux at this face brings into a cell; `sign` as each_neighbour gives it.
    double inflow(int axis, int face, int sign) const {
        const Vector& along = flux.along[static_cast<std::size_t>(axis)];
        return along.size() == 0 ? 0 : std::max(sign * along[face], 0.0);
    }
};

// Row of cell i: (diagonal_i + sum of d_ij) x_i - sum of d_ij x_j, where d_ij is the conductance
// and the inflow from neighbour j. A fixed cell, and one that nothing can reach, gets the row x_i
// alone; fixed neighbours stand on the right-hand side.
struct System {
    Matrix matrix;
    Marks held; // rows of x_i alone
};

System assemble(const Grid& grid, const Links& links, const Vector& diagonal, const Marks& fixed);

// Completes the right-hand side: adds d_ij x_j of the held neighbours, puts x_i into held rows.
void close_right_side(const Grid& grid, const Links& links, const Marks& held, const Vector& state,
                      Vector& right);

// Sum over the neighbours of d_ij (x_j - x_i), less what the cell's outflow carries beyond its
// inflow: the net gain of a cell.
double net_gain(const Grid& grid, const Links& links, const Vector& state, int cell);

} // namespace minitervex

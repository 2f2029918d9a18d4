// Preconditioners in the form that Eigen's iterative solvers expect.
#pragma once

#include "minitervex/system.h"

#include <Eigen/SparseCholesky>

#include <memory>
#include <vector>

namespace minitervex {

// The common part of both.
template <class Derived>
class Preconditioner {
public:
    using StorageIndex = int;
    enum { ColsAtCompileTime = Eigen::Dynamic, MaxColsAtCompileTime = Eigen::Dynamic };

    // The solvers hand over a view of their matrix, of which a copy is kept.
    template <class View>
    Derived& compute(const View& matrix) {
        self().prepare(Matrix(matrix));
        return self();
    }
    template <class View>
    Derived& factorize(const View& matrix) {
        return compute(matrix);
    }
    template <class View>
    Derived& analyzePattern(const View&) {
        return self();
    }
    template <class Right>
    Vector solve(const Eigen::MatrixBase<Right>& right) const {
        return static_cast<const Derived&>(*this).apply(right);
    }
    Eigen::ComputationInfo info() const { return Eigen::Success; }

private:
    Derived& self() { return static_cast<Derived&>(*this); }
};

// Incomplete factorisation without fill: (D + L) D^-1 (D + U), L and U those of the matrix. On the
// seven-point pattern of a grid it is ILU(0).
class Dilu : public Preconditioner<Dilu> {
public:
    void prepare(Matrix matrix);
    Vector apply(const Vector& right) const;

private:
    Matrix matrix_;
    Vector inverse_; // of D
};

// Algebraic multigrid for symmetric matrices: each cell is joined with the neighbours that it is
// tied to most strongly, in pairs of pairs, so that thin layers and contrasts of permeability are
// followed; W cycles with symmetric Gauss-Seidel smoothing, the coarsest level solved directly.
class Multigrid : public Preconditioner<Multigrid> {
public:
    void prepare(Matrix matrix);
    Vector apply(const Vector& right) const;

private:
    struct Level {
        Matrix matrix;
        Vector inverse_diagonal;
        std::vector<int> aggregate; // of each row on the next level; -1: solved by smoothing alone
        int coarse_rows = 0;
        mutable Vector coarse_right, coarse_state, residual;
    };

    void cycle(std::size_t level, const Vector& right, Vector& state) const;
    void correct(std::size_t level, const Vector& right, Vector& state) const;

    std::vector<Level> levels_;
    Eigen::SimplicialLDLT<Eigen::SparseMatrix<double>> coarsest_;
};

} // namespace minitervex

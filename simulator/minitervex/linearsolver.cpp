#include "minitervex/linearsolver.h"

#include "base/failure.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace minitervex {

namespace {

constexpr double balance_error = 1E-8;
constexpr double rounding = 1E-15; // of the sum of the terms of all rows
constexpr int most_passes = 20;

} // namespace

struct LinearSolver::Method {
    Kind kind;
    std::string what;
    int iterations;
    Matrix matrix;
    Vector absolute_diagonal;
    Eigen::ConjugateGradient<Matrix, Eigen::Lower | Eigen::Upper, Multigrid> symmetric;
    Eigen::BiCGSTAB<Matrix, Dilu> general;

    template <class Solver>
    int improve(Solver& solver, const Vector& residual, double tolerance, int left,
                Vector& state) const {
        solver.setTolerance(tolerance);
        solver.setMaxIterations(left);
        state += solver.solve(residual);
        // What the preconditioner solves at once counts as no iteration there.
        return std::max(1, static_cast<int>(solver.iterations()));
    }

    int pass(const Vector& residual, double tolerance, int left, Vector& state) {
        return kind == Kind::symmetric ? improve(symmetric, residual, tolerance, left, state)
                                       : improve(general, residual, tolerance, left, state);
    }
};

LinearSolver::LinearSolver(Kind kind, std::string what, int iterations)
    : method_(std::make_unique<Method>()) {
    method_->kind = kind;
    method_->what = std::move(what);
    method_->iterations = iterations;
}

LinearSolver::~LinearSolver() = default;
LinearSolver::LinearSolver(LinearSolver&&) noexcept = default;
LinearSolver& LinearSolver::operator=(LinearSolver&&) noexcept = default;

void LinearSolver::set_matrix(Matrix matrix) {
    Method& method = *method_;
    method.matrix = std::move(matrix);
    method.absolute_diagonal = method.matrix.diagonal().cwiseAbs();
    if (method.kind == Kind::symmetric)
        method.symmetric.compute(method.matrix);
    else
        method.general.compute(method.matrix);
}

int LinearSolver::solve(const Vector& right, Vector& state,
                        const std::function<double(const Vector&)>& gross) {
    Method& method = *method_;
    int used = 0;
    for (int pass = 0; pass < most_passes && used <= method.iterations; ++pass) {
        const Vector residual = right - method.matrix * state;
        const double error = residual.lpNorm<1>();
        const double allowed = std::max(balance_error * gross(state),
                                        rounding * method.absolute_diagonal.dot(state.cwiseAbs()));
        if (!std::isfinite(error))
            break;
        if (error <= allowed)
            return used;
        const double tolerance = std::clamp(allowed / error / 3, 1E-12, 1E-2);
        used += method.pass(residual, tolerance, method.iterations - used + 1, state);
    }
    throw base::RangeFailure(fmt::format("the {} does not converge in {} iterations (# MXIT {})",
                                         method.what, used, method.iterations));
}

} // namespace minitervex

// Solves the systems of one time step so that the balances close.
#pragma once

#include "minitervex/preconditioners.h"

#include <Eigen/IterativeLinearSolvers>

#include <functional>
#include <memory>
#include <string>

namespace minitervex {

// Keeps a matrix with its factorisation and solves for one right-hand side after the other.
class LinearSolver {
public:
    enum class Kind { symmetric, general };

    // `what` is solved for ("head"), at most `iterations` in one call of solve.
    LinearSolver(Kind kind, std::string what, int iterations);
    ~LinearSolver();
    LinearSolver(LinearSolver&&) noexcept;
    LinearSolver& operator=(LinearSolver&&) noexcept;

    void set_matrix(Matrix matrix);

    // Improves `state` until the sum of all residuals, which is the error of the balance, is below
    // a hundred-millionth of `gross` for it (or below what rounding leaves). Returns the
    // iterations: 0 when nothing was to be done, and the state is as it was. RangeFailure when it
    // does not get there.
    int solve(const Vector& right, Vector& state,
              const std::function<double(const Vector&)>& gross);

private:
    struct Method;
    std::unique_ptr<Method> method_;
};

} // namespace minitervex

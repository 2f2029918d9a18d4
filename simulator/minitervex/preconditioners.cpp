#include "minitervex/preconditioners.h"

#include <algorithm>
#include <utility>

namespace minitervex {

void Dilu::prepare(Matrix matrix) {
    matrix_ = std::move(matrix);
    inverse_.resize(matrix_.rows());
    for (int row = 0; row < matrix_.rows(); ++row) {
        double pivot = 0;
        for (Matrix::InnerIterator entry(matrix_, row); entry; ++entry)
            pivot += entry.col() == row ? entry.value()
                     : entry.col() < row
                         ? -entry.value() * inverse_[entry.col()] * matrix.coeff(entry.col(), row)
                         : 0;
        inverse_[row] = 1 / pivot;
    }
}

Vector Dilu::apply(const Vector& right) const {
    Vector state(right.size());
    for (int row = 0; row < state.size(); ++row) {
        double sum = right[row];
        for (Matrix::InnerIterator entry(matrix_, row); entry && entry.col() < row; ++entry)
            sum -= entry.value() * state[entry.col()];
        state[row] = sum * inverse_[row];
    }
    for (auto row = static_cast<int>(state.size()) - 1; row >= 0; --row) {
        double sum = 0;
        for (Matrix::InnerIterator entry(matrix_, row); entry; ++entry)
            if (entry.col() > row)
                sum += entry.value() * state[entry.col()];
        state[row] -= sum * inverse_[row];
    }
    return state;
}

namespace {

constexpr Eigen::Index directly_solved = 1000; // rows
constexpr double weak = 0.25;                  // of a row's strongest tie
constexpr double least_reduction = 0.9;

struct Aggregation {
    std::vector<int> of; // -1: in none
    int count = 0;
};

// Pairs of rows that are tied most strongly; rows without ties stay out.
Aggregation pairs(const Matrix& matrix) {
    constexpr int open = -2;
    Aggregation result{std::vector<int>(static_cast<std::size_t>(matrix.rows()), open), 0};
    const auto place = [&](Eigen::Index row) -> int& {
        return result.of[static_cast<std::size_t>(row)];
    };
    for (int row = 0; row < matrix.rows(); ++row) {
        if (place(row) != open)
            continue;
        double strongest = 0, best = 0;
        Eigen::Index partner = -1;
        for (Matrix::InnerIterator entry(matrix, row); entry; ++entry) {
            if (entry.col() == row)
                continue;
            strongest = std::max(strongest, -entry.value());
            if (place(entry.col()) == open && -entry.value() > best) {
                best = -entry.value();
                partner = entry.col();
            }
        }
        if (strongest <= 0) {
            place(row) = -1;
            continue;
        }
        if (partner >= 0 && best >= weak * strongest)
            place(partner) = result.count;
        place(row) = result.count++;
    }
    return result;
}

// P^T A P, where column n of P is 1 in the rows of aggregate n.
Matrix galerkin(const Matrix& matrix, const Aggregation& aggregates) {
    const auto count = static_cast<std::size_t>(aggregates.count);
    std::vector<std::vector<int>> members(count);
    for (std::size_t row = 0; row < aggregates.of.size(); ++row)
        if (aggregates.of[row] >= 0)
            members[static_cast<std::size_t>(aggregates.of[row])].push_back(static_cast<int>(row));
    Matrix coarse(aggregates.count, aggregates.count);
    coarse.reserve(matrix.nonZeros() / 2);
    std::vector<std::pair<int, double>> sums;
    for (std::size_t own = 0; own < count; ++own) {
        sums.clear();
        for (const int row : members[own])
            for (Matrix::InnerIterator entry(matrix, row); entry; ++entry) {
                const int other = aggregates.of[static_cast<std::size_t>(entry.col())];
                if (other < 0)
                    continue;
                const auto at = std::ranges::find(sums, other, &std::pair<int, double>::first);
                if (at == sums.end())
                    sums.emplace_back(other, entry.value());
                else
                    at->second += entry.value();
            }
        std::ranges::sort(sums);
        coarse.startVec(static_cast<int>(own));
        for (const auto& [column, value] : sums)
            coarse.insertBack(static_cast<int>(own), column) = value;
    }
    coarse.finalize();
    return coarse;
}

// Pairs of pairs.
std::pair<Aggregation, Matrix> coarsened(const Matrix& matrix) {
    Aggregation first = pairs(matrix);
    const Matrix half = galerkin(matrix, first);
    const Aggregation second = pairs(half);
    for (int& aggregate : first.of)
        if (aggregate >= 0)
            aggregate = second.of[static_cast<std::size_t>(aggregate)];
    first.count = second.count;
    return {first, galerkin(half, second)};
}

// One sweep of Gauss-Seidel through the rows, upward or downward.
void sweep(const Matrix& matrix, const Vector& inverse_diagonal, const Vector& right, Vector& state,
           bool upward) {
    const auto rows = static_cast<int>(state.size());
    for (int n = 0; n < rows; ++n) {
        const int row = upward ? n : rows - 1 - n;
        double sum = right[row];
        for (Matrix::InnerIterator entry(matrix, row); entry; ++entry)
            sum -= entry.value() * state[entry.col()];
        state[row] += sum * inverse_diagonal[row];
    }
}

// The first upward sweep, from a state of zeros.
void first_sweep(const Matrix& matrix, const Vector& inverse_diagonal, const Vector& right,
                 Vector& state) {
    for (int row = 0; row < state.size(); ++row) {
        double sum = right[row];
        for (Matrix::InnerIterator entry(matrix, row); entry && entry.col() < row; ++entry)
            sum -= entry.value() * state[entry.col()];
        state[row] = sum * inverse_diagonal[row];
    }
}

} // namespace

void Multigrid::prepare(Matrix matrix) {
    levels_.clear();
    Matrix next = std::move(matrix);
    while (next.rows() > directly_solved) {
        auto [aggregates, coarse] = coarsened(next);
        if (aggregates.count == 0 ||
            static_cast<double>(coarse.rows()) > least_reduction * static_cast<double>(next.rows()))
            break;
        Level level;
        level.inverse_diagonal = next.diagonal().cwiseInverse();
        level.matrix = std::move(next);
        level.aggregate = std::move(aggregates.of);
        level.coarse_rows = aggregates.count;
        levels_.push_back(std::move(level));
        next = std::move(coarse);
    }
    coarsest_.compute(next);
}

Vector Multigrid::apply(const Vector& right) const {
    Vector state(right.size());
    cycle(0, right, state);
    return state;
}

void Multigrid::cycle(std::size_t number, const Vector& right, Vector& state) const {
    if (number == levels_.size()) {
        state = coarsest_.solve(right);
        return;
    }
    const Level& level = levels_[number];
    first_sweep(level.matrix, level.inverse_diagonal, right, state);
    correct(number, right, state);
    sweep(level.matrix, level.inverse_diagonal, right, state, false);
}

void Multigrid::correct(std::size_t number, const Vector& right, Vector& state) const {
    const Level& level = levels_[number];
    level.residual.noalias() = right - level.matrix * state;
    level.coarse_right.setZero(level.coarse_rows);
    level.coarse_state.resize(level.coarse_rows);
    for (std::size_t row = 0; row < level.aggregate.size(); ++row)
        if (level.aggregate[row] >= 0)
            level.coarse_right[level.aggregate[row]] +=
                level.residual[static_cast<Eigen::Index>(row)];
    cycle(number + 1, level.coarse_right, level.coarse_state);
    if (number + 1 < levels_.size()) { // the second half of a W
        const Level& below = levels_[number + 1];
        Vector again(level.coarse_rows);
        const Vector rest = level.coarse_right - below.matrix * level.coarse_state;
        cycle(number + 1, rest, again);
        level.coarse_state += again;
    }
    for (std::size_t row = 0; row < level.aggregate.size(); ++row)
        if (level.aggregate[row] >= 0)
            state[static_cast<Eigen::Index>(row)] += level.coarse_state[level.aggregate[row]];
}

} // namespace minitervex

#include "minitervex/system.h"

namespace minitervex {

namespace {

constexpr int most_entries = 7;

class Assembler {
public:
    Assembler(const Grid& grid, const Links& links, const Vector& diagonal, const Marks& fixed)
        : grid_(grid), links_(links), diagonal_(diagonal) {
        const int cells = grid.cells();
        system_.matrix.resize(cells, cells);
        system_.matrix.reserve(Eigen::Index{most_entries} * cells);
        system_.held = fixed;
    }

    System run() {
        for (int cell = 0; cell < grid_.cells(); ++cell) {
            system_.matrix.startVec(cell);
            const double sum = is_held(cell) ? 0 : row_sum(cell);
            if (sum > 0)
                put_row(cell, sum);
            else
                hold(cell);
        }
        system_.matrix.finalize();
        return std::move(system_);
    }

private:
    bool is_held(int cell) const { return system_.held[static_cast<std::size_t>(cell)] != 0; }

    double from_neighbour(int axis, int face, int sign) const {
        return links_.conductance_at(axis, face) + links_.inflow(axis, face, sign);
    }

    double row_sum(int cell) const {
        double sum = diagonal_[cell];
        each_neighbour(grid_, cell, [&](int, int, int axis, int face, int sign) {
            sum += from_neighbour(axis, face, sign);
        });
        return sum;
    }

    void put_row(int cell, double sum) {
        bool diagonal_put = false;
        each_neighbour(grid_, cell, [&](int, int neighbour, int axis, int face, int sign) {
            if (neighbour > cell && !diagonal_put) {
                system_.matrix.insertBack(cell, cell) = sum;
                diagonal_put = true;
            }
            const double given = from_neighbour(axis, face, sign);
            if (given != 0 && !is_held(neighbour))
                system_.matrix.insertBack(cell, neighbour) = -given;
        });
        if (!diagonal_put)
            system_.matrix.insertBack(cell, cell) = sum;
    }

    void hold(int cell) {
        system_.matrix.insertBack(cell, cell) = 1;
        system_.held[static_cast<std::size_t>(cell)] = 1;
    }

    const Grid& grid_;
    const Links& links_;
    const Vector& diagonal_;
    System system_;
};

} // namespace

System assemble(const Grid& grid, const Links& links, const Vector& diagonal, const Marks& fixed) {
    return Assembler(grid, links, diagonal, fixed).run();
}

void close_right_side(const Grid& grid, const Links& links, const Marks& held, const Vector& state,
                      Vector& right) {
    const auto is_held = [&](int cell) { return held[static_cast<std::size_t>(cell)] != 0; };
    for (int cell = 0; cell < grid.cells(); ++cell) {
        if (!is_held(cell))
            continue;
        right[cell] = state[cell];
        each_neighbour(grid, cell, [&](int, int neighbour, int axis, int face, int sign) {
            if (!is_held(neighbour))
                right[neighbour] += state[cell] * (links.conductance_at(axis, face) +
                                                   links.inflow(axis, face, -sign));
        });
    }
}

double net_gain(const Grid& grid, const Links& links, const Vector& state, int cell) {
    double gain = 0;
    each_neighbour(grid, cell, [&](int, int neighbour, int axis, int face, int sign) {
        gain += links.conductance_at(axis, face) * (state[neighbour] - state[cell]) +
                links.inflow(axis, face, sign) * state[neighbour] -
                links.inflow(axis, face, -sign) * state[cell];
    });
    return gain;
}

} // namespace minitervex

#include "convert/cellvalues.h"

#include <algorithm>

namespace convert {

namespace {

// One cell of a layer: its place there and its indices along the three axes, from 1.
struct Cell {
    std::size_t place;
    int index[3];
};

template <class Visit>
void for_each_cell(const results::StreamGrid& grid, int layer, Visit visit) {
    Cell cell{0, {1, 1, layer}};
    for (cell.index[1] = 1; cell.index[1] <= grid.J0; ++cell.index[1]) {
        for (cell.index[0] = 1; cell.index[0] <= grid.I0; ++cell.index[0]) {
            visit(cell);
            ++cell.place;
        }
    }
}

// The values of a block around a cell along one axis.
class Neighbours {
public:
    Neighbours(const LayerValues& layer, std::size_t axis, const results::StreamGrid& grid)
        : layer_(&layer), axis_(axis), step_(axis == 0 ? 1 : static_cast<std::size_t>(grid.I0)) {}

    float here(const Cell& cell) const { return layer_->here[cell.place]; }
    float before(const Cell& cell) const {
        return axis_ == 2 ? layer_->below[cell.place] : layer_->here[cell.place - step_];
    }
    float behind(const Cell& cell) const {
        return axis_ == 2 ? layer_->above[cell.place] : layer_->here[cell.place + step_];
    }

private:
    const LayerValues* layer_;
    std::size_t axis_, step_;
};

float centre_value(const Neighbours& velocity, const Cell& cell, int index, int count) {
    if (index == 1) {
        return velocity.here(cell);
    }
    const float before = velocity.before(cell);
    return index == count ? before : (velocity.here(cell) + before) / 2;
}

float face_slope(float difference, float size, float other_size) {
    return difference / (size / 2 + other_size / 2);
}

// Contribution of one axis.
float contribution(const Neighbours& T, const Neighbours& v, const Cell& cell, int index,
                   const std::vector<float>& sizes) {
    const auto i = static_cast<std::size_t>(index - 1);
    float lower = 0, upper = 0;
    if (i > 0) {
        lower = face_slope(T.here(cell) - T.before(cell), sizes[i], sizes[i - 1]) * v.before(cell);
    }
    if (i + 1 < sizes.size()) {
        upper = face_slope(T.behind(cell) - T.here(cell), sizes[i + 1], sizes[i]) * v.here(cell);
    }
    return (lower + upper) / 2;
}

} // namespace

LayerValues layer_of(const results::Field& field, int layer) {
    const auto cells = static_cast<std::size_t>(field.nI()) * static_cast<std::size_t>(field.nJ());
    const auto values = [&](int number) -> std::span<const float> {
        if (number < 1 || number > field.nK()) {
            return {};
        }
        return {field.row(number, 1).data(), cells};
    };
    return {values(layer - 1), values(layer), values(layer + 1)};
}

void centre_vectors(const results::StreamGrid& grid, int layer, const VelocityLayers& velocity,
                    std::span<float> components) {
    const Neighbours x(velocity.x, 0, grid), y(velocity.y, 1, grid), z(velocity.z, 2, grid);
    for_each_cell(grid, layer, [&](const Cell& cell) {
        const std::size_t first = 3 * cell.place;
        components[first] = centre_value(x, cell, cell.index[0], grid.I0);
        components[first + 1] = centre_value(y, cell, cell.index[1], grid.J0);
        components[first + 2] = centre_value(z, cell, cell.index[2], grid.K0);
    });
}

void Calculate_ugradT(const results::StreamGrid& grid, const AxisSizes& sizes, int layer,
                      const LayerValues& temperature, const VelocityLayers& velocity,
                      std::span<float> values) {
    const LayerValues* const velocities[] = {&velocity.x, &velocity.y, &velocity.z};
    std::ranges::fill(values, 0.0F);
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const Neighbours T(temperature, axis, grid), v(*velocities[axis], axis, grid);
        for_each_cell(grid, layer, [&](const Cell& cell) {
            values[cell.place] += contribution(T, v, cell, cell.index[axis], sizes[axis]);
        });
    }
}

} // namespace convert

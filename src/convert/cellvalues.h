// Values of cells that are made from several blocks, layer by layer.
//
// Cells and layers are in the order of the stream: columns fastest, then rows from the south,
// layers from the lowest. Velocities stand on the face between a cell and the next one along their
// axis.
#pragma once

#include "convert/modelgrid.h"
#include "results/field.h"

#include <span>

namespace convert {

// One layer of a block and its neighbours; those that the grid does not have are empty.
struct LayerValues {
    std::span<const float> below, here, above;
};
LayerValues layer_of(const results::Field& field, int layer);

struct VelocityLayers {
    LayerValues x, y, z;
};

// The three components at each cell centre of a layer: the mean of both faces; at the first cell
// along an axis the value of its face, at the last one that of the face before.
void centre_vectors(const results::StreamGrid& grid, int layer, const VelocityLayers& velocity,
                    std::span<float> components);

// u.grad(T) of a layer: along each axis half the sum of velocity times slope at both faces, which
// is 0 at the ends of the grid. `sizes` in metres along the simulator's axes. Single precision.
void Calculate_ugradT(const results::StreamGrid& grid, const AxisSizes& sizes, int layer,
                      const LayerValues& temperature, const VelocityLayers& velocity,
                      std::span<float> values);

} // namespace convert

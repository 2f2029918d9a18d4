#include "results/savedfield.h"

#include "core/arraystore.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace results {

StreamGrid stream_grid(const input::SimulatorGrid& grid) {
    return {grid.I0(), grid.J0(), grid.K0()};
}

void save_cells(core::ArrayStore& store, int number, const input::SimulatorGrid& grid,
                const CellsOfRow& cells) {
    core::LayerValues values(store.cells_of_layer());
    const auto columns = static_cast<std::size_t>(store.NX());
    for (int layer = 1; layer <= store.NZ(); ++layer) {
        for (int row = 1; row <= store.NY(); ++row) {
            const input::SimulatorIndex index = grid.index({1, row, layer});
            const auto first = static_cast<std::size_t>(row - 1) * columns;
            cells(index.J, index.K, std::span(values).subspan(first, columns));
        }
        store.write_array(number, 1, layer, values);
    }
}

void Save_Layers(core::ArrayStore& store, int number, const input::SimulatorGrid& grid,
                 const Field& field, bool AbsVal) {
    save_cells(store, number, grid, [&](int J, int K, std::span<float> cells) {
        std::ranges::copy(field.row(K, J), cells.begin());
        if (AbsVal) {
            std::ranges::transform(cells, cells.begin(), [](float v) { return std::abs(v); });
        }
    });
}

} // namespace results

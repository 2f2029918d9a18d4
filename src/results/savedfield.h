// Fields of the stream as parameter arrays of a model.
#pragma once

#include "results/field.h"

#include "input/simulatorgrid.h"

#include <functional>
#include <span>

namespace core {
class ArrayStore;
}

namespace results {

// The grid of the stream of a model: rows and layers change places in a cross-section.
StreamGrid stream_grid(const input::SimulatorGrid& grid);

// Gives the cells of one J and K, I from 1 along the row.
using CellsOfRow = std::function<void(int J, int K, std::span<float> cells)>;

// Writes period 1 of array `number` of the worksheet, layer by layer, from cells under simulator
// indices; rows and layers are turned round for a horizontal model (Save_Layers) and for a
// cross-section (Save_CrossSections). FileFailure when the file cannot be written.
void save_cells(core::ArrayStore& store, int number, const input::SimulatorGrid& grid,
                const CellsOfRow& cells);
// The same from a field in the order of the stream; `AbsVal`: without the signs.
void Save_Layers(core::ArrayStore& store, int number, const input::SimulatorGrid& grid,
                 const Field& field, bool AbsVal);

} // namespace results

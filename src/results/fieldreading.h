// One parameter of a result file over the whole grid, as the viewer, the worksheet or the simulator
// has it.
#pragma once

#include "input/simulatorgrid.h"
#include "results/field.h"
#include "results/parameters.h"

#include <optional>

namespace results {

// Which cell is layer 1, row 1 of a field that was read.
enum class CellOrder {
    viewer,    // layers as on the worksheet, rows from the south
    worksheet, // layers and rows as on the worksheet, also in a cross-section
    stream,    // the simulator's J and K
};

enum class Values {
    converted, // in the units of the viewer
    stored,
};

class ParameterField {
public:
    // `field` in the order of the viewer or, with `grid`, of the stream: cells are then those of
    // the worksheet of `grid`.
    explicit ParameterField(Field field, std::optional<input::SimulatorGrid> grid = std::nullopt);

    int layers() const { return layers_; }
    int rows() const { return rows_; }
    int columns() const { return field_.nI(); }
    // Indices from 1.
    float at(int layer, int row, int column) const;
    // The field as it was read.
    const Field& field() const { return field_; }

private:
    Field field_;
    std::optional<input::SimulatorGrid> grid_;
    int layers_, rows_;
};

// The grid of a stream as a worksheet: in a cross-section the worksheet's layers are the
// simulator's J and its rows the simulator's K.
input::SimulatorGrid simulator_grid(const StreamGrid& grid, int GridOrientation);

// Both messages of a search for what is not there, for a parameter that names no key line at all.
void tell_missing(std::string_view word, base::Interaction& user);

// Finds the block of `parameter` from the beginning and reads it. Nothing, with the messages of the
// search, when it is not there. FileFailure for a block that is cut off, a bad repeat count, and
// the pH of a concentration that is not positive.
std::optional<ParameterField> read_parameter(StreamReader& stream, const StreamGrid& grid,
                                             const Parameter& parameter, CellOrder order,
                                             Values values, int GridOrientation,
                                             base::Interaction& user);

} // namespace results

// The values of a slot of the result cache, turned from and into the order of a field.
#pragma once

#include "core/randomfile.h"
#include "results/field.h"

namespace convert {

// Writes `field`, which is in the viewer's order, from byte `start` on with the layer fastest, then
// the row, then the column.
void write_slot(const results::Field& field, std::uint64_t start, core::RandomFile& cache);

// Reads what write_slot wrote, in the viewer's order or, with the layers counted from below, in the
// stream's. Shows the meter.
results::Field read_slot_at(std::uint64_t start, const core::RandomFile& cache,
                            const results::StreamGrid& grid, results::FieldOrder order,
                            base::Interaction& user);

} // namespace convert

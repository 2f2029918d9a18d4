// Blocks of the grid: unconfined layers and the sizes of cells.
#pragma once

#include "grid/griddefinition.h"

#include <span>

namespace input {

class Creation;

// The model's layer file; FileFailure when it does not describe every layer.
grid::LayerFile layers_of_model(const Creation& creation);
// The model's columns and rows; FileFailure when they are not those of the project.
grid::GridFile grid_of_model(const Creation& creation);

// |sum of top - bottom| / cells [m] of one layer of `NX` columns, added up in single precision in
// the order of the stream: rows from the last one.
float mean_thickness(std::span<const float> top, std::span<const float> bottom, int NX);

// NFREE and KFREE: the unconfined layers of a horizontal model.
void K_N_FREE(Creation& creation);

void DELX(Creation& creation);
// One value a row of a horizontal model, a section of a cross-section.
void DELY(Creation& creation);
// One value a layer of a horizontal model, a row of a cross-section.
void DELZ(Creation& creation);

} // namespace input

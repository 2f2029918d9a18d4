// Models of the predecessor package: the conversion of their hydraulic conductivity.
#pragma once

#include "app/workspace.h"
#include "base/interaction.h"

namespace app {

// For a .bd5 model with neither permeability nor Property Zones: asks whether to convert, and runs
// BD2TD on Yes. False: the question was not answered.
bool offer_conversion(Workspace& workspace, base::Interaction& user);

// Permeability (.per) for water of 10 degrees Celsius from the vertical hydraulic conductivity
// (array 9, m/s), period 1. At most 15 different values also give the Property Zones (.mds),
// numbered in the order of their first cell, and the zones' permeabilities in the rock file. Marks
// permeability and Property Zones as defined. False, and nothing changed, when the model has no
// array 9; FileFailure when its file is shorter than the grid.
bool BD2TD(Workspace& workspace);

} // namespace app

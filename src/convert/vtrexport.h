// Fields of a result file as one binary VTK file at the true edges of the cells.
#pragma once

#include "convert/vtkexport.h"

namespace convert {

// Writes <base>.vtr with the chosen fields that the file holds, wherever they stand, as cell data
// under the names of the text files. x runs east, y north and z upward, each from the edge of the
// grid [m]; in a cross-section y runs across the sections, from the first one. Cells are in the
// order of the stream. Values are those of the file: without sign for pressure, porosity and
// permeability, the pH for the hydrogen ion, velocities at the cell centres. A few layers are held
// in memory. Refused as export_vtk; after a FileFailure the old file is there.
std::optional<base::Refusal> export_vtr(const Source& source, const VtkOptions& options,
                                        const Written& written);

} // namespace convert

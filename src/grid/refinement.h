// Grid refinement: columns, rows and layers divided into equal parts, with everything that a model
// keeps by cells or layers.
//
// Values are copied, not divided: each new layer has the tops, bottoms and well rates of the one
// that it was cut from. Only the thicknesses of the layer file are divided.
#pragma once

#include "base/interaction.h"
#include "core/refinedfiles.h"

#include <optional>
#include <string>

namespace core {
class ModelFiles;
class Project;
} // namespace core

namespace grid {

struct GridFile;

inline constexpr int max_refinement = 10;        // of one column, row or layer
inline constexpr int max_refined_cells = 250000; // of one layer
inline constexpr int max_refined_layers = 80;

// Factors of 1 for the grid.
core::Division no_division(const GridFile& grid, int layers);
bool divides(const core::Division& division);

// Why the grid cannot be refined so far.
std::optional<base::Refusal> refinement_refusal(const core::Division& division);
inline constexpr const char* refinement_title = "Warning";
std::string refinement_question(const core::Division& division);

// The middle one of the new layers that an old layer (from 1) becomes.
int middle_of_layer(int layer, const std::vector<int>& factors);

// Refuses, asks (both left out without `showPanel`), and rewrites layers, monitoring points, grid,
// project and every array and zone file of the model. With factors of 1 nothing is done. False when
// it was refused, declined or stopped: then the caller must not commit. FileFailure for a damaged
// file.
bool Do_Grid_Refinement(const core::Division& division, core::Project& project,
                        core::ModelFiles& files, base::Interaction& user, bool showPanel = true);

} // namespace grid

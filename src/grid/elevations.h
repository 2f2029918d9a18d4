// Tops of layers taken from the bottoms of those above them, and the reverse.
#pragma once

#include "base/interaction.h"

namespace core {
class ArrayStore;
class Project;
} // namespace core

namespace grid {

enum class TakeOver { not_asked, yes, no, cancel };

// Asks, when the worksheet opens on tops (bottoms) of layers that are not defined yet in a model of
// several layers, whether they are to be taken from the bottoms (tops), which are.
TakeOver ask_take_over(int number, const core::Project& project, base::Interaction& user);

// Bottom of layer L becomes top of layer L + 1 (3), or top of layer L bottom of layer L - 1 (4), in
// one period. The first top and the last bottom stay. Ends early when the user wants to stop.
void take_over_elevations(int number, int period, core::ArrayStore& store, base::Interaction& user);

} // namespace grid

// VTK files and formulas.

#include "td/command.h"

namespace td {

std::span<const Command> vtk_commands() {
    return {};
}

} // namespace td

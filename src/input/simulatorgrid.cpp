#include "input/simulatorgrid.h"

#include "core/modelflags.h"
#include "core/project.h"

namespace input {

SimulatorGrid::SimulatorGrid(int NX, int NY, int NZ, int GridOrientation)
    : NX_(NX), NY_(NY), NZ_(NZ), horizontal_(GridOrientation == core::horizontal) {}

SimulatorGrid::SimulatorGrid(const core::Project& project)
    : SimulatorGrid(project.NX(), project.NY(), project.NZ(), project.flags.GridOrientation()) {}

SimulatorIndex SimulatorGrid::index(const WorksheetCell& cell) const {
    if (horizontal_) {
        return {cell.column, NY_ + 1 - cell.row, NZ_ + 1 - cell.layer};
    }
    return {cell.column, cell.layer, NY_ + 1 - cell.row};
}

WorksheetCell SimulatorGrid::cell(const SimulatorIndex& index) const {
    if (horizontal_) {
        return {index.I, NY_ + 1 - index.J, NZ_ + 1 - index.K};
    }
    return {index.I, NY_ + 1 - index.K, index.J};
}

std::int64_t SimulatorGrid::place(const SimulatorIndex& index) const {
    return (std::int64_t{index.K - 1} * J0() + (index.J - 1)) * I0() + (index.I - 1);
}

} // namespace input

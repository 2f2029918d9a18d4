// The simulator's view of the grid: which of its cells is which cell of the worksheet.
//
// The simulator numbers from the far end of the worksheet: in a horizontal model J counts rows from
// the last one and K counts layers from the lowest one. In a cross-section the worksheet's rows are
// the depth axis, so K counts rows from the bottom one, and J counts the sections. This is the only
// place where the two differ: every array of the input file is one walk with I fastest, then J,
// then K.
#pragma once

#include <cstdint>

namespace core {
class Project;
}

namespace input {

// Indices from 1 throughout.
struct SimulatorIndex {
    int I = 1, J = 1, K = 1;
    bool operator==(const SimulatorIndex&) const = default;
};

struct WorksheetCell {
    int column = 1, row = 1, layer = 1;
    bool operator==(const WorksheetCell&) const = default;
};

class SimulatorGrid {
public:
    // `GridOrientation` 0 is horizontal, everything else a cross-section.
    SimulatorGrid(int NX, int NY, int NZ, int GridOrientation);
    explicit SimulatorGrid(const core::Project& project);

    bool horizontal() const { return horizontal_; }
    int I0() const { return NX_; }
    int J0() const { return horizontal_ ? NY_ : NZ_; }
    int K0() const { return horizontal_ ? NZ_ : NY_; }
    std::int64_t N() const { return std::int64_t{NX_} * NY_ * NZ_; }

    SimulatorIndex index(const WorksheetCell& cell) const;
    WorksheetCell cell(const SimulatorIndex& index) const;
    // Place of a cell in the walk, from 0.
    std::int64_t place(const SimulatorIndex& index) const;

private:
    int NX_, NY_, NZ_;
    bool horizontal_;
};

} // namespace input

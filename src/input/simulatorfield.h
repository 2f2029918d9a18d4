// Parameter arrays in the order of the simulator's walk.
#pragma once

#include "core/arraystore.h"
#include "input/simulatorgrid.h"

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

namespace core {
class ModelFiles;
class Project;
} // namespace core

namespace input {

class Runs;
class SimulatorField;

// A parameter of the input file, and the cell of ModelFlags that says that its array was defined
// (-1: there is none, or several arrays share it, so that one of them may be missing).
struct ArrayItem {
    int number;
    int flag_row = -1, flag_column = -1;
};

namespace arrays {
inline constexpr ArrayItem top{3, 6, 5}, bot{4, 6, 6}, ibd{5, 1, 7}, por{6, 2, 2}, hea{10, 2, 8},
    wel{11, 3, 2}, tic{40, 11, 2}, well_temperature{299}, per{1401, 2, 1}, tem{1402, 2, 0},
    mds{1403, 2, 11}, hbo{1405, 2, 7}, itr{1406, 2, 13}, qre{1407, 2, 14}, vx{1408, 3, 0},
    vy{1409, 3, 0}, vz{1410, 3, 0}, qvh{1432}, qrl{1433}, ice{1434, 4, 0}, sol{1435, 4, 7},
    liq{1436, 4, 6}, qba{1437, 10, 9};
// .tc1 to .tc5
constexpr ArrayItem tracer(int number) {
    return {1440 + number};
}
} // namespace arrays

// The arrays of one model under simulator indices.
class ModelArrays {
public:
    ModelArrays(core::ModelFiles& files, const core::Project& project);

    const SimulatorGrid& grid() const { return grid_; }
    const core::ArrayStore& store() const { return store_; }

    bool exists(const ArrayItem& item) const { return store_.exists(item.number); }
    bool is_defined(const ArrayItem& item) const;
    // Whether there is something to read: false for a missing array that counts as its default.
    // FileFailure when the array was defined although its file is gone.
    bool has(const ArrayItem& item) const;

    // Hands every row of cells of a stored period to `visit`, with the J and K that its cells
    // share; I runs from 1 along the row. Nothing is visited when the period has no record.
    // FileFailure when the file is missing or cut off.
    using VisitRow = std::function<void(std::span<const float> row, int J, int K)>;
    void visit_rows(const ArrayItem& item, int period, const VisitRow& visit) const;

    // Period 1 of an array, or its default in every cell.
    SimulatorField read(const ArrayItem& item) const;
    // One worksheet layer of it, as the worksheet has it: column fastest, then row. FileFailure
    // when there is no file.
    std::vector<float> read_layer(const ArrayItem& item, int layer) const;

private:
    [[noreturn]] void fail(const ArrayItem& item, const std::string& what) const;
    void require_layer(const ArrayItem& item) const;

    core::ModelFiles* files_;
    const core::Project* project_;
    core::ArrayStore store_;
    SimulatorGrid grid_;
};

// One parameter over the whole grid. A field that is the same in every cell needs no memory,
// however large the grid.
class SimulatorField {
public:
    SimulatorField(const SimulatorGrid& grid, float everywhere)
        : grid_(grid), everywhere_(everywhere) {}

    const SimulatorGrid& grid() const { return grid_; }
    float at(int I, int J, int K) const;
    // The cells of one J and K, to be changed.
    std::span<float> row(int J, int K);

    // Gives the value a minus sign wherever the boundary array holds exactly -1: a fixed head,
    // temperature or concentration. Zero stays zero.
    void Constant_Parameter(const ModelArrays& arrays, const ArrayItem& boundary);

    // All cells in the order of the walk.
    void add_to(Runs& runs) const;

private:
    SimulatorGrid grid_;
    float everywhere_;
    std::vector<float> values_; // empty while the field is the same everywhere
};

} // namespace input

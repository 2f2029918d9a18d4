// The table of 15 by 15 small integers that remembers what has been defined in a model.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace core {

enum GridOrientationValue : int {
    horizontal = 0,
    vertical = 1,
    cylindrical = 2,
    heat_exchanger = 3
};

class ModelFlags {
public:
    static constexpr int size = 15;
    static constexpr int defined = 2; // of a cell that tracks an item; switches hold 0 or 1

    // Indices from 0; outside 0 to 14 is a RangeFailure.
    int operator()(int a, int b) const { return cells_[index(a, b)]; }
    // Values beyond 16 bits are clamped.
    void set(int a, int b, int value);
    bool is_defined(int a, int b) const { return (*this)(a, b) == defined; }
    void mark_defined(int a, int b) { set(a, b, defined); }
    void mark_edited() { set(0, 1, 1); }

    bool layers_by_thickness() const { return (*this)(0, 0) == 1; }
    int GridOrientation() const { return (*this)(1, 4); }
    int FlowPrescribed() const { return (*this)(3, 1); }
    int SolverControlFlow() const { return (*this)(8, 4); }
    int SolverControlHeat() const { return (*this)(8, 5); }
    int SolverControlTransport() const { return (*this)(8, 6); }
    int FlowActive() const { return (*this)(9, 4); }
    int HeatActive() const { return (*this)(9, 5); }
    int TransportActive() const { return (*this)(9, 6); }
    int ChemistryMode() const { return (*this)(9, 7); }
    int ActivityModel() const { return (*this)(9, 12); }
    int Permafrost() const { return (*this)(10, 5); }

private:
    static std::size_t index(int a, int b);
    std::array<std::int16_t, size * size> cells_{};
};

} // namespace core

// What is computed: everything of the input that has an influence on the result, in SI units and
// per cell.
#pragma once

#include "minitervex/grid.h"

#include <string>
#include <vector>

namespace minitervex {

using Marks = std::vector<char>; // one per cell, 0 or 1

// Constant properties of the water.
struct Water {
    double density = 998;        // kg/m3
    double gravity = 9.80665;    // m/s2
    double viscosity = 8.9E-4;   // Pa s
    double compressibility = 0;  // 1/Pa
    double heat_capacity = 4179; // J/(kg K)
    double conductivity = 0.61;  // W/(m K)
};

struct Well {
    int cell = 0;
    double rate = 0;        // m3/s, positive: injection
    double temperature = 0; // of injected water, degrees C
    std::vector<double> concentrations;
};

struct Period {
    double end = 0;  // s
    double step = 0; // s
    int steps = 1;
    int monitoring_every = 1; // steps; 0: only at the end of the period
    std::vector<Well> wells;
};

struct MonitoringPoint {
    int rank = 1; // among the active points, from 1
    int cell = 0;
};

struct FlowInput {
    bool active = false;
    bool prescribed = false; // from `velocity`
    bool steady = false;
    Vector permeability; // vertical, m2
    Vector anisotropy_x, anisotropy_y;
    Vector storage;     // specific storage, 1/m
    Vector recharge;    // into the cell, m3/s
    Faces outer_inflow; // of it, m/s through the upper outer face; in the last cells only
    Vector head;        // m
    Marks fixed;
    Faces velocity; // m/s
};

struct HeatInput {
    bool active = false;
    Vector capacity;     // of rock and water, J/(m3 K)
    Vector conductivity; // of rock and water, vertical, W/(m K)
    Vector anisotropy_x, anisotropy_y;
    Vector source;      // production and heat flow from outside, W
    Vector temperature; // degrees C
    Marks fixed;
};

struct TracerInput {
    bool active = false;
    double diffusion = 0;                    // molecular, m2/s
    double longitudinal = 0, transverse = 0; // dispersivities, m
    std::vector<Vector> concentrations;      // mmol/L
    Marks fixed;
};

struct Model {
    Grid grid;
    Water water;
    Vector porosity;
    FlowInput flow;
    HeatInput heat;
    TracerInput tracers;
    int substances = 0; // # ANZSUBS: columns of monitoring files
    std::vector<Period> periods;
    std::vector<MonitoringPoint> points;
    int iterations = 20000; // at most, per system of equations
    bool tells_progress = true;
    std::vector<std::string> notes; // what is computed in another way than the input asks for

    // Hydraulic conductivity for a permeability of 1 m2.
    double conductivity_factor() const { return water.density * water.gravity / water.viscosity; }
};

} // namespace minitervex

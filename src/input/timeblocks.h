// Blocks of time: periods, time steps and Monitoring Points.
#pragma once

#include "sim/periods.h"

#include <array>
#include <vector>

namespace input {

class Creation;

// Number of places of every vector by periods or points.
inline constexpr int vector_size = 100;

// The periods as the simulator counts them: the active rows of the table, moved together.
struct ActivePeriods {
    int unit = 0;
    std::vector<sim::Period> periods;
    // Row of the table (from 1) that each of them has; their arrays are stored under it.
    std::vector<int> rows;
    // Monitoring frequencies of all rows: a row that moved forward leaves 0 behind, a row that is
    // not active keeps its number unless another row moves onto it.
    std::array<float, vector_size> monitoring_frequencies{};

    explicit ActivePeriods(const sim::PeriodTable& table);
};

void NPER(Creation& creation);
// DELTATMP, TMAXAR and DELTAR. Ends the creation when the time unit is undefined.
void Time_Parameter(Creation& creation);
// PMONIX, PMONIY and PMONIZ: the cells of the active Monitoring Points.
void Monitoring(Creation& creation);
void PMONIFR(Creation& creation);

} // namespace input

#include "benches.h"

#include "grid/griddefinition.h"
#include "grid/zones.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <numbers>
#include <random>

namespace bench {

namespace {

constexpr int side = 1000; // cells of 1 m

// Stars of 40 nodes all over the grid, up to 300 m in radius.
std::vector<core::Zone> stars() {
    std::mt19937 random(3);
    std::uniform_real_distribution<float> middle(310, 690), radius(100, 300);
    std::vector<core::Zone> zones(core::max_zones);
    for (core::Zone& zone : zones) {
        const float x = middle(random), y = middle(random);
        zone.value = x;
        for (std::size_t node = 1; node <= core::Zone::max_nodes; ++node) {
            const float angle = 2 * std::numbers::pi_v<float> * static_cast<float>(node) /
                                static_cast<float>(core::Zone::max_nodes);
            const float far = radius(random);
            zone.x[node] = x + far * std::cos(angle);
            zone.y[node] = y + far * std::sin(angle);
        }
        zone.nodes = core::Zone::max_nodes;
        core::Close_Zone(zone);
    }
    return zones;
}

grid::CellCoordinates metre_cells() {
    return grid::Build_Cell_Coordinates(
        {side, side, 1, std::vector<float>(side, 1), std::vector<float>(side, 1)});
}

void transfer(benchmark::State& state) {
    const std::vector<core::Zone> zones = stars();
    const grid::CellCoordinates cells = metre_cells();
    std::vector<core::LayerValues> layer(1, core::LayerValues(std::size_t{side} * side));
    for ([[maybe_unused]] auto _ : state) {
        for (const core::Zone& zone : zones) {
            benchmark::DoNotOptimize(grid::transfer_zone(zone, cells, layer));
        }
    }
}

// Crossings of the ray from x, y to the right with all edges.
int crossings(const core::Zone& zone, double x, double y) {
    int count = 0;
    for (std::size_t node = 1; node <= core::Zone::max_nodes; ++node) {
        const double ax = zone.x[node], ay = zone.y[node];
        const double bx = zone.x[node + 1], by = zone.y[node + 1];
        const double turn = (bx - ax) * (y - ay) - (by - ay) * (x - ax);
        count += (ay < y) != (by < y) && (ay < by ? turn >= 0 : turn <= 0) ? 1 : 0;
    }
    return count;
}

// The cells inside the box of each zone only.
void crossing_tests(benchmark::State& state) {
    const std::vector<core::Zone> zones = stars();
    core::LayerValues layer(std::size_t{side} * side);
    for ([[maybe_unused]] auto _ : state) {
        for (const core::Zone& zone : zones) {
            const auto first = [](float edge) { return static_cast<int>(std::ceil(edge - 0.5F)); };
            for (int row = first(zone.param[13]); row + 0.5 <= zone.param[15]; ++row) {
                for (int column = first(zone.param[12]); column + 0.5 <= zone.param[14]; ++column) {
                    if (crossings(zone, column + 0.5, row + 0.5) % 2 == 1) {
                        layer[static_cast<std::size_t>(row * side + column)] = zone.value;
                    }
                }
            }
        }
        benchmark::DoNotOptimize(layer.data());
    }
}

} // namespace

void add_zones() {
    benchmark::RegisterBenchmark("zones transfer", transfer);
    benchmark::RegisterBenchmark("zones crossing tests", crossing_tests);
}

} // namespace bench

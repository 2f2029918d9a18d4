#include "benches.h"

#include "plot/contours.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>
#include <numeric>
#include <vector>

namespace bench {

namespace {

constexpr int side = 1000, level_count = 20;

// Some hills, as a simulator leaves them.
struct Hills {
    std::vector<float> values;
    std::vector<std::uint8_t> holes;
    std::vector<double> centres;

    Hills() : holes(std::size_t{side} * side), centres(side) {
        std::iota(centres.begin(), centres.end(), 0.5);
        for (int j = 0; j < side; ++j) {
            for (int i = 0; i < side; ++i) {
                values.push_back(static_cast<float>(std::sin(i * 0.013) * std::cos(j * 0.017) +
                                                    0.3 * std::sin((i + j) * 0.031)));
            }
        }
    }
    static float level(int n) { return -1.2F + 0.12F * static_cast<float>(n); }
};

std::size_t contour(const Hills& hills) {
    plot::Isoline2 isolines({side, side, hills.values, hills.centres, hills.centres}, hills.holes);
    std::size_t points = 0;
    for (int n = 0; n < level_count; ++n) {
        for (const plot::ContourLine& line : isolines.trace(Hills::level(n))) {
            points += line.points.size();
        }
    }
    return points;
}

// The least that looks at each value once for each level.
std::size_t pass(const Hills& hills) {
    std::size_t above = 0;
    for (int n = 0; n < level_count; ++n) {
        const float level = Hills::level(n);
        for (const float value : hills.values) {
            above += value > level ? 1 : 0;
        }
        benchmark::DoNotOptimize(above);
    }
    return above;
}

} // namespace

void add_contours() {
    const auto hills = std::make_shared<const Hills>();
    const auto add = [&](const char* name, auto work) {
        benchmark::RegisterBenchmark(name, [hills, work](benchmark::State& state) {
            for ([[maybe_unused]] auto _ : state) {
                benchmark::DoNotOptimize(work(*hills));
            }
        });
    };
    add("contours", contour);
    add("contour pass", pass);
}

} // namespace bench

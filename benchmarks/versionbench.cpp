#include "benches.h"
#include "childprocess.h"

#include <benchmark/benchmark.h>

namespace bench {

void add_version() {
    benchmark::RegisterBenchmark("version", [](benchmark::State& state) {
        double used = 0;
        for ([[maybe_unused]] auto _ : state) {
            used += run_child(TD_PROGRAM, {"--version"}).cpu_seconds;
        }
        state.counters["cost"] = benchmark::Counter(used, benchmark::Counter::kAvgIterations);
    });
}

} // namespace bench

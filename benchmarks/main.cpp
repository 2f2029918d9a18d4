// Measures the figures of speed and memory and prints them in one table. Options are those of
// Google Benchmark, such as --benchmark_filter=read.
#include "benches.h"
#ifdef TD_DESK
#include "deskparts.h"
#endif
#include "figures.h"
#include "models.h"

#include <cstdio>
#include <exception>
#include <string>
#include <vector>

namespace {

// Repetitions of all benchmarks in a random order, so that a load on the machine that comes and
// goes meets them all.
std::vector<char*> with_defaults(int argc, char** argv, std::vector<std::string>& defaults) {
    std::vector<char*> words{argv[0]};
    for (std::string& option : defaults) {
        words.push_back(option.data());
    }
    words.insert(words.end(), argv + 1, argv + argc);
    return words;
}

bool run(int argc, char** argv) {
    std::vector<std::string> defaults{"--benchmark_enable_random_interleaving=true",
                                      "--benchmark_repetitions=7", "--benchmark_min_time=0.05"};
    std::vector<char*> words = with_defaults(argc, argv, defaults);
    int count = static_cast<int>(words.size());
    benchmark::Initialize(&count, words.data());
    if (benchmark::ReportUnrecognizedArguments(count, words.data())) {
        return false;
    }

    const bench::ScratchFolder folder;
    bench::CubeModel large(folder.path() / "large", 200), small(folder.path() / "small", 100);
    bench::add_writing(large);
    bench::add_layer_reading(folder.path());
    bench::add_check(small);
    bench::add_numbers();
    bench::add_streams(folder.path());
    bench::add_cache(folder.path());
    bench::add_import(folder.path());
    bench::add_vtk(folder.path());
    bench::add_contours();
    bench::add_sessions(folder.path());
    bench::add_zones();
    bench::add_version();
#ifdef TD_DESK
    const auto application = bench::screenless_application();
    bench::add_desk(folder.path());
    bench::add_painting();
#endif
    bench::Costs costs;
    bench::CostReporter reporter(costs);
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return bench::print_figures(costs);
}

} // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv) ? 0 : 1;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "bench: %s\n", failure.what());
        return 2;
    }
}

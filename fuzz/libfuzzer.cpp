// The driver of one target; the build names it.
#include "targets.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace {

double cpu_seconds() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

} // namespace

// An input may cost a second. That is CPU time: on a busy machine the clock on the wall says
// little.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const double begin = cpu_seconds();
    fuzz::run(TD_FUZZ_TARGET, {reinterpret_cast<const char*>(data), size});
    const double taken = cpu_seconds() - begin;
    if (taken > 1) {
        std::fprintf(stderr, "slow: %.2f s of CPU time\n", taken);
        std::abort();
    }
    return 0;
}

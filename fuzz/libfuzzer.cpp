// The driver of one target; the build names it.
#include "targets.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::run(TD_FUZZ_TARGET, {reinterpret_cast<const char*>(data), size});
    return 0;
}

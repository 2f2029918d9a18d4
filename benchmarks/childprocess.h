// Programs run to their end, and what they took.
#pragma once

#include <string>
#include <vector>

namespace bench {

struct Usage {
    double cpu_seconds = 0;
    double peak_bytes = 0;
};

// Runs `program` with its output dropped. Throws when it does not end with status 0.
Usage run_child(const std::string& program, std::vector<std::string> arguments);

} // namespace bench

// What went into the model, what left it and what stayed.
#pragma once

#include <algorithm>
#include <cmath>
#include <string>

namespace minitervex {

struct Balance {
    std::string name; // "water"
    std::string unit; // "m3"
    double in = 0, out = 0, stored = 0;

    // Adds an amount to what came in or, below 0, to what went out.
    void exchange(double amount) {
        in += std::max(amount, 0.0);
        out += std::max(-amount, 0.0);
    }
    double error() const { return in - out - stored; }
    // The error as a part of what came in (of what went through or stayed, where nothing came in).
    double relative_error() const {
        const double through = in > 0 ? in : std::max(out, std::abs(stored));
        return through > 0 ? error() / through : 0;
    }
};

} // namespace minitervex

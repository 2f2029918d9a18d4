// What the targets find out: expected failures, broken promises.
#pragma once

#include "base/failure.h"
#include "td/command.h"

#include <stdexcept>
#include <string>
#include <string_view>

namespace fuzz {

// The program broke a promise. Nothing catches it below the driver.
class Finding : public std::logic_error {
public:
    using std::logic_error::logic_error;
};

inline void require(bool holds, const char* promise) {
    if (!holds) {
        throw Finding(promise);
    }
}

// True when `step` ends, false when it fails in one of the expected ways.
template <typename Step>
bool succeeds(Step step) {
    try {
        step();
        return true;
    } catch (const base::FileFailure&) {
    } catch (const base::RangeFailure&) {
    } catch (const td::UsageError&) {
    }
    return false;
}

// `rewritten` reads a file and writes it again. What the program has written itself, it reads
// without a failure and writes in the same bytes.
template <typename Rewrite>
void require_stable(std::string_view bytes, Rewrite rewritten) {
    const std::string once = rewritten(bytes);
    std::string twice;
    require(succeeds([&] { twice = rewritten(once); }), "a written file cannot be read");
    require(once == twice, "a written file is written in other bytes");
}

} // namespace fuzz

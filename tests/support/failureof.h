// What a step that fails says; empty when it does not fail.
#pragma once

#include "base/failure.h"

#include <string>

namespace support {

template <typename Step>
std::string failure_of(Step step) {
    try {
        step();
    } catch (const base::FileFailure& failure) {
        return failure.what();
    }
    return "";
}

} // namespace support

// What a step that fails says.
#pragma once

#include "base/failure.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace support {

// Empty when the step does not fail. With `file`, the failure has to be one of that file.
template <typename Step>
std::string failure_of(Step step, const std::filesystem::path& file = {}) {
    try {
        step();
    } catch (const base::FileFailure& failure) {
        EXPECT_TRUE(file.empty() || failure.file() == file) << failure.file();
        return failure.what();
    } catch (const base::RangeFailure& failure) {
        return failure.what();
    }
    return "";
}

} // namespace support

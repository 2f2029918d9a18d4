// A model folder with binary files, and the entries of their tables.
#pragma once

#include "base/binaryio.h"
#include "base/failure.h"
#include "base/textfile.h"
#include "core/arraystore.h"
#include "core/modelfiles.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

inline void set_int16(std::string& bytes, std::size_t offset, int value) {
    base::ByteWriter entry;
    entry.int16(static_cast<std::int16_t>(value));
    bytes.replace(offset, 2, entry.data());
}

inline std::string singles(const std::vector<float>& values) {
    std::string bytes(4 * values.size(), '\0');
    base::singles_to_bytes(values, bytes);
    return bytes;
}

// "<message> (<file name>)", or "nothing" when `step` does not fail.
template <typename Step>
std::string file_failure(Step step) {
    try {
        step();
    } catch (const base::FileFailure& failure) {
        return failure.what() + (" (" + failure.file().filename().string() + ")");
    }
    return "nothing";
}

class ArrayModel : public testing::Test {
protected:
    // Bytes of a file as they will be after the command.
    std::string stored(const std::string& name) const {
        const auto place = files.find_file(folder.path() / name);
        return place ? base::read_bytes(*place) : "missing";
    }

    support::TempFolder folder;
    core::ModelFiles files{folder.path() / "m.td1", core::Access::write};
};

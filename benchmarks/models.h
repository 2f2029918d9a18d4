// Models in a folder of their own, made as a user would make them, with arrays of noise.
#pragma once

#include "app/workspace.h"

#include <filesystem>
#include <string>
#include <vector>

namespace bench {

// Gone with all that is in it when the object ends.
class ScratchFolder {
public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

// Singles between `low` and `high`, evenly spread over its decades when `by_decades`; the same ones
// on every call.
struct Noise {
    float low, high;
    bool by_decades = false;

    std::vector<float> values(std::size_t count) const;
};
inline constexpr Noise permeabilities{1E-18F, 1E-11F, true};
inline constexpr Noise temperatures{8, 140};

// Runs a command of `td`; throws when it fails.
void td(const std::vector<std::string>& words);

// A model with flow, heat, permafrost and a tracer on `side` columns, rows and layers. It is made
// when it is first asked for, and passes the check.
class CubeModel {
public:
    CubeModel(std::filesystem::path folder, int side) : folder_(std::move(folder)), side_(side) {}

    // Its project file.
    std::filesystem::path file();

private:
    std::filesystem::path folder_;
    int side_;
};

// The arrays that the check of such a model reads.
inline constexpr int checked_arrays[] = {1403, 5, 6, 1401, 1405, 1434, 1406, 40};

app::Workspace open(const std::filesystem::path& model, core::Access access);

} // namespace bench

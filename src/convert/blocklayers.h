// A block of a result file, layer by layer, so that no whole field is in memory.
#pragma once

#include "convert/cellvalues.h"
#include "results/streamreader.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace convert {

class BlockLayers {
public:
    // `position` is behind the block's key line `what`. The file is opened once more.
    BlockLayers(const std::filesystem::path& file, std::uint64_t position,
                const results::StreamGrid& grid, const std::string& what);
    BlockLayers(const BlockLayers&) = delete;
    BlockLayers& operator=(const BlockLayers&) = delete;

    // The next layer, the lowest one first, with those below and above it. Holds until the next
    // call. FileFailure as BlockReader.
    LayerValues next();

private:
    void read_into(std::vector<float>& values);

    results::StreamReader stream_;
    results::BlockReader block_;
    std::size_t cells_;
    int count_, layer_ = 0, read_ = 0;
    std::array<std::vector<float>, 3> layers_; // below, here, above
};

} // namespace convert

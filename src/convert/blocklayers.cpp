#include "convert/blocklayers.h"

#include <algorithm>

namespace convert {

namespace {
// A file that holds the values one by one has at least two bytes for each.
constexpr std::uint64_t cells_a_byte = 16;
} // namespace

BlockLayers::BlockLayers(const std::filesystem::path& file, std::uint64_t position,
                         const results::StreamGrid& grid, const std::string& what)
    : stream_(file), block_(stream_, results::RepeatCount::rounded_32, what, false),
      cells_(static_cast<std::size_t>(grid.I0) * static_cast<std::size_t>(grid.J0)),
      count_(grid.K0) {
    stream_.go_to(position);
    // Memory only for values that are there.
    if (grid.cells() / cells_a_byte > stream_.size()) {
        results::BlockReader(stream_, results::RepeatCount::rounded_32, what, false)
            .skip(grid.cells());
        stream_.go_to(position);
    }
}

void BlockLayers::read_into(std::vector<float>& values) {
    if (read_ == count_) {
        values.clear();
        return;
    }
    values.resize(cells_);
    block_.read(values);
    if (++read_ == count_) {
        stream_.require_unchanged();
    }
}

LayerValues BlockLayers::next() {
    if (layer_++ == 0) {
        read_into(layers_[2]);
    }
    std::rotate(layers_.begin(), layers_.begin() + 1, layers_.end());
    read_into(layers_[2]);
    return {layers_[0], layers_[1], layers_[2]};
}

} // namespace convert

#include "convert/slotorder.h"

#include "base/interaction.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace convert {

using results::Field;
using results::FieldOrder;
using results::StreamGrid;

namespace {

constexpr int most_values = 1 << 19; // of a block: 2 MB
constexpr int tile = 16;             // values of a cache line
constexpr int most_columns = 8 * tile;

// Some columns and rows of the slot with all their layers. Indices from 0.
struct Block {
    int column = 0, columns = 1;
    int row = 0, rows = 1;
};

std::size_t as_size(int count) {
    return static_cast<std::size_t>(count);
}

// The largest block size that stays below `most_values`: whole slices of the slot where they fit,
// a number of whole tiles of them where they allow it.
Block largest_block(const StreamGrid& grid) {
    const std::int64_t slice = std::int64_t{grid.J0} * grid.K0;
    const auto at_most = [](std::int64_t count, int limit) {
        return static_cast<int>(std::clamp<std::int64_t>(count, 1, limit));
    };
    Block block;
    block.columns = at_most(most_values / slice, std::min(grid.I0, most_columns));
    if (block.columns < std::min(tile, grid.I0)) {
        block.columns = at_most(most_values / grid.K0, std::min(grid.I0, tile));
    }
    block.columns -= block.columns > tile ? block.columns % tile : 0;
    block.rows = at_most(most_values / (std::int64_t{block.columns} * grid.K0), grid.J0);
    return block;
}

template <class Visit>
void for_each_block(const StreamGrid& grid, Visit visit) {
    const Block largest = largest_block(grid);
    for (int column = 0; column < grid.I0; column += largest.columns) {
        for (int row = 0; row < grid.J0; row += largest.rows) {
            visit(Block{column, std::min(largest.columns, grid.I0 - column), row,
                        std::min(largest.rows, grid.J0 - row)});
        }
    }
}

// `access` gets the byte and the values of each piece of the file that the block is made of.
template <class Access>
void for_each_piece(const Block& block, const StreamGrid& grid, std::uint64_t start,
                    std::span<float> values, Access access) {
    const bool whole = block.rows == grid.J0;
    const int pieces = whole ? 1 : block.columns;
    const std::size_t size = values.size() / as_size(pieces);
    for (int piece = 0; piece < pieces; ++piece) {
        const std::uint64_t cell =
            (static_cast<std::uint64_t>(block.column + piece) * as_size(grid.J0) +
             as_size(block.row)) *
            as_size(grid.K0);
        access(start + cell * sizeof(float), values.subspan(as_size(piece) * size, size));
    }
}

// Lines of equal distance in memory.
struct Lines {
    float* first;
    std::ptrdiff_t distance;
};
struct ConstLines {
    const float* first;
    std::ptrdiff_t distance;
};

using Four = float __attribute__((vector_size(4 * sizeof(float))));

Four load(const float* at) {
    Four values;
    std::memcpy(&values, at, sizeof values);
    return values;
}

void store(float* at, Four values) {
    std::memcpy(at, &values, sizeof values);
}

// to[b][a] = from[a][b] for a square of four, which takes eight steps instead of sixteen.
void turn_square(ConstLines from, Lines to) {
    const Four a = load(from.first), b = load(from.first + from.distance),
               c = load(from.first + 2 * from.distance), d = load(from.first + 3 * from.distance);
    const Four ab_first = __builtin_shufflevector(a, b, 0, 4, 1, 5),
               ab_last = __builtin_shufflevector(a, b, 2, 6, 3, 7),
               cd_first = __builtin_shufflevector(c, d, 0, 4, 1, 5),
               cd_last = __builtin_shufflevector(c, d, 2, 6, 3, 7);
    store(to.first, __builtin_shufflevector(ab_first, cd_first, 0, 1, 4, 5));
    store(to.first + to.distance, __builtin_shufflevector(ab_first, cd_first, 2, 3, 6, 7));
    store(to.first + 2 * to.distance, __builtin_shufflevector(ab_last, cd_last, 0, 1, 4, 5));
    store(to.first + 3 * to.distance, __builtin_shufflevector(ab_last, cd_last, 2, 3, 6, 7));
}

// to[b][a] = from[a][b] for all of as x bs.
void turn(ConstLines from, Lines to, int as, int bs) {
    constexpr int square = 4;
    for (int a = 0; a < as; a += square) {
        for (int b = 0; b < bs; b += square) {
            const ConstLines source{from.first + a * from.distance + b, from.distance};
            const Lines target{to.first + b * to.distance + a, to.distance};
            if (a + square <= as && b + square <= bs) {
                turn_square(source, target);
                continue;
            }
            for (int y = 0; y < std::min(square, bs - b); ++y) {
                for (int x = 0; x < std::min(square, as - a); ++x) {
                    target.first[y * target.distance + x] = source.first[x * source.distance + y];
                }
            }
        }
    }
}

// Visits the rows of a block with some layers at a time, in the order in which a field has them.
template <class Visit>
void for_each_tile(const Block& block, const StreamGrid& grid, Visit visit) {
    for (int layer = 0; layer < grid.K0; layer += tile) {
        for (int row = 0; row < block.rows; ++row) {
            visit(layer, std::min(tile, grid.K0 - layer), row);
        }
    }
}

// The values of a block with the layer fastest, then the row, then the column.
class Buffer {
public:
    explicit Buffer(const StreamGrid& grid)
        : layers_(grid.K0), values_(size(largest_block(grid))) {}

    std::span<float> of(const Block& block) { return std::span(values_).first(size(block)); }
    // The layers of one row from `layer` on, a line for each column.
    Lines lines(const Block& block, int layer, int row) {
        return {&values_[as_size(row) * as_size(layers_) + as_size(layer)],
                std::ptrdiff_t{block.rows} * layers_};
    }

private:
    std::size_t size(const Block& block) const {
        return as_size(block.columns) * as_size(block.rows) * as_size(layers_);
    }

    int layers_;
    std::vector<float> values_;
};

// Values of a field from a cell to the one in the next layer.
std::ptrdiff_t layer_distance(const StreamGrid& grid) {
    return std::ptrdiff_t{grid.I0} * grid.J0;
}

} // namespace

void write_slot(const Field& field, std::uint64_t start, core::RandomFile& cache) {
    const StreamGrid& grid = field.grid();
    Buffer buffer(grid);
    for_each_block(grid, [&](const Block& block) {
        for_each_tile(block, grid, [&](int layer, int layers, int row) {
            const auto line = field.row(layer + 1, block.row + row + 1);
            turn({&line[as_size(block.column)], layer_distance(grid)},
                 buffer.lines(block, layer, row), layers, block.columns);
        });
        for_each_piece(block, grid, start, buffer.of(block),
                       [&](std::uint64_t byte, auto piece) { cache.write_singles(byte, piece); });
    });
}

Field read_slot_at(std::uint64_t start, const core::RandomFile& cache, const StreamGrid& grid,
                   FieldOrder order, base::Interaction& user) {
    const bool downward = order == FieldOrder::viewer;
    const std::ptrdiff_t distance = downward ? layer_distance(grid) : -layer_distance(grid);
    Field field(grid);
    Buffer buffer(grid);
    for_each_block(grid, [&](const Block& block) {
        for_each_piece(block, grid, start, buffer.of(block),
                       [&](std::uint64_t byte, auto piece) { cache.read_singles(byte, piece); });
        for_each_tile(block, grid, [&](int layer, int layers, int row) {
            const auto line =
                field.row(downward ? layer + 1 : grid.K0 - layer, block.row + row + 1);
            const Lines from = buffer.lines(block, layer, row);
            turn({from.first, from.distance}, {&line[as_size(block.column)], distance},
                 block.columns, layers);
        });
        user.show_meter(
            static_cast<int>(100 * (std::int64_t{block.column} + block.columns) / grid.I0));
    });
    return field;
}

} // namespace convert

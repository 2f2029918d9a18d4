#include "convert/slotorder.h"

#include "base/interaction.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <future>
#include <memory>
#include <mutex>
#include <optional>

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

// Hands out the blocks of a slot, each of them once, to all threads that ask.
class Blocks {
public:
    explicit Blocks(const StreamGrid& grid)
        : grid_(grid), largest_(largest_block(grid)),
          in_column_((grid.J0 + largest_.rows - 1) / largest_.rows),
          count_((grid.I0 + largest_.columns - 1) / largest_.columns * in_column_) {}

    int count() const { return count_; }
    std::optional<Block> next() {
        const int number = next_++;
        if (number >= count_) {
            return std::nullopt;
        }
        const int column = number / in_column_ * largest_.columns,
                  row = number % in_column_ * largest_.rows;
        return Block{column, std::min(largest_.columns, grid_.I0 - column), row,
                     std::min(largest_.rows, grid_.J0 - row)};
    }
    int percent() const {
        return static_cast<int>(100 * std::int64_t{std::min<int>(next_, count_)} / count_);
    }
    void drop_rest() { next_ = count_; }

private:
    StreamGrid grid_;
    Block largest_;
    int in_column_, count_;
    std::atomic<int> next_ = 0;
};

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

// Which of two numbers counts layers.
enum class Layers { a, b };

// to[b][a] = from[a][b] for all of as x bs, square by square. Squares follow each other through the
// layers first: columns first takes up to twice the time, for the sake of the caches.
void turn(ConstLines from, Lines to, int as, int bs, Layers layers) {
    constexpr int square = 4;
    const auto turn_at = [&](int a, int b) {
        const ConstLines source{from.first + a * from.distance + b, from.distance};
        const Lines target{to.first + b * to.distance + a, to.distance};
        if (a + square <= as && b + square <= bs) {
            turn_square(source, target);
            return;
        }
        for (int y = 0; y < std::min(square, bs - b); ++y) {
            for (int x = 0; x < std::min(square, as - a); ++x) {
                target.first[y * target.distance + x] = source.first[x * source.distance + y];
            }
        }
    };
    if (layers == Layers::b) {
        for (int a = 0; a < as; a += square) {
            for (int b = 0; b < bs; b += square) {
                turn_at(a, b);
            }
        }
    } else {
        for (int b = 0; b < bs; b += square) {
            for (int a = 0; a < as; a += square) {
                turn_at(a, b);
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
        : layers_(grid.K0),
          values_(std::make_unique_for_overwrite<float[]>(size(largest_block(grid)))) {}

    std::span<float> of(const Block& block) { return {values_.get(), size(block)}; }
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
    std::unique_ptr<float[]> values_;
};

// Gives each block and a buffer to `work`: in two threads where there are several blocks, for
// turning the values takes longer than moving the bytes. `pause` is called between the blocks of
// this thread.
template <class Work, class Pause>
void share_blocks(const StreamGrid& grid, Work work, Pause pause) {
    Blocks blocks(grid);
    const auto take_blocks = [&](auto behind_block) {
        try {
            Buffer buffer(grid);
            while (const std::optional<Block> block = blocks.next()) {
                work(*block, buffer);
                behind_block();
            }
        } catch (...) {
            blocks.drop_rest();
            throw;
        }
    };
    // Where no thread can be had, this one finds nothing left to do when it looks for the other.
    std::future<void> other;
    if (blocks.count() > 1) {
        other = std::async(std::launch::async | std::launch::deferred, take_blocks, [] {});
    }
    take_blocks([&] { pause(blocks.percent()); });
    if (other.valid()) {
        other.get();
    }
}

// Values of a field from a cell to the one in the next layer.
std::ptrdiff_t layer_distance(const StreamGrid& grid) {
    return std::ptrdiff_t{grid.I0} * grid.J0;
}

} // namespace

void write_slot(const Field& field, std::uint64_t start, core::RandomFile& cache) {
    const StreamGrid& grid = field.grid();
    std::mutex writing;
    const auto write = [&](const Block& block, Buffer& buffer) {
        for_each_tile(block, grid, [&](int layer, int layers, int row) {
            const auto line = field.row(layer + 1, block.row + row + 1);
            turn({&line[as_size(block.column)], layer_distance(grid)},
                 buffer.lines(block, layer, row), layers, block.columns, Layers::a);
        });
        const std::lock_guard lock(writing);
        for_each_piece(block, grid, start, buffer.of(block),
                       [&](std::uint64_t byte, auto piece) { cache.write_singles(byte, piece); });
    };
    share_blocks(grid, write, [](int) {});
}

Field read_slot_at(std::uint64_t start, const core::RandomFile& cache, const StreamGrid& grid,
                   FieldOrder order, base::Interaction& user) {
    const bool downward = order == FieldOrder::viewer;
    const std::ptrdiff_t distance = downward ? layer_distance(grid) : -layer_distance(grid);
    Field field = Field::unset(grid);
    const auto read = [&](const Block& block, Buffer& buffer) {
        for_each_piece(block, grid, start, buffer.of(block),
                       [&](std::uint64_t byte, auto piece) { cache.read_singles(byte, piece); });
        for_each_tile(block, grid, [&](int layer, int layers, int row) {
            const auto line =
                field.row(downward ? layer + 1 : grid.K0 - layer, block.row + row + 1);
            const Lines from = buffer.lines(block, layer, row);
            turn({from.first, from.distance}, {&line[as_size(block.column)], distance},
                 block.columns, layers, Layers::b);
        });
    };
    share_blocks(grid, read, [&](int percent) { user.show_meter(percent); });
    user.show_meter(100);
    return field;
}

} // namespace convert

#include "results/field.h"

#include "base/failure.h"
#include "base/interaction.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>

#include <unistd.h>

namespace results {

namespace {

constexpr std::uint64_t most_cells = std::numeric_limits<std::int32_t>::max();
// A file that holds the values one by one has at least two bytes for each.
constexpr std::uint64_t cells_a_byte = 16;

std::uint64_t machine_memory() {
    return static_cast<std::uint64_t>(::sysconf(_SC_PHYS_PAGES)) *
           static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
}

// A damaged count must not take memory that the values behind it do not fill.
void require_values(StreamReader& stream, std::uint64_t cells, RepeatCount repeat,
                    std::string_view what, bool drops_behind_cr) {
    if (cells / cells_a_byte > stream.size()) {
        const std::uint64_t begin = stream.position();
        BlockReader(stream, repeat, std::string(what), drops_behind_cr).skip(cells);
        stream.go_to(begin);
    }
    const std::uint64_t needed = cells * sizeof(float), there = machine_memory();
    if (needed > there) {
        throw base::FileFailure(fmt::format("{} of {} cells needs {} bytes of memory, where the "
                                            "machine has {}",
                                            what, cells, needed, there),
                                stream.file());
    }
}

int count_of(StreamReader& stream, std::string_view word) {
    const int count = stream.next_line_int(word);
    if (count < 1) {
        throw base::FileFailure(fmt::format("{} is {}, where 1 or more was expected", word, count),
                                stream.file());
    }
    return count;
}

} // namespace

Field::Field(const StreamGrid& grid) : grid_(grid), values_(grid.cells(), 0.0F) {}

Field Field::unset(const StreamGrid& grid) {
    Field field;
    field.grid_ = grid;
    field.values_.resize(grid.cells());
    return field;
}

std::span<float> Field::row(int layer, int row) {
    return std::span(values_).subspan(index(layer, row, 1), static_cast<std::size_t>(grid_.I0));
}
std::span<const float> Field::row(int layer, int row) const {
    return std::span(values_).subspan(index(layer, row, 1), static_cast<std::size_t>(grid_.I0));
}

Field read_field(StreamReader& stream, const StreamGrid& grid, FieldOrder order, RepeatCount repeat,
                 std::string_view what, const RowConversion& convert, base::Interaction& user) {
    // Those who take counts strictly are those who read by InputNumber.
    const bool drops_behind_cr = repeat == RepeatCount::strict_32;
    require_values(stream, grid.cells(), repeat, what, drops_behind_cr);
    Field field = Field::unset(grid);
    BlockReader block(stream, repeat, std::string(what), drops_behind_cr);
    for (int k = 0; k < grid.K0; ++k) {
        const int layer = order == FieldOrder::stream ? k + 1 : grid.K0 - k;
        for (int j = 0; j < grid.J0; ++j) {
            const int row = order == FieldOrder::worksheet ? grid.J0 - j : j + 1;
            const std::span<float> values = field.row(layer, row);
            block.read(values);
            if (convert) {
                convert(values);
            }
        }
        user.show_meter(static_cast<int>(100 * (std::int64_t{k} + 1) / grid.K0));
    }
    stream.require_unchanged();
    return field;
}

std::optional<StreamGrid> read_stream_grid(StreamReader& stream, base::Interaction& user) {
    StreamGrid grid;
    constexpr struct {
        std::string_view word;
        int StreamGrid::*count;
    } axes[] = {{"# I0", &StreamGrid::I0}, {"# J0", &StreamGrid::J0}, {"# K0", &StreamGrid::K0}};
    std::uint64_t cells = 1;
    for (const auto& axis : axes) {
        if (!LookForString(stream, axis.word, user)) {
            return std::nullopt;
        }
        grid.*axis.count = count_of(stream, axis.word);
        cells *= static_cast<std::uint64_t>(grid.*axis.count);
        if (cells > most_cells) {
            throw base::FileFailure(
                fmt::format("{} is {}, with which the grid has more than {} cells", axis.word,
                            grid.*axis.count, most_cells),
                stream.file());
        }
    }
    stream.require_unchanged();
    return grid;
}

std::vector<float> ReadVektorElements(StreamReader& stream, int count, bool downward,
                                      std::string_view what) {
    const auto repeat = RepeatCount::rounded_16;
    const auto cells = static_cast<std::uint64_t>(std::max(count, 0));
    require_values(stream, cells, repeat, what, true);
    std::vector<float> sizes(cells);
    BlockReader block(stream, repeat, std::string(what), true);
    block.read(sizes);
    if (block.left_of_run() > 0) {
        throw base::FileFailure(fmt::format("byte {}: a run of {} goes {} values beyond the {} of "
                                            "the axis",
                                            stream.position(), what, block.left_of_run(), count),
                                stream.file());
    }
    if (downward) {
        std::ranges::reverse(sizes);
    }
    stream.require_unchanged();
    return sizes;
}

} // namespace results

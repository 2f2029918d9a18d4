// Fields: one value of every cell of the stream's grid, and the orders in which consumers want
// them.
#pragma once

#include "results/streamreader.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

namespace base {
class Interaction;
}

namespace results {

// Cells along the simulator's axes.
struct StreamGrid {
    int I0 = 0, J0 = 0, K0 = 0;
    std::uint64_t cells() const {
        return static_cast<std::uint64_t>(I0) * static_cast<std::uint64_t>(J0) *
               static_cast<std::uint64_t>(K0);
    }
    bool operator==(const StreamGrid&) const = default;
};

// Where the n-th value of the stream lands. The stream runs through columns, then rows from the
// south, then layers from the lowest.
enum class FieldOrder {
    viewer,    // layer index downward, row index upward: layers as on the worksheet, row 1 is the
               // south
    worksheet, // layer and row index downward: rows and layers as on the worksheet
    stream,    // both upward: the simulator's own indices
};

// Leaves new values as they come, for those who set them all.
template <class Value>
struct UnsetAllocator : std::allocator<Value> {
    template <class Other>
    struct rebind {
        using other = UnsetAllocator<Other>;
    };
    template <class Made, class... From>
    void construct(Made* at, From&&... from) {
        if constexpr (sizeof...(From) == 0) {
            ::new (static_cast<void*>(at)) Made;
        } else {
            std::construct_at(at, std::forward<From>(from)...);
        }
    }
};

// Values by (layer, row, column), from 1: column fastest, then row, then layer.
class Field {
public:
    Field() = default;
    // A field of zeros.
    explicit Field(const StreamGrid& grid);
    // A field whose values are yet to be set.
    static Field unset(const StreamGrid& grid);

    int nK() const { return grid_.K0; }
    int nJ() const { return grid_.J0; }
    int nI() const { return grid_.I0; }
    const StreamGrid& grid() const { return grid_; }

    float at(int layer, int row, int column) const { return values_[index(layer, row, column)]; }
    float& at(int layer, int row, int column) { return values_[index(layer, row, column)]; }
    // The nI values of one row.
    std::span<float> row(int layer, int row);
    std::span<const float> row(int layer, int row) const;

private:
    std::size_t index(int layer, int row, int column) const {
        return (static_cast<std::size_t>(layer - 1) * static_cast<std::size_t>(grid_.J0) +
                static_cast<std::size_t>(row - 1)) *
                   static_cast<std::size_t>(grid_.I0) +
               static_cast<std::size_t>(column - 1);
    }

    StreamGrid grid_;
    std::vector<float, UnsetAllocator<float>> values_;
};

// Changes the values of one row as they come in.
using RowConversion = std::function<void(std::span<float> row)>;

// Reads the block that the stream stands in, row by row, with the meter per layer. `what` is its
// key line. Where the grid has many more cells than the file has bytes, the runs of the block are
// counted before memory is taken. Ends with StreamReader::require_unchanged.
Field read_field(StreamReader& stream, const StreamGrid& grid, FieldOrder order, RepeatCount repeat,
                 std::string_view what, const RowConversion& convert, base::Interaction& user);

// # I0, # J0 and # K0, searched from the present position on; each search that fails shows both
// messages. Nothing when one is missing. FileFailure for a count below 1 or a product that no file
// can hold (above 2^31 - 1 cells).
std::optional<StreamGrid> read_stream_grid(StreamReader& stream, base::Interaction& user);

// Cell sizes of one axis (ReadVektorElements) into 1 to `count`; with `downward` the first one of
// the stream lands in the highest index. FileFailure for a run that overshoots.
std::vector<float> ReadVektorElements(StreamReader& stream, int count, bool downward,
                                      std::string_view what);

} // namespace results

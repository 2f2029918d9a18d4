// The VTK file of a rectilinear grid with binary data, written from front to end.
//
// XML with the data behind it as raw bytes: little-endian, each array led by its length as a 64-bit
// integer. Edges are doubles, values singles. Cells follow each other with x fastest, then y, then
// z.
#pragma once

#include "convert/outputfile.h"

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace convert {

struct VtrField {
    std::string name;
    int components = 1;
};

class VtrFile {
public:
    // Writes everything up to the first field: `edges` are one more than the cells along each axis.
    VtrFile(Sink sink, const std::array<std::vector<double>, 3>& edges,
            const std::vector<VtrField>& fields);

    // Before the values of each field, in the order of the list.
    void begin_field(int components = 1);
    void add(std::span<const float> values);
    void finish();

private:
    void add_length(std::uint64_t bytes);

    Sink sink_;
    std::uint64_t cells_ = 1;
    std::vector<char> bytes_;
};

} // namespace convert

// Colours and their numbers in plot files.
//
// A colour is a 24-bit number, red in its lowest byte, blue in its highest.
#pragma once

#include <array>
#include <cstdint>

namespace plot {

// Bytes of a colour: red, green, blue.
using ColourBytes = std::array<int, 3>;
ColourBytes colour_bytes(std::int32_t colour);
std::int32_t colour_of(const ColourBytes& bytes);

// Number in a DXF file, 1 to 255: the entry of the index that such files use with the smallest sum
// of differences, the last one of several.
int DXF_colour(std::int32_t colour);
// One of the eight pens of an HPGL plotter: each byte counts as off (below 127) or on.
int HPGL_pen(std::int32_t colour);

// The colour of row `index` (from 0) of `count`, blended byte by byte from `low` to `high`; a
// single row has the low one.
std::int32_t blended(std::int32_t low, std::int32_t high, int index, int count);

} // namespace plot

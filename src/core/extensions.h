// The extension catalogue: which file holds which parameter.
#pragma once

#include <string>

namespace core {

inline constexpr int parameter_count = 2000;
inline constexpr int period_count = 1000;
// A zone companion has the number of its parameter plus this.
inline constexpr int zone_offset = 100;

// Extension of parameter `number` (1 to 2000), lower case with its point; empty when the row is not
// assigned. Outside 1 to 2000: RangeFailure.
const std::string& file_ext(int number);

// A primary number holds an array, any other number zones.
bool is_primary(int number);
// The number under which the zone operations look: `number` itself, or that of the companion for a
// primary number up to 1100. RangeFailure for a higher primary number, whose zones have to be named
// by their own number.
int zone_number(int number);
// True for parameters whose file holds one grid per period, whatever the number of layers.
bool is_2D_array(int number);
// Default of a cell of a period without data, as the menu's commands give it; 0 for all others.
float parameter_default(int number);

} // namespace core

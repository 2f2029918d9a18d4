// Field texts of the settings dialogs as the numbers that they stand for.
#pragma once

#include <string>
#include <string_view>

namespace core {
class Form;
}

namespace sim {

// "1" or "0", the text of a check.
const char* check_text(bool on);

// The index that a choice field holds, moved into 0 to `count` - 1.
int choice_index(const core::Form& form, std::string_view name, int count);

// Sliders go from 0 to 10 and are stored as tenths: "0", "0.3", "1".
inline constexpr int slider_end = 10;
std::string tenth_text(int position);
// The position nearest to a stored text.
int tenth_position(std::string_view text);
// True when the stored text is exactly the value of a position.
bool is_tenth(std::string_view text);

} // namespace sim

#include "sim/fieldvalue.h"

#include "base/numbertext.h"
#include "core/form.h"

#include <algorithm>

namespace sim {

const char* check_text(bool on) {
    return on ? "1" : "0";
}

int choice_index(const core::Form& form, std::string_view name, int count) {
    return std::clamp(int(base::leading_int32(form.get(name))), 0, count - 1);
}

std::string tenth_text(int position) {
    return base::value_text(std::clamp(position, 0, slider_end) * 0.1);
}

int tenth_position(std::string_view text) {
    const double value = std::clamp(base::leading_number(text), 0.0, 1.0);
    return int(value * slider_end + 0.5);
}

bool is_tenth(std::string_view text) {
    const double value = base::leading_number(text);
    return value == base::leading_number(tenth_text(tenth_position(text)));
}

} // namespace sim

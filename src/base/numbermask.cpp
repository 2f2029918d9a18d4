#include "base/decimaldigits.h"
#include "base/numbertext.h"
#include "base/textfile.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>

namespace base {
namespace {

constexpr std::size_t zone_width = 14;

// The parts of a mask: literal, digits before and behind the point, exponent, literal.
struct Picture {
    bool plus = false;
    std::string_view before;
    int whole = 0;       // places before the point
    int least_whole = 0; // of these always shown
    bool point = false;
    int fraction = 0; // places behind the point
    int least_fraction = 0;
    bool exponent = false;
    bool exponent_plus = false;
    int least_exponent = 0;
    std::string_view behind;
};

// Takes the places "0" and "#" off the front of `mask`.
std::string_view take_places(std::string_view& mask) {
    const std::size_t count = std::min(mask.find_first_not_of("0#"), mask.size());
    const std::string_view places = mask.substr(0, count);
    mask.remove_prefix(count);
    return places;
}

Picture picture_of(std::string_view mask) {
    Picture picture;
    picture.plus = mask.starts_with('+');
    mask.remove_prefix(picture.plus ? 1 : 0);
    const std::size_t first = std::min(mask.find_first_of("0#."), mask.size());
    picture.before = mask.substr(0, first);
    mask.remove_prefix(first);
    const std::string_view whole = take_places(mask);
    picture.whole = static_cast<int>(whole.size());
    picture.least_whole = static_cast<int>(whole.size() - std::min(whole.find('0'), whole.size()));
    picture.point = mask.starts_with('.');
    mask.remove_prefix(picture.point ? 1 : 0);
    const std::string_view fraction = picture.point ? take_places(mask) : std::string_view();
    picture.fraction = static_cast<int>(fraction.size());
    picture.least_fraction = static_cast<int>(fraction.rfind('0') + 1); // npos + 1 is 0
    picture.exponent = mask.starts_with("E+") || mask.starts_with("E-");
    if (picture.exponent) {
        picture.exponent_plus = mask[1] == '+';
        mask.remove_prefix(2);
        const std::string_view places = take_places(mask);
        picture.least_exponent = static_cast<int>(std::count(places.begin(), places.end(), '0'));
    }
    picture.behind = mask;
    return picture;
}

void append_digits(std::string& text, const DecimalDigits& number, const Picture& picture) {
    const int highest = number.count > 0 ? number.exponent + 1 : 0;
    const int zero = picture.exponent ? 1 : 0;
    for (int power = std::max({highest, picture.least_whole, zero}) - 1; power >= 0; --power)
        text += number.at_power(power);
    if (picture.point)
        text += '.';
    const int needed = std::clamp(number.count - number.exponent - 1, 0, picture.fraction);
    for (int power = -1; power >= -std::max(needed, picture.least_fraction); --power)
        text += number.at_power(power);
}

void append_exponent(std::string& text, int exponent, const Picture& picture) {
    text += 'E';
    if (exponent < 0 || picture.exponent_plus)
        text += exponent < 0 ? '-' : '+';
    char digits[8];
    const auto count = static_cast<std::size_t>(
        std::to_chars(digits, digits + sizeof digits, std::abs(exponent)).ptr - digits);
    const auto least = static_cast<std::size_t>(picture.least_exponent);
    text.append(least > count ? least - count : 0, '0').append(digits, count);
}

template <typename Real>
std::string column_text(Real value, std::size_t width) {
    const std::string plain = bare_text(value);
    if (plain.size() < width)
        return right_aligned(plain, width);
    const std::size_t fixed = value < 0 ? 8 : 7; // sign, digit, point, exponent, blank
    const std::string zeros(width > fixed ? width - fixed : 0, '0');
    return masked(value, "0." + zeros + "E+00 ");
}

} // namespace

std::string masked(double value, std::string_view mask) {
    const Picture picture = picture_of(mask);
    DecimalDigits number = significant_digits(value);
    int exponent = 0;
    if (picture.exponent) {
        number.round_to(picture.whole + picture.fraction);
        exponent = number.count > 0 ? number.exponent + 1 - picture.whole : 0;
        number.exponent -= exponent;
    } else {
        number.round_to(number.exponent + 1 + picture.fraction);
    }
    std::string text;
    if (number.negative && number.count > 0)
        text += '-';
    else if (picture.plus)
        text += '+';
    text += picture.before;
    append_digits(text, number, picture);
    if (picture.exponent)
        append_exponent(text, exponent, picture);
    return text.append(picture.behind);
}

std::string right_aligned(std::string_view text, std::size_t width) {
    const std::size_t count = character_count(text);
    return std::string(width > count ? width - count : 0, ' ').append(text);
}

std::string column_integer(std::int64_t value, std::size_t width) {
    char digits[24];
    return right_aligned({digits, std::to_chars(digits, digits + sizeof digits, value).ptr}, width);
}

std::string column_real(float value, std::size_t width) {
    return column_text(value, width);
}
std::string column_real(double value, std::size_t width) {
    return column_text(value, width);
}

PrintLine& PrintLine::add(std::string_view text) {
    text_ += text;
    return *this;
}

PrintLine& PrintLine::zone() {
    const std::size_t beyond = column() % zone_width;
    text_.append(beyond > 0 ? zone_width - beyond : 0, ' ');
    return *this;
}

PrintLine& PrintLine::tab(std::size_t column) {
    std::size_t filled = this->column();
    if (filled >= column) {
        text_ += "\r\n";
        filled = 0;
    }
    text_.append(column > filled + 1 ? column - 1 - filled : 0, ' ');
    return *this;
}

// Characters that stand in the present line.
std::size_t PrintLine::column() const {
    const std::size_t line_end = text_.rfind('\n'); // npos + 1 is the beginning of the text
    return character_count(std::string_view(text_).substr(line_end + 1));
}

} // namespace base

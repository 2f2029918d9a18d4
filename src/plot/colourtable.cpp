#include "plot/colourtable.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace plot {

namespace {

constexpr int entries = 255;
using Rgb = std::array<float, 3>;
using Table = std::array<Rgb, entries + 1>; // by number

constexpr Rgb first_entries[] = {{1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 1, 1}, {0, 0, 1},
                                 {1, 0, 1}, {1, 1, 1}, {1, 1, 1}, {1, 1, 1}};
constexpr float brightness[] = {1, 0.65F, 0.5F, 0.3F, 0.15F}; // by pair of last digits
constexpr float greys[] = {0.33F, 0.464F, 0.598F, 0.732F, 0.866F, 1};
constexpr int first_hue = 10, first_grey = 250, degrees_per_ten = 15;

// Share of a colour at a hue so many degrees away from its own, in full saturation.
constexpr float share_of_hue(int degrees) {
    const int distance = degrees % 360 < 180 ? degrees % 360 : 360 - degrees % 360;
    const float share = 2 - static_cast<float>(distance) / 60;
    return share < 0 ? 0 : share > 1 ? 1 : share;
}

constexpr Rgb hue_entry(int number) {
    const int hue = (number / 10 - 1) * degrees_per_ten;
    const bool pale = number % 2 == 1;
    Rgb colour{share_of_hue(hue), share_of_hue(hue + 240), share_of_hue(hue + 120)};
    for (float& part : colour) {
        part = brightness[number % 10 / 2] * (pale ? 0.5F + part / 2 : part);
    }
    return colour;
}

constexpr Table filled_table() {
    Table table{};
    for (int number = 1; number <= entries; ++number) {
        auto& entry = table[static_cast<std::size_t>(number)];
        if (number < first_hue) {
            entry = first_entries[number - 1];
        } else if (number < first_grey) {
            entry = hue_entry(number);
        } else {
            entry.fill(greys[number - first_grey]);
        }
    }
    return table;
}

constexpr Table table = filled_table();

} // namespace

ColourBytes colour_bytes(std::int32_t colour) {
    return {colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF};
}

std::int32_t colour_of(const ColourBytes& bytes) {
    return bytes[0] + bytes[1] * 256 + bytes[2] * 65536;
}

int DXF_colour(std::int32_t colour) {
    const ColourBytes bytes = colour_bytes(colour);
    int nearest = 0;
    double least = 4;
    for (int number = 1; number <= entries; ++number) {
        double sum = 0;
        for (std::size_t part = 0; part < bytes.size(); ++part) {
            sum += std::abs(double{table[static_cast<std::size_t>(number)][part]} -
                            bytes[part] / 255.0);
        }
        if (sum <= least) {
            least = sum;
            nearest = number;
        }
    }
    return nearest;
}

int HPGL_pen(std::int32_t colour) {
    const ColourBytes bytes = colour_bytes(colour);
    const auto on = [](int byte) { return byte >= 127 ? 1 : 0; };
    return 1 + 4 * on(bytes[0]) + 2 * on(bytes[1]) + on(bytes[2]);
}

std::int32_t blended(std::int32_t low, std::int32_t high, int index, int count) {
    const ColourBytes from = colour_bytes(low), to = colour_bytes(high);
    const double place = count > 1 ? static_cast<double>(index) / (count - 1) : 0;
    ColourBytes bytes{};
    for (std::size_t part = 0; part < bytes.size(); ++part) {
        bytes[part] = static_cast<int>(std::lround(from[part] + place * (to[part] - from[part])));
    }
    return colour_of(bytes);
}

} // namespace plot

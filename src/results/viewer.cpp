#include "results/viewer.h"

#include "base/numbertext.h"
#include "base/textfile.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace results {

namespace {

// Where a section lies: whole metres, because the sum is rounded after every cell (halves to even).
double section_coordinate(const std::vector<float>& sizes, int index) {
    double sum = 0;
    for (int n = 0; n < index; ++n) {
        sum = std::nearbyint(sum + double{sizes[static_cast<std::size_t>(n)]});
    }
    return sum;
}

std::string title_of(const Axes& axes, char cut, int index, std::string_view label,
                     std::string_view file_name) {
    const auto section = [&](std::string_view plane, const std::vector<float>& sizes) {
        return fmt::format("{} in section ({}) at {}={}    [{}]", label, plane, cut,
                           base::value_text(section_coordinate(sizes, index)), file_name);
    };
    switch (cut) {
    case 'X':
        return section("Y/Z", axes.delx);
    case 'Y':
        return section("X/Z", axes.dely);
    default:
        return fmt::format("{} in section (X/Y) in layer {} of {}    [{}]", label, index,
                           axes.delz.size(), file_name);
    }
}

std::vector<float> layer_heights(const Axes& axes) {
    return cell_centres(std::vector<float>(axes.delz.rbegin(), axes.delz.rend()));
}

// The value at place (a, b) of a plane, each from 1.
float value_at(const Field& field, char cut, int index, int a, int b) {
    const int layer_from_below = field.nK() + 1 - b;
    switch (cut) {
    case 'X':
        return field.at(layer_from_below, a, index);
    case 'Y':
        return field.at(layer_from_below, index, a);
    default:
        return field.at(index, b, a);
    }
}

Field values_of(const Field& field, char cut, int index, const Plane& plane) {
    Field values({static_cast<int>(plane.x.size()), static_cast<int>(plane.y.size()), 1});
    for (int b = 1; b <= values.nJ(); ++b) {
        for (int a = 1; a <= values.nI(); ++a) {
            values.at(1, b, a) = value_at(field, cut, index, a, b);
        }
    }
    return values;
}

std::string printed_all(std::span<const float> values) {
    std::string line;
    for (const float value : values) {
        line += base::printed(value);
    }
    return line;
}

} // namespace

int planes_across(const StreamGrid& grid, char cut) {
    return cut == 'X' ? grid.I0 : cut == 'Y' ? grid.J0 : grid.K0;
}

std::vector<float> cell_centres(std::span<const float> sizes) {
    std::vector<float> centres;
    centres.reserve(sizes.size());
    float before = 0;
    for (const float size : sizes) {
        const float start = centres.empty() ? 0 : centres.back() + before / 2;
        centres.push_back(start + size / 2);
        before = size;
    }
    return centres;
}

Plane cut_plane(const Field& field, const Axes& axes, char cut, int index, std::string_view label,
                std::string_view file_name) {
    const int shown = std::clamp(index, 1, planes_across(field.grid(), cut));
    Plane plane;
    plane.title = title_of(axes, cut, shown, label, file_name);
    plane.x_title = fmt::format("{} coordinate [m]", cut == 'X' ? 'Y' : 'X');
    plane.y_title = cut == 'Z' ? "Y coordinate [m]" : " Altitude(Z) [m]";
    plane.value_title = label;
    plane.x = cell_centres(cut == 'X' ? axes.dely : axes.delx);
    plane.y = cut == 'Z' ? cell_centres(axes.dely) : layer_heights(axes);
    plane.values = values_of(field, cut, shown, plane);
    return plane;
}

std::string plane_data_file(const Plane& plane) {
    std::vector<std::string> lines{"IRGRID" + base::printed(plane.values.nI()) +
                                       base::printed(plane.values.nJ()),
                                   printed_all(plane.x), printed_all(plane.y)};
    for (int b = 1; b <= plane.values.nJ(); ++b) {
        lines.push_back(printed_all(plane.values.row(1, b)));
    }
    return base::to_text_file(lines);
}

} // namespace results

#include "ui/worksheetpicture.h"

#include "core/project.h"
#include "ui/colours.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace ui {

namespace {

constexpr int flow_boundary = 5, transport_boundary = 40, wells = 11;
constexpr std::size_t most_wells = 100'000;

constexpr std::array viridis_colours = {0x440154, 0x472D7B, 0x3B528B, 0x2C728E, 0x21918C,
                                        0x28AE80, 0x5EC962, 0xADDC30, 0xFDE725};
constexpr std::array cividis_colours = {0x00224E, 0x123570, 0x3B496C, 0x575D6D, 0x707173,
                                        0x8A8678, 0xA59C74, 0xC3B369, 0xE1CC55, 0xFEE838};
constexpr std::array diverging_colours = {0x3B4CC0, 0x7B9FF9, 0xC0D4F5, 0xF2F2F2,
                                          0xF2CBB7, 0xEE8468, 0xB40426};
constexpr std::array grey_colours = {0x101010, 0xF8F8F8};

// Of whole numbers: zones of properties, fluids, tracers.
constexpr std::array pale_colours = {0xCFE2F3, 0xD9EAD3, 0xFFF2CC, 0xF4CCCC, 0xD9D2E9,
                                     0xD0E0E3, 0xFCE5CD, 0xEAD1DC, 0xC9DAF8, 0xE6EFC2};

std::span<const int> colours_of(CellColours scale) {
    switch (scale) {
    case CellColours::viridis:
        return viridis_colours;
    case CellColours::cividis:
        return cividis_colours;
    case CellColours::diverging:
        return diverging_colours;
    case CellColours::grey:
    case CellColours::classes:
        break;
    }
    return grey_colours;
}

bool has_pale_colours(int number) {
    static constexpr int items[] = {1403, 1404, 1405, 1406};
    return std::ranges::find(items, number) != std::end(items);
}

// Which class a cell belongs to; its number is the place of its colour in the table.
enum Class : std::uint8_t { ground = 0, inactive, fixed, discharge, recharge, first_pale };

struct ClassKey {
    const char* key;
    const char* text;
};
ClassKey class_key(Class number, int item) {
    switch (number) {
    case inactive:
        return {"INACTIVE_CELL", "Inactive cell"};
    case fixed:
        return item == transport_boundary ? ClassKey{"FIXEDCONC_CELL", "Fixed concentration"}
                                          : ClassKey{"FIXEDHEAD_CELL", "Fixed head"};
    case discharge:
        return {"DISCHARGE_WELL", "Discharge well"};
    default:
        return {"RECHARGE_WELL", "Recharge well"};
    }
}

struct ClassRule {
    const LayerData& layer;
    bool pale;

    std::uint8_t operator()(std::size_t cell) const {
        const float value = layer.values.empty() ? 1 : layer.values[cell];
        const bool own = layer.number == flow_boundary || layer.number == transport_boundary;
        const float boundary = own ? value : layer.boundary.empty() ? 1 : layer.boundary[cell];
        if (boundary == 0) {
            return inactive;
        }
        if (own) {
            return value < 0 ? fixed : ground;
        }
        if (layer.number == wells && value != 0) {
            return value < 0 ? discharge : value > 0 ? recharge : ground;
        }
        return pale && value != layer.default_value ? pale_class(value) : std::uint8_t{ground};
    }

    static std::uint8_t pale_class(float value) {
        if (!std::isfinite(value)) {
            return ground;
        }
        const auto count = static_cast<float>(pale_colours.size());
        const float place = std::fmod(std::fabs(std::round(value)), count);
        return static_cast<std::uint8_t>(first_pale + static_cast<int>(place));
    }
};

ClassRule rule_of(const LayerData& layer) {
    return {layer, has_pale_colours(layer.number)};
}

// A class whose element is not shown has the colour of the ground.
std::vector<QRgb> class_table(const core::Project& project, const LayerData& layer) {
    std::vector<QRgb> table;
    for (const Class number : {inactive, fixed, discharge, recharge}) {
        const char* const key = class_key(number, layer.number).key;
        table.push_back(key_shown(project, key) ? key_colour(project, key).rgb() : 0);
    }
    for (const int colour : pale_colours) {
        table.push_back(QRgb(0xFF000000U | static_cast<unsigned>(colour)));
    }
    return table;
}

void class_legend(WorksheetPicture& picture, const LayerData& layer) {
    std::array<bool, 256> used{};
    for (const std::uint8_t number : picture.cell_classes) {
        used[number] = true;
    }
    for (const Class number : {inactive, fixed, discharge, recharge}) {
        const QRgb colour = picture.colour_table[std::size_t(number) - 1];
        if (used[number] && colour != 0) {
            picture.legend.push_back({QColor(colour), class_key(number, layer.number).text});
        }
    }
    if (!has_pale_colours(layer.number)) {
        return;
    }
    std::array<bool, 100> seen{};
    for (const float value : layer.values) {
        if (value >= 0 && value < 100 && value == std::floor(value)) {
            seen[static_cast<std::size_t>(value)] = true;
        }
    }
    for (int value = 0; value < 100; ++value) {
        const auto number = static_cast<float>(value);
        if (seen[std::size_t(value)] && number != layer.default_value) {
            const std::size_t place = ClassRule::pale_class(number) - 1U;
            picture.legend.push_back({QColor(picture.colour_table[place]), QString::number(value)});
        }
    }
}

void list_wells(WorksheetPicture& picture, const LayerData& layer) {
    if (layer.number != wells) {
        return;
    }
    const auto columns = static_cast<std::size_t>(picture.grid.NX);
    for (std::size_t n = 0; n < picture.cell_classes.size(); ++n) {
        const std::uint8_t number = picture.cell_classes[n];
        if ((number != discharge && number != recharge) || picture.wells.size() == most_wells) {
            continue;
        }
        if (const QRgb colour = picture.colour_table[number - 1U]; colour != 0) {
            picture.wells.push_back(
                {{static_cast<int>(n % columns) + 1, static_cast<int>(n / columns) + 1}, colour});
        }
    }
}

bool is_inactive(const LayerData& layer, std::size_t cell) {
    if (layer.number == flow_boundary) {
        return layer.values[cell] == 0;
    }
    return !layer.boundary.empty() && layer.boundary[cell] == 0;
}

std::uint8_t scale_class(const WorksheetPicture& picture, float value) {
    const double range = picture.scale_largest - picture.scale_least;
    const double place = range > 0 ? (double{value} - picture.scale_least) / range : 0.5;
    return static_cast<std::uint8_t>(1 + std::lround(place * (scale_colours - 1)));
}

void colour_by_values(WorksheetPicture& picture, const LayerData& layer) {
    float least = std::numeric_limits<float>::max(), largest = -least;
    for (std::size_t n = 0; n < layer.values.size(); ++n) {
        const float value = layer.values[n];
        if (std::isfinite(value) && !is_inactive(layer, n)) {
            least = std::min(least, value);
            largest = std::max(largest, value);
        }
    }
    picture.scale_least = double{least};
    picture.scale_largest = double{largest};
    for (std::size_t n = 0; n < layer.values.size(); ++n) {
        const float value = layer.values[n];
        picture.cell_classes[n] = !std::isfinite(value) || is_inactive(layer, n)
                                      ? std::uint8_t{0}
                                      : scale_class(picture, value);
    }
    picture.colour_table.clear();
    for (int n = 0; n < scale_colours; ++n) {
        picture.colour_table.push_back(
            scale_colour(picture.colours, double(n) / (scale_colours - 1)));
    }
}

} // namespace

QRgb scale_colour(CellColours scale, double position) {
    const std::span<const int> colours = colours_of(scale);
    const double place = std::clamp(position, 0., 1.) * static_cast<double>(colours.size() - 1);
    const auto low = std::min(static_cast<std::size_t>(place), colours.size() - 2);
    const double part = place - static_cast<double>(low);
    const auto blend = [&](int shift) {
        const int from = colours[low] >> shift & 0xFF, to = colours[low + 1] >> shift & 0xFF;
        return static_cast<int>(std::lround(from + part * (to - from)));
    };
    return qRgb(blend(16), blend(8), blend(0));
}

QColor key_colour(const core::Project& project, const char* key) {
    return to_qt_colour(project.integer("COLOR", key));
}

bool key_shown(const core::Project& project, const char* key) {
    return project.integer("GRID_APPEARANCE", key) != 0;
}

WorksheetPicture mesh_picture(const core::Project& project, const grid::GridFile& grid) {
    WorksheetPicture picture;
    picture.grid = grid;
    picture.cells = grid::Build_Cell_Coordinates(grid);
    picture.position.emplace(project);
    picture.mesh_colour = key_colour(project, "MESH");
    picture.mesh_shown = key_shown(project, "MESH");
    picture.zones_shown = key_shown(project, "ZONES");
    return picture;
}

void colour_cells(WorksheetPicture& picture, const core::Project& project, const LayerData& layer) {
    const std::size_t count = picture.cells.x_centres.size() * picture.cells.y_centres.size();
    picture.legend.clear();
    picture.wells.clear();
    picture.cell_classes.assign(count, 0);
    if (picture.colours != CellColours::classes && layer.values.size() == count) {
        colour_by_values(picture, layer);
        return;
    }
    picture.colour_table = class_table(project, layer);
    const ClassRule rule = rule_of(layer);
    for (std::size_t n = 0; n < count; ++n) {
        picture.cell_classes[n] = rule(n);
    }
    class_legend(picture, layer);
    list_wells(picture, layer);
}

bool recolour_cell(WorksheetPicture& picture, const core::Project&, const LayerData& layer,
                   grid::CellIndex cell) {
    if (layer.number == wells || has_pale_colours(layer.number)) {
        return false; // well list, legend
    }
    const auto at =
        static_cast<std::size_t>(cell.row - 1) * static_cast<std::size_t>(picture.grid.NX) +
        static_cast<std::size_t>(cell.column - 1);
    if (picture.colours == CellColours::classes) {
        picture.cell_classes[at] = rule_of(layer)(at);
        return true;
    }
    const auto value = double{layer.values[at]};
    if (!(value >= picture.scale_least && value <= picture.scale_largest)) {
        return false;
    }
    picture.cell_classes[at] =
        is_inactive(layer, at) ? std::uint8_t{0} : scale_class(picture, layer.values[at]);
    return true;
}

} // namespace ui

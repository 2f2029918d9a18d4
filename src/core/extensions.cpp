#include "core/extensions.h"

#include "base/failure.h"
#include "base/textfile.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace core {

namespace {

struct Row {
    int number;
    std::string_view extension;
};

// As assigned; all rows are folded to lower case when the catalogue is complete.
constexpr Row basic_rows[] = {
    {1, ".X"},     {2, ".Y"},     {3, ".TOP"},   {103, ".TOZ"}, {4, ".BOT"},   {104, ".BOZ"},
    {5, ".IBD"},   {105, ".IBZ"}, {6, ".POR"},   {106, ".POZ"}, {7, ".STO"},   {107, ".STZ"},
    {8, ".CON"},   {108, ".COZ"}, {9, ".LEA"},   {109, ".LEZ"}, {10, ".HEA"},  {110, ".HEZ"},
    {11, ".WEL"},  {111, ".WEZ"}, {12, ".DRC"},  {13, ".DRE"},  {112, ".DCZ"}, {14, ".RIC"},
    {15, ".RIS"},  {16, ".RIR"},  {114, ".RCZ"}, {17, ".EET"},  {18, ".ESU"},  {19, ".EXD"},
    {20, ".EIE"},  {117, ".ETZ"}, {21, ".GHC"},  {22, ".GHB"},  {121, ".GCZ"}, {23, ".RCH"},
    {24, ".RCI"},  {123, ".RHZ"}, {25, ".SEG"},  {26, ".SRE"},  {27, ".SFL"},  {28, ".SST"},
    {29, ".STC"},  {30, ".STT"},  {31, ".SBO"},  {32, ".SWI"},  {33, ".SSL"},  {34, ".SRO"},
    {125, ".S1z"}, {37, ".C37"},  {137, ".Z37"}, {40, ".TIC"},  {140, ".MT0"}, {41, ".TSC"},
    {141, ".MT1"}, {43, ".TW"},   {143, ".MT3"}, {45, ".TR"},   {145, ".MT5"}, {46, ".TE"},
    {146, ".MT6"}, {47, ".TG"},   {147, ".MT7"}, {48, ".TRC"},  {148, ".MT8"}, {49, ".TST"},
    {149, ".MT9"}, {50, ".TCH"},  {150, ".M10"}, {51, ".LKN"},  {151, ".LKZ"}, {52, ".DWA"},
    {152, ".DWZ"}, {53, ".TAL"},  {153, ".M11"}, {54, ".C54"},  {55, ".C55"},  {154, ".Z54"},
    {56, ".C56"},  {156, ".Z56"}, {57, ".C57"},  {157, ".Z57"}, {58, ".C58"},  {158, ".Z58"},
    {59, ".C59"},  {159, ".Z59"}, {60, ".HTC"},  {160, ".HTZ"}, {61, ".SCC"},  {161, ".SCZ"},
    {62, ".YLD"},  {162, ".YLZ"}, {70, ".WAL"},  {71, ".WAC"},  {72, ".IB1"},  {73, ".IB2"},
    {74, ".IB3"},  {75, ".IB4"},  {172, ".I1Z"}, {76, ".CH1"},  {77, ".CH2"},  {78, ".CH3"},
    {176, ".C1Z"}, {81, ".WBL"},  {181, ".WBZ"}, {83, "._83"},  {183, ".Z83"}, {85, ".C85"},
    {86, ".C86"},  {87, ".C87"},  {88, ".C88"},  {89, ".C89"},  {185, ".Z85"}, {91, ".C91"},
    {92, ".C92"},  {93, ".C93"},  {94, ".C94"},  {95, ".C95"},  {191, ".Z91"}, {97, ".C97"},
    {197, ".Z97"}, {199, ".TMP"}, {200, ".{T}"},
};

struct SimulatorRow {
    int number;
    std::string_view extension;
    int zone_number;
    std::string_view zone_extension;
    float default_value;
};

constexpr SimulatorRow simulator_rows[] = {
    {1401, ".PER", 1501, ".PEZ", 1E-12F}, // permeability [m²]
    {1402, ".TEM", 1502, ".TEZ", 10},     // temperature [°C]
    {1403, ".MDS", 1503, ".MDZ", 1},      // property zones
    {1404, ".FDS", 1504, ".FDZ", 1},      // fluids distribution
    {1405, ".hbo", 1505, ".hbZ", 1},      // thermal boundary condition
    {1406, ".itr", 1506, ".itz", 0},      // tracer [No.]
    {1407, ".qre", 1507, ".qrz", 0},      // recharge, top / bottom
    {1408, ".vx", 1508, ".vxz", 0},       // flow velocity in x-direction [m/s]
    {1409, ".vy", 1509, ".vyz", 0},       // flow velocity in y-direction [m/s]
    {1410, ".vz", 1510, ".vzz", 0},       // flow velocity in z-direction [m/s]
    {1431, ".is", 1531, ".isz", 1},       // internal surface [m²/m³]
    {1432, ".qvh", 1532, ".qvz", 0},      // recharge, front / back
    {1433, ".qrl", 1533, ".qlz", 0},      // recharge, left / right
    {1434, ".ice", 1534, ".icz", 0},      // ice content [-]
    {1435, ".sol", 1535, ".soz", -2},     // solidus temperature [°C]
    {1436, ".liq", 1536, ".liz", 0},      // liquidus temperature [°C]
    {1437, ".qba", 1537, ".qbz", 0},      // constant heat flow [W/m²]
};

struct Range {
    int first, last;
    constexpr bool holds(int number) const { return number >= first && number <= last; }
};

// Row i is "." and the digits of i, for these numbers and those of their zones.
constexpr Range digit_rows[] = {{63, 69},   {201, 300},   {401, 500},  {601, 700},
                                {801, 900}, {1001, 1100}, {1201, 1300}};

constexpr int species_count = 20, before_species = 1410;
constexpr int tracer_count = 5, before_tracers = 1440;

constexpr Range primary_numbers[] = {{1, 100},   {201, 300},   {401, 500},   {601, 700},
                                     {801, 900}, {1001, 1100}, {1201, 1300}, {1401, 1500}};
constexpr int last_turned_into_zone = 1100;

constexpr Range single_layer_numbers[] = {{17, 20}, {23, 24},   {85, 89},  {46, 46},
                                          {48, 48}, {231, 260}, {261, 290}};

struct Default {
    int number;
    float value;
};

constexpr Default basic_defaults[] = {
    {3, 0},      // top of layers
    {4, 0},      // bottom of layers
    {5, 1},      // flow boundary condition
    {40, 1},     // transport boundary condition
    {6, 0.25F},  // effective porosity
    {8, 1E-4F},  // horizontal hydraulic conductivity
    {9, 1E-5F},  // vertical hydraulic conductivity
    {51, 1E-6F}, // vertical leakance
    {7, 1E-4F},  // specific storage
    {62, 0.25F}, // specific yield
    {61, 1E-3F}, // storage coefficient
    {60, 1E-3F}, // transmissivity
    {10, 0},     // initial hydraulic head
    {11, 0},     // wells
};

template <std::size_t count>
bool in_any(const Range (&ranges)[count], int number) {
    return std::ranges::any_of(ranges,
                               [number](const Range& range) { return range.holds(number); });
}

using Catalogue = std::array<std::string, parameter_count + 1>;

std::string& row(Catalogue& catalogue, int number) {
    return catalogue[static_cast<std::size_t>(number)];
}

void assign_digit_rows(Catalogue& catalogue) {
    for (const Range& range : digit_rows) {
        for (int i = range.first; i <= range.last; ++i) {
            row(catalogue, i) = fmt::format(".{}", i);
            row(catalogue, i + zone_offset) = fmt::format(".{}", i + zone_offset);
        }
    }
}

void assign_species_and_tracers(Catalogue& catalogue) {
    for (int i = 1; i <= species_count; ++i) {
        row(catalogue, before_species + i) = fmt::format(".{}m", i);
        row(catalogue, before_species + zone_offset + i) = fmt::format(".{}z", i);
    }
    for (int i = 1; i <= tracer_count; ++i) {
        row(catalogue, before_tracers + i) = fmt::format(".tc{}", i);
        row(catalogue, before_tracers + zone_offset + i) = fmt::format(".tz{}", i);
    }
}

Catalogue make_catalogue() {
    Catalogue catalogue;
    for (const Row& basic : basic_rows) {
        row(catalogue, basic.number) = basic.extension;
    }
    for (const SimulatorRow& simulator : simulator_rows) {
        row(catalogue, simulator.number) = simulator.extension;
        row(catalogue, simulator.zone_number) = simulator.zone_extension;
    }
    assign_digit_rows(catalogue);
    assign_species_and_tracers(catalogue);
    for (std::string& extension : catalogue) {
        extension = base::lower(extension);
    }
    return catalogue;
}

} // namespace

const std::string& file_ext(int number) {
    static const Catalogue catalogue = make_catalogue();
    if (number < 1 || number > parameter_count) {
        throw base::RangeFailure(
            fmt::format("parameter number {} is outside 1 to {}", number, parameter_count));
    }
    return catalogue[static_cast<std::size_t>(number)];
}

bool is_primary(int number) {
    return in_any(primary_numbers, number);
}

int zone_number(int number) {
    if (!is_primary(number)) {
        return number;
    }
    if (number > last_turned_into_zone) {
        throw base::RangeFailure(
            fmt::format("parameter {} is given where the number of its zones is needed", number));
    }
    return number + zone_offset;
}

bool is_2D_array(int number) {
    return in_any(single_layer_numbers, number);
}

float parameter_default(int number) {
    const auto simulator = std::ranges::find(simulator_rows, number, &SimulatorRow::number);
    if (simulator != std::end(simulator_rows)) {
        return simulator->default_value;
    }
    const auto basic = std::ranges::find(basic_defaults, number, &Default::number);
    return basic != std::end(basic_defaults) ? basic->value : 0;
}

} // namespace core

#include "core/itemcells.h"

#include "core/arraystore.h"
#include "core/extensions.h"
#include "core/modelflags.h"

#include <algorithm>
#include <array>

namespace core {

namespace {

struct ItemCell {
    int first, last; // parameter numbers
    int a, b;        // cell
};

constexpr ItemCell item_cells[] = {
    {3, 3, 6, 5},         // top of layers
    {4, 4, 6, 6},         // bottom of layers
    {5, 5, 1, 7},         // flow boundaries
    {6, 6, 2, 2},         // porosity
    {7, 7, 2, 3},         // specific storage
    {65, 65, 2, 3},       //
    {8, 8, 2, 4},         // horizontal hydraulic conductivity
    {63, 63, 2, 4},       //
    {9, 9, 2, 5},         // vertical hydraulic conductivity
    {64, 64, 2, 5},       //
    {10, 10, 2, 8},       // initial hydraulic heads
    {11, 11, 3, 2},       // wells
    {299, 299, 3, 2},     //
    {40, 40, 11, 2},      // transport boundaries
    {51, 51, 2, 6},       // vertical leakance
    {67, 67, 2, 6},       //
    {60, 60, 2, 9},       // transmissivity
    {66, 66, 2, 9},       //
    {61, 61, 2, 10},      // storage coefficient
    {68, 68, 2, 10},      //
    {62, 62, 6, 3},       // specific yield
    {69, 69, 6, 3},       //
    {1401, 1401, 2, 1},   // permeability
    {1402, 1402, 2, 0},   // temperature
    {1403, 1403, 2, 11},  // Property Zones
    {1404, 1404, 2, 12},  // fluids distribution
    {1405, 1405, 2, 7},   // thermal boundaries
    {1406, 1406, 2, 13},  // tracer by zones
    {1407, 1407, 2, 14},  // recharge, top and bottom
    {1408, 1410, 3, 0},   // prescribed flow field
    {1411, 1430, 10, 10}, // rock composition, individually
    {1431, 1431, 10, 11}, // internal surface
    {1432, 1433, 3, 14},  // recharge at the sides: the menu and the simulator's input name the two
    {1432, 1433, 4, 14},  // cells the other way round, so both are set
    {1434, 1434, 4, 0},   // ice content
    {1435, 1435, 4, 7},   // solidus temperature
    {1436, 1436, 4, 6},   // liquidus temperature
    {1437, 1437, 10, 9},  // constant heat flow
    {1441, 1445, 3, 13},  // tracers by arrays
};

// The simulator's input takes tracers by zones or by arrays: the definition saved last.
constexpr int tracer_zones = 1406, first_tracer_array = 1441, last_tracer_array = 1445;

// Arrays that one item edits together; 0 for none.
constexpr std::array<int, 3> items_with_several_arrays[] = {
    {8, 63},  {9, 64},   {51, 67},           {7, 65}, {62, 69}, {61, 68},
    {60, 66}, {11, 299}, {1408, 1409, 1410},
};

} // namespace

void mark_item_defined(ModelFlags& flags, int number) {
    if (number == tracer_zones) {
        flags.set(3, 13, 0);
    } else if (number >= first_tracer_array && number <= last_tracer_array) {
        flags.set(2, 13, 0);
    }
    for (const ItemCell& item : item_cells) {
        if (number >= item.first && number <= item.last) {
            flags.mark_defined(item.a, item.b);
        }
    }
}

void create_arrays_of_item(ArrayStore& store, int number) {
    for (const auto& item : items_with_several_arrays) {
        if (std::ranges::find(item, number) == item.end()) {
            continue;
        }
        for (const int array : item) {
            if (array != 0) {
                store.create_array_file(array, parameter_default(array));
            }
        }
    }
}

} // namespace core

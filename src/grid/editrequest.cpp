#include "grid/editrequest.h"

#include "core/extensions.h"
#include "core/modelflags.h"
#include "sim/rockfile.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace grid {

namespace {

using enum ValueKind;
using enum Stacking;

constexpr bool positive = true, any_value = false;
constexpr bool zones = true, no_zones = false;
constexpr const char* number_prompt = "Parameter Number:";

constexpr RequestRow rows[] = {
    {{3},
     one,
     {"Elevation of the Layer Top [m]:"},
     "Top of Layers",
     "",
     any_value,
     zones,
     map_view},
    {{3},
     one,
     {"Vertical Layer Front (y-direction) [m]"},
     "Front of Vertical Layers",
     "",
     any_value,
     zones,
     cross_section},
    {{4},
     one,
     {"Elevation of the Layer Bottom [m]:"},
     "Bottom of Layers",
     "",
     any_value,
     zones,
     map_view},
    {{4},
     one,
     {"Vertical Layer Back (y-direction) [m]:"},
     "Back of Vertical Layers",
     "",
     any_value,
     zones,
     cross_section},
    {{5},
     one,
     {"Flow Boundary Condition:"},
     "Flow Boundary Condition",
     "HEAD = -1 / NO FLOW = 1 / FLO Function = 2",
     any_value,
     zones,
     any},
    {{40},
     one,
     {"Transport Boundary Condition:"},
     "Transport Boundary Condition",
     "CONC = -1 / NFLO = 1",
     any_value,
     zones,
     any},
    {{6}, one, {"Effective Porosity [-]:"}, "Effective Porosity", "", positive, zones, any},
    {{8, 63},
     two,
     {"Horizontal Hydr. Conductivity [L/T]:", number_prompt},
     "Horizontal Hydr. Conductivity [L/T]",
     "",
     positive,
     zones,
     any},
    {{9, 64},
     two,
     {"Vertical Hydr. Conductivity [L/T]:", number_prompt},
     "Vertical Hydr. Conductivity [L/T]",
     "",
     positive,
     zones,
     any},
    {{51, 67},
     two,
     {"Vertical Leakance [1/T]:", number_prompt},
     "Vertical Leakance [1/T]",
     "",
     positive,
     zones,
     any},
    {{7, 65},
     two,
     {"Specific Storage [1/L]:", number_prompt},
     "Specific Storage [1/L]",
     "",
     positive,
     zones,
     any},
    {{62, 69},
     two,
     {"Specific Yield [-]:", number_prompt},
     "Specific Yield [-]",
     "",
     positive,
     zones,
     any},
    {{61, 68},
     two,
     {"Storage Coefficient [-]:", number_prompt},
     "Storage Coefficient [-]",
     "",
     positive,
     zones,
     any},
    {{60, 66},
     two,
     {"Transmissivity [L^2/T]:", number_prompt},
     "Transmissivity [L^2/T]",
     "",
     positive,
     zones,
     any},
    {{10},
     one,
     {"Initial Hydraulic Head [m]:"},
     "Initial Hydraulic Heads",
     "",
     any_value,
     zones,
     any},
    {{11, 299},
     two,
     {"Flow Rate of the Well [m³/s]:", "Temperature [°C]:"},
     "Wells",
     "Use negative values for discharge wells",
     any_value,
     no_zones,
     any},
    {{83}, one, {"Presentation [-]:"}, "Presentation", "", any_value, zones, any},
    {{97}, one, {"Z-Value:"}, "Digitizer", "", any_value, no_zones, any},
    {{1401},
     one,
     {"Permeability [m²]:"},
     "Permeability",
     "Enter vertical Permeability",
     positive,
     zones,
     any},
    {{1402}, one, {"Temperature [°C]:"}, "Temperature", "", any_value, zones, any},
    {{1403}, one, {"Property Zones:"}, "Property Zones", "", any_value, zones, any},
    {{1404},
     one,
     {"Fluids Distribution:"},
     "Fluids Distribution",
     "Formation Water = 1 / Solution Number = 2-6",
     any_value,
     zones,
     any},
    {{1405},
     one,
     {"Thermal Boundary Condition:"},
     "Thermal Boundary Condition",
     "TEMP = -1 / NO FLOW = 1 / WSD = 2 (Constant heat flow, top and bottom only)",
     any_value,
     zones,
     any},
    {{1406},
     one,
     {"Tracer [No.]:"},
     "Tracer",
     "no Tracer = 0 / active Tracer = 1-5",
     any_value,
     zones,
     any},
    {{1407},
     one,
     {"Top / Bottom - Recharge [m/s = m³/(m²*s)]:"},
     "Top / Bottom - Recharge",
     "Can be defined for Top / Bottom boundaries only",
     any_value,
     zones,
     any},
    {{1433},
     one,
     {"Left / Right - Recharge [m/s = m³/(m²*s)]:"},
     "Left / Right - Recharge",
     "Can be defined for Left / Right boundaries only",
     any_value,
     zones,
     any},
    {{1432},
     one,
     {"Front / Back - Recharge [m/s = m³/(m²*s)]:"},
     "Front / Back - Recharge",
     "Can be defined for Front / Back boundaries only",
     any_value,
     zones,
     any},
    {{1408, 1409, 1410},
     three,
     {"Flow Velocity in x-direction [m/s]:", "Flow Velocity in y-direction [m/s]:",
      "Flow Velocity in z-direction [m/s]:"},
     "Prescribed Flow",
     "Add values for Vx / Vy / Vz",
     any_value,
     zones,
     any},
    {{1431}, one, {"Internal Surface [m²/m³]:"}, "Internal Surface", "", any_value, zones, any},
    {{1434},
     one,
     {"Ice Content [-]:"},
     "Ice Content",
     "Ratio of effective Porosity filled with Ice",
     any_value,
     zones,
     any},
    {{1435}, one, {"Solidus Temperature [°C]:"}, "Solidus Temperature", "", any_value, zones, any},
    {{1436},
     one,
     {"Liquidus Temperature [°C]:"},
     "Liquidus Temperature",
     "",
     any_value,
     zones,
     any},
    {{1437},
     one,
     {"Constant Heat Flow [W/m²]:"},
     "Constant Heat Flow",
     "At Model Top and Bottom ONLY!",
     any_value,
     zones,
     any},
};

constexpr WorksheetCommand commands[] = {
    {"grid_top_of_layers", 3},
    {"grid_bottom_of_layers", 4},
    {"mnuChemistryMineral", 1403},
    {"Parameters_Starting_heads", 10},
    {"grid_ibound", 5},
    {"mnuFluidFlowTemp", 1402},
    {"parameters_h_conductivity", 8},
    {"Parameters_v_conductivity", 9},
    {"Parameters_Specific_Storage", 7},
    {"parameters_transmissivity", 60},
    {"parameters_leakance", 51},
    {"Parameters_Storage_Coefficient", 61},
    {"Parameters_Specific_Yield", 62},
    {"Parameters_effective_porosity", 6},
    {"mnuParametersPermeability", 1401},
    {"mnuFluidFlowPrescribedFlow", 1408},
    {"mnuFluidFlowRechargeTB", 1407},
    {"mnuFluidFlowRechargeVH", 1432},
    {"mnuFluidFlowRechargeLR", 1433},
    {"packages_wel1", 11},
    {"mnuHeatTemperature", 1402},
    {"mnuHeatBoundary", 1405},
    {"mnuHeatPermafrostIce", 1434},
    {"mnuHeatPermafrostSolidus", 1435},
    {"mnuHeatPermafrostLiquidus", 1436},
    {"mnuHeatBasal", 1437},
    {"mnuHeatWell", 11},
    {"mnuInitTracer", 1406},
    {"grid_icbund", 40},
    {"mnuChemistrySurface", 1431},
    {"mnuChemistryFluidsDistribution", 1404},
    {"run_digitizer", 97},
    {"Tools_presentation", 83},
};

constexpr int property_zones = 1403;
constexpr int before_minerals = 1410, mineral_count = 20;
constexpr int before_tracers = 1440, tracer_count = 5;

std::string without_colon(std::string text) {
    if (text.ends_with(':')) {
        text.pop_back();
    }
    return text;
}

EditRequest request_of(const RequestRow& row) {
    EditRequest request;
    request.Parameter_List = row.numbers;
    request.Value_Kind = row.Value_Kind;
    for (std::size_t i = 0; i < row.prompts.size(); ++i) {
        request.prompts[i] = row.prompts[i] == nullptr ? "" : row.prompts[i];
    }
    request.Edit_Caption = row.Edit_Caption;
    request.window_caption = without_colon(request.prompts[0]);
    request.Prompt_Line = row.Prompt_Line;
    request.positive = row.positive;
    request.Zones_Allowed = row.Zones_Allowed;
    if (row.numbers[0] == property_zones) {
        request.Prompt_Line = fmt::format("Property Zones 1-{}", sim::PropertyZonesMax);
    }
    return request;
}

bool holds_for(Stacking stacking, int GridOrientation) {
    const bool section = GridOrientation == core::vertical || GridOrientation == core::cylindrical;
    return stacking == any || (stacking == cross_section) == section;
}

bool is_one_of(int number, int before, int count) {
    return number > before && number <= before + count;
}

base::Refusal error(std::string text) {
    return {"Error", std::move(text), base::Icon::warning};
}

} // namespace

std::span<const RequestRow> request_rows() {
    return rows;
}

std::span<const WorksheetCommand> worksheet_commands() {
    return commands;
}

int EditRequest::Array_Count() const {
    return static_cast<int>(std::ranges::count_if(Parameter_List, [](int n) { return n != 0; }));
}

int EditRequest::number(int k) const {
    if (k < 1 || k > Array_Count()) {
        throw base::RangeFailure(
            fmt::format("array {} of an item is outside 1 to {}", k, Array_Count()));
    }
    return Parameter_List[static_cast<std::size_t>(k - 1)];
}

float EditRequest::default_value(int k) const {
    return Value_Kind == two && k == 2 ? 0 : core::parameter_default(number(k));
}

int EditRequest::zone_number() const {
    return Current_Parameter() + core::zone_offset;
}

bool EditRequest::edits(int number) const {
    return number != 0 && std::ranges::find(Parameter_List, number) != Parameter_List.end();
}

std::optional<base::Refusal> EditRequest::value_refusal(int k, float value) const {
    if (k == 1 && positive && !(value > 0)) {
        return error("Please enter a positive value.");
    }
    const float kept = kept_value(value);
    if (number(k) == property_zones && (kept < 1 || kept > float(sim::PropertyZonesMax))) {
        return error(fmt::format("Please enter a value between 1 and {}.", sim::PropertyZonesMax));
    }
    return std::nullopt;
}

float EditRequest::kept_value(float value) const {
    return Current_Parameter() == property_zones ? std::nearbyint(value) : value;
}

std::optional<EditRequest> find_request(int number, int GridOrientation) {
    for (const RequestRow& row : rows) {
        if (row.numbers[0] == number && holds_for(row.stacking, GridOrientation)) {
            return request_of(row);
        }
    }
    if (is_one_of(number, before_minerals, mineral_count)) {
        return distribution_request(number, fmt::format("Mineral {}", number - before_minerals));
    }
    if (is_one_of(number, before_tracers, tracer_count)) {
        return distribution_request(number, fmt::format("Tracer {}", number - before_tracers));
    }
    return std::nullopt;
}

std::optional<EditRequest> find_request_with(int number, int GridOrientation) {
    for (const RequestRow& row : rows) {
        if (std::ranges::find(row.numbers, number) != row.numbers.end() &&
            holds_for(row.stacking, GridOrientation)) {
            return request_of(row);
        }
    }
    return find_request(number, GridOrientation);
}

EditRequest distribution_request(int number, std::string_view name) {
    EditRequest request;
    request.Parameter_List = {number};
    request.prompts[0] = fmt::format("Initial {} Distribution [mol/m³]:", name);
    request.Edit_Caption = fmt::format("{} Distribution", name);
    request.window_caption = fmt::format("{} Distribution [mol/m³]", name);
    return request;
}

std::optional<base::Refusal> package_refusal(std::string_view package, float boundary) {
    static constexpr std::pair<std::string_view, const char*> titles[] = {
        {"drain", "Drain Package"},
        {"GHB", "General Head Boundary Package"},
        {"river", "River Package"},
    };
    const auto* const title =
        std::ranges::find(titles, package, &std::pair<std::string_view, const char*>::first);
    if (title == std::end(titles)) {
        throw base::RangeFailure(fmt::format("there is no package \"{}\"", package));
    }
    if (boundary > 0) {
        return std::nullopt;
    }
    return base::Refusal{title->second,
                         fmt::format("{} cell cannot be redefined as a {} cell.",
                                     boundary < 0 ? "A fixed head" : "An inactive", package),
                         base::Icon::warning};
}

} // namespace grid

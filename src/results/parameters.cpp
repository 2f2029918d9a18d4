#include "results/parameters.h"

#include "base/numbertext.h"
#include "base/textfile.h"
#include "results/streamreader.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

namespace results {

namespace {

constexpr std::array<FixedParameter, 9> fixed_table = {{
    {1, "TEMP", "# TEMP", "Temperature  [deg. C]", Conversion::none},
    {2, "PRES", "# PRES", "Pressure [MPa]", Conversion::absolute},
    {3, "POR", "# POR", "Porosity [-]", Conversion::absolute},
    {4, "PERM", "# PERM", "Permeability [m^2]", Conversion::absolute},
    {5, "DICHTE", "# DICHTE", "Density [kg/m^3]", Conversion::none},
    {6, "PHI", "# PHI", "Head [m]", Conversion::none},
    {7, "VX", "# VX", "Velocity (X) [m/day]", Conversion::per_day},
    {8, "VY", "# VY", "Velocity (Y) [m/day]", Conversion::per_day},
    {9, "VZ", "# VZ", "Velocity (Z) [m/day]", Conversion::per_day},
}};

struct Unit {
    const char* name;
    const char* text;
};

constexpr std::array<Unit, 12> unit_table = {{
    {"Pressure", " [MPa]"},
    {"Porosity", " [/]"},
    {"Density", " [kg/m³]"},
    {"Permeability", " [m²]"},
    {"Head", " [m]"},
    {"Velocity (X)", " [m/day]"},
    {"Velocity (Y)", " [m/day]"},
    {"Velocity (Z)", " [m/day]"},
    {"Temperature", " [°C]"},
    {"Hydraulic Conductivity", " [m/s]"},
    {"Thermal Conductivity", " [W/(m K)]"},
    {"Heat Conductivity", " [W/(m K)]"},
}};

constexpr std::string_view no_unit = " ";
constexpr std::string_view species_code = "CONC", mineral_code = "CONCM";
constexpr std::size_t listed_characters = 25;

std::string name_in(const std::vector<NamedBlock>& list, int number, std::string_view otherwise) {
    const auto found = std::ranges::find(list, number, &NamedBlock::number);
    return found != list.end() ? found->name : fmt::format("{} {}", otherwise, number);
}

// The block that a number or a name of the list means; 0 when there is none.
int block_number(std::string_view text, const std::vector<NamedBlock>& list) {
    const std::string_view wanted = base::trimmed(text);
    const bool is_number =
        !wanted.empty() && wanted.find_first_not_of("0123456789") == std::string_view::npos;
    if (is_number) {
        return base::leading_int32(wanted);
    }
    const auto found = std::ranges::find(list, wanted, &NamedBlock::name);
    return found != list.end() ? found->number : 0;
}

// "CONC" or "CONCM" and what stands behind its colon; nothing for other texts.
struct BlockText {
    std::string code;
    std::string_view which;
};

std::optional<BlockText> block_text(std::string_view text) {
    const std::size_t colon = text.find(':');
    const std::string code = base::upper(text.substr(0, colon));
    if (colon == std::string_view::npos || (code != species_code && code != mineral_code)) {
        return std::nullopt;
    }
    return BlockText{code, text.substr(colon + 1)};
}

} // namespace

std::span<const FixedParameter> fixed_parameters() {
    return fixed_table;
}

Parameter parameter_of(const FixedParameter& fixed) {
    return {fixed.code, fixed.keyword, fixed.label, fixed.conversion};
}

Parameter species_parameter(int number, const StreamNames& names) {
    Parameter parameter{std::string(species_code), numbered_key("# CONC", number),
                        name_in(names.species, number, "Species"), Conversion::none};
    if (names.shown_as_pH(number)) {
        parameter.conversion = Conversion::pH;
    } else {
        parameter.label += " [mmol/L]";
    }
    return parameter;
}

Parameter mineral_parameter(int number, const StreamNames& names) {
    return {std::string(mineral_code), numbered_key("# CONCM", number),
            name_in(names.mineral_blocks, number, "Mineral") + " [mol/m^3]", Conversion::none};
}

Parameter other_parameter(std::string_view name) {
    return {std::string(name), "# " + base::upper(name), fmt::format("Other Parameter - {}", name),
            Conversion::none};
}

bool names_a_block(std::string_view text) {
    return block_text(text).has_value();
}

std::optional<Parameter> resolve_parameter(std::string_view text, const StreamNames& names) {
    if (const auto block = block_text(text)) {
        const bool is_mineral = block->code == mineral_code;
        const int number =
            block_number(block->which, is_mineral ? names.mineral_blocks : names.species);
        Parameter parameter =
            is_mineral ? mineral_parameter(number, names) : species_parameter(number, names);
        return parameter.keyword.empty() ? std::nullopt : std::optional(parameter);
    }
    const std::string keyword = base::upper(base::trimmed(text));
    const auto fixed = std::ranges::find(fixed_table, std::string_view(keyword),
                                         [](const FixedParameter& f) { return f.code; });
    return fixed != fixed_table.end() ? parameter_of(*fixed) : other_parameter(keyword);
}

std::vector<std::string> available_parameters(StreamReader& stream) {
    std::vector<std::string> list;
    bool listing = false;
    stream.rewind();
    while (const auto key = stream.next_key()) {
        listing = listing || key->starts_with("# GEOLOGY") || key->starts_with("# PRES");
        if (listing) {
            const std::string_view name =
                base::trimmed(std::string_view(*key).substr(std::min<std::size_t>(2, key->size())));
            list.push_back(base::first_characters(name, listed_characters));
        }
    }
    return list;
}

std::string GetDimension(std::string_view display_name, const StreamNames& names) {
    const auto unit = std::ranges::find(unit_table, display_name,
                                        [](const Unit& u) { return std::string_view(u.name); });
    if (unit != unit_table.end()) {
        return unit->text;
    }
    if (display_name == "pe" || display_name == "PH") {
        return std::string(no_unit);
    }
    const auto species = std::ranges::find(names.species, display_name, &NamedBlock::name);
    if (species == names.species.end()) {
        return "";
    }
    return species->number <= names.components ? " [mmol/L]" : " [mol/m³]";
}

} // namespace results

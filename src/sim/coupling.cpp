#include "sim/coupling.h"

#include "base/numbertext.h"
#include "base/textfile.h"
#include "core/modelfiles.h"
#include "core/notes.h"
#include "core/project.h"
#include "sim/fieldvalue.h"
#include "sim/typfile.h"

#include <algorithm>

namespace sim {

namespace {

using core::FieldInfo;
using core::FieldKind;

constexpr const char* laws[] = {
    "Fractal Kozeny-Carman law",
    "Deposition on spheres in rhombohedral packing (Weir and White 1996)",
    "Blake-Kozeny: packed columns and matrix acidizing in hydrocarbon wells (McCume et al. 1979)",
    "Blake-Kozeny: for mixture of K-feldspar, gibbsite, kaolinite, and muscovite (Lichtner 1996)",
    "Kozeny-Stein: precipitation of silica near injection well (Itoi et al. 1987)",
    "Matrix acidizing in limestone (Schechter and Gidley 1969)",
};
constexpr std::string_view law_letters = "UWBLHS";
constexpr int law_count = int(law_letters.size());

constexpr FieldInfo field_table[] = {
    {"CompleteCheck", FieldKind::check, "Full coupling", {}, "", "0"},
    {"FlowHeatCheck", FieldKind::check, "Flow && Heat Transport", {}, "", "0"},
    {"FlowTransportCheck", FieldKind::check, "Density = f (concentration)", {}, "", "0"},
    {"FlowChemistryCheck",
     FieldKind::check,
     "Flow && Chemical Reactions (Permeability - Porosity Coupling)",
     {},
     "",
     "0"},
    {"PermeabilityLaw", FieldKind::choice, "", laws, "", "0"},
    {"HeatConductivityCheck",
     FieldKind::check,
     "Rock Thermal Properties = f (temperature)",
     {},
     "",
     "0"},
    {"txtA0", FieldKind::number, "A0", {}, "", "800.0"},
    {"txtA1", FieldKind::number, "A1", {}, "", "1.8"},
    {"txtA2", FieldKind::number, "A2", {}, "", "-0.0025"},
    {"txtDensity", FieldKind::number, "Rock density", {}, "kg/m³", "2400"},
    {"Exp1", FieldKind::number, "f1 (porosity  0 - 1%):", {}, "", "1.0"},
    {"Exp2", FieldKind::number, "f2 (porosity  1 - 10%):", {}, "", "2.0"},
    {"Exp3", FieldKind::number, "f3 (porosity 10  - 100%):", {}, "", "10.0"},
    {"CritPor", FieldKind::number, "Critical porosity [-]:", {}, "", ""},
    {"chkWaterDensity", FieldKind::check, "Density", {}, "", "0"},
    {"txtPropValDensity", FieldKind::number, "Density", {}, "kg/m³", "998.0"},
    {"chkWaterConduct", FieldKind::check, "Thermal conductivity", {}, "", "0"},
    {"txtPropValConduct", FieldKind::number, "Thermal conductivity", {}, "W/(m K)", "0.61"},
    {"chkWaterCompress", FieldKind::check, "Compressibility", {}, "", "0"},
    {"txtPropValCompress", FieldKind::number, "Compressibility", {}, "1/Pa", "4.5E-10"},
    {"chkWaterCapacity", FieldKind::check, "Thermal capacity", {}, "", "0"},
    {"txtPropValCapacity", FieldKind::number, "Thermal capacity", {}, "J/(kg K)", "4179.0"},
    {"chkWaterViscosity", FieldKind::check, "Viscosity", {}, "", "0"},
    {"txtPropValViscosity", FieldKind::number, "Viscosity", {}, "Pa s", "8.9E-04"},
};

constexpr std::string_view coupling_checks[] = {"FlowHeatCheck", "FlowTransportCheck",
                                                "FlowChemistryCheck", "HeatConductivityCheck"};

// Line 2 of .typ behind KOPLNG, in the order of its "#" marks.
constexpr const char* rock_heat_fields[] = {"txtA0", "txtA1", "txtA2", "txtDensity"};

constexpr std::string_view heat_group[] = {"txtA0", "txtA1", "txtA2", "txtDensity"};
constexpr std::string_view law_group[] = {"PermeabilityLaw", "Exp1", "Exp2", "Exp3", "CritPor"};

bool in_group(std::span<const std::string_view> group, std::string_view name) {
    return std::ranges::find(group, name) != group.end();
}

const char* initial_of(std::string_view name) {
    for (const FieldInfo& field : field_table)
        if (field.name == name)
            return field.initial;
    return "";
}

} // namespace

char law_letter(int index) {
    return law_letters[std::size_t(std::clamp(index, 0, law_count - 1))];
}

int law_index(char letter) {
    const std::size_t at = law_letters.find(letter);
    return at == std::string_view::npos ? 0 : int(at);
}

Coupling::Coupling() {
    reset_fields();
}

std::span<const FieldInfo> Coupling::fields() const {
    return field_table;
}

void Coupling::load(const core::Project& project, const core::ModelFiles& files) {
    reset_fields();
    const TypFile typ_file = TypFile::load(files);
    load_checks(typ_file.KOPLNG());
    int mark = 1;
    for (const char* field : rock_heat_fields)
        if (const auto piece = piece_behind_hash(typ_file.line(typ::KOPLNG), mark++))
            put(field, *piece);
    const std::string& line3 = typ_file.line(typ::f1);
    put("Exp1", base::trimmed(std::string_view(line3).substr(0, line3.find('#'))));
    put("CritPor", piece_behind_hash(line3, 1).value_or(""));
    put("Exp2", typ_file.line(typ::f2));
    put("Exp3", typ_file.line(typ::f3));
    load_water(project, files);
}

void Coupling::load_checks(std::string_view KOPLNG) {
    std::string letters(KOPLNG);
    letters.resize(4, '-');
    put("FlowHeatCheck", check_text(letters[0] == 'C'));
    put("FlowTransportCheck", check_text(letters[1] == 'O'));
    put("FlowChemistryCheck", check_text(law_letters.find(letters[2]) != std::string_view::npos));
    put("PermeabilityLaw", std::to_string(law_index(letters[2])));
    put("HeatConductivityCheck", check_text(letters[3] == 'P'));
    put("CompleteCheck", check_text(all_coupled()));
}

void Coupling::load_water(const core::Project& project, const core::ModelFiles& files) {
    const core::Notes notes(files);
    int cell = 0;
    for (const WaterProperty& property : water_properties) {
        put(property.check_field, check_text(project.flags(10, cell++) == 1));
        const std::string stored = notes.get("koppx", property.name);
        if (const auto text = base::trimmed(stored); !text.empty())
            put(property.value_field, text);
    }
}

bool Coupling::all_coupled() const {
    return std::ranges::all_of(coupling_checks,
                               [this](std::string_view name) { return checked(name); });
}

bool Coupling::enabled(std::string_view name) const {
    if (in_group(heat_group, name))
        return checked("HeatConductivityCheck");
    if (in_group(law_group, name))
        return checked("FlowChemistryCheck");
    for (const WaterProperty& property : water_properties)
        if (name == property.value_field)
            return checked(property.check_field);
    return true;
}

std::vector<core::Notice> Coupling::changed(std::string_view name) {
    if (name == "CompleteCheck" && checked(name))
        for (std::string_view check : coupling_checks)
            put(check, "1");
    if (in_group(coupling_checks, name))
        put("CompleteCheck", check_text(all_coupled()));
    const bool law_term = name == "txtA1" || name == "txtA2";
    if (!law_term || base::leading_number(get(name)) == base::leading_number(initial_of(name)))
        return {};
    return {{base::Icon::warning, "Changing Default Value",
             "Values other than 0 are only safe when the temperatures within the model domain do "
             "not exceed the valid range."}};
}

std::string Coupling::KOPLNG() const {
    const char law = law_letter(choice_index(*this, "PermeabilityLaw", law_count));
    return {checked("FlowHeatCheck") ? 'C' : '-', checked("FlowTransportCheck") ? 'O' : '-',
            checked("FlowChemistryCheck") ? law : '-',
            checked("HeatConductivityCheck") ? 'P' : '-'};
}

void Coupling::save(core::Project& project, core::ModelFiles& files) {
    TypFile typ_file = TypFile::load(files);
    std::string line2 = KOPLNG();
    for (const char* field : rock_heat_fields)
        line2 += " # " + get(field);
    typ_file.set_line(typ::KOPLNG, line2);
    typ_file.set_line(typ::f1, get("Exp1") + " # " + get("CritPor"));
    typ_file.set_line(typ::f2, get("Exp2"));
    typ_file.set_line(typ::f3, get("Exp3"));
    typ_file.save(files);
    save_water(project, files);
    project.flags.mark_defined(9, 1);
    project.flags.mark_edited();
}

void Coupling::save_water(core::Project& project, core::ModelFiles& files) const {
    core::Notes notes(files);
    int cell = 0;
    for (const WaterProperty& property : water_properties) {
        project.flags.set(10, cell++, checked(property.check_field));
        notes.set("koppx", property.name, "\t" + get(property.value_field));
    }
    notes.save(files);
}

} // namespace sim

#include "sim/continua.h"

#include "base/numbertext.h"
#include "core/modelfiles.h"
#include "core/notes.h"
#include "core/project.h"
#include "sim/fieldvalue.h"

#include <algorithm>

#include <fmt/format.h>

namespace sim {

namespace {

using core::FieldInfo;
using core::FieldKind;

constexpr const char* section = "BOX";
constexpr const char* no_zones = "-";
constexpr std::string_view letters = "ABCD";
constexpr std::size_t systems = Boxmodel::system_count;

// A property of the four systems, by its key and its control.
struct Property {
    const char* key;
    const char* field;
    std::array<std::string, systems> Boxmodel::*texts;
};
constexpr Property properties[] = {
    {"Dens_", "txtDens", &Boxmodel::density},
    {"Apert_", "txtApert", &Boxmodel::aperture},
    {"Tort_", "txtTort", &Boxmodel::tortuosity},
};

constexpr FieldInfo field_table[] = {
    {"chkBox", FieldKind::check, "Multiple Continua", {}, "", "0"},
    {"txtPropZones", FieldKind::text, "Property Zones", {}, "", no_zones},
    {"txtDensA", FieldKind::number, "Fracture density A", {}, "1/m", ""},
    {"txtDensB", FieldKind::number, "Fracture density B", {}, "1/m", ""},
    {"txtDensC", FieldKind::number, "Fracture density C", {}, "1/m", ""},
    {"txtDensD", FieldKind::number, "Fracture density D", {}, "1/m", ""},
    {"txtApertA", FieldKind::number, "Fracture aperture A", {}, "m", ""},
    {"txtApertB", FieldKind::number, "Fracture aperture B", {}, "m", ""},
    {"txtApertC", FieldKind::number, "Fracture aperture C", {}, "m", ""},
    {"txtApertD", FieldKind::number, "Fracture aperture D", {}, "m", ""},
    {"txtTortA", FieldKind::number, "Tortuosity A", {}, "", ""},
    {"txtTortB", FieldKind::number, "Tortuosity B", {}, "", ""},
    {"txtTortC", FieldKind::number, "Tortuosity C", {}, "", ""},
    {"txtTortD", FieldKind::number, "Tortuosity D", {}, "", ""},
};

std::string name_of(const char* stem, std::size_t system) {
    return std::string(stem) + letters[system];
}

std::string aperture_text(std::string_view typed) {
    return base::masked(base::leading_number(typed), "0.000E+00");
}

std::string shown(double value) {
    return base::masked(value, "0.00E+00");
}

} // namespace

Boxmodel Boxmodel::load(const core::ModelFiles& files) {
    const core::Notes notes(files);
    Boxmodel box;
    box.active = notes.get(section, "active");
    const std::string zones = notes.get(section, "P_Zones");
    box.P_Zones = zones.empty() ? no_zones : zones;
    for (const Property& property : properties)
        for (std::size_t i = 0; i < systems; ++i)
            (box.*property.texts)[i] = notes.get(section, name_of(property.key, i));
    return box;
}

void Boxmodel::save(core::ModelFiles& files) const {
    Boxmodel stored = *this;
    std::ranges::transform(aperture, stored.aperture.begin(), aperture_text);
    core::Notes notes(files);
    notes.set(section, "active", active);
    notes.set(section, "P_Zones", P_Zones.empty() ? no_zones : P_Zones);
    for (const Property& property : properties)
        for (std::size_t i = 0; i < systems; ++i)
            notes.set(section, name_of(property.key, i), (stored.*property.texts)[i]);
    notes.save(files);
}

std::vector<int> parse_zone_list(std::string_view list) {
    std::vector<int> zones;
    std::string digits;
    const auto end_number = [&] {
        if (!digits.empty())
            zones.push_back(base::leading_int32(digits));
        digits.clear();
    };
    for (const char c : list) {
        if (c >= '0' && c <= '9')
            digits += c;
        else if (c == ',')
            end_number();
    }
    end_number();
    return zones;
}

FractureProperties calculated_properties(const Boxmodel& box) {
    FractureProperties result;
    std::array<double, systems> permeability{};
    for (std::size_t i = 0; i < systems; ++i) {
        const double N = base::leading_number(box.density[i]);
        const double b = base::leading_number(box.aperture[i]);
        const double T = base::leading_number(box.tortuosity[i]);
        const double porosity = T == 0 ? 0 : N * b;
        permeability[i] = T == 0 ? 0 : (b / T) * (b / T) * porosity / (T * 8);
        result.porosity[i] = shown(porosity);
        result.permeability[i] = shown(permeability[i]);
    }
    for (std::size_t i = 0; i + 1 < systems; ++i) {
        const double N = base::leading_number(box.density[i + 1]);
        const double smaller = permeability[i + 1];
        result.exchange[i] = shown(smaller == 0 ? 0 : permeability[i] / smaller * N);
    }
    return result;
}

BoxmodelForm::BoxmodelForm() {
    reset_fields();
}

std::span<const FieldInfo> BoxmodelForm::fields() const {
    return field_table;
}

void BoxmodelForm::load(const core::Project&, const core::ModelFiles& files) {
    reset_fields();
    const Boxmodel stored = Boxmodel::load(files);
    put("chkBox", check_text(base::leading_int32(stored.active) >= 1));
    put("txtPropZones", stored.P_Zones);
    for (const Property& property : properties)
        for (std::size_t i = 0; i < systems; ++i)
            put(name_of(property.field, i), (stored.*property.texts)[i]);
}

Boxmodel BoxmodelForm::box() const {
    Boxmodel box;
    box.active = get("chkBox");
    box.P_Zones = get("txtPropZones");
    for (const Property& property : properties)
        for (std::size_t i = 0; i < systems; ++i)
            (box.*property.texts)[i] = get(name_of(property.field, i));
    return box;
}

void BoxmodelForm::save(core::Project& project, core::ModelFiles& files) {
    box().save(files);
    project.flags.mark_edited();
}

core::Notice BoxmodelForm::calculated() const {
    const FractureProperties properties_of_box = calculated_properties(box());
    std::string text;
    for (std::size_t i = 0; i < systems; ++i)
        text += fmt::format("System {}\nPorosity = {}\nPermeability = {}\n\n", letters[i],
                            properties_of_box.porosity[i], properties_of_box.permeability[i]);
    for (std::size_t i = 0; i + 1 < systems; ++i)
        text += fmt::format("Exchange parameter {}-{} (m²) = {}\n", letters[i], letters[i + 1],
                            properties_of_box.exchange[i]);
    text += "\nExchange coefficients calculated based on\n"
            "permeability ratio, fracture density of the smaller system\n"
            "and unity cell length.";
    return {base::Icon::information, "Calculated permeability and porosity", text};
}

} // namespace sim

// The dialog "Process Coupling": which processes act on each other, and by which laws.
#pragma once

#include "core/form.h"

#include <array>
#include <string>

namespace sim {

// The field PermeabilityLaw holds the index of the permeability-porosity law in the order of the
// dialog; its letters in KOPLNG are "U", "W", "B", "L", "H", "S".
char law_letter(int index);
// Index of a letter; that of "U", the fractal law, for everything else.
int law_index(char letter);

// Water properties that can be kept constant. Flag (10, n) and a key of section "koppx" of the
// notes each, in this order; the fields are chkWater and txtPropVal, followed by the name.
struct WaterProperty {
    const char* name;
    const char* check_field;
    const char* value_field;
    const char* initial;
};
inline constexpr std::array<WaterProperty, 5> water_properties = {{
    {"Density", "chkWaterDensity", "txtPropValDensity", "998.0"},
    {"Conduct", "chkWaterConduct", "txtPropValConduct", "0.61"},
    {"Compress", "chkWaterCompress", "txtPropValCompress", "4.5E-10"},
    {"Capacity", "chkWaterCapacity", "txtPropValCapacity", "4179.0"},
    {"Viscosity", "chkWaterViscosity", "txtPropValViscosity", "8.9E-04"},
}};

// Stored in lines 2 to 5 of .typ, in the notes and in ModelFlags.
//
// CompleteCheck stands for all four couplings: switching it on switches them on, it is on once they
// all are, and clearing one of them clears it. Clearing it leaves them to be chosen one by one.
class Coupling final : public core::Form {
public:
    Coupling();

    std::span<const core::FieldInfo> fields() const override;
    void load(const core::Project& project, const core::ModelFiles& files) override;
    bool enabled(std::string_view name) const override;
    void save(core::Project& project, core::ModelFiles& files) override;

    // The four letters that the checks and the law stand for.
    std::string KOPLNG() const;

protected:
    std::vector<core::Notice> changed(std::string_view name) override;

private:
    void load_checks(std::string_view KOPLNG);
    void load_water(const core::Project& project, const core::ModelFiles& files);
    void save_water(core::Project& project, core::ModelFiles& files) const;
    bool all_coupled() const;
};

} // namespace sim

// Settings of a single value: reference density, heat flow, heat production, re-injection.
#pragma once

#include "core/form.h"

#include <string>

namespace core {
class ModelFlags;
}

namespace sim {

// The dialog of Flow, Reference Density; stored in line 20 of .typ.
//
// Check1 switches a density of the user's own on, Text1 is that density. Without it, or with an
// empty text, 998.0 is stored; a stored 998.0 shows as off.
class RefDens final : public core::Form {
public:
    RefDens();

    std::span<const core::FieldInfo> fields() const override;
    void load(const core::Project& project, const core::ModelFiles& files) override;
    bool enabled(std::string_view name) const override;
    void save(core::Project& project, core::ModelFiles& files) override;
};

enum class HeatConstant {
    basal_heat_flow,       // W/m2, line 17 of .typ
    fluid_heat_production, // W/m3, line 18 of .typ
};

// The dialogs "Basal Heat Flow" and "Fluid Heat Production"; the field is Value.
class HeatConstantForm final : public core::Form {
public:
    explicit HeatConstantForm(HeatConstant constant);

    const char* title() const;
    std::span<const core::FieldInfo> fields() const override;
    void load(const core::Project& project, const core::ModelFiles& files) override;
    void save(core::Project& project, core::ModelFiles& files) override;

private:
    HeatConstant constant_;
};

// The menu switch "Re-inject Produced Water", ModelFlags(1,1). Switching marks the model as edited.
bool reinjects_produced_water(const core::ModelFlags& flags);
void reinject_produced_water(core::ModelFlags& flags, bool on);

} // namespace sim

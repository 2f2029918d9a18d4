// The dialog "Definition of Simulation Type": which processes run, with which advection scheme.
#pragma once

#include "core/form.h"

#include <string>

namespace sim {

// The fields HeatAdvection and TransportAdvection hold the index of the scheme in the order of the
// dialog: 0 Upwind, 1 Scheme 5, 2 Il'in, 3 Central Diff., 4 Smolarkiewicz.
// Letter of KEY for such an index: "U", "5", "I", "Z", "S".
char scheme_letter(int index);
// Index of a letter of KEY; that of Upwind for "-" and everything else.
int scheme_index(char letter);

// Stored in line 1 of .typ and in ModelFlags. Switches are taken from the flags, schemes from KEY.
//
// FlowType: 0 Simulated, 1 Prescribed. ReactionType: 0 Equilibrium, 1 Kinetic. optActivity: the
// number of the chemistry model, 0 to 5.
class SimulationType final : public core::Form {
public:
    SimulationType();

    std::span<const core::FieldInfo> fields() const override;
    void load(const core::Project& project, const core::ModelFiles& files) override;
    // A cleared process disables its options; what they show is kept all the same.
    bool enabled(std::string_view name) const override;
    // Transport needs another process beside it.
    std::optional<base::Refusal> check() const override;
    void save(core::Project& project, core::ModelFiles& files) override;

    // The five letters that the fields stand for.
    std::string KEY() const;

private:
    void save_flags(core::Project& project) const;
};

} // namespace sim

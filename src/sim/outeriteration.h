// The dialog "OutIter": the outer iteration over flow, heat and transport.
#pragma once

#include "core/form.h"

namespace sim {

// Stored in section "PICARD" of the model's notes.
//
// txtIteration is empty until it is stored, and so is sldProjCoeff, which holds the projection
// coefficient itself ("0.3"); a slider shows it by tenth_position() and sets it by tenth_text().
// The transport limit is saved as TransportLimit but read, here and for the input file, as
// TransLimit: a limit typed in is not shown again, and a TransLimit that is there stays.
class OutIter final : public core::Form {
public:
    OutIter();

    std::span<const core::FieldInfo> fields() const override;
    void load(const core::Project& project, const core::ModelFiles& files) override;
    // The iteration that is not active has no settings to edit.
    bool enabled(std::string_view name) const override;
    void save(core::Project& project, core::ModelFiles& files) override;

    // False while the model holds no choice: chkPicard is then "0", but the simulator gets its own
    // default, an active iteration.
    bool active_stored() const { return active_stored_; }

private:
    bool active_stored_ = false;
};

} // namespace sim

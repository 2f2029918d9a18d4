// The dialogs of the three solvers: time weighting, relaxation, convergence and solver options.
#pragma once

#include "core/form.h"
#include "core/modelflags.h"

#include <array>
#include <string>

namespace sim {

enum class Solver : int { none = 0, NAG = 1, BiCGStab = 2, PLU = 3 };

// Flow, heat and transport have a code each, SolverControlFlow, SolverControlHeat and
// SolverControlTransport: solver + 16 * preconditioner + 256 * termination.
struct SolverCode {
    static constexpr int preconditioner_end = 15;
    static constexpr int termination_end = 127;

    int solver = 0;
    int preconditioner = 0;
    int termination = 0;

    // A negative code, which no dialog writes, counts as 0.
    static SolverCode decode(int code);
    // Indices are moved into their ranges.
    int code() const;
};

// The solver that was saved last; none in a new model.
Solver chosen_solver(const core::ModelFlags& flags);

// The greatest relaxation that NAG takes in a grid of these extents: a third of the sum of
// (extent - 1) squared, as text cut one place behind the point. "1.0" for a single cell.
std::string relaxation_limit(int NX, int NY, int NZ);

// Explicit_Implicit (NAG), BiCGStab or PLU. Stored in lines 7 to 16 of .typ and in ModelFlags.
//
// FlowSlider, HeatSlider and TransportSlider go from 0 (explicit) to 10 (implicit). A stored weight
// between two positions stays as it is until its slider is moved. NAG has no preconditioner of its
// own and keeps the index of the stored code.
class SolverForm final : public core::Form {
public:
    explicit SolverForm(Solver solver);

    std::span<const core::FieldInfo> fields() const override;
    void load(const core::Project& project, const core::ModelFiles& files) override;
    bool enabled(std::string_view name) const override;
    // NAG alone limits the relaxation.
    std::optional<base::Refusal> check() const override;
    void save(core::Project& project, core::ModelFiles& files) override;

private:
    SolverCode new_code(int process) const;

    Solver solver_;
    std::array<SolverCode, 3> stored_; // flow, heat, transport
    std::string limit_ = "1.0";
};

} // namespace sim

// Tracers (<base>.ttc) and dispersion (<base>.tma), with their dialogs.
#pragma once

#include "core/form.h"

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace core {
class ModelFlags;
}

namespace sim {

struct Tracer {
    bool active = false;
    float concentration = 0; // mmol/L
    float betac = 0;         // kg/mol
};

struct TracerTable {
    static constexpr int row_count = 5;
    std::array<Tracer, row_count> rows; // tracer t at index t - 1

    // Up to five lines of tracer number, active mark, concentration and BetaC; empty lines do not
    // count, missing ones are inactive tracers. A tracer is active when its mark is -1. FileFailure
    // for a line that ends early and for a tracer number outside 1 to 5.
    static TracerTable read(std::string_view bytes, const std::filesystem::path& file);
    // Always five lines, their values in print zones.
    std::string bytes() const;
    // The model's table; five inactive tracers when there is no file.
    static TracerTable load(const core::ModelFiles& files);
    void save(core::ModelFiles& files) const;

    int ActiveTracers() const;
};

// Texts as typed.
struct Dispersion {
    std::string diffusion = "0.5";     // mantissa, in units of 1E-08 m2/s
    std::string transverse = "2.00";   // m
    std::string longitudinal = "2.00"; // m

    // The first line: the three texts in this order, separated by commas. FileFailure when there
    // are fewer than three.
    static Dispersion read(std::string_view bytes, const std::filesystem::path& file);
    // A comma inside a text ends it, as it does for every reader of numbers.
    std::string bytes() const;
    // The model's values; the defaults when there is no file.
    static Dispersion load(const core::ModelFiles& files);
    void save(core::ModelFiles& files) const;
};

// The dialog of Transport, Tracer. Rows are the tracers; the columns are Tracer (its number, for
// show only), Active ("1" or "0"), Concentration and BetaC.
class TracerForm final : public core::TableForm {
public:
    std::span<const core::FieldInfo> fields() const override { return {}; }
    void load(const core::Project& project, const core::ModelFiles& files) override;
    bool enabled(std::string_view name) const override;
    void save(core::Project& project, core::ModelFiles& files) override;

    std::span<const core::FieldInfo> columns() const override;
    int rows() const override { return TracerTable::row_count; }
    // A row or column that is not there is a RangeFailure.
    std::string cell(int row, std::string_view column) const override;
    // Nothing is refused; the tracer's number stays as it is.
    std::optional<base::Refusal> set_cell(int row, std::string_view column,
                                          std::string_view text) override;

    const TracerTable& table() const { return table_; }

private:
    TracerTable table_;
};

// Where the initial distribution of the tracers is taken from.
//
// The simulator's input uses the zones of tracer numbers when ModelFlags(2,13) is 2, the array of
// each tracer otherwise. Choosing a source therefore sets its own cell, (2,13) or (3,13), to 2 and
// that of the other source to 0: the definition that was saved last is used. The files of the other
// one stay, so that the choice can be turned back.
enum class TracerSource : int { zones = 0, arrays = 1 };

TracerSource tracer_source(const core::ModelFlags& flags);
void choose_tracer_source(core::ModelFlags& flags, TracerSource source);

// The choice of the source, index of TracerSource in the field Source. Warns when the model has the
// distribution in both forms.
class TracerIndividual final : public core::Form {
public:
    TracerIndividual();

    std::span<const core::FieldInfo> fields() const override;
    void load(const core::Project& project, const core::ModelFiles& files) override;
    void save(core::Project& project, core::ModelFiles& files) override;
    std::vector<core::Notice> saved_notices() const override;

private:
    bool defined_twice_ = false;
};

// The dialog of Transport, Dispersion / Diffusion.
class DiffDisp final : public core::Form {
public:
    DiffDisp();

    std::span<const core::FieldInfo> fields() const override;
    void load(const core::Project& project, const core::ModelFiles& files) override;
    void save(core::Project& project, core::ModelFiles& files) override;
};

} // namespace sim

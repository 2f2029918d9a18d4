// The period table of a model, <base>.trn, its exchange form, .tpr, and its dialog.
#pragma once

#include "core/form.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sim {

struct Period {
    bool active = false;
    double length = 1; // in the time unit of the table
    std::int32_t steps = 1;
    float monitoring_frequency = 1; // in steps
    float temperature_shift = 0;    // K
    std::int32_t max_transport_steps = 5000;
    float multiplier = 1;
};

// Sums over the active periods.
struct PeriodTotals {
    int periods = 0;
    std::int64_t steps = 0;
    double time = 0; // in the time unit of the table
};

struct PeriodTable {
    static constexpr int row_count = 100;
    static constexpr int unit_count = 6;

    PeriodTable() { rows[0].active = true; }

    int unit = 0; // 0 undefined, 1 seconds, 2 minutes, 3 hours, 4 days, 5 years
    std::array<Period, row_count> rows;

    // <base>.trn; FileFailure when the numbers end early. A period is active when its mark is -1.
    // A unit outside 0 to 5 counts as undefined, rows beyond 100 are left unread.
    static PeriodTable read(std::string_view bytes, const std::filesystem::path& file);
    std::string bytes() const;
    // The model's table; the defaults when there is no file.
    static PeriodTable load(const core::ModelFiles& files);
    void save(core::ModelFiles& files) const;

    // A time parameter file (.tpr): nothing when the first line is not its mark; FileFailure when
    // the numbers end early.
    static std::optional<PeriodTable> read_time_parameters(std::string_view bytes,
                                                           const std::filesystem::path& file);
    std::string time_parameters() const;

    PeriodTotals totals() const;
};

inline constexpr std::array<const char*, PeriodTable::unit_count> time_unit_names = {
    "undefined", "seconds", "minutes", "hours", "days", "years"};
const char* time_unit_name(int unit); // "undefined" for anything outside 1 to 5
double seconds_of_unit(int unit);     // 0 when undefined

// The dialog of Time, Periods. Rows are periods; the columns are Use ("1" or "0"), PeriodLength,
// TimeSteps, MonitoringFrequency, TemperatureShift, MaxTransportSteps and Multiplier.
//
// SimulationFlowType: 0 Steady-State, 1 Transient; the project holds one more as SIMULATION_MODE.
// SimulationTimeUnit: the unit of the table. AutoUpdate, which is not stored: a change from one
// unit to another converts the lengths of the active periods, so that they last as long as before.
class TemporalDiscretization final : public core::TableForm {
public:
    TemporalDiscretization();

    std::span<const core::FieldInfo> fields() const override;
    void load(const core::Project& project, const core::ModelFiles& files) override;
    std::optional<base::Refusal> check() const override;
    void save(core::Project& project, core::ModelFiles& files) override;

    std::span<const core::FieldInfo> columns() const override;
    int rows() const override { return PeriodTable::row_count; }
    // A row or column that is not there is a RangeFailure.
    std::string cell(int row, std::string_view column) const override;
    std::optional<base::Refusal> set_cell(int row, std::string_view column,
                                          std::string_view text) override;

    // Takes over the table of a time parameter file; the flow type stays. After a refusal or a
    // FileFailure the form is as before.
    std::optional<base::Refusal> load_time_parameters(std::string_view bytes,
                                                      const std::filesystem::path& file);

    const PeriodTable& table() const { return table_; }
    // The three texts of the status line: numbers of periods and steps, simulation time.
    std::vector<std::string> status_texts() const;

protected:
    std::vector<core::Notice> changed(std::string_view name) override;

private:
    void change_unit(int unit);

    PeriodTable table_;
};

} // namespace sim

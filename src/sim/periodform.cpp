// The dialog over the period table.
#include "sim/periods.h"

#include "base/failure.h"
#include "base/numbertext.h"
#include "core/modelfiles.h"
#include "core/project.h"
#include "sim/fieldvalue.h"

#include <array>
#include <iterator>

#include <fmt/format.h>

namespace sim {

namespace {

using core::FieldInfo;
using core::FieldKind;

constexpr const char* title = "Time Parameter";

constexpr const char* flow_types[] = {"Steady-State", "Transient"};

constexpr FieldInfo field_table[] = {
    {"SimulationFlowType", FieldKind::choice, "Simulation Flow Type", flow_types, "", "0"},
    {"SimulationTimeUnit", FieldKind::choice, "Simulation Time Unit", time_unit_names, "", "0"},
    {"AutoUpdate", FieldKind::check, "Auto Update Period Length"},
};

enum Column { use, length, steps, frequency, shift, transport_steps, multiplier };

constexpr FieldInfo column_table[] = {
    {"Use", FieldKind::check, "Use", {}, "", "0"},
    {"PeriodLength", FieldKind::number, "Period Length", {}, "", "1"},
    {"TimeSteps", FieldKind::number, "Time Steps", {}, "", "1"},
    {"MonitoringFrequency", FieldKind::number, "Monitoring Frequency", {}, "steps", "1"},
    {"TemperatureShift", FieldKind::number, "Temperature Shift", {}, "K", "0"},
    {"MaxTransportSteps", FieldKind::number, "Max. No. of Transport Steps", {}, "", "5000"},
    {"Multiplier", FieldKind::number, "Multiplier (Transport)", {}, "", "1"},
};

Column column_of(std::string_view name) {
    for (int i = 0; i < int(std::size(column_table)); ++i)
        if (name == column_table[i].name)
            return Column(i);
    throw base::RangeFailure(fmt::format("the period table has no column {}", name));
}

std::size_t row_index(int row) {
    if (row < 1 || row > PeriodTable::row_count)
        throw base::RangeFailure(fmt::format("period {} is not one of 1 to 100", row));
    return std::size_t(row - 1);
}

std::optional<base::Refusal> refuse_cell(int row, Column column, std::string_view text) {
    const double value = base::leading_number(text);
    if (column == use && row == 1 && value == 0)
        return base::Refusal{title, "The data of the first stress period must always be used!"};
    if (column == steps && base::leading_int32(text) >= 100000000)
        return base::Refusal{title, "The number of time steps must be < 100000000"};
    if (column == transport_steps && (base::leading_int32(text) < 1 || value > 2147483647.0))
        return base::Refusal{
            title, "Valid range of the maximum number of transport steps is 1 to 2147483647."};
    return std::nullopt;
}

void set_value(Period& period, Column target, std::string_view text) {
    switch (target) {
    case use:
        period.active = base::leading_number(text) != 0;
        break;
    case length:
        period.length = base::leading_number(text);
        break;
    case steps:
        period.steps = base::leading_int32(text);
        break;
    case frequency:
        period.monitoring_frequency = base::leading_single(text);
        break;
    case shift:
        period.temperature_shift = base::leading_single(text);
        break;
    case transport_steps:
        period.max_transport_steps = base::leading_int32(text);
        break;
    case multiplier:
        period.multiplier = base::leading_single(text);
        break;
    }
}

} // namespace

TemporalDiscretization::TemporalDiscretization() {
    reset_fields();
}

std::span<const FieldInfo> TemporalDiscretization::fields() const {
    return field_table;
}

std::span<const FieldInfo> TemporalDiscretization::columns() const {
    return column_table;
}

void TemporalDiscretization::load(const core::Project& project, const core::ModelFiles& files) {
    reset_fields();
    table_ = PeriodTable::load(files);
    put("SimulationFlowType", check_text(project.transient()));
    put("SimulationTimeUnit", std::to_string(table_.unit));
}

std::vector<core::Notice> TemporalDiscretization::changed(std::string_view name) {
    if (name == "SimulationTimeUnit")
        change_unit(choice_index(*this, name, PeriodTable::unit_count));
    return {};
}

void TemporalDiscretization::change_unit(int unit) {
    const double seconds = seconds_of_unit(table_.unit), new_seconds = seconds_of_unit(unit);
    if (checked("AutoUpdate") && seconds > 0 && new_seconds > 0)
        for (Period& period : table_.rows)
            if (period.active)
                period.length *= seconds / new_seconds;
    table_.unit = unit;
}

std::string TemporalDiscretization::cell(int row, std::string_view column) const {
    const Period& period = table_.rows[row_index(row)];
    switch (column_of(column)) {
    case use:
        return check_text(period.active);
    case length:
        return base::value_text(period.length);
    case steps:
        return std::to_string(period.steps);
    case frequency:
        return base::value_text(period.monitoring_frequency);
    case shift:
        return base::value_text(period.temperature_shift);
    case transport_steps:
        return std::to_string(period.max_transport_steps);
    case multiplier:
        return base::value_text(period.multiplier);
    }
    return {};
}

std::optional<base::Refusal> TemporalDiscretization::set_cell(int row, std::string_view column,
                                                              std::string_view text) {
    Period& period = table_.rows[row_index(row)];
    const Column target = column_of(column);
    auto refusal = refuse_cell(row, target, text);
    if (!refusal)
        set_value(period, target, text);
    return refusal;
}

std::optional<base::Refusal> TemporalDiscretization::check() const {
    if (table_.totals().periods > 0)
        return std::nullopt;
    return base::Refusal{title, "At least one period must be active!"};
}

void TemporalDiscretization::save(core::Project& project, core::ModelFiles& files) {
    const bool transient = choice_index(*this, "SimulationFlowType", 2) == 1;
    table_.save(files);
    project.set_integer("OPTIONS", "SIMULATION_MODE", transient ? 2 : 1);
    project.flags.set(0, 3, transient ? core::ModelFlags::defined : 0);
    project.flags.set(0, 2, transient ? 0 : core::ModelFlags::defined);
    project.flags.mark_edited();
}

std::optional<base::Refusal>
TemporalDiscretization::load_time_parameters(std::string_view bytes,
                                             const std::filesystem::path& file) {
    const auto table = PeriodTable::read_time_parameters(bytes, file);
    if (!table)
        return base::Refusal{"Message", "File has a wrong format."};
    table_ = *table;
    put("SimulationTimeUnit", std::to_string(table_.unit));
    return std::nullopt;
}

std::vector<std::string> TemporalDiscretization::status_texts() const {
    const PeriodTotals totals = table_.totals();
    const std::string time = table_.unit == 0
                                 ? std::string(" undefined")
                                 : base::masked(totals.time, " #.#####E+###") + " time units";
    return {fmt::format("Total Period Number = {}", totals.periods),
            fmt::format("Total Time Steps = {}", totals.steps), "Total Simulation Time =" + time};
}

} // namespace sim

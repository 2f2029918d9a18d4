// The dialogs of tracers and dispersion.
#include "base/failure.h"
#include "base/numbertext.h"
#include "core/extensions.h"
#include "core/modelfiles.h"
#include "core/project.h"
#include "sim/fieldvalue.h"
#include "sim/transport.h"

#include <algorithm>

#include <fmt/format.h>

namespace sim {

namespace {

using core::FieldInfo;
using core::FieldKind;

enum TracerColumn { tracer_number, active, concentration, betac };

constexpr FieldInfo tracer_columns[] = {
    {"Tracer", FieldKind::number, "Tracer", {}, "", ""},
    {"Active", FieldKind::check, "Active", {}, "", "0"},
    {"Concentration", FieldKind::number, "Concentration", {}, "mmol/L", "0"},
    {"BetaC", FieldKind::number, "BetaC *", {}, "kg/mol", "0"},
};

TracerColumn column_of(std::string_view name) {
    for (std::size_t i = 0; i < std::size(tracer_columns); ++i)
        if (name == tracer_columns[i].name)
            return TracerColumn(i);
    throw base::RangeFailure(fmt::format("the tracer table has no column {}", name));
}

std::size_t row_index(int row) {
    if (row < 1 || row > TracerTable::row_count)
        throw base::RangeFailure(
            fmt::format("tracer {} is not one of 1 to {}", row, TracerTable::row_count));
    return std::size_t(row - 1);
}

constexpr const char* sources[] = {"Constant Concentration", "Variable Concentration"};
constexpr FieldInfo source_fields[] = {
    {"Source", FieldKind::choice, "Data Source for TERVEX input file", sources, "", "0"}};

// Parameter numbers of the distributions.
constexpr int tracer_zones = 1406, first_tracer_array = 1441;

bool has_zones(const core::Project& project, const core::ModelFiles& files) {
    return project.flags.is_defined(2, 13) || files.has(core::file_ext(tracer_zones));
}

bool has_arrays(const core::Project& project, const core::ModelFiles& files) {
    if (project.flags.is_defined(3, 13))
        return true;
    for (int i = 0; i < TracerTable::row_count; ++i)
        if (files.has(core::file_ext(first_tracer_array + i)))
            return true;
    return false;
}

struct DispersionField {
    const char* name;
    std::string Dispersion::*text;
};
constexpr DispersionField dispersion_members[] = {
    {"MDIFS1_Value", &Dispersion::diffusion},
    {"DIFTS1_Value", &Dispersion::transverse},
    {"DIFLS1_Value", &Dispersion::longitudinal},
};

constexpr FieldInfo dispersion_fields[] = {
    {"MDIFS1_Value", FieldKind::number, "Diffusion coefficient", {}, "1E-08 m²/s", "0.5"},
    {"DIFTS1_Value", FieldKind::number, "Transverse dispersivity", {}, "m", "2.00"},
    {"DIFLS1_Value", FieldKind::number, "Longitudinal dispersivity", {}, "m", "2.00"},
};

} // namespace

std::span<const FieldInfo> TracerForm::columns() const {
    return tracer_columns;
}

bool TracerForm::enabled(std::string_view name) const {
    return name != tracer_columns[tracer_number].name;
}

void TracerForm::load(const core::Project&, const core::ModelFiles& files) {
    table_ = TracerTable::load(files);
}

std::string TracerForm::cell(int row, std::string_view column) const {
    const Tracer& tracer = table_.rows[row_index(row)];
    switch (column_of(column)) {
    case tracer_number:
        return std::to_string(row);
    case active:
        return check_text(tracer.active);
    case concentration:
        return base::value_text(tracer.concentration);
    case betac:
        return base::value_text(tracer.betac);
    }
    return {};
}

std::optional<base::Refusal> TracerForm::set_cell(int row, std::string_view column,
                                                  std::string_view text) {
    Tracer& tracer = table_.rows[row_index(row)];
    switch (column_of(column)) {
    case tracer_number:
        break;
    case active:
        tracer.active = base::leading_number(text) != 0;
        break;
    case concentration:
        tracer.concentration = base::leading_single(text);
        break;
    case betac:
        tracer.betac = base::leading_single(text);
        break;
    }
    return std::nullopt;
}

void TracerForm::save(core::Project& project, core::ModelFiles& files) {
    table_.save(files);
    project.flags.mark_defined(9, 8);
    project.flags.mark_edited();
}

TracerSource tracer_source(const core::ModelFlags& flags) {
    return flags.is_defined(2, 13) ? TracerSource::zones : TracerSource::arrays;
}

void choose_tracer_source(core::ModelFlags& flags, TracerSource source) {
    const bool zones = source == TracerSource::zones;
    flags.set(2, 13, zones ? core::ModelFlags::defined : 0);
    flags.set(3, 13, zones ? 0 : core::ModelFlags::defined);
}

TracerIndividual::TracerIndividual() {
    reset_fields();
}

std::span<const FieldInfo> TracerIndividual::fields() const {
    return source_fields;
}

void TracerIndividual::load(const core::Project& project, const core::ModelFiles& files) {
    reset_fields();
    put("Source", std::to_string(int(tracer_source(project.flags))));
    defined_twice_ = has_zones(project, files) && has_arrays(project, files);
}

void TracerIndividual::save(core::Project& project, core::ModelFiles&) {
    choose_tracer_source(project.flags, TracerSource(choice_index(*this, "Source", 2)));
    project.flags.mark_edited();
}

std::vector<core::Notice> TracerIndividual::saved_notices() const {
    if (!defined_twice_)
        return {};
    return {{base::Icon::warning, "Data Source for TERVEX input file",
             "The tracer is defined both by zones and by arrays. The definition saved last is used "
             "for the input file."}};
}

DiffDisp::DiffDisp() {
    reset_fields();
}

std::span<const FieldInfo> DiffDisp::fields() const {
    return dispersion_fields;
}

void DiffDisp::load(const core::Project&, const core::ModelFiles& files) {
    reset_fields();
    const Dispersion stored = Dispersion::load(files);
    for (const DispersionField& field : dispersion_members)
        put(field.name, stored.*field.text);
}

void DiffDisp::save(core::Project& project, core::ModelFiles& files) {
    Dispersion dispersion;
    for (const DispersionField& field : dispersion_members)
        dispersion.*field.text = get(field.name);
    dispersion.save(files);
    project.flags.mark_defined(9, 9);
    project.flags.mark_edited();
}

} // namespace sim

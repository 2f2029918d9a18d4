#include "input/reinjection.h"

#include "base/failure.h"
#include "base/numbertext.h"
#include "core/modelfiles.h"
#include "core/project.h"
#include "input/wells.h"
#include "sim/transport.h"

#include <algorithm>

#include <fmt/format.h>

namespace input {

namespace {

using core::FieldInfo;
using core::FieldKind;

constexpr std::size_t well_column = 0, rate_column = 1, first_species_column = 2;

// The well's rate in the first active period; 0 when it does not work there.
float first_rate(const WellTable& wells, const WellEntry& well) {
    if (wells.periods.empty())
        return 0;
    const auto same_cell = [&well](const WellEntry& other) {
        return other.I == well.I && other.J == well.J && other.K == well.K;
    };
    const auto& first = wells.periods.front();
    const auto found = std::ranges::find_if(first, same_cell);
    return found == first.end() ? 0 : found->rate;
}

} // namespace

SCON_Table::SCON_Table(const WellTable& wells) {
    const std::size_t limit = sim::ReinjectionTable::max_wells;
    for (const WellEntry& well : wells.master)
        if (rates_.size() < limit)
            rates_.push_back(first_rate(wells, well));
    make_columns();
}

void SCON_Table::make_columns() {
    names_.clear();
    labels_.clear();
    for (int number = 1; number <= table_.species; ++number) {
        names_.push_back(fmt::format("Tracer{}", number));
        labels_.push_back(fmt::format("Tracer {}", number));
    }
    columns_ = {{"Well", FieldKind::number, "Well", {}, "", ""},
                {"Rate", FieldKind::number, "Rate [m³/s] 1st Period", {}, "", ""}};
    for (std::size_t i = 0; i < names_.size(); ++i)
        columns_.push_back(
            {names_[i].c_str(), FieldKind::number, labels_[i].c_str(), {}, "mmol/L", "0"});
}

void SCON_Table::load(const core::Project& project, const core::ModelFiles& files) {
    load_notice_.reset();
    const char* extension = sim::reinjection_extension(project.flags);
    sim::ReinjectionTable stored;
    if (const auto bytes = files.read_if(extension))
        stored = sim::ReinjectionTable::read(*bytes, files.name_of(extension));
    table_.species = sim::TracerTable::load(files).ActiveTracers();
    if (files.has(extension) && stored.species != table_.species) {
        load_notice_ = core::Notice{base::Icon::warning, base::desk_title,
                                    "Species list has changed since last opening!\n"
                                    "You have to define new values."};
        stored.rows.clear();
    }
    table_.rows.clear();
    for (const float rate : rates_) {
        const int well = rows() + 1;
        sim::ReinjectionTable::Row row{rate, {}};
        for (int number = 1; number <= table_.species; ++number)
            row.concentrations.push_back(stored.concentration(well, number));
        table_.rows.push_back(std::move(row));
    }
    make_columns();
}

bool SCON_Table::enabled(std::string_view name) const {
    return name != columns_[well_column].name && name != columns_[rate_column].name;
}

std::optional<base::Refusal> SCON_Table::check() const {
    if (table_.species > 0)
        return std::nullopt;
    return base::Refusal{base::desk_title, "There is no active Tracer!\n"
                                           "You can't edit any value."};
}

void SCON_Table::save(core::Project& project, core::ModelFiles& files) {
    files.write(sim::reinjection_extension(project.flags), table_.bytes());
    project.flags.mark_defined(10, 7);
    project.flags.mark_edited();
}

std::size_t SCON_Table::column_index(std::string_view name) const {
    for (std::size_t i = 0; i < columns_.size(); ++i)
        if (name == columns_[i].name)
            return i;
    throw base::RangeFailure(fmt::format("the table of wells has no column {}", name));
}

std::size_t SCON_Table::row_index(int row) const {
    if (row < 1 || row > rows())
        throw base::RangeFailure(fmt::format("well {} is not one of 1 to {}", row, rows()));
    return std::size_t(row - 1);
}

std::string SCON_Table::cell(int row, std::string_view column) const {
    const auto& well = table_.rows[row_index(row)];
    const std::size_t index = column_index(column);
    if (index == well_column)
        return std::to_string(row);
    const float value =
        index == rate_column ? well.rate : well.concentrations[index - first_species_column];
    return base::value_text(value);
}

std::optional<base::Refusal> SCON_Table::set_cell(int row, std::string_view column,
                                                  std::string_view text) {
    auto& well = table_.rows[row_index(row)];
    const std::size_t index = column_index(column);
    if (index >= first_species_column)
        well.concentrations[index - first_species_column] = base::leading_single(text);
    return std::nullopt;
}

} // namespace input

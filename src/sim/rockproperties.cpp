#include "sim/rockproperties.h"

#include "base/failure.h"
#include "base/numbertext.h"
#include "base/textfile.h"
#include "core/modelfiles.h"
#include "core/project.h"
#include "sim/rockfile.h"
#include "sim/typfile.h"

#include <algorithm>

#include <fmt/format.h>

namespace sim {

using core::FieldInfo;
using core::FieldKind;

// One block of the rock file as a dialog shows it. Column i stands on line lines[i]; labels[i] is
// what an edited file has in front of it. A column without label is for show.
struct RockBlock {
    int head_line;
    const char* head;
    const char* load_filter;
    std::span<const FieldInfo> columns;
    std::span<const int> lines;
    std::span<const char* const> labels;
};

namespace {

constexpr const char* array_title = "Permeability / Porosity Definition";
constexpr const char* cleared = "0.";

constexpr FieldInfo PermPor_fields[] = {
    {"Zones", FieldKind::number, "Number of zones", {}, "", "15"},
    {"COMPM_Value",
     FieldKind::number,
     "Rock Compressibillity (valid for all available zones) [1/Pa] :",
     {},
     "",
     "1.0E-10"},
};

constexpr FieldInfo PermPor_columns[] = {
    {"Por", FieldKind::number, "Porosity", {}, "-", "0.25"},
    {"Perm", FieldKind::number, "Permeability", {}, "m²", "1E-12"},
    {"ANISOI", FieldKind::number, "Anisotropy x-Direction", {}, "", "1."},
    {"ANISOJ", FieldKind::number, "Anisotropy y-Direction", {}, "", "1."},
    {"Compress", FieldKind::number, "Compressibility", {}, "1/Pa", ""},
};
constexpr int PermPor_lines[] = {rock::Por, rock::Perm, rock::ANISOI, rock::ANISOJ, rock::Compress};
constexpr const char* PermPor_labels[] = {"Por", "Perm", "ANISOI", "ANISOJ", "Compress"};

constexpr FieldInfo Heat_columns[] = {
    {"Por", FieldKind::number, "Porosity", {}, "-", "0.25"},
    {"Capacity", FieldKind::number, "Thermal Capacity", {}, "MJ/(m³ K)", "2.06"},
    {"Cond", FieldKind::number, "Thermal Conductivity", {}, "W/(m K)", "2.9"},
    {"HPF", FieldKind::number, "Heat Production Rate", {}, "W/m³", "0."},
    {"WLXANI", FieldKind::number, "Anisotropy x-Direction", {}, "", "1."},
    {"WLYANI", FieldKind::number, "Anisotropy y-Direction", {}, "", "1."},
};
constexpr int Heat_lines[] = {rock::Por, rock::RhoCm,  rock::Cond,
                              rock::HPF, rock::WLXANI, rock::WLYANI};
constexpr const char* Heat_labels[] = {nullptr, "Capacity", "Cond", "HPF", "WLXANI", "WLYANI"};

constexpr RockBlock PermPor_block = {
    rock::FluidFlow, "Fluid Flow",  "Fluid Flow Rock Properties File (*.MCO)|*.MCO",
    PermPor_columns, PermPor_lines, PermPor_labels};
constexpr RockBlock Heat_block = {
    rock::Heat,   "Heat",     "Heat Rock Properties File (*.MCO)|*.MCO",
    Heat_columns, Heat_lines, Heat_labels};

std::vector<std::vector<std::string>> default_rows(std::span<const FieldInfo> columns) {
    std::vector<std::string> row;
    for (const FieldInfo& column : columns)
        row.emplace_back(column.initial);
    return {PropertyZonesMax, row};
}

base::Refusal wrong_format() {
    return {"Message", "File has a wrong format."};
}

} // namespace

RockPropertyTable::RockPropertyTable(const RockBlock& block)
    : block_(&block), cells_(default_rows(block.columns)), rows_(PropertyZonesMax) {}

std::span<const FieldInfo> RockPropertyTable::columns() const {
    return block_->columns;
}

const char* RockPropertyTable::load_filter() const {
    return block_->load_filter;
}

std::size_t RockPropertyTable::column_index(std::string_view name) const {
    for (std::size_t i = 0; i < block_->columns.size(); ++i)
        if (name == block_->columns[i].name)
            return i;
    throw base::RangeFailure(fmt::format("the table of rock properties has no column {}", name));
}

const std::vector<std::string>& RockPropertyTable::row_texts(int row) const {
    if (row < 1 || row > rows())
        throw base::RangeFailure(fmt::format("zone {} is not one of 1 to {}", row, rows()));
    return cells_[std::size_t(row - 1)];
}

std::string RockPropertyTable::cell(int row, std::string_view column) const {
    return row_texts(row)[column_index(column)];
}

std::optional<base::Refusal> RockPropertyTable::set_cell(int row, std::string_view column,
                                                         std::string_view text) {
    const std::size_t index = column_index(column);
    static_cast<void>(row_texts(row));
    if (enabled(column))
        cells_[std::size_t(row - 1)][index] = base::trimmed(text);
    return std::nullopt;
}

void RockPropertyTable::load_cells(const RockFile& rock) {
    cells_ = default_rows(block_->columns);
    set_rows(rock.zones());
    for (int row = 1; row <= rows(); ++row)
        for (std::size_t i = 0; i < block_->columns.size(); ++i)
            cells_[std::size_t(row - 1)][i] = rock.field(block_->lines[i], row);
}

void RockPropertyTable::store_cells(RockFile& rock, int skipped_line) const {
    rock.set_line(block_->head_line, block_->head);
    for (std::size_t i = 0; i < block_->columns.size(); ++i) {
        const int line = block_->lines[i];
        if (block_->labels[i] == nullptr || line == skipped_line)
            continue;
        rock.set_line(line, block_->labels[i]);
        for (int row = 1; row <= rows(); ++row)
            rock.set_field(line, row, cells_[std::size_t(row - 1)][i]);
    }
}

std::optional<base::Refusal> RockPropertyTable::load_block(std::string_view bytes,
                                                           const std::filesystem::path& file) {
    const std::vector<std::string_view> lines = base::split_lines(bytes);
    const auto head = std::size_t(block_->head_line - 1);
    if (lines.size() <= head || !lines[head].starts_with(block_->head))
        return wrong_format();
    const RockFile rock = RockFile::read(bytes, file);
    if (rock.zones() == 0)
        return wrong_format();
    take_block(rock);
    return std::nullopt;
}

bool RockPropertyTable::clear(base::Interaction& user) {
    const base::Answer answer =
        user.ask(base::desk_title, "This will clear the Table of Properties. Continue?",
                 base::Buttons::yes_no_risky);
    if (answer != base::Answer::yes)
        return false;
    for (int row = 1; row <= rows(); ++row)
        for (const FieldInfo& column : columns())
            set_cell(row, column.name, *column.initial == '\0' ? "" : cleared);
    return true;
}

PermPor::PermPor() : RockPropertyTable(PermPor_block) {
    reset_fields();
}

std::span<const FieldInfo> PermPor::fields() const {
    return PermPor_fields;
}

void PermPor::load(const core::Project& project, const core::ModelFiles& files) {
    reset_fields();
    take_block(RockFile::load(files));
    put("COMPM_Value", TypFile::load(files).line(typ::COMPM));
    arrays_built_ = false;
    cell_by_cell_.clear();
    if (!has_zones_to_build_from(project, files))
        return;
    const bool porosity = project.flags.is_defined(2, 2);
    const bool permeability = project.flags.is_defined(2, 1);
    cell_by_cell_ = porosity && permeability ? "Porosity and Permeability"
                    : porosity               ? "Porosity"
                    : permeability           ? "Permeability"
                                             : "";
}

void PermPor::take_block(const RockFile& rock) {
    load_cells(rock);
    put("Zones", std::to_string(rows()));
    if (!rock.has_compressibilities())
        for (int row = 1; row <= rows(); ++row)
            set_cell(row, "Compress", "");
}

// A number that is still being typed in leaves the table as it is.
std::vector<core::Notice> PermPor::changed(std::string_view name) {
    if (name == "Zones" && !check())
        set_rows(base::leading_int32(get(name)));
    return {};
}

std::optional<base::Refusal> PermPor::check() const {
    const int zones = base::leading_int32(get("Zones"));
    if (zones >= 1 && zones <= PropertyZonesMax)
        return std::nullopt;
    return base::Refusal{"Error", fmt::format("Valid range is 1 to {}", PropertyZonesMax),
                         base::Icon::warning, "Zones"};
}

bool PermPor::ask(base::Interaction& user) const {
    if (cell_by_cell_.empty())
        return true;
    return user.ask(array_title,
                    cell_by_cell_ + " values are already defined in the cell-by-cell mode. When "
                                    "you go on these values will be overwriten. Continue?",
                    base::Buttons::yes_no_risky) == base::Answer::yes;
}

bool PermPor::has_own_compressibility() const {
    for (int row = 1; row <= rows(); ++row)
        if (!cell(row, "Compress").empty())
            return true;
    return false;
}

void PermPor::store_compressibilities(RockFile& rock, core::ModelFiles& files) const {
    if (has_own_compressibility()) {
        // A zone left empty would be an empty item of the simulator's input.
        for (int row = 1; row <= rows(); ++row)
            if (cell(row, "Compress").empty())
                rock.set_field(rock::Compress, row, get("COMPM_Value"));
        return;
    }
    if (rock.has_compressibilities())
        rock.set_line(rock::Compress, "Anisotropy");
    TypFile typ_file = TypFile::load(files);
    typ_file.set_line(typ::COMPM, get("COMPM_Value"));
    typ_file.save(files);
}

void PermPor::store_porosities(RockFile& rock) const {
    for (int row = 1; row <= rows(); ++row)
        if (cell(row, "Por").empty())
            rock.set_field(rock::Por, row, cleared);
}

void PermPor::save(core::Project& project, core::ModelFiles& files) {
    RockFile rock = RockFile::load(files);
    if (rows() > 0)
        rock.set_zones(rows());
    store_cells(rock, has_own_compressibility() ? 0 : rock::Compress);
    store_porosities(rock);
    store_compressibilities(rock, files);
    rock.save(files);
    arrays_built_ = Save_Per_Por(project, files);
    project.flags.mark_defined(1, 0);
    project.flags.mark_edited();
}

std::vector<core::Notice> PermPor::saved_notices() const {
    if (!arrays_built_)
        return {};
    return {{base::Icon::information, array_title,
             "Initial distribution of Porosity and Permeability is saved. You can adapt the values "
             "in the cell-by-cell mode."}};
}

Heat::Heat() : RockPropertyTable(Heat_block) {}

void Heat::load(const core::Project&, const core::ModelFiles& files) {
    load_cells(RockFile::load(files));
}

bool Heat::enabled(std::string_view name) const {
    return name != "Por";
}

// The number of zones is a matter of the flow block: zones that the other file does not have keep
// their texts.
void Heat::take_block(const RockFile& rock) {
    for (int row = 1; row <= rows(); ++row)
        for (std::size_t i = 0; i < std::size(Heat_columns); ++i)
            if (const std::string text = rock.field(Heat_lines[i], row); !text.empty())
                set_cell(row, Heat_columns[i].name, text);
}

void Heat::save(core::Project& project, core::ModelFiles& files) {
    RockFile rock = RockFile::load(files);
    store_cells(rock);
    rock.save(files);
    project.flags.mark_defined(9, 13);
    project.flags.mark_edited();
}

} // namespace sim

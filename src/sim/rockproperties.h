// The dialogs of rock properties by zone: flow (PermPor) and heat (Heat).
#pragma once

#include "core/form.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sim {

class RockFile;
struct RockBlock;

// What both have in common: rows are zones, columns the properties of one block of the rock file.
// Cells hold texts as typed, without blanks round them.
class RockPropertyTable : public core::TableForm {
public:
    std::span<const core::FieldInfo> columns() const override;
    int rows() const override { return rows_; }
    // A row or column that is not there is a RangeFailure.
    std::string cell(int row, std::string_view column) const override;
    // Nothing is refused; a column that is not enabled keeps its text.
    std::optional<base::Refusal> set_cell(int row, std::string_view column,
                                          std::string_view text) override;

    // For the file dialog of Load: "Fluid Flow Rock Properties File (*.MCO)|*.MCO".
    const char* load_filter() const;
    // Takes over the block of another rock file. A file without the head of the block is refused;
    // after a refusal or a FileFailure the form is as before.
    std::optional<base::Refusal> load_block(std::string_view bytes,
                                            const std::filesystem::path& file);
    // Asks, then sets every property to "0." and empties the compressibilities.
    bool clear(base::Interaction& user);

protected:
    explicit RockPropertyTable(const RockBlock& block);

    void load_cells(const RockFile& rock);
    // Rows beyond `count`, at most 15, are hidden and come back with their texts; rows that were
    // never filled have the defaults of a new rock file.
    void set_rows(int count) { rows_ = count; }
    // Rewrites the lines of the block, heads and labels included, but not that of `skipped_line`.
    void store_cells(RockFile& rock, int skipped_line = 0) const;
    // Takes the texts of another file's block.
    virtual void take_block(const RockFile& rock) = 0;

private:
    std::size_t column_index(std::string_view name) const;
    const std::vector<std::string>& row_texts(int row) const;

    const RockBlock* block_;
    std::vector<std::vector<std::string>> cells_; // by row, then column; always 15 rows
    int rows_;
};

// Flow properties; stored in lines 1 to 6 of .mco and line 19 of .typ. Columns: Por, Perm, ANISOI,
// ANISOJ, Compress.
//
// Zones is the number of zones, moved into 1 to 15; setting it adds or drops rows.
// Compressibilities count when any of the zones has one; zones without their own then have
// COMPM_Value. Otherwise COMPM_Value is that of all zones. An empty porosity is stored as "0.",
// because filled porosities make the number of zones. When the model has Property Zones, saving
// builds the arrays from them.
class PermPor final : public RockPropertyTable {
public:
    PermPor();

    std::span<const core::FieldInfo> fields() const override;
    void load(const core::Project& project, const core::ModelFiles& files) override;
    std::optional<base::Refusal> check() const override;
    // Arrays that were defined cell by cell are not overwritten without a question.
    bool ask(base::Interaction& user) const override;
    void save(core::Project& project, core::ModelFiles& files) override;
    std::vector<core::Notice> saved_notices() const override;

protected:
    std::vector<core::Notice> changed(std::string_view name) override;
    void take_block(const RockFile& rock) override;

private:
    bool has_own_compressibility() const;
    void load_compressibilities(const RockFile& rock);
    void store_compressibilities(RockFile& rock, core::ModelFiles& files) const;
    void store_porosities(RockFile& rock) const;

    std::string cell_by_cell_; // what the question of OK names; empty: no question
    bool arrays_built_ = false;
};

// Heat properties; stored in lines 9 to 14 of .mco. Columns: Por, for show only, Capacity, Cond,
// HPF, WLXANI, WLYANI.
class Heat final : public RockPropertyTable {
public:
    Heat();

    std::span<const core::FieldInfo> fields() const override { return {}; }
    void load(const core::Project& project, const core::ModelFiles& files) override;
    bool enabled(std::string_view name) const override;
    void save(core::Project& project, core::ModelFiles& files) override;

protected:
    void take_block(const RockFile& rock) override;
};

// True when the arrays of porosity and permeability can be built: the model has Property Zones and
// a grid.
bool has_zones_to_build_from(const core::Project& project, const core::ModelFiles& files);

// Builds period 1 of the arrays of porosity and permeability from the zones of the cells; a cell
// whose zone is not one of the rock file's gets 0. The arrays no longer count as defined cell by
// cell. False, with nothing changed, when there is nothing to build them from.
bool Save_Per_Por(core::Project& project, core::ModelFiles& files);

} // namespace sim

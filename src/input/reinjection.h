// The dialog of Transport, Well, Injected Concentration(s).
#pragma once

#include "core/form.h"
#include "sim/reinjection.h"

#include <optional>
#include <string>
#include <vector>

namespace input {

struct WellTable;

// Rows are the wells in the order of the simulator's input; the columns are Well and Rate, for show
// only, and for each species Tracer with its number.
//
// A stored table counts only when it has the present number of species; otherwise all
// concentrations begin at 0.
class SCON_Table final : public core::TableForm {
public:
    explicit SCON_Table(const WellTable& wells);
    SCON_Table(const SCON_Table&) = delete;
    SCON_Table& operator=(const SCON_Table&) = delete;

    std::span<const core::FieldInfo> fields() const override { return {}; }
    void load(const core::Project& project, const core::ModelFiles& files) override;
    // A warning after load() when the stored table has another number of species.
    const std::optional<core::Notice>& load_notice() const { return load_notice_; }
    bool enabled(std::string_view name) const override;
    // Without species there is nothing to edit.
    std::optional<base::Refusal> check() const override;
    void save(core::Project& project, core::ModelFiles& files) override;

    std::span<const core::FieldInfo> columns() const override { return columns_; }
    int rows() const override { return int(table_.rows.size()); }
    // A row or column that is not there is a RangeFailure.
    std::string cell(int row, std::string_view column) const override;
    // Nothing is refused; a column that is not enabled keeps its text.
    std::optional<base::Refusal> set_cell(int row, std::string_view column,
                                          std::string_view text) override;

    int species() const { return table_.species; }
    const sim::ReinjectionTable& table() const { return table_; }

private:
    void make_columns();
    std::size_t column_index(std::string_view name) const;
    std::size_t row_index(int row) const;

    std::vector<float> rates_; // first period, by well
    sim::ReinjectionTable table_;
    std::optional<core::Notice> load_notice_;
    std::vector<std::string> names_, labels_; // what columns_ points into
    std::vector<core::FieldInfo> columns_;
};

} // namespace input

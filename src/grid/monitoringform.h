// The dialog "Points of Monitoring": the tables of points and of observed values.
#pragma once

#include "core/form.h"
#include "grid/monitoring.h"

#include <filesystem>
#include <memory>

namespace grid {

// Field "Observation_Option": 0 drawdowns, 1 heads. Each tab is a table of its own; loading or
// saving a tab loads or saves the whole dialog.
class ObservationList : public core::Form {
public:
    static constexpr const char* title = "Points of Monitoring";

    ObservationList();
    ~ObservationList() override;
    ObservationList(const ObservationList&) = delete;
    ObservationList& operator=(const ObservationList&) = delete;

    std::span<const core::FieldInfo> fields() const override;
    void load(const core::Project& project, const core::ModelFiles& files) override;
    void save(core::Project& project, core::ModelFiles& files) override;

    // One row for each of the 100 slots; columns named as the fields of Bore.
    core::TableForm& bores();
    // One row for each observation; columns named as the fields of Observation. Negative values are
    // refused, but for the flag.
    core::TableForm& observations();

    // A new row of zeros at the end; refused when the table is full.
    std::optional<base::Refusal> add_observation();
    // False when the user does not want to.
    bool clear_bores(base::Interaction& user);
    bool clear_observations(base::Interaction& user);

    // Reads an exchange file in place of the table; a file of another kind is refused. FileFailure
    // when it cannot be read.
    std::optional<base::Refusal> import_bores(const std::filesystem::path& file);
    std::optional<base::Refusal> import_observations(const std::filesystem::path& file);
    // Writes an exchange file; FileFailure when it cannot be written.
    void export_bores(const std::filesystem::path& file) const;
    void export_observations(const std::filesystem::path& file) const;

    const MonitoringList& list() const { return list_; }

private:
    class Tab;
    class BoresTab;
    class ObservationsTab;

    MonitoringList list_;
    bool section_ = false; // the model is not Horizontal
    std::unique_ptr<Tab> bores_;
    std::unique_ptr<Tab> observations_;
};

} // namespace grid

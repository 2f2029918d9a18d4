#include "grid/monitoringform.h"

#include "base/failure.h"
#include "base/numbertext.h"
#include "base/paths.h"
#include "base/textfile.h"
#include "core/modelfiles.h"
#include "core/project.h"

#include <fmt/format.h>

#include <algorithm>

namespace grid {

namespace {

using core::FieldInfo;
using core::FieldKind;

constexpr const char* options[] = {"Use observed drawdowns for the calibration",
                                   "Use observed heads for the calibration"};

constexpr FieldInfo dialog_fields[] = {
    {"Observation_Option", FieldKind::choice, "Options", options, "", "0"},
};

constexpr FieldInfo map_columns[] = {
    {"Name", FieldKind::text, "Node Name"},
    {"Active", FieldKind::check, "Active"},
    {"X", FieldKind::number, "X - easting [m]", {}, "m"},
    {"Y", FieldKind::number, "Y - northing [m]", {}, "m"},
    {"Layer", FieldKind::number, "Z (Layer-No.)"},
    {"Second_Index", FieldKind::number, "Second Index"},
    {"Last_Value", FieldKind::number, "Last Value"},
};

constexpr FieldInfo section_columns[] = {
    {"Name", FieldKind::text, "Node Name"},
    {"Active", FieldKind::check, "Active"},
    {"X", FieldKind::number, "X - easting [m]", {}, "m"},
    {"Y", FieldKind::number, "Z - towards top [m]", {}, "m"},
    {"Layer", FieldKind::number, "Y (Sect.-No.)"},
    {"Second_Index", FieldKind::number, "Second Index"},
    {"Last_Value", FieldKind::number, "Last Value"},
};

constexpr FieldInfo observation_columns[] = {
    {"Bore_Name", FieldKind::text, "Borehole Name"},
    {"Flag", FieldKind::number, "Flag"},
    {"Time", FieldKind::number, "Observation Time"},
    {"Weight", FieldKind::number, "Weight"},
    {"Head", FieldKind::number, "Head"},
    {"Drawdown", FieldKind::number, "Drawdown"},
    {"Concentration", FieldKind::number, "Concentration"},
    {"Compaction", FieldKind::number, "Compaction"},
    {"Preconsolidation", FieldKind::number, "Preconsolidation Head"},
    {"Subsidence", FieldKind::number, "Subsidence"},
};

struct ValueColumn {
    std::string_view name;
    float Observation::*value;
};
constexpr ValueColumn value_columns[] = {
    {"Time", &Observation::Time},
    {"Weight", &Observation::Weight},
    {"Head", &Observation::Head},
    {"Drawdown", &Observation::Drawdown},
    {"Concentration", &Observation::Concentration},
    {"Compaction", &Observation::Compaction},
    {"Preconsolidation", &Observation::Preconsolidation},
    {"Subsidence", &Observation::Subsidence},
};

[[noreturn]] void refuse_column(std::string_view column) {
    throw base::RangeFailure(fmt::format("the table has no column \"{}\"", column));
}

float Observation::*value_of(std::string_view column) {
    for (const ValueColumn& each : value_columns) {
        if (each.name == column) {
            return each.value;
        }
    }
    refuse_column(column);
}

std::string typed_name(std::string_view text) {
    return point_name(base::trimmed(text));
}

base::Refusal foreign_file(const char* title, const std::filesystem::path& file,
                           const char* content) {
    return {title, fmt::format("The file {} does not contain the {} data.", file.string(), content),
            base::Icon::warning};
}

bool confirmed(base::Interaction& user, const char* question) {
    return user.ask(base::desk_title, question, base::Buttons::yes_no_risky) == base::Answer::yes;
}

} // namespace

class ObservationList::Tab : public core::TableForm {
public:
    explicit Tab(ObservationList& dialog) : dialog_(dialog) {}

    std::span<const FieldInfo> fields() const override { return {}; }
    void load(const core::Project& project, const core::ModelFiles& files) override {
        dialog_.load(project, files);
    }
    void save(core::Project& project, core::ModelFiles& files) override {
        dialog_.save(project, files);
    }

protected:
    std::size_t index(int row) const {
        if (row < 1 || row > rows()) {
            throw base::RangeFailure(fmt::format("the table has no row {}", row));
        }
        return static_cast<std::size_t>(row - 1);
    }

    ObservationList& dialog_;
};

class ObservationList::BoresTab : public Tab {
public:
    using Tab::Tab;

    std::span<const FieldInfo> columns() const override {
        return dialog_.section_ ? section_columns : map_columns;
    }
    int rows() const override { return MonitoringList::slot_count; }

    std::string cell(int row, std::string_view column) const override {
        const Bore& bore = dialog_.list_.bores[index(row)];
        if (column == "Name")
            return bore.Name;
        if (column == "Active")
            return bore.Active ? "1" : "0";
        if (column == "X")
            return base::exact_text(bore.X);
        if (column == "Y")
            return base::exact_text(bore.Y);
        if (column == "Layer")
            return fmt::to_string(bore.Layer);
        if (column == "Second_Index")
            return fmt::to_string(bore.Second_Index);
        if (column == "Last_Value")
            return base::exact_text(bore.Last_Value);
        refuse_column(column);
    }

    std::optional<base::Refusal> set_cell(int row, std::string_view column,
                                          std::string_view text) override {
        Bore& bore = dialog_.list_.bores[index(row)];
        if (column == "Name")
            bore.Name = typed_name(text);
        else if (column == "Active")
            bore.Active = base::leading_int16(text) != 0;
        else if (column == "X")
            bore.X = base::leading_single(text);
        else if (column == "Y")
            bore.Y = base::leading_single(text);
        else if (column == "Layer")
            bore.Layer = base::leading_int16(text);
        else if (column == "Second_Index")
            bore.Second_Index = base::leading_int16(text);
        else if (column == "Last_Value")
            bore.Last_Value = base::leading_single(text);
        else
            refuse_column(column);
        return std::nullopt;
    }
};

class ObservationList::ObservationsTab : public Tab {
public:
    using Tab::Tab;

    std::span<const FieldInfo> columns() const override { return observation_columns; }
    int rows() const override { return static_cast<int>(dialog_.list_.observations.size()); }

    std::string cell(int row, std::string_view column) const override {
        const Observation& observation = dialog_.list_.observations[index(row)];
        if (column == "Bore_Name")
            return observation.Bore_Name;
        if (column == "Flag")
            return fmt::to_string(observation.Flag);
        return base::exact_text(observation.*value_of(column));
    }

    std::optional<base::Refusal> set_cell(int row, std::string_view column,
                                          std::string_view text) override {
        Observation& observation = dialog_.list_.observations[index(row)];
        if (column == "Bore_Name") {
            observation.Bore_Name = typed_name(text);
        } else if (column == "Flag") {
            observation.Flag = base::leading_int16(text);
        } else {
            const float value = base::leading_single(text);
            if (value < 0)
                return base::Refusal{base::desk_title, "Value must be >= 0", base::Icon::warning};
            observation.*value_of(column) = value;
        }
        return std::nullopt;
    }
};

ObservationList::ObservationList()
    : bores_(std::make_unique<BoresTab>(*this)),
      observations_(std::make_unique<ObservationsTab>(*this)) {
    reset_fields();
}

ObservationList::~ObservationList() = default;

std::span<const FieldInfo> ObservationList::fields() const {
    return dialog_fields;
}

void ObservationList::load(const core::Project& project, const core::ModelFiles& files) {
    list_ = Read_Monitoring_Points(files);
    section_ = project.flags.GridOrientation() != core::horizontal;
    put("Observation_Option", fmt::to_string(list_.Observation_Option - 1));
}

void ObservationList::save(core::Project& project, core::ModelFiles& files) {
    list_.Observation_Option = get("Observation_Option") == "1" ? 2 : 1;
    Write_Monitoring_Points(list_, files);
    project.flags.mark_edited();
}

core::TableForm& ObservationList::bores() {
    return *bores_;
}

core::TableForm& ObservationList::observations() {
    return *observations_;
}

std::optional<base::Refusal> ObservationList::add_observation() {
    if (list_.observations.size() >= MonitoringList::max_observations) {
        return base::Refusal{base::desk_title,
                             fmt::format("The maximum number of observations is {}.",
                                         int{MonitoringList::max_observations}),
                             base::Icon::warning};
    }
    list_.observations.emplace_back();
    return std::nullopt;
}

bool ObservationList::clear_bores(base::Interaction& user) {
    if (!confirmed(user, "This will clear the Table of Boreholes. Continue?")) {
        return false;
    }
    list_.bores = {};
    return true;
}

bool ObservationList::clear_observations(base::Interaction& user) {
    if (!confirmed(user, "This will clear the Table of Observations. Continue?")) {
        return false;
    }
    list_.observations.clear();
    return true;
}

std::optional<base::Refusal> ObservationList::import_bores(const std::filesystem::path& file) {
    if (!bores_from_text(base::read_bytes(file), list_)) {
        return foreign_file("Load Bore File", file, "borehole");
    }
    return std::nullopt;
}

std::optional<base::Refusal>
ObservationList::import_observations(const std::filesystem::path& file) {
    if (!observations_from_text(base::read_bytes(file), list_)) {
        return foreign_file("Load Observation File", file, "observation");
    }
    return std::nullopt;
}

void ObservationList::export_bores(const std::filesystem::path& file) const {
    base::replace_file(file, bores_text(list_));
}

void ObservationList::export_observations(const std::filesystem::path& file) const {
    base::replace_file(file, observations_text(list_));
}

} // namespace grid

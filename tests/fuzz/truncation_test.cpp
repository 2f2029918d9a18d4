// Every file form cut off at every byte. A reader either says which file ends early, and where, or
// it gives what the file still holds: nothing before the cut is changed, what stands behind it
// reads as if it had never been written.
#include "base/failure.h"
#include "base/inifile.h"
#include "base/numbertext.h"
#include "base/textfile.h"
#include "core/arraystore.h"
#include "core/modelfiles.h"
#include "core/project.h"
#include "core/zonefile.h"
#include "grid/griddefinition.h"
#include "grid/monitoring.h"
#include "sim/periods.h"
#include "sim/reinjection.h"
#include "sim/rockfile.h"
#include "sim/transport.h"
#include "sim/typfile.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

// What a reader makes of a file, in the order of the file. Nothing: it refuses the file, and its
// caller has a message for that.
using Fields = std::vector<std::string>;
using Read = std::optional<Fields>;

// The bytes that are left of a file. Those forms that the program reads in place lie in a model's
// folder, too.
struct Cut {
    std::string_view bytes;
    fs::path project;
};

class Text {
public:
    explicit Text(Fields& fields) : fields_(&fields) {}
    Text& operator<<(const std::string& text) {
        fields_->push_back(text);
        return *this;
    }
    Text& operator<<(double number) { return *this << base::exact_text(number); }

private:
    Fields* fields_;
};

Read project(const Cut& cut) {
    Fields fields;
    for (const auto& entry : core::Project::read(cut.bytes).entries()) {
        fields.push_back(entry.value);
    }
    return fields;
}

Read notes(const Cut& cut) {
    const base::IniFile file(cut.bytes);
    Fields fields;
    for (const std::string key : {"Density", "Conduct", "Compress", "Capacity", "Viscosity"}) {
        Text(fields) << file.get("koppx", key).value_or("");
    }
    for (const std::string key : {"Active", "Chi", "Iteration", "FlowLimit", "HeatLimit"}) {
        Text(fields) << file.get("PICARD", key).value_or("");
    }
    for (const std::string key : {"active", "P_Zones", "Dens_A", "Apert_A", "Apert_D", "Tort_A"}) {
        Text(fields) << file.get("BOX", key).value_or("");
    }
    return fields;
}

Read gridfile(const Cut& cut) {
    const auto grid = grid::GridFile::read(cut.bytes, "m.xy");
    Fields fields;
    Text(fields) << grid.NX << grid.NY << grid.NZ;
    for (const auto* const sizes : {&grid.Column_Width, &grid.Row_Height}) {
        for (const float size : *sizes) {
            Text(fields) << size;
        }
    }
    return fields;
}

Read layerfile(const Cut& cut) {
    const auto file = grid::LayerFile::read(cut.bytes, "m.l", 12);
    if (!file) {
        return std::nullopt;
    }
    Fields fields;
    for (const auto& layer : file->layers) {
        Text(fields) << layer.type;
    }
    for (const auto& layer : file->layers) {
        Text(fields) << layer.thickness;
    }
    for (const auto& layer : file->layers) {
        for (const float option : layer.options) {
            Text(fields) << option;
        }
    }
    Text(fields) << file->closing[0] << file->closing[1];
    return fields;
}

Fields fields_of(const std::array<grid::Bore, 100>& bores) {
    Fields fields;
    for (const grid::Bore& bore : bores) {
        Text(fields) << bore.Active << bore.X << bore.Y << bore.Layer << bore.Second_Index
                     << bore.Last_Value << bore.Name;
    }
    return fields;
}

// As many as the whole files of this test have.
Fields fields_of(std::vector<grid::Observation> observations) {
    observations.resize(2);
    Fields fields;
    for (const grid::Observation& o : observations) {
        Text(fields) << o.Flag << o.Time << o.Weight << o.Head << o.Drawdown << o.Concentration
                     << o.Compaction << o.Preconsolidation << o.Subsidence << o.Bore_Name;
    }
    return fields;
}

Read points(const Cut& cut) {
    const grid::ReadPoints read = grid::read_points(cut.bytes);
    EXPECT_EQ(read.rewrite, cut.bytes.size() < 2820) << cut.bytes.size();
    Fields fields = fields_of(read.list.bores);
    for (const grid::Observation& observation : read.list.observations) {
        EXPECT_FALSE(observation.Bore_Name.empty()) << "a part of an observation";
    }
    for (const std::string& field : fields_of(read.list.observations)) {
        fields.push_back(field);
    }
    return fields;
}

Read bores(const Cut& cut) {
    grid::MonitoringList list;
    return grid::bores_from_text(cut.bytes, list) ? Read(fields_of(list.bores)) : std::nullopt;
}

Read observations(const Cut& cut) {
    grid::MonitoringList list;
    return grid::observations_from_text(cut.bytes, list) ? Read(fields_of(list.observations))
                                                         : std::nullopt;
}

Read typfile(const Cut& cut) {
    const auto file = sim::TypFile::read(cut.bytes, "m.typ");
    Fields fields;
    for (int line = 1; line <= sim::TypFile::line_count; ++line) {
        Text(fields) << file.line(line);
    }
    return fields;
}

Fields fields_of(const sim::PeriodTable& table) {
    Fields fields;
    Text(fields) << table.unit;
    for (const sim::Period& row : table.rows) {
        Text(fields) << row.active << row.length << row.steps << row.monitoring_frequency
                     << row.temperature_shift << row.max_transport_steps << row.multiplier;
    }
    return fields;
}

Read periods(const Cut& cut) {
    return fields_of(sim::PeriodTable::read(cut.bytes, "m.trn"));
}

// Column by column, as they stand in the file.
Read timeparameters(const Cut& cut) {
    const auto table = sim::PeriodTable::read_time_parameters(cut.bytes, "m.tpr");
    if (!table) {
        return std::nullopt;
    }
    const Fields rows = fields_of(*table);
    Fields fields = {rows.front()};
    constexpr std::size_t columns = 7;
    for (std::size_t column = 0; column < columns; ++column) {
        for (std::size_t at = 1 + column; at < rows.size(); at += columns) {
            fields.push_back(rows[at]);
        }
    }
    return fields;
}

Read rockfile(const Cut& cut) {
    const auto file = sim::RockFile::read(cut.bytes, "m.mco");
    Fields fields;
    for (int line = 1; line <= sim::rock::line_count; ++line) {
        Text(fields) << file.label(line);
        for (int zone = 1; zone <= 3; ++zone) {
            Text(fields) << file.field(line, zone);
        }
    }
    return fields;
}

Read tracer(const Cut& cut) {
    const auto table = sim::TracerTable::read(cut.bytes, "m.ttc");
    Fields fields;
    for (const sim::Tracer& row : table.rows) {
        Text(fields) << row.active << row.concentration << row.betac;
    }
    return fields;
}

Read dispersion(const Cut& cut) {
    const auto values = sim::Dispersion::read(cut.bytes, "m.tma");
    return Fields{values.diffusion, values.transverse, values.longitudinal};
}

Read reinjection(const Cut& cut) {
    const auto table = sim::ReinjectionTable::read(cut.bytes, "m.sco");
    Fields fields;
    for (int well = 1; well <= 8; ++well) {
        const auto index = static_cast<std::size_t>(well - 1);
        Text(fields) << (index < table.rows.size() ? table.rows[index].rate : 0)
                     << table.concentration(well, 1);
    }
    return fields;
}

// Every layer of the three periods of array_bytes(), in the order of the records.
Read arrayfile(const Cut& cut) {
    core::ModelFiles files(cut.project, core::Access::read);
    const core::ArrayStore store(files, 3, 2, 2);
    Fields fields;
    for (const int period : {1, 7, 3}) {
        for (const int layer : {1, 2}) {
            core::LayerValues values = store.layer_values(1401);
            store.read_array(1401, period, layer, values, -1);
            for (const float value : values) {
                Text(fields) << value;
            }
        }
    }
    return fields;
}

// Numbers of zones and nodes and the zones' values; nodes behind the cut read 0, 0 and may be the
// first ones of their closed zones.
Read zonefile(const Cut& cut) {
    core::ModelFiles files(cut.project, core::Access::read);
    std::vector<core::Zone> zones = core::ZoneFile(files, 1).read_zones(5, 1, 1501);
    Fields fields;
    Text(fields) << static_cast<double>(zones.size());
    zones.resize(2);
    for (const core::Zone& zone : zones) {
        Text(fields) << zone.nodes << zone.value;
    }
    return fields;
}

std::string array_bytes() {
    const support::TempFolder folder;
    core::ModelFiles files(folder.path() / "m.td1", core::Access::write);
    core::ArrayStore store(files, 3, 2, 2);
    for (const int period : {1, 7, 3}) {
        for (const int layer : {1, 2}) {
            store.write_array(1401, period, layer, core::LayerValues(6, 1.5F + float(period)));
        }
    }
    return files.read(".per");
}

std::string zone_bytes() {
    core::Zone zone;
    zone.nodes = 3;
    zone.value = 2.5F;
    zone.x = {0, 1, 9, 9};
    zone.y = {0, 1, 1, 4};
    const support::TempFolder folder;
    core::ModelFiles files(folder.path() / "m.td1", core::Access::write);
    core::ZoneFile(files, 1).write_zones(5, 1, 1501, {zone, zone});
    return files.read(".pez");
}

// Without most of the flags, which are all alike.
std::string project_bytes() {
    const std::string bytes =
        base::read_bytes(fs::path(TD_SOURCE_DIR) / "fuzz/corpus/project/doublet");
    return bytes.substr(0, bytes.find("MENU_2_0"));
}

struct Form {
    const char* name;
    std::string (*make)();
    const char* file; // a good one, unless it is made here
    Read (*read)(const Cut&);
    // The reader takes an early end; without it, only the last field can be cut apart.
    bool rest_may_be_missing = false;
    std::size_t whole_head = 0;    // bytes without which there is a failure all the same
    const char* stored = "unread"; // name in the model's folder

    std::string bytes() const {
        return make != nullptr ? make()
                               : base::read_bytes(fs::path(TD_SOURCE_DIR) / "fuzz/corpus" / file);
    }
};

void PrintTo(const Form& form, std::ostream* out) {
    *out << form.name;
}

constexpr Form forms[] = {
    {"project", project_bytes, "", project, true},
    {"notes", nullptr, "notes/boxes", notes, true},
    {"gridfile", nullptr, "gridfile/doublet", gridfile},
    {"layerfile", nullptr, "layerfile/doublet", layerfile, true},
    {"points", nullptr, "points/observed", points, true},
    {"bores", nullptr, "exchange/bores", bores, true},
    {"observations", nullptr, "exchange/observations", observations, true},
    {"typfile", nullptr, "typfile/doublet", typfile},
    {"periods", nullptr, "periods/doublet", periods},
    {"timeparameters", nullptr, "timeparameters/doublet", timeparameters},
    {"rockfile", nullptr, "rockfile/doublet", rockfile, true},
    {"tracer", nullptr, "tracer/doublet", tracer, true},
    {"dispersion", nullptr, "dispersion/doublet", dispersion},
    {"reinjection", nullptr, "reinjection/doublet", reinjection, true, 4},
    {"arrayfile", array_bytes, "", arrayfile, true, 4048, "m.per"},
    {"zonefile", zone_bytes, "", zonefile, true, 0, "m.pez"},
};

// Where the fields of a cut file stop being those of the whole one.
std::size_t first_difference(const Fields& cut, const Fields& whole) {
    const auto place = std::mismatch(cut.begin(), cut.end(), whole.begin(), whole.end()).first;
    return static_cast<std::size_t>(place - cut.begin());
}

class Truncation : public testing::TestWithParam<Form> {
protected:
    Truncation() : bytes_(GetParam().bytes()), whole_(*read(bytes_.size())) {
        std::ofstream(stored(), std::ios::trunc);
        stored_bytes_ = 0;
    }

    fs::path stored() const { return folder_.path() / GetParam().stored; }

    // What the first `size` bytes read as. The file in the folder grows from call to call.
    Read read(std::size_t size) {
        const std::string_view cut = std::string_view(bytes_).substr(0, size);
        std::ofstream(stored(), std::ios::app | std::ios::binary) << cut.substr(stored_bytes_);
        stored_bytes_ = size;
        return GetParam().read({cut, folder_.path() / "m.td1"});
    }

    // One field may have been cut apart; all behind it are missing.
    void expect_tolerated(const Fields& fields, std::size_t size) {
        ASSERT_EQ(fields.size(), whole_.size()) << "cut at byte " << size;
        EXPECT_GE(size, GetParam().whole_head);
        if (missing_.empty()) {
            missing_ = fields;
        }
        const std::size_t cut = first_difference(fields, whole_);
        if (!GetParam().rest_may_be_missing) {
            EXPECT_GE(cut + 1, whole_.size()) << "cut at byte " << size;
            return;
        }
        for (std::size_t i = cut + 1; i < fields.size(); ++i) {
            EXPECT_EQ(fields[i], missing_[i]) << "cut at byte " << size << ": field " << i;
        }
    }

    void expect_told_or_tolerated(std::size_t size) {
        try {
            if (const Read fields = read(size)) {
                expect_tolerated(*fields, size);
            }
        } catch (const base::FileFailure& failure) {
            const std::string what = failure.what();
            EXPECT_EQ(failure.file().stem(), "m") << what;
            EXPECT_TRUE(what.find("line ") != std::string::npos ||
                        what.find("byte") != std::string::npos)
                << "cut at byte " << size << ": " << what;
        }
    }

    support::TempFolder folder_;
    std::size_t stored_bytes_ = 0;
    std::string bytes_;
    Fields whole_;
    Fields missing_; // of the shortest file that the reader takes
};

TEST_P(Truncation, is_told_or_reads_what_is_there) {
    constexpr std::size_t every_byte = 16384, step = 512;
    for (std::size_t size = 0; size < bytes_.size(); size += size < every_byte ? 1 : step) {
        expect_told_or_tolerated(size);
    }
}

INSTANTIATE_TEST_SUITE_P(Files, Truncation, testing::ValuesIn(forms),
                         [](const auto& form) { return std::string(form.param.name); });

} // namespace

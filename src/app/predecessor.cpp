#include "app/predecessor.h"

#include "base/numbertext.h"
#include "base/paths.h"
#include "base/textfile.h"
#include "core/arraystore.h"
#include "core/extensions.h"
#include "sim/rockfile.h"

#include <fmt/format.h>

#include <algorithm>
#include <vector>

namespace app {

namespace {

constexpr int conductivity_array = 9, permeability_array = 1401, zone_array = 1403;

constexpr const char* question =
    "You are loading a BD5 model.\n\n"
    "The vertical hydraulic conductivity could be converted to a permeability for a temperature of "
    "10°C and from the resulting distribution a Property Zones of the model could be derived with "
    "a "
    "maximum of 15 Zones.\n\n"
    "Do you want to convert your data?";

// k = K * viscosity / (density * gravity), water at 10 degrees Celsius.
float permeability(float conductivity) {
    constexpr double viscosity = 1.3077E-3; // Pa s
    constexpr double density = 999.7;       // kg/m3
    constexpr double gravity = 9.81;        // m/s2
    return static_cast<float>(double{conductivity} * viscosity / (density * gravity));
}

// Before a layer is allocated: the dimensions come from the project file, and a conductivity file
// that cannot hold them is damaged.
void require_whole_record(const core::Project& project, const core::ArrayStore& store,
                          const core::ModelFiles& files) {
    const std::int64_t nx = project.NX(), ny = project.NY(), nz = project.NZ();
    constexpr std::int64_t tables = 4000, bytes_of_single = 4;
    const auto size = static_cast<std::int64_t>(store.file_size(conductivity_array));
    if (nx < 1 || ny < 1 || nz < 1 || size < tables + bytes_of_single * nx * ny * nz) {
        throw base::FileFailure(
            fmt::format(
                "ends at byte {}, where the values of {} columns, {} rows and {} layers were "
                "expected",
                size, nx, ny, nz),
            files.name_of(core::file_ext(conductivity_array)));
    }
}

class Converter {
public:
    Converter(core::ArrayStore& store) : store_(store), layer_(store.cells_of_layer()) {}

    void write_permeability() {
        for (int layer = 1; layer <= store_.NZ(); ++layer) {
            store_.write_array(permeability_array, 1, layer, permeability_of(layer));
        }
    }

    // The different permeabilities in the order of their first cell; empty when there are too many.
    std::vector<float> zone_values() {
        std::vector<float> values;
        for (int layer = 1; layer <= store_.NZ(); ++layer) {
            for (const float k : permeability_of(layer)) {
                if (std::find(values.begin(), values.end(), k) != values.end()) {
                    continue;
                }
                if (values.size() == sim::PropertyZonesMax) {
                    return {};
                }
                values.push_back(k);
            }
        }
        return values;
    }

    void write_zones(const std::vector<float>& values) {
        core::LayerValues zones(layer_.size());
        for (int layer = 1; layer <= store_.NZ(); ++layer) {
            const core::LayerValues& k = permeability_of(layer);
            std::transform(k.begin(), k.end(), zones.begin(), [&](float value) {
                const auto zone = std::find(values.begin(), values.end(), value);
                return static_cast<float>(zone - values.begin() + 1);
            });
            store_.write_array(zone_array, 1, layer, zones);
        }
    }

private:
    const core::LayerValues& permeability_of(int layer) {
        store_.read_array(conductivity_array, 1, layer, layer_,
                          core::parameter_default(conductivity_array));
        std::transform(layer_.begin(), layer_.end(), layer_.begin(), permeability);
        return layer_;
    }

    core::ArrayStore& store_;
    core::LayerValues layer_;
};

void save_zone_permeabilities(const std::vector<float>& values, core::ModelFiles& files) {
    sim::RockFile rock = sim::RockFile::load(files);
    const int count = static_cast<int>(values.size());
    if (rock.zones() < count) {
        rock.set_zones(count);
    }
    for (int zone = 1; zone <= count; ++zone) {
        rock.set_field(sim::rock::Perm, zone, base::value_text(values[std::size_t(zone - 1)]));
    }
    rock.save(files);
}

bool is_unconverted(const Workspace& workspace) {
    const std::string name = base::lower(base::file_name(workspace.Model_Path()));
    return name.ends_with(".bd5") && !workspace.files.has(core::file_ext(zone_array)) &&
           !workspace.files.has(core::file_ext(permeability_array));
}

} // namespace

bool BD2TD(Workspace& workspace) {
    core::ArrayStore store(workspace.files, workspace.project);
    if (!store.exists(conductivity_array)) {
        return false;
    }
    require_whole_record(workspace.project, store, workspace.files);
    Converter converter(store);
    converter.write_permeability();
    core::ModelFlags& flags = workspace.project.flags;
    flags.mark_defined(2, 1);
    if (const std::vector<float> values = converter.zone_values(); !values.empty()) {
        converter.write_zones(values);
        save_zone_permeabilities(values, workspace.files);
        flags.mark_defined(2, 11);
    }
    flags.mark_edited();
    return true;
}

bool offer_conversion(Workspace& workspace, base::Interaction& user) {
    if (!is_unconverted(workspace)) {
        return true;
    }
    user.beep();
    switch (user.ask("Convert BD5 data for TD", question, base::Buttons::yes_no)) {
    case base::Answer::yes:
        if (!BD2TD(workspace)) {
            user.message(base::Icon::information, base::desk_title,
                         "The model has no vertical hydraulic conductivity to convert.");
        }
        return true;
    case base::Answer::no:
        return true;
    default:
        return false;
    }
}

} // namespace app

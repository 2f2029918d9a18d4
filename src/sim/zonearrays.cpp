// The initial arrays of porosity and permeability, built from the values of the Property Zones.
#include "base/numbertext.h"
#include "core/arraystore.h"
#include "core/extensions.h"
#include "core/modelfiles.h"
#include "core/project.h"
#include "sim/rockfile.h"
#include "sim/rockproperties.h"

#include <algorithm>
#include <cmath>

namespace sim {

namespace {

constexpr int porosity = 6, permeability = 1401, property_zones = 1403;
constexpr int first_period = 1;

std::vector<float> zone_values(const RockFile& rock, int line) {
    std::vector<float> values;
    for (int zone = 1; zone <= rock.zones(); ++zone)
        values.push_back(base::leading_single(rock.field(line, zone)));
    return values;
}

// Also for a zone number that is none, whatever the file holds. Fractions are rounded as in the
// simulator's input.
float value_of(float zone, const std::vector<float>& values) {
    const float number = std::nearbyint(zone);
    const bool known = number >= 1 && number <= float(values.size());
    return known ? values[std::size_t(number) - 1] : 0;
}

} // namespace

bool has_zones_to_build_from(const core::Project& project, const core::ModelFiles& files) {
    const bool has_grid =
        files.has(".xy") && project.NX() > 0 && project.NY() > 0 && project.NZ() > 0;
    return has_grid && files.has(core::file_ext(property_zones));
}

bool Save_Per_Por(core::Project& project, core::ModelFiles& files) {
    if (!has_zones_to_build_from(project, files))
        return false;
    const RockFile rock = RockFile::load(files);
    core::ArrayStore store(files, project);
    core::LayerValues zones = store.layer_values(property_zones);
    core::LayerValues values(zones.size());
    for (const auto& [number, line] :
         {std::pair(porosity, rock::Por), std::pair(permeability, rock::Perm)}) {
        const std::vector<float> known = zone_values(rock, line);
        for (int layer = 1; layer <= project.NZ(); ++layer) {
            store.read_array(property_zones, first_period, layer, zones,
                             core::parameter_default(property_zones));
            std::ranges::transform(zones, values.begin(),
                                   [&known](float zone) { return value_of(zone, known); });
            store.write_array(number, first_period, layer, values);
        }
    }
    project.flags.set(2, 1, 0);
    project.flags.set(2, 2, 0);
    return true;
}

} // namespace sim

// Multiple continua: a hierarchy of fracture systems A to D in chosen Property Zones.
#pragma once

#include "core/form.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace sim {

struct Boxmodel {
    static constexpr int system_count = 4;            // A, B, C, D
    std::string active;                               // "1" when on
    std::string P_Zones;                              // "1,3" or "-"
    std::array<std::string, system_count> density;    // 1/m
    std::array<std::string, system_count> aperture;   // m
    std::array<std::string, system_count> tortuosity; // -

    // Section "BOX" of the model's notes. An empty list of zones is "-".
    static Boxmodel load(const core::ModelFiles& files);
    // Apertures are stored in the form "0.000E+00", an empty list of zones as "-".
    void save(core::ModelFiles& files) const;
};

// Numbers of a list such as "1,3,12": digits are gathered, a comma ends a number. Other characters
// and empty places do not count.
std::vector<int> parse_zone_list(std::string_view list);

// What the dialog calculates, in the form 0.00E+00, for a unit cell. A system without tortuosity
// has zeros, and so has an exchange with a system without permeability.
struct FractureProperties {
    std::array<std::string, Boxmodel::system_count> porosity;
    std::array<std::string, Boxmodel::system_count> permeability; // m2
    std::array<std::string, Boxmodel::system_count - 1> exchange; // A-B, B-C, C-D; m2
};
FractureProperties calculated_properties(const Boxmodel& box);

// The dialog of Transport, Multiple Continua. Fields: chkBox, txtPropZones, and for each system
// txtDens, txtApert and txtTort, followed by its letter.
class BoxmodelForm final : public core::Form {
public:
    BoxmodelForm();

    std::span<const core::FieldInfo> fields() const override;
    void load(const core::Project& project, const core::ModelFiles& files) override;
    void save(core::Project& project, core::ModelFiles& files) override;

    Boxmodel box() const;
    // The message of cmdCheck.
    core::Notice calculated() const;
};

} // namespace sim

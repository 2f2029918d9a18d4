// <base>.mco: properties of the Property Zones in fixed columns, one line for each property.
//
// A label stands in column 1. Zone z has its value from column 10z+1 on, 10 wide; a permeability
// from column 20z-9 on, 20 wide. Columns count characters, from 1. Readers go by line number: the
// labels of a new file and of an edited one differ.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace core {
class ModelFiles;
}

namespace sim {

inline constexpr int PropertyZonesMax = 15;

// Lines of the file by their content.
namespace rock {
inline constexpr int FluidFlow = 1, Por = 2, Perm = 3, Compress = 4, ANISOI = 5, ANISOJ = 6,
                     XANG = 7, YANG = 8, Heat = 9, RhoCm = 10, Cond = 11, HPF = 12, WLXANI = 13,
                     WLYANI = 14, Minerals = 15, line_count = 35;
}

class RockFile {
public:
    // The file of a new model with that many zones (SIMULATION_TYPE_PARAMETER).
    explicit RockFile(int zones = PropertyZonesMax);

    // FileFailure when the head block (lines 1 to 14) is not whole. Lines beyond 35 are kept.
    static RockFile read(std::string_view bytes, const std::filesystem::path& file);
    // The model's file; that of a new model when there is none.
    static RockFile load(const core::ModelFiles& files);
    void save(core::ModelFiles& files) const;
    std::string bytes() const;

    // Number of zones: filled fields of the porosity line.
    int zones() const;
    // Sets the number of zones (1 to 15). Fields beyond it are dropped, new ones get the defaults
    // of a new file (compressibilities stay empty) and minerals the content "0."; the fields behind
    // the zones of the mineral lines move with it. Nothing happens when the number stays.
    void set_zones(int zones);

    // Text of zone z (from 1) on a line, trimmed; empty when the line ends before it. On a mineral
    // line of a model with Z zones, Z + 1 is the active flag.
    std::string field(int line, int zone) const;
    // A text longer than the field is cut to the field's width less one blank.
    void set_field(int line, int zone, std::string_view text);
    // Columns 1 to 10, trimmed.
    std::string label(int line) const;
    void set_label(int line, std::string_view label);
    // The whole line (from 1); empty beyond the last one.
    const std::string& line(int number) const;
    // Lines that are missing before it are filled as in a new file.
    void set_line(int number, std::string_view text);
    int lines() const { return int(lines_.size()); }

    // True when line 4 holds compressibilities of the zones.
    bool has_compressibilities() const;

private:
    explicit RockFile(std::vector<std::string> lines) : lines_(std::move(lines)) {}

    std::string& line_to_change(int number);
    bool holds_values(int line) const;
    void fit_values(int line, int old_zones, int zones);

    std::vector<std::string> lines_;
};

// Z of a model: zones() of its rock file, 15 when there is none.
int PropertyZonesCount(const core::ModelFiles& files);

} // namespace sim

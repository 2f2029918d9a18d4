// Concentrations of the water that is injected: <base>.sco, or <base>.dhs in a model of
// Debye-Hueckel chemistry.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace core {
class ModelFiles;
class ModelFlags;
} // namespace core

namespace sim {

// The file holds a 4-byte integer, the number of species plus one, and for each well so many
// singles: the rate, then the concentrations.
struct ReinjectionTable {
    static constexpr int max_wells = 100;
    static constexpr int max_species = 100;

    struct Row {
        float rate = 0;                    // m3/s, of the first period
        std::vector<float> concentrations; // one for each species
    };

    int species = 0;
    std::vector<Row> rows; // by the number of the well in the list of all wells

    // FileFailure when the number of species is cut off or not one of 0 to 100. A last row that is
    // not whole reads 0 at its end; rows beyond 100 are left unread.
    static ReinjectionTable read(std::string_view bytes, const std::filesystem::path& file);
    std::string bytes() const;

    // 0 for a well (from 1) or a species (from 1) that is not in the table.
    float concentration(int well, int species_number) const;
};

// Extension of the model's table: ".dhs" with the chemistry models 1 and 3, otherwise ".sco".
const char* reinjection_extension(const core::ModelFlags& flags);

} // namespace sim

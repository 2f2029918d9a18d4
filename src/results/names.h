// What a result file carries beside the fixed parameters: substances and minerals with their names.
#pragma once

#include <string>
#include <vector>

namespace base {
class Interaction;
}
namespace core {
class ModelFiles;
}

namespace results {

class StreamReader;

// One entry of the list of substances or minerals; its block in the stream is `number`.
struct NamedBlock {
    int number = 1;
    std::string name; // "PH", "Na", "Tracer 1", "Calcite"
};

struct StreamNames {
    int substances = 0;                        // # ANZSUBS
    int components = 0;                        // # ANZCHEM: those of them that are chemical
    int minerals = 0;                          // # ANZMINS
    std::vector<NamedBlock> species;           // `substances` entries
    std::vector<NamedBlock> mineral_blocks;    // those with an amount in the current fluid
    std::vector<NamedBlock> all_minerals = {}; // `minerals` entries

    // True for the hydrogen ion, whose concentration is shown as pH.
    bool shown_as_pH(int number) const { return number == 1 && components > 0; }
};

// Reads the three counters (each searched from the beginning of the stream, with the messages of
// the search) and takes the names from the model's companions: .dhf, .nkf or .flu and .dhm, .nkm or
// .mco, by the chemistry code of the project file (none without a project file). A companion that
// is missing gives "Species n" and "Mineral n". FileFailure for counters that no stream can hold.
StreamNames read_names(StreamReader& stream, const core::ModelFiles& files,
                       base::Interaction& user);

} // namespace results

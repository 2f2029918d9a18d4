// The parameters of a result file: their key lines, labels and units.
#pragma once

#include "results/names.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace results {

class StreamReader;

// What the viewer makes of a stored value.
enum class Conversion {
    none,
    absolute, // without the sign that marks a fixed value
    per_day,  // m/s to m/day
    pH,       // minus the decimal logarithm of a concentration in mmol/L
};

struct FixedParameter {
    int number; // 1 to 9
    const char* code;
    const char* keyword;
    const char* label;
    Conversion conversion;
};

// The nine of them, in number order.
std::span<const FixedParameter> fixed_parameters();

// A parameter that was chosen.
struct Parameter {
    std::string code;    // "TEMP", "CONC", "CONCM", or the name of another block
    std::string keyword; // its key line
    std::string label;   // as titles and axes show it
    Conversion conversion = Conversion::none;
};

Parameter parameter_of(const FixedParameter& fixed);
// Block `number` of the species or minerals. One that has no name in `names` is "Species n" or
// "Mineral n".
Parameter species_parameter(int number, const StreamNames& names);
Parameter mineral_parameter(int number, const StreamNames& names);
// Any other block by its name.
Parameter other_parameter(std::string_view name);

// True for a text that resolve_parameter needs the names for.
bool names_a_block(std::string_view text);

// The parameter that a text means: a fixed code, "CONC:n", "CONC:NAME", "CONCM:n", "CONCM:NAME", or
// the keyword of any other block; codes and keywords in any case. Nothing for a name that is not in
// its list and for a number outside 1 to 99.
std::optional<Parameter> resolve_parameter(std::string_view text, const StreamNames& names);

// The list of the dialog Available Parameter, searched from the beginning: from the first key line
// on that begins with "# GEOLOGY" or "# PRES", what stands behind "# " on each, at most 25
// characters of it.
std::vector<std::string> available_parameters(StreamReader& stream);

// The unit behind a display name on the axes of charts, with a blank before it: " [m/day]". Empty
// for a name that has none.
std::string GetDimension(std::string_view display_name, const StreamNames& names);

} // namespace results

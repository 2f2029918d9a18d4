// The dialog Convert Data to Binary: fields of a result file into its cache.
#pragma once

#include "base/failure.h"

#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace base {
class Interaction;
}
namespace core {
class Project;
}

namespace convert {

// The number of a parameter by its name on the command line: "TEMP" to "VZ" are 1 to 9, "TRACER1"
// to "TRACER5" 10 to 14. Nothing for other names.
std::optional<int> number_of_cached(std::string_view name);

// The caption of a number's check box: "Temperature", "Velocity (Vx)", "Tracer 2". Empty for a
// number that the directory of a cache cannot hold.
std::string cached_caption(float number);

// Converts the parameters with these numbers from `sFileNLO` into the cache beside it, in the order
// of the dialog, with a status caption each. The grid is the model's; the result file of another
// one is refused before anything is written. A block that cannot be read is told as a failure and
// ends the work; what was converted before it stays. FileFailure when the cache cannot be written:
// then it is as before.
std::optional<base::Refusal> ConvertBinary(const core::Project& project,
                                           const std::filesystem::path& sFileNLO,
                                           const std::set<int>& numbers, base::Interaction& user);

} // namespace convert

// A data file of the Result Viewer (IRGRID) as a plain table of numbers.
#pragma once

#include <filesystem>

namespace base {
class Interaction;
}

namespace convert {

// Reads what results::plane_data_file writes and writes a line with the two counts, then one line
// for each chart row, in the plain printed form. False, with its box, for a file of another kind
// and for a target that may not be overwritten. FileFailure for a file that ends too early or holds
// counts below 1; the target is then as before.
bool Write_ASCII(const std::filesystem::path& source, const std::filesystem::path& target,
                 base::Interaction& user);

} // namespace convert

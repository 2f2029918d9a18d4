// A plot file of the simulator (.tal, .plt) with other column names and values in other units.
#pragma once

#include "base/failure.h"

#include <cstddef>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace base {
class Interaction;
}

namespace convert {

inline constexpr std::size_t most_plot_columns = 50;

// One arithmetic step on the values of a column.
enum class PlotOperation { none = -1, add, subtract, multiply, divide };

struct PlotStep {
    PlotOperation Index = PlotOperation::none;
    double Wert = 0;
};

// The dialog. Columns count from 1.
struct PlotRewrite {
    bool Permeability = false, Head = false, Minerals = false;
    bool Elements = false; // also turns the columns "pH", "PH" and "ph" into pH
    std::map<std::size_t, std::string> new_names;
    std::map<std::size_t, PlotStep> steps;
    // From mol/m3 to percent of the mass of a rock of 2600 kg/m3: molar weights [g/mol].
    std::map<std::size_t, double> molar_weights;
};

// The texts between the double quotes of a line.
std::vector<std::string> Get_Parameter(std::string_view Line);

// The new names: the first eleven stay, the twelfth is "Temperature", the thirteenth "Porosity",
// and what was given in `rewrite` takes its place. RangeFailure for a column that the file does not
// have.
std::vector<std::string> Edit_Parameter(std::vector<std::string> names, const PlotRewrite& rewrite);

// ValNumber + Wert and so on. RangeFailure for a division by 0.
double Calculate(PlotOperation Index, double ValNumber, double Wert);

// Copies the title and the lines of the zones, writes the new names and the values, as many in each
// row as there are. A refusal when there is nothing to do; FileFailure for a file that is no plot
// file and for the pH of a concentration that is not positive. `target`, which may be the same
// file, is written when all went well.
std::optional<base::Refusal> rewrite_plot(const std::filesystem::path& source,
                                          const std::filesystem::path& target,
                                          const PlotRewrite& rewrite, base::Interaction& user);

} // namespace convert

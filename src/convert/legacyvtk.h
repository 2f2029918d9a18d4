// The legacy VTK text file, as far as it is written here.
#pragma once

#include "convert/modelgrid.h"
#include "convert/outputfile.h"
#include "results/field.h"

#include <array>
#include <span>
#include <string>
#include <string_view>

namespace convert {

enum class DataSet {
    points,      // STRUCTURED_POINTS
    grid,        // STRUCTURED_GRID: the head alone
    rectilinear, // RECTILINEAR_GRID
};

// Sizes [m] of the cells along the file's axes, rows and layers from the first of the worksheet on,
// and the factor of each axis.
struct LegacyAxes {
    AxisSizes sizes;
    std::array<double, 3> scales{1, 1, 1};
};

// How values become text.
enum class ValueForm {
    plain,    // a zero is " 0.0 "
    absolute, // without sign; a zero is " 0 "
    pH,       // minus the decimal logarithm of a thousandth, in double precision, each on a line
    stored,   // a zero is " 0 "
};

// The four lines that begin a file, DATASET and DIMENSIONS. `title` is cut at 256 characters.
std::string legacy_head(DataSet type, std::string_view title, const results::StreamGrid& counts);

// The lines between DIMENSIONS and the values. A list of coordinates begins with half a size and
// adds whole ones: columns from the first on, rows and layers from the last on; points are a size
// of the first cells apart. `attribute` is "VECTORS FlowVectors float" or the three lines that
// begin scalars. Empty for DataSet::grid.
std::string legacy_body(DataSet type, const LegacyAxes& axes, std::string_view attribute);
std::string scalars_attribute(std::string_view name);

// All values of a field, a row of columns on each line. FileFailure naming `file` for the pH of a
// concentration that is not positive.
void print_scalars(const results::Field& field, ValueForm form, const std::filesystem::path& file,
                   const Sink& sink);
// The same for one row, put behind `text`.
void append_scalars(std::string& text, std::span<const float> row, ValueForm form);

// Minus the decimal logarithm of a concentration in mmol/L; FileFailure naming `file` when it is
// not positive.
double pH_of(float concentration, const std::filesystem::path& file);

// A line for each three values, which stand in print zones.
void append_vectors(std::string& text, std::span<const float> components);

} // namespace convert

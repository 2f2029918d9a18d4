// Fields of a result file combined cell by cell by a formula of one line.
//
// Words of the formula are separated by single blanks: operands and operators take turns, the value
// is formed from the left, without brackets, numbers or precedence. "CONC1 + CONC2", "GEOLOGY7 *
// PERM", "CONC1 + GWB".
#pragma once

#include "convert/vtkexport.h"

#include <string_view>

namespace convert {

// The key line that an operand looks for: a block of substances or minerals by its number, #
// GEOLOGY for any word that holds that, otherwise "# " and the word. Empty for a block number
// outside 1 to 99: there is no such block.
std::string operand_key(std::string_view token);

// The value of the formula in every cell. Operands are searched forward from where the one before
// was read; one that is not found stands for the same values as the operand before it (zeros when
// there is none) and leaves the file at its end. "GEOLOGYn" as the first operand is 1 in the cells
// of zone n and 0 elsewhere; "GWB" behind an operator looks the value up in the bucket table; "-"
// and
// "/" change nothing. Single precision. FileFailure for a block that is cut off, RangeFailure when
// the value leaves the table or the range of a single.
results::Field evaluate_formula(std::string_view formula, results::StreamReader& stream,
                                const results::StreamGrid& grid, base::Interaction& user);

// Writes the value as <base>-Calc.vtk, a data set of points or a rectilinear one. Its axes are
// those of the worksheet, also in a cross-section. Refused for an empty formula and when the grid
// of the file is another one.
std::optional<base::Refusal> export_formula(const Source& source, DataSet type,
                                            std::string_view formula, const Written& written);

} // namespace convert

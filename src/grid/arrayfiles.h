// The array files that a model has on disk, seen from outside: which there are and whether they can
// belong to a grid. For the commands that change the grid's size.
#pragma once

#include <vector>

namespace core {
class ModelFiles;
}

namespace grid {

// Parameters with an array file, ascending; scratch arrays do not count. Result files share some
// names (".210" is the series of monitoring point 21): a file of such a name counts only when it
// begins with the tables of an array. FileFailure when the folder cannot be read.
std::vector<int> existing_arrays(const core::ModelFiles& files);

// True when the length of the array's file is that of whole records of a grid of nx columns, ny
// rows and nz layers, of which the last may end with any layer.
bool array_fits(int number, const core::ModelFiles& files, int nx, int ny, int nz);

} // namespace grid

// Array and zone files rewritten for a finer grid: every new cell has the value of the old one that
// it lies in, every new layer the zones of its old one. Record numbers stay.
#pragma once

#include <filesystem>
#include <vector>

namespace core {

class ModelFiles;

// Into how many each column, row and layer is divided (from 1 on), the first one first.
struct Division {
    std::vector<int> columns, rows, layers;
};
// Sum of the factors.
int divided_count(const std::vector<int>& factors);

// Rewrites an array file of the parameter (its own or a copy), whose grid so far had as many
// columns, rows and layers as there are factors. False, and the file as it was, when there is none
// or it is no array of that grid: other files of the folder share some names.
bool refine_array_file(int number, const std::filesystem::path& file, const Division& division,
                       ModelFiles& files);
// The same for zones of that zone number; their mark tells them.
bool refine_zone_file(int number, const std::filesystem::path& file, const Division& division,
                      ModelFiles& files);

} // namespace core

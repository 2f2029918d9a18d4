// The benchmarks by subject. Their names are those that the table of figures uses; each does the
// same work in every run, so that CPU time tells what it costs.
#pragma once

#include <filesystem>

namespace bench {

class CubeModel;

// Blocks of the input file of a model with 8 million cells, and the memory that it needs.
void add_writing(CubeModel& model);
// read_array of layers of three sizes, written into `folder`.
void add_layer_reading(const std::filesystem::path& folder);
// The check of a model with a million cells.
void add_check(CubeModel& model);
void add_numbers();
// Reading result files: a block of 4 million values and a stream of 1 GB, both made in `folder`.
void add_streams(const std::filesystem::path& folder);
void add_version();

} // namespace bench

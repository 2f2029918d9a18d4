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
// Writing and reading a field of 4 million cells in a result cache, made in `folder`.
void add_cache(const std::filesystem::path& folder);
// Models from streams of 1 and 10 million cells, made in `folder`.
void add_import(const std::filesystem::path& folder);
// Fields of 4 million cells as VTK files, made in `folder`.
void add_vtk(const std::filesystem::path& folder);
// Contour lines of a layer of 1000 x 1000 cells on 20 levels.
void add_contours();
// Opening a worksheet session on an array of 320 MB, and refinement to 20 million cells; both
// models are made in `folder`.
void add_sessions(const std::filesystem::path& folder);
// 20 zones of 40 nodes to the cells of a layer of 1000 x 1000.
void add_zones();
void add_version();
// The start of the desktop program against that of an empty window, the example model opened in it,
// and a table of 2000 x 2000 cells; files go to `folder`.
void add_desk(const std::filesystem::path& folder);
// Repainting the worksheet of the desktop program.
void add_painting();

} // namespace bench

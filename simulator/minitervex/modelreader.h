// The model from its keyword stream.
#pragma once

#include "minitervex/inputstream.h"
#include "minitervex/model.h"

namespace minitervex {

// FileFailure for what minitervex cannot compute, for blocks that it does not know, that are
// missing or hold the wrong number of values, and for values without a physical sense.
Model read_model(const InputStream& input);

// The parts of it, one per file.
void require_computable(const InputStream& input);
std::vector<std::string> notes_on(const InputStream& input);
Grid read_grid(const InputStream& input);
void read_periods(const InputStream& input, Model& model);
void read_points(const InputStream& input, Model& model);

} // namespace minitervex

// The result file: the input's stream with the state at the end.
#pragma once

#include "minitervex/inputstream.h"
#include "minitervex/simulation.h"

#include <filesystem>

namespace minitervex {

// FileFailure when there is no place for a result file, before a run is lost by it.
void require_writable(const std::filesystem::path& nlo);

// Writes `<base>.nlo` beside the old one and moves it over it. FileFailure when that cannot be
// done; the old file stays then.
void write_result(const InputStream& input, const Simulation& simulation,
                  const std::filesystem::path& nlo);

// Pressure in MPa: 0.1 at the top of the model where the head is the highest one of the beginning,
// hydrostatic below; at least 0.001, so that a mark can stand on it.
Vector pressures(const Model& model, const Vector& head);

} // namespace minitervex

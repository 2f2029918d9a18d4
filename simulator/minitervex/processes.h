// Heat and tracers as transport problems.
#pragma once

#include "minitervex/transport.h"

namespace minitervex {

Transport heat_transport(const Model& model);
Transport tracer_transport(const Model& model);

// Conductances of heat in W/K.
Faces heat_conductances(const Model& model);

// Conductances of diffusion and dispersion in m3/s: pores times molecular diffusion, and at each
// face the diagonal of the dispersion tensor for the flux there,
// transverse |q| + (longitudinal - transverse) q_n^2 / |q|.
Faces dispersion_conductances(const Model& model, const FlowField& field);

} // namespace minitervex

// Blocks of wells: where they are, and what they carry in each period.
#pragma once

namespace input {

class Creation;

// NWELAR: wells of each period. A model whose wells never have a rate counts as one without wells
// from here on, and its flag is cleared.
void Set_NWELAR(Creation& creation);
// Temperatures by wells and periods.
void TCON(Creation& creation);
// Re-injected concentrations by wells and species.
void SCON(Creation& creation);
// Numbers of the wells in the walk over the grid.
void IWL(Creation& creation);
// Rates by wells and periods.
void WELLAR(Creation& creation);

} // namespace input

// Blocks of settings that are more than one stored text.
#pragma once

namespace input {

class Creation;

void TITLE(Creation& creation);
// The five water properties: which of them are kept constant, and at which value.
void KOPPX_FLAG(Creation& creation);
void KOPPX_FIELD(Creation& creation);
// The six blocks of the outer iteration.
void Write_PICARD(Creation& creation);
// CMA1 to CMA3: rock capacity as a function of temperature.
void Rock_Capacity(Creation& creation);
// The six blocks of diffusion and dispersion.
void Transport_Properties(Creation& creation);
// Multiple continua: no block where they are off. Ends the creation when no zone is given.
void BOX(Creation& creation);
void ANZSUBS(Creation& creation);
void BETAC(Creation& creation);

} // namespace input

// Recharge and heat flow through the faces of the grid.
#pragma once

namespace input {

class Creation;
class KeywordStream;
class SimulatorField;

// The walks over faces, as run items. A walk writes no line end, but in a model of one cell it
// writes the value as "2*value " and ends the line.
//
// One plane of constant K.
void X_Y_Layer(KeywordStream& stream, const SimulatorField& field, int K);
// Planes I = 1 and I = I0, cell beside cell, J within K. Both are visited where they coincide.
void Y_Z_Layer(KeywordStream& stream, const SimulatorField& field);
// Rows J = 1 and J = J0 within each K. Both are visited where they coincide.
void X_Z_Layer(KeywordStream& stream, const SimulatorField& field);

// "RECH" when a cell of the uppermost plane has recharge, else "NIX".
void IQRE(Creation& creation);
// Top and base.
void QRE(Creation& creation);
// Left and right.
void QRELR(Creation& creation);
// Front and back.
void QREVH(Creation& creation);

void QTOP3D(Creation& creation);
void QBASAL3D(Creation& creation);

} // namespace input

// Blocks that hold a value for every cell of the grid.
#pragma once

namespace input {

class Creation;

// GEOLOGY: the zone numbers.
void GEOLOGY(Creation& creation);
// The array blocks with their marks of fixed concentration (PRES), temperature (POR), head (PERM).
void PRES(Creation& creation);
void POR(Creation& creation);
void PERM(Creation& creation);
void PHI(Creation& creation);
void TEMP(Creation& creation);
// ICE, TSOL and TLIQ of a model with permafrost; no blocks otherwise.
void Permafrost_Arrays(Creation& creation);
// VX, VY and VZ of a prescribed flow field; zeros otherwise.
void Velocities(Creation& creation);

// A block whose cells take the property of their zone: the field of the zone on a line of the rock
// file, completed by `without_point` or `with_point` and compared as text.
struct ZoneProperty {
    int line;
    const char* without_point = ".";
    const char* with_point = "";
    // A negative value of zone 1 only marks the block: its sign goes, and the first cell stands
    // alone.
    bool marked_by_sign = false;
};
void Matrix_Parameter(Creation& creation, const ZoneProperty& property);

// COMP3D by zones, or COMPM as one text.
void COMPM(Creation& creation);

// A CONC block for each active tracer, by zones or from its own array.
void Tracer_Distribution(Creation& creation);

// "1000*0." for all cells, and the like.
void all_cells(Creation& creation, const char* value);

} // namespace input

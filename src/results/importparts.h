// The parts of an import of a model, each of which fills its files from its blocks of the stream.
#pragma once

#include "results/importedstream.h"
#include "results/modelimport.h"

#include "core/arraystore.h"
#include "core/project.h"
#include "input/simulatorgrid.h"
#include "sim/typfile.h"

#include <cstdint>
#include <string>
#include <vector>

namespace core {
class ModelFiles;
}

namespace results {

// What the parts share. Made when the extents of the grid are known and in the project.
struct ModelImport {
    ModelImport(ImportedStream& source, core::Project& model, core::ModelFiles& model_files,
                base::Interaction& asked)
        : stream(source), project(model), files(model_files), user(asked),
          store(model_files, model), grid(model), extents{grid.I0(), grid.J0(), grid.K0()} {}

    ImportedStream& stream;
    core::Project& project;
    core::ModelFiles& files;
    base::Interaction& user;
    core::ArrayStore store;
    input::SimulatorGrid grid;
    StreamGrid extents;

    bool flow() const { return project.flags.FlowActive() == 1; }
    bool heat() const { return project.flags.HeatActive() == 1; }
    bool transport() const { return project.flags.TransportActive() == 1; }
    bool prescribed() const { return flow() && project.flags.FlowPrescribed() == 1; }
};

// KEY, STAT and the switches of the processes; false for a stream with chemistry, which stays off.
bool Set_ppMenu(ModelImport& import);
// Column widths, row heights, layers, and the place of the grid.
void Set_Grid(ModelImport& import);
// <base>.typ with solvers and coupling, and the notes of the model.
void Create_Typ(ModelImport& import);
// <base>.trn, in seconds.
void Create_Trn(ModelImport& import);
// Tracers, dispersion and diffusion, multiple continua.
void Create_Tracer(ModelImport& import);
void Create_Tma(ModelImport& import);
void Create_Box(ModelImport& import);
// The wells of all periods and their concentrations.
void Save_Wells(ModelImport& import);
// Monitoring Points at the centres of their cells.
void Create_Monitors(ModelImport& import);
// Recharge and heat flow through the faces of the grid.
void save_recharge(ModelImport& import);
// Arrays that hold no marks.
void save_fields(ModelImport& import);

// What the user wants of the rock.
struct RockChoice {
    bool individual_porosity = true, individual_permeability = true;
};
// Property Zones, their properties, and the arrays of porosity and permeability.
void Create_Geological_Structure(ModelImport& import, const RockChoice& choice);

enum class Marks { flow, heat, transport };
// The boundary array of a process from the signs of its block, whose cells fixed[n] are in the
// order of the stream, and from the words of the faces.
void save_boundary(ModelImport& import, Marks process, const std::vector<bool>& fixed);
// The cells of a field that carry the mark of a fixed value.
std::vector<bool> marked_cells(const Field& field);

} // namespace results

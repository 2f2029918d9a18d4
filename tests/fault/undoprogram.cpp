// A program that keeps a model open: carries out a command, takes it back and does it again.
//
// undoprogram MODEL, a model with a mesh and a porosity array.

#include "app/undo.h"
#include "app/workspace.h"
#include "core/arraystore.h"
#include "core/extensions.h"
#include "core/notes.h"

#include <cstdlib>
#include <filesystem>

namespace {

constexpr int porosity = 51, temperature = 1402;

void carry_out(app::UndoHistory& history, const std::filesystem::path& model) {
    const auto step = history.step("Note");
    app::Workspace workspace = std::move(*app::load_model(model, core::Access::write).workspace);
    history.attach(workspace.files);
    core::ArrayStore store(workspace.files, workspace.project);
    store.write_array(porosity, 1, 1, core::LayerValues(store.cells_of_layer(), 0.5F));
    workspace.files.remove(core::file_ext(temperature));
    core::Save_IZV_Data(workspace.files, "Notes", "Value", "new");
    workspace.save();
}

} // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        return EXIT_FAILURE;
    }
    app::UndoHistory history(arguments[1]);
    carry_out(history, arguments[1]);
    return history.undo() || history.redo() ? EXIT_FAILURE : EXIT_SUCCESS;
}

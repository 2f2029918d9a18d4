// What minitervex reads, and what it would read next.
#include "checks.h"
#include "scratchfolder.h"
#include "targets.h"

#include "minitervex/modelreader.h"
#include "minitervex/resultfile.h"
#include "minitervex/simulation.h"

#include <algorithm>

namespace fuzz {

namespace {

constexpr int most_cells = 20'000, most_computed_cells = 100, most_iterations = 200;

void require_finite(const ::minitervex::Vector& values) {
    require(values.allFinite(), "a result is no number");
}

// One step; the result is read again as the next input.
void compute(const ::minitervex::InputStream& input, const ::minitervex::Model& model,
             const std::filesystem::path& nlo) {
    ::minitervex::Simulation simulation(model);
    simulation.step(model.periods.front());
    require_finite(simulation.flow().head());
    require_finite(simulation.temperature());
    std::ranges::for_each(simulation.concentrations(), require_finite);
    write_result(input, simulation, nlo);
    require(succeeds([&] {
                const ::minitervex::InputStream next(nlo);
                require(next.blocks().size() == input.blocks().size(), "a block is lost");
                read_model(next);
            }),
            "a result is no next input");
}

} // namespace

void minitervex(std::string_view bytes) {
    const ScratchFolder folder;
    const ::minitervex::InputStream input(folder.write("m.nml", bytes));
    if (read_grid(input).cells() > most_cells) {
        return;
    }
    ::minitervex::Model model = read_model(input);
    if (model.grid.cells() <= most_computed_cells) {
        model.iterations = std::min(model.iterations, most_iterations);
        compute(input, model, folder.path() / "m.nlo");
    }
}

} // namespace fuzz

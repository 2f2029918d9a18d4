// Opening a worksheet session on a large array, and refinement of a model.
#include "benches.h"
#include "models.h"

#include "core/arraystore.h"
#include "core/filemoves.h"
#include "grid/refinement.h"
#include "grid/worksheet.h"
#include "td/terminaluser.h"

#include <benchmark/benchmark.h>

#include <fmt/format.h>

#include <memory>
#include <sstream>
#include <utility>

namespace bench {

namespace fs = std::filesystem;

namespace {

constexpr int temperature = 1402;

// A model with one array of noise, made when it is first asked for.
class ArrayModel {
public:
    ArrayModel(fs::path folder, int side, int layers)
        : project_(std::move(folder) / "m.td1"), side_(side), layers_(layers) {}

    const fs::path& project() {
        if (!fs::exists(project_)) {
            make();
        }
        return project_;
    }
    fs::path array() { return project().parent_path() / "m.tem"; }

private:
    void make() const {
        const std::string side = fmt::to_string(side_);
        fs::create_directories(project_.parent_path());
        td({"new", project_.string(), "--yes"});
        td({"grid", "set", project_.string(), "--layers", fmt::to_string(layers_), "--columns",
            side, "--rows", side, "--finish"});
        app::Workspace workspace = open(project_, core::Access::write);
        core::ArrayStore store(workspace.files, workspace.project);
        const core::LayerValues values = temperatures.values(store.cells_of_layer());
        for (int layer = 1; layer <= layers_; ++layer) {
            store.write_array(temperature, 1, layer, values);
        }
        workspace.save();
    }

    fs::path project_;
    int side_, layers_;
};

void open_session(benchmark::State& state, const fs::path& project) {
    app::Workspace workspace = open(project, core::Access::write);
    std::ostringstream err;
    td::TerminalUser user(err, td::StandingAnswer::none);
    for ([[maybe_unused]] auto _ : state) {
        const auto sheet = grid::Worksheet::Edit_data_for(*grid::find_request(temperature, 0),
                                                          workspace.project, workspace.files, user);
        state.PauseTiming();
        sheet->leave(base::Answer::no);
        state.ResumeTiming();
    }
}

void copy(benchmark::State& state, const fs::path& file) {
    const fs::path target = file.string() + ".copy";
    for ([[maybe_unused]] auto _ : state) {
        core::copy_bytes(file, target, target);
        state.PauseTiming();
        fs::remove(target);
        state.ResumeTiming();
    }
}

void refine(benchmark::State& state, const fs::path& project) {
    app::Workspace workspace = open(project, core::Access::write);
    std::ostringstream err;
    td::TerminalUser user(err, td::StandingAnswer::yes);
    const auto halves = [](int count) {
        return std::vector<int>(static_cast<std::size_t>(count), 2);
    };
    const core::Division division{halves(workspace.project.NX()), halves(workspace.project.NY()),
                                  halves(workspace.project.NZ())};
    for ([[maybe_unused]] auto _ : state) {
        core::Project fresh = workspace.project;
        grid::Do_Grid_Refinement(division, fresh, workspace.files, user);
        state.PauseTiming();
        workspace.files.rollback();
        state.ResumeTiming();
    }
}

} // namespace

void add_sessions(const fs::path& folder) {
    const auto large = std::make_shared<ArrayModel>(folder / "session", 2000, 20);
    const auto coarse = std::make_shared<ArrayModel>(folder / "coarse", 250, 40);
    const auto fine = std::make_shared<ArrayModel>(folder / "fine", 500, 80);
    const auto add = [](const char* name, auto run) {
        benchmark::RegisterBenchmark(name, run)->Iterations(1);
    };
    add("session", [=](benchmark::State& state) { open_session(state, large->project()); });
    add("session copy", [=](benchmark::State& state) { copy(state, large->array()); });
    add("refine", [=](benchmark::State& state) { refine(state, coarse->project()); });
    add("refine copy", [=](benchmark::State& state) { copy(state, fine->array()); });
}

} // namespace bench

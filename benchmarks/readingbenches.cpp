#include "benches.h"
#include "models.h"

#include "core/arraystore.h"

#include <benchmark/benchmark.h>

#include <fmt/format.h>

#include <fcntl.h>
#include <unistd.h>

#include <stdexcept>

namespace bench {

namespace fs = std::filesystem;

namespace {

constexpr int layers = 3, read_layer = 2, number = 1401;
constexpr std::size_t table_bytes = 4000;

void read_array(benchmark::State& state, const fs::path& project, int side) {
    core::ModelFiles files(project, core::Access::read);
    const core::ArrayStore store(files, side, side, layers);
    core::LayerValues values = store.layer_values(number);
    for ([[maybe_unused]] auto _ : state) {
        store.read_array(number, 1, read_layer, values, 0);
        benchmark::DoNotOptimize(values.data());
    }
}

void read_by_reader(benchmark::State& state, const fs::path& project, int side) {
    core::ModelFiles files(project, core::Access::read);
    const core::ArrayStore store(files, side, side, layers);
    core::LayerValues values = store.layer_values(number);
    const auto reader = store.layer_reader(number, 1, 0);
    for ([[maybe_unused]] auto _ : state) {
        reader.read(read_layer, values);
        benchmark::DoNotOptimize(values.data());
    }
}

void bare_pread(int file, std::vector<float>& values) {
    const std::size_t bytes = values.size() * sizeof(float);
    const auto offset = static_cast<off_t>(table_bytes + (read_layer - 1) * bytes);
    if (::pread(file, values.data(), bytes, offset) != static_cast<ssize_t>(bytes)) {
        throw std::runtime_error("the array cannot be read");
    }
    benchmark::DoNotOptimize(values.data());
}

void pread_open_file(benchmark::State& state, const fs::path& array, std::size_t cells) {
    std::vector<float> values(cells);
    const int file = ::open(array.c_str(), O_RDONLY | O_CLOEXEC);
    for ([[maybe_unused]] auto _ : state) {
        bare_pread(file, values);
    }
    ::close(file);
}

void open_pread_close(benchmark::State& state, const fs::path& array, std::size_t cells) {
    std::vector<float> values(cells);
    for ([[maybe_unused]] auto _ : state) {
        const int file = ::open(array.c_str(), O_RDONLY | O_CLOEXEC);
        bare_pread(file, values);
        ::close(file);
    }
}

fs::path write_layers(const fs::path& project, int side) {
    core::ModelFiles files(project, core::Access::write);
    core::ArrayStore store(files, side, side, layers);
    const std::vector<float> values = permeabilities.values(store.cells_of_layer());
    for (int layer = 1; layer <= layers; ++layer) {
        store.write_array(number, 1, layer, values);
    }
    files.commit();
    return files.name_of(".per");
}

void add_layer(const fs::path& folder, int side) {
    const fs::path project = folder / fmt::format("layers{}.td1", side);
    const fs::path array = write_layers(project, side);
    const auto cells = static_cast<std::size_t>(side) * static_cast<std::size_t>(side);
    const auto add = [side](const char* name, auto run) {
        benchmark::RegisterBenchmark(fmt::format("{} {}", name, side).c_str(), run);
    };
    add("read_array", [=](benchmark::State& state) { read_array(state, project, side); });
    add("LayerReader", [=](benchmark::State& state) { read_by_reader(state, project, side); });
    add("pread", [=](benchmark::State& state) { pread_open_file(state, array, cells); });
    add("open pread", [=](benchmark::State& state) { open_pread_close(state, array, cells); });
}

void read_checked_arrays(benchmark::State& state, const fs::path& model) {
    app::Workspace workspace = open(model, core::Access::read);
    const core::ArrayStore store(workspace.files, workspace.project);
    core::LayerValues values(store.cells_of_layer());
    for ([[maybe_unused]] auto _ : state) {
        for (const int array : checked_arrays) {
            for (int layer = 1; layer <= store.layers(array); ++layer) {
                store.read_array(array, 1, layer, values, 0);
                benchmark::DoNotOptimize(values.data());
            }
        }
    }
}

void check(benchmark::State& state, const fs::path& model) {
    for ([[maybe_unused]] auto _ : state) {
        td({"check", model.string()});
    }
}

} // namespace

void add_layer_reading(const fs::path& folder) {
    for (const int side : {100, 400, 1000}) {
        add_layer(folder, side);
    }
}

void add_check(CubeModel& model) {
    benchmark::RegisterBenchmark("check",
                                 [&model](benchmark::State& state) { check(state, model.file()); });
    benchmark::RegisterBenchmark("check arrays", [&model](benchmark::State& state) {
        read_checked_arrays(state, model.file());
    });
}

} // namespace bench

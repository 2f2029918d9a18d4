#include "benches.h"
#include "childprocess.h"
#include "models.h"

#include "base/numbertext.h"

#include <benchmark/benchmark.h>

#include <fmt/format.h>

#include <fstream>

namespace bench {

namespace fs = std::filesystem;

namespace {

constexpr int layers = 40;
constexpr Noise porosities{0.05F, 0.3F};

void write_noise(std::ofstream& out, const char* keyword, const Noise& noise, std::size_t cells) {
    std::string text = fmt::format("# {}\r\n", keyword);
    for (const float value : noise.values(cells)) {
        base::append_Format_Print(text, value, 1);
    }
    out << text << "\r\n";
}

// A stream whose fields differ from cell to cell, but for the zones.
fs::path write_stream(const fs::path& file, int columns, int rows) {
    if (fs::exists(file)) {
        return file;
    }
    const std::size_t cells = std::size_t(columns) * std::size_t(rows) * layers;
    std::ofstream out(file, std::ios::binary);
    out << fmt::format("# TITLE\r\nbench\r\n# I0\r\n {} \r\n# J0\r\n {} \r\n# K0\r\n {} \r\n"
                       "# KEY\r\nFU---\r\n# TOPF\r\nNFLO\r\n# BASEF\r\nFLO\r\n# DELX\r\n{}*10. \r\n"
                       "# DELY\r\n{}*10. \r\n# DELZ\r\n{}*5. \r\n# GEOLOGY\r\n{}*1 {}*2 \r\n",
                       columns, rows, layers, columns, rows, layers, cells / 2, cells / 2);
    write_noise(out, "POR", porosities, cells);
    write_noise(out, "PERM", permeabilities, cells);
    write_noise(out, "PHI", temperatures, cells);
    out << fmt::format("# RHOCM\r\n{}*2.06E6 \r\n", cells);
    write_noise(out, "TEMP", temperatures, cells);
    return file;
}

Usage import(const fs::path& stream, const fs::path& model) {
    return run_child(TD_PROGRAM, {"import-model", stream.string(), model.string(), "--porosity",
                                  "individual", "--permeability", "individual", "--overwrite"});
}

} // namespace

void add_import(const fs::path& folder) {
    const auto add = [&folder](const char* name, int columns, int rows, auto cost) {
        benchmark::RegisterBenchmark(
            name,
            [=, folder = folder](benchmark::State& state) {
                const fs::path stream =
                    write_stream(folder / fmt::format("import{}.nlo", columns), columns, rows);
                for ([[maybe_unused]] auto _ : state) {
                    const Usage usage = import(stream, folder / "imported.td1");
                    state.counters["cost"] = cost(usage, double(columns) * rows * layers);
                }
            })
            ->Iterations(1)
            ->Repetitions(1);
    };
    const auto per_cell = [](const Usage& usage, double cells) {
        return usage.cpu_seconds / cells;
    };
    add("import 1M per cell", 250, 100, per_cell);
    add("import 10M per cell", 500, 500, per_cell);
    add("import memory", 500, 500, [](const Usage& usage, double) { return usage.peak_bytes; });
}

} // namespace bench

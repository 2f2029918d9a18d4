// Conversions of results.
#include "benches.h"
#include "models.h"

#include "convert/resultcache.h"
#include "td/terminaluser.h"

#include <benchmark/benchmark.h>

#include <fstream>
#include <memory>
#include <sstream>

namespace bench {

namespace fs = std::filesystem;

namespace {

constexpr results::StreamGrid cache_grid{200, 200, 100};
constexpr std::size_t cache_head = 1000;

// A field in memory and the bytes of a cache that holds it alone.
struct CachedField {
    explicit CachedField(const fs::path& folder)
        : nlo(folder / "cached.nlo"), rvb(folder / "cached.rvb"), field(cache_grid) {
        std::ofstream(nlo) << "";
        const std::vector<float> noise = temperatures.values(cache_grid.cells());
        const auto columns = static_cast<std::size_t>(cache_grid.I0);
        for (std::size_t row = 0; row < noise.size() / columns; ++row) {
            const int rows = cache_grid.J0, n = static_cast<int>(row);
            std::copy_n(noise.begin() + static_cast<std::ptrdiff_t>(row * columns), columns,
                        field.row(n / rows + 1, n % rows + 1).begin());
        }
        write_cache();
        bytes.resize(fs::file_size(rvb));
        core::RandomFile(rvb, core::RandomFile::Mode::read, rvb).read(0, bytes);
    }

    void write_cache() const {
        fs::remove(rvb);
        convert::CacheUpdate cache(nlo, cache_grid);
        cache.SaveArray(1, field);
        cache.commit();
    }
    // The same bytes as they are, through the same door.
    void write_plainly() const {
        const fs::path plain = rvb.parent_path() / "plain.rvb";
        fs::remove(plain);
        core::ModelFiles files(plain, core::Access::write);
        files.write(".rvb", bytes);
        files.commit();
    }
    void read_cache() const {
        std::ostringstream boxes;
        td::TerminalUser user(boxes, td::StandingAnswer::none);
        const core::RandomFile cache(rvb, core::RandomFile::Mode::read, rvb);
        auto read = convert::read_slot(1, cache, cache_grid, results::FieldOrder::viewer, user);
        benchmark::DoNotOptimize(read->row(1, 1).data());
    }
    // The values of the slot in their order.
    void read_plainly() const {
        const core::RandomFile cache(rvb, core::RandomFile::Mode::read, rvb);
        std::vector<float> values(cache_grid.cells());
        cache.read_singles(cache_head, values);
        benchmark::DoNotOptimize(values.data());
    }

    fs::path nlo, rvb;
    results::Field field;
    std::string bytes;
};

} // namespace

void add_cache(const fs::path& folder) {
    const auto made = std::make_shared<std::unique_ptr<CachedField>>();
    const auto field = [=]() -> const CachedField& {
        if (!*made) {
            *made = std::make_unique<CachedField>(folder);
        }
        return **made;
    };
    const auto add = [&](const char* name, auto work) {
        benchmark::RegisterBenchmark(name, [=](benchmark::State& state) {
            const CachedField& cached = field();
            for ([[maybe_unused]] auto _ : state) {
                work(cached);
            }
        })->UseRealTime();
    };
    add("rvb write", [](const CachedField& cached) { cached.write_cache(); });
    add("plain write", [](const CachedField& cached) { cached.write_plainly(); });
    add("rvb field", [](const CachedField& cached) { cached.read_cache(); });
    add("rvb bare read", [](const CachedField& cached) { cached.read_plainly(); });
}

} // namespace bench

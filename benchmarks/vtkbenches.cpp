// Fields for other programs: the text and the binary form, against the least that writes as much.
#include "benches.h"
#include "models.h"

#include "convert/legacyvtk.h"
#include "convert/vtrfile.h"
#include "core/modelfiles.h"

#include <benchmark/benchmark.h>

#include <charconv>
#include <memory>
#include <numeric>

#include <fcntl.h>

namespace bench {

namespace fs = std::filesystem;

namespace {

constexpr results::StreamGrid grid{200, 200, 100};
constexpr std::size_t columns = 200;
constexpr std::size_t vtr_fields = 4;

results::Field field_of(const Noise& noise) {
    const std::vector<float> values = noise.values(grid.cells());
    results::Field field(grid);
    std::size_t first = 0;
    for (int layer = 1; layer <= grid.K0; ++layer) {
        for (int row = 1; row <= grid.J0; ++row, first += columns) {
            std::ranges::copy(std::span(values).subspan(first, columns),
                              field.row(layer, row).begin());
        }
    }
    return field;
}

std::span<const float> all_values(const results::Field& field) {
    return {field.row(1, 1).data(), grid.cells()};
}

// A file of a model as a command writes it.
template <class Write>
void write_file(const fs::path& folder, Write write) {
    core::ModelFiles files(folder / "vtk.td1", core::Access::write);
    convert::OutputFile out(files, folder / "vtk.out");
    write(out.sink());
    out.finish();
}

// The same bytes into a new file on the disk, as they are.
void write_plainly(const fs::path& folder, std::span<const std::string_view> pieces) {
    const fs::path plain = folder / "plain.out";
    core::Descriptor out(plain, O_WRONLY | O_CREAT | O_TRUNC, plain);
    for (const std::string_view piece : pieces) {
        out.write(piece);
    }
    out.flush();
}

void write_text(const fs::path& folder, const results::Field& field) {
    write_file(folder, [&](const convert::Sink& sink) {
        print_scalars(field, convert::ValueForm::plain, folder, sink);
    });
}

void write_digits(const fs::path& folder, const results::Field& field) {
    constexpr std::size_t longest = 32;
    std::vector<char> buffer(std::size_t{1} << 20);
    const fs::path plain = folder / "plain.out";
    core::Descriptor out(plain, O_WRONLY | O_CREAT | O_TRUNC, plain);
    char* at = buffer.data();
    for (const float value : all_values(field)) {
        if (at > buffer.data() + buffer.size() - longest) {
            out.write({buffer.data(), at});
            at = buffer.data();
        }
        at = std::to_chars(at, at + longest, value, std::chars_format::general, 7).ptr;
        *at++ = ' ';
    }
    out.write({buffer.data(), at});
    out.flush();
}

std::array<std::vector<double>, 3> equal_edges() {
    std::array<std::vector<double>, 3> edges;
    for (const auto& [axis, count] : {std::pair{0, grid.I0}, {1, grid.J0}, {2, grid.K0}}) {
        edges[static_cast<std::size_t>(axis)].resize(static_cast<std::size_t>(count) + 1);
        std::iota(edges[static_cast<std::size_t>(axis)].begin(),
                  edges[static_cast<std::size_t>(axis)].end(), 0.0);
    }
    return edges;
}

void write_vtr(const fs::path& folder, const results::Field& field) {
    write_file(folder, [&](const convert::Sink& sink) {
        convert::VtrFile file(sink, equal_edges(),
                              std::vector<convert::VtrField>(vtr_fields, {"Temperature"}));
        const std::span<const float> values = all_values(field);
        const std::size_t of_layer = columns * static_cast<std::size_t>(grid.J0);
        for (std::size_t n = 0; n < vtr_fields; ++n) {
            file.begin_field();
            for (std::size_t first = 0; first < values.size(); first += of_layer) {
                file.add(values.subspan(first, of_layer));
            }
        }
        file.finish();
    });
}

void write_bytes(const fs::path& folder, const results::Field& field) {
    const std::span<const float> values = all_values(field);
    const std::string_view bytes{reinterpret_cast<const char*>(values.data()), values.size_bytes()};
    write_plainly(folder, std::vector<std::string_view>(vtr_fields, bytes));
}

} // namespace

void add_vtk(const fs::path& folder) {
    const auto add = [&](const char* name, const Noise& noise, auto write) {
        benchmark::RegisterBenchmark(name, [folder, noise, write](benchmark::State& state) {
            const results::Field field = field_of(noise);
            for ([[maybe_unused]] auto _ : state) {
                write(folder, field);
            }
        })->Iterations(1);
    };
    add("vtk temperature", temperatures, write_text);
    add("vtk temperature digits", temperatures, write_digits);
    add("vtk permeability", permeabilities, write_text);
    add("vtk permeability digits", permeabilities, write_digits);
    add("vtr", temperatures, write_vtr);
    add("vtr bytes", temperatures, write_bytes);
}

} // namespace bench

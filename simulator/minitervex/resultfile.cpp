#include "minitervex/resultfile.h"

#include "base/failure.h"
#include "input/compact.h"
#include "input/keywordstream.h"

#include <fmt/format.h>

#include <cmath>
#include <map>
#include <system_error>

namespace minitervex {

namespace {

// The blocks that are written anew. VX, VY and VZ hold the flux of the outer face in the last cell.
std::map<std::string, Vector> new_blocks(const Simulation& simulation, const Faces& velocity) {
    constexpr std::array<const char*, 3> axes{"VX", "VY", "VZ"};
    const Model& model = simulation.model();
    std::map<std::string, Vector> blocks;
    if (model.flow.active && !model.flow.prescribed) {
        blocks["PHI"] = simulation.flow().head();
        for (std::size_t axis = X; axis <= Z; ++axis)
            blocks[axes[axis]] = velocity.along[axis] - model.flow.outer_inflow.along[axis];
    }
    if (model.heat.active)
        blocks["TEMP"] = simulation.temperature();
    for (std::size_t n = 0; n < simulation.concentrations().size(); ++n)
        blocks[fmt::format("CONC {}", n + 1)] = simulation.concentrations()[n];
    blocks["DICHTE"] = Vector::Constant(model.grid.cells(), model.water.density);
    blocks["PRES"] = pressures(model, simulation.flow().head());
    for (int cell = 0; cell < model.grid.cells(); ++cell)
        if (model.tracers.fixed[static_cast<std::size_t>(cell)] != 0)
            blocks["PRES"][cell] *= -1;
    return blocks;
}

void put_values(input::KeywordStream& stream, const Vector& values) {
    input::Runs runs = input::real_runs(stream);
    for (const double value : values)
        runs.add(single(value));
    runs.finish();
    stream.end_line();
}

// Lines of the input as they stand, each closed by CR LF.
void put_lines(input::KeywordStream& stream, std::string_view lines) {
    while (!lines.empty()) {
        const std::size_t end = std::min(lines.find('\n'), lines.size());
        std::string_view line = lines.substr(0, end);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        stream.put(line);
        stream.end_line();
        lines.remove_prefix(std::min(end + 1, lines.size()));
    }
}

namespace fs = std::filesystem;

// A link stays a link.
fs::path target_of(const fs::path& nlo) {
    std::error_code no_link;
    fs::path target = fs::canonical(nlo, no_link);
    return no_link ? nlo : target;
}

// Where the new file grows before it takes the place of the old one.
class BesideFile {
public:
    explicit BesideFile(const fs::path& nlo) : nlo_(nlo), target_(target_of(nlo)), path_(target_) {
        path_ += ".new";
    }
    ~BesideFile() {
        std::error_code ignored;
        fs::remove(path_, ignored);
    }
    BesideFile(const BesideFile&) = delete;
    BesideFile& operator=(const BesideFile&) = delete;

    const fs::path& path() const { return path_; }
    void move_over() const {
        std::error_code failed;
        fs::rename(path_, target_, failed);
        if (failed)
            throw base::FileFailure(fmt::format("cannot be written: {}", failed.message()), nlo_);
    }

private:
    fs::path nlo_, target_, path_;
};

} // namespace

Vector pressures(const Model& model, const Vector& head) {
    constexpr double megapascal = 1E6, atmosphere = 0.1, least = 0.001;
    const double highest = model.flow.head.maxCoeff();
    const double weight = model.water.density * model.water.gravity / megapascal;
    Vector pressure(model.grid.cells());
    const int layer = model.grid.count[X] * model.grid.count[Y];
    for (int k = 0; k < model.grid.count[Z]; ++k) {
        const double depth = model.grid.depth(k * layer);
        for (int cell = k * layer; cell < (k + 1) * layer; ++cell)
            pressure[cell] = std::max(least, atmosphere + weight * (depth + head[cell] - highest));
    }
    return pressure;
}

void require_writable(const std::filesystem::path& nlo) {
    const BesideFile beside(nlo);
    std::error_code none;
    if (fs::is_directory(nlo, none))
        throw base::FileFailure("cannot be written: it is a folder", nlo);
    input::KeywordStream(beside.path(), nlo).finish();
}

void write_result(const InputStream& input, const Simulation& simulation,
                  const std::filesystem::path& nlo) {
    const BesideFile beside(nlo);
    const auto blocks = new_blocks(simulation, simulation.velocity());
    input::KeywordStream stream(beside.path(), nlo);
    for (const Block& block : input.blocks()) {
        put_lines(stream, block.key_line);
        const auto values = blocks.find(block.keyword);
        if (values == blocks.end())
            put_lines(stream, block.body);
        else
            put_values(stream, values->second);
    }
    stream.finish();
    beside.move_over();
}

} // namespace minitervex

#include "models.h"

#include "core/arraystore.h"
#include "core/itemcells.h"
#include "td/command.h"

#include <fmt/format.h>

#include <cmath>
#include <random>
#include <sstream>
#include <stdexcept>
#include <system_error>
#include <utility>

#include <stdlib.h>

namespace bench {

namespace fs = std::filesystem;

ScratchFolder::ScratchFolder() {
    std::string name = (fs::temp_directory_path() / "td-bench-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) {
        throw std::runtime_error("no temporary folder: " + name);
    }
    path_ = name;
}

ScratchFolder::~ScratchFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

std::vector<float> Noise::values(std::size_t count) const {
    std::mt19937 random(20240517);
    const float from = by_decades ? std::log10(low) : low;
    const float to = by_decades ? std::log10(high) : high;
    std::uniform_real_distribution<float> spread(from, to);
    std::vector<float> values(count);
    for (float& value : values) {
        value = by_decades ? std::pow(10.0F, spread(random)) : spread(random);
    }
    return values;
}

void td(const std::vector<std::string>& words) {
    std::istringstream in;
    std::ostringstream out, err;
    if (td::run_program(words, in, out, err) != td::done) {
        throw std::runtime_error(
            fmt::format("td {}: {}{}", fmt::join(words, " "), out.str(), err.str()));
    }
}

namespace {

void fill_array(app::Workspace& model, int number, const Noise& noise) {
    core::ArrayStore store(model.files, model.project);
    const std::vector<float> values = noise.values(store.cells_of_layer());
    for (int layer = 1; layer <= store.layers(number); ++layer) {
        store.write_array(number, 1, layer, values);
    }
    core::mark_item_defined(model.project.flags, number);
}

void fill_arrays(const fs::path& file) {
    constexpr std::pair<int, Noise> arrays[] = {
        {1403, {2, 2}},          // property zones
        {5, {1, 1}},             // flow boundaries
        {6, {0.05F, 0.3F}},      // porosity
        {10, {100, 100}},        // hydraulic head
        {1401, permeabilities},  // permeability
        {1402, temperatures},    // temperature
        {1405, {1, 1}},          // heat boundaries
        {1434, {0.001F, 0.04F}}, // ice content
        {1435, {-2, -2}},        // solidus
        {1436, {0, 0}},          // liquidus
        {1406, {0, 0}},          // tracer zones
        {40, {1, 1}},            // transport boundaries
    };
    app::Workspace model = open(file, core::Access::write);
    for (const auto& [number, noise] : arrays) {
        fill_array(model, number, noise);
    }
    model.save();
}

void make_model(const fs::path& file, int side) {
    const std::string model = file.string(), count = fmt::to_string(side);
    td({"new", model});
    td({"grid", "set", model, "--columns", count, "--column-size", "10", "--rows", count,
        "--row-size", "10", "--layers", count, "--finish"});
    td({"layers", "set", model, "--geometry", "thickness", "--thickness", "all=10"});
    td({"type", "set", model, "--flow", "1", "--flow-type", "simulated", "--heat", "1",
        "--permafrost", "1", "--transport", "1"});
    td({"coupling", "set", model, "--full", "1"});
    td({"info-results", "set", model});
    td({"rock", "set", model, "--zones", "3", "--porosity", "all=0.2", "--permeability",
        "all=1E-15"});
    td({"heat", "set", model, "--capacity", "all=2.3", "--conductivity", "all=2.5"});
    td({"tracer", "set", model, "--tracer", "1", "--active", "1", "--concentration", "1"});
    td({"dispersion", "set", model, "--diffusion", "0.5", "--longitudinal", "20", "--transverse",
        "2"});
    td({"periods", "set", model, "--unit", "5", "--flow", "transient", "--period", "1", "--length",
        "10", "--steps", "10"});
    td({"solver", "set", model, "bicgstab"});
    fill_arrays(file);
    td({"check", model});
}

} // namespace

fs::path CubeModel::file() {
    const fs::path file = folder_ / "model.td1";
    if (fs::create_directories(folder_)) {
        make_model(file, side_);
    }
    return file;
}

app::Workspace open(const fs::path& model, core::Access access) {
    return std::move(*app::load_model(model, access).workspace);
}

} // namespace bench

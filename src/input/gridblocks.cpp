#include "input/gridblocks.h"

#include "base/failure.h"
#include "base/numbertext.h"
#include "core/modelfiles.h"
#include "core/project.h"
#include "input/compact.h"
#include "input/creation.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace input {

grid::LayerFile layers_of_model(const Creation& creation) {
    auto file = grid::LayerFile::load(creation.files, creation.project.NZ());
    if (!file || file->layers.empty()) {
        throw base::FileFailure("has no layer data for the grid", creation.files.name_of(".l"));
    }
    return *std::move(file);
}

grid::GridFile grid_of_model(const Creation& creation) {
    auto file = grid::GridFile::load(creation.files);
    if (!file) {
        throw base::FileFailure("the grid file is missing", creation.files.name_of(".xy"));
    }
    const core::Project& project = creation.project;
    if (file->NX != project.NX() || file->NY != project.NY()) {
        throw base::FileFailure(fmt::format("has {} columns and {} rows, where the project has {} "
                                            "and {}",
                                            file->NX, file->NY, project.NX(), project.NY()),
                                creation.files.name_of(".xy"));
    }
    return *std::move(file);
}

namespace {

// Simulator numbers of the unconfined layers, ascending. Layer types say nothing about the rows of
// a cross-section.
std::vector<int> unconfined_layers(const Creation& creation) {
    std::vector<int> numbers;
    if (!creation.grid.horizontal()) {
        return numbers;
    }
    const auto layers = layers_of_model(creation).layers;
    for (int K = 1; K <= creation.grid.K0(); ++K) {
        const int layer = creation.grid.cell({1, 1, K}).layer;
        if (layers[static_cast<std::size_t>(layer - 1)].type != 0) {
            numbers.push_back(K);
        }
    }
    return numbers;
}

void KFREE(KeywordStream& stream, const std::vector<int>& layers) {
    for (const int K : layers) {
        stream.put_integer(K);
    }
    if (const int rest = vector_size - static_cast<int>(layers.size()); rest > 0) {
        stream.put(fmt::format("{}*0", rest));
    }
    stream.end_line();
}

} // namespace

void K_N_FREE(Creation& creation) {
    std::vector<int> layers;
    const bool read = creation.attempt("K_N_FREE", [&] { layers = unconfined_layers(creation); });
    creation.block("NFREE", [&] {
        if (read) {
            creation.stream.integer_line(static_cast<int>(layers.size()));
        }
    });
    creation.block("KFREE", [&] {
        if (read) {
            KFREE(creation.stream, layers);
        }
    });
}

namespace {

// "2*10. 5. 12.5 ": widths with equal neighbours folded.
void folded_sizes(KeywordStream& stream, const std::vector<float>& sizes) {
    Runs runs([&stream](float size, std::int64_t count) {
        stream.put(base::run_item(completed(base::value_text(size), "."), count));
    });
    for (const float size : sizes) {
        runs.add(size);
    }
    runs.finish();
    stream.end_line();
}

// Row heights begin with the worksheet's last row.
void row_sizes(Creation& creation) {
    std::vector<float> heights = grid_of_model(creation).Row_Height;
    std::ranges::reverse(heights);
    folded_sizes(creation.stream, heights);
}

// Mean distance of the layer's upper and lower face, by the arrays 3 and 4; in single precision, as
// the arrays are.
std::vector<float> Dicke_Layer(const Creation& creation) {
    std::vector<float> thicknesses;
    for (const auto& layer : layers_of_model(creation).layers) {
        thicknesses.push_back(layer.thickness);
    }
    return thicknesses;
}

std::vector<float> Top_Bottom_Layer(const Creation& creation) {
    std::vector<float> thicknesses;
    for (int layer = 1; layer <= creation.project.NZ(); ++layer) {
        thicknesses.push_back(mean_thickness(creation.arrays.read_layer(arrays::top, layer),
                                             creation.arrays.read_layer(arrays::bot, layer),
                                             creation.project.NX()));
    }
    return thicknesses;
}

// One value a layer in the order of the simulator's index, never folded. No line where the layer
// geometry is of an unknown kind.
void layer_sizes(Creation& creation) {
    const int geometry = creation.project.flags(0, 0);
    if (geometry != 0 && geometry != 1) {
        return;
    }
    auto sizes = geometry == 1 ? Dicke_Layer(creation) : Top_Bottom_Layer(creation);
    if (creation.grid.horizontal()) {
        std::ranges::reverse(sizes);
    }
    for (const float size : sizes) {
        creation.stream.put(completed(base::value_text(size), "."));
        creation.stream.put(" ");
    }
    creation.stream.end_line();
}

} // namespace

float mean_thickness(std::span<const float> top, std::span<const float> bottom, int NX) {
    const auto columns = static_cast<std::size_t>(NX);
    float sum = 0;
    for (std::size_t row = top.size(); row > 0; row -= columns) {
        for (std::size_t cell = row - columns; cell < row; ++cell) {
            sum += top[cell] - bottom[cell];
        }
    }
    return std::abs(sum) / static_cast<float>(top.size());
}

void DELX(Creation& creation) {
    folded_sizes(creation.stream, grid_of_model(creation).Column_Width);
}

void DELY(Creation& creation) {
    creation.grid.horizontal() ? row_sizes(creation) : layer_sizes(creation);
}

void DELZ(Creation& creation) {
    creation.grid.horizontal() ? layer_sizes(creation) : row_sizes(creation);
}

} // namespace input

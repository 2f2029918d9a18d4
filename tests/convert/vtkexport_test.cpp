#include "convert/cellvalues.h"
#include "convert/fieldchoice.h"

#include <gtest/gtest.h>

namespace {

using convert::LayerValues;

const results::StreamGrid column{1, 1, 3}; // one cell above the other

// The layers of a column of cells.
std::vector<LayerValues> layers_of(const std::vector<float>& values) {
    std::vector<LayerValues> layers;
    for (std::size_t k = 0; k < values.size(); ++k) {
        const auto cell = [&](std::size_t n) {
            return n < values.size() ? std::span(values).subspan(n, 1) : std::span<const float>();
        };
        layers.push_back({cell(k - 1), cell(k), cell(k + 1)});
    }
    return layers;
}

TEST(CellValues, the_ends_of_an_axis_take_the_inner_face) {
    const std::vector<float> one{4, 4, 4}, faces{1, 3, 100};
    const auto still = layers_of(one), up = layers_of(faces);
    for (const auto& [layer, expected] : {std::pair{1, 1.F}, {2, 2.F}, {3, 3.F}}) {
        const auto n = static_cast<std::size_t>(layer - 1);
        std::vector<float> components(3);
        convert::centre_vectors(column, layer, {still[n], still[n], up[n]}, components);
        EXPECT_EQ(components, (std::vector<float>{4, 4, expected}));
    }
}

TEST(CellValues, ugradT_is_the_mean_of_both_faces) {
    const std::vector<float> none{0, 0, 0}, velocity{2, 4, 100}, temperature{10, 13, 21};
    const auto still = layers_of(none), up = layers_of(velocity), T = layers_of(temperature);
    const convert::AxisSizes sizes{{{1}, {1}, {2, 4, 12}}};
    // Slopes 1 K/m and 1 K/m between the centres, 3 m and 8 m apart.
    for (const auto& [layer, expected] : {std::pair{1, 1.F}, {2, 3.F}, {3, 2.F}}) {
        const auto n = static_cast<std::size_t>(layer - 1);
        std::vector<float> value{-1};
        convert::Calculate_ugradT(column, sizes, layer, T[n], {still[n], still[n], up[n]}, value);
        EXPECT_EQ(value[0], expected) << layer;
    }
}

TEST(FileNames, names_become_parts_of_file_names) {
    EXPECT_EQ(convert::file_name_part("../a\\b:c*\"<>|?\n"), ".._a_b_c_______");
    EXPECT_EQ(convert::file_name_part(std::string(300, 'x')).size(), 40U);
    EXPECT_EQ(convert::file_name_part("Größe 1"), "Größe 1");
    EXPECT_EQ(convert::vtk_file("a.b/m.nlo", "../x"), "a.b/m-.._x.vtk");
    EXPECT_EQ(convert::vtk_file("a/m.nlo.00", "x"), "a/m.nlo.00-x.vtk");
}

} // namespace

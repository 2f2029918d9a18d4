#include "input/simulatorgrid.h"

#include "input/smallmodel.h"

#include <gtest/gtest.h>

#include <numeric>

using input::SimulatorGrid;
using input::test::SmallModel;

namespace {

// Column, row and layer of each cell as the digits of its value: 234 is column 2, row 3, layer 4.
std::vector<float> named_cells(int nx, int ny, int nz) {
    std::vector<float> values;
    for (int layer = 1; layer <= nz; ++layer) {
        for (int row = 1; row <= ny; ++row) {
            for (int column = 1; column <= nx; ++column) {
                values.push_back(float(100 * column + 10 * row + layer));
            }
        }
    }
    return values;
}

std::string heads(int orientation) {
    SmallModel model(2, 3, 4, orientation);
    model.set_array(10, named_cells(2, 3, 4));
    model.create();
    return model.line("PHI");
}

} // namespace

TEST(SimulatorGrid, a_horizontal_model_is_walked_from_its_lowest_layer_and_last_row) {
    EXPECT_EQ(heads(core::horizontal), "134. 234. 124. 224. 114. 214. "
                                       "133. 233. 123. 223. 113. 213. "
                                       "132. 232. 122. 222. 112. 212. "
                                       "131. 231. 121. 221. 111. 211. ");
}

TEST(SimulatorGrid, a_cross_section_is_walked_from_its_bottom_row_through_its_sections) {
    const std::string walk = "131. 231. 132. 232. 133. 233. 134. 234. "
                             "121. 221. 122. 222. 123. 223. 124. 224. "
                             "111. 211. 112. 212. 113. 213. 114. 214. ";
    EXPECT_EQ(heads(core::vertical), walk);
    EXPECT_EQ(heads(core::cylindrical), walk);
    EXPECT_EQ(heads(core::heat_exchanger), walk);
}

TEST(SimulatorGrid, the_extents_of_a_cross_section_are_columns_layers_rows) {
    SmallModel model(2, 3, 4, core::vertical);
    model.create();
    EXPECT_EQ(model.line("I0"), "       2 ");
    EXPECT_EQ(model.line("J0"), "       4 ");
    EXPECT_EQ(model.line("K0"), "       3 ");
    EXPECT_EQ(model.line("JDIM"), "       4 ");
}

TEST(SimulatorGrid, the_two_maps_are_each_others_inverse_and_follow_the_walk) {
    for (const int orientation : {core::horizontal, core::vertical}) {
        const SimulatorGrid grid(2, 3, 4, orientation);
        std::int64_t place = 0;
        for (int K = 1; K <= grid.K0(); ++K) {
            for (int J = 1; J <= grid.J0(); ++J) {
                for (int I = 1; I <= grid.I0(); ++I, ++place) {
                    const input::SimulatorIndex index{I, J, K};
                    EXPECT_EQ(grid.index(grid.cell(index)), index);
                    EXPECT_EQ(grid.place(index), place);
                }
            }
        }
        EXPECT_EQ(place, grid.N());
    }
}

TEST(SimulatorGrid, the_number_of_cells_may_exceed_32_bits) {
    EXPECT_EQ(SimulatorGrid(2000, 2000, 2000, 0).N(), 8'000'000'000);
}

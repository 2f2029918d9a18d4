#include "input/gridblocks.h"

#include "input/smallmodel.h"

#include <gtest/gtest.h>

using input::test::SmallModel;

namespace {

void give_sizes(SmallModel& model, std::vector<float> columns, std::vector<float> rows) {
    grid::GridFile grid{int(columns.size()), int(rows.size()), model.project.NZ(), columns, rows};
    grid::Save_Grid_File(grid, model.project, model.files);
}

void give_thicknesses(SmallModel& model, const std::vector<float>& thicknesses) {
    auto layers = grid::LayerFile::defaults(int(thicknesses.size()));
    for (std::size_t layer = 0; layer < thicknesses.size(); ++layer) {
        layers.layers[layer].thickness = thicknesses[layer];
    }
    layers.save(model.files);
}

} // namespace

TEST(CellSizes, of_a_horizontal_model) {
    SmallModel model(3, 3, 3);
    give_sizes(model, {2.5F, 2.5F, 10}, {1, 2, 2});
    give_thicknesses(model, {1, 1, 0.5F});
    model.create();
    EXPECT_EQ(model.line("DELX"), "2*2.5 10. ");
    EXPECT_EQ(model.line("DELY"), "2*2. 1. ");
    EXPECT_EQ(model.line("DELZ"), "0.5 1. 1. "); // never folded
}

TEST(CellSizes, of_a_cross_section_exchange_layers_and_rows) {
    SmallModel model(3, 3, 2, core::vertical);
    give_sizes(model, {2.5F, 2.5F, 10}, {1, 2, 2});
    give_thicknesses(model, {0.5F, 3});
    model.create();
    EXPECT_EQ(model.line("DELX"), "2*2.5 10. ");
    EXPECT_EQ(model.line("DELY"), "0.5 3. ");
    EXPECT_EQ(model.line("DELZ"), "2*2. 1. ");
}

TEST(CellSizes, mean_thickness_comes_from_top_and_bottom) {
    SmallModel model(2, 1, 2);
    model.project.flags.set(0, 0, 0);
    model.set_array(3, {10, 12, 4, 4});
    model.set_array(4, {4, 4, 0, 1});
    model.create();
    EXPECT_EQ(model.line("DELZ"), "3.5 7. ");
    model.project.flags.set(0, 0, 5);
    model.create();
    EXPECT_EQ(model.block("DELZ"), "");
}

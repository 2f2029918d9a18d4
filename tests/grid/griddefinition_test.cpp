#include "grid/griddefinition.h"

#include "base/failure.h"
#include "support/failureof.h"
#include "testmodel.h"

#include <numbers>
#include <random>

namespace grid {
namespace {

GridFile grid_of(std::vector<float> widths, std::vector<float> heights, int layers = 1) {
    GridFile grid;
    grid.NX = static_cast<int>(widths.size());
    grid.NY = static_cast<int>(heights.size());
    grid.NZ = layers;
    grid.Column_Width = std::move(widths);
    grid.Row_Height = std::move(heights);
    return grid;
}

std::string failure_of(std::string_view bytes) {
    return support::failure_of([&] { GridFile::read(bytes, "m.xy"); }, "m.xy");
}

core::Project project_at(float left, float top, double radians = 0) {
    core::Project project;
    project.set_single("GRIDPOSITION", "LEFT", left);
    project.set_single("GRIDPOSITION", "TOP", top);
    project.set_single("GRIDPOSITION", "RAD", static_cast<float>(radians));
    return project;
}

TEST(GridFile, is_written_in_plain_printed_form_a_size_a_line) {
    EXPECT_EQ(grid_of({0.5F, 10}, {2.25F}, 3).bytes(), " 2  1  3 \r\n .5 \r\n 10 \r\n 2.25 \r\n");
}

TEST(GridFile, is_read_free_form) {
    const GridFile grid = GridFile::read("2,1 3\n.5,10\r\n 2.25", "m.xy");
    EXPECT_EQ(grid.NZ, 3);
    EXPECT_EQ(grid.Column_Width, (std::vector<float>{0.5F, 10}));
    EXPECT_EQ(grid.Row_Height, std::vector<float>{2.25F});
}

TEST(GridFile, reads_back_what_it_wrote_up_to_2000_columns) {
    std::mt19937 random(1);
    std::uniform_real_distribution<float> width(0.001F, 1000);
    GridFile grid = grid_of(std::vector<float>(2000), {1}, 80);
    for (float& each : grid.Column_Width)
        each = width(random);
    const std::string once = grid.bytes();
    EXPECT_EQ(GridFile::read(once, "m.xy").bytes(), once);
}

TEST(GridFile, cut_off_before_the_last_size_fails_at_every_byte) {
    const std::string bytes = grid_of({7, 8}, {9}).bytes();
    for (std::size_t length = 0; length < bytes.find('9'); ++length)
        EXPECT_THROW(GridFile::read(bytes.substr(0, length), "m.xy"), base::FileFailure) << length;
}

TEST(GridFile, names_what_is_wrong) {
    EXPECT_EQ(failure_of(" 0  1  1 \r\n 1 \r\n"),
              "the number of columns in line 1 is 0, where 1 to 32767 was expected");
    EXPECT_EQ(failure_of("1 1 garbage 1 1"),
              "the number of layers in line 1 is 0, where 1 to 32767 was expected");
    EXPECT_EQ(failure_of("1 99999 1 1 1"),
              "the number of rows in line 1 is 99999, where 1 to 32767 was expected");
    EXPECT_EQ(failure_of("32767 32767 1\n1\n"), "has 3 bytes behind the extents, too few for 32767 "
                                                "column widths and 32767 row heights");
    EXPECT_EQ(failure_of("1 1 1\n1234567\n"),
              "ends at line 2, where row height 1 of 1 was expected");
}

TEST(LayerFile, of_defaults_is_confined_and_one_metre_thick) {
    EXPECT_EQ(LayerFile::defaults(2).bytes(), " 2 \r\n 0 \r\n 0 \r\n 1 \r\n 1 \r\n"
                                              " 0  0  0  0  0  0 \r\n 0  0  0  0  0  0 \r\n"
                                              " 0 \r\n 0 \r\n");
}

TEST(LayerFile, keeps_options_and_closing_values) {
    const std::string bytes = " 2 \r\n 1 \r\n 0 \r\n .5 \r\n 20 \r\n 1  2  3  4  5  6 \r\n"
                              " 7  8  9  10  11  12 \r\n 1.5 \r\n-2 \r\n";
    const auto layers = LayerFile::read(bytes, "m.l", 2);
    ASSERT_TRUE(layers);
    EXPECT_EQ(layers->layers[1].options[5], 12);
    EXPECT_EQ(layers->bytes(), bytes);
}

TEST(LayerFile, has_data_for_the_grid_with_all_types_and_thicknesses) {
    EXPECT_FALSE(LayerFile::read("", "m.l", 1));
    EXPECT_FALSE(LayerFile::read("1 0 5", "m.l", 2));
    EXPECT_FALSE(LayerFile::read("2 0 0 5", "m.l", 2));
    EXPECT_FALSE(LayerFile::read("1E300 0 0 5 5", "m.l", 2));
    EXPECT_FALSE(LayerFile::read("2147483647 0 0 5 5", "m.l", 2));
    const auto layers = LayerFile::read("2,0,0\n5,6", "m.l", 2);
    ASSERT_TRUE(layers);
    EXPECT_EQ(layers->layers[1].thickness, 6);
    EXPECT_EQ(layers->layers[1].options[0], 0);
}

TEST(LayerFile, of_more_layers_gives_the_upper_ones) {
    const auto layers =
        LayerFile::read("3  1 1 0  5 6 7  1 1 1 1 1 1  2 2 2 2 2 2  3 3 3 3 3 3  8 9", "m.l", 2);
    ASSERT_TRUE(layers);
    EXPECT_EQ(layers->layers.size(), 2U);
    EXPECT_EQ(layers->layers[1].thickness, 6);
    EXPECT_EQ(layers->layers[1].options[0], 2);
    EXPECT_EQ(layers->closing[1], 9);
}

TEST(CellCoordinates, begin_at_the_upper_left_corner) {
    const CellCoordinates cells = Build_Cell_Coordinates(grid_of({1, 2}, {0.5F}));
    EXPECT_EQ(cells.x_edges, (std::vector<double>{0, 1, 3}));
    EXPECT_EQ(cells.x_centres, (std::vector<double>{0.5, 2}));
    EXPECT_EQ(cells.y_edges, (std::vector<double>{0, 0.5}));
}

TEST(GridPosition, turns_about_the_upper_left_corner) {
    const GridPosition position(project_at(100, 50, std::numbers::pi / 2));
    const GridPosition::Point right = position.world(10, 0);
    EXPECT_NEAR(right.x, 100, 1e-5);
    EXPECT_NEAR(right.y, 60, 1e-5);
    const GridPosition::Point down = position.world(0, 10);
    EXPECT_NEAR(down.x, 110, 1e-5);
    EXPECT_NEAR(down.y, 50, 1e-5);
}

TEST(find_cell, takes_the_first_cell_whose_far_edge_reaches_the_point) {
    const GridFile grid = grid_of({1, 2, 3}, {1, 1});
    const GridPosition position(project_at(10, 20));
    const auto at = [&](double x, double y) {
        const auto cell = find_cell(grid, position, x, y);
        return cell ? fmt::format("{},{}", cell->column, cell->row) : "outside";
    };
    EXPECT_EQ(at(10, 20), "1,1");
    EXPECT_EQ(at(11, 19), "1,1");
    EXPECT_EQ(at(11.5, 18.5), "2,2");
    EXPECT_EQ(at(16, 18), "3,2");
    EXPECT_EQ(at(9.9, 19), "outside");
    EXPECT_EQ(at(11, 20.1), "outside");
    EXPECT_EQ(at(16.1, 19), "outside");
    EXPECT_EQ(at(11, 17.9), "outside");
}

TEST(find_cell, reaches_an_edge_that_singles_only_sum_up_to_when_rounded) {
    const GridFile grid = grid_of(std::vector<float>(10, 0.7F), {1});
    EXPECT_EQ(find_cell(grid, GridPosition(project_at(0, 1)), 7, 0.5)->column, 10);
}

TEST(find_cell, finds_every_cell_of_a_turned_grid_by_its_centre) {
    const GridFile grid = grid_of({1, 2, 30}, {5, 0.5F, 7});
    const CellCoordinates cells = Build_Cell_Coordinates(grid);
    for (const double degrees : {-170., -30., 0., 45., 90., 200.}) {
        const GridPosition position(project_at(1000, 500, degrees / 180 * std::numbers::pi));
        for (std::size_t i = 0; i < 3; ++i) {
            for (std::size_t j = 0; j < 3; ++j) {
                const auto point = position.world(cells.x_centres[i], cells.y_centres[j]);
                const auto cell = find_cell(grid, position, point.x, point.y);
                ASSERT_TRUE(cell) << degrees;
                EXPECT_EQ(cell->column, static_cast<int>(i) + 1);
                EXPECT_EQ(cell->row, static_cast<int>(j) + 1);
            }
        }
    }
}

TEST(place_grid, takes_the_origin_from_half_the_old_sheet_and_fits_the_sheet_to_the_grid) {
    TestModel model;
    model.define_mesh(4, 3, 1, "10");
    place_grid(model.project, *GridFile::load(model.files));
    EXPECT_EQ(model.project.single("GRIDPOSITION", "LEFT"), 0);
    EXPECT_EQ(model.project.single("GRIDPOSITION", "TOP"), 30);
    EXPECT_EQ(model.project.single("DIMENSION", "SHEET_X2"), 40);
    EXPECT_EQ(model.project.single("DIMENSION", "SHEET_Y2"), 30);
    EXPECT_EQ(model.project.integer("GRIDPOSITION", "MOVED"), -1);
    place_grid(model.project, *GridFile::load(model.files));
    EXPECT_EQ(model.project.single("GRIDPOSITION", "TOP"), 30);
}

TEST(place_grid, leaves_a_mesh_alone_that_is_not_defined) {
    core::Project project;
    place_grid(project, grid_of({1}, {1}));
    EXPECT_EQ(project.integer("GRIDPOSITION", "MOVED"), 0);
    EXPECT_EQ(project.single("DIMENSION", "SHEET_X2"), 1000);
}

} // namespace
} // namespace grid

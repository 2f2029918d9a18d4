// Layers as text for other programs.
#include "testmodel.h"

#include "grid/arrayexchange.h"
#include "grid/editrequest.h"
#include "grid/griddefinition.h"
#include "grid/worksheettools.h"

#include <numbers>
#include <numeric>

namespace {

constexpr float pi = std::numbers::pi_v<float>;

grid::GridPosition turned(float left, float top, float radians) {
    core::Project project;
    project.set_single("GRIDPOSITION", "LEFT", left);
    project.set_single("GRIDPOSITION", "TOP", top);
    project.set_single("GRIDPOSITION", "RAD", radians);
    return grid::GridPosition(project);
}

TEST(array_text, wraps_after_20_values_and_begins_each_row_on_a_line) {
    for (const int columns : {1, 19, 20, 21, 40, 41}) {
        const auto count = static_cast<std::size_t>(columns);
        const grid::GridFile mesh{columns, 2, 1, std::vector<float>(count, 1), {1, 1}};
        const std::vector<float> values(2 * count, 0.5F);
        std::string wrapped = fmt::format(" {0}  2 \r\n", columns), plain = wrapped;
        for (int row = 0; row < 2; ++row) {
            for (int column = 1; column <= columns; ++column) {
                wrapped += "           0.5";
                wrapped += column % 20 == 0 || column == columns ? "\r\n" : "";
                plain += "           0.5";
            }
            plain += "\r\n";
        }
        const auto place = turned(0, 0, 0);
        EXPECT_EQ(grid::array_text(grid::ArrayForm::wrap, values, mesh, place), wrapped);
        EXPECT_EQ(grid::array_text(grid::ArrayForm::ascii, values, mesh, place), plain);
    }
}

TEST(array_text, gives_points_with_y_upward_or_in_the_world) {
    const grid::GridFile mesh{2, 2, 1, {1, 2}, {4, 6}};
    const std::vector<float> values = {1, -1.234567E-10F, 3, 4};
    EXPECT_EQ(grid::array_text(grid::ArrayForm::surfer, values, mesh, turned(100, 200, 0)),
              "           0.5             8             1\r\n"
              "             2             8 -1.234567E-10\r\n"
              "           0.5             3             3\r\n"
              "             2             3             4\r\n");
    // A quarter turn against the clock: columns run upward, rows to the right.
    EXPECT_EQ(
        grid::array_text(grid::ArrayForm::surfer_world, values, mesh, turned(100, 200, pi / 2)),
        "           102         200.5             1\r\n"
        "           102           202 -1.234567E-10\r\n"
        "           107         200.5             3\r\n"
        "           107           202             4\r\n");
    EXPECT_EQ(grid::array_text(grid::ArrayForm::surfer_world, values, mesh, turned(0, 10, 0)),
              grid::array_text(grid::ArrayForm::surfer, values, mesh, turned(0, 10, 0)))
        << "the same when the grid stands on the origin";
}

// A layer of 3 columns and 2 rows of 9, with the values of a file.
class LoadMatrix : public testing::Test {
protected:
    std::string load(const std::string& text, grid::FirstCell first = {},
                     const char* name = "a.dat") {
        layer.assign(6, 9);
        return title_and_text(
            grid::load_matrix(text, name, grid::matrix_file_of(name), first, 3, 2, layer));
    }
    std::vector<float> layer;
};

TEST_F(LoadMatrix, counts_columns_by_the_file_and_drops_what_lies_outside) {
    EXPECT_EQ(load("3 2\n1 2,3\n4 5 6 7"), "accepted");
    EXPECT_EQ(layer, (std::vector<float>{1, 2, 3, 4, 5, 6}));
    load("2 3 1 2 3 4 5 6");
    EXPECT_EQ(layer, (std::vector<float>{1, 2, 9, 3, 4, 9}));
    load("4 1 1 2 3 4");
    EXPECT_EQ(layer, (std::vector<float>{1, 2, 3, 9, 9, 9}));
    load("2 2 1 2 3 4", {3, 2});
    EXPECT_EQ(layer, (std::vector<float>{9, 9, 9, 9, 9, 1}));
    load("3 2 1 2");
    EXPECT_EQ(layer, (std::vector<float>{1, 2, 9, 9, 9, 9})) << "a short file";
}

TEST_F(LoadMatrix, takes_a_grid_file_from_the_last_row_upward) {
    const std::string head = " DSAA \r\n3 2 of them\r\n0 1\r\n0 1\r\n0 1\r\n";
    EXPECT_EQ(load(head + "1 2 3\r\n4 5 1.70141E+38", {}, "A.GRD"), "accepted");
    EXPECT_EQ(layer, (std::vector<float>{4, 5, 1.70141E+38F, 1, 2, 3}));
    load("DSAA\n2 3\n\n\n\n1 2 3 4 5 6", {2, 2}, "a.grd");
    EXPECT_EQ(layer, (std::vector<float>{9, 3, 4, 9, 1, 2})) << "the start shifts columns only";
    EXPECT_EQ(load("dsaa\n3 2\n", {}, "a.grd"), "Load Matrix: a.grdis not a SURFER .GRD file.");
}

TEST_F(LoadMatrix, refuses_too_large_files_in_this_order_and_leaves_the_layer) {
    const std::string cells = "Load Matrix: a.dat contains more than 250000 cell values.\n"
                              "The maximum number of cells is 250000.";
    const std::string sides = "Load Matrix: a.dat contains invalid number of columns or rows.\n"
                              "Valid range of the number of rows/column is 1 to 500.";
    const std::pair<const char*, std::string> cases[] = {
        {"", cells},           {"0 5 1", cells},          {"5 -1 1", cells},
        {"501 500 1", cells},  {"501 499 1", sides},      {"1 250000 1", sides},
        {"1 250001 1", cells}, {"500 500 9", "accepted"}, {"70000 70000 1", cells}};
    for (const auto& [text, box] : cases) {
        EXPECT_EQ(load(text), box) << text;
        EXPECT_EQ(layer, std::vector<float>(6, 9)) << text;
    }
}

TEST(first_cell_refusal, names_the_extent_that_was_left) {
    const auto box = [](int column, int row) {
        return title_and_text(grid::first_cell_refusal({column, row}, 30, 20));
    };
    EXPECT_EQ(box(30, 20), "accepted");
    EXPECT_EQ(box(31, 21), "Load Matrix: Valid range is 1 to 30");
    EXPECT_EQ(box(1, 0), "Load Matrix: Valid range is 1 to 20");
}

TEST(array_label, is_the_prompt_without_its_unit_but_for_second_arrays) {
    const auto label = [](int number, int k) {
        return grid::array_label(*grid::find_request(number, core::horizontal), k);
    };
    EXPECT_EQ(label(1402, 1), "Temperature");
    EXPECT_EQ(label(8, 1), "Horizontal Hydr. Conductivity");
    EXPECT_EQ(label(8, 2), "Parameter Number");
    EXPECT_EQ(label(11, 1), "Flow Rate of the Well");
    EXPECT_EQ(label(11, 2), "Temperature");
    EXPECT_EQ(label(1408, 3), "Flow Velocity in z-direction");
    EXPECT_EQ(label(97, 1), "Z-Value");
}

} // namespace

#include "results/viewer.h"

#include <gtest/gtest.h>

namespace {

// The value of a cell tells its layer, row and column.
results::Field sample_field() {
    results::Field field({2, 3, 4});
    for (int layer = 1; layer <= 4; ++layer) {
        for (int row = 1; row <= 3; ++row) {
            for (int column = 1; column <= 2; ++column) {
                field.at(layer, row, column) = static_cast<float>(100 * layer + 10 * row + column);
            }
        }
    }
    return field;
}

const results::Axes axes{{1.5, 1.5}, {0.5, 0.5, 3}, {8, 4, 2, 1}};

results::Plane cut(char axis, int index) {
    return results::cut_plane(sample_field(), axes, axis, index, "Head [m]", "m.nlo");
}

std::vector<float> row(const results::Plane& plane, int b) {
    const auto values = plane.values.row(1, b);
    return {values.begin(), values.end()};
}

} // namespace

TEST(Viewer, cuts_layers) {
    const auto plane = cut('Z', 2);
    EXPECT_EQ(plane.title, "Head [m] in section (X/Y) in layer 2 of 4    [m.nlo]");
    EXPECT_EQ(plane.x_title + "|" + plane.y_title + "|" + plane.value_title,
              "X coordinate [m]|Y coordinate [m]|Head [m]");
    EXPECT_EQ(plane.x, (std::vector<float>{0.75, 2.25}));
    EXPECT_EQ(plane.y, (std::vector<float>{0.25, 0.75, 2.5}));
    EXPECT_EQ(row(plane, 1), (std::vector<float>{211, 212}));
    EXPECT_EQ(row(plane, 3), (std::vector<float>{231, 232}));
}

TEST(Viewer, cuts_rows_and_columns_from_the_lowest_layer_up) {
    const auto rows = cut('Y', 2);
    EXPECT_EQ(rows.title, "Head [m] in section (X/Z) at Y=0    [m.nlo]");
    EXPECT_EQ(rows.x_title + "|" + rows.y_title, "X coordinate [m]| Altitude(Z) [m]");
    EXPECT_EQ(rows.y, (std::vector<float>{0.5, 2, 5, 11}));
    EXPECT_EQ(row(rows, 1), (std::vector<float>{421, 422}));
    EXPECT_EQ(row(rows, 4), (std::vector<float>{121, 122}));

    const auto columns = cut('X', 2);
    EXPECT_EQ(columns.x_title, "Y coordinate [m]");
    EXPECT_EQ(columns.x, (std::vector<float>{0.25, 0.75, 2.5}));
    EXPECT_EQ(row(columns, 1), (std::vector<float>{412, 422, 432}));
}

TEST(Viewer, rounds_the_place_of_a_section_after_every_cell) {
    EXPECT_EQ(cut('X', 1).title, "Head [m] in section (Y/Z) at X=2    [m.nlo]");
    EXPECT_EQ(cut('X', 2).title, "Head [m] in section (Y/Z) at X=4    [m.nlo]") << "2 and 1.5";
    EXPECT_EQ(cut('Y', 3).title, "Head [m] in section (X/Z) at Y=3    [m.nlo]") << "0, 0 and 3";
}

TEST(Viewer, takes_the_nearest_plane_for_an_index_outside) {
    EXPECT_EQ(cut('Z', 0).title, cut('Z', 1).title);
    EXPECT_EQ(cut('Z', 99).title, cut('Z', 4).title);
}

TEST(Viewer, saves_a_plane_row_by_row) {
    EXPECT_EQ(results::plane_data_file(cut('X', 1)),
              "IRGRID 3  4 \r\n .25  .75  2.5 \r\n .5  2  5  11 \r\n"
              " 411  421  431 \r\n 311  321  331 \r\n 211  221  231 \r\n 111  121  131 \r\n");
}

#include "results/monitoringcells.h"

#include "core/project.h"

#include <gtest/gtest.h>

using results::MonitoringCells;

namespace {

grid::Bore bore(float x, float y, bool active = true) {
    return {"P", active, x, y, 2, 0, 0};
}

// 3 columns of 10, 20 and 30 m, 2 rows of 5 and 15 m.
const grid::GridFile uneven{3, 2, 2, {10, 20, 30}, {5, 15}};

class MonitoringTest : public testing::Test {
protected:
    MonitoringTest() { project.set_single("GRIDPOSITION", "TOP", 20); }

    core::Project project;
    grid::MonitoringList list;
};

std::vector<std::string> parts(const MonitoringCells& cells, std::size_t count) {
    std::vector<std::string> found;
    for (std::size_t i = 0; i < count; ++i) {
        found.push_back(cells.slots[i].file_part);
    }
    return found;
}

} // namespace

TEST_F(MonitoringTest, files_are_numbered_by_rank_among_active_points) {
    list.bores[1] = bore(5, 5);
    list.bores[2] = bore(5, 5, false);
    list.bores[3] = bore(0, 5); // no cell, but known to the simulator
    list.bores[4] = bore(500, 5);
    for (std::size_t slot = 5; slot < 100; ++slot) {
        list.bores[slot] = bore(5, 5);
    }
    const auto cells = results::place_points(list, uneven, grid::GridPosition(project));
    EXPECT_EQ(parts(cells, 6), (std::vector<std::string>{"-", "100", "-", "200", "-", "300"}));
    EXPECT_EQ(cells.slots[12].file_part, "100"); // rank 10
    EXPECT_EQ(cells.slots[99].file_part, "970");
    EXPECT_EQ(cells.outside, std::vector<int>{5});
    EXPECT_EQ(results::file_part(100), "100");
}

TEST_F(MonitoringTest, rows_are_counted_from_the_north_edge_and_edges_belong_to_the_cell_before) {
    const std::tuple<float, float, int, int> cases[] = {
        {5, 19, 1, 1}, {10, 15, 1, 1}, {10.5F, 14.5F, 2, 2}, {60, 20, 3, 1}, {0, 5, 0, 0}};
    for (const auto& [x, y, column, row] : cases) {
        list.bores[0] = bore(x, y);
        const auto cell = results::place_points(list, uneven, grid::GridPosition(project)).slots[0];
        EXPECT_EQ(std::pair(cell.column, cell.row), std::pair(column, row)) << x << " " << y;
        EXPECT_EQ(cell.layer, column > 0 ? 2 : 0);
    }
}

TEST(CentreAltitudes, begin_at_the_base_of_the_lowest_cell) {
    const std::vector<float> sizes = {4, 2, 0.5F};
    EXPECT_EQ(results::centre_altitudes(sizes), (std::vector<float>{4.5F, 1.5F, 0.25F}));
    EXPECT_TRUE(results::centre_altitudes({}).empty());
}

#include "input/timeblocks.h"

#include "grid/monitoring.h"
#include "input/smallmodel.h"

#include <gtest/gtest.h>

using input::test::hundred;
using input::test::SmallModel;

TEST(Times, are_seconds_of_the_active_periods) {
    SmallModel model(1, 1, 1);
    model.periods.unit = 5;
    auto& rows = model.periods.rows;
    rows[0].length = 1;
    rows[0].steps = 4;
    rows[1].monitoring_frequency = 8;
    rows[2] = {.active = true, .length = 2, .monitoring_frequency = 3, .temperature_shift = 0.5F};
    rows[3].monitoring_frequency = 9;
    model.save_periods();
    model.create();
    EXPECT_EQ(model.line("NPER"), "       2 ");
    EXPECT_EQ(model.line("DELTATMP"), hundred({"0.0 ", "0.5 "}, "0.0 "));
    EXPECT_EQ(model.line("TMAXAR"), hundred({"31536000.0 ", "94608000.0 "}, "0.0 "));
    EXPECT_EQ(model.line("DELTAR"), hundred({"7884000.0 ", "63072000.0 "}, "0.0 "));
    // Row 3 moved onto row 2 and left 0 behind; row 4 is not active and keeps its number.
    EXPECT_EQ(model.line("PMONIFR"), hundred({"1 ", "3 ", "0 ", "9 "}, "1 "));
}

TEST(Times, exponents_keep_their_odd_ending) {
    SmallModel model(1, 1, 1);
    model.periods.rows[0].length = 1E20;
    model.save_periods();
    model.create();
    EXPECT_EQ(model.line("TMAXAR"), hundred({"1E+20.0 "}, "0.0 "));
}

TEST(Times, an_undefined_unit_ends_the_creation) {
    SmallModel model(1, 1, 1);
    model.periods.unit = 0;
    model.save_periods();
    model.user.expect_message("Missing Data",
                              "Please define first the time unit in: |Time|Periods");
    EXPECT_TRUE(model.create().InputError);
    EXPECT_FALSE(model.created.failed);
    EXPECT_EQ(model.line("NWELAR"), "100*0");
    EXPECT_EQ(model.block("DELTATMP"), "no block");
}

namespace {

grid::Bore point(float x, float y, std::int16_t layer) {
    grid::Bore bore;
    bore.Active = true;
    bore.X = x;
    bore.Y = y;
    bore.Layer = layer;
    return bore;
}

// Columns of 10 m and rows of 5 m; the origin is (0, 15).
void give_points(SmallModel& model) {
    grid::MonitoringList list;
    list.bores[0] = point(10, 15, 1); // on edges: the first cell that reaches it
    list.bores[1] = point(15, 1, 2);  // switched off
    list.bores[2] = point(-1, 1, 2);  // left of the grid
    list.bores[3] = point(10.5F, 0.1F, 2);
    list.bores[1].Active = false;
    grid::Write_Monitoring_Points(list, model.files);
    model.user.expect_message("Message",
                              "Monitoring Point 3 not in Grid area. Will be shut to non-active.");
}

} // namespace

TEST(MonitoringPoints, of_a_horizontal_model) {
    SmallModel model(2, 3, 4);
    give_points(model);
    EXPECT_FALSE(model.create().InputError);
    EXPECT_EQ(model.line("PMONIX"), hundred({"1 ", "0 ", "2 "}, "0 "));
    EXPECT_EQ(model.line("PMONIY"), hundred({"3 ", "0 ", "1 "}, "0 "));
    EXPECT_EQ(model.line("PMONIZ"), hundred({"4 ", "0 ", "3 "}, "0 "));
}

TEST(MonitoringPoints, of_a_cross_section_exchange_layers_and_rows) {
    SmallModel model(2, 3, 4, core::vertical);
    give_points(model);
    model.create();
    EXPECT_EQ(model.line("PMONIX"), hundred({"1 ", "0 ", "2 "}, "0 "));
    EXPECT_EQ(model.line("PMONIY"), hundred({"1 ", "0 ", "2 "}, "0 "));
    EXPECT_EQ(model.line("PMONIZ"), hundred({"3 ", "0 ", "1 "}, "0 "));
}

TEST(MonitoringPoints, follow_the_rotation_of_the_grid) {
    SmallModel model(2, 3, 1);
    model.project.set_single("GRIDPOSITION", "ANGLE", 90);
    model.project.set_single("GRIDPOSITION", "RAD", 1.5707964F);
    const auto world = grid::GridPosition(model.project).world(12, 6); // column 2, row 2
    grid::MonitoringList list;
    list.bores[0] = point(float(world.x), float(world.y), 1);
    grid::Write_Monitoring_Points(list, model.files);
    model.create();
    EXPECT_EQ(model.line("PMONIX"), hundred({"2 "}, "0 "));
    EXPECT_EQ(model.line("PMONIY"), hundred({"2 "}, "0 "));
}

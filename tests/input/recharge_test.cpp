#include "input/recharge.h"

#include "input/smallmodel.h"

#include <gtest/gtest.h>

using input::test::SmallModel;

TEST(Recharge, halves_and_faces_of_a_horizontal_model) {
    SmallModel model(2, 2, 2);
    for (const int item : {2, 3, 4}) {
        model.project.flags.set(item, 14, 2);
    }
    model.set_array(5, {1, 1, 1, 1, 1, 1, 1, 2});
    model.set_array(1407, {1, 2, 3, 4, 5, 6, 7, 4});
    model.set_array(1433, {1, 2, 3, 4, 5, 6, 7, 8});
    model.set_array(1432, {1, 2, 3, 4, 5, 6, 7, 8});
    model.create();
    EXPECT_EQ(model.line("IQRE"), "RECH");
    EXPECT_EQ(model.line("BASEF"), "FLO");
    EXPECT_EQ(model.line("QRE"), "3. 4. 1. 2. 7. 4. 5. 6. ");
    EXPECT_EQ(model.line("QRELR"), "7. 8. 5. 6. 3. 4. 1. 2. ");
    EXPECT_EQ(model.line("QREVH"), "7. 8. 5. 6. 3. 4. 1. 2. ");
}

TEST(Recharge, of_a_cross_section_enters_by_its_first_row) {
    SmallModel model(2, 2, 3, core::vertical);
    model.project.flags.set(2, 14, 2);
    model.set_array(1407, {1, 2, 0, 0, 3, 4, 0, 0, 5, 6, 0, 9});
    model.create();
    EXPECT_EQ(model.line("IQRE"), "RECH");
    EXPECT_EQ(model.line("QRE"), "1. 2. 3. 4. 5. 6. 6*0. ");
    EXPECT_EQ(model.line("QRELR"), "12*0.");
    EXPECT_EQ(model.line("QREVH"), "8*0.");
}

TEST(Recharge, a_face_that_meets_its_opposite_is_walked_twice) {
    SmallModel model(1, 1, 2);
    model.project.flags.set(3, 14, 2);
    model.project.flags.set(4, 14, 2);
    model.set_array(1433, {1, 2});
    model.set_array(1432, {1, 2});
    model.create();
    EXPECT_EQ(model.line("QRELR"), "2*2. 2*1. ");
    EXPECT_EQ(model.line("QREVH"), "2*2. 2*1. ");
}

TEST(Recharge, the_only_layer_takes_it_at_its_base) {
    SmallModel model(2, 1, 1);
    model.project.flags.set(2, 14, 2);
    model.set_array(5, {2, 2});
    model.set_array(1407, {1, 3});
    model.create();
    EXPECT_EQ(model.line("IQRE"), "RECH");
    EXPECT_EQ(model.line("QRE"), "2*0. 1. 3. ");
}

TEST(HeatFlow, is_written_where_the_face_is_a_heat_flow_boundary) {
    SmallModel model(2, 1, 2);
    model.project.flags.set(9, 5, 1);
    model.set_array(1405, {1, 1, 1, 2});
    model.set_array(1437, {7, 7, 0.06F, 0.07F});
    model.create();
    EXPECT_EQ(model.line("TOPT"), "NFLO");
    EXPECT_EQ(model.line("BASET"), "WSD");
    EXPECT_EQ(model.line("QTOP3D"), "2*0. ");
    EXPECT_EQ(model.line("QBASAL3D"), "0.06 0.07 ");
}

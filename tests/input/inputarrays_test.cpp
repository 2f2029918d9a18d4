#include "input/inputarrays.h"

#include "input/smallmodel.h"
#include "sim/rockfile.h"
#include "sim/transport.h"

#include <gtest/gtest.h>

using input::test::hundred;
using input::test::SmallModel;

TEST(InputArrays, fixed_cells_are_marked_by_a_minus_sign) {
    SmallModel model(3, 1, 1);
    model.set_array(5, {-1, 1, 2});
    model.set_array(1405, {1, -1, 1}); // heat is off: marked all the same
    model.set_array(40, {-1, -1, 1});
    model.set_array(6, {0.3F, 0, 0.2F});
    model.create();
    EXPECT_EQ(model.line("PERM"), "-1.E-12 2*1.E-12 ");
    EXPECT_EQ(model.line("POR"), "0.3 0. 0.2 "); // zero stays zero
    EXPECT_EQ(model.line("PRES"), "2*-0.1 0.1 ");
}

TEST(InputArrays, runs_cross_rows_and_layers) {
    SmallModel model(2, 2, 2);
    model.set_array(10, {4, 4, 9, 4, 9, 9, 4, 9});
    model.create();
    EXPECT_EQ(model.line("PHI"), "4. 4*9. 3*4. ");
    SmallModel cube(10, 10, 10);
    cube.set_array(10, 7.5F);
    cube.create();
    EXPECT_EQ(cube.line("PHI"), "1000*7.5 ");
}

TEST(InputArrays, compressibility_is_one_text_or_one_value_a_zone) {
    SmallModel model(2, 1, 1);
    model.set_typ(sim::typ::COMPM, "2E-10");
    model.create();
    EXPECT_EQ(model.line("COMPM"), "2E-10");
    EXPECT_EQ(model.block("COMP3D"), "no block");
    sim::RockFile rock;
    rock.set_label(sim::rock::Compress, "Compress");
    rock.set_field(sim::rock::Compress, 1, "1E-10");
    rock.set_field(sim::rock::Compress, 2, "2.5E-10");
    rock.save(model.files);
    model.set_array(1403, {1, 2});
    model.create();
    EXPECT_EQ(model.block("COMPM"), "no block");
    EXPECT_EQ(model.line("COMP3D"), "1E-10. 2.5E-10 ");
}

TEST(InputArrays, zone_values_fold_by_their_texts) {
    SmallModel model(4, 1, 1);
    model.set_array(1403, {1, 2, 3, 3});
    sim::RockFile rock;
    rock.set_field(sim::rock::RhoCm, 1, "2");
    rock.set_field(sim::rock::RhoCm, 2, "2");
    rock.set_field(sim::rock::RhoCm, 3, "2.0");
    rock.set_field(sim::rock::Cond, 1, "-3.1");
    rock.set_field(sim::rock::Cond, 2, "3.1");
    rock.set_field(sim::rock::Cond, 3, "3.1");
    rock.save(model.files);
    model.create();
    EXPECT_EQ(model.line("GEOLOGY"), "1 2 2*3 ");
    EXPECT_EQ(model.line("RHOCM"), "2*2.E6 2*2.0E6 ");
    EXPECT_EQ(model.line("WLFM0"), "3.1 3*3.1 "); // the first cell stands alone
}

TEST(InputArrays, tracers_come_by_zones_or_from_their_arrays) {
    SmallModel model(3, 1, 1);
    model.project.flags.set(9, 6, 1);
    sim::TracerTable tracers;
    tracers.rows[1] = {true, 12.5F, 0.5F};
    tracers.rows[3] = {true, 3, 2};
    tracers.save(model.files);
    model.set_array(1442, {1, 2, 2});
    model.create();
    EXPECT_EQ(model.line("ANZSUBS"), " 2 ");
    EXPECT_EQ(model.line("BETAC"), hundred({"0.5 ", "2. "}, "0. "));
    EXPECT_EQ(model.line("CONC           1"), "1. 2*2. ");
    EXPECT_EQ(model.line("CONC           2"), "3*0. ");
    model.project.flags.set(2, 13, 2);
    model.set_array(1406, {2, 4, 0});
    model.create();
    EXPECT_EQ(model.line("CONC           1"), "12.5 2*0. ");
    EXPECT_EQ(model.line("CONC           2"), "0. 3. 0. ");
}

TEST(InputArrays, permafrost_arrays_need_heat) {
    SmallModel model(1, 1, 1);
    model.project.flags.set(10, 5, 1);
    model.create();
    EXPECT_EQ(model.block("ICE"), "no block");
    model.project.flags.set(9, 5, 1);
    model.create();
    EXPECT_EQ(model.line("ICE") + model.line("TSOL") + model.line("TLIQ"), "0. -2. 0. ");
}

TEST(InputArrays, a_prescribed_flow_field_brings_its_velocities) {
    SmallModel model(2, 1, 1);
    model.project.flags.set(3, 1, 1);
    model.set_array(1408, {1E-6F, 2E-6F});
    model.create();
    EXPECT_EQ(model.line("VX"), "0.000001 0.000002 ");
    EXPECT_EQ(model.line("VY"), "2*0. ");
    EXPECT_EQ(model.line("TOPF"), "NFLO");
}

#include "input/settingblocks.h"

#include "core/notes.h"
#include "input/smallmodel.h"
#include "sim/continua.h"

#include <gtest/gtest.h>

using input::test::SmallModel;

TEST(Settings, settings_of_the_project) {
    SmallModel model(2, 2, 2);
    model.project.set_title("  Tief\xC3\xA4quifer ");
    model.project.set_integer("OPTIONS", "SIMULATION_MODE", 2);
    model.project.flags.set(10, 2, 1);
    model.project.flags.set(8, 4, 2 + 16 * 3);
    core::Save_IZV_Data(model.files, "koppx", "Density", "\t1000.0");
    model.create();
    EXPECT_EQ(model.line("TITLE"), "Tief\xE4quifer");
    EXPECT_EQ(model.line("STAT"), "INST");
    EXPECT_EQ(model.line("KOPPX_FLAG"), "0 0 1 0 0 ");
    EXPECT_EQ(model.line("KOPPX_FIELD"), "1000.0 0.61 4.5E-10 4179.0 8.9E-04 ");
    EXPECT_EQ(model.line("CONTROLF"), " 50 ");
    EXPECT_EQ(model.line("CMA1"), "0.00000");
    EXPECT_EQ(model.line("DIFTS1"), "2.01");
}

TEST(Settings, outer_iteration_has_literals_until_it_is_set) {
    SmallModel model(1, 1, 1);
    model.create();
    EXPECT_EQ(model.line("PICARD") + model.line("CHI") + model.line("ABSPICARDS"), "1 0.50");
    for (const auto& [key, value] :
         {std::pair{"Active", "0"}, std::pair{"Chi", "0.3"}, std::pair{"Iteration", "7"},
          std::pair{"FlowLimit", "1E-9"}, std::pair{"TransportLimit", "0.5"}}) {
        core::Save_IZV_Data(model.files, "PICARD", key, value);
    }
    model.create();
    EXPECT_EQ(model.line("PICARD"), " 0 ");
    EXPECT_EQ(model.line("CHI"), " .3 ");
    EXPECT_EQ(model.line("MAXPICARDIT"), " 7 ");
    EXPECT_EQ(model.line("ABSPICARDF"), " .000000001 ");
    EXPECT_EQ(model.line("ABSPICARDS"), " 0 "); // the limit typed in does not reach the file
}

TEST(Settings, dispersion_takes_the_transverse_length_first) {
    SmallModel model(1, 1, 1);
    model.project.flags.set(9, 6, 1);
    model.files.write(".tma", "0.7,1.5,20\r\n");
    model.create();
    EXPECT_EQ(model.line("MDIFS1"), "0.7E-08");
    EXPECT_EQ(model.line("DIFTS1"), "1.5 ");
    EXPECT_EQ(model.line("DIFLS1"), "20. ");
}

namespace {

void give_continua(SmallModel& model, const char* zones) {
    model.project.flags.set(10, 6, 1);
    sim::Boxmodel box;
    box.active = "1";
    box.P_Zones = zones;
    box.density = {"0.5", "2", "0", "0"};
    box.aperture = {"1.000E-03", "0", "0", "0"};
    box.tortuosity = {"1", "1", "1", "1"};
    box.save(model.files);
}

} // namespace

TEST(Continua, list_their_zones_and_systems) {
    SmallModel model(1, 1, 1);
    give_continua(model, "1,12");
    model.create();
    EXPECT_EQ(model.block("BOX"), " 2 \r\n 1  12 \r\n .5  2  0  0 \r\n .001  0  0  0 \r\n"
                                  " 1  1  1  1 \r\n\r\n");
    model.project.flags.set(10, 6, 0);
    model.create();
    EXPECT_EQ(model.block("BOX"), "no block");
}

TEST(Continua, without_zones_end_the_creation) {
    SmallModel model(1, 1, 1);
    give_continua(model, "-");
    model.user.expect_message("Incomplete Data",
                              "Multiple continua are chosen to be active but no property zone is "
                              "defined.\nCheck settings in Transport/Multiple Continua.");
    EXPECT_TRUE(model.create().InputError);
    EXPECT_TRUE(model.stream.ends_with("# BOX\r\n"));
}

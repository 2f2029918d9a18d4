#include "sim/simplevalues.h"

#include "sim/settingsmodel.h"

#include <gtest/gtest.h>

namespace sim {
namespace {

TEST(RefDens, OwnDensityIsStoredAsTyped) {
    SettingsModel model;
    RefDens form;
    form.load(model.project, model.files);
    EXPECT_FALSE(form.checked("Check1"));
    EXPECT_FALSE(form.enabled("Text1"));
    form.set("Check1", "1");
    form.set("Text1", " 1.02E3 ");
    form.save(model.project, model.files);
    EXPECT_EQ(model.line(20), "1.02E3");
    EXPECT_EQ(model.flag(1, 5), 2);
    EXPECT_EQ(model.flag(0, 1), 1);
    form.load(model.project, model.files);
    EXPECT_TRUE(form.checked("Check1"));
}

TEST(RefDens, OffStoresTheUsualDensity) {
    SettingsModel model;
    model.set_line(20, "1100");
    RefDens form;
    form.load(model.project, model.files);
    form.set("Check1", "0");
    form.save(model.project, model.files);
    EXPECT_EQ(model.line(20), "998.0");
    EXPECT_EQ(model.flag(1, 5), 2);
}

TEST(HeatConstant, EachHasItsLine) {
    SettingsModel model;
    HeatConstantForm basal(HeatConstant::basal_heat_flow);
    basal.load(model.project, model.files);
    EXPECT_EQ(basal.get("Value"), "0.08");
    basal.set("Value", "65e-3");
    basal.save(model.project, model.files);
    EXPECT_EQ(model.line(17), "65e-3");
    EXPECT_EQ(model.flag(10, 8), 0);
    HeatConstantForm production(HeatConstant::fluid_heat_production);
    production.set("Value", "1E-6");
    production.save(model.project, model.files);
    EXPECT_EQ(model.line(18), "1E-6");
    EXPECT_EQ(model.flag(10, 8), 2);
    EXPECT_STREQ(production.title(), "Fluid Heat Production");
}

TEST(Reinjection, SwitchIsZeroOrTwo) {
    SettingsModel model;
    reinject_produced_water(model.project.flags, true);
    EXPECT_EQ(model.flag(1, 1), 2);
    EXPECT_EQ(model.flag(0, 1), 1);
    reinject_produced_water(model.project.flags, false);
    EXPECT_EQ(model.flag(1, 1), 0);
    EXPECT_FALSE(reinjects_produced_water(model.project.flags));
}

} // namespace
} // namespace sim

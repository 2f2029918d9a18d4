#include "sim/coupling.h"

#include "core/notes.h"
#include "sim/settingsmodel.h"

#include <gtest/gtest.h>

namespace sim {
namespace {

Coupling loaded(const SettingsModel& model) {
    Coupling form;
    form.load(model.project, model.files);
    return form;
}

TEST(Coupling, NewModelShowsTheDefaultsOfTheDialog) {
    const SettingsModel model;
    const Coupling form = loaded(model);
    EXPECT_EQ(form.KOPLNG(), "----");
    EXPECT_EQ(form.get("txtA0"), "800.0");
    EXPECT_EQ(form.get("txtA1"), "1.8");
    EXPECT_EQ(form.get("txtA2"), "-0.0025");
    EXPECT_EQ(form.get("txtDensity"), "2400");
    EXPECT_EQ(form.get("Exp1") + " " + form.get("Exp2") + " " + form.get("Exp3"), "1.0 2.0 10.0");
    EXPECT_EQ(form.get("CritPor"), "");
    EXPECT_EQ(form.get("txtPropValViscosity"), "8.9E-04");
}

TEST(Coupling, SavesLinesTwoToFiveAndTheWaterProperties) {
    SettingsModel model;
    Coupling form = loaded(model);
    form.set("CompleteCheck", "1");
    form.set("PermeabilityLaw", "1");
    form.set("CritPor", "0.05");
    form.set("Exp3", "12");
    form.set("chkWaterConduct", "1");
    form.set("txtPropValConduct", "0.6");
    form.save(model.project, model.files);
    EXPECT_EQ(model.line(typ::KOPLNG), "COWP # 800.0 # 1.8 # -0.0025 # 2400");
    EXPECT_EQ(model.line(typ::f1), "1.0 # 0.05");
    EXPECT_EQ(model.line(typ::f2), "2.0");
    EXPECT_EQ(model.line(typ::f3), "12");
    EXPECT_EQ(model.line(typ::IPUTDI), "1234567890121");
    EXPECT_EQ(core::Get_IZV_Data(model.files, "koppx", "Conduct"), "0.6");
    EXPECT_EQ(core::Get_IZV_Data(model.files, "koppx", "Density"), "998.0");
    EXPECT_NE(model.files.read(".izv").find("Density=\t998.0\r\n"), std::string::npos);
    EXPECT_EQ(model.flag(10, 0), 0);
    EXPECT_EQ(model.flag(10, 1), 1);
    EXPECT_EQ(model.flag(9, 1), 2);
    EXPECT_EQ(model.flag(0, 1), 1);
}

TEST(Coupling, LineThreeWithoutCriticalPorosityEndsAtItsMark) {
    SettingsModel model;
    loaded(model).save(model.project, model.files);
    EXPECT_EQ(model.line(typ::f1), "1.0 #");
    EXPECT_EQ(loaded(model).get("Exp1"), "1.0");
    EXPECT_EQ(loaded(model).get("CritPor"), "");
}

TEST(Coupling, TextsComeBackAsTyped) {
    SettingsModel model;
    Coupling form = loaded(model);
    form.set("txtA0", "");
    form.set("txtA1", " 1e0 ");
    form.set("txtDensity", "2.7E3");
    form.set("FlowChemistryCheck", "1");
    form.set("PermeabilityLaw", "5");
    form.save(model.project, model.files);
    EXPECT_EQ(model.line(typ::KOPLNG), "--S- #  # 1e0 # -0.0025 # 2.7E3");
    const Coupling again = loaded(model);
    EXPECT_EQ(again.get("txtA0"), "");
    EXPECT_EQ(again.get("txtA1"), "1e0");
    EXPECT_EQ(again.get("txtDensity"), "2.7E3");
    EXPECT_EQ(again.KOPLNG(), "--S-");
}

TEST(Coupling, LineTwoCutAtAMarkTakesTheDefaultsFromThereOn) {
    SettingsModel model;
    model.set_line(typ::KOPLNG, "C--P # 700 # 2 #");
    const Coupling form = loaded(model);
    EXPECT_EQ(form.KOPLNG(), "C--P");
    EXPECT_EQ(form.get("txtA0"), "700");
    EXPECT_EQ(form.get("txtA1"), "2");
    EXPECT_EQ(form.get("txtA2"), "-0.0025");
    EXPECT_EQ(form.get("txtDensity"), "2400");
}

TEST(Coupling, FullCouplingFollowsTheFourCouplings) {
    const SettingsModel model;
    Coupling form = loaded(model);
    form.set("CompleteCheck", "1");
    EXPECT_EQ(form.KOPLNG(), "COUP");
    form.set("FlowTransportCheck", "0");
    EXPECT_EQ(form.KOPLNG(), "C-UP");
    EXPECT_FALSE(form.checked("CompleteCheck"));
    form.set("FlowTransportCheck", "1");
    EXPECT_TRUE(form.checked("CompleteCheck"));
}

TEST(Coupling, LettersOfTheLaws) {
    std::string letters;
    for (int index = 0; index < 6; ++index) {
        letters += law_letter(index);
        EXPECT_EQ(law_index(letters.back()), index);
    }
    EXPECT_EQ(letters, "UWBLHS");
    EXPECT_EQ(law_letter(law_index('-')), 'U');
}

TEST(Coupling, OtherValuesOfA1AndA2Warn) {
    const SettingsModel model;
    Coupling form = loaded(model);
    for (const char* name : {"txtA1", "txtA2"}) {
        const auto notices = form.set(name, "0");
        ASSERT_EQ(notices.size(), 1u);
        EXPECT_EQ(notices[0].title, "Changing Default Value");
        EXPECT_EQ(notices[0].text, "Values other than 0 are only safe when the temperatures within "
                                   "the model domain do not exceed the valid range.");
    }
    EXPECT_TRUE(form.set("txtA1", "1.8").empty());
    EXPECT_TRUE(form.set("txtA2", "-0.0025").empty());
    EXPECT_TRUE(form.set("txtA0", "1").empty());
}

TEST(Coupling, ClearedCheckDisablesItsGroup) {
    const SettingsModel model;
    Coupling form = loaded(model);
    EXPECT_FALSE(form.enabled("txtA0"));
    EXPECT_FALSE(form.enabled("PermeabilityLaw"));
    EXPECT_FALSE(form.enabled("txtPropValDensity"));
    form.set("HeatConductivityCheck", "1");
    form.set("FlowChemistryCheck", "1");
    form.set("chkWaterDensity", "1");
    EXPECT_TRUE(form.enabled("txtA0"));
    EXPECT_TRUE(form.enabled("PermeabilityLaw"));
    EXPECT_TRUE(form.enabled("txtPropValDensity"));
    EXPECT_FALSE(form.enabled("txtPropValConduct"));
}

} // namespace
} // namespace sim

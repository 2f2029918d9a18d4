#include "sim/simulationtype.h"
#include "sim/typeinfo.h"

#include "sim/settingsmodel.h"

#include <gtest/gtest.h>

namespace sim {
namespace {

using Fields = std::vector<std::pair<const char*, const char*>>;

SimulationType form_with(const SettingsModel& model, const Fields& fields) {
    SimulationType form;
    form.load(model.project, model.files);
    for (const auto& [name, text] : fields)
        form.set(name, text);
    return form;
}

TEST(SimulationType, KeyIsBuiltFromTheFields) {
    const SettingsModel model;
    EXPECT_EQ(form_with(model, {}).KEY(), "-----");
    EXPECT_EQ(form_with(model, {{"FluidFlowCheck", "1"}}).KEY(), "F----");
    EXPECT_EQ(form_with(model, {{"HeatCheck", "1"}}).KEY(), "-U---");
    EXPECT_EQ(form_with(model, {{"FluidFlowCheck", "1"},
                                {"FlowType", "1"},
                                {"HeatCheck", "1"},
                                {"HeatAdvection", "1"},
                                {"TransportCheck", "1"},
                                {"TransportAdvection", "3"},
                                {"ChemistryCheck", "1"},
                                {"ReactionType", "1"}})
                  .KEY(),
              "F5ZPK");
}

TEST(SimulationType, SchemesOfTheDialogAndTheirLetters) {
    std::string letters;
    for (int index = 0; index < 5; ++index) {
        letters += scheme_letter(index);
        EXPECT_EQ(scheme_index(letters.back()), index);
    }
    EXPECT_EQ(letters, "U5IZS");
    EXPECT_EQ(scheme_letter(scheme_index('-')), 'U');
}

TEST(SimulationType, TransportAloneIsRefusedWithEveryScheme) {
    const SettingsModel model;
    for (const char* scheme : {"0", "1", "2", "3", "4"}) {
        const auto refusal =
            form_with(model, {{"TransportCheck", "1"}, {"TransportAdvection", scheme}}).check();
        ASSERT_TRUE(refusal) << scheme;
        EXPECT_EQ(refusal->title, "Message");
        EXPECT_EQ(refusal->text, "Only Transport is not possible");
    }
}

TEST(SimulationType, OnlyTheLiteralKeysAreRefused) {
    const SettingsModel model;
    EXPECT_FALSE(form_with(model, {}).check());
    EXPECT_FALSE(form_with(model, {{"TransportCheck", "1"}, {"FluidFlowCheck", "1"}}).check());
    EXPECT_FALSE(form_with(model, {{"TransportCheck", "1"}, {"ChemistryCheck", "1"}}).check());
    // Without flow there is no "P" in the key.
    EXPECT_TRUE(form_with(model, {{"TransportCheck", "1"}, {"FlowType", "1"}}).check());
}

TEST(SimulationType, SavesLineOneAndTheSwitches) {
    SettingsModel model;
    model.set_line(typ::MXIT, "777");
    form_with(model, {{"FluidFlowCheck", "1"},
                      {"HeatCheck", "1"},
                      {"optPermafrost", "1"},
                      {"TransportCheck", "1"},
                      {"optBox", "1"},
                      {"ChemistryCheck", "1"},
                      {"ReactionType", "1"},
                      {"optActivity", "4"}})
        .save(model.project, model.files);
    EXPECT_EQ(model.line(typ::KEY), "FUU-K");
    EXPECT_EQ(model.line(typ::MXIT), "777");
    EXPECT_EQ(model.flag(9, 4) + model.flag(9, 5) + model.flag(9, 6), 3);
    EXPECT_EQ(model.flag(10, 5) + model.flag(10, 6), 2);
    EXPECT_EQ(model.flag(3, 1), 0);
    EXPECT_EQ(model.flag(9, 7), 2);
    EXPECT_EQ(model.flag(9, 12), 4);
    EXPECT_EQ(model.flag(9, 0), 2);
    EXPECT_EQ(model.flag(0, 1), 1);
}

TEST(SimulationType, PrescribedStaysMarkedWhileTheFlowIsOff) {
    SettingsModel model;
    form_with(model, {{"HeatCheck", "1"}, {"FlowType", "1"}}).save(model.project, model.files);
    EXPECT_EQ(model.line(typ::KEY), "-U---");
    EXPECT_EQ(model.flag(3, 1), 1);
}

TEST(SimulationType, OptionsOfAClearedProcessAreDisabledButKept) {
    SettingsModel model;
    model.project.flags.set(10, 5, 1);
    SimulationType form = form_with(model, {});
    EXPECT_FALSE(form.enabled("optPermafrost"));
    form.save(model.project, model.files);
    EXPECT_EQ(model.flag(10, 5), 1);
    form.set("HeatCheck", "1");
    EXPECT_TRUE(form.enabled("optPermafrost"));
    EXPECT_TRUE(form.enabled("HeatAdvection"));
    EXPECT_FALSE(form.enabled("TransportAdvection"));
}

TEST(SimulationType, StoredSettingsComeBack) {
    SettingsModel model;
    form_with(model, {{"FluidFlowCheck", "1"},
                      {"FlowType", "1"},
                      {"HeatCheck", "1"},
                      {"HeatAdvection", "4"},
                      {"ChemistryCheck", "1"},
                      {"ReactionType", "1"},
                      {"optActivity", "3"}})
        .save(model.project, model.files);
    const SimulationType form = form_with(model, {});
    EXPECT_EQ(form.KEY(), "FS-PK");
    EXPECT_EQ(form.get("optActivity"), "3");
}

TEST(SimulationType, GarbledKeyCountsAsNeverChosen) {
    SettingsModel model;
    model.set_line(typ::KEY, "F");
    EXPECT_EQ(form_with(model, {{"HeatCheck", "1"}}).KEY(), "-U---");
}

TEST(TypeInfo, EachGroupHasAnXInItsFirstPlaceWhenOff) {
    const SettingsModel model;
    const std::pair<const char*, const char*> cases[] = {
        {"chkProtocol", "X23456789012"}, {"chkPLT3D", "12X456789012"},
        {"chkGnuPlot", "123X56789012"},  {"chkTecPlot", "12345X789012"},
        {"chkTecPlot2", "123456X89012"}, {"chkVtk", "1234567X9012"},
        {"chkThermal", "12345678X012"}};
    for (const auto& [check, expected] : cases) {
        TypeInfo form;
        form.load(model.project, model.files);
        form.set(check, "0");
        EXPECT_EQ(form.IPUTDI(), expected);
    }
}

TEST(TypeInfo, SavesLineSixAndComesBack) {
    SettingsModel model;
    TypeInfo form;
    form.load(model.project, model.files);
    form.set("chkGnuPlot", "0");
    form.set("InfoLevel", "4");
    form.set("chkDHChemistry", "1");
    form.save(model.project, model.files);
    EXPECT_EQ(model.line(typ::IPUTDI), "123X567890125");
    EXPECT_EQ(model.line(typ::KEY), "-----");
    EXPECT_EQ(model.flag(9, 2), 2);
    EXPECT_EQ(model.flag(10, 12), 1);
    EXPECT_EQ(model.flag(0, 1), 1);
    TypeInfo again;
    again.load(model.project, model.files);
    EXPECT_EQ(again.IPUTDI() + again.LINFO(), "123X567890125");
    EXPECT_TRUE(again.checked("chkDHChemistry"));
}

TEST(TypeInfo, DHChemistryWarnsAtEverySwitchingOn) {
    const SettingsModel model;
    TypeInfo form;
    form.load(model.project, model.files);
    for (int i = 0; i < 2; ++i) {
        const auto notices = form.set("chkDHChemistry", "1");
        ASSERT_EQ(notices.size(), 1u);
        EXPECT_EQ(notices[0].title, "Output File DH-Chemistry");
        EXPECT_EQ(notices[0].text,
                  "The file dhcall.out is for debugging only and can become very large.");
        EXPECT_TRUE(form.set("chkDHChemistry", "0").empty());
    }
}

} // namespace
} // namespace sim

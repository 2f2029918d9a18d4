#include "sim/outeriteration.h"

#include "core/notes.h"
#include "sim/settingsmodel.h"

#include <gtest/gtest.h>

namespace sim {
namespace {

OutIter loaded(const SettingsModel& model) {
    OutIter form;
    form.load(model.project, model.files);
    return form;
}

TEST(OutIter, NeverStoredShowsLimitsOnly) {
    const SettingsModel model;
    const OutIter form = loaded(model);
    EXPECT_FALSE(form.active_stored());
    EXPECT_FALSE(form.checked("chkPicard"));
    EXPECT_EQ(form.get("sldProjCoeff") + form.get("txtIteration"), "");
    for (const char* name : {"txtFlowLimit", "txtHeatLimit", "txtTransLimit"})
        EXPECT_EQ(form.get(name), "0.001");
}

TEST(OutIter, TextsAreStoredAsTyped) {
    SettingsModel model;
    OutIter form = loaded(model);
    form.set("chkPicard", "1");
    form.set("sldProjCoeff", "0.3");
    form.set("txtIteration", "5.0");
    form.set("txtFlowLimit", "1e-3");
    form.save(model.project, model.files);
    const auto note = [&](const char* key) {
        return core::Get_IZV_Data(model.files, "PICARD", key);
    };
    EXPECT_EQ(note("Active"), "1");
    EXPECT_EQ(note("Chi"), "0.3");
    EXPECT_EQ(note("Iteration"), "5.0");
    EXPECT_EQ(note("FlowLimit"), "1e-3");
    EXPECT_EQ(note("HeatLimit"), "0.001");
    EXPECT_EQ(model.flag(0, 1), 1);
    form.set("chkPicard", "0");
    form.save(model.project, model.files);
    EXPECT_EQ(note("Active"), "0");
    EXPECT_TRUE(loaded(model).active_stored());
    EXPECT_EQ(loaded(model).get("sldProjCoeff"), "0.3");
}

TEST(OutIter, TransportLimitIsSavedAndReadUnderDifferentKeys) {
    SettingsModel model;
    OutIter form = loaded(model);
    form.set("txtTransLimit", "0.5");
    form.save(model.project, model.files);
    EXPECT_EQ(core::Get_IZV_Data(model.files, "PICARD", "TransportLimit"), "0.5");
    EXPECT_EQ(core::Get_IZV_Data(model.files, "PICARD", "TransLimit"), "");
    EXPECT_EQ(loaded(model).get("txtTransLimit"), "0.001");
    core::Save_IZV_Data(model.files, "PICARD", "TransLimit", "0.7");
    form = loaded(model);
    EXPECT_EQ(form.get("txtTransLimit"), "0.7");
    form.save(model.project, model.files);
    EXPECT_EQ(core::Get_IZV_Data(model.files, "PICARD", "TransLimit"), "0.7");
}

TEST(OutIter, SettingsAreDisabledWhileItIsOff) {
    OutIter form;
    EXPECT_FALSE(form.enabled("txtFlowLimit"));
    EXPECT_TRUE(form.enabled("chkPicard"));
    form.set("chkPicard", "1");
    EXPECT_TRUE(form.enabled("txtFlowLimit"));
}

} // namespace
} // namespace sim

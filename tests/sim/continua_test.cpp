#include "sim/continua.h"

#include "core/notes.h"
#include "sim/settingsmodel.h"

#include <gtest/gtest.h>

namespace sim {
namespace {

Boxmodel two_systems() {
    Boxmodel box;
    box.density = {"0.1", "10"};
    box.aperture = {"1E-3", "0.0001"};
    box.tortuosity = {"1", "2"};
    return box;
}

TEST(ZoneList, DigitsAreGatheredUpToAComma) {
    EXPECT_EQ(parse_zone_list("1,3,12"), (std::vector<int>{1, 3, 12}));
    EXPECT_EQ(parse_zone_list(" 1 ,,2 3,"), (std::vector<int>{1, 23}));
    EXPECT_EQ(parse_zone_list("-"), std::vector<int>{});
    EXPECT_EQ(parse_zone_list("99999999999999999999"), std::vector<int>{2147483647});
}

TEST(Boxmodel, NotesHoldAperturesInExponentForm) {
    SettingsModel model;
    Boxmodel box = two_systems();
    box.active = "1";
    box.P_Zones = "1,3";
    box.save(model.files);
    EXPECT_EQ(core::Get_IZV_Data(model.files, "BOX", "Apert_A"), "1.000E-03");
    EXPECT_EQ(core::Get_IZV_Data(model.files, "BOX", "Apert_D"), "0.000E+00");
    EXPECT_EQ(core::Get_IZV_Data(model.files, "BOX", "Dens_B"), "10");
    EXPECT_EQ(core::Get_IZV_Data(model.files, "BOX", "Tort_B"), "2");
    const Boxmodel loaded = Boxmodel::load(model.files);
    EXPECT_EQ(loaded.active, "1");
    EXPECT_EQ(loaded.P_Zones, "1,3");
    EXPECT_EQ(loaded.aperture[1], "1.000E-04");
}

TEST(Boxmodel, NoZonesAreADash) {
    SettingsModel model;
    EXPECT_EQ(Boxmodel::load(model.files).P_Zones, "-");
    Boxmodel().save(model.files);
    EXPECT_EQ(core::Get_IZV_Data(model.files, "BOX", "P_Zones"), "-");
}

TEST(FractureProperties, FollowDensityApertureAndTortuosity) {
    const FractureProperties result = calculated_properties(two_systems());
    EXPECT_EQ(result.porosity[0], "1.00E-04");
    EXPECT_EQ(result.permeability[0], "1.25E-11"); // (b / T)^2 * N * b / (8 T)
    EXPECT_EQ(result.porosity[1], "1.00E-03");
    EXPECT_EQ(result.permeability[1], "1.56E-13");
    EXPECT_EQ(result.exchange[0], "8.00E+02"); // k(A) / k(B) * N(B)
}

TEST(FractureProperties, SystemsWithoutTortuosityAreZero) {
    Boxmodel box = two_systems();
    box.tortuosity[1] = "";
    const FractureProperties result = calculated_properties(box);
    EXPECT_EQ(result.porosity[1], "0.00E+00");
    EXPECT_EQ(result.permeability[1], "0.00E+00");
    EXPECT_EQ(result.exchange[0], "0.00E+00");
    EXPECT_EQ(result.exchange[2], "0.00E+00");
}

TEST(BoxmodelForm, SavesItsOwnSwitch) {
    SettingsModel model;
    BoxmodelForm form;
    form.load(model.project, model.files);
    EXPECT_EQ(form.get("chkBox"), "0");
    form.set("chkBox", "1");
    form.set("txtPropZones", "");
    form.set("txtApertC", "2e-5");
    form.save(model.project, model.files);
    EXPECT_EQ(model.flag(10, 6), 0); // belongs to the simulation type
    EXPECT_EQ(model.flag(0, 1), 1);
    form.load(model.project, model.files);
    EXPECT_EQ(form.get("chkBox"), "1");
    EXPECT_EQ(form.get("txtPropZones"), "-");
    EXPECT_EQ(form.get("txtApertC"), "2.000E-05");
}

TEST(BoxmodelForm, ShowsWhatItCalculated) {
    BoxmodelForm form;
    form.set("txtDensA", "0.1");
    form.set("txtApertA", "1E-3");
    form.set("txtTortA", "1");
    const core::Notice notice = form.calculated();
    EXPECT_EQ(notice.title, "Calculated permeability and porosity");
    EXPECT_EQ(notice.text.substr(0, notice.text.find("System C")),
              "System A\nPorosity = 1.00E-04\nPermeability = 1.25E-11\n\n"
              "System B\nPorosity = 0.00E+00\nPermeability = 0.00E+00\n\n");
    EXPECT_NE(notice.text.find("Exchange parameter C-D (m²) = 0.00E+00\n"), std::string::npos);
    EXPECT_NE(notice.text.find("\nExchange coefficients calculated based on\n"), std::string::npos);
    EXPECT_TRUE(notice.text.ends_with("\nand unity cell length."));
}

} // namespace
} // namespace sim

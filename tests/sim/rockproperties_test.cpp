#include "sim/rockproperties.h"

#include "base/failure.h"
#include "core/arraystore.h"
#include "sim/rockfile.h"
#include "sim/settingsmodel.h"
#include "support/scripteduser.h"

#include <gtest/gtest.h>

#include <cmath>

namespace sim {
namespace {

constexpr const char* array_title = "Permeability / Porosity Definition";
constexpr int porosity = 6, permeability = 1401, property_zones = 1403;

struct RockModel : SettingsModel {
    std::string rock_line(int number) const { return RockFile::load(files).line(number); }

    // A grid of 3 x 1 cells in two layers with these zones.
    void define_zones(const core::LayerValues& upper, const core::LayerValues& lower) {
        project.set_integer("DIMENSION", "NX", 3);
        project.set_integer("DIMENSION", "NY", 1);
        project.set_integer("DIMENSION", "NZ", 2);
        files.write(".xy", " 3  1  2 \r\n");
        core::ArrayStore store(files, project);
        store.write_array(property_zones, 1, 1, upper);
        store.write_array(property_zones, 1, 2, lower);
    }
    core::LayerValues layer(int number, int layer_number) {
        core::LayerValues values(3);
        core::ArrayStore(files, project).read_array(number, 1, layer_number, values, -9);
        return values;
    }
};

template <typename Dialog>
Dialog loaded(const RockModel& model) {
    Dialog form;
    form.load(model.project, model.files);
    return form;
}

PermPor two_zones(const RockModel& model) {
    PermPor form = loaded<PermPor>(model);
    form.set("Zones", "2");
    form.set_cell(1, "Por", "0.1");
    form.set_cell(2, "Perm", " 2E-14 ");
    return form;
}

TEST(PermPor, WritesItsOwnLinesOnly) {
    RockModel model;
    PermPor form = two_zones(model);
    form.save(model.project, model.files);
    EXPECT_EQ(model.rock_line(1), "Fluid Flow");
    EXPECT_EQ(model.rock_line(2), "Por       0.1       0.25");
    EXPECT_EQ(model.rock_line(3), "Perm      1E-12               2E-14");
    EXPECT_EQ(model.rock_line(4), "Anisotropy");
    EXPECT_EQ(model.rock_line(5), "ANISOI    1.        1.");
    EXPECT_EQ(model.rock_line(6), "ANISOJ    1.        1.");
    EXPECT_EQ(model.rock_line(10), "RhoCm     2.06      2.06");
    EXPECT_EQ(model.flag(1, 0), 2);
    EXPECT_EQ(model.flag(0, 1), 1);
    EXPECT_TRUE(form.saved_notices().empty());
    EXPECT_FALSE(model.files.has(".por"));
}

TEST(PermPor, CompressibilityOfAllZonesGoesToTheSettings) {
    RockModel model;
    PermPor form = two_zones(model);
    form.set("COMPM_Value", "3E-10");
    form.save(model.project, model.files);
    EXPECT_EQ(model.line(19), "3E-10");
    EXPECT_EQ(loaded<PermPor>(model).get("COMPM_Value"), "3E-10");
}

TEST(PermPor, SettingsThatAreMissingAreWrittenWhole) {
    RockModel model;
    PermPor form = loaded<PermPor>(model);
    form.save(model.project, model.files);
    EXPECT_TRUE(model.files.has(".typ"));
    EXPECT_EQ(model.line(19), "1.0E-10");
}

TEST(PermPor, CompressibilitiesOfZonesReplaceLineFour) {
    RockModel model;
    PermPor form = two_zones(model);
    form.set_cell(2, "Compress", "7E-10");
    form.set("COMPM_Value", "3E-10");
    form.save(model.project, model.files);
    EXPECT_EQ(model.rock_line(4), "Compress  3E-10     7E-10");
    EXPECT_EQ(model.line(19), "1.0E-10");

    PermPor again = loaded<PermPor>(model);
    EXPECT_EQ(again.cell(2, "Compress"), "7E-10");
    again.set_cell(1, "Compress", "");
    again.set_cell(2, "Compress", "");
    again.save(model.project, model.files);
    EXPECT_EQ(model.rock_line(4), "Anisotropy");
}

TEST(PermPor, OldHeadOfLineFourStays) {
    RockModel model;
    RockFile rock(2);
    rock.set_line(4, "Anisotropy   of a kind");
    rock.save(model.files);
    PermPor form = loaded<PermPor>(model);
    EXPECT_EQ(form.cell(1, "Compress"), ""); // the rest of the head is no value
    form.save(model.project, model.files);
    EXPECT_EQ(model.rock_line(4), "Anisotropy   of a kind");
}

TEST(PermPor, EmptyPorosityKeepsTheNumberOfZones) {
    RockModel model;
    PermPor form = two_zones(model);
    form.set_cell(1, "Por", "");
    form.save(model.project, model.files);
    EXPECT_EQ(model.rock_line(2), "Por       0.        0.25");
}

TEST(PermPor, NumberOfZonesMovesTheMinerals) {
    RockModel model;
    RockFile rock(3);
    rock.set_line(16, "HALITE    1.        2.        3.        -1        0.5");
    rock.save(model.files);
    PermPor form = two_zones(model);
    EXPECT_EQ(form.rows(), 2);
    form.save(model.project, model.files);
    EXPECT_EQ(model.rock_line(16), "HALITE    1.        2.        -1        0.5");
    EXPECT_EQ(model.rock_line(11), "Cond      2.9       2.9");
}

TEST(PermPor, NumberOfZonesIsOneToFifteen) {
    const RockModel model;
    PermPor form = loaded<PermPor>(model);
    for (const char* typed : {"0", "16", "", "x"}) {
        form.set("Zones", typed);
        EXPECT_EQ(form.rows(), 15);
        ASSERT_TRUE(form.check());
        EXPECT_EQ(form.check()->title, "Error");
        EXPECT_EQ(form.check()->text, "Valid range is 1 to 15");
    }
    form.set("Zones", "1");
    EXPECT_FALSE(form.check());
    EXPECT_THROW(form.cell(2, "Por"), base::RangeFailure);
    EXPECT_THROW(form.set_cell(1, "Cond", "1"), base::RangeFailure);
}

TEST(PermPor, RowsComeBackWhileTheNumberIsTyped) {
    const RockModel model;
    PermPor form = loaded<PermPor>(model);
    form.set_cell(12, "Por", "0.3");
    form.set("Zones", "1");
    form.set("Zones", "12");
    EXPECT_EQ(form.cell(12, "Por"), "0.3");
}

TEST(PermPor, ColumnsCarryTheirUnits) {
    const RockModel model;
    std::string heads;
    for (const core::FieldInfo& column : loaded<PermPor>(model).columns())
        heads += std::string(column.label) + " [" + column.unit + "]\n";
    EXPECT_EQ(heads, "Porosity [-]\nPermeability [m²]\nAnisotropy x-Direction []\n"
                     "Anisotropy y-Direction []\nCompressibility [1/Pa]\n");
}

TEST(SavePerPor, BuildsBothArraysFromTheZones) {
    RockModel model;
    model.define_zones({1, 2, 3}, {0, -5, 2});
    PermPor form = two_zones(model);
    support::ScriptedUser user;
    EXPECT_TRUE(form.ask(user));
    form.save(model.project, model.files);
    EXPECT_EQ(model.layer(porosity, 1), (core::LayerValues{0.1F, 0.25F, 0}));
    EXPECT_EQ(model.layer(porosity, 2), (core::LayerValues{0, 0, 0.25F}));
    EXPECT_EQ(model.layer(permeability, 1), (core::LayerValues{1E-12F, 2E-14F, 0}));
    EXPECT_EQ(model.layer(permeability, 2), (core::LayerValues{0, 0, 2E-14F}));
    ASSERT_EQ(form.saved_notices().size(), 1U);
    const core::Notice notice = form.saved_notices().front();
    EXPECT_EQ(notice.icon, base::Icon::information);
    EXPECT_EQ(notice.title, array_title);
    EXPECT_EQ(notice.text,
              "Initial distribution of Porosity and Permeability is saved. You can adapt the "
              "values in the cell-by-cell mode.");
}

TEST(SavePerPor, AsksForArraysThatWereDefinedCellByCell) {
    struct Case {
        int porosity, permeability;
        std::string name;
    };
    const Case cases[] = {
        {2, 2, "Porosity and Permeability"}, {2, 1, "Porosity"}, {0, 2, "Permeability"}};
    for (const Case& c : cases) {
        RockModel model;
        model.define_zones({1, 1, 1}, {1, 1, 1});
        model.project.flags.set(2, 2, c.porosity);
        model.project.flags.set(2, 1, c.permeability);
        const std::string question = c.name + " values are already defined in the cell-by-cell "
                                              "mode. When you go on these values will be "
                                              "overwriten. Continue?";
        PermPor form = loaded<PermPor>(model);
        support::ScriptedUser user;
        user.expect_question(array_title, question, base::Answer::no);
        user.expect_question(array_title, question, base::Answer::yes);
        EXPECT_FALSE(form.ask(user));
        EXPECT_TRUE(form.ask(user));
        form.save(model.project, model.files);
        EXPECT_EQ(model.flag(2, 2), 0);
        EXPECT_EQ(model.flag(2, 1), 0);
        EXPECT_EQ(model.flag(1, 0), 2);
    }
}

TEST(SavePerPor, NeedsZonesAndAGrid) {
    RockModel model;
    model.define_zones({1, 1, 1}, {1, 1, 1});
    model.project.flags.set(2, 2, 2);
    model.files.remove(".xy");
    PermPor form = loaded<PermPor>(model);
    support::ScriptedUser user; // expects no question
    EXPECT_TRUE(form.ask(user));
    form.save(model.project, model.files);
    EXPECT_FALSE(model.files.has(".por"));
    EXPECT_EQ(model.flag(2, 2), 2);
}

TEST(SavePerPor, ZoneNumbersThatAreNoneGiveZero) {
    RockModel model;
    model.define_zones({NAN, INFINITY, -INFINITY}, {3.4E38F, 2.2F, 15});
    PermPor form = loaded<PermPor>(model);
    form.save(model.project, model.files);
    EXPECT_EQ(model.layer(porosity, 1), (core::LayerValues{0, 0, 0}));
    EXPECT_EQ(model.layer(porosity, 2), (core::LayerValues{0, 0.25F, 0.25F}));
}

TEST(SavePerPor, HalvesOfZonesGoToTheEvenZone) {
    RockModel model;
    model.define_zones({0.5F, 1.5F, 2.5F}, {3.5F, 14.5F, 15.5F});
    PermPor form = loaded<PermPor>(model);
    for (int zone = 1; zone <= 15; ++zone)
        form.set_cell(zone, "Por", std::to_string(zone));
    form.save(model.project, model.files);
    EXPECT_EQ(model.layer(porosity, 1), (core::LayerValues{0, 2, 2}));
    EXPECT_EQ(model.layer(porosity, 2), (core::LayerValues{4, 14, 0}));
}

TEST(SavePerPor, CutOffZonesAreAFailure) {
    RockModel model;
    model.define_zones({1, 1, 1}, {1, 1, 1});
    model.files.write(".mds", "short");
    PermPor form = loaded<PermPor>(model);
    EXPECT_THROW(form.save(model.project, model.files), base::FileFailure);
}

TEST(Heat, WritesItsOwnLinesOnly) {
    RockModel model;
    RockFile(2).save(model.files);
    Heat form = loaded<Heat>(model);
    form.set_cell(1, "Capacity", "2.3");
    form.set_cell(2, "WLYANI", "0.5");
    form.set_cell(2, "Por", "0.9"); // for show
    EXPECT_EQ(form.cell(2, "Por"), "0.25");
    form.save(model.project, model.files);
    EXPECT_EQ(model.rock_line(2), "Por       0.25      0.25");
    EXPECT_EQ(model.rock_line(6), "ANIOSJ    1.        1.");
    EXPECT_EQ(model.rock_line(9), "Heat");
    EXPECT_EQ(model.rock_line(10), "Capacity  2.3       2.06");
    EXPECT_EQ(model.rock_line(14), "WLYANI    1.        0.5");
    EXPECT_EQ(model.flag(9, 13), 2);
    EXPECT_EQ(model.flag(0, 1), 1);
}

TEST(RockLoad, TakesTheBlockOfAnotherFile) {
    RockModel model;
    RockFile other(2);
    other.set_field(rock::Por, 2, "0.4");
    other.set_field(rock::Cond, 2, "4.4");
    PermPor flow = loaded<PermPor>(model);
    EXPECT_FALSE(flow.load_block(other.bytes(), "other.mco"));
    EXPECT_EQ(flow.rows(), 2);
    EXPECT_EQ(flow.get("Zones"), "2");
    EXPECT_EQ(flow.cell(2, "Por"), "0.4");
    Heat heat = loaded<Heat>(model);
    EXPECT_FALSE(heat.load_block(other.bytes(), "other.mco"));
    EXPECT_EQ(heat.rows(), 15);
    EXPECT_EQ(heat.cell(2, "Cond"), "4.4");
    EXPECT_EQ(heat.cell(3, "Cond"), "2.9");
    EXPECT_EQ(heat.cell(2, "Por"), "0.25");
}

TEST(RockLoad, RefusesAFileWithoutTheHeadOfTheBlock) {
    const RockModel model;
    RockFile other(2);
    other.set_line(9, "Cold");
    Heat heat = loaded<Heat>(model);
    PermPor flow = loaded<PermPor>(model);
    for (const std::string& bytes : {other.bytes(), std::string("garbage"), std::string()}) {
        const auto refusal = heat.load_block(bytes, "other.mco");
        ASSERT_TRUE(refusal);
        EXPECT_EQ(refusal->title, "Message");
        EXPECT_EQ(refusal->text, "File has a wrong format.");
    }
    EXPECT_FALSE(flow.load_block(other.bytes(), "other.mco"));
    EXPECT_TRUE(flow.load_block("fluid flow\r\n", "other.mco"));
    EXPECT_THROW(flow.load_block("Fluid Flow\r\nPor       0.1", "other.mco"), base::FileFailure);
    EXPECT_EQ(flow.cell(2, "Por"), "0.25");
}

TEST(RockClear, AsksAndSetsTheTableToZero) {
    RockModel model;
    PermPor form = two_zones(model);
    form.set_cell(1, "Compress", "1E-9");
    support::ScriptedUser user;
    const char* question = "This will clear the Table of Properties. Continue?";
    user.expect_question("Tervex Desk", question, base::Answer::no);
    user.expect_question("Tervex Desk", question, base::Answer::yes);
    EXPECT_FALSE(form.clear(user));
    EXPECT_EQ(form.cell(1, "Por"), "0.1");
    EXPECT_TRUE(form.clear(user));
    for (const char* column : {"Por", "Perm", "ANISOI", "ANISOJ"})
        EXPECT_EQ(form.cell(2, column), "0.");
    EXPECT_EQ(form.cell(1, "Compress"), "");
}

} // namespace
} // namespace sim

#include "input/completeness.h"

#include "core/arraystore.h"
#include "core/modelfiles.h"
#include "core/project.h"
#include "sim/periods.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

namespace {

// A model of 3 x 2 x 2 cells with all processes but chemistry that passes every test.
class CompletenessTest : public testing::Test {
protected:
    CompletenessTest() {
        project.set_integer("DIMENSION", "NX", 3);
        project.set_integer("DIMENSION", "NY", 2);
        project.set_integer("DIMENSION", "NZ", 2);
        for (const auto& [a, b] : {std::pair{2, 11},
                                   {9, 0},
                                   {9, 1},
                                   {9, 2},
                                   {8, 3},
                                   {1, 7},
                                   {2, 7},
                                   {9, 13},
                                   {4, 0},
                                   {4, 6},
                                   {4, 7},
                                   {9, 8},
                                   {2, 13},
                                   {11, 2},
                                   {9, 9},
                                   {10, 11},
                                   {2, 12},
                                   {9, 14}}) {
            project.flags.mark_defined(a, b);
        }
        for (const auto& [a, b] : {std::pair{0, 0}, {9, 4}, {9, 5}, {9, 6}, {10, 5}}) {
            project.flags.set(a, b, 1);
        }
        files.write(".xy", "mesh");
        files.write(".l", "layers");
        for (const auto& [number, value] : {std::pair{5, 1.F},
                                            {6, .25F},
                                            {40, 1.F},
                                            {1401, 1e-12F},
                                            {1403, 1.F},
                                            {1405, 1.F},
                                            {1406, 0.F},
                                            {1434, 0.F}}) {
            store().create_array_file(number, value);
        }
    }

    core::ArrayStore store() { return {files, project}; }

    void set_last_cell(int number, float value) {
        core::LayerValues values(6);
        store().read_array(number, 1, 2, values, 0);
        values.back() = value;
        store().write_array(number, 1, 2, values);
    }

    // Number and text of the first failed test.
    std::pair<int, std::string> first_gap() {
        const auto gap = input::Control(project, files);
        return gap ? std::pair(gap->test, gap->message.text) : std::pair(0, std::string());
    }

    support::TempFolder folder;
    core::Project project;
    core::ModelFiles files{folder.path() / "m.td1", core::Access::write};
};

using Gap = std::pair<int, std::string>;

TEST_F(CompletenessTest, a_complete_model_passes) {
    EXPECT_EQ(first_gap(), Gap(0, ""));
}

TEST_F(CompletenessTest, a_new_model_stops_at_the_grid) {
    core::Project empty;
    core::ModelFiles none(folder.path() / "new.td1", core::Access::read);
    const auto gap = input::Control(empty, none);
    ASSERT_TRUE(gap);
    EXPECT_EQ(gap->message.title, "Missing or Wrong Input Data");
    EXPECT_EQ(gap->message.text, "Define the model grid first in: |Grid|Mesh Size.");
    EXPECT_EQ(gap->menu_path, "|Grid|Mesh Size");
}

TEST_F(CompletenessTest, each_undefined_item_is_named_with_its_menu) {
    struct Case {
        int a, b, test;
        const char* text;
    };
    for (const Case& c : std::initializer_list<Case>{
             {2, 11, 6, "Define the Property Zones first in: |Grid|Property Zones."},
             {9, 0, 8, "Define the simulation type first in: |Type|Settings."},
             {9, 1, 9, "Define the update between depending properties first in: |Type|Coupling."},
             {9, 2, 10,
              "Define the Runtime Information Level and the Resultfile Format first in: "
              "|Type|Info/Results."},
             {8, 3, 11, "Define the Solver Parameters first in: |Time|Solver Parameters..."},
             {1, 7, 12, "Define the Flow Boundaries first in: |Flow|Flow Boundaries."},
             {2, 7, 19, "Define the Heat Boundaries first in: |Heat|Heat Boundaries."},
             {9, 13, 21,
              "Define the Thermal Rock Properties first in: |Heat|Thermal Rock Properties."},
             {4, 0, 22, "Define the Ice Content first in: |Heat|Permafrost|Ice Content."},
             {4, 6, 23, "Define the Ice Content first in: |Heat|Permafrost|Liquidus Temperature."},
             {4, 7, 24, "Define the Ice Content first in: |Heat|Permafrost|Solidus Temperature."},
             {11, 2, 29,
              "Define the Transport Boundaries first in: |Transport|Transport Boundaries."},
             {9, 9, 30,
              "Define the Dispersivity and the Diffusion Coefficient first in: "
              "|Transport|Fluid/Rock Properties."}}) {
        const core::ModelFlags whole = project.flags;
        project.flags.set(c.a, c.b, 0);
        EXPECT_EQ(first_gap(), Gap(c.test, c.text));
        project.flags = whole;
    }
}

TEST_F(CompletenessTest, each_wrong_value_is_found_in_the_last_cell) {
    struct Case {
        int number;
        float value;
        int test;
        const char* text;
    };
    for (const Case& c : std::initializer_list<Case>{
             {1403, 16, 7,
              "Wrong value defined in: |Grid|Property Zones.\n\n"
              "Value needs to be between 1 and 15."},
             {5, 0, 13,
              "Wrong value defined in: |Flow|Flow Boundaries.\n\nValid values are 1, -1, or 2."},
             {6, -.1F, 15,
              "Wrong value defined in: |Flow|Initial Permeability / Porosity.\n\n"
              "Negative porosity is not a valid entry."},
             {1401, -1e-12F, 17,
              "Wrong value defined in: |Flow|Initial Permeability / Porosity.\n\n"
              "Negative permeability is not a valid entry."},
             {1405, 3, 20,
              "Wrong value defined in: |Heat|Thermal Boundaries.\n\nValid values are 1, -1, or 2."},
             {1434, .3F, 25,
              "Ice Content is greater than Porosity in minimum one case.\n\n"
              "Please check Ice Content!"},
             {1406, 6, 27,
              "Wrong value defined in: |Transport|Initial Tracer Distribution|Constant "
              "Concentration.\n\nValid values are 0 to 5"},
             {40, 2, 28,
              "Wrong value defined in: |Transport|Transport Boundaries.\n\n"
              "Valid values are 1 or -1."}}) {
        const float good = store().read_cell_value(c.number, 1, 2, 2, 3, 0).value;
        set_last_cell(c.number, c.value);
        EXPECT_EQ(first_gap(), Gap(c.test, c.text));
        set_last_cell(c.number, good);
    }
}

TEST_F(CompletenessTest, values_before_flags_for_the_transport_boundaries) {
    project.flags.set(11, 2, 0);
    set_last_cell(40, 0);
    EXPECT_EQ(first_gap().first, 28);
}

TEST_F(CompletenessTest, flow_that_is_off_asks_for_no_flow_data) {
    project.flags.set(9, 4, 0);
    project.flags.set(1, 7, 0);
    files.remove(".per");
    set_last_cell(5, 0);
    set_last_cell(6, -1);
    project.flags.set(10, 5, 0); // the ice would exceed the negative porosity
    EXPECT_EQ(first_gap(), Gap(0, ""));
}

TEST_F(CompletenessTest, a_prescribed_flow_field_replaces_the_flow_boundaries) {
    project.flags.set(3, 1, 1);
    project.flags.set(1, 7, 0);
    EXPECT_EQ(first_gap(),
              Gap(18, "Define the prescribed flow field first in: |Flow|Prescribed Flow Field."));
    project.flags.mark_defined(3, 0);
    EXPECT_EQ(first_gap(), Gap(0, ""));
}

TEST_F(CompletenessTest, cross_sections_have_their_own_words) {
    files.remove(".l");
    EXPECT_EQ(first_gap(), Gap(2, "Define the layer type first in: |Grid|Layer Type."));
    project.flags.set(1, 4, 1);
    EXPECT_EQ(first_gap(), Gap(3, "Define the layer type first in: |Grid|Layer Type."));
    project.flags.set(0, 0, 0);
    EXPECT_EQ(first_gap(), Gap(4, "Define front of cross sections first in: |Grid|Top of Layers."));
    project.flags.mark_defined(6, 5);
    EXPECT_EQ(first_gap(),
              Gap(5, "Define back of cross sections first in: |Grid|Bottom of Layers."));
    project.flags.set(1, 4, 0);
    files.write(".l", "layers");
    EXPECT_EQ(first_gap(), Gap(5, "Define bottom of layers first in: |Grid|Bottom of Layers."));
}

TEST_F(CompletenessTest, chemistry_needs_its_data) {
    files.remove(".por");
    EXPECT_EQ(first_gap(), Gap(0, ""));
    project.flags.set(9, 7, 2);
    EXPECT_EQ(first_gap(),
              Gap(14, "Define the rock porosity first in: |Flow|Initial Permeabiltiy/Porosity."));
    store().create_array_file(6, .25F);
    EXPECT_EQ(first_gap(), Gap(0, ""));
    project.flags.set(10, 11, 0);
    EXPECT_EQ(first_gap().first, 31);
    project.flags.set(9, 12, 5); // kinetic data bring their own surface
    EXPECT_EQ(first_gap(), Gap(0, ""));
    project.flags.set(2, 12, 0);
    EXPECT_EQ(first_gap().first, 32);
}

TEST_F(CompletenessTest, the_tracer_dialog_has_to_be_confirmed) {
    project.flags.set(9, 8, 0);
    const auto gap = input::Control(project, files);
    ASSERT_TRUE(gap);
    EXPECT_EQ(gap->message.title, "Message");
    EXPECT_EQ(gap->message.text, "Check the Tracer definition first in: |Transport|Tracer.\n\n"
                                 "You do not have to define a Tracer, but to click OK");
}

TEST_F(CompletenessTest, all_gaps_come_in_order) {
    project.flags.set(9, 1, 0);
    project.flags.set(2, 7, 0);
    set_last_cell(1403, 0);
    sim::PeriodTable().save(files); // without a time unit
    std::vector<int> numbers;
    for (const input::Gap& gap : input::all_gaps(project, files)) {
        numbers.push_back(gap.test);
    }
    EXPECT_EQ(numbers, (std::vector<int>{7, 9, 19}));
    const std::vector<input::Gap> of_writing = input::gaps_of_writing(project, files);
    ASSERT_EQ(of_writing.size(), 1U);
    EXPECT_EQ(of_writing.front().menu_path, "|Time|Periods");
}

} // namespace

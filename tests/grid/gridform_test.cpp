#include "grid/gridform.h"

#include "base/failure.h"
#include "grid/arrayfiles.h"
#include "support/failureof.h"
#include "testmodel.h"

#include <utility>

namespace grid {
namespace {

// An array file of one record with the given number of values.
std::string array_bytes(std::size_t values, char records = 1) {
    std::string bytes(4000 + 4 * values, '\0');
    for (char record = 1; record <= records; ++record) {
        const auto entry = static_cast<std::size_t>(2 * (record - 1));
        bytes[entry] = bytes[2000 + entry] = record;
    }
    return bytes;
}

std::string refusal_of(std::vector<std::pair<const char*, const char*>> changes) {
    TestModel model;
    Grid_Number form;
    form.load(model.project, model.files);
    for (const auto& [name, text] : changes)
        form.set(name, text);
    return title_and_text(form.check());
}

TEST(Grid_Number, proposes_the_numbers_of_a_new_model) {
    TestModel model;
    Grid_Number form;
    form.load(model.project, model.files);
    EXPECT_EQ(form.get("txtColumns"), "30");
    EXPECT_EQ(form.get("txtRows"), "30");
    EXPECT_EQ(form.get("txtLayers"), "1");
    EXPECT_EQ(form.get("txtColumnSize"), "1");
    EXPECT_FALSE(form.check());
}

TEST(Grid_Number, refuses_values_that_are_not_positive) {
    for (const char* field : {"txtLayers", "txtColumns", "txtColumnSize", "txtRows", "txtRowSize"})
        for (const char* text : {"0", "-1", "abc", ""})
            EXPECT_EQ(refusal_of({{field, text}}), "Error: Please enter a positive value.");
}

TEST(Grid_Number, has_limits_and_checks_in_the_order_of_the_fields) {
    EXPECT_EQ(refusal_of({{"txtColumns", "2000"}, {"txtRows", "2000"}}), "accepted");
    EXPECT_EQ(refusal_of({{"txtColumns", "2001"}, {"txtRows", "2001"}}),
              "Tervex Desk: The maximumm number of columns is 2000");
    EXPECT_EQ(refusal_of({{"txtRows", "2001"}, {"txtRowSize", "0"}}),
              "Tervex Desk: The maximumm number of rows is 2000");
    EXPECT_EQ(refusal_of({{"txtColumnSize", "0"}, {"txtRows", "2001"}}),
              "Error: Please enter a positive value.");
    EXPECT_EQ(refusal_of({{"txtLayers", "32768"}, {"txtColumns", "0"}}),
              "Error: Valid range is 1 to 32767");
}

TEST(Grid_Number, writes_grid_and_layers_and_lays_out_the_sheet) {
    TestModel model;
    model.project.set_single("GRIDPOSITION", "ANGLE", 30);
    model.define_mesh(2, 1, 1, ".5");
    EXPECT_EQ(model.files.read(".xy"), " 2  1  1 \r\n .5 \r\n .5 \r\n .5 \r\n");
    EXPECT_EQ(model.files.read(".l"), " 1 \r\n 0 \r\n 1 \r\n 0  0  0  0  0  0 \r\n 0 \r\n 0 \r\n");
    EXPECT_EQ(model.project.NX(), 2);
    EXPECT_EQ(model.project.single("DIMENSION", "SHEET_X2"), 2);
    EXPECT_EQ(model.project.single("DIMENSION", "SHEET_Y2"), 1);
    EXPECT_EQ(model.project.single("GRIDPOSITION", "ANGLE"), 0);
    EXPECT_TRUE(model.project.flags.is_defined(1, 2));
    EXPECT_EQ(model.project.flags(0, 1), 1);
}

TEST(Grid_Number, takes_the_smallest_grid_and_the_largest_sizes) {
    TestModel model;
    model.define_mesh(1, 1, 1, "3.4E38");
    EXPECT_EQ(model.files.read(".xy"), " 1  1  1 \r\n 3.4E+38 \r\n 3.4E+38 \r\n");
    place_grid(model.project, *GridFile::load(model.files));
    EXPECT_EQ(model.project.single("DIMENSION", "SHEET_X2"), 3.4E38F);
}

TEST(Grid_Number, warns_of_sections_and_fixes_the_orientation_with_the_first_mesh) {
    TestModel model;
    model.project.set_title("Horizontal - Upper Rhine");
    Grid_Number form;
    form.load(model.project, model.files);
    EXPECT_EQ(notice_of(form.set("GridOrientation", "2")),
              "Warning: The model is now understood as cylindrical symmetric.\n"
              "Once saved, this cannot be changed anymore!");
    EXPECT_EQ(notice_of(form.set("GridOrientation", "1")),
              "Warning: Layers are now understood as vertical cross sections.\n"
              "Once saved, this cannot be changed anymore!");
    EXPECT_STREQ(form.frame_caption(), "Cross Sections");
    ASSERT_FALSE(form.check());
    form.save(model.project, model.files);
    EXPECT_EQ(model.project.flags.GridOrientation(), core::vertical);
    EXPECT_EQ(model.project.title(), "Vertical - Upper Rhine");

    Grid_Number later;
    later.load(model.project, model.files);
    EXPECT_FALSE(later.enabled("GridOrientation"));
    EXPECT_EQ(notice_of(later.set("GridOrientation", "2")), "none");
    EXPECT_EQ(title_and_text(later.check()),
              "Tervex Desk: The orientation of a saved model cannot be changed.");
}

TEST(Grid_Number, keeps_the_numbers_of_a_defined_mesh_with_arrays) {
    TestModel model;
    model.define_mesh(5, 4, 2, "10");
    model.files.write(".per", array_bytes(40));
    Grid_Number form;
    form.load(model.project, model.files);
    EXPECT_EQ(form.get("txtColumnSize"), "10");
    form.set("txtColumnSize", "20");
    ASSERT_FALSE(form.check());
    form.save(model.project, model.files);
    EXPECT_TRUE(model.files.has(".per"));
    EXPECT_EQ(GridFile::load(model.files)->Column_Width.front(), 20);
    form.set("txtLayers", "3");
    EXPECT_EQ(title_and_text(form.check()),
              "Tervex Desk: The size cannot be changed while arrays exist. Use the refinement.");
}

TEST(Grid_Number, does_not_take_a_monitoring_result_for_an_array) {
    TestModel model;
    model.define_mesh(5, 4, 2);
    model.files.write(".210", std::string(5000, '1'));
    model.files.write(".220", "short");
    Grid_Number form;
    form.load(model.project, model.files);
    form.set("txtLayers", "3");
    EXPECT_FALSE(form.check());
    model.files.write(".230", array_bytes(40));
    form.load(model.project, model.files);
    form.set("txtLayers", "3");
    EXPECT_TRUE(form.check());
}

TEST(Grid_Number, removes_arrays_of_another_size_with_the_first_mesh) {
    TestModel model;
    model.files.write(".xy", "garbage");
    model.files.write(".per", array_bytes(40));
    model.files.write(".tem", array_bytes(100, 3)); // the third record ends with its first layer
    model.files.write(".por", array_bytes(41));
    model.files.write(".top", "");
    model.files.write(".rch", array_bytes(20)); // one layer whatever the model has
    model.files.write(".210", std::string(5000, '1'));
    model.files.write(".poz", "zones");
    model.define_mesh(5, 4, 2);
    for (const char* kept : {".per", ".tem", ".rch", ".210", ".poz"})
        EXPECT_TRUE(model.files.has(kept)) << kept;
    for (const char* removed : {".por", ".top"})
        EXPECT_FALSE(model.files.has(removed)) << removed;
}

TEST(GridSize, changes_one_width_and_one_height) {
    TestModel model;
    model.define_mesh(2, 2, 1);
    GridSize form(2, 1);
    form.load(model.project, model.files);
    form.set("txtColumnSize", "2.5");
    form.set("txtRowSize", ".25");
    ASSERT_FALSE(form.check());
    form.save(model.project, model.files);
    EXPECT_EQ(model.files.read(".xy"), " 2  2  1 \r\n 1 \r\n 2.5 \r\n .25 \r\n 1 \r\n");
}

TEST(GridSize, refuses_what_is_not_positive_and_a_model_without_mesh) {
    TestModel model;
    GridSize form(1, 1);
    form.load(model.project, model.files);
    EXPECT_EQ(title_and_text(form.check()),
              "Message: The size of the model mesh has to be specified first.");
    model.define_mesh(1, 1, 1);
    form.load(model.project, model.files);
    form.set("txtRowSize", "0");
    EXPECT_EQ(title_and_text(form.check()), "Error: Please enter a positive value!");
    GridSize outside(2, 1);
    EXPECT_THROW(outside.load(model.project, model.files), base::FileFailure);
}

// A grid that saw no arrays in it would leave those of the old size behind.
TEST(existing_arrays, a_folder_that_cannot_be_read_is_not_one_without_arrays) {
    TestModel model;
    const core::ModelFiles files(model.folder.path() / "gone" / "m.td1", core::Access::read);
    EXPECT_EQ(support::failure_of([&] { existing_arrays(files); }, files.folder()),
              "the folder cannot be read: No such file or directory");
}

} // namespace
} // namespace grid

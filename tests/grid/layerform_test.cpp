#include "grid/layerform.h"

#include "base/failure.h"
#include "testmodel.h"

namespace grid {
namespace {

class LayerTypes : public testing::Test {
protected:
    LayerTypes() {
        model.define_mesh(1, 1, 3);
        form.load(model.project, model.files);
    }

    std::string types() const {
        std::string text;
        for (int row = 1; row <= form.rows(); ++row)
            text += form.cell(row, "Type");
        return text;
    }

    TestModel model;
    Layer_Type form;
};

constexpr const char* below = "Wrong Data Input: Unconfined layers below confined layers are not "
                              "allowed!";

TEST_F(LayerTypes, allow_no_unconfined_layer_below_a_confined_one) {
    EXPECT_EQ(title_and_text(form.set_cell(2, "Type", "1")), below);
    EXPECT_EQ(title_and_text(form.set_cell(1, "Type", "1")), "accepted");
    EXPECT_EQ(title_and_text(form.set_cell(3, "Type", "1")), below);
    EXPECT_EQ(title_and_text(form.set_cell(2, "Type", "1")), "accepted");
    EXPECT_EQ(title_and_text(form.set_cell(1, "Type", "0")), below);
    EXPECT_EQ(types(), "110");
    EXPECT_EQ(form.get("txtNFREE"), "2");
}

TEST_F(LayerTypes, are_set_together_for_all_rows) {
    form.set_all("Type", "1");
    EXPECT_EQ(types(), "111");
    form.set_all("Type", "0");
    EXPECT_EQ(types(), "000");
}

TEST_F(LayerTypes, follow_the_number_of_unconfined_layers) {
    EXPECT_EQ(notice_of(form.set("txtNFREE", "2")), "none");
    EXPECT_EQ(types(), "110");
    EXPECT_EQ(notice_of(form.set("txtNFREE", "4")),
              "Input Error: Too many unconfined layer defined!\n"
              "Value will be reset to none.");
    EXPECT_EQ(form.get("txtNFREE"), "");
    EXPECT_EQ(types(), "110");
    EXPECT_FALSE(form.set_unconfined(0));
    EXPECT_EQ(types(), "000");
}

TEST_F(LayerTypes, keep_options_and_closing_values_when_saved) {
    model.files.write(".l", "3 0 0 0 5 6 7  1 2 3 4 5 6  1 2 3 4 5 6  1 2 3 4 5 6  8 9");
    form.load(model.project, model.files);
    form.set_unconfined(1);
    form.set_cell(2, "Thickness", "2.5");
    form.set("Geometry", "0");
    form.save(model.project, model.files);
    EXPECT_EQ(model.files.read(".l"),
              " 3 \r\n 1 \r\n 0 \r\n 0 \r\n 5 \r\n 2.5 \r\n 7 \r\n 1  2  3  4  5  6 \r\n"
              " 1  2  3  4  5  6 \r\n 1  2  3  4  5  6 \r\n 8 \r\n 9 \r\n");
    EXPECT_TRUE(model.project.flags.is_defined(1, 6));
    EXPECT_TRUE(model.project.flags.layers_by_thickness());
}

TEST_F(LayerTypes, come_with_the_source_of_the_thickness) {
    form.set("Geometry", "1");
    EXPECT_FALSE(form.enabled("Thickness"));
    form.save(model.project, model.files);
    EXPECT_EQ(model.project.flags(0, 0), 0);
    form.load(model.project, model.files);
    EXPECT_EQ(form.get("Geometry"), "1");
}

TEST_F(LayerTypes, are_defaults_where_the_file_has_no_data_for_the_grid) {
    model.files.write(".l", "1 1 5");
    form.load(model.project, model.files);
    EXPECT_EQ(types(), "000");
    EXPECT_EQ(form.cell(3, "Thickness"), "1");
}

TEST_F(LayerTypes, refuse_rows_columns_and_types_that_do_not_exist) {
    EXPECT_THROW(form.set_cell(4, "Type", "0"), base::RangeFailure);
    EXPECT_THROW(form.set_cell(0, "Thickness", "1"), base::RangeFailure);
    EXPECT_THROW(form.set_cell(1, "Layer", "1"), base::RangeFailure);
    EXPECT_THROW(form.set_cell(1, "Type", "2"), base::RangeFailure);
}

} // namespace
} // namespace grid

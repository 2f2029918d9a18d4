#include "convert/inputfromresult.h"

#include "base/failure.h"
#include "input/smallmodel.h"
#include "results/smallstream.h"

#include <gtest/gtest.h>

using convert::Convert_Click;
using convert::Converted;
using input::test::SmallModel;

namespace {

constexpr const char* box = "Convert Data";

class ToInput : public testing::Test {
protected:
    Converted convert(const std::string& stream, const convert::ChosenFields& chosen) {
        return Convert_Click(folder.write("m.nlo", stream), chosen, model.project, model.files,
                             model.user);
    }
    void expect_question(base::Answer answer) {
        model.user.expect_question("Overwrite file?",
                                   "WARNING!!! - Current input will be overwritten!", answer);
    }
    float cell(int number, int column, int row, int layer) {
        return model.store().read_cell_value(number, 1, layer, row, column, -9).value;
    }

    support::TempFolder folder;
    SmallModel model{2, 3, 4};
};

const std::string result = smallstream::head("3 2 0") + "# TEMP\r\n24*7\r\n" +
                           smallstream::block("# PERM", [](double v) { return -v; }) +
                           smallstream::own_cells("# PHI") +
                           smallstream::own_cells("# CONC           3");

} // namespace

TEST_F(ToInput, fields_land_in_worksheet_rows_and_layers) {
    expect_question(base::Answer::yes);
    EXPECT_EQ(convert(result, {{"PHI", "PERM", "ICE"}, {1}}), Converted::done);
    EXPECT_EQ(cell(10, 1, 1, 1), 431); // the simulator's last J and K
    EXPECT_EQ(cell(10, 2, 3, 4), 112);
    EXPECT_EQ(cell(1401, 2, 3, 4), 112); // without the mark of a fixed head
    EXPECT_EQ(cell(1441, 2, 1, 4), 132); // behind two chemical components
    EXPECT_FALSE(model.store().exists(1434));
    EXPECT_FALSE(model.store().exists(1402));
    EXPECT_EQ(model.user.statuses().front(), "Converting Ice Content, patience ...");
    EXPECT_EQ(model.user.statuses().back(), "Converting Tracer 1, patience ...");
    EXPECT_TRUE(model.project.flags.is_defined(2, 8));
    EXPECT_FALSE(model.project.flags.is_defined(2, 0));
    EXPECT_EQ(model.project.flags(0, 1), 1);
}

TEST_F(ToInput, a_section_turns_rows_and_layers_the_other_way) {
    SmallModel section(2, 4, 3, core::vertical);
    section.user.expect_question(
        "Overwrite file?", "WARNING!!! - Current input will be overwritten!", base::Answer::yes);
    Convert_Click(folder.write("m.nlo", result), {{"PHI"}, {}}, section.project, section.files,
                  section.user);
    EXPECT_EQ(section.store().read_cell_value(10, 1, 3, 1, 2, 0).value, 432); // K = 4, J = 3
    EXPECT_EQ(section.store().read_cell_value(10, 1, 1, 4, 1, 0).value, 111);
}

TEST_F(ToInput, refusals_change_nothing) {
    model.user.expect_message(box, "Default file does not exist!\nPlease browse for a valid file.");
    EXPECT_EQ(Convert_Click(folder.path() / "none.nlo", {{"PHI"}, {}}, model.project, model.files,
                            model.user),
              Converted::refused);
    model.user.expect_message(box, "You need to choose at least one parameter to convert.");
    EXPECT_EQ(convert(result, {}), Converted::refused);
    model.user.expect_message(box, "The grid of the result file differs from the model.");
    EXPECT_EQ(convert("# I0\r\n 3 \r\n# PHI\r\n24*1\r\n", {{"PHI"}, {}}), Converted::refused);
    expect_question(base::Answer::no);
    EXPECT_EQ(convert(result, {{"PHI"}, {}}), Converted::refused);
    EXPECT_FALSE(model.store().exists(10));
}

TEST_F(ToInput, a_block_that_is_cut_off_is_a_failure) {
    expect_question(base::Answer::yes);
    EXPECT_THROW(convert("# PHI\r\n23*1\r\n", {{"PHI"}, {}}), base::FileFailure);
    EXPECT_FALSE(model.store().exists(10));
}

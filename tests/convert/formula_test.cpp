#include "convert/formula.h"

#include "results/streamreader.h"
#include "support/failureof.h"
#include "support/scripteduser.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

namespace {

// Two cells.
constexpr const char* stream_text = "# GEOLOGY\r\n1 7\r\n# PERM\r\n2 3\r\n# TEMP\r\n10 20\r\n"
                                    "# CONC           1\r\n4 5\r\n# CONC           2\r\n6 8\r\n"
                                    "# CONC          12\r\n2*2.5\r\n# CONCM           3\r\n"
                                    "1E30 120.5\r\n# LAST\r\n0 90.5\r\n";

class Formula : public testing::Test {
protected:
    std::vector<float> value(std::string_view formula) {
        results::StreamReader stream(folder_.write("m.nlo", stream_text));
        const results::Field field = convert::evaluate_formula(formula, stream, {2, 1, 1}, user_);
        return {field.at(1, 1, 1), field.at(1, 1, 2)};
    }
    std::string failure_of(std::string_view formula) {
        return support::failure_of([&] { value(formula); });
    }

    support::TempFolder folder_;
    support::ScriptedUser user_;
};

TEST_F(Formula, operands_are_combined_from_the_left) {
    struct Case {
        const char* formula;
        std::vector<float> value;
    };
    const Case cases[] = {
        {"TEMP", {10, 20}},
        {" PERM + TEMP * CONC1 ", {48, 115}},
        {"CONC1 - CONC2", {4, 5}},
        {"CONC1 / CONC2", {4, 5}},
        {"CONC1 +", {4, 5}},
        {"CONC1 + CONC12 * CONCM3", {6.5E30F, 903.75F}},
        // No numbers, no way back: the field before is taken again.
        {"TEMP * 2", {100, 400}},
        {"CONC2 + CONC1", {12, 16}},
        {"CONC2 + CONC1 + CONCM3", {18, 24}},
        {"CONC1.9 + CONC0", {8, 10}},
        {"ICE + TEMP", {0, 0}},
        // Zones are a mask only in front.
        {"GEOLOGY7", {0, 1}},
        {"GEOLOGY7 * PERM", {0, 3}},
        {"PERM * GEOLOGY7", {4, 9}},
        // Two blanks shift operands and operators.
        {"PERM  + TEMP", {2, 3}},
        {"PERM +  TEMP", {12, 23}},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(value(c.formula), c.value) << c.formula;
    }
}

TEST_F(Formula, the_bucket_table_is_a_step_function) {
    EXPECT_EQ(value("CONC1 GWB"), (std::vector<float>{4, 5}));
    EXPECT_EQ(value("CONC1 + GWB"), (std::vector<float>{0.2558F, 0.254F}));
    EXPECT_EQ(value("CONC12 - GWB"), (std::vector<float>{0.03894F, 0.03894F})); // halves to even
    EXPECT_EQ(value("LAST + GWB"), (std::vector<float>{0, 0.02922F}));
    EXPECT_EQ(failure_of("CONCM3 + GWB"), "1E+30 is outside 0 to 120 of the table GWB");
    EXPECT_EQ(failure_of("CONCM3 * CONCM3"), "the value of column 1, row 1, layer 1 is too large");
}

TEST_F(Formula, keys_are_made_from_words) {
    EXPECT_EQ(convert::operand_key("CONC7"), "# CONC           7");
    EXPECT_EQ(convert::operand_key("CONC12"), "# CONC          12");
    EXPECT_EQ(convert::operand_key("CONCM99"), "# CONCM          99");
    EXPECT_EQ(convert::operand_key("CONC100"), "");
    EXPECT_EQ(convert::operand_key("xCONC5"), "");
    EXPECT_EQ(convert::operand_key("aGEOLOGY1"), "# GEOLOGY");
    EXPECT_EQ(convert::operand_key("VX"), "# VX");
}

} // namespace

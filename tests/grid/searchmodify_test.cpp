// Search and modify: the rules, their file and a run over layers.
#include "testmodel.h"

#include "core/arraystore.h"
#include "grid/searchmodify.h"
#include "support/scripteduser.h"

#include <algorithm>
#include <limits>

namespace {

using grid::TraceOption;

constexpr int temperature = 1402, flow_boundaries = 5;

class Search : public testing::Test {
protected:
    Search() {
        model.define_mesh(3, 2, 2);
        store.create_array_file(temperature, 10);
    }

    void rule(std::size_t row, float minimum, float maximum, TraceOption option, float value = 0) {
        rules.rows[row - 1] = {true, 255, minimum, maximum, value, option};
    }
    core::LayerValues layer(int number, int layer) {
        core::LayerValues values(6);
        store.read_array(number, 1, layer, values, 0);
        return values;
    }
    grid::TraceOutcome run(grid::TraceSearch search) {
        return grid::Search_And_Modify(rules, search, store, user);
    }

    TestModel model;
    core::ArrayStore store{model.files, 3, 2, 2};
    grid::TraceRules rules;
    support::ScriptedUser user;
};

TEST_F(Search, treats_a_cell_by_the_first_active_rule_whose_limits_hold_it) {
    store.write_array(temperature, 1, 1, core::LayerValues{1, 2, 3, 4, 5, 6});
    rules.rows[0] = {false, 0, 0, 100, 0, TraceOption::replace};
    rule(2, 1, 2, TraceOption::display_only);
    rule(3, 2, 4, TraceOption::add, 10);
    rule(4, 4, 5, TraceOption::multiply, -2);
    rule(5, 6, 6, TraceOption::replace, 0.5F);
    rule(6, 6, 1, TraceOption::replace, 99); // upside down
    const auto outcome =
        run({.number = temperature, .first_layer = 1, .last_layer = 1, .shown_layer = 1});
    EXPECT_EQ(layer(temperature, 1), (core::LayerValues{1, 2, 13, 14, -10, 0.5F}));
    EXPECT_EQ(outcome.shown, (std::vector<std::uint8_t>{2, 2, 3, 3, 4, 5}));
    EXPECT_EQ(outcome.counts[1], 2U);
    EXPECT_EQ(outcome.counts[2], 2U);
    EXPECT_EQ(outcome.counts[5], 0U);
    EXPECT_EQ(layer(temperature, 2), core::LayerValues(6, 10)) << "another layer";
    ASSERT_FALSE(user.statuses().empty());
    EXPECT_EQ(user.statuses()[0], "Searching and Modifying Cell Values; Press ESC to Break");
    EXPECT_FALSE(user.is_busy());
}

TEST_F(Search, leaves_inactive_cells_of_the_same_layer_alone) {
    store.create_array_file(flow_boundaries, 1);
    store.write_array(flow_boundaries, 1, 2, core::LayerValues{0, -1, 1, 0, 1, 1});
    rule(1, 0, 100, TraceOption::replace, 7);
    EXPECT_EQ(run({.number = temperature, .first_layer = 1, .last_layer = 2}).counts[0], 10U);
    EXPECT_EQ(layer(temperature, 1), core::LayerValues(6, 7));
    EXPECT_EQ(layer(temperature, 2), (core::LayerValues{10, 7, 7, 10, 7, 7}));
    rule(1, -9, 9, TraceOption::add, 1); // the flow boundaries themselves
    run({.number = flow_boundaries, .first_layer = 2, .last_layer = 2});
    EXPECT_EQ(layer(flow_boundaries, 2), (core::LayerValues{0, 0, 2, 0, 2, 2}));
}

TEST_F(Search, writes_only_layers_that_change_and_keeps_within_singles) {
    rule(1, 10, 10, TraceOption::replace, 10);
    model.files.commit();
    run({.number = temperature, .first_layer = 1, .last_layer = 2});
    run({.number = temperature, .first_layer = 2, .last_layer = 1});
    EXPECT_FALSE(model.files.changed());
    rule(1, 10, 10, TraceOption::multiply, 3E38F);
    run({.number = temperature, .first_layer = 1, .last_layer = 1});
    EXPECT_EQ(layer(temperature, 1)[0], std::numeric_limits<float>::max());
}

TEST_F(Search, stops_behind_the_row_and_keeps_what_was_done) {
    rule(1, 10, 10, TraceOption::replace, 7);
    user.set_stop(true);
    EXPECT_EQ(run({.number = temperature, .first_layer = 1, .last_layer = 2}).counts[0], 3U);
    EXPECT_EQ(layer(temperature, 1), (core::LayerValues{7, 7, 7, 10, 10, 10}));
    EXPECT_EQ(layer(temperature, 2), core::LayerValues(6, 10));
}

TEST_F(Search, layers_of_the_model_only) {
    const auto box = [](int first, int last) {
        return title_and_text(
            grid::trace_layers_refusal({.first_layer = first, .last_layer = last}, 4));
    };
    EXPECT_EQ(box(1, 4), "accepted");
    EXPECT_EQ(box(4, 1), "accepted");
    EXPECT_EQ(box(0, 4), "Error: Valid range is 1 to 4");
    EXPECT_EQ(box(1, 5), "Error: Valid range is 1 to 4");
    EXPECT_THROW(run({.number = temperature, .first_layer = 1, .last_layer = 3}),
                 base::RangeFailure);
    EXPECT_FALSE(user.is_busy()) << "behind a failure";
}

TEST(TraceRules, have_50_lines_of_six_items) {
    grid::TraceRules rules;
    rules.rows[1] = {true, 16711680, -1.5F, 1E-12F, 0.25F, TraceOption::multiply};
    const std::string text = rules.bytes();
    EXPECT_TRUE(text.starts_with("BALDO4000_TRACEFILE\r\n0 0 0 0 0 0\r\n"
                                 "-1 16711680 -1.5 1E-12 0.25 3\r\n0 0 0 0 0 0\r\n"));
    EXPECT_EQ(std::ranges::count(text, '\n'), 51);
    EXPECT_EQ(grid::TraceRules::read(text, "m.trs").rules.bytes(), text);
}

TEST(TraceRules, read_what_is_there_and_stop_quietly) {
    const auto read =
        grid::TraceRules::read("BALDO4000_TRACEFILE\n1,255 1\n2 3 2 -1 7 1E40 5 6 9", "m.trs");
    EXPECT_EQ(title_and_text(read.refusal), "accepted");
    EXPECT_TRUE(read.rules.rows[0].active);
    EXPECT_EQ(read.rules.rows[0].maximum, 2);
    EXPECT_EQ(read.rules.rows[0].option, TraceOption::add);
    EXPECT_EQ(read.rules.rows[1].minimum, std::numeric_limits<float>::max());
    EXPECT_EQ(read.rules.rows[1].option, TraceOption::display_only) << "there is no option 9";
    EXPECT_FALSE(read.rules.rows[2].active);
    EXPECT_EQ(title_and_text(grid::TraceRules::read("[x]\n", "a.trs").refusal),
              "Load Trace File: a.trs is not a trace file!");
}

TEST(TraceRules, are_kept_under_the_models_name_in_lower_case) {
    TestModel model;
    grid::TraceRules rules;
    rules.rows[49].colour = 7;
    rules.save(model.files);
    model.files.commit();
    EXPECT_EQ(model.folder.read("m.trs"), rules.bytes());
    EXPECT_EQ(grid::TraceRules::load(model.files).rows[49].colour, 7);
}

TEST(trace_value_refusal, takes_0_and_the_range_of_a_single) {
    const std::string box =
        "Error: Out of range, valid range is -3.402823E38 to -1.401298E-45 for negative values and "
        "from 1.401298E-45 to 3.402823E38 for positive values.";
    for (const double value : {0.0, 1.0, -3.402823E38, 1.401298E-45}) {
        EXPECT_EQ(title_and_text(grid::trace_value_refusal(value)), "accepted") << value;
    }
    for (const double value : {3.402824E38, -1E300, 1.4E-45, -1E-300}) {
        EXPECT_EQ(title_and_text(grid::trace_value_refusal(value)), box) << value;
    }
}

} // namespace

#include "input/wells.h"

#include "base/binaryio.h"
#include "input/smallmodel.h"
#include "sim/transport.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

using input::test::SmallModel;

namespace {

constexpr int rate = 11, temperature = 299;

void activate_periods(SmallModel& model, std::initializer_list<int> rows) {
    for (auto& row : model.periods.rows) {
        row.active = false;
    }
    for (const int row : rows) {
        model.periods.rows[std::size_t(row - 1)].active = true;
    }
    model.save_periods();
}

std::string places(const input::WellTable& table) {
    std::string text;
    for (const input::WellEntry& well : table.master) {
        text += fmt::format("{}{}{} ", well.I, well.J, well.K);
    }
    return text;
}

std::string IWL(const std::vector<float>& rates) {
    SmallModel model(int(rates.size()), 1, 1);
    model.project.flags.set(3, 2, 2);
    model.set_array(rate, rates);
    model.create();
    return model.line("IWL");
}

std::string counts(std::initializer_list<int> first) {
    std::string text;
    for (const int count : first) {
        text += fmt::format("{} ", count);
    }
    for (std::size_t rest = first.size(); rest < 100; ++rest) {
        text += "0 ";
    }
    return text;
}

} // namespace

TEST(Wells, are_found_by_K_then_J_then_I) {
    SmallModel model(2, 2, 2);
    model.project.flags.set(3, 2, 2);
    model.set_array(rate, {1, 2, 0, 4, 0, 6, 7, 0});
    EXPECT_EQ(places(input::Get_Well_Data(model.project, model.files)), "111 221 212 122 222 ");
}

TEST(Wells, of_a_cross_section_stand_at_layer_J_and_row_K) {
    SmallModel model(2, 3, 4, core::vertical);
    model.project.flags.set(3, 2, 2);
    std::vector<float> rates(24, 0.0F);
    rates[(4 - 1) * 6 + (1 - 1) * 2 + 0] = 1; // column 1, row 1, layer 4
    rates[(1 - 1) * 6 + (3 - 1) * 2 + 1] = 1; // column 2, row 3, layer 1
    model.set_array(rate, rates);
    EXPECT_EQ(places(input::Get_Well_Data(model.project, model.files)), "211 143 ");
}

TEST(Wells, of_a_period_come_from_the_array_period_of_its_row) {
    SmallModel model(3, 1, 1);
    model.project.flags.set(3, 2, 2);
    activate_periods(model, {1, 3, 4});
    model.set_array(rate, {0, 5, 0}, 1);
    model.set_array(rate, {7, 0, 0}, 2); // not active
    model.set_array(rate, {6, 0, 8}, 3); // period 4 has no record
    model.set_array(temperature, {20, 30, 40}, 3);
    const auto table = input::Get_Well_Data(model.project, model.files);
    EXPECT_EQ(places(table), "111 211 311 ");
    ASSERT_EQ(table.periods.size(), 3U);
    ASSERT_EQ(table.periods[1].size(), 2U);
    EXPECT_EQ(table.periods[1][1].rate, 8);
    EXPECT_EQ(table.periods[1][1].temperature, 40);
    EXPECT_TRUE(table.periods[2].empty());
    model.create();
    EXPECT_EQ(model.line("NWELAR"), counts({1, 2}));
    EXPECT_EQ(model.line("WELLAR"), "0. 5. 98*0. 6. 0. 8. 9897*0. ");
}

TEST(Wells, rates_that_rest_fold_over_the_border_of_periods) {
    SmallModel model(1, 1, 2);
    model.project.flags.set(3, 2, 2);
    model.project.flags.set(9, 5, 1);
    model.set_array(1405, 1.0F);
    model.set_array(rate, {-0.5F, 0});
    model.create();
    EXPECT_EQ(model.line("WELLAR"), "-0.5 9999*0. ");
    EXPECT_EQ(model.line("TCON"), "10000*0. ");
}

TEST(IWL, counts_the_cells_between_wells) {
    EXPECT_EQ(IWL({0, 0, 3, 0}), "2*0 1 1*0");
    EXPECT_EQ(IWL({1, 1, 0}), "1 2 1*0");
    EXPECT_EQ(IWL({0, 1}), "1*0 1 "); // nothing behind a well in the last cell
    EXPECT_EQ(IWL({1}), "1 ");
}

TEST(Wells, a_model_without_wells_gets_literals) {
    SmallModel model(2, 2, 2);
    model.create();
    EXPECT_EQ(model.line("NWELAR"), "100*0");
    EXPECT_EQ(model.line("IWL"), "8*0");
    EXPECT_EQ(model.line("WELLAR"), "10000*0.");
    EXPECT_EQ(model.line("TCON"), "10000*0.0");
    EXPECT_EQ(model.line("SCON"), "10000*0.0");
}

TEST(Wells, a_well_array_without_rates_clears_the_mark_of_wells) {
    SmallModel model(2, 1, 1);
    model.project.flags.set(3, 2, 2);
    model.set_array(rate, 0.0F);
    EXPECT_FALSE(model.create().InputError);
    EXPECT_EQ(model.line("NWELAR"), counts({}));
    EXPECT_EQ(model.line("WELLAR"), "10000*0.");
    EXPECT_EQ(model.project.flags(3, 2), 0);
    EXPECT_EQ(model.project.flags(0, 1), 0);
}

TEST(Wells, more_than_a_hundred_end_the_creation) {
    SmallModel model(101, 1, 1);
    model.project.flags.set(3, 2, 2);
    model.set_array(rate, 1.0F);
    model.user.expect_message("Message", "Too many wells defined (maximum 100).");
    EXPECT_TRUE(model.create().InputError);
    EXPECT_EQ(model.block("NWELAR"), "");
    EXPECT_EQ(model.block("DELTATMP"), "no block");
}

namespace {

// Two wells, one tracer, transport on; the table of re-injected concentrations is `species` wide.
SmallModel& with_reinjection_table(SmallModel& model, int species,
                                   const std::vector<float>& values) {
    model.project.flags.set(3, 2, 2);
    model.project.flags.set(9, 6, 1);
    model.project.flags.set(9, 8, 2);
    model.set_array(40, 1.0F);
    model.set_array(rate, {1, 2});
    sim::TracerTable tracers;
    tracers.rows[2].active = true;
    tracers.save(model.files);
    base::ByteWriter table;
    table.int32(species + 1);
    for (const float value : values) {
        table.single(value);
    }
    model.files.write(".sco", table.data());
    return model;
}

} // namespace

TEST(SCON, holds_a_hundred_species_of_each_well) {
    SmallModel model(2, 1, 1);
    with_reinjection_table(model, 1, {1, 7, 2, 9}).create();
    EXPECT_EQ(model.line("SCON"), "7. 99*0. 9. 9899*0. ");
}

TEST(SCON, wells_beyond_the_table_carry_nothing) {
    SmallModel model(2, 1, 1);
    with_reinjection_table(model, 1, {1, 7}).create();
    EXPECT_EQ(model.line("SCON"), "7. 9999*0. ");
}

TEST(SCON, a_table_of_other_species_is_not_used) {
    SmallModel model(2, 1, 1);
    model.user.expect_message(
        "Tervex Desk",
        "The total number of species do not coincide with the reinjected species concentrations\n"
        "All reinjected concentrations will be set to zero in the input file!");
    EXPECT_FALSE(with_reinjection_table(model, 2, {1, 7, 8}).create().InputError);
    EXPECT_EQ(model.line("SCON"), "10000*0.0");
}

TEST(SCON, is_zero_with_reinjection_of_produced_water) {
    SmallModel model(2, 1, 1);
    model.project.flags.set(1, 1, 2);
    with_reinjection_table(model, 1, {1, 7, 2, 9}).create();
    EXPECT_EQ(model.line("SCON"), "10000*0.0");
}

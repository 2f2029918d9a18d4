#include "input/boundaries.h"

#include "input/smallmodel.h"

#include <gtest/gtest.h>

using input::base_words;
using input::FaceCounts;
using input::Process;
using input::side_words;
using input::top_words;
using input::test::SmallModel;

namespace {

std::string joined(const input::Words& words) {
    std::string text;
    for (const char* word : words) {
        text += (text.empty() ? "" : " ") + std::string(word);
    }
    return text;
}

std::string top(Process process, const FaceCounts& cells) {
    return joined(top_words(process, cells, false));
}
std::string base_of(Process process, const FaceCounts& cells) {
    return joined(base_words(process, cells));
}
std::string side(Process process, const FaceCounts& cells) {
    return joined(side_words(process, cells));
}

constexpr FaceCounts all_fixed{.A = 4}, all_closed{.O = 4}, one_given{.A = 3, .T = 1},
    fixed_and_closed{.A = 2, .O = 2}, fixed_and_zero{.A = 2, .Z = 2}, zeros{.Z = 4}, given{.T = 4};

} // namespace

TEST(BoundaryWords, flow) {
    EXPECT_EQ(top(Process::flow, all_fixed), "HEAD");
    EXPECT_EQ(top(Process::flow, fixed_and_closed), "HEAD");
    EXPECT_EQ(top(Process::flow, all_closed), "NFLO");
    EXPECT_EQ(joined(top_words(Process::flow, all_closed, true)), "FREE");
    EXPECT_EQ(base_of(Process::flow, one_given), "FLO");
    EXPECT_EQ(base_of(Process::flow, all_fixed), "HEAD");
    EXPECT_EQ(base_of(Process::flow, fixed_and_closed), "NFLO");
    EXPECT_EQ(base_of(Process::flow, zeros), ""); // no test is met
    EXPECT_EQ(side(Process::flow, one_given), "HEAD");
    EXPECT_EQ(side(Process::flow, given), "FLO");
    EXPECT_EQ(side(Process::flow, zeros), "NFLO");
    EXPECT_EQ(side(Process::flow, fixed_and_closed), "HEAD NFLO"); // two tests are met
}

TEST(BoundaryWords, heat) {
    for (const auto words : {top, base_of}) {
        EXPECT_EQ(words(Process::heat, one_given), "WSD");
        EXPECT_EQ(words(Process::heat, all_fixed), "TEMP");
        EXPECT_EQ(words(Process::heat, zeros), "NFLO");
        EXPECT_EQ(words(Process::heat, all_closed), "NFLO");
        EXPECT_EQ(words(Process::heat, fixed_and_zero), "");
    }
    EXPECT_EQ(side(Process::heat, fixed_and_closed), "TEMP");
    EXPECT_EQ(side(Process::heat, given), "NFLO");
}

TEST(BoundaryWords, transport) {
    EXPECT_EQ(top(Process::transport, {.A = 1, .T = 3}), "CONC"); // 2 does not count at the top
    EXPECT_EQ(base_of(Process::transport, {.A = 1, .T = 3}), "NFLO");
    EXPECT_EQ(side(Process::transport, fixed_and_closed), "CONC");
    EXPECT_EQ(side(Process::transport, all_closed), "NFLO");
}

namespace {

// Fixed heads in one worksheet layer, row or column of a closed grid of 3 x 3 x 3.
std::string sides_with_fixed(int orientation, const std::function<bool(int, int, int)>& fixed) {
    SmallModel model(3, 3, 3, orientation);
    std::vector<float> codes;
    for (int layer = 1; layer <= 3; ++layer) {
        for (int row = 1; row <= 3; ++row) {
            for (int column = 1; column <= 3; ++column) {
                codes.push_back(fixed(column, row, layer) ? -1.0F : 1.0F);
            }
        }
    }
    model.set_array(5, codes);
    model.create();
    return model.block("TOPF") + model.block("BASEF") + model.block("SEITEF");
}

// "top base | column 1, first J, last column, last J"
std::string words(const char* fixed_face) {
    std::string text;
    for (const char* face : {"top", "base", "I1", "J1", "I0", "J0"}) {
        text += std::string(face) == fixed_face ? "HEAD\r\n" : "NFLO\r\n";
    }
    return text;
}

} // namespace

TEST(Boundary, faces_of_a_horizontal_model) {
    const auto face = [](auto fixed) { return sides_with_fixed(core::horizontal, fixed); };
    EXPECT_EQ(face([](int, int, int layer) { return layer == 1; }), words("top"));
    EXPECT_EQ(face([](int, int, int layer) { return layer == 3; }), words("base"));
    EXPECT_EQ(face([](int column, int, int) { return column == 1; }), words("I1"));
    EXPECT_EQ(face([](int, int row, int) { return row == 3; }), words("J1"));
    EXPECT_EQ(face([](int column, int, int) { return column == 3; }), words("I0"));
    EXPECT_EQ(face([](int, int row, int) { return row == 1; }), words("J0"));
}

TEST(Boundary, faces_of_a_cross_section) {
    const auto face = [](auto fixed) { return sides_with_fixed(core::vertical, fixed); };
    EXPECT_EQ(face([](int, int row, int) { return row == 1; }), words("top"));
    EXPECT_EQ(face([](int, int row, int) { return row == 3; }), words("base"));
    EXPECT_EQ(face([](int, int, int layer) { return layer == 1; }), words("J1"));
    EXPECT_EQ(face([](int, int, int layer) { return layer == 3; }), words("J0"));
}

TEST(Boundary, a_process_that_is_off_is_closed_everywhere) {
    SmallModel model(2, 2, 2);
    model.set_array(1405, -1.0F);
    model.create();
    EXPECT_EQ(model.block("TOPT") + model.block("BASET"), "NFLO\r\nNFLO\r\n");
    EXPECT_EQ(model.block("SEITES"), "NFLO\r\nNFLO\r\nNFLO\r\nNFLO\r\n");
}

TEST(Boundary, a_value_that_means_nothing_is_reported_for_each_cell_and_ends_the_creation) {
    SmallModel model(2, 1, 1);
    model.set_array(5, {3, 4});
    for (int cell = 0; cell < 2; ++cell) {
        model.user.expect_message("Warning",
                                  "Wrong Fluid Flow Boundary is set. Please check. Otherwise "
                                  "modeling errors could occur");
    }
    EXPECT_TRUE(model.create().InputError);
    EXPECT_FALSE(model.created.failed);
    EXPECT_EQ(model.user.beeps(), 2);
    EXPECT_EQ(model.block("NFREE"), "no block");
    EXPECT_NE(model.block("SEITEF"), "no block");
}

TEST(Boundary, unconfined_layers_are_counted_from_below) {
    SmallModel model(1, 1, 3);
    auto layers = grid::LayerFile::defaults(3);
    layers.layers[0].type = 1;
    layers.layers[1].type = 1;
    layers.save(model.files);
    model.create();
    EXPECT_EQ(model.line("TOPF"), "FREE");
    EXPECT_EQ(model.line("NFREE"), " 2 ");
    EXPECT_EQ(model.line("KFREE"), "2 3 98*0");
}

TEST(Boundary, layer_types_say_nothing_in_a_cross_section) {
    SmallModel model(1, 2, 2, core::vertical);
    auto layers = grid::LayerFile::defaults(2);
    layers.layers[0].type = 1;
    layers.save(model.files);
    model.create();
    EXPECT_EQ(model.line("TOPF"), "NFLO");
    EXPECT_EQ(model.line("NFREE"), " 0 ");
    EXPECT_EQ(model.line("KFREE"), "100*0");
}

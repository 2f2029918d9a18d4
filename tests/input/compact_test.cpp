#include "input/compact.h"

#include "input/keywordstream.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

std::string items(const std::vector<float>& values) {
    const support::TempFolder folder;
    input::KeywordStream stream(folder.path() / "m.nml", "m.nml");
    input::Runs runs = input::real_runs(stream);
    runs.add(values);
    runs.finish();
    stream.finish();
    return folder.read("m.nml");
}

std::string text_items(const std::vector<std::string>& texts) {
    const support::TempFolder folder;
    input::KeywordStream stream(folder.path() / "m.nml", "m.nml");
    input::TextRuns runs(stream);
    for (const std::string& text : texts) {
        runs.add(text);
    }
    runs.finish();
    stream.finish();
    return folder.read("m.nml");
}

} // namespace

TEST(Runs, equal_neighbours_become_one_item) {
    EXPECT_EQ(items({5}), "5. ");
    EXPECT_EQ(items({0, 0, 0, 0, 0}), "5*0. ");
    EXPECT_EQ(items({1, 1, 2, 1}), "2*1. 2. 1. ");
    EXPECT_EQ(items({}), "");
}

TEST(Runs, values_are_compared_and_not_their_texts) {
    const float one = 1;
    const float next = std::nextafter(one, 2.0F); // prints as 1 too
    EXPECT_EQ(items({one, next, next}), "1. 2*1. ");
    EXPECT_EQ(items({0.0F, -0.0F}), "2*0. ");
}

TEST(Runs, the_length_of_a_run_is_exact_at_any_place) {
    for (std::size_t length = 1; length < 300; ++length) {
        std::vector<float> values(length + 3, 2.0F);
        values.front() = 1;
        values[length + 1] = 3;
        std::vector<std::int64_t> lengths;
        input::Runs runs([&](float, std::int64_t count) { lengths.push_back(count); });
        runs.add(values);
        runs.finish();
        const auto expected = static_cast<std::int64_t>(length);
        EXPECT_EQ(lengths, (std::vector<std::int64_t>{1, expected, 1, 1}));
    }
}

TEST(Runs, an_empty_run_does_not_part_its_neighbours) {
    std::vector<std::pair<float, std::int64_t>> seen;
    input::Runs runs([&](float value, std::int64_t count) { seen.emplace_back(value, count); });
    runs.add(3, 2);
    runs.add(9, 0);
    runs.add(3);
    runs.finish();
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_EQ(seen.front(), std::pair(3.0F, std::int64_t{3}));
}

TEST(Runs, items_expand_to_the_walk_they_came_from) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> value(0, 2);
    for (int round = 0; round < 100; ++round) {
        std::vector<float> walk(std::size_t(1 + round));
        for (float& cell : walk) {
            cell = float(value(random));
        }
        std::vector<float> back;
        float before = -1;
        input::Runs runs([&](float item, std::int64_t count) {
            EXPECT_NE(item, before) << "a run that is not maximal";
            before = item;
            back.insert(back.end(), std::size_t(count), item);
        });
        const auto half = walk.begin() + round / 2; // a run may cross the pieces
        runs.add(std::span(walk.begin(), half));
        runs.add(std::span(half, walk.end()));
        runs.finish();
        EXPECT_EQ(back, walk);
    }
}

TEST(TextRuns, texts_fold_when_they_are_equal_without_blanks) {
    EXPECT_EQ(text_items({"1. ", "1.", " 1."}), "3*1. ");
    EXPECT_EQ(text_items({"1.", "1.0"}), "1. 1.0 ");
}

TEST(completed, the_point_goes_behind_a_text_that_has_none) {
    EXPECT_EQ(input::completed("5", "."), "5.");
    EXPECT_EQ(input::completed("0.5", "."), "0.5");
    EXPECT_EQ(input::completed("1E+15", ".0"), "1E+15.0");
}

#include "app/recentfiles.h"

#include "support/tempfolder.h"

#include <gtest/gtest.h>

namespace {

class Recent : public ::testing::Test {
protected:
    support::TempFolder folder_;

    std::string model(const std::string& name) const { return folder_.write(name, "").string(); }

    // Numbers of the models "1.td1" ... as listed; 0 for an item that is not shown.
    static std::vector<int> order(const app::RecentFiles& recent) {
        std::vector<int> numbers;
        for (int number = 1; number <= app::RecentFiles::count; ++number) {
            const std::string& path = recent.path(number);
            numbers.push_back(path.empty() ? 0 : path[path.size() - 5] - '0');
        }
        return numbers;
    }

    app::RecentFiles filled() const {
        app::RecentFiles recent(folder_.path());
        for (const char* name : {"4.td1", "3.td1", "2.td1", "1.td1"}) {
            recent.add(model(name));
        }
        recent.save();
        return recent;
    }
};

using Order = std::vector<int>;

TEST_F(Recent, newest_comes_first_and_the_fifth_falls_off) {
    auto recent = filled();
    EXPECT_EQ(order(recent), (Order{1, 2, 3, 4}));
    recent.add(model("5.td1"));
    EXPECT_EQ(order(recent), (Order{5, 1, 2, 3}));
}

TEST_F(Recent, moving_to_the_top_shifts_only_the_items_above) {
    auto recent = filled();
    recent.add(model("3.td1"));
    EXPECT_EQ(order(recent), (Order{3, 1, 2, 4}));
}

TEST_F(Recent, a_model_that_is_gone_leaves_a_gap_until_newer_ones_push_it_out) {
    filled();
    std::filesystem::remove(folder_.path() / "2.td1");
    app::RecentFiles recent(folder_.path());
    EXPECT_EQ(order(recent), (Order{1, 0, 3, 4}));
    recent.save();
    EXPECT_NE(folder_.read("BD5.0").find("File#2=\r\n"), std::string::npos);
    recent.add(model("5.td1"));
    EXPECT_EQ(order(recent), (Order{5, 1, 0, 3}));
}

TEST_F(Recent, removing_an_item_moves_the_ones_below_up) {
    auto recent = filled();
    recent.remove(2);
    EXPECT_EQ(order(recent), (Order{1, 3, 4, 0}));
}

TEST_F(Recent, keeps_foreign_keys_and_names_in_any_script) {
    folder_.write("BD5.0", "[Startup]\r\nTop=15\r\n[Recent Used Files]\r\nFile#1=gr\xFCn\r\n");
    const std::string greek = model("λίμνη.td1");
    app::RecentFiles recent(folder_.path());
    recent.add(greek);
    recent.save();
    EXPECT_EQ(app::RecentFiles(folder_.path()).path(1), greek);
    EXPECT_NE(folder_.read("BD5.0").find("Top=15"), std::string::npos);
}

TEST(RecentCaption, shortens_from_40_characters_on) {
    const std::string whole = "/" + std::string(38, 'a');
    EXPECT_EQ(app::recent_caption(1, whole), "&1 " + whole);
    EXPECT_EQ(app::recent_caption(4, "123456789012345678xx3456789012345678901x"),
              "&4 123456789012345678...456789012345678901x");
}

TEST(RecentCaption, counts_characters_not_bytes) {
    std::string umlauts;
    for (int i = 0; i < 39; ++i) {
        umlauts += "ü";
    }
    EXPECT_EQ(app::recent_caption(2, umlauts), "&2 " + umlauts);
    EXPECT_EQ(app::recent_caption(2, umlauts + "x").size(), 3U + 36 + 3 + 2 * 18 + 1);
}

TEST(ProgramSettings, give_one_blank_for_a_missing_key) {
    const support::TempFolder folder;
    app::ProgramSettings settings(folder.path());
    EXPECT_EQ(settings.GetModelPath(), " ");
    settings.SaveModelPath("/models/süd");
    settings.SaveHelpFormat("CHM");
    EXPECT_EQ(folder.read("td.ini"), "[PATH]\r\nMODELPATH=/models/s\xFC"
                                     "d\r\n[HELP]\r\nFORMAT=CHM\r\n");
    EXPECT_EQ(app::ProgramSettings(folder.path()).GetModelPath(), "/models/süd");
}

TEST(ProgramSettings, read_at_most_300_characters) {
    const support::TempFolder folder;
    folder.write("TD.INI", "[path]\r\nmodelpath=" + std::string(400, 'x') + "\r\n");
    EXPECT_EQ(app::ProgramSettings(folder.path()).GetModelPath(), std::string(300, 'x'));
}

} // namespace

#include "app/openmodel.h"
#include "app/predecessor.h"
#include "core/arraystore.h"
#include "grid/griddefinition.h"
#include "sim/rockfile.h"
#include "support/scripteduser.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

namespace {

constexpr const char* title = "Convert BD5 data for TD";
constexpr const char* question =
    "You are loading a BD5 model.\n\nThe vertical hydraulic conductivity could be converted to a "
    "permeability for a temperature of 10°C and from the resulting distribution a Property Zones "
    "of "
    "the model could be derived with a maximum of 15 Zones.\n\nDo you want to convert your data?";

class Predecessor : public ::testing::Test {
protected:
    support::TempFolder folder_;
    support::ScriptedUser user_;
    std::filesystem::path file_;

    // A model of 4 columns, 2 rows and 2 layers.
    Predecessor() {
        file_ = folder_.write("old.BD5", "[DIMENSION]\r\nNX=4\r\nNY=2\r\nNZ=2\r\n");
        folder_.write("old.l", grid::LayerFile::defaults(2).bytes());
    }

    void write_conductivity(const std::vector<std::vector<float>>& layers) {
        auto loaded = app::load_model(file_, core::Access::write);
        auto& workspace = *loaded.workspace;
        core::ArrayStore store(workspace.files, workspace.project);
        for (std::size_t i = 0; i < layers.size(); ++i) {
            store.write_array(9, 1, static_cast<int>(i) + 1, layers[i]);
        }
        workspace.files.commit();
    }

    static core::LayerValues read(app::Workspace& workspace, int number, int layer) {
        const core::ArrayStore store(workspace.files, workspace.project);
        core::LayerValues values(store.cells_of_layer());
        store.read_array(number, 1, layer, values, 0);
        return values;
    }
};

TEST_F(Predecessor, is_left_as_it_is_after_No) {
    write_conductivity({core::LayerValues(8, 1E-5F), core::LayerValues(8, 1E-5F)});
    user_.expect_question(title, question, base::Answer::no);
    const auto opened = app::open_model(file_, user_);
    ASSERT_TRUE(opened.workspace);
    EXPECT_EQ(user_.beeps(), 1);
    EXPECT_FALSE(opened.workspace->files.has(".per"));
    EXPECT_TRUE(opened.workspace->files.has(".upl"));
}

TEST_F(Predecessor, an_unanswered_question_stops_the_opening) {
    const auto before = folder_.names();
    user_.expect_question(title, question, base::Answer::cancel);
    const auto opened = app::open_model(file_, user_);
    EXPECT_FALSE(opened.workspace || opened.refusal);
    EXPECT_EQ(folder_.names(), before);
}

TEST_F(Predecessor, conductivity_becomes_permeability_and_zones_in_order_of_occurrence) {
    write_conductivity({{1E-5F, 1E-5F, 1E-4F, 1E-5F, 0, 0, 0, 0}, core::LayerValues(8, 1E-3F)});
    user_.expect_question(title, question, base::Answer::yes);
    auto opened = app::open_model(file_, user_);
    ASSERT_TRUE(opened.workspace);
    auto& workspace = *opened.workspace;
    const auto k = read(workspace, 1401, 1);
    EXPECT_NEAR(k[0], 1.333428E-12, 1E-17);
    EXPECT_EQ(k[4], 0);
    EXPECT_EQ(read(workspace, 1403, 1), (core::LayerValues{1, 1, 2, 1, 3, 3, 3, 3}));
    EXPECT_EQ(read(workspace, 1403, 2), core::LayerValues(8, 4));

    const auto rock = sim::RockFile::load(workspace.files);
    EXPECT_EQ(rock.field(sim::rock::Perm, 1), "1.333428E-12");
    EXPECT_EQ(rock.field(sim::rock::Perm, 3), "0");
    EXPECT_EQ(rock.field(sim::rock::Perm, 5), "1E-12");
    const auto stored = core::Project::read(folder_.read("old.BD5"));
    EXPECT_TRUE(stored.flags.is_defined(2, 1) && stored.flags.is_defined(2, 11));
    EXPECT_EQ(stored.flags(1, 0), 0) << "the porosity of the zones is still open";
}

TEST_F(Predecessor, more_than_15_values_give_no_zones) {
    std::vector<core::LayerValues> layers(2, core::LayerValues(8));
    for (std::size_t i = 0; i < 16; ++i) {
        layers[i / 8][i % 8] = static_cast<float>(i + 1) * 1E-6F;
    }
    write_conductivity(layers);
    user_.expect_question(title, question, base::Answer::yes);
    const auto opened = app::open_model(file_, user_);
    EXPECT_TRUE(opened.workspace->files.has(".per"));
    EXPECT_FALSE(opened.workspace->files.has(".mds") || opened.workspace->files.has(".mco"));
    EXPECT_FALSE(opened.workspace->project.flags.is_defined(2, 11));
}

TEST_F(Predecessor, is_asked_only_while_neither_permeability_nor_zones_exist) {
    folder_.write("old.PER", "");
    EXPECT_TRUE(app::open_model(file_, user_).workspace);
}

TEST_F(Predecessor, a_conductivity_file_shorter_than_the_grid_is_a_failure) {
    write_conductivity({core::LayerValues(8, 1)});
    folder_.write("old.BD5", "[DIMENSION]\r\nNX=32767\r\nNY=32767\r\nNZ=2\r\n");
    user_.expect_question(title, question, base::Answer::yes);
    EXPECT_THROW(app::open_model(file_, user_), base::FileFailure);
    EXPECT_FALSE(std::filesystem::exists(folder_.path() / "old.per"));
}

TEST_F(Predecessor, without_conductivity_there_is_nothing_to_convert) {
    user_.expect_question(title, question, base::Answer::yes);
    user_.expect_message("Tervex Desk",
                         "The model has no vertical hydraulic conductivity to convert.");
    EXPECT_TRUE(app::open_model(file_, user_).workspace);
}

} // namespace

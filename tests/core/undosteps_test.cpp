#include "core/undosteps.h"

#include "core/modelfiles.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;
using core::Direction;

class UndoStepsTest : public testing::Test {
protected:
    void make_steps(core::UndoLimits limits) {
        steps = std::make_shared<core::UndoSteps>(core::hidden_folder_of(project), limits);
        files.keep_steps(steps);
    }
    void write(std::string_view extension, std::string_view bytes) {
        steps->begin(std::string(bytes));
        files.write(extension, bytes);
        files.commit();
        steps->end();
    }
    int undone_steps() {
        int count = 0;
        for (; steps->name(Direction::undo); ++count) {
            steps->exchange(Direction::undo, files);
        }
        return count;
    }

    support::TempFolder folder;
    fs::path project = folder.path() / "m.td1";
    core::ModelFiles files{project, core::Access::write};
    std::shared_ptr<core::UndoSteps> steps;
};

TEST_F(UndoStepsTest, beyond_the_number_of_steps_the_oldest_fall_off) {
    make_steps({3, 1000});
    for (const char* bytes : {"1", "2", "3", "4", "5"}) {
        write(".a", bytes);
    }
    EXPECT_EQ(undone_steps(), 3);
    EXPECT_EQ(folder.read("m.a"), "2");
}

TEST_F(UndoStepsTest, beyond_the_bytes_the_oldest_fall_off_and_a_step_of_its_own_ends_the_history) {
    make_steps({100, 15});
    write(".a", "four");
    write(".a", "five5");
    write(".a", "seven77");
    write(".a", "nine");
    EXPECT_EQ(undone_steps(), 2); // of 7 and 5 bytes; beside them the 4 bytes are too many
    EXPECT_EQ(folder.read("m.a"), "five5");
    write(".b", std::string(16, 'b'));
    EXPECT_EQ(steps->name(Direction::undo), std::string(16, 'b'));
    write(".b", "short");
    EXPECT_EQ(steps->name(Direction::undo), std::nullopt);
    EXPECT_EQ(folder.read("m.b"), "short");
}

TEST_F(UndoStepsTest, a_file_written_in_place_is_kept_by_its_copy) {
    folder.write("m.a", "old");
    folder.write("m.copy", "old");
    make_steps({});
    steps->begin("patched");
    files.write_in_place(folder.path() / "m.a", folder.path() / "m.copy");
    folder.write("m.a", "new");
    files.remove(".copy");
    files.commit();
    steps->end();
    steps->exchange(Direction::undo, files);
    EXPECT_EQ(folder.read("m.a"), "old");
    EXPECT_EQ(folder.read("m.copy"), "old");
    steps->exchange(Direction::redo, files);
    EXPECT_EQ(folder.read("m.a"), "new");
    EXPECT_FALSE(fs::exists(folder.path() / "m.copy"));
}

} // namespace

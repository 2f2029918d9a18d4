// Undo and redo of whole commands: every step is the folder of that time, byte for byte, with modes
// and links.

#include "app/undo.h"

#include "app/newmodel.h"
#include "app/openmodel.h"
#include "base/failure.h"
#include "core/arraystore.h"
#include "core/extensions.h"
#include "core/notes.h"
#include "grid/gridform.h"
#include "grid/refinement.h"
#include "grid/worksheet.h"
#include "support/failureof.h"
#include "support/scripteduser.h"
#include "support/tempfolder.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <random>

namespace {

namespace fs = std::filesystem;
using app::Workspace;
using core::Access;

// Names below the folder, each with its kind, mode and bytes.
using Content = std::map<std::string, std::string>;

class UndoTest : public testing::Test {
protected:
    UndoTest() {
        fs::create_directory(folder.path() / "model");
        Workspace made = std::move(*app::new_model(project(), user).workspace);
        grid::Grid_Number form;
        form.load(made.project, made.files);
        for (const auto& [name, text] :
             {std::pair("txtLayers", "2"), std::pair("txtColumns", "4"), std::pair("txtRows", "3"),
              std::pair("txtColumnSize", "1"), std::pair("txtRowSize", "1")}) {
            form.set(name, text);
        }
        form.save(made.project, made.files);
        made.save();
    }

    fs::path project() const { return folder.path() / "model" / "m.td1"; }
    fs::path hidden() const { return folder.path() / "model" / ".m.tervex"; }

    Content content() const {
        Content found;
        for (auto entry = fs::recursive_directory_iterator(folder.path());
             entry != fs::recursive_directory_iterator(); ++entry) {
            if (entry->path() == hidden()) {
                entry.disable_recursion_pending();
                continue;
            }
            const std::string name = entry->path().lexically_relative(folder.path()).string();
            found[name] = fmt::format("{:o} ", unsigned(entry->symlink_status().permissions()));
            if (entry->is_symlink()) {
                found[name] += "-> " + fs::read_symlink(entry->path()).string();
            } else if (entry->is_regular_file()) {
                found[name] += folder.read(name);
            }
        }
        return found;
    }

    // A command of the program that holds the history.
    void run(const std::string& name, const std::function<void(Workspace&)>& work) {
        const auto step = history->step(name);
        Workspace workspace = std::move(*app::load_model(project(), Access::write).workspace);
        history->attach(workspace.files);
        work(workspace);
    }
    void note(const std::string& value) {
        run("Note " + value, [&](Workspace& workspace) {
            core::Save_IZV_Data(workspace.files, "Notes", "Value", value);
            workspace.files.commit();
        });
    }
    void write_layer(int number, float value) {
        run(fmt::format("Layer {} {}", number, value), [&](Workspace& workspace) {
            core::ArrayStore store(workspace.files, workspace.project);
            store.write_array(number, 1, 1, core::LayerValues(store.cells_of_layer(), value));
            workspace.save();
        });
    }
    // A file of the model from now on lies elsewhere, behind a link.
    void put_behind_link(const std::string& name) {
        fs::create_directories(folder.path() / "elsewhere");
        const fs::path file = folder.path() / "model" / name;
        fs::copy_file(file, folder.path() / "elsewhere" / name);
        fs::remove(file);
        fs::create_symlink("../elsewhere/" + name, file);
    }

    std::string undone() { return told(history->undo()); }
    std::string redone() { return told(history->redo()); }
    // Names of the files in which the folder differs.
    std::string difference(const Content& wanted) const {
        const Content now = content();
        std::string names;
        for (const auto& [name, what] : wanted) {
            names += now.contains(name) && now.at(name) == what ? "" : name + " ";
        }
        for (const auto& [name, what] : now) {
            names += wanted.contains(name) ? "" : "+" + name + " ";
        }
        return names;
    }
    static std::string told(const std::optional<base::Refusal>& refusal) {
        return refusal ? refusal->title + ": " + refusal->text : "";
    }

    support::TempFolder folder;
    support::ScriptedUser user;
    std::optional<app::UndoHistory> history{project()};
};

// Any command, of those that leave a model on which all others work.
class AnyCommand {
public:
    AnyCommand(unsigned seed, support::ScriptedUser& user) : random_(seed), user_(user) {}

    int any(int last) { return static_cast<int>(random_() % unsigned(last)) + 1; }

    void operator()(Workspace& workspace) {
        core::ArrayStore store(workspace.files, workspace.project);
        const int number = std::array{1402, 51, 5, 1403}[std::size_t(any(4) - 1)];
        switch (any(9)) {
        case 1:
            core::Save_IZV_Data(workspace.files, "Notes", "Value", fmt::to_string(any(3)));
            return workspace.files.commit();
        case 2:
            store.write_array(number, any(3), any(store.layers(number)), values(store));
            return workspace.files.commit();
        case 3:
            store.copy_period(1402, any(3), any(3), 20);
            return workspace.save();
        case 4:
            workspace.files.remove(number == 1402 ? ".izv" : core::file_ext(number));
            return workspace.save();
        case 5:
            return refine(workspace);
        case 6:
            return fail_and_go_on(workspace);
        case 7:
            grid::end_cut_off_session(workspace.project, workspace.files,
                                      any(2) == 1 ? grid::Recovery::recover
                                                  : grid::Recovery::restore);
            return workspace.files.commit();
        default:
            return session(workspace, number);
        }
    }

private:
    core::LayerValues values(const core::ArrayStore& store) {
        return core::LayerValues(store.cells_of_layer(), static_cast<float>(any(5)));
    }

    void refine(Workspace& workspace) {
        core::Division division =
            grid::no_division(*grid::GridFile::load(workspace.files), workspace.project.NZ());
        division.columns[0] = division.columns.size() < 9 ? 2 : 1;
        if (grid::Do_Grid_Refinement(division, workspace.project, workspace.files, user_, false)) {
            workspace.files.commit();
        }
    }

    // A commit that fails, as for the want of a place for a control file, and a second try.
    void fail_and_go_on(Workspace& workspace) {
        core::Save_IZV_Data(workspace.files, "Notes", "Failed", "twice");
        EXPECT_THROW(workspace.files.commit([] { throw base::FileFailure("is full", "disk"); }),
                     base::FileFailure);
        if (any(2) == 1) {
            workspace.save();
        }
    }

    // Left with Yes, with No, or cut off.
    void session(Workspace& workspace, int number) {
        const auto sheet = grid::Worksheet::Edit_data_for(
            *grid::find_request(number, 0), workspace.project, workspace.files, user_, any(3));
        for (int i = any(6); i > 0; --i) {
            sheet->show_layer(any(sheet->layers()));
            sheet->show_period(any(3));
            const std::vector<float> value{static_cast<float>(any(5))};
            any(2) == 1 ? static_cast<void>(sheet->set_cell(any(4), any(3), value))
                        : static_cast<void>(sheet->reset(value));
        }
        const int end = any(5);
        sheet->leave(end == 1  ? base::Answer::cancel
                     : end < 4 ? base::Answer::yes
                               : base::Answer::no);
    }

    std::mt19937 random_;
    support::ScriptedUser& user_;
};

// The steps of a random run as the test knows them: what the folder was, and after which command.
class UndoRandomTest : public UndoTest, public testing::WithParamInterface<unsigned> {
protected:
    void command(AnyCommand& any, int number) {
        const std::string name = fmt::format("Command {}", number);
        run(name, [&](Workspace& workspace) { any(workspace); });
        if (Content now = content(); now != states[done].second) {
            states.resize(++done);
            states.emplace_back(name, std::move(now));
        }
    }
    void go_over(bool back) {
        done += back ? std::size_t(-1) : 1;
        ASSERT_EQ(back ? undone() : redone(), "");
        EXPECT_EQ(difference(states[done].second), "") << states[done].first;
    }
    void expect_names() const {
        const auto name = [&](std::size_t state) { return std::optional(states[state].first); };
        EXPECT_EQ(history->undo_name(), done > 0 ? name(done) : std::nullopt);
        EXPECT_EQ(history->redo_name(), done + 1 < states.size() ? name(done + 1) : std::nullopt);
    }

    std::vector<std::pair<std::string, Content>> states;
    std::size_t done = 0;
};

TEST_P(UndoRandomTest, a_long_run_is_taken_back_and_done_again_byte_for_byte) {
    AnyCommand any(GetParam(), user);
    write_layer(1402, 7);
    write_layer(5, 1);
    for (const auto& file : fs::directory_iterator(project().parent_path())) {
        fs::permissions(file, fs::perms(0640));
    }
    if (GetParam() % 2 == 0) {
        put_behind_link("m.td1");
        put_behind_link("m.ibd");
        put_behind_link("m.tem");
    }
    history.emplace(project());
    states.emplace_back("", content());
    for (int i = 1; i <= 30; ++i) {
        command(any, i);
        for (int back = any.any(12) - 9; back > 0 && done > 0; --back) {
            go_over(true);
        }
        for (int forth = any.any(5) - 3; forth > 0 && done + 1 < states.size(); --forth) {
            go_over(false);
        }
        expect_names();
        ASSERT_FALSE(HasFailure()) << "command " << i;
    }
    EXPECT_GT(states.size(), 5U);
    while (done > 0 && !HasFailure()) {
        go_over(true);
    }
    while (done + 1 < states.size() && !HasFailure()) {
        go_over(false);
    }
    expect_names();
    history.reset();
    EXPECT_FALSE(fs::exists(hidden()));
}

INSTANTIATE_TEST_SUITE_P(Seeds, UndoRandomTest, testing::Range(1U, 3U));

TEST_F(UndoTest, a_session_is_one_step_also_when_it_ends_with_no) {
    const Content before = content();
    run("Initial Temperature", [&](Workspace& workspace) {
        const auto sheet = grid::Worksheet::Edit_data_for(*grid::find_request(1402, 0),
                                                          workspace.project, workspace.files, user);
        static_cast<void>(history->step("Reset Array"));
        sheet->leave(base::Answer::no);
    });
    EXPECT_TRUE(fs::exists(folder.path() / "model" / "m.tem")); // the opening has made it
    EXPECT_EQ(history->undo_name(), "Initial Temperature");
    EXPECT_EQ(undone(), "");
    EXPECT_EQ(difference(before), "");
    EXPECT_EQ(undone(), "Undo: There is nothing to be undone.");
}

TEST_F(UndoTest, a_command_that_changes_no_byte_is_no_step_and_a_new_one_drops_what_can_be_redone) {
    note("1");
    note("2");
    ASSERT_EQ(undone(), "");
    note("1");
    EXPECT_EQ(history->undo_name(), "Note 1");
    EXPECT_EQ(history->redo_name(), "Note 2");
    note("3");
    EXPECT_EQ(history->undo_name(), "Note 3");
    EXPECT_EQ(redone(), "Redo: There is nothing to be redone.");
    const auto step = history->step("open");
    EXPECT_EQ(history->undo_name(), std::nullopt);
}

TEST_F(UndoTest, a_file_that_another_program_changed_is_left_alone) {
    note("1");
    write_layer(1402, 3);
    note("2");
    ASSERT_EQ(undone(), "");
    {
        Workspace other = std::move(*app::load_model(project(), Access::write).workspace);
        core::Save_IZV_Data(other.files, "Notes", "Value", "theirs");
        other.files.commit();
    }
    const Content theirs = content();
    EXPECT_EQ(redone(), "Redo: \"Note 2\" cannot be redone: m.izv was changed by another program.");
    EXPECT_EQ(difference(theirs), "");
    note("4");
    EXPECT_EQ(undone(), "");
    EXPECT_EQ(difference(theirs), "");
    EXPECT_EQ(undone(), ""); // of the layer, which nobody else has touched
    EXPECT_EQ(undone(), "Undo: \"Note 1\" cannot be undone: m.izv was changed by another program.");
}

TEST_F(UndoTest, an_undo_that_fails_changes_nothing_and_a_lost_history_fails_no_command) {
    note("1");
    write_layer(1402, 3);
    const Content after = content();
    for (const auto& kept : fs::recursive_directory_iterator(hidden())) {
        if (kept.is_regular_file()) {
            fs::remove(kept);
        }
    }
    EXPECT_NE(support::failure_of([&] { undone(); }), "");
    EXPECT_EQ(difference(after), "");
    fs::remove_all(hidden());
    note("2");
    EXPECT_EQ(core::Get_IZV_Data(core::ModelFiles(project(), Access::read), "Notes", "Value"), "2");
    EXPECT_EQ(history->undo_name(), std::nullopt);
    note("3");
    EXPECT_EQ(history->undo_name(), "Note 3");
    EXPECT_EQ(undone(), "");
}

TEST_F(UndoTest, opening_drops_what_a_crash_left_and_leaves_living_histories_alone) {
    note("1");
    note("2");
    folder.write("model/.m.tervex/undo.1.1/1", "left behind");
    app::UndoHistory second(project());
    EXPECT_TRUE(app::open_model(project(), user).workspace);
    EXPECT_FALSE(fs::exists(hidden() / "undo.1.1"));
    EXPECT_EQ(undone(), "");
    {
        const auto step = second.step("of another program");
        core::ModelFiles files(project(), Access::write);
        second.attach(files);
        files.write(".pol", "text");
        files.commit();
        EXPECT_THROW(history->attach(files = core::ModelFiles(folder.path() / "model" / "x.td1",
                                                              Access::write)),
                     base::RangeFailure);
    }
    EXPECT_EQ(undone(), "");
    history.reset();
    EXPECT_TRUE(fs::exists(hidden()));
    EXPECT_FALSE(second.undo());
}

TEST_F(UndoTest, a_removed_link_comes_back_as_a_link) {
    write_layer(1402, 3);
    put_behind_link("m.tem");
    const Content before = content();
    run("Remove", [](Workspace& workspace) {
        workspace.files.remove(".tem");
        workspace.files.commit();
        workspace.files.write(".tem", "a file in the place of the link");
        workspace.files.commit();
    });
    const Content after = content();
    EXPECT_EQ(undone(), "");
    EXPECT_EQ(difference(before), "");
    EXPECT_EQ(redone(), "");
    EXPECT_EQ(difference(after), "");
}

} // namespace

// Sessions of the worksheet: whatever is done in one, No gives back the folder of its opening, and
// undo the step before.
#include "grid/worksheet.h"
#include "testmodel.h"

#include "core/itemcells.h"
#include "grid/refinement.h"
#include "grid/worksheetdisplay.h"
#include "grid/worksheetfiles.h"
#include "support/scripteduser.h"

#include <algorithm>
#include <map>
#include <random>

namespace {

using grid::Worksheet;
using Content = std::map<std::string, std::string>;

class WorksheetTest : public testing::Test, protected TestModel {
protected:
    WorksheetTest() {
        define_mesh(5, 4, 3, "10");
        project.Write_Project_File(files);
        files.commit();
    }

    std::unique_ptr<Worksheet> open(int number, int period = 1) {
        return Worksheet::Edit_data_for(*grid::find_request(number, 0), project, files, user,
                                        period);
    }

    Content content() const {
        Content found;
        for (const std::string& name : folder.names()) {
            if (!name.starts_with('.')) {
                found[name] = folder.read(name);
            }
        }
        return found;
    }

    float stored(int number, int period, int layer, int column, int row) {
        return core::ArrayStore(files, project)
            .read_cell_value(number, period, layer, row, column, -7)
            .value;
    }

    support::ScriptedUser user;
};

core::Zone triangle(float x, float value) {
    core::Zone zone;
    zone.nodes = 3;
    zone.value = value;
    zone.x = {0, x, x + 5, x};
    zone.y = {0, 1, 1, 9};
    core::Close_Zone(zone);
    return zone;
}

// One random step of a session, of those that a user has.
void do_step(Worksheet& sheet, std::mt19937& random) {
    const auto any = [&](int last) { return static_cast<int>(random() % unsigned(last)) + 1; };
    const float value = static_cast<float>(any(1000));
    const std::vector<float> values(static_cast<std::size_t>(any(sheet.Array_Count())), value);
    switch (any(9)) {
    case 1:
        EXPECT_TRUE(sheet.show_layer(any(sheet.layers())));
        break;
    case 2:
        EXPECT_TRUE(sheet.show_period(any(4)));
        break;
    case 3:
        EXPECT_FALSE(sheet.reset(values));
        break;
    case 4: {
        core::LayerValues layer = sheet.array(1);
        std::ranges::generate(layer, [&] { return static_cast<float>(any(5)); });
        sheet.set_array(1, layer);
        break;
    }
    case 5:
        sheet.set_zones({triangle(value, value), triangle(0, 1)});
        break;
    case 6:
        sheet.copy_period(any(4), any(4));
        break;
    case 7:
        sheet.on_files(1, 1, sheet.layers(), [&](core::ArrayStore& store) {
            const core::LayerValues layer(store.cells_of_layer(), value);
            store.write_array(sheet.request().number(1), sheet.Current_Period(), any(3), layer);
        });
        break;
    case 8:
        sheet.Layer_Copy = !sheet.Layer_Copy;
        break;
    default:
        EXPECT_FALSE(sheet.set_cell(any(sheet.NX()), any(sheet.NY()), values));
    }
}

// Everything that a session holds, read layer by layer.
std::vector<std::string> session_state(Worksheet& sheet) {
    sheet.Layer_Copy = false;
    std::vector<std::string> state;
    const int period = sheet.Current_Period(), layer = sheet.Current_Layer();
    for (int p = 1; p <= 4; ++p) {
        sheet.show_period(p);
        for (int l = 1; l <= sheet.layers(); ++l) {
            sheet.show_layer(l);
            std::string text;
            for (int k = 1; k <= sheet.Array_Count(); ++k) {
                text += fmt::format("{} ", fmt::join(sheet.array(k), " "));
            }
            for (const core::Zone& zone : sheet.zones()) {
                text += fmt::format("| {} {} {}", zone.value, zone.x[1], zone.nodes);
            }
            state.push_back(text);
        }
    }
    sheet.show_period(period);
    sheet.show_layer(layer);
    return state;
}

TEST_F(WorksheetTest, leaving_a_random_session_with_no_gives_back_the_folder_byte_for_byte) {
    std::mt19937 random(7);
    for (const int number : {1402, 8, 1408}) {
        open(number, 2)->leave(base::Answer::no); // completes the arrays
        const Content before = content();
        for (int session = 0; session < 4; ++session) {
            const auto sheet = open(number, 2);
            for (int step = 0; step < 25; ++step) {
                do_step(*sheet, random);
            }
            sheet->leave(base::Answer::cancel);
            EXPECT_FALSE(sheet->ended());
            sheet->leave(base::Answer::no);
            EXPECT_EQ(content(), before) << number;
        }
    }
}

TEST_F(WorksheetTest, undo_and_redo_go_through_every_step_of_a_random_session) {
    std::mt19937 random(11);
    const auto sheet = open(8);
    std::vector<std::vector<std::string>> states{session_state(*sheet)};
    for (int step = 0; step < 30; ++step) {
        {
            const Worksheet::Step one(*sheet);
            do_step(*sheet, random);
            const float value = static_cast<float>(step) + 0.5F;
            EXPECT_FALSE(sheet->set_cell(1, 1, std::vector<float>{value}));
        }
        states.push_back(session_state(*sheet));
    }
    for (std::size_t at = states.size() - 1; at > 0; --at) {
        ASSERT_EQ(session_state(*sheet), states[at]) << at;
        ASSERT_TRUE(sheet->undo());
    }
    EXPECT_EQ(session_state(*sheet), states[0]);
    EXPECT_FALSE(sheet->undo());
    for (std::size_t at = 1; at < states.size(); ++at) {
        ASSERT_TRUE(sheet->redo());
        ASSERT_EQ(session_state(*sheet), states[at]) << at;
    }
    EXPECT_FALSE(sheet->redo());
    sheet->leave(base::Answer::no);
}

TEST_F(WorksheetTest,
       the_first_opening_leaves_the_default_behind_and_a_second_array_of_two_gets_zero) {
    open(8)->leave(base::Answer::no);
    EXPECT_EQ(stored(8, 1, 3, 5, 4), 1E-4F);
    EXPECT_EQ(stored(63, 1, 3, 5, 4), 0);
    open(1402, 5)->leave(base::Answer::no);
    EXPECT_TRUE(core::ArrayStore(files, project).has_period(1402, 5));
    EXPECT_EQ(stored(1402, 5, 3, 1, 1), 10);
    EXPECT_TRUE(files.has(".tez")); // the empty zone file stays, too
    EXPECT_EQ(project.flags(2, 0), 0);
}

TEST_F(WorksheetTest, scratch_files_are_there_while_the_session_lasts_and_go_with_yes_and_no) {
    folder.write("m.ppl", "polygons");
    for (const auto answer : {base::Answer::yes, base::Answer::no}) {
        const auto sheet = open(1408);
        EXPECT_FALSE(sheet->reset(std::vector<float>{1, 2, 3}));
        EXPECT_EQ(sheet->scratch_files(), (std::vector<std::string>{"m.T1408", "m.T1409", "m.T1410",
                                                                    "m.{P}", "m.{R}", "m.{Z}"}));
        const Content during = content();
        EXPECT_TRUE(during.contains("m.T1410") && during.contains("m.{Z}"));
        sheet->leave(answer);
        EXPECT_TRUE(sheet->scratch_files().empty());
    }
    EXPECT_EQ(stored(1409, 1, 1, 2, 2), 2); // from the session that ended with Yes
    EXPECT_EQ(project.flags(3, 0), 2);
    EXPECT_EQ(project.flags(0, 1), 1);
}

TEST_F(WorksheetTest, a_session_that_was_cut_off_is_recovered_or_restored) {
    open(1402)->leave(base::Answer::yes);
    const Content before = content();
    for (const auto recovery : {grid::Recovery::restore, grid::Recovery::recover}) {
        auto sheet = open(1402);
        EXPECT_FALSE(sheet->reset(std::vector<float>{25}));
        sheet->set_zones({triangle(3, 30)});
        EXPECT_TRUE(sheet->show_layer(2));
        sheet.reset(); // without having been left
        EXPECT_TRUE(grid::has_cut_off_session(files));
        EXPECT_TRUE(grid::end_cut_off_session(project, files, recovery));
        files.commit();
        EXPECT_FALSE(grid::end_cut_off_session(project, files, recovery));
        if (recovery == grid::Recovery::restore) {
            EXPECT_EQ(content(), before);
        }
    }
    EXPECT_EQ(stored(1402, 1, 1, 1, 1), 25);
    EXPECT_EQ(stored(1402, 1, 2, 1, 1), 10);
    EXPECT_EQ(core::ZoneFile(files, 3).read_zones(1, 1, 1502).at(0).value, 30);
    EXPECT_EQ(content().size(), before.size());
}

TEST_F(WorksheetTest, a_refinement_takes_the_copies_of_a_session_that_was_cut_off_along) {
    open(1402)->leave(base::Answer::yes);
    auto sheet = open(1402);
    EXPECT_FALSE(sheet->reset(std::vector<float>{25}));
    sheet->set_zones({triangle(3, 30)});
    sheet->write_shown();
    sheet.reset();
    const core::Division division{{1, 2, 1, 1, 1}, {1, 1, 1, 1}, {2, 1, 1}};
    EXPECT_TRUE(grid::Do_Grid_Refinement(division, project, files, user, false));
    EXPECT_EQ(files.read_file(folder.path() / "m.T1402").size(), 4000U + 4 * 6 * 4 * 4);
    EXPECT_TRUE(grid::end_cut_off_session(project, files, grid::Recovery::recover));
    EXPECT_EQ(stored(1402, 1, 2, 6, 4), 25);
    EXPECT_EQ(core::ZoneFile(files, 4).read_zones(1, 2, 1502).at(0).value, 30);
}

TEST_F(WorksheetTest, another_link_of_the_array_keeps_its_bytes) {
    open(1402)->leave(base::Answer::yes);
    const std::string before = folder.read("m.tem");
    std::filesystem::create_hard_link(folder.path() / "m.tem", folder.path() / "other");
    const auto sheet = open(1402);
    EXPECT_FALSE(sheet->reset(std::vector<float>{25}));
    EXPECT_TRUE(sheet->show_layer(2));
    EXPECT_NE(folder.read("m.tem"), before);
    EXPECT_EQ(folder.read("other"), before);
    sheet->leave(base::Answer::no);
    EXPECT_EQ(folder.read("m.tem"), before);
}

TEST_F(WorksheetTest,
       tops_can_be_taken_from_the_bottoms_of_the_layers_above_and_cancel_ends_the_request) {
    core::ArrayStore store(files, project);
    for (int layer = 1; layer <= 3; ++layer) {
        store.write_array(4, 1, layer, core::LayerValues(20, -10.0F * float(layer)));
    }
    core::mark_item_defined(project.flags, 4);
    files.commit();
    const char* const title = "Top of Layers (TOP)";
    const char* const question = "The elevation of the aquifer bottom has been specified. Use it "
                                 "for the elevation of the aquifer top?";
    user.expect_question(title, question, base::Answer::cancel);
    EXPECT_EQ(open(3), nullptr);
    EXPECT_FALSE(content().contains("m.T3") || content().contains("m.{Z}"));
    user.expect_question(title, question, base::Answer::yes);
    open(3)->leave(base::Answer::no); // undoes it
    EXPECT_EQ(stored(3, 1, 2, 1, 1), 0);
    user.expect_question(title, question, base::Answer::yes);
    open(3)->leave(base::Answer::yes);
    EXPECT_EQ(stored(3, 1, 1, 1, 1), 0);
    EXPECT_EQ(stored(3, 1, 2, 1, 1), -10);
    EXPECT_EQ(stored(3, 1, 3, 1, 1), -20);
    open(3)->leave(base::Answer::no); // it is defined now: no question
}

TEST_F(WorksheetTest, values_are_refused_or_rounded_as_the_item_needs_them) {
    const auto porosity = open(6);
    EXPECT_EQ(title_and_text(porosity->set_cell(1, 1, std::vector<float>{0})),
              "Error: Please enter a positive value.");
    EXPECT_EQ(porosity->cell(1, 1, 1), 0.25F);
    porosity->leave(base::Answer::no);
    const auto zones = open(1403);
    EXPECT_EQ(title_and_text(zones->set_cell(1, 1, std::vector<float>{15.6F})),
              "Error: Please enter a value between 1 and 15.");
    EXPECT_FALSE(zones->set_cell(1, 1, std::vector<float>{2.4F}));
    EXPECT_EQ(zones->cell(1, 1, 1), 2);
    zones->leave(base::Answer::no);
    const auto conductivity = open(8);
    EXPECT_FALSE(conductivity->set_cell(2, 1, std::vector<float>{3, -4}));
    EXPECT_EQ(conductivity->cell(2, 2, 1), -4);
    conductivity->leave(base::Answer::no);
}

TEST_F(WorksheetTest, copying_cells_and_layers_repeats_what_was_set_and_what_was_shown) {
    const auto sheet = open(1402);
    EXPECT_FALSE(sheet->set_cell(1, 1, std::vector<float>{50}));
    sheet->Cell_Copy = true;
    EXPECT_TRUE(sheet->move_to(2, 1, true));
    EXPECT_TRUE(sheet->move_to(3, 1, false));
    EXPECT_FALSE(sheet->move_to(6, 1, true));
    EXPECT_EQ(sheet->cell(1, 2, 1), 50);
    EXPECT_EQ(sheet->cell(1, 3, 1), 10);
    sheet->Layer_Copy = true;
    EXPECT_FALSE(sheet->show_layer(4));
    EXPECT_TRUE(sheet->show_layer(3));
    EXPECT_EQ(sheet->cell(1, 2, 1), 50);
    EXPECT_TRUE(sheet->undo()); // the copy into layer 3 is one step
    EXPECT_EQ(sheet->cell(1, 2, 1), 10);
    sheet->leave(base::Answer::no);
}

TEST_F(WorksheetTest, a_layer_that_cannot_be_read_leaves_the_shown_one_and_the_step_to_be_undone) {
    const auto sheet = open(1402);
    EXPECT_FALSE(sheet->set_cell(1, 1, std::vector<float>{50}));
    EXPECT_TRUE(sheet->show_layer(2));
    EXPECT_FALSE(sheet->set_cell(2, 1, std::vector<float>{60}));
    const std::string zones = folder.read("m.{Z}");
    std::string damaged = zones;
    damaged[core::zone_head_bytes + 3] = '\x7F'; // the number of zones in layer 1
    folder.write("m.{Z}", damaged);
    EXPECT_THROW(sheet->show_layer(1), base::FileFailure);
    EXPECT_THROW(sheet->show_layer(1), base::FileFailure); // as a retry does
    EXPECT_EQ(sheet->Current_Layer(), 2);
    EXPECT_EQ(sheet->cell(1, 2, 1), 60);
    EXPECT_EQ(stored(1402, 1, 1, 2, 1), 10);
    EXPECT_TRUE(sheet->undo());
    EXPECT_THROW(sheet->undo(), base::FileFailure);
    EXPECT_EQ(sheet->undo_name(), "Cell 1,1");
    folder.write("m.{Z}", zones);
    EXPECT_TRUE(sheet->undo());
    EXPECT_EQ(sheet->Current_Layer(), 1);
    EXPECT_EQ(sheet->cell(1, 1, 1), 10);
    sheet->leave(base::Answer::no);
}

TEST_F(WorksheetTest, digitized_points_go_through_their_file) {
    const auto sheet = open(97);
    EXPECT_FALSE(sheet->add_point({1, 2.5F, 3, -4}));
    EXPECT_FALSE(sheet->add_point({2, 10, 10, 0}));
    EXPECT_FALSE(sheet->erase_point(20, 20, 5));
    EXPECT_TRUE(sheet->erase_point(9, 9, 5));
    sheet->leave(base::Answer::yes);
    EXPECT_EQ(folder.read("m.d97"), " 1 \r\n 1  2.5  3 -4 \r\n");
    EXPECT_EQ(project.flags(0, 1), 1); // by the mesh alone
}

TEST_F(WorksheetTest, every_pixel_of_a_turned_grid_leads_to_its_cell_and_back) {
    const auto grid_file = *grid::GridFile::load(files);
    project.set_single("GRIDPOSITION", "LEFT", 120);
    project.set_single("GRIDPOSITION", "TOP", 80);
    for (const float angle : {0.0F, 0.4F, -2.1F}) {
        project.set_single("GRIDPOSITION", "RAD", angle);
        for (const auto mode : {grid::DisplayMode::world, grid::DisplayMode::local}) {
            grid::WorksheetDisplay display(mode, grid_file, grid::GridPosition(project), 640, 480);
            display.zoom({100, 200}, 1.7);
            display.shift(-12, 30);
            for (int row = 1; row <= 4; ++row) {
                for (int column = 1; column <= 5; ++column) {
                    const auto pixel = display.pixel({column * 10 - 5.0, row * 10 - 5.0});
                    const auto cell = display.cell(pixel);
                    ASSERT_TRUE(cell);
                    EXPECT_EQ(cell->column, column);
                    EXPECT_EQ(cell->row, row);
                    const auto back = display.pixel(display.local(pixel));
                    EXPECT_NEAR(back.x, pixel.x, 1E-6);
                    EXPECT_NEAR(back.y, pixel.y, 1E-6);
                }
            }
            EXPECT_FALSE(display.cell(display.pixel({51, 5})));
        }
    }
}

} // namespace

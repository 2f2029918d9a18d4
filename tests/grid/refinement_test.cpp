// The mesh editor and the refinement of everything that a model keeps by cells or layers.
#include "grid/refinement.h"
#include "testmodel.h"

#include "core/arraystore.h"
#include "core/extensions.h"
#include "core/zonefile.h"
#include "grid/mesheditor.h"
#include "grid/monitoring.h"
#include "support/scripteduser.h"

#include <random>

namespace {

using core::Division;

class Refinement : public testing::Test, protected TestModel {
protected:
    bool refine(const Division& division) {
        user.expect_question("Warning", grid::refinement_question(division), base::Answer::yes);
        return grid::Do_Grid_Refinement(division, project, files, user);
    }

    support::ScriptedUser user;
};

// Index (from 0) of the old cell that each new one lies in.
std::vector<int> old_cells(const std::vector<int>& factors) {
    std::vector<int> cells;
    for (std::size_t i = 0; i < factors.size(); ++i) {
        cells.insert(cells.end(), static_cast<std::size_t>(factors[i]), static_cast<int>(i));
    }
    return cells;
}

TEST_F(Refinement, every_new_cell_of_a_random_model_has_the_value_of_the_old_one_in_every_period) {
    std::mt19937 random(3);
    for (int model = 0; model < 8; ++model) {
        TestModel one;
        const auto factors = [&] {
            std::vector<int> found(1 + random() % 5);
            for (int& factor : found) {
                factor = 1 + static_cast<int>(random() % 4);
            }
            return found;
        };
        const Division division{factors(), factors(), factors()};
        const int nx = static_cast<int>(division.columns.size());
        const int ny = static_cast<int>(division.rows.size());
        const int nz = static_cast<int>(division.layers.size());
        one.define_mesh(nx, ny, nz);
        core::ArrayStore before(one.files, one.project);
        const auto value = [&](int number, int period, int layer, int cell) {
            return static_cast<float>(number + 10000 * period + 1000 * layer + cell);
        };
        for (const int number : {3, 1402, 46, 210}) {
            for (const int period : {1, 9, 4}) {
                for (int layer = 1; layer <= before.layers(number); ++layer) {
                    core::LayerValues values(before.cells_of_layer());
                    for (std::size_t i = 0; i < values.size(); ++i) {
                        values[i] = value(number, period, layer, static_cast<int>(i));
                    }
                    before.write_array(number, period, layer, values);
                }
            }
        }
        const bool divides = grid::divides(division);
        EXPECT_TRUE(grid::Do_Grid_Refinement(division, one.project, one.files, user, false));
        const std::vector<int> columns = old_cells(division.columns),
                               rows = old_cells(division.rows), layers = old_cells(division.layers);
        EXPECT_EQ(one.project.NX(), static_cast<int>(columns.size()));
        EXPECT_EQ(one.project.NZ(), static_cast<int>(layers.size()));
        const core::ArrayStore after(one.files, one.project);
        for (const int number : {3, 1402, 46, 210}) {
            EXPECT_EQ(after.periods(number)[1].record, 3) << divides; // period 4 came last
            for (const int period : {1, 4, 9}) {
                for (int layer = 1; layer <= after.layers(number); ++layer) {
                    core::LayerValues values(after.cells_of_layer());
                    after.read_array(number, period, layer, values, -1);
                    const int old = after.layers(number) == 1 && nz == 1
                                        ? 1
                                        : (core::is_2D_array(number)
                                               ? 1
                                               : layers[static_cast<std::size_t>(layer - 1)] + 1);
                    for (std::size_t i = 0; i < values.size(); ++i) {
                        const int cell =
                            rows[i / columns.size()] * nx + columns[i % columns.size()];
                        ASSERT_EQ(values[i], value(number, period, old, cell)) << number;
                    }
                }
            }
        }
    }
}

TEST_F(Refinement, zones_points_layers_and_widths_go_along_and_foreign_files_stay) {
    define_mesh(2, 2, 3, "8");
    grid::LayerFile layers = grid::LayerFile::defaults(3);
    layers.layers[1].thickness = 6;
    layers.layers[0].type = 1;
    layers.save(files);
    grid::MonitoringList points;
    points.bores[0].Layer = 2;
    points.bores[0].X = 5;
    points.bores[1].Layer = 7; // outside
    grid::Write_Monitoring_Points(points, files);
    core::Zone zone;
    zone.nodes = 3;
    zone.x = {0, 4, 1, 6};
    zone.y = {0, 3, 2, 2};
    for (const int number : {1501, 1105, 175}) {
        if (!core::file_ext(number).empty()) {
            core::ZoneFile(files, 3).write_zones(4, 2, number, {zone});
        }
    }
    files.write(".210", "time series of point 21");
    files.write(".che", "unknown");

    ASSERT_TRUE(refine({{2, 1}, {1, 4}, {1, 3, 2}}));
    const auto mesh = *grid::GridFile::load(files);
    EXPECT_EQ(mesh.Column_Width, (std::vector<float>{4, 4, 8}));
    EXPECT_EQ(mesh.Row_Height, (std::vector<float>{8, 2, 2, 2, 2}));
    const auto fresh = *grid::LayerFile::load(files, 6);
    EXPECT_EQ(fresh.layers[0].type, 1);
    EXPECT_EQ(fresh.layers[3].thickness, 2);
    EXPECT_EQ(fresh.layers[5].thickness, 0.5F);
    const auto moved = grid::Read_Monitoring_Points(files);
    EXPECT_EQ(moved.bores[0].Layer, 3);
    EXPECT_EQ(moved.bores[0].X, 5);
    EXPECT_EQ(moved.bores[1].Layer, 7);
    const core::ZoneFile zones(files, 6);
    for (const int layer : {2, 3, 4}) {
        ASSERT_EQ(zones.read_zones(4, layer, 1501).size(), 1U) << layer;
        EXPECT_EQ(zones.read_zones(4, layer, 1501)[0].x[1], 1); // starts at its lowest node
    }
    EXPECT_TRUE(zones.read_zones(4, 5, 1501).empty());
    EXPECT_EQ(files.read(".210"), "time series of point 21");
    EXPECT_EQ(files.read(".che"), "unknown");
    EXPECT_EQ(project.flags(0, 1), 1);
}

TEST_F(Refinement, limits_and_the_answer_no_leave_the_model_alone) {
    define_mesh(500, 500, 1);
    const std::string mesh = files.read(".xy");
    Division division = grid::no_division(*grid::GridFile::load(files), 1);
    EXPECT_TRUE(grid::Do_Grid_Refinement(division, project, files, user)); // nothing to do
    EXPECT_FALSE(grid::refinement_refusal(division));                      // exactly 250000
    division.columns[3] = 2;
    user.expect_message("Tervex Desk", "The total number of cells will exceed 250000. The grid "
                                       "refinement cannot be processed.");
    EXPECT_FALSE(grid::Do_Grid_Refinement(division, project, files, user));
    division = {{1}, {1}, std::vector<int>(80, 1)};
    EXPECT_FALSE(grid::refinement_refusal(division));
    division.layers[0] = 2;
    EXPECT_EQ(title_and_text(grid::refinement_refusal(division)),
              "Tervex Desk: The total number of layers of the refined grid exceeds 80. The grid "
              "refinement cannot be processed.");
    EXPECT_EQ(grid::refinement_question({{10, 9}, {10}, {10, 10, 1}}),
              "After the grid refinement, your model will have 3990 cells. You will need about 1 "
              "Megabytes of RAM for a simulation. Continue anyway?");
    EXPECT_EQ(files.read(".xy"), mesh);
}

TEST_F(Refinement, keys_insert_and_delete_while_the_mesh_is_laid_out_and_count_factors_afterwards) {
    define_mesh(2, 1, 2);
    const auto box = [](const grid::MeshEditor::KeyEffect& effect) {
        return effect.refusal ? effect.refusal->text : std::string(effect.done ? "done" : "beep");
    };
    using enum grid::MeshKey;
    grid::MeshEditor layout(project, files);
    EXPECT_FALSE(layout.set_size({5, 1, {}, {}, {}}));
    EXPECT_EQ(box(layout.press(right)), "done");
    EXPECT_EQ(layout.grid().Column_Width, (std::vector<float>{5, 5, 1}));
    EXPECT_TRUE(layout.go(3, 1));
    EXPECT_EQ(box(layout.press(left)), "done");
    EXPECT_EQ(layout.column(), 2); // back in range
    EXPECT_TRUE(layout.undo() && layout.undo());
    EXPECT_EQ(layout.grid().Column_Width, (std::vector<float>{5, 1}));
    EXPECT_TRUE(layout.redo());
    EXPECT_EQ(box(layout.press(down)), "At least one row is required");
    while (layout.grid().NX < 2000) {
        layout.press(right);
    }
    EXPECT_EQ(box(layout.press(right)), "The maximumm number of columns is 2000");

    core::ArrayStore(files, project).create_array_file(1402, 10);
    grid::MeshEditor with_arrays(project, files);
    EXPECT_EQ(box(with_arrays.press(right)), "beep");

    project.flags.mark_defined(1, 3);
    grid::MeshEditor factors(project, files);
    EXPECT_EQ(box(factors.press(left)), "beep");
    for (int factor = 2; factor <= 10; ++factor) {
        EXPECT_EQ(box(factors.press(up)), "done");
    }
    EXPECT_EQ(box(factors.press(up)), "The maximumm refinement step is 10");
    EXPECT_EQ(title_and_text(factors.set_size({0, 1, {}, {}, {}})),
              "Error: Please enter a positive value!");
    EXPECT_EQ(title_and_text(factors.set_size({1, 1, 2, 11, 1})), "Error: Valid range is 1 to 10");
    EXPECT_FALSE(factors.set_size({1, 1, 2, 3, 4}));
    user.expect_question("Warning", grid::refinement_question(factors.division()),
                         base::Answer::yes);
    EXPECT_TRUE(factors.save(project, files, user));
    EXPECT_EQ(project.NX(), 3);
    EXPECT_EQ(project.NY(), 3);
    EXPECT_EQ(project.NZ(), 5);
}

} // namespace

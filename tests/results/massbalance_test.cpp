#include "results/massbalance.h"

#include "core/modelfiles.h"
#include "core/project.h"
#include "sim/transport.h"
#include "support/scripteduser.h"
#include "support/tempfolder.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

using results::Direction;
using results::Imported;

namespace {

class Balance : public testing::Test {
protected:
    // 2 columns of 3 and 4 m, 2 rows of 5 and 6 m, 2 layers of 7 and 8 m.
    Balance() {
        for (const auto* key : {"NX", "NY", "NZ"}) {
            project.set_integer("DIMENSION", key, 2);
        }
        folder.write("m.xy", grid::GridFile{2, 2, 2, {3, 4}, {5, 6}}.bytes());
        folder.write("m.l", "2 0 0 7 8");
        sim::TracerTable tracers;
        tracers.rows[1].active = true;
        folder.write("m.ttc", tracers.bytes());
        for (const auto& [slot, name] : {std::pair{1, "A"}, {3, "B"}}) {
            results::MonitoringCell point{slot, {}, 2, 1, 2, results::file_part(slot)};
            point.bore = {name, true, 5, 8, 2, 0, 0};
            points.push_back(point);
        }
        points.push_back({4, {}, 0, 0, 0, "-"});
    }

    std::string record(double time, double velocity, double concentration) const {
        return fmt::format("{} 0 0 {} {} {} 0 0 0 0 0 0 {} 99\r\n", time, velocity, 2 * velocity,
                           3 * velocity, concentration);
    }

    Imported import(Direction direction, support::ScriptedUser& user) {
        core::ModelFiles files(folder.path() / "m.td1", core::Access::write);
        const auto table = results::Grid_Parameters_Load(project, files, points);
        const Imported imported =
            results::Import_Mass_Balance_Boundary(project, files, table, {3, 1}, direction, user);
        files.commit();
        return imported;
    }
    std::string base() const { return (folder.path() / "m").string(); }
    results::MassBalance imported(Direction direction) {
        support::ScriptedUser user;
        user.expect_message("Import Data", "File " + base() + ".fwp sucessfully written.");
        EXPECT_EQ(import(direction, user), Imported::done);
        return results::Get_Existing_Data(folder.read("m.fwp"), "m.fwp");
    }

    support::TempFolder folder;
    core::Project project;
    std::vector<results::MonitoringCell> points;
};

} // namespace

TEST_F(Balance, is_written_in_columns_of_25_characters) {
    folder.write("m.100", "head\n" + record(10, 365.25, 2) + record(30, -365.25, 3));
    folder.write("m.300", "head\n" + record(10, 730.5, 0.5) + record(31, 0, 3) + record(40, 0, 0));
    imported(Direction::X);
    // Faces of 5 x 8 m: 40 m2 of 1 and 2 m a day.
    EXPECT_EQ(folder.read("m.fwp"), "m\r\nA,B,\r\nX - axis->t,dt,q,Tracer 1,\r\n"
                                    " 10                       10                       1200       "
                                    "              1200 \r\n"
                                    " 30                       20                      -800        "
                                    "             -2400 \r\n");
}

TEST_F(Balance, takes_the_face_across_its_direction) {
    folder.write("m.100", "head\n" + record(1, 365.25, 1));
    folder.write("m.300", "head\n" + record(1, 0, 1));
    const auto flow = [&](Direction direction) { return imported(direction).values[2]; };
    EXPECT_EQ(flow(Direction::X), 5 * 8);
    EXPECT_EQ(flow(Direction::Y), 2 * 4 * 8);
    EXPECT_EQ(flow(Direction::Z), 3 * 4 * 5);
    project.flags.set(1, 4, 1);
    EXPECT_EQ(flow(Direction::X), 5 * 8);
    EXPECT_EQ(flow(Direction::Y), 2 * 4 * 5);
    EXPECT_EQ(flow(Direction::Z), 3 * 4 * 8);
}

TEST_F(Balance, of_files_that_do_not_fit_is_not_written) {
    const std::string whole = "head\n" + record(1, 1, 1) + record(2, 1, 1);
    folder.write("m.100", whole);
    for (const auto& [bytes, what] :
         {std::pair<std::string, std::string>{"head\n" + record(1, 1, 1),
                                              "has 1 records, where 2 were expected"},
          {"head\n0\n", "has no record behind its head line"},
          {"head\n1 2 3\n" + record(1, 1, 1), "has 3 numbers in line 2, where 13 were expected"}}) {
        folder.write("m.300", bytes);
        support::ScriptedUser user;
        user.expect_failure(what, base::Reaction::next);
        user.expect_message("Import Data", "Error occured -> " + base() + ".fwp not complete.");
        EXPECT_EQ(import(Direction::X, user), Imported::failed);
    }
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "m.fwp"));
}

TEST_F(Balance, the_table_has_the_points_with_a_cell) {
    folder.write("m.100", "");
    const auto table = [&] {
        const core::ModelFiles files(folder.path() / "m.td1", core::Access::read);
        return results::Grid_Parameters_Load(project, files, points);
    };
    ASSERT_EQ(table().size(), 2u);
    EXPECT_TRUE(table()[0].has_file && !table()[1].has_file);
    EXPECT_EQ(std::tuple(table()[0].Y, table()[0].Z), std::tuple(8, 4));
    project.flags.set(1, 4, 1);
    EXPECT_EQ(std::tuple(table()[0].Y, table()[0].Z), std::tuple(11, 8));
}

TEST(ExistingBalance, shows_water_per_day_and_substances_as_amount_or_concentration) {
    const auto balance = results::Get_Existing_Data(
        "m\nA,\ny - Axis -> t,dt,q,H+,Na,Tracer 1,\n 1 1 2 3 4 5 \n 3 2 0 1 1 1\n\n", "m.fwp");
    EXPECT_EQ(balance.direction, Direction::Y);
    EXPECT_EQ(balance.parameters(), (std::vector<std::string>{"Water", "H+", "Na", "Tracer 1"}));
    const auto values = [&](const char* parameter, const char* mode) {
        EXPECT_FALSE(results::graph_refusal(balance, parameter, mode));
        return results::Get_MB_Array(balance, parameter, mode).values;
    };
    EXPECT_EQ(values("Water", "[m³/day]"), (std::vector<double>{2, 0}));
    EXPECT_EQ(values("H+", "[mol]"), (std::vector<double>{3, 1}));
    EXPECT_EQ(values("Tracer 1", "[mmol/L]"), (std::vector<double>{2.5, 0}));
    const auto chart = results::Get_MB_Array(balance, "Water", "[m³/day]");
    EXPECT_EQ(chart.title, "Mass Balance in direction of Y - axis");
    EXPECT_EQ(chart.times, (std::vector<double>{1, 3}));
}

TEST(ExistingBalance, damaged_tables_never_crash) {
    const std::string bytes =
        "m\r\nA,B,\r\nX - axis->t,dt,q,Tracer 1,\r\n 10 10 1200 1200 \r\n 30 20 -800 1E+300 \r\n";
    int read = 0;
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        std::string changed = bytes;
        changed[size] = '\n';
        for (const std::string& damaged : {bytes.substr(0, size), changed}) {
            try {
                const auto balance = results::Get_Existing_Data(damaged, "m.fwp");
                ++read;
                EXPECT_EQ(balance.values.size(), balance.steps() * balance.width());
            } catch (const base::FileFailure&) {
            }
        }
    }
    EXPECT_GT(read, 0);
}

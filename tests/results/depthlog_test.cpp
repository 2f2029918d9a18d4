#include "results/depthlog.h"

#include "base/failure.h"
#include "base/textfile.h"
#include "core/modelfiles.h"
#include "core/project.h"
#include "support/scripteduser.h"
#include "support/tempfolder.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <ctime>

using results::Get_Array;
using results::Imported;

namespace {

constexpr const char* fields[] = {"PRES", "POR", "DICHTE", "PERM", "PHI", "VX", "VY", "VZ", "TEMP"};

// Values that tell their block, K, J and I: 1211 is K 2, J 1, I 1 of the first one.
std::string values(int block, int I0, int J0, int K0) {
    std::string text;
    for (int K = 1; K <= K0; ++K) {
        for (int J = 1; J <= J0; ++J) {
            for (int I = 1; I <= I0; ++I) {
                text += fmt::format("{}{}{}{} ", block, K, J, I);
            }
        }
    }
    return text + "\r\n";
}

// 07:08:09 on the 6th of May 2026.
std::chrono::system_clock::time_point clock() {
    std::tm time{};
    time.tm_year = 126;
    time.tm_mon = 4;
    time.tm_mday = 6;
    time.tm_hour = 7;
    time.tm_min = 8;
    time.tm_sec = 9;
    time.tm_isdst = -1;
    return std::chrono::system_clock::from_time_t(std::mktime(&time));
}

// 2 columns, 3 rows and 2 layers; as a cross-section 2 columns, 3 sections of 2 rows.
class DepthLog : public testing::Test {
protected:
    void make(int substances, int minerals, int orientation = 0) {
        const bool horizontal = orientation == 0;
        NX = 2, NY = horizontal ? 3 : 2, NZ = horizontal ? 2 : 3;
        project.set_integer("DIMENSION", "NX", NX);
        project.set_integer("DIMENSION", "NY", NY);
        project.set_integer("DIMENSION", "NZ", NZ);
        project.flags.set(1, 4, orientation);
        const std::vector<float> heights(static_cast<std::size_t>(NY), 10);
        folder.write("m.xy", grid::GridFile{NX, NY, NZ, {1, 1}, heights}.bytes());
        folder.write("m.l", horizontal ? "2 0 0 0.5 4" : "3 0 0 0 7 7 7");
        folder.write("m.nlo", stream(substances, minerals));
    }
    std::string stream(int substances, int minerals) const {
        std::string text = fmt::format("# I0\r\n2\r\n# J0\r\n3\r\n# K0\r\n2\r\n# ANZSUBS\r\n {} "
                                       "\r\n# ANZCHEM\r\n0\r\n# ANZMINS\r\n{}\r\n",
                                       substances, minerals);
        int block = 0;
        for (const std::string name : fields) {
            text += "# " + name + "\r\n" + values(++block, 2, 3, 2);
        }
        for (int n = 1; n <= substances; ++n) {
            text += fmt::format("# CONC{:>12}\r\n12*-{}.5\r\n", n, n);
        }
        for (int n = 1; n <= minerals; ++n) {
            text += fmt::format("# CONCM{:>12}\r\n12*0.00{}\r\n", n, n);
        }
        return text;
    }

    Imported import(support::ScriptedUser& user) {
        core::ModelFiles files(folder.path() / "m.td1", core::Access::write);
        const Imported imported = results::Import_Data_Monitor(
            project, files, points, folder.path() / "m.nlo", files, clock(), user);
        files.commit();
        return imported;
    }
    std::string base() const { return (folder.path() / "m").string(); }
    std::vector<std::string> imported_lines() {
        support::ScriptedUser user;
        user.expect_message("Import Data", "File " + base() + ".cal sucessfully written.");
        EXPECT_EQ(import(user), Imported::done);
        statuses = user.statuses();
        return base::text_lines(folder.read("m.cal"));
    }

    void add_point(int slot, const char* name, int column, int row, int layer) {
        results::MonitoringCell point{slot, {}, column, row, layer, "100"};
        point.bore.Name = name;
        points.push_back(point);
    }

    int NX = 0, NY = 0, NZ = 0;
    support::TempFolder folder;
    core::Project project;
    std::vector<results::MonitoringCell> points;
    std::vector<std::string> statuses;
};

} // namespace

TEST_F(DepthLog, is_written_byte_for_byte) {
    make(1, 2);
    add_point(4, "Müll", 2, 1, 1);
    add_point(5, "off", 0, 0, 0);
    imported_lines();
    EXPECT_EQ(folder.read("m.cal"),
              "m\r\n2026-05-06 07:08:09\r\n"
              " I0, J0, Depth, Perm, Por, Density, Head, Temp, Vx, Vy, Vz, Pres, 1*CONC, 2*MIN\r\n"
              "Monitoring Point: M\xFCll\r\n"
              " 2             1            2             4132          2132          3132          "
              "5132          9132          6132          7132          8132          1132   -1.5  "
              ".001  .002 \r\n"
              " 2             1            4.25          4232          2232          3232          "
              "5232          9232          6232          7232          8232          1232   -1.5  "
              ".001  .002 \r\n"
              "\r\n");
    EXPECT_EQ(statuses.front(), "Load pressure data");
    EXPECT_EQ(statuses[9], "Load concentration data: Substance 1");
    EXPECT_EQ(statuses.back(), "Data Load and Store (Monitoring Point 4)");
}

TEST_F(DepthLog, the_head_names_minerals_only_beside_substances) {
    const std::string plain = " I0, J0, Depth, Perm, Por, Density, Head, Temp, Vx, Vy, Vz, Pres";
    add_point(1, "P", 1, 1, 1);
    make(0, 2);
    EXPECT_EQ(imported_lines()[2], plain);
    EXPECT_TRUE(imported_lines()[4].ends_with(" 1131  "));
    make(11, 0);
    EXPECT_EQ(imported_lines()[2], plain + ", 11*CONC");
    EXPECT_TRUE(imported_lines()[4].ends_with("  -10.5  -11.5 "));
}

TEST_F(DepthLog, runs_down_the_rows_of_a_cross_section) {
    make(0, 0, 1);
    add_point(1, "P", 2, 1, 3);
    const auto lines = imported_lines();
    EXPECT_EQ(lines[4].substr(0, 47), " 2             1            5             4132 ");
    EXPECT_EQ(lines[5].substr(0, 47), " 2             1            15            4232 ");
    points[0].layer = 4;
    support::ScriptedUser user;
    user.expect_failure("Monitoring Point 1 lies in section 4 of 3", base::Reaction::next);
    user.expect_message("Import Data", "Error occured -> " + base() + ".cal not complete.");
    EXPECT_EQ(import(user), Imported::failed);
}

TEST_F(DepthLog, of_another_grid_or_of_a_stream_that_is_not_whole_is_not_written) {
    make(1, 0);
    add_point(1, "P", 1, 1, 1);
    const std::string whole = stream(1, 0);
    for (const std::string& bytes : {whole.substr(0, whole.find("# CONC")),
                                     whole.substr(0, whole.size() - 9), std::string()}) {
        folder.write("m.nlo", bytes);
        support::ScriptedUser user;
        user.expect_failure(bytes.empty() ? "has no block # PRES" : "", base::Reaction::next);
        user.expect_message("Import Data", "Error occured -> " + base() + ".cal not complete.");
        EXPECT_EQ(import(user), Imported::failed);
    }
    folder.write("m.nlo", whole);
    project.set_integer("DIMENSION", "NX", 3);
    support::ScriptedUser user;
    user.expect_message("Import Data", "The grid of the result file differs from the model.");
    EXPECT_EQ(import(user), Imported::refused);
    EXPECT_EQ(folder.names(), (std::vector<std::string>{"m.l", "m.nlo", "m.xy"}));
}

TEST_F(DepthLog, is_read_back_by_the_menu_of_the_chart) {
    make(2, 1);
    add_point(1, "P10", 2, 1, 1);
    add_point(2, "P1", 1, 3, 1);
    imported_lines();
    const std::string bytes = folder.read("m.cal");
    const float expected[] = {9111, 5111, 1111, 3111, 2111, 4111, 6111, 7111, 8111, -2.5F, 0.001F};
    for (int index = 0; index < 11; ++index) {
        const auto chart = Get_Array(bytes, "m.cal", "P1", index, index == 9 ? 2 : 1);
        EXPECT_EQ(chart.title, "Monitoring Point: P1");
        EXPECT_EQ(chart.values[0], expected[index]) << chart.label;
        EXPECT_EQ(chart.altitudes, (std::vector<float>{2, 4.25F}));
    }
    EXPECT_THROW(Get_Array(bytes, "m.cal", "P1", 9, 3), base::FileFailure);
    EXPECT_THROW(Get_Array(bytes, "m.cal", "P1", 10, 2), base::FileFailure);
    EXPECT_THROW(Get_Array(bytes, "m.cal", "P", 0, 1), base::FileFailure);
}

TEST_F(DepthLog, damaged_tables_never_crash) {
    make(2, 1);
    add_point(1, "P", 2, 1, 1);
    imported_lines();
    const std::string bytes = folder.read("m.cal");
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        std::string changed = bytes;
        changed[size] = '\n';
        for (const std::string& damaged : {bytes.substr(0, size), changed}) {
            try {
                const auto chart = Get_Array(damaged, "m.cal", "P", 10, 1);
                EXPECT_FALSE(chart.values.empty());
            } catch (const base::FileFailure&) {
            }
        }
    }
}

// Whole streams of three models small enough to be worked out on paper.
//
// The streams in data/input were written by hand, from the files given here and the rules of the
// blocks. After a change that is meant to alter them, alter them by hand as well.
#include "input/inputfile.h"

#include "grid/monitoring.h"
#include "input/smallmodel.h"
#include "sim/reinjection.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

using input::test::SmallModel;

namespace {

struct Cell {
    int a, b, value;
};

void set_flags(SmallModel& model, std::initializer_list<Cell> cells) {
    for (const auto& [a, b, value] : cells) {
        model.project.flags.set(a, b, value);
    }
}

void write_lines(SmallModel& model, std::string_view extension,
                 const std::vector<std::string>& lines) {
    model.files.write(extension, base::to_text_file(lines));
}

grid::Bore point(float x, float y, std::int16_t layer, bool active = true) {
    grid::Bore bore;
    bore.Active = active;
    bore.X = x;
    bore.Y = y;
    bore.Layer = layer;
    return bore;
}

void set_points(SmallModel& model, const std::vector<grid::Bore>& points) {
    grid::MonitoringList list;
    std::ranges::copy(points, list.bores.begin());
    grid::Write_Monitoring_Points(list, model.files);
}

void expect_stream(SmallModel& model, const char* name) {
    EXPECT_FALSE(model.create().InputError);
    EXPECT_EQ(model.stream, base::read_bytes(std::filesystem::path(TD_TEST_DATA) / "input" / name));
}

// Columns of 10, 20 and 10 m, rows of 5 and 7.5 m, an unconfined layer upon a confined one.
void define_map(SmallModel& model) {
    model.project.set_title("Dublette Süd");
    model.project.set_integer("OPTIONS", "SIMULATION_MODE", 2);
    model.project.set_single("GRIDPOSITION", "TOP", 12.5F);
    write_lines(model, ".xy", {" 3  2  2 ", " 10 ", " 20 ", " 10 ", " 5 ", " 7.5 "});
    write_lines(model, ".l", {" 2 ", " 1 ", " 0 ", " 2.5 ", " 4 "});
    set_flags(model, {{9, 5, 1},
                      {9, 6, 1},
                      {8, 4, 802},
                      {8, 5, 18},
                      {8, 6, 50},
                      {10, 0, 1},
                      {10, 6, 1},
                      {9, 8, 2},
                      {2, 13, 2},
                      {2, 14, 2},
                      {3, 14, 2},
                      {4, 14, 2},
                      {3, 2, 2}});
    write_lines(model, ".typ", {"FU5--",   "COUP # 800.0 # 1.8 # -0.0025 # 2400",
                                "1.0 #",   "2.0",
                                "10.0",    "X234567890125",
                                "0.5",     "1",
                                "0",       "1",
                                "1E0",     "1.0",
                                "1E-12",   "0.5",
                                "1.0E-10", "500",
                                "0.08",    "1e-6",
                                "1.0E-10", "1000.5"});
    // The limit of transport is stored under a key that is not read.
    write_lines(model, ".izv", {"[koppx]",
                                "Density=\t999.7",
                                "[PICARD]",
                                "Active=1",
                                "Chi=0.5",
                                "Iteration=7",
                                "FlowLimit=0.01",
                                "HeatLimit=1E-3",
                                "TransportLimit=0.1",
                                "[BOX]",
                                "active=1",
                                "P_Zones=2,3",
                                "Dens_A=1",
                                "Dens_B=10",
                                "Apert_A=1.000E-03",
                                "Apert_B=1.000E-04",
                                "Tort_A=1",
                                "Tort_B=1.5",
                                "Tort_C=1",
                                "Tort_D=1"});
    write_lines(model, ".mco",
                {"Fluid Flow", "Por       0.2       0.25      0.05",
                 "Perm      1E-12               5.5E-14             1E-12",
                 "Compress  1E-10     1.0E-10   2E-10", "ANISOI    1.        1.0       1.",
                 "ANISOJ    1.        1.        1.", "XANG      0.        0.        0.",
                 "YANG      0.        0.        0.", "Heat", "Capacity  2.06      2         2.06",
                 "Cond      -2.9      3.1       2.9", "HPF       0.        0.        1E-6",
                 "WLXANI    1.        1.        1.", "WLYANI    1.        1.        1."});
    write_lines(model, ".tma", {"0.7,1.5,10"});
    write_lines(model, ".ttc", {"1 -1 2.5 .001", "2 0 0 0", "3 -1 100 0"});
}

// The second row of the table is not used, so that the third one is the simulator's second period.
void define_periods_of_map(SmallModel& model) {
    model.periods.unit = 4;
    model.periods.rows[0] = {true, 10, 7, 2, 1.5F, 5000, 1};
    model.periods.rows[1] = {false, 99, 3, 9, 7, 5000, 1};
    model.periods.rows[2] = {true, 365.25, 10, 5, 0, 5000, 1};
    model.save_periods();
}

void define_arrays_of_map(SmallModel& model) {
    model.set_array(1403, {1, 1, 2, 1, 2, 2, /**/ 3, 3, 3, 1, 3, 2});
    model.set_array(6, {0.2F, 0.2F, 0.25F, 0.2F, 0.25F, 0.25F, //
                        0.05F, 0.05F, 0.05F, 0.2F, 0.05F, 0.25F});
    model.set_array(1401, {1e-12F, 1e-12F, 5.5e-14F, 1e-12F, 5.5e-14F, 5.5e-14F, //
                           1e-12F, 1e-12F, 1e-12F, 1e-12F, 1e-12F, 5.5e-14F});
    model.set_array(5, {1, -1, 1, 1, 1, -1, /**/ -1, 1, -1, 2, 1, 1});
    model.set_array(1405, {1, 1, 1, 2, 1, 1, /**/ -1, -1, 1, -1, -1, 1});
    model.set_array(40, {-1, 1, 1, 1, 1, 1, /**/ -1, -1, -1, -1, -1, -1});
    model.set_array(1407, {1e-8F, 1e-8F, 0, 0, 2e-8F, 0, /**/ 0, 0, 0, 3e-9F, 0, 0});
    model.set_array(1433, {0, 0, 1e-7F, 5e-9F, 0, 0, /**/ 1e-6F, 0, 0, 0, 0, 0});
    model.set_array(1437, {0.06F, 0.06F, 0.06F, 0.065F, 0, 0.06F, /**/ 0, 0, 0, 0, 0, 0});
    model.set_array(10, {100, 100, 100, 100, 100, 100, //
                         101.5F, 101.5F, 101.5F, 101.5F, 101.5F, 101.5F});
    model.set_array(1402, {10, 10.5F, 11, 10, 10, 10, //
                           60.25F, 60.25F, 60.25F, 60.25F, 60.25F, 60.25F});
    model.set_array(1406, {0, 1, 3, 0, 0, 0, /**/ 1, 1, 0, 3, 0, 1});
}

void define_wells_of_map(SmallModel& model) {
    model.set_array(11, {0, 0.01F, 0, 0, 0, 0, /**/ 0, 0, 0, -0.01F, 0, 0}, 1);
    model.set_array(11, {5, 0, 0, 0, 0, 0, /**/ 0, 0, 0, 0, 0, 0}, 2);
    model.set_array(11, {0, 0.02F, 0, 0, 0, -0.02F, /**/ 0, 0, 0, 0, 0, 0}, 3);
    model.set_array(299, {0, 50, 0, 0, 0, 0, /**/ 0, 0, 0, 0, 0, 0}, 1);
    model.set_array(299, {0, 60, 0, 0, 0, 0, /**/ 0, 0, 0, 0, 0, 0}, 3);
    sim::ReinjectionTable injected;
    injected.species = 2;
    injected.rows = {{-0.01F, {0, 3}}, {0, {0, 0}}, {0.01F, {12.5F, 0}}};
    model.files.write(".sco", injected.bytes());
}

} // namespace

TEST(WholeStream, of_a_map_with_flow_heat_and_tracers) {
    SmallModel model(3, 2, 2);
    define_map(model);
    define_periods_of_map(model);
    define_arrays_of_map(model);
    define_wells_of_map(model);
    set_points(model, {point(35, 1, 2), point(5, 10, 1, false), point(500, 5, 1), //
                       point(10, 7.5F, 1)});
    model.user.expect_message("Message",
                              "Monitoring Point 3 not in Grid area. Will be shut to non-active.");
    expect_stream(model, "map.nml");
}

namespace {

// Columns of 100 m, rows of 10, 10 and 30 m; the faces of the four sections are given by arrays.
void define_cross_section(SmallModel& model) {
    model.project.set_title("Vertical - Section");
    model.project.set_single("GRIDPOSITION", "TOP", 50);
    write_lines(model, ".xy", {" 2  3  4 ", " 100 ", " 100 ", " 10 ", " 10 ", " 30 "});
    set_flags(model, {{0, 0, 0},
                      {9, 5, 1},
                      {10, 5, 1},
                      {8, 4, 51},
                      {8, 5, 51},
                      {8, 6, 51},
                      {1, 1, 2},
                      {2, 14, 2},
                      {3, 2, 2}});
    write_lines(model, ".typ", {"FI---",   "COW- # 800.0 # 1.8 # -0.0025 # 2400",
                                "1.0 #",   "2.0",
                                "10.0",    "1234567890121",
                                "1",       "1",
                                "1",       "1.0",
                                "1.0",     "1.0",
                                "1.0E-18", "1.0E-18",
                                "1.0E-10", "20000",
                                "0.08",    "0.0",
                                "2e-10",   "998.0"});
    write_lines(model, ".mco",
                {"Fluid Flow", "Por       0.25      0.1", "Perm      1E-12               1E-12",
                 "Anisotropy", "ANISOI    1.        1.", "ANISOJ    1.        0.1",
                 "XANG      0.        0.", "YANG      0.        0.", "Heat",
                 "RhoCm     2.06      2.06", "Cond      2.9       2.9", "HPF       0.        0.",
                 "WLXANI    1.        1.", "WLYANI    1.        1."});
    model.periods.unit = 5;
    model.periods.rows[0].length = 1;
    model.save_periods();
    set_points(model, {point(150, 45, 3)});
}

// A line is a section: its three rows, from the surface down.
void define_arrays_of_cross_section(SmallModel& model) {
    model.set_array(3, {5, 5, 5, 5, 5, 5, //
                        0, 0, 0, 0, 0, 0, //
                        0, 0, 0, 1, 0, 0, //
                        0, 0, 0, 0, 0, 0});
    model.set_array(4, {0,     0,     0,     0,     0,     0,     //
                        -2.5F, -2.5F, -2.5F, -2.5F, -2.5F, -2.5F, //
                        0,     0,     0,     0,     0,     0,     //
                        4,     4,     4,     4,     4,     4});
    const auto in_each_section = [&model](int number, const std::vector<float>& section) {
        std::vector<float> values;
        for (int layer = 0; layer < 4; ++layer) {
            values.insert(values.end(), section.begin(), section.end());
        }
        model.set_array(number, values);
    };
    in_each_section(1403, {1, 1, 1, 1, 2, 2});
    in_each_section(6, {0.25F, 0.25F, 0.25F, 0.25F, 0.1F, 0.1F});
    model.set_array(5, {-1, -1, 1, 1, 1, 1,  //
                        -1, -1, 1, 1, 1, -1, //
                        1,  1,  1, 1, 1, 1,  //
                        2,  2,  2, 2, 1, 1});
    model.set_array(1405, {-1, -1, 1, 1, 2, 2, //
                           -1, -1, 1, 1, 2, 2, //
                           -1, -1, 1, 1, 2, 2, //
                           1,  1,  1, 1, 2, 2});
    model.set_array(1407, {0, 1e-9F, 0, 0, 0, 0, //
                           0, 0,     0, 0, 0, 0, /**/ 0, 0, 0, 0, 0, 0, /**/ 0, 0, 0, 0, 0, 0});
    model.set_array(1437, {0, 0, 0, 0, 0.06F, 0.06F, //
                           0, 0, 0, 0, 0.06F, 0.07F, //
                           0, 0, 0, 0, 0.06F, 0.06F, //
                           0, 0, 0, 0, 0.06F, 0.06F});
    model.set_array(1434, {0,    0,    0,    0,    0,    0,    //
                           0.1F, 0.1F, 0.1F, 0.1F, 0.1F, 0.1F, //
                           0,    0,    0,    0,    0,    0,    /**/ 0, 0, 0, 0, 0, 0});
    model.set_array(1402, {10, 10, 10,   10,   10, 10, //
                           10, 10, 10,   10,   10, 10, //
                           5,  5,  6.5F, 6.5F, 8,  8,  //
                           10, 10, 10,   10,   10, 10});
    const std::vector<float> nothing(12, 0.0F);
    std::vector<float> rate{0, 0, 0, 0, 0, 0, /**/ 0, 0, 0, 0, 0, 0.001F};
    std::vector<float> temperature{0, 0, 0, 0, 0, 0, /**/ 0, 0, 0, 0, 0, 40};
    rate.insert(rate.end(), nothing.begin(), nothing.end());
    temperature.insert(temperature.end(), nothing.begin(), nothing.end());
    model.set_array(11, rate);
    model.set_array(299, temperature);
}

} // namespace

TEST(WholeStream, of_a_cross_section_with_heat_through_its_base) {
    SmallModel model(2, 3, 4, core::vertical);
    define_cross_section(model);
    define_arrays_of_cross_section(model);
    expect_stream(model, "crosssection.nml");
}

TEST(WholeStream, of_one_cell_with_flow_alone) {
    SmallModel model(1, 1, 1);
    write_lines(model, ".xy", {" 1  1  1 ", " 1000 ", " 500 "});
    write_lines(model, ".l", {" 1 ", " 0 ", " 12.5 "});
    write_lines(model, ".typ", {"F----",   "COUP # 800.0 # 1.8 # -0.0025 # 2400",
                                "1.0 #",   "2.0",
                                "10.0",    "1234567890120",
                                "1",       "1",
                                "1",       "1.0",
                                "1.0",     "1.0",
                                "1.0E-18", "1.0E-18",
                                "1.0E-10", "20000",
                                "0.08",    "0.0",
                                "1.0E-10", "998.0"});
    set_flags(model, {{8, 4, 49}, {8, 5, 49}, {8, 6, 49}, {2, 14, 2}, {3, 2, 2}});
    model.periods.rows[0].length = 3600;
    model.save_periods();
    model.set_array(5, 2);
    model.set_array(1407, 1e-9F);
    model.set_array(11, -0.5F);
    expect_stream(model, "onecell.nml");
}

// Monitoring series, depth logs and mass balances.
#include "tdtest.h"

#include <fmt/format.h>

namespace {

class MonitorCommands : public TdTest {
protected:
    // Cells of 1 m; the points stand in column 1 and 3, row 1 and layer 2.
    void SetUp() override {
        make_complete_model();
        prepare("points set @m.td1 2 --name A --active 1 --x 0.5 --y 1.5 --layer 2\n"
                "points set @m.td1 5 --name off --x 0.5 --y 1.5 --layer 2\n"
                "points set @m.td1 7 --name B --active 1 --x 2.5 --y 1.5 --layer 2");
    }

    void make_input() {
        std::filesystem::create_directory(folder.path() / "install");
        prepare("create-input @m.td1 --no --install @install");
    }
    void make_series() {
        std::string bytes = "t t2 head vx vy vz por k perm temp wlf pe\r\n";
        for (const char* time : {"1", "3"}) {
            bytes += fmt::format(" {} 1 10 365.25 -365 0 0.2 1E-6 1.D-13 20.5 3 4 \r\n", time);
        }
        folder.write("m.100", bytes);
    }

    // The first numbers of a block of the input file.
    std::string first_numbers(const std::string& keyword) {
        const std::string bytes = folder.read("m.nml");
        const std::size_t begin = bytes.find('\n', bytes.find("# " + keyword + "\r")) + 1;
        const std::string line = bytes.substr(begin, bytes.find("\r", begin) - begin);
        std::istringstream words(line);
        std::string first, second;
        words >> first >> second;
        return first + " " + second;
    }
};

TEST_F(MonitorCommands, points_are_listed_with_their_cells_and_files) {
    make_series();
    prepare("points set @m.td1 4 --name far --active 1 --x 99 --y 1 --layer 1");
    expect({
        {"monitor list @m.td1",
         done("2\tA\tactive\t1\t1\t2\t0.5\t1.5\t100\tyes\n"
              "4\tfar\toff\t0\t0\t0\t99\t1\t-\tno\n5\toff\toff\t0\t0\t0\t0.5\t1.5\t-\tno\n"
              "7\tB\tactive\t3\t1\t2\t2.5\t1.5\t200\tno\n",
              "Message: Monitoring Point 4 not in Grid area. Will be shut to non-active.\n")},
    });
    EXPECT_EQ(run("monitor list @m.td1").err, "");
    EXPECT_EQ(run("points list @m.td1").out.find("4\t0\t99"),
              run("points list @m.td1").out.find("4\t"));
}

TEST_F(MonitorCommands, a_point_has_the_cell_that_the_simulator_gets) {
    prepare("project set @m.td1 GRIDPOSITION RAD 0.3\nproject set @m.td1 GRIDPOSITION MOVED -1\n"
            "project set @m.td1 GRIDPOSITION TOP 2");
    for (const std::string orientation : {"0", "1"}) {
        prepare("flags set @m.td1 1 4 " + orientation);
        make_input();
        std::istringstream records(run("monitor list @m.td1").out);
        std::string I, layers, rows, line;
        while (std::getline(records, line)) {
            std::istringstream fields(line);
            std::string slot, name, state;
            int column = 0, row = 0, layer = 0;
            fields >> slot >> name >> state >> column >> row >> layer;
            if (state == "active") {
                I += fmt::format("{}{}", I.empty() ? "" : " ", column);
                rows += fmt::format("{}{}", rows.empty() ? "" : " ", 3 - row);
                layers += fmt::format("{}{}", layers.empty() ? "" : " ",
                                      orientation == "0" ? 3 - layer : layer);
            }
        }
        EXPECT_EQ(I, "1 3");
        EXPECT_EQ(first_numbers("PMONIX").substr(0, I.size()), I);
        EXPECT_EQ(first_numbers(orientation == "0" ? "PMONIY" : "PMONIZ").substr(0, rows.size()),
                  rows);
        EXPECT_EQ(first_numbers(orientation == "0" ? "PMONIZ" : "PMONIY").substr(0, layers.size()),
                  layers);
    }
}

TEST_F(MonitorCommands, series_are_read_in_the_units_of_the_chart) {
    make_input();
    expect({
        {"monitor files @m.td1", refused("Temporal Development: No Monitoring Files available.")},
        {"monitor read @m.nml 100", failure("cannot be read: No such file or directory (@m.100)")},
    });
    make_series();
    folder.write("m.300", "head\n 0 1 2\n");
    const std::string rest = "\t0\t0.2\t0.000001\t0.0000000000001\t20.5\t3\t4\n";
    expect({
        {"monitor files @m.td1", done("1\t100\tm.100\n3\t300\tm.300\n10\t100\tm.100\n"
                                      "30\t300\tm.300\n100\t100\tm.100\n")},
        {"monitor params @m.nml",
         done("3\tHead\t [m]\n4\tVelocity (X)\t [m/day]\n5\tVelocity (Y)\t [m/day]\n"
              "6\tVelocity (Z)\t [m/day]\n7\tPorosity\t [/]\n"
              "8\tHydraulic Conductivity\t [m/s]\n9\tPermeability\t [m²]\n"
              "10\tTemperature\t [°C]\n11\tThermal Conductivity\t [W/(m K)]\n12\tpe\t \n")},
        {"monitor read @m.td1 100", done("1\t1\t10\t1.0006849315068493E+00\t-1" + rest +
                                         "3\t1\t10\t1.0006849315068493E+00\t-1" + rest)},
        {"monitor read @m.td1 .100 --param 'Heat Conductivity'", done("1\t3\n3\t3\n")},
        {"monitor read @m.td1 100 --param Cl",
         wrong_usage(
             "--param: \"Cl\" is no parameter of the series; td monitor params prints them")},
        {"monitor read @m.td1 300", refused("Tervex Desk: @m.300 Error in file structure - ")},
        {"monitor csv @m.td1 100 @s.csv", done()},
        {"monitor csv @m.td1 100 @m.100", wrong_usage("TARGET: @m.100 is the file that is read")},
    });
    EXPECT_TRUE(folder.read("s.csv").ends_with(
        ",pe\n1,1,10,1.0006849315068493E+00,-1,0,0.2,0.000001,0.0000000000001,20.5,3,4\n"
        "3,1,10,1.0006849315068493E+00,-1,0,0.2,0.000001,0.0000000000001,20.5,3,4\n"));
}

TEST_F(MonitorCommands, logs_are_made_from_the_result_and_shown_by_point) {
    make_input();
    expect({
        {"depthlog make @m.td1 --file @m.nml",
         done("", "Import Data: File @m.cal sucessfully written.\n")},
        {"depthlog show @m.td1 B 0",
         done("title\tMonitoring Point: B\nlabel\tTemperature [°C]\n10\t0.5\n10\t1.5\n")},
        {"depthlog show @m.td1 B 9", failure("has no solute 1, its logs hold 0 solutes (@m.cal)")},
        {"depthlog show @m.td1 C 0", failure("has no log of the Monitoring Point \"C\" (@m.cal)")},
        {"depthlog show @m.td1 B 11",
         wrong_usage("INDEX: \"11\" is not a whole number from 0 to 10")},
    });
    const Outcome missing = run("depthlog make @m.td1");
    EXPECT_EQ(missing.status, td::run_time_failure);
    EXPECT_TRUE(missing.err.ends_with(
        in_folder("(@m.nlo)\nImport Data: Error occured -> @m.cal not complete.\n")))
        << missing.err;
    std::filesystem::create_directory(folder.path() / "old");
    folder.write("old/run.nlo", folder.read("m.nml"));
    expect({{"depthlog make @m.td1 --file @old/run.nlo",
             done("", "Import Data: File @old/run.cal sucessfully written.\n")}});
    std::filesystem::remove(folder.path() / "m.cal");
    std::filesystem::create_directory(folder.path() / "m.cal");
    expect({{"depthlog make @m.td1 --file @m.nml",
             failure("cannot be read: Is a directory (@m.cal)\n"
                     "Import Data: Error occured -> @m.cal not complete.")}});
}

TEST_F(MonitorCommands, balances_are_imported_and_shown) {
    make_series();
    expect({
        {"mass-balance table @m.td1",
         done("A\t1\t1\t2\t0.5\t1.5\t0.5\t100\nB\t3\t1\t2\t2.5\t1.5\t0.5\txxx\n")},
        {"mass-balance import @m.td1 --points 2",
         refused("Import Simulation Data: Choose Direction for Mass Balance Calculation")},
        {"mass-balance import @m.td1 --direction X",
         refused("Import Simulation Data: Choose Monitoring Points for Mass Balance Calculation")},
        {"mass-balance import @m.td1 --direction X --points 2,7",
         refused("Import Simulation Data: Chosen Monitoring File 200 not available. / Check table "
                 "again")},
        {"mass-balance import @m.td1 --direction X --points 101",
         wrong_usage("--points: \"101\" is not a whole number from 1 to 100")},
        {"mass-balance import @m.td1 --direction X --points 2",
         done("", "Import Data: File @m.fwp sucessfully written.\n")},
        {"mass-balance show @m.td1", done("direction\tX\nparameters\tWater\n")},
        {"mass-balance show @m.td1 --parameter Water --mode [m³/day]",
         done("title\tMass Balance in direction of X - axis\n1\t1\n3\t1\n")},
        {"mass-balance show @m.td1 --mode [mol]",
         refused("Show Mass Balance: Choose a parameter for which you want to see the data.")},
        {"mass-balance show @m.td1 --parameter Water",
         refused("Show Mass Balance: Choose a mode with which you want to see the data.")},
    });
}

} // namespace

#include "results/smallstream.h"
#include "tdtest.h"

#include <algorithm>

namespace {

class ResultCommands : public TdTest {
protected:
    void write_stream(const std::string& more, const std::string& counters = "0 0 0") const {
        folder.write("m.nlo", smallstream::head(counters) + "# GEOLOGY\r\n24*1\r\n" + more);
    }
    // Both messages of a search, the second one without its line end.
    static std::string missing(const std::string& word) {
        return "Tervex Desk: Error in file format. Can't find choosen parameter " + word +
               "\nTervex Desk: Error in input file structure: Can't find " + word;
    }
};

std::string without_digits_behind(const std::string& text, const std::string& cut) {
    return text.substr(0, text.find(cut));
}

} // namespace

TEST_F(ResultCommands, info_tells_the_first_load) {
    write_stream("# TEMP\r\n24*1\r\n", "3 2 1");
    folder.write("m.100", "");
    EXPECT_EQ(run("result info @m.nlo"),
              done("file\tm.nlo\ncolumns\t2\nrows\t3\nlayers\t4\nsubstances\t3\ncomponents\t2\n"
                   "minerals\t1\ndelx\t10\t20.5\ndely\t0.5\t0.5\t3\ndelz\t8\t4\t2\t1\n"
                   "planes\tX\tY\tZ\ncut\tZ\ntemporal\tyes\n"));
    write_stream("");
    const Outcome outcome = run("result info @m.nlo");
    EXPECT_EQ(outcome.status, td::done);
    EXPECT_EQ(outcome.err, "Tervex Desk: Error in file format. Can't find choosen parameter "
                           "# TEMP\nTervex Desk: Can't find the parameter in the input file! /"
                           "           The default parameter is = Temperature \n");
}

TEST_F(ResultCommands, list_tells_what_can_be_shown) {
    write_stream("# POR\r\n24*1\r\n# TEMP\r\n24*1\r\n# CONC           1\r\n24*1\r\n", "3 2 1");
    EXPECT_EQ(run("result list @m.nlo"),
              done("fixed\tTEMP\tTemperature  [deg. C]\nfixed\tPOR\tPorosity [-]\n"
                   "species\t1\tPH\tPH\nspecies\t2\tSpecies 2\tSpecies 2 [mmol/L]\n"
                   "species\t3\tTracer 1\tTracer 1 [mmol/L]\n"
                   "mineral\t1\tMineral 1\tMineral 1 [mol/m^3]\n"
                   "other\tGEOLOGY\tOther Parameter - GEOLOGY\nother\tPOR\tOther Parameter - POR\n"
                   "other\tTEMP\tOther Parameter - TEMP\n"
                   "other\tCONC           1\tOther Parameter - CONC           1\n"));
}

TEST_F(ResultCommands, read_gives_three_orders) {
    write_stream(smallstream::own_cells("# TEMP"));
    expect({
        {"result read @m.nlo TEMP --layer 1", done("411 412\n421 422\n431 432\n")},
        {"result read @m.nlo TEMP --as raw --layer 4", done("131 132\n121 122\n111 112\n")},
        {"result read @m.nlo temp --as import --layer 1 --no-cache",
         done("111 112\n121 122\n131 132\n")},
        {"result read @m.nlo TEMP --layer 5", failure("layer 5 is outside 1 to 4 (@m.nlo)")},
        {"result read @m.nlo TEMP --as other",
         wrong_usage("--as: \"other\" is none of viewer|raw|import")},
        {"result read @m.nlo PRES", refused(missing("# PRES"))},
        {"result read @m.nlo CONC:Ca", refused(missing("CONC:Ca"))},
        {"result read @m.nlo CONCM:1",
         refused("Tervex Desk: Error in file format. Can't find choosen parameter # CONCM"
                 "           1\nTervex Desk: Error in input file structure: Can't find # CONCM"
                 "           1")},
    });
    const std::string all = run("result read @m.nlo TEMP").out;
    EXPECT_EQ(without_digits_behind(all, "layer 3"), "layer 1\n411 412\n421 422\n431 432\n"
                                                     "layer 2\n311 312\n321 322\n331 332\n");
}

TEST_F(ResultCommands, raw_layers_are_those_of_the_worksheet) {
    for (const std::string orientation : {"horizontal", "vertical"}) {
        make_complete_model("--layers 2 --orientation " + orientation);
        EXPECT_EQ(run("array write @m.td1 6 --define", ".11 .12 .13 .14 .15 .16"), done());
        EXPECT_EQ(run("array write @m.td1 6 --layer 2", ".21 .22 .23 .24 .25 .26"), done());
        prepare("create-input @m.td1 --install @");
        EXPECT_EQ(run("result read @m.td1 POR --as raw --layer 1"),
                  done("0.11 0.12 0.13\n0.14 0.15 0.16\n"));
        EXPECT_EQ(run("result read @m.td1 POR --as raw --layer 2"),
                  run("array read @m.td1 6 --layer 2"));
        for (const auto& file : std::filesystem::directory_iterator(folder.path())) {
            std::filesystem::remove(file);
        }
    }
}

TEST_F(ResultCommands, read_finds_the_file_of_a_project) {
    make_model();
    EXPECT_EQ(run("result read @m.td1 TEMP"),
              refused("Browse for input file?: Can't find default input file! / (" +
                      in_folder("@m.nlo or @m.nml") +
                      ") /  / Do you want to browse for other files?"));
    write_stream("# TEMP\r\n24*-7\r\n");
    EXPECT_EQ(run("result read @m.td1 TEMP --layer 4"), done("-7 -7\n-7 -7\n-7 -7\n"));
}

TEST_F(ResultCommands, damaged_blocks_are_run_time_failures) {
    const auto error = [&](const std::string& block, const std::string& counters = "0 0 0") {
        write_stream(block, counters);
        const Outcome outcome =
            run("result read @m.nlo " + std::string(counters == "0 0 0" ? "TEMP" : "CONC:1"));
        EXPECT_EQ(outcome.status, td::run_time_failure) << outcome.err;
        EXPECT_EQ(outcome.out, "");
        return outcome.err;
    };
    EXPECT_NE(error("# TEMP\r\n20*1 2 2\r\n").find("where value 23 of # TEMP was expected"),
              std::string::npos);
    EXPECT_NE(error("# TEMP\r\nx*1\r\n").find("repeat count of value 1 of # TEMP is \"x\""),
              std::string::npos);
    EXPECT_NE(error("# CONC           1\r\n23*1 0\r\n", "1 1 0")
                  .find("\"# CONC           1\": a concentration of 0 has no pH"),
              std::string::npos);
}

TEST_F(ResultCommands, plane_gives_a_chart_its_data) {
    write_stream(smallstream::own_cells("# VX"));
    EXPECT_EQ(run("result plane @m.nlo VX --cut Y --index -3"),
              done("title\tVelocity (X) [m/day] in section (X/Z) at Y=0    [m.nlo]\n"
                   "xaxis\tX coordinate [m]\nyaxis\t Altitude(Z) [m]\n"
                   "value\tVelocity (X) [m/day]\nx\t5\t20.25\ny\t0.5\t2\t5\t11\n"
                   "row\t9590400\t9676800\nrow\t1.82304E+07\t1.83168E+07\n"
                   "row\t2.68704E+07\t2.69568E+07\n"
                   "row\t3.55104E+07\t3.55968E+07\n"));
    EXPECT_EQ(run("result plane @m.nlo VX --cut x").status, td::wrong_usage);
    EXPECT_EQ(run("result save @m.nlo VX @p.dat --cut X --index 9"), done());
    EXPECT_EQ(without_digits_behind(folder.read("p.dat"), " 1"),
              "IRGRID 3  4 \r\n .25  .75  2.5 \r\n .5  2  5 ");
}

TEST_F(ResultCommands, csv_writes_worksheet_cells) {
    write_stream(smallstream::own_cells("# TEMP"));
    EXPECT_EQ(run("result csv @m.nlo TEMP @t.csv --layer 4"), done());
    EXPECT_EQ(folder.read("t.csv"), "column,row,layer,x [m],y [m],z [m],Temperature  [deg. C]\n"
                                    "1,1,4,5,2.5,0.5,131\n2,1,4,20.25,2.5,0.5,132\n"
                                    "1,2,4,5,0.75,0.5,121\n2,2,4,20.25,0.75,0.5,122\n"
                                    "1,3,4,5,0.25,0.5,111\n2,3,4,20.25,0.25,0.5,112\n");
    EXPECT_EQ(run("result csv @m.nlo POR @u.csv"), refused(missing("# POR")));
    EXPECT_EQ(run("result csv @m.nlo TEMP /dev/null"), done());
    const std::string result = folder.read("m.nlo");
    expect(
        {{"result csv @m.nlo TEMP @m.nlo", wrong_usage("TARGET: @m.nlo is the file that is read")},
         {"result save @m.nlo TEMP @./m.nlo",
          wrong_usage("TARGET: @./m.nlo is the file that is read")},
         {"result csv @m.nlo TEMP @t.csv --layer 0",
          failure("layer 0 is outside 1 to 4 (@m.nlo)")}});
    EXPECT_EQ(folder.read("m.nlo"), result);
    std::filesystem::create_directory(folder.path() / "d.csv");
    EXPECT_EQ(run("result csv @m.nlo TEMP @d.csv"), failure(in_folder("is a folder (@d.csv)")));
}

TEST_F(ResultCommands, tell_why_there_is_no_file) {
    const std::string name = std::string(300, 'm') + ".nlo";
    std::filesystem::create_directory(folder.path() / "d.nlo");
    expect(
        {{"result info @gone.nlo", failure("does not exist (@gone.nlo)")},
         {"result info @d.nlo", failure("is a folder (@d.nlo)")},
         {"result info @" + name, failure("cannot be read: File name too long (@" + name + ")")}});
}

TEST_F(ResultCommands, viewer_keeps_its_settings_beside_the_file) {
    folder.write("m.nml", "");
    expect({
        {"viewer save @m.nml XAngle=350 XSpin=1 VX=True OTHER=True OtherName=RHOCM", done()},
        {"viewer turn @m.nml 20", done("10\t0\t45\n")},
        {"viewer save @m.nml YAngle=1.5", wrong_usage("the view settings cannot hold YAngle=1.5")},
        {"viewer save @m.nml Foo=1",
         wrong_usage("the view settings have no field \"Foo\"; td viewer show prints them")},
        {"viewer show @n.nml", failure("does not exist (@n.nml)")},
    });
    EXPECT_TRUE(folder.read("m.ini").starts_with("350\r\n0\r\n45\r\n 1 \r\n 0 \r\n"));
    const std::string shown = run("viewer show @m.nml").out;
    EXPECT_NE(shown.find("VX\tFalse\nVY\tFalse\nVZ\tFalse\nTEMP\tFalse\nCONC\tFalse\n"
                         "SpeciesName\tElement\nCONCM\tFalse\nMineralName\tMineral\nPHI\tFalse\n"
                         "OTHER\tTrue\nOtherName\tRHOCM\nXScale\t100\n"),
              std::string::npos);
    EXPECT_EQ(std::ranges::count(shown, '\n'), 47);
    folder.write("m.ini", "1\r\n\r\n");
    EXPECT_EQ(run("viewer turn @m.nml 1"),
              done("45\t0\t45\n",
                   " Default settings:  Your input file has changed! /  All parameters are "
                   "default! \n"));
    EXPECT_EQ(run("viewer reset @m.nml"), done());
    EXPECT_EQ(std::ranges::count(run("viewer show @m.nml").out, '\n'), 46);
}

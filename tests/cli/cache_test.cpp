// The binary cache, histograms, plot files.
#include "base/binaryio.h"
#include "results/smallstream.h"
#include "tdtest.h"

#include <chrono>

namespace {

namespace fs = std::filesystem;

class CacheCommands : public TdTest {
protected:
    // A model of 2 x 3 x 4 cells and its result.
    void make_result(const std::string& name = "m.nlo") {
        if (!fs::exists(folder.path() / "m.td1")) {
            prepare("new @m.td1\ngrid set @m.td1 --columns 2 --rows 3 --layers 4 --finish");
        }
        using smallstream::own_cells;
        folder.write(name, smallstream::head("2 0 0") + own_cells("# TEMP") + own_cells("# VX") +
                               own_cells("# CONC           1") + own_cells("# PHI"));
    }
    // Puts `value` into the first cell of the slot, to tell the cache from the text.
    void mark_slot(std::size_t slot, float value) const {
        std::string bytes = folder.read("m.rvb");
        base::singles_to_bytes({&value, 1}, std::span(bytes).subspan(1000 + (slot - 1) * 96, 4));
        folder.write("m.rvb", bytes);
    }
};

} // namespace

TEST_F(CacheCommands, build_and_list_and_read) {
    make_result();
    expect({
        {"cache list @m.td1", done()},
        {"cache read @m.td1 1", refused("Convert Data to Binary: The binary result file does not "
                                        "hold parameter 1.")},
        {"cache build @m.td1 PHI", done()},
        {"cache build @m.td1 tracer1 VX TEMP VX", done()},
        {"cache list @m.td1",
         done("1\t6\tHead\n2\t1\tTemperature\n3\t7\tVelocity (Vx)\n4\t10\tTracer 1\n")},
        {"cache read @m.td1 1 --layer 4", done("111 112\n121 122\n131 132\n")},
        {"cache build @m.td1 SALT", wrong_usage("td cache build: \"SALT\" is none of TEMP PRES POR "
                                                "PERM DICHTE PHI VX VY VZ TRACER1 ... TRACER5")},
        {"cache build @m.td1", wrong_usage("td cache build: NAME is required")},
        {"cache build @m.td1 TEMP --file @gone.nlo",
         failure("cannot be read: No such file or directory (@gone.nlo)")},
    });
    EXPECT_EQ(run("cache read @m.td1 7"), run("result read @m.nlo VX --no-cache"));
    make_result("other.nlo");
    EXPECT_EQ(run("cache build @m.td1 TEMP --file @other.nlo"), done());
    EXPECT_TRUE(fs::exists(folder.path() / "other.rvb"));
}

TEST_F(CacheCommands, what_was_converted_before_a_missing_block_stays) {
    make_result();
    EXPECT_EQ(run_freely("cache build @m.td1 TEMP POR VX"),
              failure(in_folder("has no block \"# POR\" (@m.nlo)")));
    EXPECT_EQ(run("cache list @m.td1"), done("1\t1\tTemperature\n"));
    prepare("new @n.td1\ngrid set @n.td1 --columns 2 --rows 3 --layers 3 --finish");
    EXPECT_EQ(run("cache build @n.td1 VX --file @m.nlo"),
              refused("Convert Data to Binary: The grid of the result file differs from the "
                      "model."));
}

TEST_F(CacheCommands, the_viewer_takes_its_fields_from_an_up_to_date_cache) {
    make_result();
    prepare("cache build @m.td1 TEMP TRACER1");
    mark_slot(1, -1);
    mark_slot(2, -2);
    const std::string age =
        "Convert Data to Binary: The binary result file *.rvb is older than the TERVEX *.nlo "
        "result. / You should update the binary result file in Tools|Convert Data to Binary. / "
        "Data for the Result Viewer are now taken from the *.nlo file.\n";
    expect({
        {"result read @m.nlo TEMP --layer 1", done("-1 412\n421 422\n431 432\n")},
        {"result read @m.td1 CONC:1 --layer 1", done("-2 412\n421 422\n431 432\n")},
        {"result read @m.nlo TEMP --layer 1 --no-cache", done("411 412\n421 422\n431 432\n")},
        {"result read @m.nlo TEMP --layer 1 --as raw", done("431 432\n421 422\n411 412\n")},
        {"result csv @m.nlo TEMP @t.csv", done()},
        {"result save @m.nlo TEMP @t.dat --index 1", done()},
    });
    EXPECT_NE(folder.read("t.csv").find("\n1,3,1,5,0.25,11,-1\n"), std::string::npos);
    EXPECT_NE(folder.read("t.dat").find("\r\n-1  412 \r\n"), std::string::npos);
    fs::last_write_time(folder.path() / "m.rvb",
                        fs::file_time_type::clock::now() - std::chrono::hours(1));
    expect({{"result read @m.nlo TEMP --layer 1", done("411 412\n421 422\n431 432\n", age)},
            {"result read @m.nlo TEMP --layer 1 --no-cache", done("411 412\n421 422\n431 432\n")}});
    fs::resize_file(folder.path() / "m.rvb", 999);
    fs::last_write_time(folder.path() / "m.rvb", fs::file_time_type::clock::now());
    EXPECT_EQ(run("result read @m.nlo TEMP --layer 1"), done("411 412\n421 422\n431 432\n"));
}

TEST_F(CacheCommands, a_plane_becomes_a_plain_table) {
    make_result();
    prepare("result save @m.nlo TEMP @p.dat --cut X\ncache ascii @p.dat @a.dat");
    EXPECT_TRUE(folder.read("a.dat").starts_with(" 3  4 \r\n 111  121  131 \r\n"));
    expect({
        {"cache ascii @p.dat @a.dat", refused("Overwrite file?: The Filename already exist. Do you "
                                              "want to overwrite the file?")},
        {"cache ascii @p.dat @a.dat --yes",
         done("", "Done: Array successfully saved in ASCII format.\n")},
        {"cache ascii @a.dat @b.dat",
         refused("Wrong Format: The Dat File is of wrong format (probably not saved from the "
                 "Result Viewer).")},
    });
}

TEST_F(CacheCommands, a_histogram_is_counted_saved_and_shown) {
    make_result();
    const std::string counted = "mean\t271.5\ndeviation\t112.102264\nvariance\t12566.917\n"
                                "class\t1\t200\t6\nclass\t2\t311.5\t7\n";
    expect({
        {"histogram count @m.td1 --param Temperature --classes 200,311.5", done(counted)},
        {"histogram show @m.td1", failure("does not exist (@m.his)")},
        {"histogram count @m.td1 --param Temperature --classes 200,311.5 --save", done(counted)},
        {"histogram show @m.td1", done("source\tm.nlo\nparam\tTemperature\nmean\t271.5\n"
                                       "deviation\t112.1023\nvariance\t12566.92\n"
                                       "class\t1\t200\t6\nclass\t2\t311.5\t7\n")},
        {"histogram count @m.td1", refused("Tervex Desk: Choose Parameter to display")},
        {"histogram count @m.td1 --param PHI",
         wrong_usage("--param: \"PHI\" is none of "
                     "Pressure|Porosity|Density|Permeability|Head|VX|VY|VZ|Temperature")},
        {"histogram count @m.td1 --param VZ --classes ''",
         refused("Tervex Desk: Error in file format. Can't find choosen parameter # VZ\n"
                 "Tervex Desk: Error in output file structure: Can't find # VZ")},
    });
}

TEST_F(CacheCommands, a_plot_file_is_rewritten) {
    folder.write("m.tal", "TITLE = \"t\"\nVARIABLES = \"X\", \"K\", \"Ca\"\nZONE\n1 2 26\n");
    const std::string done_text = "Rewrite *.tal to *.plt: Rewrite has finished!\n";
    expect({
        {"rewrite-plot @m.tal @m.plt --permeability --rename 2=perm --calc 2=multiply:1E-12 "
         "--molar 3=40",
         done("", done_text)},
        {"rewrite-plot @m.tal @n.plt --rename 2=perm",
         refused("Rewrite *.tal to *.plt: Nothing checked, nothing to be changed!")},
        {"rewrite-plot @m.tal @n.plt --head --calc 1=divide:0", failure("division by 0 (@m.tal)")},
        {"rewrite-plot @m.tal @n.plt --head --rename 4=x",
         failure("column 4 is outside 1 to 3 (@m.tal)")},
        {"rewrite-plot @m.tal @n.plt --head --calc 1=add:1 --molar 1=2",
         wrong_usage("--calc and --molar exclude each other in column 1")},
        {"rewrite-plot @gone.tal @n.plt --head",
         failure("cannot be read: No such file or directory (@gone.tal)")},
    });
    EXPECT_EQ(folder.read("m.plt"), "TITLE = \"t\"\r\nVARIABLES = \"X\",\"perm\",\"Ca\"\r\nZONE\r\n"
                                    " 1  2E-12  .04 \r\n");
}

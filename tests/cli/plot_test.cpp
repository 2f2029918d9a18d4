// td contour, td plot, td plot-colors.
#include "tdtest.h"

namespace {

class Plot : public TdTest {
protected:
    // Cells of 10 m; initial heads 0 to 4, the last cell of row 2 is inactive.
    void make_plot_model() {
        make_model("--layers 2 --column-size 10 --row-size 10");
        EXPECT_EQ(run("array write @m.td1 10 --define", "0 2 4 0 2 4"), done());
        EXPECT_EQ(run("array write @m.td1 5 --define", "1 1 1 1 1 0"), done());
    }
    std::string plot(const std::string& options) {
        EXPECT_EQ(run("plot @m.td1 @p.pgl --unit 1 --install @ " + options), done());
        const std::string file = folder.read("p.pgl");
        EXPECT_TRUE(file.starts_with("IN;VS10.0;SP1;\r\nFT 1;IP 0,0,")) << file;
        EXPECT_TRUE(file.ends_with(";PU;SP0;")) << file;
        return file.substr(file.find("\r\nFT") + 10);
    }
};

TEST_F(Plot, level_files_are_made_and_shown) {
    prepare("contour make @c.ctr --min -1 --max 1 --interval 1 --line-colors 0,255 "
            "--fill-colors 65280,16711680 --label-first 2 --label-every 1 --height 2.5");
    expect({
        {"contour levels @c.ctr", done("-1\t0\t65280\t0\t2.5\t25\n0\t128\t8421376\t1\t2.5\t25\n"
                                       "1\t255\t16711680\t1\t2.5\t25\n")},
        {"contour make @d.ctr --min 2 --max 1 --interval 0",
         refused("Contour Levels: Minimum > Maximum")},
        {"contour make @d.ctr --min 1 --max 1 --interval x",
         refused("Contour Levels: Value must be > 0")},
        {"contour make @d.ctr --min 0 --max 1000 --interval 1",
         refused("Contour Levels: Valid range is 1 to 1000")},
        {"contour make @d.ctr --min 0 --max 2 --interval 1 --label-first 4",
         refused("Contour Labels: Valid range is 1 to 3")},
        {"contour make @d.ctr --min 0 --max 2 --interval 1 --label-every 0",
         refused("Contour Labels: Value must be > 0")},
        {"contour make @d.ctr --min 0 --max 2 --interval 1 --height -1",
         refused("Label Height: Value must be > 0")},
        {"contour make @d.ctr --min 0 --max 2 --interval 1 --spacing wide",
         refused("Label Spacing: Please enter a valid value")},
        {"contour make @d.ctr --min 0 --max 2 --interval 1 --fill-colors 7",
         wrong_usage("--fill-colors: two colours are needed, LOW,HIGH")},
    });
    folder.write("d.ctr", "\1");
    expect({{"contour levels @d.ctr", refused("Open File: @d.ctr is not a contour file!")}});
}

TEST_F(Plot, labels_are_fixed_or_have_an_exponent) {
    expect({
        {"contour text --style fixed --prefix 'h = ' --suffix ' m' 0.125 0 -3",
         done("h = 0.13 m\nh = 0.00 m\nh = -3.00 m\n")},
        {"contour text --style fixed --decimals 0 5", done("5.\n")},
        {"contour text --style fixed --decimals 9 0.1", done("0.100000000\n")},
        {"contour text --style exponential 1234 0", done("1.23E+03\n0.00E+00\n")},
        {"contour text --style fixed --decimals 10 1",
         refused("Label Format: Valid range is 0 to 9")},
        {"contour text --style plain 1",
         wrong_usage("--style: \"plain\" is none of exponential|fixed")},
    });
}

TEST_F(Plot, contour_lines_stand_in_the_frame_of_the_grid) {
    make_plot_model();
    prepare("contour make @c.ctr --min 1 --max 3 --interval 2");
    const std::string first = "1\t2\t10\t5\t10\t15\n";
    expect({
        {"contour lines @m.td1 --param 10 --levels @c.ctr", done(first + "3\t2\t20\t5\t20\t15\n")},
        {"contour lines @m.td1 --param 10 --level 1,3 --ignore-inactive", done(first)},
        {"contour lines @m.td1 --param 10 --level 1 --layer 2", done()},
        {"contour lines @m.td1 --param 6 --level 1", done()},
        {"contour lines @m.td1 --param 10", wrong_usage("either --level or --levels is needed")},
        {"contour lines @m.td1 --param 10 --levels @m.td1",
         refused("Open File: @m.td1 is not a contour file!")},
        {"contour lines @m.td1 --param 10 --level x",
         wrong_usage("--level: \"x\" is not a number")},
    });
    EXPECT_EQ(run("array list @m.td1").out, "5\t.ibd\n10\t.hea\n") << "nothing was created";
}

TEST_F(Plot, the_sheet_shows_the_grid_in_its_place_and_local_display_the_grid_alone) {
    make_plot_model();
    const std::string mesh = "SP8;PU0,20;PD0,0;PU10,20;PD10,0;PU20,20;PD20,0;PU30,20;PD30,0;"
                             "PU0,20;PD30,20;PU0,10;PD30,10;PU0,0;PD30,0;PU;SP0;";
    EXPECT_EQ(plot(""), "0,0,30,20;\r\n" + mesh);
    EXPECT_EQ(plot("--show inactive"), "0,0,30,20;\r\nSP8;PU20,10;RA30,0;PU;SP0;");
    prepare("project set @m.td1 GRIDPOSITION LEFT 100\n"
            "project set @m.td1 GRIDPOSITION TOP 50\n"
            "project set @m.td1 DIMENSION SHEET_X2 200\n"
            "project set @m.td1 DIMENSION SHEET_Y2 80");
    EXPECT_EQ(plot("--show inactive"), "0,0,200,80;\r\nSP8;PU120,40;RA130,30;PU;SP0;");
    EXPECT_EQ(plot("--display local"), "0,0,30,20;\r\n" + mesh);
    prepare("project set @m.td1 GRIDPOSITION RAD 0.5235988");
    EXPECT_EQ(plot("--show inactive"), "0,0,200,80;\r\nSP8;PU122,51;PD131,56;PU131,56;PD136,48;"
                                       "PU136,48;PD127,43;PU127,43;PD122,51;PU;SP0;");
}

TEST_F(Plot, zones_points_bands_and_labelled_lines_are_drawn) {
    make_plot_model();
    folder.write("SCREEN.FON", "49 4 2\r\n0 2 0\r\n0 9 1\r\n46 1 0\r\n48 1 0\r\n");
    prepare("points set @m.td1 1 --x 5 --y 15 --name 1 --active 1\n"
            "points set @m.td1 2 --x 25 --y 15 --name 1 --active 0\n"
            "zones add @m.td1 --param 10 --value 3 --nodes '1,1 9,1 9,9'");
    EXPECT_EQ(plot("--show bores"), "0,0,30,20;\r\nPU5,15;CI0, 15;PU6,15;PD6,15;PU;SP0;");
    EXPECT_EQ(plot("--show zones --param 10"),
              "0,0,30,20;\r\nPU1,19;PD9,19;PU9,19;PD9,11;PU9,11;PD1,19;PU;SP0;");
    prepare("contour make @m.ctr --min 1 --max 1 --interval 1 --line-colors 255,255 "
            "--fill-colors 65280,65280 --label-first 1 --height 1.4 --spacing 4");
    // The inactive cell is a corner of the only other quad; the label runs down its line, its top
    // to the right, where the values are higher.
    EXPECT_EQ(plot("--show contours,fill --param 10"),
              "0,0,30,20;\r\nSP3;PU10,15;RA15,5;SP5;PU10,15;PD10,11;"
              "PU9,9;PD11,9;PU;SP0;");
}

TEST_F(Plot, the_name_or_the_option_tells_the_format) {
    make_plot_model();
    prepare("plot @m.td1 @a.DXF\nplot @m.td1 @b --format bmp --show mesh,inactive");
    EXPECT_TRUE(folder.read("a.DXF").starts_with("  0\r\nSECTION\r\n"));
    EXPECT_EQ(folder.read("b").substr(0, 2), "BM");
    expect({
        {"plot @m.td1 @p", wrong_usage("the name of the plot file does not tell its format; give "
                                       "--format")},
        {"plot @m.td1 @p --format svg", wrong_usage("--format: \"svg\" is none of DXF|HPGL|BMP")},
        {"plot @m.td1 @p.dxf --show wells",
         wrong_usage("--show: \"wells\" is none of mesh|inactive|zones|contours|fill|bores")},
        {"plot @m.td1 @p.dxf --show fill", wrong_usage("--show: contours and fill need --param")},
        {"plot @m.td1 @p.dxf --unit 0", wrong_usage("--unit has to be above 0")},
        {"plot @m.td1 @m.td1/p.dxf", failure("cannot be written: Not a directory (@m.td1/p.dxf)")},
    });
    folder.write("m.ctr", "\1");
    expect({{"plot @m.td1 @p.dxf --show fill --param 10",
             refused("Open File: @m.ctr is not a contour file!")}});
}

TEST_F(Plot, colors_are_printed_with_their_numbers_in_plot_files) {
    make_model();
    const std::string out = run("plot-colors @m.td1").out;
    EXPECT_TRUE(out.starts_with("MESH\t12632256\t8\t253\nINACTIVE_CELL\t8421504\t8\t251\n")) << out;
    EXPECT_TRUE(out.ends_with("MinTrace\t0\t1\t178\nMaxTrace\t0\t1\t178\n")) << out;
}

} // namespace

// Grid and layers.
#include "tdtest.h"

namespace {

class GridCommands : public TdTest {
protected:
    void SetUp() override { prepare("new @m.td1"); }
};

TEST_F(GridCommands, a_new_model_has_no_grid_yet) {
    expect({{"grid show @m.td1 --edges",
             done("dimension\t30\t30\t1\norientation\t0\ndefined\t0\norigin\t0\t0\nangle\t0\n"
                  "sheet\t0\t0\t1000\t1000\nmoved\t0\n")}});
}

TEST_F(GridCommands, set_writes_grid_layers_and_sheet) {
    EXPECT_EQ(run("grid set @m.td1 --columns 3 --column-size 10.5 --rows=2 --row-size .25 "
                  "--layers 2"),
              done());
    EXPECT_EQ(folder.read("m.xy"), " 3  2  2 \r\n 10.5 \r\n 10.5 \r\n 10.5 \r\n .25 \r\n .25 \r\n");
    EXPECT_EQ(folder.read("m.l"), " 2 \r\n 0 \r\n 0 \r\n 1 \r\n 1 \r\n 0  0  0  0  0  0 \r\n"
                                  " 0  0  0  0  0  0 \r\n 0 \r\n 0 \r\n");
    const std::string project = folder.read("m.td1");
    EXPECT_NE(project.find("SHEET_X2=63\r\nSHEET_Y2=1\r\n"), std::string::npos);
    EXPECT_NE(project.find("MOVED=0\r\n"), std::string::npos);
    expect({{"grid show @m.td1 --edges",
             done("dimension\t3\t2\t2\norientation\t0\ndefined\t1\norigin\t0\t0.5\nangle\t0\n"
                  "sheet\t0\t0\t31.5\t0.5\nmoved\t1\ncolumns\t10.5\t10.5\t10.5\n"
                  "rows\t0.25\t0.25\nx\t0\t10.5\t21\t31.5\ny\t0\t0.25\t0.5\n")}});
}

TEST_F(GridCommands, set_without_options_takes_thirty_cells_of_one_metre) {
    EXPECT_EQ(run("grid set @m.td1"), done());
    const std::string grid = run("grid show @m.td1").out;
    EXPECT_TRUE(grid.starts_with("dimension\t30\t30\t1\n")) << grid;
    EXPECT_NE(grid.find("\ncolumns\t1\t1\t1"), std::string::npos);
}

TEST_F(GridCommands, set_marks_the_mesh_and_finish_its_end) {
    prepare("grid set @m.td1");
    EXPECT_EQ(flag("1 2") + flag("1 3") + flag("0 1"), "201");
    prepare("grid set @m.td1 --finish");
    EXPECT_EQ(flag("1 3"), "2");
}

TEST_F(GridCommands, the_orientation_is_chosen_once) {
    expect({
        {"grid set @m.td1 --orientation vertical",
         done("", "Warning: Layers are now understood as vertical cross sections. / Once saved, "
                  "this cannot be changed anymore!\n")},
        {"grid set @m.td1 --orientation horizontal",
         refused("Tervex Desk: The orientation of a saved model cannot be changed.")},
        {"project show @m.td1 INFO", done("INFO\tDESCRIPTION\tVertical -\n")},
        {"new @n.td1", done()},
        {"grid set @n.td1 --orientation cylindrical",
         done("", "Warning: The model is now understood as cylindrical symmetric. / Once saved, "
                  "this cannot be changed anymore!\n")},
        {"grid set @n.td1 --orientation round",
         refused("Tervex Desk: The orientation of a saved model cannot be changed.")},
    });
    EXPECT_EQ(flag("1 4"), "1");
}

TEST_F(GridCommands, every_size_must_be_positive) {
    const Outcome refusal = refused("Error: Please enter a positive value.");
    for (const std::string option : {"layers", "columns", "column-size", "rows", "row-size"}) {
        for (const std::string value : {" 0", " -1", "=-2", " x", " ''"}) {
            EXPECT_EQ(run("grid set @m.td1 --" + option + value), refusal) << option << value;
        }
    }
    expect({
        {"grid set @m.td1 --columns 2001",
         refused("Tervex Desk: The maximumm number of columns is 2000")},
        {"grid set @m.td1 --rows 2001",
         refused("Tervex Desk: The maximumm number of rows is 2000")},
        {"grid set @m.td1 --columns 2000 --rows 1", done()},
    });
}

TEST_F(GridCommands, the_size_is_fixed_while_arrays_exist) {
    prepare("grid set @m.td1 --columns 3 --rows 2\narray create @m.td1 6");
    const Outcome refusal = refused("Tervex Desk: The size cannot be changed while arrays exist. "
                                    "Use the refinement.");
    expect({
        {"grid set @m.td1 --columns 4", refusal},
        {"grid set @m.td1 --rows 3", refusal},
        {"grid set @m.td1 --layers 2", refusal},
        {"grid set @m.td1 --column-size 4", done()},
    });
}

TEST_F(GridCommands, the_first_mesh_removes_stale_arrays) {
    prepare("grid set @m.td1 --columns 3 --rows 2\narray create @m.td1 6\nnew @m.td1 --yes\n"
            "grid set @m.td1 --columns 4 --rows 2");
    EXPECT_EQ(run("array list @m.td1"), done());
}

TEST_F(GridCommands, single_widths_are_set_in_one_step) {
    prepare("grid set @m.td1 --columns 3 --rows 2");
    const Outcome positive = refused("Error: Please enter a positive value!");
    expect({
        {"grid size @m.td1 --column 2=7.5 --row 1=.5 --column 3=4", done()},
        {"grid size @m.td1 --column 1=3 --row 2=0", positive},
        {"grid size @m.td1 --column 1=-1", positive},
        {"grid size @m.td1 --row 1=wide", positive},
        {"grid size @m.td1 --column 4=1",
         wrong_usage("--column: \"4\" is not a whole number from 1 to 3")},
        {"grid size @m.td1 --row 0=1",
         wrong_usage("--row: \"0\" is not a whole number from 1 to 2")},
        {"grid size @m.td1 --row 1", wrong_usage("\"1\" has no \"=\"")},
    });
    EXPECT_TRUE(run("grid show @m.td1").out.ends_with("columns\t1\t7.5\t4\nrows\t0.5\t1\n"));
}

TEST_F(GridCommands, widths_need_a_mesh) {
    expect({{"grid size @m.td1 --column 1=2",
             refused("Message: The size of the model mesh has to be specified first.")}});
}

TEST_F(GridCommands, layers_have_type_thickness_and_options) {
    prepare("grid set @m.td1 --layers 3\n"
            "layers set @m.td1 --unconfined 2 --thickness all=5 --thickness 3=.5");
    folder.write("m.l", folder.read("m.l").substr(0, folder.read("m.l").find(" 0  0")) +
                            " 1  2  3  4  5  6 \r\n 0  0  0  0  0  0 \r\n 0  0  0  0  0  0 \r\n"
                            " 7 \r\n 8.5 \r\n");
    prepare("layers set @m.td1 --type 2=0");
    EXPECT_EQ(run("layers show @m.td1"),
              done("geometry\tthickness\nlayer\t1\t1\t5\t1\t2\t3\t4\t5\t6\n"
                   "layer\t2\t0\t5\t0\t0\t0\t0\t0\t0\nlayer\t3\t0\t0.5\t0\t0\t0\t0\t0\t0\n"
                   "end\t7\t8.5\n"));
    EXPECT_EQ(flag("1 6"), "2");
}

TEST_F(GridCommands, geometry_says_where_thicknesses_come_from) {
    prepare("grid set @m.td1\nlayers set @m.td1 --geometry arrays");
    EXPECT_EQ(flag("0 0"), "0");
    EXPECT_TRUE(run("layers show @m.td1").out.starts_with("geometry\tarrays\n"));
    prepare("layers set @m.td1 --geometry=thickness");
    EXPECT_EQ(flag("0 0"), "1");
}

TEST_F(GridCommands, changes_of_layers_are_tried_in_the_order_given) {
    prepare("grid set @m.td1 --layers 3");
    const Outcome order =
        refused("Wrong Data Input: Unconfined layers below confined layers are not allowed!");
    expect({
        {"layers set @m.td1 --type 2=1", order},
        {"layers set @m.td1 --type 2=1 --type 1=1", order},
        {"layers set @m.td1 --type 1=1 --type 2=1", done()},
        {"layers set @m.td1 --thickness 1=9 --type 1=0", order},
        {"layers set @m.td1 --unconfined 4",
         refused("Input Error: Too many unconfined layer defined! / Value will be reset to none.")},
        {"layers set @m.td1 --type all=1", done()},
        {"layers set @m.td1 --type 1=2",
         wrong_usage("--type: \"2\" is not a whole number from 0 to 1")},
        {"layers set @m.td1 --type 4=1",
         wrong_usage("--type: \"4\" is not a whole number from 1 to 3")},
        {"layers set @m.td1 --thickness 3", wrong_usage("\"3\" has no \"=\"")},
        {"layers set @m.td1 --geometry none",
         wrong_usage("--geometry: \"none\" is none of thickness|arrays")},
    });
    EXPECT_NE(run("layers show @m.td1").out.find("layer\t1\t1\t1\t"), std::string::npos);
}

} // namespace

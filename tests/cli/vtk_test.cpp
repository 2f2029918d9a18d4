// VTK files and formulas of a model of 2 columns, 3 rows and 2 layers.
#include "tdtest.h"

namespace {

const std::string refusal_title = "Convert Data: ";

std::string block(const std::string& key, const std::string& values) {
    return "# " + key + "\r\n" + values + "\r\n";
}

// Lines as they stand in a file.
std::string crlf(std::initializer_list<const char*> lines) {
    std::string text;
    for (const char* line : lines) {
        text += std::string(line) + "\r\n";
    }
    return text;
}

class VtkCommands : public TdTest {
protected:
    void make(const std::string& orientation = "horizontal") {
        prepare("new @m.td1 --yes\n"
                "grid set @m.td1 --columns 2 --rows 3 --layers 2 --finish --orientation " +
                orientation +
                "\ngrid size @m.td1 --column 1=10 --column 2=20 --row 1=1 "
                "--row 2=2 --row 3=.4\n"
                "layers set @m.td1 --geometry thickness --thickness 1=5 "
                "--thickness 2=3\n"
                "project set @m.td1 INFO DESCRIPTION Töpfe");
    }
    void write_result(const std::string& blocks, const std::string& name = "m.nlo") const {
        folder.write(name, blocks);
    }
    static std::string head(const std::string& type, const std::string& counts = "2 3 2") {
        return "# vtk DataFile Version 2.0\r\nT\xF6pfe\r\nASCII\r\n\r\nDATASET " + type +
               "\r\nDIMENSIONS " + counts + "\r\n";
    }
    std::string points(const std::string& name) const {
        return head("STRUCTURED_POINTS") +
               "ORIGIN 0.0 0.0 0.0\r\nSPACING 10 1 5\r\n\r\nPOINT_DATA 12\r\nSCALARS " + name +
               " float\r\nLOOKUP_TABLE DEFAULT\r\n\r\n";
    }
};

} // namespace

TEST_F(VtkCommands, points_take_their_spacing_from_the_first_cells) {
    make();
    write_result(block("TEMP", "1 2 0 -4 .5 1.5E-3 12345678 1.5E-10 5*9"));
    EXPECT_EQ(run("vtk @m.td1 --type points --temp"), done("m-Temperature.vtk\n"));
    EXPECT_EQ(folder.read("m-Temperature.vtk"),
              points("Temperature") + crlf({" 1  2 ", " 0.0 -4 ", " .5  .0015 ",
                                            " 1.234568E+07  1.5E-10 ", " 9  9 ", " 9  9 "}));
    prepare("vtk @m.td1 --type points --temp --scale-x .01 --scale-y -2 --scale-z x");
    EXPECT_NE(folder.read("m-Temperature.vtk").find("\r\nSPACING 0.1 -2 0\r\n"), std::string::npos);
}

TEST_F(VtkCommands, rectilinear_lists_add_whole_sizes_from_the_last_row_and_layer) {
    make();
    write_result(block("PRES", "6*-2,6*0"));
    EXPECT_EQ(run("vtk @m.td1 --type rectilinear --pres --scale-z 2"), done("m-Pressure.vtk\n"));
    EXPECT_EQ(folder.read("m-Pressure.vtk"),
              head("RECTILINEAR_GRID") +
                  crlf({"X_COORDINATES 2 float", " 5  25 ", "Y_COORDINATES 3 float",
                        " .2  2.2  3.2 ", "Z_COORDINATES 2 float", " 3  13 ", "", "POINT_DATA 12",
                        "SCALARS Pressure float", "LOOKUP_TABLE DEFAULT", "", " 2  2 ", " 2  2 ",
                        " 2  2 ", " 0  0 ", " 0  0 ", " 0  0 "}));
    EXPECT_EQ(run("vtk @m.td1 --type grid --pres"), done("m-Pressure.vtk\n"));
    EXPECT_EQ(folder.read("m-Pressure.vtk"), head("STRUCTURED_GRID"));
}

TEST_F(VtkCommands, sections_swap_rows_and_layers) {
    make("vertical");
    write_result(block("POR", "1 2 3 4 8*0"));
    EXPECT_EQ(run("vtk @m.td1 --type rectilinear --por"), done("m-Porosity.vtk\n"));
    EXPECT_EQ(folder.read("m-Porosity.vtk"),
              head("RECTILINEAR_GRID", "2 2 3") +
                  crlf({"X_COORDINATES 2 float", " 5  25 ", "Y_COORDINATES 2 float", " 1.5  6.5 ",
                        "Z_COORDINATES 3 float", " .2  2.2  3.2 ", "", "POINT_DATA 12",
                        "SCALARS Porosity float", "LOOKUP_TABLE DEFAULT", "", " 1  2 ", " 3  4 ",
                        " 0  0 ", " 0  0 ", " 0  0 ", " 0  0 "}));
    prepare("vtk @m.td1 --type points --por");
    EXPECT_NE(folder.read("m-Porosity.vtk").find("\r\nSPACING 10 5 1\r\n"), std::string::npos);
}

TEST_F(VtkCommands, vectors_stand_in_print_zones_at_the_cell_centres) {
    make();
    write_result(block("VX", "1 7 10*0") + block("VY", "2 2 4 4 8 8 6*0") +
                 block("VZ", "6*-1.234567E-08 6*5"));
    EXPECT_EQ(run("vtk @m.td1 --type points --vectors"), done("m-FlowVectors.vtk\n"));
    EXPECT_EQ(folder.read("m-FlowVectors.vtk"),
              head("STRUCTURED_POINTS") +
                  crlf({"ORIGIN 0.0 0.0 0.0", "SPACING 10 1 5", "", "POINT_DATA 12",
                        "VECTORS FlowVectors float", " 1             2            -1.234567E-08 ",
                        " 1             2            -1.234567E-08 ",
                        " 0             3            -1.234567E-08 ",
                        " 0             3            -1.234567E-08 ",
                        " 0             4            -1.234567E-08 ",
                        " 0             4            -1.234567E-08 ",
                        " 0             0            -1.234567E-08 ",
                        " 0             0            -1.234567E-08 ",
                        " 0             0            -1.234567E-08 ",
                        " 0             0            -1.234567E-08 ",
                        " 0             0            -1.234567E-08 ",
                        " 0             0            -1.234567E-08 "}));
    write_result(block("VX", "12*1") + block("VY", "12*1") + block("TEMP", "12*1"));
    EXPECT_EQ(run("vtk @m.td1 --type points --vectors --temp"), done());
}

TEST_F(VtkCommands, ugradT_needs_both_of_its_fields) {
    make();
    const std::string text = "Parameter missing: To calculate u.grad(T), Temperature and Fluid "
                             "Vectors need to be converted.";
    write_result(block("VX", "12*3") + block("VY", "12*0") + block("VZ", "12*0") +
                 block("TEMP", "1 4 1 4 1 4 1 4 1 4 1 4"));
    expect({{"vtk @m.td1 --type points --temp --ugradt", refused(text)},
            {"vtk @m.td1 --type points --vectors --ugradt", refused(text)},
            {"vtk @m.td1 --type points --vectors --temp --ugradt",
             done("m-FlowVectors.vtk\nm-Temperature.vtk\nm-ugradT.vtk\n")}});
    // 3 K over 15 m, times 3 m/s, at one of two faces.
    const std::string row = " .3  .3 \r\n";
    EXPECT_EQ(folder.read("m-ugradT.vtk"), points("ugradT") + row + row + row + row + row + row);
}

TEST_F(VtkCommands, blocks_are_searched_forward) {
    make();
    write_result(block("TEMP", "12*1") + block("POR", "12*2"));
    expect({{"vtk @m.td1 --type grid --temp --por --density", done("m-Porosity.vtk\n")},
            {"vtk @m.td1 --type grid --density --temp", done()},
            {"vtk @m.td1 --type grid --all", done("m-Temperature.vtk\nm-Porosity.vtk\n")},
            {"vtk @m.td1 --type grid", done()}});
}

TEST_F(VtkCommands, names_come_from_the_companions_and_stay_in_the_folder) {
    make();
    write_result("# ANZSUBS\r\n3\r\n# ANZCHEM\r\n2\r\n# ANZMINS\r\n0\r\n" +
                 block("CONC           1", "12*1E-4") + block("CONC           2", "12*2") +
                 block("CONC           3", "12*0"));
    folder.write("m.flu", "ELEMENTS\r\n../:x 0 0\r\n");
    EXPECT_EQ(run("vtk @m.td1 --type points --species 1,2 --tracers 1"),
              done("m-pH.vtk\nm-..__x.vtk\nm-Tracer-1.vtk\n"));
    const std::string lines = " 7.0000000109712 \r\n 7.0000000109712 \r\n\r\n";
    EXPECT_EQ(folder.read("m-pH.vtk"),
              points("pH") + lines + lines + lines + lines + lines + lines);
    EXPECT_EQ(folder.read("m-Tracer-1.vtk").substr(points("Tracer-1").size(), 12),
              " 0.0  0.0 \r\n");
    std::filesystem::create_directory(folder.path() / "n_PERIOD2");
    std::filesystem::copy_file(folder.path() / "m.nlo", folder.path() / "n_PERIOD2/m.nlo");
    folder.write("n_.flu", "ELEMENTS\r\nNa\r\n");
    EXPECT_EQ(run("vtk @m.td1 --type grid --species 2,7 --file @n_PERIOD2/m.nlo"),
              done("m-Na.vtk\n"));
    EXPECT_EQ(folder.read("n_PERIOD2/m-Na.vtk"), head("STRUCTURED_GRID"));
    write_result("# ANZSUBS\r\n1\r\n# ANZCHEM\r\n1\r\n" + block("CONC           1", "11*1 0"));
    EXPECT_EQ(run("vtk @m.td1 --type points --species 1"),
              failure(in_folder("a concentration of 0 has no pH (@m.nlo)")));
}

TEST_F(VtkCommands, refusals_come_before_anything_is_written) {
    make();
    const std::string no_type = refusal_title + "No data set type chosen! / Please opt for one.";
    const std::string no_file =
        refusal_title + "Default file does not exist! / Please browse for a valid file.";
    expect({{"vtk @m.td1 --type points --all", refused(no_file)},
            {"formula @m.td1 TEMP --type points --file @gone.nlo", refused(no_file)}});
    write_result(block("TEMP", "12*1"));
    write_result("# I0\r\n2\r\n# J0\r\n2\r\n# K0\r\n2\r\n" + block("TEMP", "12*1"), "other.nlo");
    const std::string other = "The grid of the result file differs from the model.";
    expect({{"vtk @m.td1 --all", refused(no_type)},
            {"formula @m.td1 TEMP", refused(no_type)},
            {"formula @m.td1 ' ' --type points",
             refused(refusal_title + "No formula defined! / Please define calculation.")},
            {"vtk @m.td1 --type points --all --file @other.nlo", refused(refusal_title + other)},
            {"vtk @m.td1 --format vtr --all --file @other.nlo", refused(refusal_title + other)},
            {"formula @m.td1 TEMP --type points --file @other.nlo",
             refused("Convert TERVEX results with Formula: " + other)},
            {"vtk @m.td1 --type cube", wrong_usage("--type: \"cube\" is none of "
                                                   "points|grid|rectilinear")},
            {"formula @m.td1 TEMP --type grid",
             wrong_usage("--type: \"grid\" is none of points|rectilinear")},
            {"vtk @m.td1 --type points --minerals 1,100",
             wrong_usage("--minerals: \"100\" is not a whole number from 1 to 99")}});
}

TEST_F(VtkCommands, a_truncated_block_leaves_the_files_before_it) {
    make();
    write_result(block("PRES", "12*1") + block("TEMP", "11*1"));
    const Outcome outcome = run_freely("vtk @m.td1 --type grid --pres --temp");
    EXPECT_EQ(outcome.status, td::run_time_failure);
    EXPECT_EQ(outcome.out, "m-Pressure.vtk\n");
    EXPECT_NE(outcome.err.find("where value 12 of # TEMP was expected"), std::string::npos);
    EXPECT_TRUE(std::filesystem::exists(folder.path() / "m-Pressure.vtk"));
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "m-Temperature.vtk"));
    EXPECT_EQ(run("vtk @m.td1 --format vtr --pres --temp").status, td::run_time_failure);
}

TEST_F(VtkCommands, a_formula_is_written_with_plain_zeros) {
    make();
    write_result(block("GEOLOGY", "1 7 10*0") + block("PERM", "12*-2"));
    EXPECT_EQ(run("formula @m.td1 'GEOLOGY7 * PERM' --type points"), done("m-Calc.vtk\n"));
    const std::string zeros = " 0  0 \r\n";
    EXPECT_EQ(folder.read("m-Calc.vtk"),
              points("Calc") + " 0 -2 \r\n" + zeros + zeros + zeros + zeros + zeros);
    expect({{"formula @m.td1 'PERM + GWB' --type points",
             failure("-2 is outside 0 to 120 of the table GWB (@m.nlo)")}});
}

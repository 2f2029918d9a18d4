// Rock, heat, tracers, dispersion, injected concentrations, multiple continua.
#include "tdtest.h"

namespace {

class RockCommands : public TdTest {
protected:
    void SetUp() override { make_model(); }

    void define(const char* array, const char* values) {
        for (const char* layer : {"1", "2"}) {
            EXPECT_EQ(run(std::string("array write @m.td1 ") + array + " --define --layer " + layer,
                          values),
                      done());
        }
    }
};

constexpr const char* title = "Permeability / Porosity Definition: ";
constexpr const char* saved =
    "Permeability / Porosity Definition: Initial distribution of Porosity "
    "and Permeability is saved. You can adapt the values in the "
    "cell-by-cell mode.\n";

TEST_F(RockCommands, rock_properties_are_shown_line_by_line) {
    prepare("rock set @m.td1 --zones 2 --porosity 1=0.10 --porosity 2=.3 --permeability all=1E-13 "
            "--anisotropy-x 2=0.5 --compressibility 5E-9");
    EXPECT_EQ(
        run("rock show @m.td1"),
        done("zones\t2\n2\tPor\t0.10\t.3\n3\tPerm\t1E-13\t1E-13\n5\tANISOI\t1.\t0.5\n"
             "6\tANISOJ\t1.\t1.\n7\tXANG\t0.\t0.\n8\tYANG\t0.\t0.\n10\tRhoCm\t2.06\t2.06\n"
             "11\tCond\t2.9\t2.9\n12\tHPF\t0.\t0.\n13\tWLXANI\t1.\t1.\n14\tWLYANI\t1.\t1.\n"));
    EXPECT_EQ(flag("1 0") + flag("0 1"), "21");
    EXPECT_TRUE(folder.read("m.typ").ends_with("\r\n5E-9\r\n998.0\r\n"));
    prepare("rock set @m.td1 --compress 1=1E-9");
    EXPECT_NE(run("rock show @m.td1").out.find("\n4\tCompress\t1E-9\t"), std::string::npos);
    EXPECT_TRUE(run("rock show @m.td1 ").out.starts_with("zones\t2\n"));
}

TEST_F(RockCommands, a_model_without_rock_file_has_fifteen_zones) {
    const std::string shown = run("rock show @m.td1").out;
    EXPECT_TRUE(shown.starts_with("zones\t15\n2\tPor\t0.25\t0.25\t"));
    EXPECT_NE(shown.find("\n6\tANIOSJ\t1.\t"), std::string::npos);
}

TEST_F(RockCommands, property_zones_build_porosity_and_permeability) {
    define("1403", "1 2 1 2 1 3");
    EXPECT_EQ(
        run("rock set @m.td1 --zones 2 --porosity 1=.1 --porosity 2=.3 --permeability 2=-2E-9"),
        done("", saved));
    expect({{"array read @m.td1 6 --layer 2", done("0.1 0.3 0.1\n0.3 0.1 0\n")},
            {"array read @m.td1 1401", done("1E-12 -2E-09 1E-12\n-2E-09 1E-12 0\n")}});
}

TEST_F(RockCommands, arrays_defined_cell_by_cell_are_overwritten_after_a_question) {
    define("1403", "1 1 1 1 1 1");
    prepare("rock set @m.td1");
    const std::string question =
        " values are already defined in the cell-by-cell mode. When you go "
        "on these values will be overwriten. Continue?";
    const struct {
        const char *array, *what;
    } defined[] = {{"6", "Porosity"}, {"1401", "Permeability"}};
    for (const auto& d : defined) {
        define(d.array, "5 5 5 5 5 5");
        expect({{"rock set @m.td1 --porosity 1=1", refused(title + (d.what + question))},
                {"rock set @m.td1 --porosity 1=1 --no", refused("")},
                {"rock set @m.td1 --yes", done("", saved)}});
    }
    define("6", "5 5 5 5 5 5");
    define("1401", "5 5 5 5 5 5");
    expect({{"rock set @m.td1", refused(title + ("Porosity and Permeability" + question))},
            {"rock set @m.td1 --yes", done("", saved)},
            {"array read @m.td1 6", done("0.25 0.25 0.25\n0.25 0.25 0.25\n")}});
    EXPECT_EQ(flag("2 1") + flag("2 2"), "00");
}

TEST_F(RockCommands, zones_outside_are_wrong_usage) {
    expect({
        {"rock set @m.td1 --zones 16",
         wrong_usage("--zones: \"16\" is not a whole number from 1 to 15")},
        {"rock set @m.td1 --zones 2 --porosity 3=1",
         wrong_usage("--porosity: \"3\" is not a whole number from 1 to 2")},
        {"heat set @m.td1 --capacity none=1",
         wrong_usage("--capacity: \"none\" is not a whole number from 1 to 15")},
        {"heat set @m.td1 --capacity 1", wrong_usage("\"1\" has no \"=\"")},
    });
}

TEST_F(RockCommands, heat_changes_its_block_and_the_two_constants) {
    prepare("rock set @m.td1 --zones 2\n"
            "heat set @m.td1 --capacity all=2.5 --conductivity 2=3.4567 --production 1=-1E-6");
    EXPECT_EQ(flag("9 13") + flag("10 8"), "20");
    EXPECT_NE(run("rock show @m.td1")
                  .out.find("10\tCapacity\t2.5\t2.5\n11\tCond\t2.9\t3.4567\n"
                            "12\tHPF\t-1E-6\t0.\n"),
              std::string::npos);
    prepare("heat set @m.td1 --basal 0.065 --fluid-production 1E-7");
    EXPECT_EQ(flag("10 8"), "2");
    EXPECT_NE(folder.read("m.typ").find("\r\n0.065\r\n1E-7\r\n"), std::string::npos);
}

TEST_F(RockCommands, blocks_are_taken_from_another_rock_file) {
    prepare("new @n.td1\nrock set @n.td1 --zones 2 --porosity all=.5\n"
            "heat set @n.td1 --capacity all=7\nheat load @m.td1 @n.mco");
    EXPECT_NE(run("rock show @m.td1").out.find("\n10\tCapacity\t7\t7"), std::string::npos);
    EXPECT_EQ(run("rock show @m.td1").out.find("\t.5"), std::string::npos);
    prepare("rock load @m.td1 @n.mco");
    EXPECT_NE(run("rock show @m.td1").out.find("\n2\tPor\t.5\t.5"), std::string::npos);
    folder.write("x.mco", "Fluid Floor\r\n");
    const Outcome wrong = refused("Message: File has a wrong format.");
    const Outcome gone = failure("cannot be read: No such file or directory (@gone)");
    expect({{"rock load @m.td1 @x.mco", wrong},
            {"heat load @m.td1 @x.mco", wrong},
            {"rock load @m.td1 @gone", gone},
            {"heat load @m.td1 @gone", gone}});
}

TEST_F(RockCommands, clearing_a_block_asks_first) {
    prepare("rock set @m.td1 --zones 2 --porosity all=.5");
    const Outcome question =
        refused("Tervex Desk: This will clear the Table of Properties. Continue?");
    expect({{"rock clear @m.td1", question},
            {"rock clear @m.td1 --no", refused("")},
            {"heat clear @m.td1", question},
            {"heat clear @m.td1 --no", refused("")}});
    prepare("heat clear @m.td1 --yes");
    EXPECT_NE(run("rock show @m.td1").out.find("\n2\tPor\t.5\t.5\n"), std::string::npos);
    EXPECT_EQ(run("rock show @m.td1").out.find("2.06"), std::string::npos);
    prepare("rock clear @m.td1 --yes");
    EXPECT_EQ(run("rock show @m.td1").out.find("\t.5"), std::string::npos);
}

TEST_F(RockCommands, tracers_are_five_rows) {
    EXPECT_EQ(run("tracer set @m.td1 --tracer 1 --active 1 --concentration 2.5 --betac -0.1 "
                  "--tracer 3 --active 1 --concentration x"),
              done());
    EXPECT_EQ(run("tracer show @m.td1"),
              done("1\t-1\t2.5\t-0.1\n2\t0\t0\t0\n3\t-1\t0\t0\n4\t0\t0\t0\n5\t0\t0\t0\n"));
    EXPECT_TRUE(
        folder.read("m.ttc").starts_with(" 1            -1             2.5          -.1 \r\n"));
    EXPECT_EQ(flag("9 8"), "2");
    expect({{"tracer set @m.td1 --active 1",
             wrong_usage("td tracer set: --active stands before --tracer")},
            {"tracer set @m.td1 --tracer 6",
             wrong_usage("--tracer: \"6\" is not a whole number from 1 to 5")},
            {"tracer set @m.td1 --tracer 1 --active -1",
             wrong_usage("--active: \"-1\" is not a whole number from 0 to 1")}});
}

TEST_F(RockCommands, tracers_come_from_zones_or_arrays) {
    expect({{"tracer source @m.td1 zones", done()},
            {"tracer source @m.td1", done("zones\n")},
            {"tracer source @m.td1 arrays", done()},
            {"tracer source @m.td1", done("arrays\n")},
            {"tracer source @m.td1 both",
             wrong_usage("td tracer source: \"both\" is none of zones|arrays")}});
}

TEST_F(RockCommands, dispersion_keeps_texts_as_typed) {
    expect(
        {{"dispersion show @m.td1", done("diffusion\t0.5\ntransverse\t2.00\nlongitudinal\t2.00\n")},
         {"dispersion set @m.td1 --diffusion .70 --longitudinal=-3", done()},
         {"dispersion show @m.td1", done("diffusion\t.70\ntransverse\t2.00\nlongitudinal\t-3\n")}});
    EXPECT_EQ(folder.read("m.tma"), ".70,2.00,-3\r\n");
    EXPECT_EQ(flag("9 9"), "2");
}

TEST_F(RockCommands, injected_concentrations_have_a_row_per_well) {
    prepare("tracer set @m.td1 --tracer 1 --active 1 --tracer 4 --active 1");
    define("11", "0 -0.5 0 0.25 0 0");
    const std::string set = "reinjection set @m.td1 --well 3 --species ";
    expect({
        {"reinjection show @m.td1",
         done("1\t0.25\t0\t0\n2\t-0.5\t0\t0\n3\t0.25\t0\t0\n4\t-0.5\t0\t0\n")},
        {set + "2 --value -1.5", done()},
        {"reinjection show @m.td1",
         done("1\t0.25\t0\t0\n2\t-0.5\t0\t0\n3\t0.25\t0\t-1.5\n4\t-0.5\t0\t0\n")},
        {set + "3 --value 1", wrong_usage("--species: \"3\" is not a whole number from 1 to 2")},
        {"reinjection set @m.td1 --well 5 --species 1 --value 1",
         wrong_usage("--well: \"5\" is not a whole number from 1 to 4")},
        {"tracer set @m.td1 --tracer 4 --active 0", done()},
        {"reinjection show @m.td1",
         done("1\t0.25\t0\n2\t-0.5\t0\n3\t0.25\t0\n4\t-0.5\t0\n",
              "Tervex Desk: Species list has changed since last opening! / You have to define new "
              "values.\n")},
        {"tracer set @m.td1 --tracer 1 --active 0", done()},
        {"reinjection show @m.td1",
         refused("Tervex Desk: There is no active Tracer! / You can't edit any value.")},
        {set + "1 --value 1",
         refused("Tervex Desk: There is no active Tracer! / You can't edit any value.")},
    });
    EXPECT_EQ(flag("10 7"), "2");
}

TEST_F(RockCommands, continua_have_four_systems) {
    expect({
        {"boxmodel show @m.td1", done("active\t\nzones\t-\nA\t\t\t\nB\t\t\t\nC\t\t\t\nD\t\t\t\n")},
        {"boxmodel set @m.td1 --active 1 --zones 1,3 --density A=0.5 --density B=2 "
         "--aperture A=1E-3 --aperture B=.0001 --tortuosity A=1 --tortuosity B=2.0",
         done()},
        {"boxmodel show @m.td1",
         done("active\t1\nzones\t1,3\nA\t0.5\t1.000E-03\t1\nB\t2\t1.000E-04\t2.0\n"
              "C\t\t0.000E+00\t\nD\t\t0.000E+00\t\n")},
        {"boxmodel check @m.td1",
         done("A\t5.00E-04\t6.25E-11\nB\t2.00E-04\t3.13E-14\nC\t0.00E+00\t0.00E+00\n"
              "D\t0.00E+00\t0.00E+00\nexchange\tA-B\t4.00E+03\nexchange\tB-C\t0.00E+00\n"
              "exchange\tC-D\t0.00E+00\n")},
        {"boxmodel set @m.td1 --zones -", done()},
        {"boxmodel set @m.td1 --density E=1", wrong_usage("--density: \"E\" is none of A|B|C|D")},
        {"boxmodel set @m.td1 --active 2",
         wrong_usage("--active: \"2\" is not a whole number from 0 to 1")},
    });
    EXPECT_EQ(run("note get @m.td1 BOX P_Zones"), done("-\n"));
}

} // namespace

// Zones, array exchange, search and modify.
#include "tdtest.h"

#include <algorithm>

namespace {

class Zones : public TdTest {
protected:
    Zones() { make_model(); }

    // Whole sessions leave no scratch file.
    std::vector<std::string> scratch() const {
        std::vector<std::string> names = folder.names();
        std::erase_if(names, [](const std::string& name) {
            return name.find('{') == std::string::npos && name.find(".T") == std::string::npos;
        });
        return names;
    }
    // A square of temperature in layer 2 that holds the centres of columns 1 and 2 in row 1.
    void add_square() {
        prepare("zones add @m.td1 --param 1402 --layer 2 --value 50 --nodes "
                "'0,0 2.25,0 2.25,1.25 0,1.25'");
    }
};

TEST_F(Zones, are_added_listed_found_and_transferred) {
    const std::string place = " @m.td1 --param 1402 --layer 2";
    expect({
        {"zones list" + place, done()},
        {"zones add" + place + " --value 50 --nodes '2.25,1.25 0,1.25 0,0  2.25,0'", done("1\n")},
        {"zones add" + place + " --value -5.5 --nodes '2.1,0 3,0 3,2 2.1,0'", done("2\n")},
        {"zones list" + place,
         done("1\t4\t50\t0\t0\t2.25\t1.25\t0\t0\t2.25\t0\t2.25\t1.25\t0\t1.25\n"
              "2\t3\t-5.5\t2.1\t0\t3\t2\t2.1\t0\t3\t0\t3\t2\n")},
        {"zones list @m.td1 --param 1402", done()},
        {"zones contains" + place + " --zone 2 --at 2.9,0.5", done("1\n")},
        {"zones contains" + place + " --zone 1 --at 2.9,0.5", done("0\n")},
        {"zones find" + place + " --at 2.2,0.2", done("1\n")},
        {"zones find" + place + " --at 2.9,0.5", done("2\n")},
        {"zones find" + place + " --at 9,9", done("0\n")},
        {"zones find" + place + " --at 1,0",
         failure("a point and a node of a zone lie both on y = 0")},
        {"zones transfer" + place, done("3\n")},
        {"array read @m.td1 1402 --layer 2", done("50 50 -5.5\n10 10 10\n")},
        {"array read @m.td1 1402 --layer 1", done("10 10 10\n10 10 10\n")},
        {"zones delete" + place + " --zone 1", done()},
        {"zones transfer" + place + " --zone 1", done("1\n")},
        {"zones delete" + place + " --all",
         refused("Zones: Delete all zones in the current layer?")},
        {"zones delete" + place + " --all --no", refused("")},
        {"zones delete" + place + " --all --yes", done()},
        {"zones list" + place, done()},
    });
    EXPECT_EQ(flag("2 0"), "2") << "the item is defined";
    EXPECT_EQ(flag("0 1"), "1") << "the model was edited";
    EXPECT_EQ(scratch(), std::vector<std::string>());
}

TEST_F(Zones, give_each_array_of_the_item_its_value) {
    prepare("zones add @m.td1 --param 8 --value 2E-5,3 --nodes '1,0 2,0 2,2 1,2'\n"
            "zones transfer @m.td1 --param 8");
    EXPECT_EQ(run("array read @m.td1 8").out, "0.0001 0.00002 0.0001\n0.0001 0.00002 0.0001\n");
    EXPECT_EQ(run("array read @m.td1 63").out, "0 3 0\n0 3 0\n");
}

TEST_F(Zones, that_the_digitizer_or_the_dialog_refuse_change_nothing) {
    prepare("array create @m.td1 1402\narray create @m.td1 1403\narray create @m.td1 11\n"
            "array create @m.td1 299");
    std::string nodes, square = " --nodes '0,0 1,0 1,1'";
    for (int node = 0; node < 41; ++node) {
        nodes += std::to_string(node) + "," + std::to_string(node * node) + " ";
    }
    for (const std::string number : {"1402", "1403"}) {
        prepare("zones add @m.td1 --param " + number + " --value 1" + square);
    }
    expect({
        {"zones add @m.td1 --param 1402 --value 1 --nodes '" + nodes + "'",
         refused("Zones: Too many nodes! / The maximum number of nodes is 40. /  / Close the zone "
                 "or Press the right mouse button to abort.")},
        {"zones add @m.td1 --param 1403 --value 16" + square,
         refused("Error: Please enter a value between 1 and 15.")},
        {"zones add @m.td1 --param 11 --value 1" + square,
         refused("Tervex Desk: Specification of zones is not allowed for Wells")},
        {"zones list @m.td1 --param 11",
         refused("Tervex Desk: Specification of zones is not allowed for Wells")},
        {"zones add @m.td1 --param 1402 --value 1 --nodes '0,0 1,0 1,0'",
         wrong_usage("a zone has fewer than 3 nodes")},
        {"zones add @m.td1 --param 1402 --value 1 --nodes '0,0 1'",
         wrong_usage("\"1\" does not have the form X,Y")},
        {"zones add @m.td1 --param 1402 --value 1,2" + square,
         wrong_usage("\"1,2\" has 2 values, the item has 1")},
        {"zones delete @m.td1 --param 1402 --zone 2", wrong_usage("there is no zone 2")},
        {"zones delete @m.td1 --param 1402", wrong_usage("one of --zone and --all is required")},
    });
    for (int zone = 2; zone <= 20; ++zone) {
        EXPECT_EQ(run("zones add @m.td1 --param 1402 --value 1" + square),
                  done(std::to_string(zone) + "\n"));
    }
    expect({{"zones add @m.td1 --param 1402 --value 1" + square,
             refused("Zones: Too many zones! / The maximum number of zones is 20.")}});
}

TEST_F(Zones, go_from_layer_to_layer_by_an_exchange_file) {
    add_square();
    folder.write("other.zon", "BALDO5000_ZONEFILE\r\n");
    expect({
        {"zones export @m.td1 @a.zon --param 1402 --layer 2", done()},
        {"zones import @m.td1 @a.zon --param 1402 --period 3", done("1\n")},
        {"zones import @m.td1 @other.zon --param 1402 --period 3",
         refused("Load Zones: @other.zon is not a zone file!")},
    });
    EXPECT_EQ(run("zones list @m.td1 --param 1402 --period 3").out,
              run("zones list @m.td1 --param 1402 --layer 2").out);
    EXPECT_EQ(run("zones list @m.td1 --param 1402").out, "");
    EXPECT_TRUE(folder.read("a.zon").starts_with("BALDO4000_ASCII_ZONEFILE\r\n 1 \r\n 4  50 "));
}

TEST_F(Zones, of_an_older_file_are_kept_when_it_is_edited) {
    add_square();
    const std::string listed = run("zones list @m.td1 --param 1402 --layer 2").out;
    std::string bytes = folder.read("m.tez");
    folder.write("m.tez", bytes.replace(0, 18, "BALDO4000_ZONEFILE"));
    EXPECT_EQ(run("zones list @m.td1 --param 1402 --layer 2").out, listed);
    prepare("zones add @m.td1 --param 1402 --value 1 --nodes '0,0 1,0 1,1'");
    EXPECT_EQ(run("zones list @m.td1 --param 1402 --layer 2").out, listed);
    EXPECT_TRUE(folder.read("m.tez").starts_with("BALDO5000_ZONEFILE"));
    folder.write("m.tez", std::string(2018, 'x'));
    EXPECT_EQ(run("zones list @m.td1 --param 1402 --layer 2"), done()) << "an unknown file";
}

class ArrayExchange : public Zones {};

TEST_F(ArrayExchange, writes_all_forms_and_the_default_of_a_missing_array) {
    folder.write("in.txt", "1 2 3\n4 5 -6.5\n");
    prepare("array write @m.td1 1402 --layer 2 --file @in.txt");
    const std::string place = "array export @m.td1 @out.txt --param 1402 --layer 2 --form ";
    prepare(place + "wrap");
    EXPECT_EQ(folder.read("out.txt"), " 3  2 \r\n"
                                      "             1             2             3\r\n"
                                      "             4             5          -6.5\r\n");
    prepare(place + "surfer");
    EXPECT_TRUE(
        folder.read("out.txt").starts_with("           0.5           1.5             1\r\n"))
        << folder.read("out.txt");
    prepare(place + "surfer-world");
    EXPECT_TRUE(folder.read("out.txt").ends_with("          -6.5\r\n"));
    prepare("array export @m.td1 @out.txt --param 8 --array 2 --form ascii");
    EXPECT_EQ(folder.read("out.txt"), " 3  2 \r\n"
                                      "             0             0             0\r\n"
                                      "             0             0             0\r\n");
    expect({{"array export @m.td1 @x --param 1402 --form binary",
             wrong_usage("--form: \"binary\" is none of wrap|ascii|surfer|surfer-world")},
            {"array export @m.td1 @x --param 2 --form ascii",
             wrong_usage("--param: 2 is no item of the worksheet")}});
    EXPECT_EQ(folder.names(), (std::vector<std::string>{"in.txt", "m.l", "m.pol", "m.td1", "m.tem",
                                                        "m.xy", "out.txt"}))
        << "nothing is created by reading";
}

TEST_F(ArrayExchange, takes_text_and_grid_files_and_refuses_by_its_boxes) {
    prepare("array create @m.td1 1402");
    folder.write("a.dat", "2 2\n1 2\n3 4\n");
    folder.write("a.GRD", "DSAA\n3 2\n0 1\n0 1\n0 1\n1 2 3\n4 5 6\n");
    folder.write("big.dat", "501 1\n1\n");
    const std::string to = " --param 1402 --layer 2";
    expect({
        {"array import @m.td1 @a.dat" + to + " --at 2,1", done()},
        {"array read @m.td1 1402 --layer 2", done("10 1 2\n10 3 4\n")},
        {"array import @m.td1 @a.GRD" + to, done()},
        {"array read @m.td1 1402 --layer 2", done("4 5 6\n1 2 3\n")},
        {"array import @m.td1 @a.GRD" + to + " --form ascii",
         refused("Load Matrix: @a.GRD contains more than 250000 cell values. / The maximum number "
                 "of cells is 250000.")},
        {"array import @m.td1 @a.dat" + to + " --form grd",
         refused("Load Matrix: @a.datis not a SURFER .GRD file.")},
        {"array import @m.td1 @big.dat" + to,
         refused("Load Matrix: @big.dat contains invalid number of columns or rows. / Valid range "
                 "of the number of rows/column is 1 to 500.")},
        {"array import @m.td1 @gone.dat" + to,
         refused("Load Matrix: The file @gone.dat does not exist.")},
        {"array import @m.td1 @a.dat" + to + " --at 4,1",
         refused("Load Matrix: Valid range is 1 to 3")},
        {"array import @m.td1 @a.dat --param 1402 --array 2",
         wrong_usage("--array: \"2\" is not a whole number from 1 to 1")},
        {"array read @m.td1 1402 --layer 2", done("4 5 6\n1 2 3\n")},
    });
    EXPECT_EQ(scratch(), std::vector<std::string>());
}

TEST_F(ArrayExchange, resets_a_layer_of_a_period) {
    prepare("array create @m.td1 8\narray create @m.td1 63");
    expect({
        {"array reset @m.td1 --param 8 --layer 2 --period 2 --value 1E-7,5", done()},
        {"array read @m.td1 63 --layer 2 --period 2", done("5 5 5\n5 5 5\n")},
        {"array read @m.td1 8 --layer 1 --period 2", done("0.0001 0.0001 0.0001\n0.0001 0.0001 "
                                                          "0.0001\n")},
        {"array reset @m.td1 --param 8 --value 0",
         refused("Error: Please enter a positive value.")},
    });
    EXPECT_EQ(flag("2 4"), "2");
}

class Rules : public Zones {
protected:
    Rules() {
        prepare("array create @m.td1 1402\n"
                "rules set @a.trs --row 2 --active 1 --min 0 --max 100 --value -3 --option add "
                "--color 255\n"
                "rules set @a.trs --row 1 --active 1 --min 50 --max 60 --option display");
    }
};

TEST_F(Rules, are_set_row_by_row_in_a_file_of_50) {
    const std::string listed = run("rules list @a.trs").out;
    EXPECT_TRUE(listed.starts_with("1\t1\t0\t50\t60\t0\tdisplay\n"
                                   "2\t1\t255\t0\t100\t-3\tadd\n"
                                   "3\t0\t0\t0\t0\t0\tdisplay\n"));
    EXPECT_EQ(std::count(listed.begin(), listed.end(), '\n'), 50);
    folder.write("b.trs", "x\n");
    expect({
        {"rules list @b.trs", refused("Load Trace File: @b.trs is not a trace file!")},
        {"rules set @b.trs --row 1", refused("Load Trace File: @b.trs is not a trace file!")},
        {"rules set @a.trs --row 1 --max 1E39",
         refused("Error: Out of range, valid range is -3.402823E38 to -1.401298E-45 for negative "
                 "values and from 1.401298E-45 to 3.402823E38 for positive values.")},
        {"rules set @a.trs --row 51",
         wrong_usage("--row: \"51\" is not a whole number from 1 to 50")},
    });
}

TEST_F(Rules, change_the_layers_of_an_array_and_are_kept_with_the_model) {
    add_square();
    prepare("zones transfer @m.td1 --param 1402 --layer 2");
    expect({
        {"modify @m.td1 --param 1402 --rules @a.trs --layers 2-2",
         done("1\tdisplay\t2\n2\tadd\t4\n")},
        {"array read @m.td1 1402 --layer 2", done("50 50 7\n7 7 7\n")},
        {"array read @m.td1 1402", done("10 10 10\n10 10 10\n")},
        {"modify @m.td1 --param 1402 --rules @a.trs", done("1\tdisplay\t2\n2\tadd\t10\n")},
        {"modify @m.td1 --param 1402 --rules @a.trs --layers 2-1", done()},
        {"modify @m.td1 --param 1402 --rules @a.trs --layers 1-3",
         refused("Error: Valid range is 1 to 2")},
        {"modify @m.td1 --param 1402 --rules @m.td1",
         refused("Load Trace File: @m.td1 is not a trace file!")},
        {"modify @m.td1 --param 1402 --rules @gone",
         failure("cannot be read: No such file or directory (@gone)")},
    });
    EXPECT_EQ(folder.read("m.trs"), folder.read("a.trs"));
    EXPECT_EQ(scratch(), std::vector<std::string>());
}

} // namespace

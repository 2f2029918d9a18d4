// The bare store of parameter arrays.
#include "tdtest.h"

namespace {

class ArrayCommands : public TdTest {
protected:
    void SetUp() override { make_model(); }
};

TEST_F(ArrayCommands, extensions_are_told_without_a_model) {
    expect({
        {"array ext 3", done("3\t.top\t103\t.toz\n")},
        {"array ext 1405", done("1405\t.hbo\t1505\t.hbz\n")},
        {"array ext 83", done("83\t._83\t183\t.z83\n")},
        {"array ext 24", done("24\t.rci\n")},
        {"array ext 1501", done("1501\t.pez\n")},
        {"array ext 1420", done("1420\t.10m\t1520\t.10z\n")},
        {"array ext 42", refused("Tervex Desk: Parameter 42 has no file.")},
        {"array ext 2000", refused("Tervex Desk: Parameter 2000 has no file.")},
        {"array ext 0", wrong_usage("N: \"0\" is not a whole number from 1 to 2000")},
        {"array ext 2001", wrong_usage("N: \"2001\" is not a whole number from 1 to 2000")},
        {"array ext x", wrong_usage("N: \"x\" is not a whole number from 1 to 2000")},
    });
}

TEST_F(ArrayCommands, a_new_file_has_period_1_filled_with_the_default) {
    expect({
        {"array list @m.td1", done()},
        {"array create @m.td1 1402", done("created\n")},
        {"array create @m.td1 1402 --default 99", done("exists\n")},
        {"array create @m.td1 23 --default -2.5E-5", done("created\n")},
        {"array read @m.td1 1402 --layer 2", done("10 10 10\n10 10 10\n")},
        {"array read @m.td1 23", done("-0.000025 -0.000025 -0.000025\n"
                                      "-0.000025 -0.000025 -0.000025\n")},
        {"array info @m.td1 1402", done("layers\t2\nbytes\t4048\nperiod\t1\t1\n")},
        {"array info @m.td1 23", done("layers\t1\nbytes\t4024\nperiod\t1\t1\n")},
        {"array list @m.td1", done("23\t.rch\n1402\t.tem\n")},
        {"array create @m.td1 8 --default 2.5x", done("created\n")},
        {"array get @m.td1 8 1 1", done("2.5\t1\n")},
    });
}

TEST_F(ArrayCommands, a_layer_is_text_one_line_a_row) {
    prepare("flags set @m.td1 0 1 0");
    expect({
        {"array write @m.td1 6 --layer 2", done(), "1 -2 3E-3\n4.5e10\t.5,1D2"},
        {"array read @m.td1 6 --layer 2", done("1 -2 0.003\n4.5E+10 0.5 100\n")},
        {"array read @m.td1 6", done("0 0 0\n0 0 0\n")},
        {"array write @m.td1 6 --period 3", done(), "0.1 16777217 1E-38 7 8 9"},
        {"array read @m.td1 6 --period 3", done("0.1 1.6777216E+07 1E-38\n7 8 9\n")},
        {"array get @m.td1 6 3 2 --period 3", done("9\t1\n")},
        {"array get @m.td1 6 1 1 --period 2 --default 4", done("4\t1\n")},
        {"array get @m.td1 1401 1 1", done("1E-12\t0\n")},
        {"array info @m.td1 6", done("layers\t2\nbytes\t4096\nperiod\t1\t1\nperiod\t3\t2\n")},
        {"array read @m.td1 6 --period 9", done("0.25 0.25 0.25\n0.25 0.25 0.25\n")},
        {"array read @m.td1 6 --period 9 --default -1", done("-1 -1 -1\n-1 -1 -1\n")},
    });
    EXPECT_EQ(flag("0 1"), "0");
}

TEST_F(ArrayCommands, numbers_are_written_so_that_they_read_back_the_same) {
    const std::string layer = "0.1 3.4028235E+38 1.1754944E-38\n-3.3333334E-01 1234567.9 1E-45\n";
    expect({{"array write @m.td1 6", done(), layer}, {"array read @m.td1 6", done(layer)}});
}

TEST_F(ArrayCommands, a_layer_must_have_all_its_numbers) {
    folder.write("layer.txt", "1 2 3 4 5 6 ;");
    expect({
        {"array write @m.td1 6",
         failure("ends behind 5 values, where 6 were expected (standard input)"), "1 2 3 4 5"},
        {"array write @m.td1 6",
         failure("ends behind 0 values, where 6 were expected (standard input)")},
        {"array write @m.td1 6",
         failure("holds more than the 6 values of a layer (standard input)"), "1 2 3 4 5 6 7"},
        {"array write @m.td1 6 --define",
         failure("value 2 is \"2x\", where a number was expected (standard input)"), "1 2x 3"},
        {"array write @m.td1 6 --file @layer.txt",
         failure("value 7 is \";\", where a number was expected (@layer.txt)")},
        {"array write @m.td1 6 --file @gone.txt",
         failure("cannot be read: No such file or directory (@gone.txt)")},
    });
}

TEST_F(ArrayCommands, define_marks_the_item_and_the_model) {
    prepare("flags set @m.td1 0 1 0");
    const struct {
        const char *number, *cell;
    } items[] = {{"1403", "2 11"}, {"5", "1 7"}, {"3", "6 5"}, {"11", "3 2"}, {"1405", "2 7"}};
    for (const auto& item : items) {
        const std::string line = std::string("array write @m.td1 ") + item.number + " --define";
        EXPECT_EQ(run(line, "1 1 1 1 1 1"), done());
        EXPECT_EQ(flag(item.cell), "2") << item.number;
    }
    EXPECT_EQ(flag("0 1"), "1");
}

TEST_F(ArrayCommands, what_lies_outside_the_model_is_wrong_usage) {
    prepare("array create @m.td1 6\narray create @m.td1 23");
    expect({
        {"array read @m.td1 42", wrong_usage("parameter 42 has no file extension")},
        {"array read @m.td1 0", wrong_usage("N: \"0\" is not a whole number from 1 to 2000")},
        {"array read @m.td1 6 --layer 3",
         wrong_usage("--layer: \"3\" is not a whole number from 1 to 2")},
        {"array read @m.td1 23 --layer 2",
         wrong_usage("--layer: \"2\" is not a whole number from 1 to 1")},
        {"array write @m.td1 6 --period 1001",
         wrong_usage("--period: \"1001\" is not a whole number from 1 to 1000")},
        {"array read @m.td1 6 --period 0",
         wrong_usage("--period: \"0\" is not a whole number from 1 to 1000")},
        {"array get @m.td1 6 4 1", wrong_usage("COL: \"4\" is not a whole number from 1 to 3")},
        {"array get @m.td1 6 1 3", wrong_usage("ROW: \"3\" is not a whole number from 1 to 2")},
    });
}

TEST_F(ArrayCommands, a_missing_array_file_is_a_failure) {
    const std::string text = "cannot be read: No such file or directory (@m.per)";
    expect({{"array read @m.td1 1401", failure(text)},
            {"array info @m.td1 1401", failure(text)},
            {"array copy-period @m.td1 1401 1 2", failure(text)}});
}

TEST_F(ArrayCommands, arrays_need_a_mesh) {
    prepare("new @n.td1");
    const Outcome hint = refused("Message: The size of the model mesh has to be specified first.");
    expect({{"array read @n.td1 6", hint},
            {"array write @n.td1 6", hint, "1"},
            {"array create @n.td1 6", hint},
            {"array info @n.td1 6", hint},
            {"array list @n.td1", done()}});
}

TEST_F(ArrayCommands, a_series_of_a_monitoring_point_is_no_array) {
    folder.write("m.210", "Monitoring Point 21\r\n");
    expect({{"array list @m.td1", done()},
            {"array create @m.td1 220", done("created\n")},
            {"array list @m.td1", done("220\t.220\n")}});
}

TEST_F(ArrayCommands, a_period_is_copied_with_all_layers) {
    expect({
        {"array write @m.td1 11 --layer 1", done(), "1 2 3 4 5 6"},
        {"array write @m.td1 11 --layer 2", done(), "7 8 9 10 11 12"},
        {"array copy-period @m.td1 11 1 2", done()},
        {"array read @m.td1 11 --period 2 --layer 2", done("7 8 9\n10 11 12\n")},
        {"array copy-period @m.td1 11 1 2",
         refused("Copy Data: Data for the stress period 2 already exists. Overwrite?")},
        {"array copy-period @m.td1 11 1 2 --no", refused("")},
        {"array copy-period @m.td1 11 5 2 --yes", done()},
        {"array read @m.td1 11 --period 2 --layer 2", done("0 0 0\n0 0 0\n")},
        {"array copy-period @m.td1 11 1 100", done()},
        {"array copy-period @m.td1 11 1 0", refused("Copy Data: Please enter a positive integer!")},
        {"array copy-period @m.td1 11 1 -3",
         refused("Copy Data: Please enter a positive integer!")},
        {"array copy-period @m.td1 11 1 two",
         refused("Copy Data: Please enter a positive integer!")},
        {"array copy-period @m.td1 11 1 101 --yes",
         refused("Copy Data: The period number must be smaller than 101")},
        {"array copy-period @m.td1 11 0 1",
         wrong_usage("FROM: \"0\" is not a whole number from 1 to 1000")},
    });
}

} // namespace

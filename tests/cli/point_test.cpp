// Monitoring points and observations.
#include "tdtest.h"

namespace {

class PointCommands : public TdTest {
protected:
    void SetUp() override { make_model(); }
};

TEST_F(PointCommands, a_slot_takes_what_is_given_and_keeps_the_rest) {
    prepare("flags set @m.td1 0 1 0");
    expect({
        {"points list @m.td1", done()},
        {"points set @m.td1 1 --name 'Well North' --active 1 --x 10.25 --y -3 --layer 2", done()},
        {"points set @m.td1 1 --second 4 --last=-1E-3 --x 11m", done()},
        {"points set @m.td1 100 --name ' B ' --x none", done()},
        {"points list @m.td1",
         done("1\t-1\t11\t-3\t2\t4\t-0.001\tWell Nor\n100\t0\t0\t0\t0\t0\t0\tB\n")},
        {"points set @m.td1 1 --active 0 --name ''", done()},
        {"points list @m.td1", done("1\t0\t11\t-3\t2\t4\t-0.001\t\n100\t0\t0\t0\t0\t0\t0\tB\n")},
    });
    EXPECT_EQ(flag("0 1"), "1");
    EXPECT_EQ(folder.read("m.pol").size(), 2820u);
}

TEST_F(PointCommands, slots_and_switches_outside_are_wrong_usage) {
    expect({
        {"points set @m.td1 0 --x 1",
         wrong_usage("SLOT: \"0\" is not a whole number from 1 to 100")},
        {"points set @m.td1 101", wrong_usage("SLOT: \"101\" is not a whole number from 1 to 100")},
        {"points set @m.td1 1 --active 2",
         wrong_usage("--active: \"2\" is not a whole number from 0 to 1")},
    });
}

TEST_F(PointCommands, clearing_asks_first) {
    prepare("points set @m.td1 3 --x 1\nobservations add @m.td1 A");
    expect({
        {"points clear @m.td1",
         refused("Tervex Desk: This will clear the Table of Boreholes. Continue?")},
        {"points clear @m.td1 --no", refused("")},
        {"observations clear @m.td1",
         refused("Tervex Desk: This will clear the Table of Observations. Continue?")},
        {"observations clear @m.td1 --no", refused("")},
        {"points clear @m.td1 --yes", done()},
        {"points list @m.td1", done()},
        {"observations list @m.td1", done("A\t0\t0\t0\t0\t0\t0\t0\t0\t0\n")},
        {"observations clear @m.td1 --yes", done()},
        {"observations list @m.td1", done()},
    });
}

TEST_F(PointCommands, points_travel_in_an_exchange_file) {
    prepare("points set @m.td1 1 --name P1 --active 1 --x 10.5 --y -3 --layer 2 --last .001\n"
            "points export @m.td1 @p.bor\nnew @n.td1\npoints set @n.td1 9 --x 1\n"
            "points import @n.td1 @p.bor");
    EXPECT_EQ(run("points list @n.td1"), run("points list @m.td1"));
    EXPECT_TRUE(folder.read("p.bor").starts_with(
        "BALDO5000_BOR_FILE\r\n 100 \r\n"
        " -1          10.5            -3   2   0          .001   P1\r\n"
        "  0             0             0   0   0             0   \r\n"));
    prepare("observations export @m.td1 @o.obs");
    expect({
        {"points import @m.td1 @o.obs",
         refused("Load Bore File: The file @o.obs does not contain the borehole data.")},
        {"observations import @m.td1 @p.bor",
         refused("Load Observation File: The file @p.bor does not contain the observation data.")},
        {"points import @m.td1 @gone",
         failure("cannot be read: No such file or directory (@gone)")},
    });
}

TEST_F(PointCommands, observations_are_added_row_by_row) {
    expect({
        {"observations add @m.td1 'Well North' --flag -3 --time 1 --weight 2.5 --head 3 "
         "--drawdown 4 --concentration 5 --compaction 6 --preconsolidation 7 --subsidence 8",
         done()},
        {"observations add @m.td1 B --time 1E10x", done()},
        {"observations list @m.td1",
         done("Well Nor\t-3\t1\t2.5\t3\t4\t5\t6\t7\t8\nB\t0\t1E+10\t0\t0\t0\t0\t0\t0\t0\n")},
    });
    for (const std::string option : {"time", "weight", "head", "drawdown", "concentration",
                                     "compaction", "preconsolidation", "subsidence"}) {
        EXPECT_EQ(run("observations add @m.td1 C --" + option + " -1"),
                  refused("Tervex Desk: Value must be >= 0"));
    }
    EXPECT_EQ(folder.read("m.pol").size(), 2820u + 2 * 44u);
}

TEST_F(PointCommands, observations_travel_in_an_exchange_file) {
    prepare("observations add @m.td1 A --time 1.5\nobservations add @m.td1 B --flag 2\n"
            "observations export @m.td1 @o.obs\nnew @n.td1\nobservations import @n.td1 @o.obs");
    EXPECT_EQ(run("observations list @n.td1"), run("observations list @m.td1"));
    EXPECT_TRUE(
        folder.read("o.obs").starts_with("BALDO5000_OBS_FILE\r\n 2 \r\n  0           1.5 "));
}

TEST_F(PointCommands, the_option_of_the_calibration_is_shown_or_set) {
    expect({
        {"observations option @m.td1", done("1\n")},
        {"observations option @m.td1 2", done()},
        {"observations option @m.td1", done("2\n")},
        {"observations option @m.td1 3",
         wrong_usage("OPTION: \"3\" is not a whole number from 1 to 2")},
    });
}

} // namespace

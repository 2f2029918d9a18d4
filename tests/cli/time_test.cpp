// Periods, solvers and the outer iteration.
#include "tdtest.h"

namespace {

class TimeCommands : public TdTest {
protected:
    void SetUp() override { prepare("new @m.td1"); }
};

TEST_F(TimeCommands, a_new_model_has_one_period) {
    EXPECT_EQ(run("periods show @m.td1"),
              done("unit\t0\tundefined\nflow\tsteady\nperiod\t1\t-1\t1\t1\t1\t0\t5000\t1\n"
                   "total\t1\t1\t1\n"));
    const std::string all = run("periods show @m.td1 --all").out;
    EXPECT_NE(all.find("\nperiod\t100\t0\t1\t1\t1\t0\t5000\t1\ntotal\t1\t"), std::string::npos);
}

TEST_F(TimeCommands, options_belong_to_the_period_before_them) {
    EXPECT_EQ(run("periods set @m.td1 --unit 5 --flow transient --period 1 --length 10 --steps 100 "
                  "--monitoring 10 --period 3 --use 1 --length 20.5 --shift -3 "
                  "--max-transport 100 --multiplier=1.2 --period 1 --length 11"),
              done());
    EXPECT_EQ(run("periods show @m.td1"),
              done("unit\t5\tyears\nflow\ttransient\nperiod\t1\t-1\t11\t100\t10\t0\t5000\t1\n"
                   "period\t3\t-1\t20.5\t1\t1\t-3\t100\t1.2\ntotal\t2\t101\t31.5\n"));
    EXPECT_TRUE(folder.read("m.trn").starts_with("100            5 \r\n-1   11   100   10 \r\n"
                                                 " 0   5000 \r\n 1 \r\n 0   1   1   1 \r\n"));
    EXPECT_EQ(flag("0 3") + flag("0 2"), "20");
    prepare("periods set @m.td1 --flow steady --period 3 --use 0");
    EXPECT_EQ(flag("0 3") + flag("0 2") + flag("0 1"), "021");
    EXPECT_TRUE(run("periods show @m.td1").out.ends_with("total\t1\t100\t11\n"));
    expect({{"periods set @m.td1 --length 1 --period 1",
             wrong_usage("td periods set: --length stands before --period")}});
}

TEST_F(TimeCommands, bad_periods_are_refused) {
    const Outcome steps = refused("Time Parameter: The number of time steps must be < 100000000");
    const Outcome range = refused("Time Parameter: Valid range of the maximum number of transport "
                                  "steps is 1 to 2147483647.");
    expect({
        {"periods set @m.td1 --unit 3 --period 1 --use 0",
         refused("Time Parameter: The data of the first stress period must always be used!")},
        {"periods set @m.td1 --period 1 --steps 100000000", steps},
        {"periods set @m.td1 --period 2 --length 5 --period 1 --max-transport 0", range},
        {"periods set @m.td1 --period 1 --max-transport 2147483648", range},
        {"periods set @m.td1 --period 1 --max-transport=-1", range},
        {"periods set @m.td1 --period 1 --steps 99999999 --max-transport 2147483647", done()},
        {"periods set @m.td1 --period 101",
         wrong_usage("--period: \"101\" is not a whole number from 1 to 100")},
        {"periods set @m.td1 --period 2 --use yes",
         wrong_usage("--use: \"yes\" is not a whole number from 0 to 1")},
        {"periods set @m.td1 --unit 6",
         wrong_usage("--unit: \"6\" is not a whole number from 0 to 5")},
        {"periods set @m.td1 --flow slow",
         wrong_usage("--flow: \"slow\" is none of steady|transient")},
    });
}

TEST_F(TimeCommands, a_table_without_an_active_period_is_refused) {
    prepare("periods save @m.td1 @t.tpr");
    std::string table = folder.read("t.tpr");
    table.replace(table.find("\r\n-1 \r\n"), 7, "\r\n 0 \r\n");
    folder.write("t.tpr", table);
    expect({{"periods load @m.td1 @t.tpr",
             refused("Time Parameter: At least one period must be active!")}});
}

TEST_F(TimeCommands, periods_travel_in_a_time_parameter_file) {
    prepare("periods set @m.td1 --unit 4 --period 2 --use 1 --length 2.5\n"
            "periods save @m.td1 @t.tpr\nnew @n.td1\nperiods load @n.td1 @t.tpr");
    EXPECT_EQ(run("periods show @n.td1 --all"), run("periods show @m.td1 --all"));
    EXPECT_TRUE(
        folder.read("t.tpr").starts_with("BALDO5000_TIME_FILE\r\n 100  4 \r\n-1 \r\n-1 \r\n"));
    expect({
        {"periods load @n.td1 @m.trn", refused("Message: File has a wrong format.")},
        {"periods load @n.td1 @gone", failure("cannot be read: No such file or directory (@gone)")},
    });
}

TEST_F(TimeCommands, a_new_model_has_no_solver) {
    EXPECT_EQ(run("solver show @m.td1"),
              done("solver\tnone\nlimit\t560.6\niterations\t20000\nflow\t1.0\t1.0\t1.0E-18\t48\n"
                   "heat\t1.0\t1.0\t1.0E-18\t48\ntransport\t1.0\t1.0\t1.0E-10\t48\n"));
}

TEST_F(TimeCommands, one_solver_is_chosen_with_its_code) {
    prepare("solver set @m.td1 bicgstab --om-flow 3 --om-heat 0 --apar-heat 0.90 --err-flow 1E-5 "
            "--iterations 77 --precond-flow 1 --term-heat 5");
    EXPECT_EQ(run("solver show @m.td1"),
              done("solver\tbicgstab\nlimit\t560.6\niterations\t77\nflow\t0.3\t1.0\t1E-5\t18\n"
                   "heat\t0\t0.90\t1.0E-18\t1330\ntransport\t1\t1.0\t1.0E-10\t50\n"));
    EXPECT_EQ(flag("8 3") + flag("7 3") + flag("9 3"), "200");
    prepare("solver set @m.td1 plu --precond-flow 15 --term-flow 127");
    EXPECT_EQ(flag("8 3") + flag("7 3") + flag("9 3"), "020");
    EXPECT_EQ(flag("8 4"), std::to_string(3 + 16 * 15 + 256 * 127));
    prepare("solver set @m.td1 nag --term-flow 0");
    EXPECT_EQ(flag("8 4"), std::to_string(1 + 16 * 15));
    EXPECT_TRUE(run("solver show @m.td1").out.starts_with("solver\tnag\n"));
}

TEST_F(TimeCommands, nag_limits_the_relaxation) {
    prepare("grid set @m.td1 --columns 3 --rows 2 --layers 1");
    const std::string over = "Over the limit: ";
    const std::string limit = " relaxation must be smaller or equal 1.6";
    expect({
        {"solver set @m.td1 nag --apar-flow 1.7", refused(over + "Fluid flow" + limit)},
        {"solver set @m.td1 nag --apar-heat 1.7", refused(over + "Heat" + limit)},
        {"solver set @m.td1 nag --apar-transport 1.61", refused(over + "Transport" + limit)},
        {"solver set @m.td1 nag --apar-flow 1.6 --apar-heat 1.60 --apar-transport=-1", done()},
        {"solver set @m.td1 plu --apar-flow 5", done()},
    });
}

TEST_F(TimeCommands, the_limit_of_a_single_cell_is_one) {
    prepare("grid set @m.td1 --columns 1 --rows 1");
    EXPECT_EQ(run("solver set @m.td1 nag --apar-flow 1.0"), done());
    EXPECT_EQ(run("solver set @m.td1 nag --apar-flow 1.1"),
              refused("Over the limit: Fluid flow relaxation must be smaller or equal 1.0"));
}

TEST_F(TimeCommands, solver_options_outside_are_wrong_usage) {
    expect({
        {"solver set @m.td1 gauss",
         wrong_usage("td solver set: \"gauss\" is none of nag|bicgstab|plu")},
        {"solver set @m.td1 nag --precond-heat 1",
         wrong_usage("td solver set: --precond-heat is not for nag")},
        {"solver set @m.td1 plu --precond-heat 16",
         wrong_usage("--precond-heat: \"16\" is not a whole number from 0 to 15")},
        {"solver set @m.td1 plu --term-flow 128",
         wrong_usage("--term-flow: \"128\" is not a whole number from 0 to 127")},
        {"solver set @m.td1 plu --om-flow 0.5",
         wrong_usage("--om-flow: \"0.5\" is not a whole number from 0 to 10")},
    });
}

TEST_F(TimeCommands, the_outer_iteration_is_empty_until_it_is_stored) {
    expect({
        {"outer-iteration show @m.td1",
         done("active\t\nchi\t\niterations\t\nflow-limit\t0.001\nheat-limit\t0.001\n"
              "transport-limit\t0.001\n")},
        {"outer-iteration set @m.td1 --active 1 --chi 0.35 --iterations 5 --flow-limit 1E-4",
         done()},
        {"outer-iteration show @m.td1",
         done("active\t1\nchi\t0.35\niterations\t5\nflow-limit\t1E-4\nheat-limit\t0.001\n"
              "transport-limit\t0.001\n")},
        {"outer-iteration set @m.td1 --active 2",
         wrong_usage("--active: \"2\" is not a whole number from 0 to 1")},
    });
    EXPECT_EQ(flag("0 1"), "1");
}

TEST_F(TimeCommands, a_transport_limit_is_saved_under_one_name_and_read_under_another) {
    prepare("outer-iteration set @m.td1 --active 0 --transport-limit 5");
    EXPECT_TRUE(run("outer-iteration show @m.td1").out.ends_with("\ntransport-limit\t0.001\n"));
    EXPECT_EQ(run("note get @m.td1 PICARD TransportLimit"), done("5\n"));
    prepare("note set @m.td1 PICARD TransLimit 7");
    EXPECT_TRUE(run("outer-iteration show @m.td1").out.ends_with("\ntransport-limit\t7\n"));
}

} // namespace

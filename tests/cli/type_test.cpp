// Simulation type, coupling, output switches, reference density, re-injection.
#include "tdtest.h"

namespace {

class TypeCommands : public TdTest {
protected:
    void SetUp() override { prepare("new @m.td1"); }
};

TEST_F(TypeCommands, the_key_is_built_from_the_processes) {
    // Each line goes on from the one before.
    const struct {
        const char *options, *shown; // flow, prescribed, heat, permafrost, transport, continua,
                                     // chemistry, activity
    } steps[] = {
        {"", "KEY ----- 0 0 0 0 0 0 0 0"},
        {"--heat 1", "KEY -U--- 0 0 1 0 0 0 0 0"},
        {"--flow 1 --transport 1", "KEY FUU-- 1 0 1 0 1 0 0 0"},
        {"--heat-scheme 5 --transport-scheme I", "KEY F5I-- 1 0 1 0 1 0 0 0"},
        {"--flow-type prescribed", "KEY F5IP- 1 1 1 0 1 0 0 0"},
        {"--flow 0", "KEY -5I-- 0 1 1 0 1 0 0 0"},
        {"--flow 1 --flow-type simulated", "KEY F5I-- 1 0 1 0 1 0 0 0"},
        {"--permafrost 1 --continua 1", "KEY F5I-- 1 0 1 1 1 1 0 0"},
        {"--chemistry 1 --activity 2", "KEY F5I-C 1 0 1 1 1 1 1 2"},
        {"--reaction kinetic", "KEY F5I-K 1 0 1 1 1 1 2 2"},
        {"--heat 0 --transport 0 --chemistry=0", "KEY F---- 1 0 0 1 0 1 0 2"},
        {"--heat 1", "KEY FU--- 1 0 1 1 0 1 0 2"},
    };
    for (const auto& step : steps) {
        EXPECT_EQ(run(std::string("type set @m.td1 ") + step.options), done()) << step.options;
        std::istringstream shown(run("type show @m.td1").out);
        std::string key, text, name, value;
        shown >> key >> text;
        std::string joined = key + " " + text;
        while (shown >> name >> value) {
            joined += " " + value;
        }
        EXPECT_EQ(joined, step.shown) << step.options;
    }
    EXPECT_EQ(flag("9 0") + flag("0 1"), "21");
}

TEST_F(TypeCommands, show_names_every_switch) {
    EXPECT_EQ(run("type show @m.td1"),
              done("KEY\t-----\nflow\t0\nprescribed\t0\nheat\t0\npermafrost\t0\ntransport\t0\n"
                   "continua\t0\nchemistry\t0\nactivity\t0\n"));
}

TEST_F(TypeCommands, transport_alone_is_refused) {
    for (const std::string scheme : {"I", "Z", "S", "U", "5"}) {
        EXPECT_EQ(run("type set @m.td1 --transport 1 --transport-scheme " + scheme),
                  refused("Message: Only Transport is not possible"));
    }
    expect({{"type set @m.td1 --transport 1 --chemistry 1", done()},
            {"type set @m.td1 --flow 2",
             wrong_usage("--flow: \"2\" is not a whole number from 0 to 1")},
            {"type set @m.td1 --activity 6",
             wrong_usage("--activity: \"6\" is not a whole number from 0 to 5")},
            {"type set @m.td1 --heat-scheme Q",
             wrong_usage("--heat-scheme: \"Q\" is none of U|5|I|Z|S")}});
}

TEST_F(TypeCommands, the_settings_file_has_twenty_lines) {
    prepare("type set @m.td1 --flow 1");
    EXPECT_EQ(folder.read("m.typ"),
              "F----\r\n----\r\n1.0\r\n2.0\r\n10.0\r\n1234567890121\r\n1.0\r\n1.0\r\n1.0\r\n1.0\r\n"
              "1.0\r\n1.0\r\n1.0E-18\r\n1.0E-18\r\n1.0E-10\r\n20000\r\n0.08\r\n0.0\r\n1.0E-10\r\n"
              "998.0\r\n");
}

constexpr const char* default_water = "water\tDensity\t0\t998.0\nwater\tConduct\t0\t0.61\n"
                                      "water\tCompress\t0\t4.5E-10\nwater\tCapacity\t0\t4179.0\n"
                                      "water\tViscosity\t0\t8.9E-04\n";

TEST_F(TypeCommands, a_new_model_couples_nothing) {
    EXPECT_EQ(run("coupling show @m.td1"),
              done("KOPLNG\t----\nA0\t800.0\nA1\t1.8\nA2\t-0.0025\nrock-density\t2400\nf1\t1.0\n"
                   "f2\t2.0\nf3\t10.0\ncritical-porosity\t\n" +
                   std::string(default_water)));
}

TEST_F(TypeCommands, coupling_takes_texts_as_typed) {
    EXPECT_EQ(run("coupling set @m.td1 --flow-heat 1 --permeability 1 --law W --a0 ' 750 ' "
                  "--rock-density=-1 --f1 1.50 --f2 2 --f3 3 --critical-porosity 0.10"),
              done());
    EXPECT_EQ(run("coupling show @m.td1"),
              done("KOPLNG\tC-W-\nA0\t750\nA1\t1.8\nA2\t-0.0025\nrock-density\t-1\nf1\t1.50\n"
                   "f2\t2\nf3\t3\ncritical-porosity\t0.10\n" +
                   std::string(default_water)));
    EXPECT_EQ(flag("9 1"), "2");
    const std::string file = folder.read("m.typ");
    EXPECT_NE(file.find("C-W- # 750 # 1.8 # -0.0025 # -1\r\n1.50 # 0.10\r\n2\r\n3\r\n"),
              std::string::npos);
}

TEST_F(TypeCommands, full_coupling_switches_all_four_on) {
    prepare("coupling set @m.td1 --full 1 --law B");
    EXPECT_TRUE(run("coupling show @m.td1").out.starts_with("KOPLNG\tCOBP\n"));
    prepare("coupling set @m.td1 --full 0 --density 0");
    EXPECT_TRUE(run("coupling show @m.td1").out.starts_with("KOPLNG\tC-BP\n"));
}

TEST_F(TypeCommands, thermal_coefficients_warn_when_they_leave_their_default) {
    const std::string warning =
        "Changing Default Value: Values other than 0 are only safe when the "
        "temperatures within the model domain do not exceed the valid "
        "range.\n";
    expect({{"coupling set @m.td1 --a1 2", done("", warning)},
            {"coupling set @m.td1 --a1 1.8 --a2 -0.0025", done()},
            {"coupling set @m.td1 --a2=-1", done("", warning)}});
}

TEST_F(TypeCommands, properties_of_water_are_kept_constant_one_by_one) {
    prepare("coupling set @m.td1 --constant Density=1 --constant Viscosity=1 --water Density=-5 "
            "--water Capacity=4000");
    const std::string shown = run("coupling show @m.td1").out;
    EXPECT_NE(shown.find("water\tDensity\t1\t-5\nwater\tConduct\t0\t0.61\n"), std::string::npos);
    EXPECT_NE(shown.find("water\tCapacity\t0\t4000\nwater\tViscosity\t1\t8.9E-04\n"),
              std::string::npos);
    EXPECT_EQ(flag("10 0") + flag("10 1") + flag("10 4"), "101");
    EXPECT_TRUE(folder.read("m.izv").starts_with("[koppx]\r\nDensity=\t-5\r\nConduct=\t0.61\r\n"));
    expect({
        {"coupling set @m.td1 --water Salt=1",
         wrong_usage("\"Salt\" is no water property: Density, Conduct, Compress, Capacity or "
                     "Viscosity")},
        {"coupling set @m.td1 --constant Density", wrong_usage("\"Density\" has no \"=\"")},
        {"coupling set @m.td1 --constant Density=2",
         wrong_usage("--constant: \"2\" is not a whole number from 0 to 1")},
        {"coupling set @m.td1 --law X", wrong_usage("--law: \"X\" is none of U|W|B|L|H|S")},
    });
}

TEST_F(TypeCommands, output_switches_make_the_two_codes) {
    const struct {
        const char *options, *codes;
    } steps[] = {
        {"", "123456789012 1"},
        {"--level 5 --protocol 0", "X23456789012 5"},
        {"--plt3d 0 --gnuplot 0", "X2XX56789012 5"},
        {"--tecplot 0 --level 0", "X2XX5X789012 0"},
        {"--tecplot 1 --tecplot2 0", "X2XX56X89012 0"},
        {"--vtk 0 --thermal 0 --protocol 1 --level 3", "12XX56XXX012 3"},
    };
    for (const auto& step : steps) {
        EXPECT_EQ(run(std::string("info-results set @m.td1 ") + step.options), done());
        const std::string codes = step.codes;
        EXPECT_EQ(run("info-results show @m.td1"),
                  done("IPUTDI\t" + codes.substr(0, 12) + "\nLINFO\t" + codes.substr(13) +
                       "\ndh-chemistry\t0\n"));
    }
    EXPECT_EQ(flag("9 2"), "2");
    expect({
        {"info-results set @m.td1 --dh-chemistry 1",
         done("", "Output File DH-Chemistry: The file dhcall.out is for debugging only and can "
                  "become very large.\n")},
        {"info-results set @m.td1 --level 4", wrong_usage("--level: \"4\" is none of 0|1|2|3|5")},
    });
    EXPECT_EQ(flag("10 12"), "1");
}

TEST_F(TypeCommands, the_reference_density_is_a_text_or_off) {
    expect({
        {"reference-density show @m.td1", done("998.0\n")},
        {"reference-density set @m.td1 1000.50", done()},
        {"reference-density show @m.td1", done("1000.50\n")},
        {"reference-density set @m.td1 -1", done()},
        {"reference-density show @m.td1", done("-1\n")},
        {"reference-density set @m.td1 off", done()},
        {"reference-density show @m.td1", done("998.0\n")},
    });
    EXPECT_EQ(flag("1 5"), "2");
}

TEST_F(TypeCommands, re_injection_is_switched) {
    prepare("reinject @m.td1 on");
    EXPECT_EQ(flag("1 1") + flag("0 1"), "21");
    prepare("reinject @m.td1 off");
    EXPECT_EQ(flag("1 1"), "0");
    expect({{"reinject @m.td1 yes", wrong_usage("td reinject: \"yes\" is none of off|on")}});
}

} // namespace

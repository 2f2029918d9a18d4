#include "tdtest.h"

namespace {

class ImportCommands : public TdTest {
protected:
    // A model with two periods of a well, whose stream is m.nml.
    void make_stream() {
        make_complete_model();
        prepare("array create @m.td1 1401 --default 1E-12\n"
                "array create @m.td1 10 --default 5");
        run("array write @m.td1 10 --layer 1 --define", "1 2 3 4 5 6");
        run("array write @m.td1 5 --layer 2 --define", "-1 1 1 1 1 1");
        EXPECT_EQ(run("create-input @m.td1 --install @").status, td::done);
    }
    std::string stream() const { return folder.read("m.nml"); }
    // The stream of an imported model, from its own folder.
    std::string written_again(const std::string& model) {
        EXPECT_EQ(run("create-input @" + model + ".td1 --install @").status, td::done);
        return folder.read(model + ".nml");
    }
};

constexpr const char* finished = "Import Model: Process finished.\n";

} // namespace

TEST_F(ImportCommands, import_model_makes_the_model_again) {
    make_stream();
    EXPECT_EQ(run("import-model @m.nml @n.td1 --porosity individual --permeability individual"),
              done("", finished));
    EXPECT_EQ(written_again("n"), stream());
    expect({
        {"array read @n.td1 10", done("1 2 3\n4 5 6\n")},
        {"array read @n.td1 5 --layer 2", done("-1 1 1\n1 1 1\n")},
        {"grid show @n.td1", done(run("grid show @m.td1").out)},
        {"check @n.td1", done()},
    });
    EXPECT_EQ(run("import-model @m.nml @z.td1 --no").status, td::done);
    EXPECT_EQ(written_again("z"), stream());
}

TEST_F(ImportCommands, questions_without_an_answer_change_nothing) {
    make_stream();
    const std::string porosity =
        "Import Porosity Data: Do you want Porosity to be read as individual data? / (otherwise "
        "it will be be defined via Property Zones) / Press 'Yes' for individual or 'No' for "
        "Property Zones.";
    const std::string overwrite = "Overwrite project?: The project already exists. Do you want to "
                                  "overwrite all project files?";
    expect({
        {"import-model @m.nml @n.td1", refused(porosity)},
        {"import-model @m.nml @n.td1 --porosity zones",
         refused("Import Permeability Data: Do you want Permeability to be read as individual "
                 "data? / (otherwise it will be be defined via Property Zones) / Press 'Yes' for "
                 "individual or 'No' for Property Zones.")},
        {"import-model @m.nml @m.td1", refused(overwrite)},
        {"import-model @m.nml @m.td1 --no", refused("")},
        {"import-model @m.nml @m.td1 --overwrite", refused(porosity)},
        {"import-model @m.nml @n.bd5 --yes",
         refused("Import Model: @n.bd5 is not a model file of TD 1.")},
        {"import-model @none.nml @n.td1 --yes", failure("the file does not exist (@none.nml)")},
        {"import-model @m.nml @n.td1 --orientation up",
         wrong_usage("--orientation: \"up\" is none of horizontal|vertical|cylindrical")},
    });
}

TEST_F(ImportCommands, an_overwritten_model_leaves_no_arrays_and_keeps_its_results) {
    make_stream();
    folder.write("M.TMA", "1, 2, 3\r\n");
    folder.write("m.tem", "stale");
    folder.write("m.tez", "stale");
    folder.write("m.nlo", "a result");
    folder.write("m.300", "a series");
    folder.write("source.nml", stream());
    EXPECT_EQ(run("import-model @source.nml @m.td1 --yes"), done("", finished));
    EXPECT_EQ(folder.read("m.nlo"), "a result");
    EXPECT_EQ(folder.read("m.300"), "a series");
    for (const char* name : {"M.TMA", "m.tez"}) {
        EXPECT_FALSE(std::filesystem::exists(folder.path() / name)) << name;
    }
    EXPECT_EQ(written_again("m"), folder.read("source.nml"));
}

TEST_F(ImportCommands, what_cannot_be_imported_is_refused_whole) {
    make_stream();
    const std::string good = stream();
    folder.write("deep.nml", "# I0\r\n 1 \r\n# J0\r\n 1 \r\n# K0\r\n 81 \r\n");
    folder.write("none.nml", "nothing\r\n");
    folder.write("large.nml", "# I0\r\n 40000 \r\n# J0\r\n 1 \r\n# K0\r\n 1 \r\n");
    folder.write("cut.nml", good.substr(0, good.find("# PERM") + 12));
    expect({
        {"import-model @deep.nml @m.td1 --yes",
         refused("Import Model: Not more than 80 layers or cross sections possible in TD!")},
        {"import-model @none.nml @m.td1 --yes",
         refused("Import Model: Problems occured during model import!")},
        {"import-model @large.nml @n.td1 --yes",
         failure("# I0 is 40000, where 1 to 32767 was expected (@large.nml)")},
    });
    EXPECT_EQ(run("import-model @cut.nml @m.td1 --yes").status, td::run_time_failure);
    EXPECT_EQ(run("import-model @deep.nml @n.td1 --orientation vertical --yes").status, td::done);
}

TEST_F(ImportCommands, to_input_takes_fields_of_a_result) {
    make_stream();
    folder.write("m.nlo", "# PHI\r\n1 2 3 4 5 6 7 8 9 10 11 12\r\n# TEMP\r\n12*7\r\n");
    const std::string warning = "Overwrite file?: WARNING!!! - Current input will be overwritten!";
    expect({
        {"to-input @m.td1",
         refused("Convert Data: You need to choose at least one parameter to convert.")},
        {"to-input @m.td1 PHI --file @none.nlo",
         refused("Convert Data: Default file does not exist! / Please browse for a valid file.")},
        {"to-input @m.td1 PHI", refused(warning)},
        {"to-input @m.td1 PHI --no", refused("")},
        {"to-input @m.td1 HEAD --yes",
         wrong_usage("NAME: \"HEAD\" is no parameter that can be converted")},
        {"to-input @m.td1 TRACER6 --yes",
         wrong_usage("NAME: \"6\" is not a whole number from 1 to 5")},
        {"to-input @m.td1 TEMP PHI VX --yes", done()},
        {"array read @m.td1 10", done("10 11 12\n7 8 9\n")},
        {"array read @m.td1 1402 --layer 2", done("7 7 7\n7 7 7\n")},
        {"array read @m.td1 1408", failure("cannot be read: No such file or directory (@m.vx)")},
    });
    EXPECT_EQ(flag("2 8"), "2");
}

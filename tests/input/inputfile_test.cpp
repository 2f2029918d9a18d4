#include "input/inputfile.h"

#include "base/failure.h"
#include "input/smallmodel.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <filesystem>

using input::CreateTervexInput;
using input::test::hundred;
using input::test::SmallModel;

namespace {

constexpr const char* incomplete = "Error occured -> TERVEX Inputfile not complete.";

std::vector<std::string> keywords(const std::string& stream) {
    std::vector<std::string> keys;
    for (const std::string_view line : base::split_lines(stream)) {
        if (line.starts_with("# ")) {
            keys.emplace_back(line.substr(2));
        }
    }
    return keys;
}

} // namespace

TEST(CreateTervexNml, keywords_come_in_their_order) {
    SmallModel model(2, 2, 2);
    EXPECT_FALSE(model.create().InputError);
    EXPECT_EQ(fmt::format("{}", fmt::join(keywords(model.stream), " ")),
              "TITLE IPUTDI LINFO I0 J0 K0 IDIM JDIM KDIM KEY STAT KOPLNG KOPPX_FLAG KOPPX_FIELD "
              "WARNG MXIT NPER PICARD CHI MAXPICARDIT ABSPICARDF ABSPICARDT ABSPICARDS RHOF TREF "
              "CREF TOPF BASEF SEITEF NFREE KFREE IFLO IQRE GRAV COMPF COMPM VBASAL ERRF OMF APARF "
              "CONTROLF TOPT BASET SEITET CMA1 CMA2 CMA3 HPF QTOP3D QBASAL3D OMT APART CONTROLT "
              "ERRT TOPS BASES SEITES MDIFS1 MDIFD1 MDIFD2 MDIFD3 DIFTS1 DIFLS1 ERRS OMS APARS "
              "CONTROLS ANZSUBS BETAC ANZCHEM ANZMINS FRACEXP IZV SIEQ VMOL AO EACT RATE NWELAR "
              "DELTATMP TMAXAR DELTAR TCON SCON IWL WELLAR PUMPAR PMONIX PMONIY PMONIZ PMONIFR "
              "DELX DELY DELZ GEOLOGY PRES POR DICHTE PERM RHOCF PHI VX VY VZ QRE QRELR QREVH "
              "ANISOI ANISOJ TEMP RHOCM WLFM0 WLXANI WLYANI XANG YANG HPR AREAKT");
}

TEST(CreateTervexNml, a_model_with_nothing_defined_has_its_defaults_in_every_cell) {
    SmallModel model(2, 2, 2);
    model.create();
    EXPECT_EQ(model.line("GEOLOGY"), "8*1 ");
    EXPECT_EQ(model.line("PRES"), "8*0.1 ");
    EXPECT_EQ(model.line("POR"), "8*0.25 ");
    EXPECT_EQ(model.line("DICHTE"), "8*1000.");
    EXPECT_EQ(model.line("PERM"), "8*1.E-12 ");
    EXPECT_EQ(model.line("PHI"), "8*0. ");
    EXPECT_EQ(model.line("VX"), "8*0.");
    EXPECT_EQ(model.line("TEMP"), "8*10. ");
    EXPECT_EQ(model.line("RHOCM"), "8*2.06E6 ");
    EXPECT_EQ(model.line("HPR"), "8*0. ");
    EXPECT_EQ(model.line("QRE"), "8*0.");
    EXPECT_EQ(model.line("QTOP3D"), "4*0. ");
    EXPECT_EQ(model.line("ANZMINS"), "0");
    EXPECT_EQ(model.line("ANZSUBS"), " 0 ");
    EXPECT_EQ(model.block("FRACEXP"), "1.\r\n1.\r\n1.\r\n");
    EXPECT_EQ(model.line("IZV"), "100*0");
    EXPECT_EQ(model.line("BETAC"), hundred({}, "0. "));
}

TEST(CreateTervexNml, a_model_of_one_cell_has_single_items) {
    SmallModel model(1, 1, 1);
    model.project.flags.set(9, 5, 1);
    model.project.flags.set(2, 14, 2);
    model.project.flags.set(3, 14, 2);
    model.set_array(5, 1.0F);
    model.set_array(1405, 2.0F);
    model.set_array(1437, 0.06F);
    model.set_array(1407, 3.0F);
    model.create();
    EXPECT_EQ(model.line("PERM"), "1.E-12 ");
    EXPECT_EQ(model.line("ANISOI"), "1. ");
    EXPECT_EQ(model.line("RHOCF"), "1*0.");
    EXPECT_EQ(model.line("DICHTE"), "1*1000.");
    EXPECT_EQ(model.block("QTOP3D"), "2*0.06 \r\n");
    EXPECT_EQ(model.block("QRE"), "2*3. \r\n1*0. \r\n");
    EXPECT_EQ(model.block("QRELR"), "2*0. \r\n");
    EXPECT_EQ(model.line("QREVH"), "2*0.");
}

TEST(DamagedFiles, a_missing_array_leaves_its_block_empty_and_the_writer_goes_on) {
    SmallModel model(2, 1, 1);
    model.project.flags.set(2, 2, 2); // porosity was defined
    model.user.expect_failure("the array was defined, but its file is missing",
                              base::Reaction::next);
    EXPECT_TRUE(model.create().InputError);
    EXPECT_TRUE(model.created.failed);
    EXPECT_EQ(model.block("POR"), "");
    EXPECT_EQ(model.line("PERM"), "2*1.E-12 ");
    EXPECT_EQ(model.line("AREAKT"), "2*0.");
}

TEST(DamagedFiles, an_array_that_is_cut_off_leaves_its_block_empty) {
    SmallModel model(2, 1, 2);
    model.set_array(10, 1.0F);
    const std::string bytes = model.files.read(".hea");
    model.files.write(".hea", bytes.substr(0, bytes.size() - 1));
    model.user.expect_failure("", base::Reaction::next);
    EXPECT_TRUE(model.create().failed);
    EXPECT_EQ(model.block("PHI"), "");
}

TEST(DamagedFiles, zones_that_no_file_describes_leave_no_half_line) {
    SmallModel model(3, 1, 1);
    model.set_array(1403, {1, 2, 16});
    for (int block = 0; block < 9; ++block) { // of ANISOI to HPR
        model.user.expect_failure("holds the Property Zone 16, where 1 to 15 was expected",
                                  base::Reaction::next);
    }
    model.create();
    EXPECT_EQ(model.block("ANISOI"), "");
    EXPECT_EQ(model.block("HPR"), "");
}

TEST(DamagedFiles, short_settings_leave_their_blocks_empty) {
    SmallModel model(1, 1, 1);
    model.files.write(".typ", "F----\r\n");
    model.user.expect_failure("", base::Reaction::next);
    EXPECT_TRUE(model.create().failed);
    EXPECT_EQ(model.block("KEY"), "");
    EXPECT_EQ(model.block("CMA3"), "");
    EXPECT_EQ(model.line("STAT"), "STAT");
}

TEST(DamagedFiles, a_block_is_written_once_when_the_user_repeats_it) {
    SmallModel model(2, 1, 1);
    model.project.flags.set(2, 2, 2);
    model.user.expect_failure("missing", base::Reaction::retry);
    model.user.expect_failure("missing", base::Reaction::leave);
    model.create();
    EXPECT_TRUE(model.stream.ends_with("# POR\r\n"));
}

TEST(CreateTervexNml, the_user_can_stop_it_between_blocks) {
    SmallModel model(1, 1, 1);
    model.user.set_stop(true);
    EXPECT_TRUE(model.create().InputError);
    EXPECT_FALSE(model.created.failed);
    EXPECT_EQ(model.stream, "# TITLE\r\n\r\n");
}

TEST(CreateTervexNml, a_grid_beyond_all_memory_is_written_as_runs) {
    SmallModel model(2, 2, 2);
    for (const char* key : {"NX", "NY", "NZ"}) {
        model.project.set_integer("DIMENSION", key, 32767);
    }
    model.files.write(".per", std::string(4000, '\1')); // tables that promise a record
    for (int failure = 0; failure < 6; ++failure) {     // of layers, sizes of cells, permeability
        model.user.expect_failure("", base::Reaction::next);
    }
    model.create();
    EXPECT_EQ(model.line("PHI"), "35181150961663*0. ");
    EXPECT_EQ(model.block("PERM"), "");
}

TEST(CreateTervexInput, a_complete_file_clears_the_edited_mark) {
    SmallModel model(1, 1, 1);
    const support::TempFolder install;
    model.project.flags.mark_edited();
    const auto result = CreateTervexInput(model.project, model.files, install.path(), model.user);
    EXPECT_FALSE(result.refusal);
    EXPECT_FALSE(result.created.InputError);
    EXPECT_FALSE(model.files.changed());
    EXPECT_TRUE(model.files.read(".nml").starts_with("# TITLE\r\n"));
    EXPECT_EQ(core::Project::read(model.files.read_project()).flags(0, 1), 0);
}

TEST(CreateTervexInput, tervex_ctl_names_the_model_without_its_extension) {
    SmallModel model(1, 1, 1);
    const support::TempFolder install;
    CreateTervexInput(model.project, model.files, install.path(), model.user);
    const std::string proj = base::to_ansi(model.files.base());
    EXPECT_EQ(install.read("tervex.ctl"),
              "# TERVEX Control File (generated by TD.EXE)\r\n# Version 6.0 of FEB 1998S   X\r\n"
              "#\r\n#Insert name of default file here (of type 2):\r\n" +
                  proj +
                  ".nml\r\n#Project:\r\n#   Type:                   Number:   Suffix:\r\n"
                  "#   old formated type          1        .dat\r\n"
                  "#   new type with NAMELIST     2        .nml\r\n"
                  "#Insert name of project and type here:\r\n" +
                  proj + " 3\r\n# (The correct suffix will be added.)\r\n");
}

TEST(CreateTervexInput, an_incomplete_file_stays_and_the_model_counts_as_edited) {
    SmallModel model(1, 1, 1);
    const support::TempFolder install;
    model.project.flags.set(2, 2, 2);
    model.user.expect_failure("missing", base::Reaction::next);
    model.user.expect_message("Create TERVEX Input File", incomplete);
    const auto result = CreateTervexInput(model.project, model.files, install.path(), model.user);
    EXPECT_TRUE(result.created.failed);
    EXPECT_NE(install.read("tervex.ctl"), "");
    EXPECT_TRUE(model.files.read(".nml").ends_with("# AREAKT\r\n1*0.\r\n"));
    EXPECT_EQ(core::Project::read(model.files.read_project()).flags(0, 1), 1);
}

TEST(CreateTervexInput, input_file_and_control_file_are_written_both_or_not_at_all) {
    const support::TempFolder install;
    SmallModel first(1, 1, 1), second(1, 1, 1);
    const auto blocked = install.write("file", "") / "install";
    EXPECT_THROW(CreateTervexInput(first.project, first.files, blocked, first.user),
                 base::FileFailure);
    EXPECT_FALSE(first.files.has(".nml"));

    std::filesystem::create_directories(second.files.base() + ".nml/in the way");
    EXPECT_THROW(CreateTervexInput(second.project, second.files, install.path(), second.user),
                 base::FileFailure);
    EXPECT_EQ(install.names(), std::vector<std::string>{"file"});
}

TEST(CreateTervexInput, chemistry_is_refused_before_anything_is_written) {
    SmallModel model(1, 1, 1);
    const support::TempFolder install;
    model.project.flags.set(9, 7, 1);
    const auto result = CreateTervexInput(model.project, model.files, install.path(), model.user);
    ASSERT_TRUE(result.refusal);
    EXPECT_EQ(result.refusal->title, "Create TERVEX Input File");
    EXPECT_EQ(result.refusal->text, "This edition cannot write models with chemistry yet.");
    EXPECT_FALSE(model.files.has(".nml"));
    EXPECT_TRUE(install.names().empty());
}

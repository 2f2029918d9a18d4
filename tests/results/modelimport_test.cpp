#include "results/modelimport.h"

#include "base/failure.h"
#include "results/randommodel.h"
#include "sim/reinjection.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <sstream>

using core::Access;
using randommodel::RandomModel;
using results::ImportChoices;
using results::ImportedModel;

namespace {

// A model that is imported from a stream, in a folder of its own.
struct Import {
    explicit Import(const std::string& stream, ImportChoices choices = {0, true, true}) {
        const auto source = folder.write("source.nml", stream);
        // A file of this very tick of the clock would be waited for.
        std::filesystem::last_write_time(source, std::filesystem::file_time_type::clock::now() -
                                                     std::chrono::hours(1));
        result = results::Import_Model(source, choices, project, files, user);
    }
    std::string written() {
        input::CreateTervexNml(project, files, user);
        return files.read(".nml");
    }
    std::vector<float> array(int number, int layer, int period = 1) {
        core::ArrayStore store(files, project);
        auto values = store.layer_values(number);
        store.read_array(number, period, layer, values, -9);
        return values;
    }

    support::TempFolder folder;
    core::Project project;
    core::ModelFiles files{folder.path() / "m.td1", Access::write};
    support::ScriptedUser user;
    ImportedModel result;
};

// Blocks with their key lines.
std::vector<std::string> blocks_of(const std::string& stream) {
    std::vector<std::string> blocks;
    for (std::size_t at = 0; at < stream.size();) {
        const std::size_t next = std::min(stream.find("\n# ", at), stream.size() - 1) + 1;
        blocks.push_back(stream.substr(at, next - at));
        at = next;
    }
    return blocks;
}

using Excused = bool (*)(const std::string& written, const std::string& original,
                         const core::Project& project);

bool differs_in_last_digit(const std::string& written, const std::string& original,
                           const core::Project&) {
    std::istringstream first(original.substr(original.find('\n'))),
        second(written.substr(written.find('\n')));
    double a = 0, b = 0;
    while (first >> a && second >> b && std::abs(a - b) <= 1E-14 * a) {
    }
    return first.eof();
}

bool is_thin(const std::string&, const std::string&, const core::Project& project) {
    return std::min({project.NX(), project.NY(), project.NZ()}) <= 2;
}

// Blocks that the stream cannot always carry.
struct Exception {
    std::string_view keyword, reason;
    Excused excused;
};
constexpr Exception exceptions[] = {
    {"# DELTAR",
     "a length times its unit may have more digits than a length in seconds has in the file of the "
     "periods",
     differs_in_last_digit},
    {"# SEITEF",
     "a side tells what most of its cells have; where a grid is one or two cells wide, sides and "
     "base share so many that which of them had a given flow cannot be told",
     is_thin},
};

// How many blocks needed an excuse.
int expect_same_stream(const std::string& written, const std::string& original,
                       const core::Project& project) {
    const auto first = blocks_of(original), second = blocks_of(written);
    EXPECT_EQ(first.size(), second.size());
    int excused = 0;
    for (std::size_t i = 0; i < std::min(first.size(), second.size()); ++i) {
        if (second[i] == first[i]) {
            continue;
        }
        const auto exception = std::ranges::find_if(exceptions, [&](const Exception& known) {
            return first[i].starts_with(known.keyword) &&
                   known.excused(second[i], first[i], project);
        });
        EXPECT_NE(exception, std::end(exceptions)) << first[i].substr(0, 2000) << "\n"
                                                   << second[i].substr(0, 2000);
        ++excused;
    }
    return excused;
}

// A small stream of 4 x 3 x 2 cells with these blocks.
std::string small_stream(const std::string& blocks) {
    return "# I0\r\n 4 \r\n# J0\r\n 3 \r\n# K0\r\n 2 \r\n# KEY\r\nFU---\r\n" + blocks;
}

} // namespace

TEST(Import_Model, a_model_is_written_again_as_it_was) {
    constexpr int models = 80;
    int excused = 0;
    for (unsigned seed = 1; seed <= models; ++seed) {
        SCOPED_TRACE(seed);
        RandomModel random(seed);
        auto& model = random.model();
        ASSERT_FALSE(model.create().InputError);
        Import import(model.stream, {model.project.flags.GridOrientation(), true, true});
        ASSERT_FALSE(import.result.refusal);
        excused += expect_same_stream(import.written(), model.stream, model.project);
    }
    EXPECT_LE(excused, models / 20);
}

TEST(Import_Model, a_stream_that_is_cut_off_fails_or_leaves_defaults) {
    RandomModel random(7);
    random.model().create();
    const std::string& stream = random.model().stream;
    const int orientation = random.model().project.flags.GridOrientation();
    for (std::size_t size = 0; size < stream.size(); size += stream.size() / 97) {
        try {
            const Import import(stream.substr(0, size), {orientation, true, true});
            EXPECT_TRUE(import.result.refusal || import.project.NX() > 0);
        } catch (const base::FileFailure& failure) {
            EXPECT_EQ(failure.file().filename(), "source.nml");
        }
    }
}

TEST(Import_Model, candidates_of_zones_are_numbered_as_they_come) {
    Import import(small_stream("# POR\r\n12*0.1 12*0.2\r\n# PERM\r\n4*-1.E-12 20*1.E-12\r\n"
                               "# RHOCM\r\n23*2.E6 2.1E+06\r\n# WLFMO\r\n6*2 6*2.0 12*3.\r\n"),
                  {0, false, false});
    EXPECT_EQ(import.array(1403, 2), std::vector<float>(12, 1)); // K = 1 is the lowest layer
    EXPECT_EQ(import.array(1403, 1),
              (std::vector<float>{2, 2, 2, 3, 2, 2, 2, 2, 2, 2, 2, 2})); // J from the south
    const auto rock = sim::RockFile::load(import.files);
    EXPECT_EQ(rock.zones(), 3);
    EXPECT_EQ(rock.field(sim::rock::Por, 2), "0.2");
    EXPECT_EQ(rock.field(sim::rock::Perm, 1), "1E-12");
    EXPECT_EQ(rock.field(sim::rock::RhoCm, 1), "2.");
    EXPECT_EQ(rock.field(sim::rock::RhoCm, 3), "2.1");
    EXPECT_EQ(rock.field(sim::rock::Cond, 3), "3.");
    EXPECT_EQ(import.array(6, 1), std::vector<float>(12, 0.2F));
    EXPECT_EQ(import.array(5, 2), (std::vector<float>{1, 1, 1, 1, 1, 1, 1, 1, -1, -1, -1, -1}));
}

TEST(Import_Model, too_many_candidates_leave_individual_arrays) {
    support::TempFolder folder;
    support::ScriptedUser user;
    core::Project project;
    core::ModelFiles files(folder.path() / "m.td1", Access::write);
    std::string values = "# PERM\r\n";
    for (int cell = 1; cell <= 24; ++cell) {
        values += fmt::format("{}E-13 ", cell);
    }
    user.expect_message("Built Property Zones from Model Import",
                        "Building Property Zones not possible -> More than 15 potential Property "
                        "Zones.");
    results::Import_Model(folder.write("s.nlo", small_stream(values + "\r\n")), {0, true, false},
                          project, files, user);
    const core::ArrayStore store(files, project);
    EXPECT_EQ(store.read_cell_value(1403, 1, 1, 1, 4, 0).value, 1);
    EXPECT_EQ(store.read_cell_value(1401, 1, 1, 1, 4, 0).value, 24E-13F);
    EXPECT_TRUE(project.flags.is_defined(2, 1));
}

TEST(Import_Model, settings_land_in_their_files) {
    Import import(small_stream(
        "# STAT\r\nINST\r\n# PICARD\r\n 0 \r\n# ERRF\r\n1.0E-09\r\n# QBASAL\r\n0.065\r\n"
        "# NPER\r\n 2 \r\n# TMAXAR\r\n60. 180. 98*0.\r\n# DELTAR\r\n20. 60. 98*0.\r\n"
        "# PMONIX\r\n2 0 4 97*0\r\n# PMONIY\r\n1 0 3 97*0\r\n# PMONIZ\r\n2 0 1 97*0\r\n"
        "# DELX\r\n4*10\r\n# DELY\r\n1. 2. 4.\r\n# DELZ\r\n3. 5.\r\n# NFREE\r\n 1 \r\n"
        "# KFREE\r\n2 99*0\r\n# CONTROLF\r\n 2 \r\n# BASEF\r\nFLO\r\n# IWL\r\n5*0 1 18*0\r\n"
        "# WELLAR\r\n0.5 99*0 -0.25 9899*0\r\n# TCON\r\n100*0 30. 9899*0\r\n"));
    const auto periods = sim::PeriodTable::load(import.files);
    EXPECT_EQ(periods.unit, 1);
    EXPECT_EQ(periods.rows[1].length, 120);
    EXPECT_EQ(periods.rows[1].steps, 2);
    EXPECT_FALSE(periods.rows[2].active);
    const auto typ = sim::TypFile::load(import.files);
    EXPECT_EQ(typ.line(sim::typ::ERRF), "1.0E-09");
    EXPECT_EQ(typ.line(sim::typ::ERRT), "1.0E-02"); // of imported models
    EXPECT_EQ(typ.line(sim::typ::basal_heat_flow), "0.065");
    EXPECT_EQ(core::Get_IZV_Data(import.files, "PICARD", "Active"), "0");
    const auto points = grid::Read_Monitoring_Points(import.files);
    EXPECT_EQ(points.bores[1].Name, "P2");
    EXPECT_TRUE(points.bores[1].Active);
    EXPECT_EQ(points.bores[1].X, 35);
    EXPECT_EQ(points.bores[1].Y, 5); // J = 3 is row 1, the northernmost
    EXPECT_EQ(points.bores[1].Layer, 2);
    EXPECT_FALSE(points.bores[2].Active);
    const auto layers = grid::LayerFile::load(import.files, 2);
    EXPECT_EQ(layers->layers[0].type, 1);
    EXPECT_EQ(layers->layers[0].thickness, 5);
    EXPECT_TRUE(import.project.flags.is_defined(8, 3));
    EXPECT_EQ(import.array(5, 2), std::vector<float>(12, 2));
    EXPECT_EQ(import.array(11, 2, 1)[5], 0.5F);
    EXPECT_EQ(import.array(11, 2, 2)[5], -0.25F);
    EXPECT_EQ(import.array(299, 2, 2)[5], 30);
}

TEST(Import_Model, chemistry_stays_off_and_is_told) {
    const Import import("# IDIM\r\n 1 \r\n# JDIM\r\n 1 \r\n# KDIM\r\n 1 \r\n# KEY\r\nFUU-C\r\n"
                        "# ANZSUBS\r\n 3 \r\n# ANZCHEM\r\n 2 \r\n# CONC           3\r\n7.\r\n");
    EXPECT_FALSE(import.result.complete);
    EXPECT_EQ(import.project.flags.ChemistryMode(), 0);
    EXPECT_EQ(sim::TracerTable::load(import.files).ActiveTracers(), 1);
    EXPECT_EQ(sim::TracerTable::load(import.files).rows[0].concentration, 7);
}

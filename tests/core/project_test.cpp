#include "core/project.h"

#include "base/failure.h"
#include "base/textfile.h"
#include "core/modelfiles.h"
#include "support/tempfolder.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <random>

namespace {

using core::KeyKind;
using core::KeyUse;
using core::Project;
using Entries = std::vector<std::string>;

// "SECTION KEY VALUE" of the entries of a section, in order.
Entries entries_of(const Project& project, std::string_view section) {
    Entries found;
    for (const Project::Entry& entry : project.entries()) {
        if (entry.section == section) {
            found.push_back(fmt::format("{} {}", entry.key, entry.value));
        }
    }
    return found;
}

std::string value_of(std::string_view bytes, std::string_view section, std::string_view key) {
    return Project::read(bytes).text(section, key);
}

bool contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

TEST(ProjectFile, a_new_model_holds_every_key_with_its_default_in_writing_order) {
    const std::string expected =
        base::read_bytes(std::filesystem::path(TD_TEST_DATA) / "core" / "newmodel.td1");
    EXPECT_EQ(Project().bytes(""), expected);
    EXPECT_EQ(Project::read("").bytes(""), expected);
    EXPECT_EQ(Project::read(expected).bytes(expected), expected);
}

TEST(ProjectFile, keys_that_are_only_read_end_their_section) {
    EXPECT_EQ(entries_of(Project::read("[options]\nTHKMIN=0.5\n"), "OPTIONS"),
              (Entries{"NO_MODPATH_ANYWAY -1", "SIMULATION_MODE 1", "RECHARGE 1",
                       "EVAPOTRANSPIRATION 1", "BCF_VERSION 2", "HNOFLO -999.99", "HDRY -1E+30",
                       "CINACT 1E+30", "THKMIN .5", "NPRMAS 1"}));
}

TEST(ProjectFile, a_save_keeps_foreign_keys_comments_spelling_and_order) {
    const std::string old = "; the deep aquifer\n[dimension]\nnz = 3\n\nNX=12\nDEPTH=900\n"
                            "[Options]\nNPRMAS=7\n[foreign]\nkey= as it was\n[DXF_MAPS]\n"
                            "1FILE#=C:\\maps\\roads and railways.dxf\n1FACTOR=2.50\n";
    const std::string saved = Project::read(old).bytes(old);
    EXPECT_TRUE(saved.starts_with("; the deep aquifer\r\n[dimension]\r\nnz = 3\r\n\r\nNX=12\r\n"
                                  "DEPTH=900\r\nNY=30\r\nSHEET_X1=0\r\n"))
        << saved.substr(0, 200);
    EXPECT_TRUE(contains(saved, "[foreign]\r\nkey= as it was\r\n[DXF_MAPS]\r\n"
                                "1FILE#=C:\\maps\\roads and railways.dxf\r\n1FACTOR=2.50\r\n["));
    EXPECT_TRUE(contains(saved, "\r\nNPRMAS=7\r\n"));
    EXPECT_FALSE(contains(saved, "THKMIN"));
    EXPECT_EQ(Project::read(saved).bytes(saved), saved);
}

TEST(ProjectFile, a_missing_version_is_5000_and_5000_is_always_written) {
    EXPECT_EQ(Project::read("").version(), 5000);
    EXPECT_EQ(Project::read("[version]\nnumber=4000").version(), 4000);
    EXPECT_EQ(Project::read("[VERSION]\nNUMBER=").version(), 0);
    EXPECT_EQ(Project::read("[VERSION]\nNUMBER=5999").bytes("").substr(0, 26),
              "[VERSION]\r\nNUMBER=5000\r\n[I");
}

TEST(ProjectFile, names_are_found_in_any_case) {
    const Project project = Project::read("[color]\nRESERVOIR=7\n[curve]\nplot_h_gird=-1\n");
    EXPECT_EQ(project.integer("COLOR", "Reservoir"), 7);
    EXPECT_EQ(project.integer("Color", "reservoir"), 7);
    EXPECT_EQ(project.integer("CURVE", "PLOT_H_GIRD"), -1);
    EXPECT_THROW(project.integer("COLOR", "Reservoi"), base::RangeFailure);
    EXPECT_THROW(project.text("", ""), base::RangeFailure);
}

TEST(ProjectFile, values_are_read_by_the_kind_of_their_key) {
    EXPECT_EQ(value_of("[DIMENSION]\nNX=70000", "DIMENSION", "NX"), "32767");
    EXPECT_EQ(value_of("[DIMENSION]\nNX=-70000", "DIMENSION", "NX"), "-32768");
    EXPECT_EQ(value_of("[DIMENSION]\nNX=12 columns", "DIMENSION", "NX"), "12");
    EXPECT_EQ(value_of("[DIMENSION]\nNX=", "DIMENSION", "NX"), "0");
    EXPECT_EQ(value_of("[DIMENSION]\nNX=many", "DIMENSION", "NX"), "0");
    EXPECT_EQ(value_of("[DIMENSION]\nSHEET_X2=", "DIMENSION", "SHEET_X2"), "0");
    EXPECT_EQ(value_of("[GRID_APPEARANCE]\nZONES=1", "GRID_APPEARANCE", "ZONES"), "-1");
    EXPECT_EQ(value_of("[GRID_APPEARANCE]\nMESH=0", "GRID_APPEARANCE", "MESH"), "0");
    EXPECT_EQ(value_of("[COLOR]\nMESH=-2147483643", "COLOR", "MESH"), "-2147483643");
    EXPECT_EQ(value_of("[WETDRY]\nWETTING_FACTOR=2.5D-1", "WETDRY", "WETTING_FACTOR"), ".25");
    EXPECT_EQ(value_of("[OPTIONS]\nHDRY=-1e99", "OPTIONS", "HDRY"), "-3.402823E+38");
}

TEST(ProjectFile, texts_are_cut_by_characters_and_lose_their_blanks) {
    std::string umlauts;
    for (int i = 0; i < 200; ++i) {
        umlauts += "\xFC";
    }
    const Project project = Project::read("[INFO]\nDESCRIPTION=" + umlauts + "\n[CONTOURS]\n" +
                                          "LabelPrefix=12345678901234567890123\nLabelSuffix='  '");
    EXPECT_EQ(base::to_ansi(project.title()), umlauts.substr(0, 132));
    EXPECT_EQ(project.text("CONTOURS", "LabelPrefix"), "12345678901234567890");
    EXPECT_EQ(project.text("CONTOURS", "LabelSuffix"), "");
    EXPECT_EQ(value_of("[INFO]\nDESCRIPTION=\" Basin  \"", "INFO", "DESCRIPTION"), "Basin");
    EXPECT_EQ(value_of("[GeoReference]\nBasemap=" + umlauts, "GeoReference", "Basemap").size(),
              240U);
}

TEST(ProjectFile, a_text_cannot_break_out_of_its_line) {
    Project project;
    project.set_title("two\r\n[DIMENSION]\nNX=5");
    EXPECT_EQ(project.title(), "two  [DIMENSION] NX=5");
    EXPECT_EQ(Project::read(project.bytes("")).NX(), 30);
    EXPECT_EQ(Project::read(project.bytes("")).title(), project.title());
}

TEST(ProjectFile, the_display_time_is_written_but_never_read) {
    Project project = Project::read("[Animation]\ndisplay time=9\n");
    EXPECT_EQ(entries_of(project, "Animation"), (Entries{"display time 0"}));
    project.set_single("Animation", "display time", 2.5F);
    EXPECT_TRUE(contains(project.bytes(""), "[Animation]\r\ndisplay time=2.5\r\n"));
}

TEST(ProjectFile, the_water_budget_is_written_from_period_and_step_1) {
    const Project project = Project::read("[Water Budget]\nPERIOD=-3\nSTEP=4\n");
    EXPECT_EQ(entries_of(project, "Water Budget"), (Entries{"PERIOD 1", "STEP 4"}));
    EXPECT_TRUE(contains(project.bytes(""), "[Water Budget]\r\nPERIOD=1\r\nSTEP=4\r\n"));
}

TEST(ProjectFile, maps_of_the_file_are_shown_in_front_of_the_georeference) {
    const Project project = Project::read("[DXF_MAPS]\n3file#=b.dxf\n1FILE#=a.dxf\n1COLOR=-5\n"
                                          "3DISPLAY=1\n3factor=0.5\n2FILE#=\n07FILE#=c.dxf\n"
                                          "1SHIFT_Y=1E7\n99999999999FILE#=d.dxf\n");
    EXPECT_EQ(entries_of(project, "DXF_MAPS"),
              (Entries{"1FILE# a.dxf", "1SHIFT_X 0", "1SHIFT_Y 1E+07", "1FACTOR 1", "1DISPLAY 0",
                       "1COLOR -5", "3FILE# b.dxf", "3SHIFT_X 0", "3SHIFT_Y 0", "3FACTOR .5",
                       "3DISPLAY -1", "3COLOR 0"}));
    const auto entries = project.entries();
    const auto last = std::find_if(entries.rbegin(), entries.rend(),
                                   [](const auto& e) { return e.section == "DXF_MAPS"; });
    EXPECT_EQ((last - 1)->section, "GeoReference");
}

TEST(ProjectFile, every_reading_sets_the_cells_of_the_tools) {
    for (const char* const bytes : {"", "[MENUSTATE]\nMENU_7_14=0\nMENU_5_14=5\nMENU_6_14=0\n"}) {
        const Project project = Project::read(bytes);
        EXPECT_EQ(project.flags(7, 14), 2);
        EXPECT_EQ(project.flags(5, 14), 1);
        EXPECT_EQ(project.flags(6, 14), 1);
    }
}

TEST(ProjectFile, a_key_is_set_by_name_and_kind) {
    Project project;
    EXPECT_TRUE(project.set_from_text("grid_appearance", "zones", "1"));
    EXPECT_EQ(project.integer("GRID_APPEARANCE", "ZONES"), -1);
    EXPECT_TRUE(project.set_from_text("MenuState", "menu_14_0", "-99999"));
    EXPECT_EQ(project.flags(14, 0), -32768);
    EXPECT_FALSE(project.set_from_text("MENUSTATE", "MENU_15_0", "1"));
    EXPECT_FALSE(project.set_from_text("MENUSTATE", "MENU_01_0", "1"));
    EXPECT_FALSE(project.set_from_text("VERSION", "NUMBER", "5000"));
    EXPECT_FALSE(project.set_from_text("DIMENSION", "NW", "1"));
    EXPECT_FALSE(project.set_from_text("OPTIONS", "NX", "1"));
}

TEST(ProjectFile, a_number_is_not_taken_from_a_key_of_another_kind) {
    Project project;
    project.set_single("DIMENSION", "SHEET_X2", 1234567.875F);
    EXPECT_EQ(project.single("DIMENSION", "SHEET_X2"), 1234567.875F);
    EXPECT_EQ(project.text("DIMENSION", "SHEET_X2"), "1234568");
    EXPECT_EQ(project.single("DIMENSION", "NX"), 30.0F);
    EXPECT_THROW(project.integer("DIMENSION", "SHEET_X2"), base::RangeFailure);
    EXPECT_THROW(project.single("INFO", "DESCRIPTION"), base::RangeFailure);
}

// A value as a user might have typed it into the file.
std::string random_value(const core::KeyInfo& key, std::mt19937& random) {
    const auto number = static_cast<std::int32_t>(random());
    switch (key.kind) {
    case KeyKind::flag:
        return std::to_string(number % 2);
    case KeyKind::single:
        return fmt::format("{}.{}E{}", number % 1000, random() % 100000, number % 38);
    case KeyKind::text:
        return fmt::format("Größe {}", random());
    default:
        return std::to_string(number >> (random() % 32));
    }
}

TEST(ProjectFile, random_values_survive_writing_and_reading) {
    std::mt19937 random(1);
    for (int round = 0; round < 20; ++round) {
        Project project;
        for (const core::KeyInfo& key : core::project_keys()) {
            if (key.use == KeyUse::both) {
                project.set_from_text(key.section, key.key, random_value(key, random));
            }
        }
        for (int cell = 0; cell < 100; ++cell) {
            project.flags.set(cell % 15, cell / 15, static_cast<std::int16_t>(random()));
        }
        const std::string bytes = project.bytes("");
        const Project again = Project::read(bytes);
        for (const core::KeyInfo& key : core::project_keys()) {
            EXPECT_EQ(again.text(key.section, key.key), project.text(key.section, key.key));
        }
        EXPECT_EQ(again.bytes(bytes), bytes);
    }
}

TEST(ProjectFile, damaged_files_are_read_without_harm) {
    std::mt19937 random(2);
    std::string noise(1 << 16, '\0');
    std::generate(noise.begin(), noise.end(), [&] { return static_cast<char>(random()); });
    const std::string long_line(10'000'000, '[');
    const std::vector<std::string> files = {
        noise,
        "[INFO]\nDESCRIPTION=" + long_line,
        long_line.substr(9'000'000),
        "[" + long_line.substr(9'000'000) + "]\nNX=1",
        std::string("[INFO]\nDESCRIPTION=a\0b\nX", 24),
    };
    for (const std::string& bytes : files) {
        const Project project = Project::read(bytes);
        EXPECT_LE(base::character_count(project.title()), 132U);
        EXPECT_EQ(Project::read(project.bytes(bytes)).title(), project.title());
    }
    EXPECT_EQ(value_of("[DIMENSION\nNX=7\nNX", "DIMENSION", "NX"), "7");
}

TEST(ProjectFile, is_written_over_what_it_holds_already) {
    const support::TempFolder folder;
    folder.write("Old.bd5", "; mine\r\n[DIMENSION]\r\nNX=3\r\n");
    for (const char* const name : {"Old.bd5", "new.td1"}) {
        core::ModelFiles files(folder.path() / name, core::Access::write);
        Project().Write_Project_File(files);
        files.commit();
    }
    EXPECT_TRUE(folder.read("Old.bd5").starts_with("; mine\r\n[DIMENSION]\r\nNX=30\r\nNY=30\r\n"));
    EXPECT_EQ(folder.read("new.td1"), Project().bytes(""));
    EXPECT_EQ(folder.names(), (std::vector<std::string>{"Old.bd5", "new.td1"}));
}

TEST(OrientationPrefix, replaces_an_older_prefix_and_cuts_the_title) {
    EXPECT_EQ(core::with_orientation_prefix("Basin", core::horizontal), "Horizontal - Basin");
    EXPECT_EQ(core::with_orientation_prefix("Horizontal - Basin", core::vertical),
              "Vertical - Basin");
    EXPECT_EQ(core::with_orientation_prefix("GHE - GHE - x", core::cylindrical),
              "Cylindrical - GHE - x");
    EXPECT_EQ(core::with_orientation_prefix("Vertical -", core::heat_exchanger), "GHE - ");
    EXPECT_EQ(core::with_orientation_prefix(std::string(132, 'x'), core::heat_exchanger),
              "GHE - " + std::string(126, 'x'));
}

TEST(Flags, are_clamped_to_16_bits_and_keep_to_their_table) {
    core::ModelFlags flags;
    flags.set(14, 14, 40000);
    flags.set(0, 14, -40000);
    EXPECT_EQ(flags(14, 14), 32767);
    EXPECT_EQ(flags(0, 14), -32768);
    EXPECT_EQ(flags(1, 0), 0);
    EXPECT_THROW(flags.set(0, 15, 1), base::RangeFailure);
    EXPECT_THROW(flags(-1, 0), base::RangeFailure);
}

} // namespace

// Project file, flags, notes, settings, recent models and the menu.
#include "app/recentfiles.h"
#include "tdtest.h"

#include <algorithm>

#include <fmt/format.h>

namespace {

namespace fs = std::filesystem;

class ProjectCommands : public TdTest {
protected:
    // A line of the list; the caption of a long path is cut.
    std::string recent(int number, const std::string& model) const {
        const std::string path = in_folder("@" + model + ".td1");
        return fmt::format("{}\t{}\t{}\n", number, app::recent_caption(number, path), path);
    }
};

using Names = std::vector<std::string>;

constexpr const char* overwrite =
    "Overwrite project?: The project already exists. Do you want to overwrite all project files?";

TEST_F(ProjectCommands, new_makes_project_layers_and_points) {
    EXPECT_EQ(run("new @m.td1"), done());
    EXPECT_EQ(folder.names(), (Names{"m.l", "m.pol", "m.td1"}));
    EXPECT_EQ(folder.read("m.pol").size(), 2820u);
    EXPECT_EQ(run("flags show @m.td1"),
              done("0\t0\t1\n5\t14\t1\n6\t14\t1\n7\t14\t2\n8\t4\t48\n8\t5\t48\n8\t6\t48\n"));
}

TEST_F(ProjectCommands, new_asks_before_it_overwrites) {
    make_model();
    folder.write("m.PCG", "old settings");
    folder.write("m.typ", "stays");
    expect({{"new @m.td1", refused(overwrite)}, {"new @m.td1 --no", refused("")}});
    EXPECT_EQ(run("new @m.td1 --yes"), done());
    EXPECT_EQ(folder.names(), (Names{"m.l", "m.pol", "m.td1", "m.typ", "m.xy"}));
    EXPECT_EQ(flag("1 2"), "0");
}

TEST_F(ProjectCommands, open_creates_the_tool_settings_and_tells_the_title) {
    prepare("new @m.td1\nproject set @m.td1 INFO DESCRIPTION 'Two wells'");
    EXPECT_EQ(run("open @m.td1"),
              done("name\tm.td1\ntitle\tTervex Desk - [M.TD1]\ndescription\tTwo wells\n"));
    EXPECT_EQ(folder.names(), (Names{"m.l", "m.pol", "m.ppl", "m.td1", "m.upl"}));
    EXPECT_EQ(flag("0 1"), "0");
    EXPECT_EQ(run("recent list"), done(recent(1, "m")));
}

TEST_F(ProjectCommands, a_model_without_layer_data_is_not_opened) {
    prepare("new @m.td1\ngrid set @m.td1 --layers 2");
    folder.write("m.l", " 1 \r\n 0 \r\n 1 \r\n");
    expect({{"open @m.td1", refused("Tervex Desk: @m.td1 has no layer data for the grid.")}});
    fs::remove(folder.path() / "m.l");
    expect({{"open @m.td1", refused("Tervex Desk: @m.td1 has no layer data for the grid.")},
            {"recent list", done()}});
}

TEST_F(ProjectCommands, a_predecessors_model_asks_for_the_conversion) {
    make_model();
    fs::rename(folder.path() / "m.td1", folder.path() / "m.bd5");
    const std::string question =
        "Convert BD5 data for TD: You are loading a BD5 model. /  / The vertical hydraulic "
        "conductivity could be converted to a permeability for a temperature of 10°C and from the "
        "resulting distribution a Property Zones of the model could be derived with a maximum of "
        "15 "
        "Zones. /  / Do you want to convert your data?";
    expect({{"open @m.bd5", refused(question)}});
    EXPECT_TRUE(run("open @m.bd5 --no").out.starts_with("name\tm.bd5\n"));
}

TEST_F(ProjectCommands, save_keeps_foreign_keys_and_does_not_mark_the_model) {
    make_model();
    prepare("flags set @m.td1 0 1 0");
    folder.write("m.td1", folder.read("m.td1") + "[Mine]\r\n; of my own\r\nKey = 1\r\n");
    const std::string before = folder.read("m.td1");
    EXPECT_EQ(run("save @m.td1"), done());
    EXPECT_TRUE(folder.read("m.td1").ends_with("[Mine]\r\n; of my own\r\nKey = 1\r\n"));
    EXPECT_EQ(flag("0 1"), "0");
    EXPECT_EQ(run("save @m.td1"), done());
    EXPECT_GE(folder.read("m.td1").size(), before.size());
}

TEST_F(ProjectCommands, save_as_copies_the_model_without_its_results) {
    make_model();
    for (const char* name : {"m.per", "m.nlo", "m.100", "m.200", "m.ini", "m.txt", "m.000", "m.x.y",
                             "mm.per", "kinetik.dat"}) {
        folder.write(name, "x");
    }
    fs::create_directory(folder.path() / "in");
    expect({
        {"save-as @m.td1 @n.td1", done("n.200\nn.l\nn.per\nn.pol\nn.td1\nn.x.y\nn.xy\n")},
        {"save-as @m.td1 @in/m.td1",
         done("kinetik.dat\nm.200\nm.l\nm.per\nm.pol\nm.td1\nm.x.y\nm.xy\n")},
    });
    EXPECT_EQ(folder.read("in/m.xy"), folder.read("m.xy"));
}

TEST_F(ProjectCommands, save_as_refuses_its_own_model_and_asks_before_it_overwrites) {
    make_model();
    prepare("new @n.td1");
    const std::string own = "Tervex Desk: Please choose a new project title or seperate folder.";
    expect({
        {"save-as @m.td1 @m.td1", refused(own)},
        {"save-as @m.td1 @M.td1 --yes", refused(own)},
        {"save-as @m.td1 @n.td1", refused("Save As: The Filename already exist. Do you want to "
                                          "overwrite the file?")},
        {"save-as @m.td1 @n.td1 --no", refused("")},
        {"save-as @m.td1 @gone/n.td1", failure("the folder does not exist (@gone)")},
    });
    EXPECT_EQ(run("save-as @m.td1 @n.td1 --yes").status, td::done);
    EXPECT_TRUE(run("grid show @n.td1").out.starts_with("dimension\t3\t2\t2\n"));
}

TEST_F(ProjectCommands, project_show_prints_every_key_in_writing_order) {
    make_model();
    const std::string all = run("project show @m.td1").out;
    EXPECT_TRUE(all.starts_with("VERSION\tNUMBER\t5000\nINFO\tDESCRIPTION\tHorizontal -\n"
                                "OPTIONS\tNO_MODPATH_ANYWAY\t-1\n"));
    EXPECT_TRUE(all.ends_with("MENUSTATE\tMENU_14_14\t0\n"));
    EXPECT_NE(all.find("OPTIONS\tTHKMIN\t.05\nOPTIONS\tNPRMAS\t1\nDIMENSION\tNX\t3\n"),
              std::string::npos);
    expect({
        {"project show @m.td1 gridposition",
         done("GRIDPOSITION\tLEFT\t0\nGRIDPOSITION\tTOP\t2\nGRIDPOSITION\tRAD\t0\n"
              "GRIDPOSITION\tANGLE\t0\nGRIDPOSITION\tMOVED\t-1\n")},
        {"project show @m.td1 Options hdry", done("OPTIONS\tHDRY\t-1E+30\n")},
        {"project show @m.td1 DXF_MAPS", done()},
        {"project show @m.td1 OPTIONS NONE",
         wrong_usage("the project file has no key \"OPTIONS\" \"NONE\"")},
    });
}

TEST_F(ProjectCommands, project_set_converts_by_the_kind_of_the_key) {
    make_model();
    prepare("flags set @m.td1 0 1 0");
    const struct {
        const char *key, *value, *shown;
    } cases[] = {
        {"dimension nx", "12x", "DIMENSION\tNX\t12\n"},
        {"DIMENSION NX", "99999", "DIMENSION\tNX\t32767\n"},
        {"OPTIONS HNOFLO", "-5.50", "OPTIONS\tHNOFLO\t-5.5\n"},
        {"COLOR MESH", "-1", "COLOR\tMESH\t-1\n"},
        {"GRID_APPEARANCE ZONES", "7", "GRID_APPEARANCE\tZONES\t-1\n"},
        {"CONTOURS LabelPrefix", "'  ab  '", "CONTOURS\tLabelPrefix\tab\n"},
        {"CONTOURS LabelSuffix", "123456789012345678901234",
         "CONTOURS\tLabelSuffix\t"
         "12345678901234567890\n"},
        {"MENUSTATE MENU_9_4", "1", "MENUSTATE\tMENU_9_4\t1\n"},
    };
    for (const auto& c : cases) {
        const std::string key = c.key;
        EXPECT_EQ(run("project set @m.td1 " + key + " " + c.value), done()) << key;
        EXPECT_EQ(run("project show @m.td1 " + key), done(c.shown));
    }
    EXPECT_EQ(flag("0 1"), "0");
    expect({
        {"project set @m.td1 VERSION NUMBER 1",
         wrong_usage("the project file has no key \"VERSION\" \"NUMBER\" to be set")},
        {"project set @m.td1 OPTIONS THKMIN 1",
         wrong_usage("the project file has no key \"OPTIONS\" \"THKMIN\" to be set")},
        {"project set @m.td1 OPTIONS NONE 1",
         wrong_usage("the project file has no key \"OPTIONS\" \"NONE\" to be set")},
    });
}

TEST_F(ProjectCommands, a_description_keeps_132_characters) {
    prepare("new @m.td1\nproject set @m.td1 INFO DESCRIPTION " + std::string(200, 'x'));
    EXPECT_EQ(run("project show @m.td1 INFO"),
              done("INFO\tDESCRIPTION\t" + std::string(132, 'x') + "\n"));
}

TEST_F(ProjectCommands, flags_are_set_cell_by_cell_and_do_not_mark_the_model) {
    make_model();
    prepare("flags set @m.td1 0 1 0\nflags set @m.td1 14 13 -3");
    expect({
        {"flags show @m.td1 14 13", done("14\t13\t-3\n")},
        {"flags show @m.td1 0 1", done("0\t1\t0\n")},
        {"flags show @m.td1 3", wrong_usage("td flags show: a cell has two indices")},
        {"flags set @m.td1 15 0 1", wrong_usage("A: \"15\" is not a whole number from 0 to 14")},
        {"flags set @m.td1 14 13 7x", done()},
        {"flags show @m.td1 14 13", done("14\t13\t7\n")},
        {"flags set @m.td1 0 0 32768",
         wrong_usage("VALUE: \"32768\" is not a whole number from -32768 to 32767")},
    });
    EXPECT_TRUE(run("flags show @m.td1").out.ends_with("8\t6\t48\n14\t13\t7\n"));
}

TEST_F(ProjectCommands, notes_leave_the_project_file_alone) {
    make_model();
    const std::string project = folder.read("m.td1");
    prepare("note set @m.td1 koppx Density '\t998.0'\nnote set @m.td1 new Key 'a b'");
    EXPECT_EQ(folder.read("m.td1"), project);
    expect({{"note get @m.td1 KOPPX density", done("998.0\n")},
            {"note get @m.td1 new key", done("a b\n")},
            {"note get @m.td1 new none", done("\n")}});
}

TEST_F(ProjectCommands, settings_are_kept_beside_the_program) {
    expect({
        {"setting get MODELPATH --install @", done(" \n")},
        {"setting set MODELPATH '/a b/' --install @", done()},
        {"setting set HELPFORMAT pdf --install @", done()},
        {"setting get MODELPATH --install @", done("/a b/\n")},
        {"setting get HELPFORMAT --install @", done("pdf\n")},
        {"setting get COLOR --install @",
         wrong_usage("td setting get: \"COLOR\" is none of MODELPATH|HELPFORMAT")},
    });
    EXPECT_EQ(folder.names(), Names{"td.ini"});
}

TEST_F(ProjectCommands, the_recent_list_has_four_models_that_exist) {
    for (const std::string name : {"a", "b", "c", "d", "e"}) {
        prepare("new @" + name + ".td1\nrecent add @" + name + ".td1 --user @user");
    }
    prepare("recent add @c.td1 --user @user");
    fs::remove(folder.path() / "d.td1");
    expect({{"recent list --user @user", done(recent(1, "c") + recent(2, "e") + recent(4, "b"))},
            {"recent list", done()}});
}

TEST_F(ProjectCommands, the_menu_shows_names_captions_and_states) {
    make_model();
    const std::string model = run("menu @m.td1").out;
    EXPECT_TRUE(model.starts_with("0\tmenu_file\t&File\t0\t1\t1\n"
                                  "1\tfile_new_model\t&New Model...\t0\t1\t1\n"));
    for (const char* line :
         {"\n1\tgrid_mesh_size\t&Mesh Size...\t1\t1\t1\n", "\n1\tRecentUsed(4)\t",
          "\n2\tmnuInitTracer\t&Constant Concentration \t0\t1\t1\n", "\n2\t-\t-\t0\t1\t1\n",
          "\n0\tmenu_parameters\tF&low\t0\t0\t1\n",
          "\n1\tFile_Leave_Editor\t&Leave Editor\t0\t0\t1\n"}) {
        EXPECT_NE(model.find(line), std::string::npos) << line;
    }
    EXPECT_EQ(std::count(model.begin(), model.end(), '\t') % 5, 0);
    const std::string editor = run("menu @m.td1 --editor").out;
    for (const char* line :
         {"\n1\tFile_Leave_Editor\t&Leave Editor\t0\t1\t1\n", "\n0\tmenu_grid\t&Grid\t0\t1\t0\n"}) {
        EXPECT_NE(editor.find(line), std::string::npos) << line;
    }
}

} // namespace

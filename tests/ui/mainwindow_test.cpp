#include "app/commands.h"
#include "app/menustate.h"
#include "core/extensions.h"
#include "deskfixture.h"
#include "ui/commandtables.h"
#include "ui/statuspanes.h"
#include "ui/toolbar.h"
#include "ui/windowplace.h"

#include <QtTest>
#include <QtWidgets>

#include <fstream>
#include <set>

namespace {

using support::DeskFixture;

int inked_pixels(const QIcon& icon) {
    const QImage image = icon.pixmap(24, 24).toImage();
    int count = 0;
    for (int i = 0; i < image.width() * image.height(); ++i) {
        count += image.pixelColor(i % image.width(), i / image.width()).alpha() > 128;
    }
    return count;
}

class MainWindowTest : public DeskFixture {
protected:
    std::set<std::string> visible_menus() {
        std::set<std::string> names;
        for (const QAction* menu : window.menuBar()->actions()) {
            if (menu->isVisible()) {
                names.insert(menu->objectName().toStdString());
            }
        }
        return names;
    }

    QAction& item(std::string_view name) { return *window.command(name); }

    void drop(const std::filesystem::path& file) {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(QString::fromStdString(file.string()))});
        QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
        enter.ignore();
        QApplication::sendEvent(&window, &enter);
        if (enter.isAccepted()) {
            QDropEvent drop({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
            QApplication::sendEvent(&window, &drop);
        }
        QCoreApplication::processEvents();
    }
};

TEST_F(MainWindowTest, every_command_of_a_model_says_that_it_needs_one) {
    for (const app::MenuEntry& entry : app::menu_table()) {
        if (entry.kind == app::MenuKind::model_command ||
            entry.kind == app::MenuKind::settings_command) {
            user.expect_message("Message", "Create or Open a TD-model first.");
            window.run_command(entry.name);
        }
    }
    EXPECT_FALSE(desk.editor_open());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(MainWindowTest, captions_and_order_are_those_of_the_menu) {
    for (const app::MenuEntry& entry : app::menu_table()) {
        const bool named = std::string_view(entry.name) != "-";
        const bool fixed = entry.kind != app::MenuKind::separator && *entry.caption != '\0';
        if (named && fixed) {
            ASSERT_NE(window.command(entry.name), nullptr) << entry.name;
            EXPECT_EQ(item(entry.name).text(), entry.caption);
        }
    }
    const auto keys = [&](const char* name) { return item(name).shortcut().toString(); };
    EXPECT_EQ(keys("file_new_model"), "Ctrl+N");
    EXPECT_EQ(keys("file_open_model"), "Ctrl+O");
    EXPECT_EQ(keys("help_contents"), "F1");
    EXPECT_EQ(keys("file_save_model_as"), "");
    EXPECT_EQ(keys("File_Leave_Editor"), "");
}

TEST_F(MainWindowTest, a_tool_that_is_missing_is_grey_and_says_so) {
    make_model(3, 2);
    for (const char* name : {"mnuToolsShowView", "options_maps", "file_animation"}) {
        EXPECT_EQ(ui::find_command(name), nullptr) << name;
        EXPECT_FALSE(item(name).isEnabled()) << name;
        EXPECT_EQ(item(name).statusTip(), "This tool is not part of this version.") << name;
    }
    EXPECT_TRUE(item("file_new_model").isEnabled());
    EXPECT_EQ(item("file_new_model").statusTip(), "");
}

TEST_F(MainWindowTest, ticks_follow_the_model_and_not_the_click) {
    make_model(3, 2);
    change([](app::Workspace& model) {
        model.project.flags.set(1, 2, 2);
        model.project.flags.set(1, 3, 2);
    });
    EXPECT_TRUE(item("grid_mesh_size").isChecked());
    EXPECT_FALSE(item("mnuTypeSettings").isCheckable());
    // What a click does before the command runs.
    window.set_tick("help_about", true);
    user.expect_file("Open model", {});
    window.set_tick("file_open_model", true);
    item("file_open_model").trigger();
    EXPECT_TRUE(item("file_open_model").isChecked());
}

TEST_F(MainWindowTest, the_editor_shows_its_menus_in_the_place_of_the_models) {
    make_model(3, 2);
    const auto before = visible_menus();
    desk.set_editor_open(true);
    EXPECT_EQ(visible_menus(),
              (std::set<std::string>{"menu_file", "menu_value", "menu_options", "menu_help"}));
    const std::set<std::string> usable = {"file_save_plot_as", "file_print_plot",
                                          "File_Leave_Editor", "file_exit"};
    for (const QAction* action : item("menu_file").menu()->actions()) {
        if (action->isEnabled() && !action->isSeparator()) {
            EXPECT_TRUE(usable.contains(action->objectName().toStdString()))
                << action->objectName().toStdString();
        }
    }
    EXPECT_TRUE(item("file_exit").isEnabled());
    EXPECT_FALSE(window.tools().action("open_model")->isEnabled());
    window.run_command("file_new_model");
    EXPECT_EQ(user.beeps(), 1);
    desk.set_editor_open(false);
    EXPECT_EQ(visible_menus(), before);
    EXPECT_TRUE(window.tools().action("open_model")->isEnabled());
}

TEST_F(MainWindowTest, the_next_session_knows_place_and_recent_models) {
    make_model(3, 2);
    window.setGeometry(40, 50, 600, 400);
    window.close();
    const std::string store = folder.read("settings/BD5.0");
    EXPECT_NE(store.find("Width=9000"), std::string::npos) << store;
    EXPECT_NE(store.find("WindowState=0"), std::string::npos) << store;

    ui::Desk again(user, desk.folders());
    ui::MainWindow next(again);
    EXPECT_EQ(next.geometry(), QRect(40, 50, 600, 400));
    QAction& recent = *next.command("RecentUsed(1)");
    EXPECT_TRUE(recent.isVisible());
    EXPECT_TRUE(next.command("RSS")->isVisible());
    EXPECT_FALSE(next.command("RecentUsed(2)")->isVisible());
    recent.trigger();
    EXPECT_EQ(next.windowTitle(), "Tervex Desk - [M.TD1]");
}

TEST_F(MainWindowTest, a_place_outside_of_all_screens_is_moved_into_the_first) {
    const std::vector<QRect> screens = {{0, 0, 1000, 800}, {1000, 0, 1000, 800}};
    EXPECT_EQ(ui::area_on(screens, {1100, 10, 300, 200}), QRect(1100, 10, 300, 200));
    EXPECT_EQ(ui::area_on(screens, {4000, 10, 300, 200}).size(), QSize(300, 200));
    EXPECT_TRUE(screens[0].contains(ui::area_on(screens, {4000, 10, 300, 200})));
    EXPECT_TRUE(screens[0].contains(ui::area_on(screens, {-9000, 10, 3000, 2000})));
    EXPECT_EQ(ui::usual_area({0, 0, 1000, 800}).size(), QSize(750, 600));

    ui::store_place(desk.folders().settings, {{1, 2, 30, 40}, true});
    const auto stored = ui::stored_place(desk.folders().settings);
    ASSERT_TRUE(stored);
    EXPECT_TRUE(stored->maximised);
    EXPECT_EQ(stored->area, QRect(1, 2, 30, 40));
    folder.write("settings/BD5.0", "[Startup]\r\nLeft=1\r\nTop=2\r\nWidth=x\r\nHeight=-5\r\n");
    EXPECT_FALSE(ui::stored_place(desk.folders().settings));
}

TEST_F(MainWindowTest, a_recent_model_that_is_gone_leaves_the_list) {
    make_model();
    ASSERT_TRUE(desk.create(folder.path() / "b.td1"));
    std::filesystem::remove(folder.path() / "b.td1");
    user.expect_message("Tervex Desk", "Could not find " + (folder.path() / "b.td1").string());
    item("RecentUsed(1)").trigger();
    EXPECT_EQ(user.beeps(), 1);
    EXPECT_EQ(item("RecentUsed(1)").text().right(5).toStdString(), "m.td1");
    EXPECT_FALSE(item("RecentUsed(2)").isVisible());
}

TEST_F(MainWindowTest, a_model_is_opened_by_dropping_it_on_the_window) {
    make_model(3, 2);
    desk.close_model();
    folder.write("notes.txt", "");
    drop(folder.path() / "notes.txt");
    EXPECT_EQ(window.windowTitle(), "Tervex Desk");
    drop(model_path());
    EXPECT_EQ(window.windowTitle(), "Tervex Desk - [M.TD1]");
}

TEST_F(MainWindowTest, without_a_model_the_window_says_how_to_get_one) {
    auto& start = widget<QWidget>(window, "EmptySheet");
    EXPECT_TRUE(start.isVisible());
    user.expect_file("New Model", model_path());
    support::click(widget<QPushButton>(window, "start_file_new_model"));
    EXPECT_FALSE(start.isVisible());
    EXPECT_TRUE(std::filesystem::exists(model_path()));
}

TEST_F(MainWindowTest, save_as_asks_again_until_the_model_has_a_name_of_its_own) {
    make_model(3, 2);
    user.expect_file("Save Model As", model_path());
    user.expect_message("Tervex Desk", "Please choose a new project title or seperate folder.");
    user.expect_file("Save Model As", folder.path() / "copy.td1");
    item("file_save_model_as").trigger();
    EXPECT_EQ(window.windowTitle(), "Tervex Desk - [COPY.TD1]");
    EXPECT_TRUE(std::filesystem::exists(folder.path() / "copy.xy"));
}

TEST_F(MainWindowTest, the_import_asks_for_the_orientation) {
    folder.write("a.nml", "");
    user.expect_file("Import TERVEX Model", folder.path() / "a.nml");
    user.expect_file("Save Model as...", folder.path() / "i.td1");
    in_dialog("file_import_model", "Orientation", [&](QDialog& dialog) {
        EXPECT_TRUE(widget<QRadioButton>(dialog, "optHorizontal").isChecked());
        support::click(widget<QPushButton>(dialog, "cmdCancel"));
    });
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "i.td1"));

    user.expect_file("Import TERVEX Model", folder.path() / "a.nml");
    user.expect_file("Save Model as...", folder.path() / "i.td1");
    user.expect_message("Import Model", "Problems occured during model import!");
    in_dialog("file_import_model", "Orientation", [&](QDialog& dialog) {
        widget<QRadioButton>(dialog, "optVertical").setChecked(true);
        support::click(widget<QPushButton>(dialog, "cmdOK"));
    });
    EXPECT_EQ(desk.model(), nullptr);
}

TEST_F(MainWindowTest, the_folder_of_the_file_dialogs_is_kept_in_td_ini) {
    user.expect_file("Set File Manager Path", "/models/here");
    item("file_SetDir").trigger();
    EXPECT_NE(folder.read("program/td.ini").find("MODELPATH=/models/here"), std::string::npos);
}

TEST_F(MainWindowTest, a_worksheet_that_was_cut_off_is_recovered_or_taken_back) {
    make_model(3, 2);
    const auto array = [](const char* text) { return std::string(text); };
    const std::string name = "m" + core::file_ext(1402);
    const auto open = [&](base::Answer answer) {
        desk.close_model();
        folder.write(name, array("new"));
        folder.write("m.T1402", array("old"));
        user.expect_question(
            "Open model",
            "The worksheet of this model was open when the program ended.\n\n"
            "Yes keeps what was entered there, No goes back to what was there before. "
            "Cancel opens the model as it lies in the folder and asks again the next time.",
            answer);
        EXPECT_TRUE(window.open_model(model_path()));
        return folder.read(name);
    };
    EXPECT_EQ(open(base::Answer::yes), "new");
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "m.T1402"));
    EXPECT_EQ(open(base::Answer::no), "old");
    EXPECT_EQ(open(base::Answer::cancel), "new");
    EXPECT_TRUE(std::filesystem::exists(folder.path() / "m.T1402"));

    desk.close_model();
    folder.write("m.T1402", folder.read(name));
    EXPECT_TRUE(window.open_model(model_path())); // nothing differs, nothing is asked
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "m.T1402"));
}

TEST_F(MainWindowTest, every_tool_has_a_picture_and_a_tip) {
    for (const char* key :
         {"open_model", "leave_editor", "set_value", "digitizer", "set_borehole", "zoom_in",
          "zoom_out", "cell_by_cell", "zone", "rotate_grid", "shift_grid", "model_grid",
          "full_extent", "cell_copy", "layer_copy", "undo", "redo", "check"}) {
        QAction* tool = window.tools().action(key);
        ASSERT_NE(tool, nullptr) << key;
        EXPECT_GT(inked_pixels(tool->icon()), 20) << key;
        EXPECT_TRUE(tool->toolTip().at(0).isUpper()) << key;
    }
    EXPECT_FALSE(window.tools().action("zoom_in")->isEnabled());
    make_model(3, 2);
    EXPECT_TRUE(window.tools().action("zoom_in")->isEnabled());
    EXPECT_FALSE(window.tools().action("set_value")->isEnabled());
}

TEST_F(MainWindowTest, a_tip_covers_the_progress_text_for_a_while) {
    auto& pane = widget<QLabel>(window, "pane4");
    window.panes().set_progress("Importing");
    QStatusTipEvent tip("a tip");
    QApplication::sendEvent(&window, &tip);
    EXPECT_EQ(pane.text(), "a tip");
    window.panes().set_progress("Done");
    QStatusTipEvent none{QString()};
    QApplication::sendEvent(&window, &none);
    EXPECT_EQ(pane.text(), "Done");
}

} // namespace

#include "deskfixture.h"
#include "ui/application.h"
#include "ui/manualwindow.h"
#include "ui/safeapplication.h"
#include "ui/snapshot.h"

#include <QtTest>
#include <QtWidgets>

namespace {

using support::DeskFixture;
using ui::Start;

TEST(CommandLine, one_model_is_opened_and_anything_else_beeps) {
    EXPECT_EQ(ui::read_command_line({}).model, "");
    EXPECT_FALSE(ui::read_command_line({}).beeps);
    EXPECT_EQ(ui::read_command_line({"/a/B.TD1"}).model, "/a/B.TD1");
    EXPECT_EQ(ui::read_command_line({"/my", "model.td1"}).model, "/my model.td1");
    for (const char* other : {"\"a.td1\"", "a.bd5", "--quick"}) {
        EXPECT_TRUE(ui::read_command_line({other}).beeps) << other;
        EXPECT_EQ(ui::read_command_line({other}).model, "") << other;
    }
}

TEST(CommandLine, options_of_pictures_belong_together) {
    const Start start = ui::read_command_line(
        {"--snapshot", "mnuTypeSettings", "--theme", "dark", "--out", "a.png", "m.td1"});
    EXPECT_EQ(start.kind, Start::Kind::snapshot);
    EXPECT_EQ(start.snapshot, "mnuTypeSettings");
    EXPECT_EQ(start.out, "a.png");
    EXPECT_EQ(start.model, "m.td1");
    EXPECT_EQ(start.dark, true);
    using Words = std::vector<std::string>;
    for (const Words& words : {Words{"--snapshot", "main"}, Words{"--out", "a.png"},
                               Words{"--out", "a.png", "--snapshot"}, Words{"--theme", "pink"},
                               Words{"--snapshot", "main", "--out", "a.png", "m.bd5"}}) {
        EXPECT_EQ(ui::read_command_line(words).kind, Start::Kind::wrong);
    }
    EXPECT_EQ(ui::read_command_line({"--help"}).kind, Start::Kind::help);
    EXPECT_EQ(ui::read_command_line({"--version"}).kind, Start::Kind::version);
}

TEST(CommandLine, without_a_display_the_program_says_so_and_ends) {
    constexpr const char* names[] = {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"};
    std::map<const char*, QByteArray> before;
    for (const char* name : names) {
        before[name] = qgetenv(name);
        qunsetenv(name);
    }
    char program[] = "tervexdesk";
    char* arguments[] = {program, nullptr};
    testing::internal::CaptureStderr();
    EXPECT_EQ(ui::run_program(1, arguments), EXIT_FAILURE);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "tervexdesk: there is no display; td does without one\n");
    for (const char* name : names) {
        if (!before[name].isEmpty()) {
            qputenv(name, before[name]);
        }
    }
}

TEST_F(DeskFixture, the_program_opens_the_model_that_it_was_started_with) {
    make_model(3, 2);
    ui::Application application(user, {folder.path(), {}});
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    application.open(ui::read_command_line({model_path().string()}));
    std::filesystem::current_path(before);
    EXPECT_EQ(application.window().windowTitle(), "Tervex Desk - [M.TD1]");
    EXPECT_EQ(folder.read("error.log").substr(0, 14), "Model opened: ");
    application.open(ui::read_command_line({"gone.td1"}));
    application.open(ui::read_command_line({"a.txt"}));
    EXPECT_EQ(user.beeps(), 2);
}

TEST_F(DeskFixture, a_failure_that_no_command_takes_is_shown) {
    auto& program = static_cast<ui::SafeApplication&>(*qApp);
    program.set_user(&user);
    user.expect_failure("cannot be read", base::Reaction::leave);
    QTimer::singleShot(0, [] { throw base::FileFailure("cannot be read", "a.ini"); });
    QCoreApplication::processEvents();
    program.set_user(nullptr);
}

TEST_F(DeskFixture, a_picture_greets_until_it_is_clicked) {
    ui::Application::show_splash(folder.path()); // there is none
    QPixmap picture(40, 30);
    picture.fill(Qt::red);
    ASSERT_TRUE(
        picture.save(QString::fromStdString((folder.path() / "TDWINTRO.BMP").string()), "BMP"));
    QTimer::singleShot(50, [] {
        for (QWidget* shown : QApplication::topLevelWidgets()) {
            if (shown->isVisible() && shown->windowType() == Qt::SplashScreen) {
                QTest::mouseClick(shown, Qt::LeftButton);
            }
        }
    });
    QElapsedTimer time;
    time.start();
    ui::Application::show_splash(folder.path());
    EXPECT_LT(time.elapsed(), 4000);
}

TEST_F(DeskFixture, pictures_of_windows_are_written) {
    make_model(3, 2);
    const auto file = folder.path() / "a.png";
    const auto size = [&] { return QImage(QString::fromStdString(file.string())).size(); };
    EXPECT_EQ(ui::take_snapshot(window, "main", file), "");
    EXPECT_EQ(size(), window.size());
    EXPECT_EQ(ui::take_snapshot(window, "help_about", file), "");
    EXPECT_LT(size().width(), window.width());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(ui::take_snapshot(window, "mnuToolsShowView", file),
              "there is no dialog of mnuToolsShowView");
    user.expect_question("Flow Boundary Condition", "Save changes to Flow Boundary Condition?",
                         base::Answer::no);
    EXPECT_EQ(ui::take_snapshot(window, "grid_ibound+layer=2+view_colours_viridis", file), "");
    EXPECT_EQ(size(), window.size());
    EXPECT_FALSE(window.desk().editor_open());
    EXPECT_NE(ui::take_snapshot(window, "main", folder.path() / "no" / "a.png"), "");
}

TEST_F(DeskFixture, pictures_of_dialogs_that_a_dialog_opens_are_written) {
    make_model(3, 2);
    const auto file = folder.path() / "a.png";
    const auto area = [&] {
        const QSize size = QImage(QString::fromStdString(file.string())).size();
        return size.width() * size.height();
    };
    EXPECT_EQ(ui::take_snapshot(window, "options_environment>Environment_Tabs=2", file), "");
    const int outer = area();
    EXPECT_EQ(
        ui::take_snapshot(window, "options_environment>Environment_Tabs=2>cmdLabelFormat", file),
        "");
    EXPECT_LT(area(), outer / 2);
    EXPECT_EQ(ui::take_snapshot(window, "options_environment>Environment_Tabs=2>TDBGrid2=0", file),
              "");
    EXPECT_LT(area(), outer / 2);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(ui::take_snapshot(window, "options_environment>cmdNone", file),
              "there is no dialog of options_environment>cmdNone");
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(DeskFixture, the_manual_is_searched_over_all_of_its_pages) {
    folder.write("manual/README.md", "# First\n\nSee [heat](heat.md).\n");
    folder.write("manual/heat.md", "# Second\n\nThe word obsidian stands here.\n");
    ui::ManualWindow manual(QString::fromStdString((folder.path() / "manual").string()));
    manual.show_page("nothing.md");
    auto& browser = widget<QTextBrowser>(manual, "manual");
    EXPECT_TRUE(browser.toPlainText().startsWith("First"));
    manual.begin_search();
    auto& search = widget<QLineEdit>(manual, "search");
    support::type_into(search, "Obsidian");
    QTest::keyClick(&search, Qt::Key_Return);
    EXPECT_TRUE(browser.toPlainText().startsWith("Second"));
    EXPECT_EQ(browser.textCursor().selectedText(), "obsidian");
    manual.show_page("heat.md");
    EXPECT_TRUE(browser.toPlainText().startsWith("Second"));
}

TEST_F(DeskFixture, the_manual_is_opened_at_the_section_of_a_dialog) {
    folder.write("manual/README.md", "# First\n");
    folder.write("manual/heat.md",
                 "# Second\n\nSee *Basal* and **Basal**.\n\n**Basal** flows.\n\n## Fluid\n\nEnd\n");
    ui::ManualWindow manual(QString::fromStdString((folder.path() / "manual").string()));
    const auto line = [&] {
        return widget<QTextBrowser>(manual, "manual").textCursor().block().text();
    };
    manual.show_page("heat.md#Basal");
    EXPECT_TRUE(line().startsWith("Basal flows."));
    manual.show_page("heat.md#Fluid");
    EXPECT_EQ(line(), "Fluid");
}

} // namespace

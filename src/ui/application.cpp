#include "ui/application.h"

#include "base/paths.h"
#include "base/textfile.h"
#include "base/version.h"
#include "report/errorreport.h"
#include "ui/icons.h"
#include "ui/qtuser.h"
#include "ui/safeapplication.h"
#include "ui/snapshot.h"
#include "ui/text.h"
#include "ui/theme.h"

#include <QEventLoop>
#include <QKeyEvent>
#include <QLabel>
#include <QScreen>
#include <QTemporaryFile>
#include <QTimer>

#include <algorithm>
#include <cstdlib>
#include <iostream>

#include <unistd.h>

namespace ui {

namespace {

constexpr int splash_ms = 6000;
constexpr int wrong_usage = 2;
constexpr QSize picture_size(1040, 720); // of the main window

// Beside the program, or in the user's data when nothing can be written there.
std::filesystem::path settings_folder_of_program() {
    const std::filesystem::path own = base::executable_folder();
    return ::access(own.c_str(), W_OK) == 0 ? own : base::user_data_folder();
}

class Splash : public QLabel {
public:
    explicit Splash(const QPixmap& picture) : QLabel(nullptr, Qt::SplashScreen) {
        setPixmap(picture);
        setFrameStyle(QFrame::Panel | QFrame::Raised);
        adjustSize();
        move(screen()->availableGeometry().center() - rect().center());
    }

    void wait() {
        show();
        QTimer::singleShot(splash_ms, &loop_, &QEventLoop::quit);
        QApplication::setOverrideCursor(Qt::WaitCursor);
        loop_.exec();
        QApplication::restoreOverrideCursor();
    }

protected:
    void mousePressEvent(QMouseEvent*) override { loop_.quit(); }
    void keyPressEvent(QKeyEvent*) override { loop_.quit(); }

private:
    QEventLoop loop_;
};

// A screen of its own for pictures, on which every dialog has all the room that it asks for.
class PictureScreen {
public:
    PictureScreen() {
        if (qEnvironmentVariableIsSet("QT_QPA_PLATFORM") &&
            qgetenv("QT_QPA_PLATFORM") != "offscreen") {
            return;
        }
        if (file_.open()) {
            file_.write(R"({"screens": [{"name": "picture", "x": 0, "y": 0, "width": 3840,
                "height": 2400, "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})");
            file_.close();
        }
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + file_.fileName().toLocal8Bit());
        qInstallMessageHandler(show_message);
    }

private:
    // What a screen cannot do that nobody sees is no news.
    static void show_message(QtMsgType, const QMessageLogContext&, const QString& text) {
        if (!text.startsWith("This plugin does not support")) {
            std::cerr << from_qt(text) << '\n';
        }
    }

    QTemporaryFile file_;
};

Start wrong(std::string message) {
    Start start;
    start.kind = Start::Kind::wrong;
    start.message = std::move(message);
    return start;
}

// Takes the value of the option out of the words; nothing when the option is not there.
std::optional<std::string> take_option(std::vector<std::string>& words, std::string_view option,
                                       bool& missing) {
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (words[i] != option) {
            continue;
        }
        missing = missing || i + 1 == words.size();
        std::string value = i + 1 == words.size() ? std::string() : words[i + 1];
        const auto begin = words.begin() + std::ptrdiff_t(i);
        words.erase(begin, i + 1 == words.size() ? words.end() : begin + 2);
        return value;
    }
    return std::nullopt;
}

std::string joined(const std::vector<std::string>& words) {
    std::string whole;
    for (const std::string& word : words) {
        whole += (whole.empty() ? "" : " ") + word;
    }
    return whole;
}

// The current folder may be one that takes no file; the line is for those who look for it.
void write_opened_line() {
    try {
        base::replace_file(base::absolute_path("error.log"),
                           report::opened_line(std::chrono::system_clock::now()) + "\r\n");
    } catch (const base::FileFailure&) {
    }
}

int run_window(SafeApplication& program, const Start& start) {
    report::FailureLog log({base::desk_title, "td", report::version_numbers(base::version)},
                           [] { return std::chrono::system_clock::now(); });
    const char* const reports = std::getenv("TD_REPORTS");
    const Folders folders{settings_folder_of_program(), base::user_settings_folder()};
    if (!reports || std::string_view(reports) != "off") {
        log.set_folders({folders.program, base::user_data_folder()});
    }
    QtUser user;
    user.set_log(&log);
    program.set_user(&user);
    Application::show_splash(base::executable_folder());
    Application application(user, folders);
    user.set_window(&application.window());
    // Whatever windows are still open beside it.
    QObject::connect(&application.window(), &MainWindow::closed, &program,
                     [] { QCoreApplication::exit(0); });
    application.window().show();
    application.window().activateWindow(); // the picture before it had the keyboard
    QTimer::singleShot(0, &application.window(), [&] { application.open(start); });
    const int status = QApplication::exec();
    program.set_user(nullptr);
    return status;
}

// Remembers nothing: a picture is no session.
// Nobody is there while the model of a picture is opened: what would be shown is printed.
class PictureUser : public QtUser {
public:
    void message(base::Icon icon, std::string_view title, std::string_view text) override {
        if (!opens_) {
            return QtUser::message(icon, title, text);
        }
        std::cerr << "tervexdesk: " << text << '\n';
    }
    base::Answer ask(std::string_view title, std::string_view text,
                     base::Buttons buttons) override {
        return opens_ ? base::Answer::cancel : QtUser::ask(title, text, buttons);
    }
    base::Reaction failure(const base::Failure& failure) override {
        if (!opens_) {
            return QtUser::failure(failure);
        }
        std::cerr << "tervexdesk: " << failure.file.string() << ": " << failure.what << '\n';
        return base::Reaction::leave;
    }
    void has_opened() { opens_ = false; }

private:
    bool opens_ = true;
};

int run_snapshot(const Start& start) {
    PictureUser user;
    Application application(user, {settings_folder_of_program(), {}});
    user.set_window(&application.window());
    application.window().resize(picture_size);
    application.window().show();
    std::string message;
    if (!start.model.empty() && !application.desk().open(start.model)) {
        message = start.model + " is not open";
    } else {
        user.has_opened();
        message = take_snapshot(application.window(), start.snapshot, start.out);
    }
    if (!message.empty()) {
        std::cerr << "tervexdesk: " << message << '\n';
    }
    return message.empty() ? EXIT_SUCCESS : EXIT_FAILURE;
}

// Where the toolkit finds none it ends the program by a signal.
bool has_display(const std::vector<std::string>& arguments) {
    const auto is_set = [](const char* name) { return !qgetenv(name).isEmpty(); };
    const auto names_one = [](const std::string& word) {
        return word.ends_with("-platform") || word.ends_with("-display");
    };
    return is_set("DISPLAY") || is_set("WAYLAND_DISPLAY") || is_set("QT_QPA_PLATFORM") ||
           std::ranges::any_of(arguments, names_one);
}

} // namespace

std::string help_text() {
    return "tervexdesk: models of groundwater flow, heat, transport and reaction for tervex\n"
           "\n"
           "  tervexdesk [OPTIONS] [MODEL.td1]\n"
           "  tervexdesk --snapshot NAME --out FILE.png [OPTIONS] [MODEL.td1]\n"
           "\n"
           "  --snapshot NAME      draw a window without a screen and end. NAME is \"main\" or a\n"
           "                       command of the menu such as mnuTypeSettings; several commands\n"
           "                       joined by \"+\" are run one after the other; keys of the\n"
           "                       toolbar (tool_zone), entries of its View menu\n"
           "                       (view_colours_viridis), layer=6 and wait=5 (seconds) may stand\n"
           "                       among them; \">\" goes on inside the dialog: \">cmdLoad\" presses\n"
           "                       a button, \">Environment_Tabs=2\" shows a page, \">TDBGrid2=0\"\n"
           "                       clicks on the head of a column\n"
           "  --out FILE.png       where that picture goes\n"
           "  --theme dark|light   colours instead of those of the desktop\n"
           "  --help, --version    print and end\n"
           "\n"
           "Models are made and run without a window by td; see td --help.\n";
}

Start read_command_line(const std::vector<std::string>& arguments) {
    Start start;
    std::vector<std::string> words = arguments;
    if (!words.empty() && (words[0] == "--help" || words[0] == "-h")) {
        start.kind = Start::Kind::help;
        return start;
    }
    if (!words.empty() && words[0] == "--version") {
        start.kind = Start::Kind::version;
        return start;
    }
    bool missing = false;
    const auto theme = take_option(words, "--theme", missing);
    const auto snapshot = take_option(words, "--snapshot", missing);
    const auto out = take_option(words, "--out", missing);
    if (missing || snapshot.has_value() != out.has_value()) {
        return wrong("--snapshot NAME and --out FILE.png belong together; see --help");
    }
    if (theme && theme != "dark" && theme != "light") {
        return wrong("--theme: dark or light, not \"" + *theme + '"');
    }
    if (theme) {
        start.dark = *theme == "dark";
    }
    const std::string whole = joined(words);
    const bool is_model = base::lower(whole).ends_with(".td1");
    start.model = is_model ? whole : std::string();
    start.beeps = !is_model && !whole.empty();
    if (snapshot) {
        start.kind = Start::Kind::snapshot;
        start.snapshot = *snapshot;
        start.out = *out;
        if (start.beeps) {
            return wrong(whole + " is not a model file of TD 1.");
        }
    }
    return start;
}

Application::Application(base::Interaction& user, Folders folders)
    : desk_(user, std::move(folders)), window_(desk_) {
    QObject::connect(&window_, &MainWindow::opened, &window_, write_opened_line);
}

void Application::show_splash(const std::filesystem::path& folder) {
    const QPixmap picture(to_qt(folder / "TDWINTRO.BMP"));
    if (!picture.isNull()) {
        Splash(picture).wait();
    }
}

void Application::open(const Start& start) {
    if (!start.model.empty() && base::is_file(start.model)) {
        window_.open_model(start.model);
        window_.setWindowState(window_.windowState() & ~Qt::WindowMinimized);
        window_.raise();
        window_.activateWindow();
    } else if (start.beeps || !start.model.empty()) {
        desk_.user().beep();
    }
}

int run_program(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    Start start = read_command_line(arguments);
    switch (start.kind) {
    case Start::Kind::help:
        std::cout << help_text();
        return EXIT_SUCCESS;
    case Start::Kind::version:
        std::cout << "tervexdesk " << base::version << '\n';
        return EXIT_SUCCESS;
    case Start::Kind::wrong:
        std::cerr << "tervexdesk: " << start.message << '\n';
        return wrong_usage;
    default:
        break;
    }
    const bool draws = start.kind == Start::Kind::snapshot;
    std::optional<PictureScreen> screen;
    if (draws) {
        screen.emplace();
    } else if (!has_display(arguments)) {
        std::cerr << "tervexdesk: there is no display; td does without one\n";
        return EXIT_FAILURE;
    }
    SafeApplication application(argc, argv);
    start = read_command_line({argv + 1, argv + argc}); // without the options of the toolkit
    QApplication::setApplicationName("tervexdesk");
    QApplication::setApplicationDisplayName({});
    QGuiApplication::setDesktopFileName("tervexdesk");
    QApplication::setStyle(make_style());
    QApplication::setWindowIcon(program_icon());
    if (start.dark) {
        use_theme(*start.dark);
    }
    return draws ? run_snapshot(start) : run_window(application, start);
}

} // namespace ui

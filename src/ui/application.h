// The desktop program from its command line to the window.
#pragma once

#include "ui/desk.h"
#include "ui/mainwindow.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace ui {

// What the command line asks for.
struct Start {
    enum class Kind { window, snapshot, help, version, wrong };
    Kind kind = Kind::window;
    std::string model;    // to be opened; may be empty
    bool beeps = false;   // the command line was not understood
    std::string snapshot; // "main" or commands of the menu, joined by "+"
    std::filesystem::path out;
    std::optional<bool> dark; // light or dark colours instead of the desktop's
    std::string message;      // of a wrong use
};

// A model is named by one argument that ends in ".td1"; several words without options are one name
// with blanks. Anything else only beeps, but for the options that help_text() names.
Start read_command_line(const std::vector<std::string>& arguments);
std::string help_text();

// The window and what it stands on.
class Application {
public:
    // `user` outlives it.
    Application(base::Interaction& user, Folders folders);

    Desk& desk() { return desk_; }
    MainWindow& window() { return window_; }

    // The picture TDWINTRO.BMP of `folder`, for six seconds or until it is clicked; nothing when
    // there is none.
    static void show_splash(const std::filesystem::path& folder);
    // Opens the model of the command line, or beeps.
    void open(const Start& start);

private:
    Desk desk_;
    MainWindow window_;
};

// The whole program; its exit status.
int run_program(int argc, char** argv);

} // namespace ui

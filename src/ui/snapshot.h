// Pictures of the program's windows, for its manual.
#pragma once

#include <filesystem>
#include <string>

namespace ui {

class MainWindow;

// Runs the commands of `name`, joined by "+", and writes a picture (PNG) of the dialog that the
// last of them opens, or of the main window when that is where the command shows itself; "main" is
// the main window alone. Questions before that get their first answer; what was opened is left
// without keeping anything. Empty when the picture is written, else why there is none.
std::string take_snapshot(MainWindow& window, const std::string& name,
                          const std::filesystem::path& out);

} // namespace ui

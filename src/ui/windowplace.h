// Size, place and state of the main window between two sessions: section "Startup" of the user's
// file "BD5.0".
#pragma once

#include <QRect>

#include <filesystem>
#include <optional>
#include <vector>

class QMainWindow;

namespace ui {

struct WindowPlace {
    QRect area; // without the frame, in logical pixels
    bool maximised = false;
};

// Nothing without a folder or with keys missing. FileFailure when the file cannot be read.
std::optional<WindowPlace> stored_place(const std::filesystem::path& settings);
// Lengths are stored in twips.
void store_place(const std::filesystem::path& settings, const WindowPlace& place);

// Three quarters of the screen in its middle.
QRect usual_area(const QRect& screen);
// The area itself when some of it lies on a screen, else moved into the first one, which it does
// not exceed.
QRect area_on(const std::vector<QRect>& screens, const QRect& area);

// What the last session left, or the usual place.
void restore_place(QMainWindow& window, const std::filesystem::path& settings);

} // namespace ui

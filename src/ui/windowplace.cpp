#include "ui/windowplace.h"

#include "app/settings.h"
#include "base/numbertext.h"

#include <QGuiApplication>
#include <QMainWindow>
#include <QScreen>

#include <algorithm>
#include <cmath>

namespace ui {

namespace {

constexpr const char* file_name = "BD5.0";
constexpr const char* section = "Startup";
constexpr double twips_per_pixel = 15; // 1440 to the inch, 96 pixels to the inch
constexpr int maximised_state = 2;     // 0 normal, 1 minimised

// A size that no screen has is as good as none.
std::optional<int> pixels(const app::SettingsFile& file, const char* key) {
    const auto text = file.get(section, key);
    if (!text || text->empty()) {
        return std::nullopt;
    }
    const double value = base::leading_number(*text) / twips_per_pixel;
    if (!(std::abs(value) < 1e6)) {
        return std::nullopt;
    }
    return int(std::lround(value));
}

} // namespace

std::optional<WindowPlace> stored_place(const std::filesystem::path& settings) {
    if (settings.empty()) {
        return std::nullopt;
    }
    const app::SettingsFile file(settings, file_name);
    const auto left = pixels(file, "Left"), top = pixels(file, "Top");
    const auto width = pixels(file, "Width"), height = pixels(file, "Height");
    if (!left || !top || !width || !height || *width < 1 || *height < 1) {
        return std::nullopt;
    }
    const bool maximised =
        base::leading_number(file.get(section, "WindowState").value_or("0")) == maximised_state;
    return WindowPlace{QRect(*left, *top, *width, *height), maximised};
}

void store_place(const std::filesystem::path& settings, const WindowPlace& place) {
    if (settings.empty()) {
        return;
    }
    app::SettingsFile file(settings, file_name);
    const auto store = [&](const char* key, int value) {
        file.set(section, key, std::to_string(long(value * twips_per_pixel)));
    };
    file.set(section, "WindowState", place.maximised ? "2" : "0");
    store("Top", place.area.y());
    store("Left", place.area.x());
    store("Height", place.area.height());
    store("Width", place.area.width());
    file.save();
}

QRect usual_area(const QRect& screen) {
    QRect area(0, 0, screen.width() * 3 / 4, screen.height() * 3 / 4);
    area.moveCenter(screen.center());
    return area;
}

QRect area_on(const std::vector<QRect>& screens, const QRect& area) {
    const bool seen = std::any_of(screens.begin(), screens.end(),
                                  [&](const QRect& screen) { return screen.intersects(area); });
    if (seen || screens.empty()) {
        return area;
    }
    const QRect& screen = screens.front();
    QRect moved(QPoint(), area.size().boundedTo(screen.size()));
    moved.moveCenter(screen.center());
    return moved;
}

void restore_place(QMainWindow& window, const std::filesystem::path& settings) {
    const QScreen* const primary = QGuiApplication::primaryScreen();
    if (!primary) {
        return;
    }
    const auto stored = stored_place(settings);
    if (!stored) {
        window.setGeometry(usual_area(primary->availableGeometry()));
        return;
    }
    std::vector<QRect> screens{primary->availableGeometry()};
    for (const QScreen* screen : QGuiApplication::screens()) {
        if (screen != primary) {
            screens.push_back(screen->availableGeometry());
        }
    }
    window.setGeometry(area_on(screens, stored->area));
    if (stored->maximised) {
        window.setWindowState(window.windowState() | Qt::WindowMaximized);
    }
}

} // namespace ui

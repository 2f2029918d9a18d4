// What stands in the worksheet's place while no model is open: how to get one.
#pragma once

#include <QWidget>

class QVBoxLayout;

namespace app {
class RecentFiles;
}

namespace ui {

class MainWindow;

class EmptySheet : public QWidget {
    Q_OBJECT

public:
    explicit EmptySheet(MainWindow& window);

    // One button a recent model that still exists.
    void show_recent(const app::RecentFiles& recent);

private:
    void add_button(const char* command, const QString& text);

    MainWindow& window_;
    QVBoxLayout* column_ = nullptr;
    QWidget* recent_ = nullptr;
};

} // namespace ui

// The manual in a window of its own, beside the main window.
#pragma once

#include <QMainWindow>

#include <filesystem>
#include <optional>

class QLineEdit;
class QTextBrowser;

namespace ui {

// The folder of the manual's pages: installed, or in the source tree that the program was built in.
std::optional<std::filesystem::path> manual_folder();

class ManualWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit ManualWindow(const QString& folder, QWidget* parent = nullptr);

    // Shows a page ("heat.md") or a section of it ("heat.md#Basal"); the first page of the manual
    // when there is none of that name.
    void show_page(const QString& page);
    // Puts the focus into the search field.
    void begin_search();

private:
    void build_bar();
    void show_section(const QString& name);
    void find(bool backward);
    void find_on_other_pages(const QString& text);

    QString folder_;
    QTextBrowser* browser_ = nullptr;
    QLineEdit* search_ = nullptr;
};

} // namespace ui

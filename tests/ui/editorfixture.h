// The worksheet in the window, with hands on mouse and keys.
#pragma once

#include "deskfixture.h"
#include "ui/editor.h"
#include "ui/worksheetview.h"

#include <QPoint>
#include <Qt>

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace support {

class EditorFixture : public DeskFixture {
protected:
    ui::WorksheetView& view() { return window.view(); }
    ui::Editor& editor() { return window.editor(); }
    grid::Worksheet& sheet() { return *editor().worksheet(); }

    // Opens the session of a menu command; the test fails when it does not open.
    void open(std::string_view command = "mnuHeatTemperature");
    void leave(base::Answer answer, const std::string& caption = "Temperature");
    void tool(const char* key); // a click on the toolbar
    QAction& action(std::string_view name);

    void press(QPoint pixel, Qt::KeyboardModifiers modifiers = {});
    void move_to(QPoint pixel);
    void release(QPoint pixel);
    void click(QPoint pixel, Qt::MouseButton button = Qt::LeftButton,
               Qt::KeyboardModifiers modifiers = {});
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    QPoint cell(int column, int row) { return view().cell_centre(column, row); }
    // Pixel of a place in the grid's own frame, metres.
    QPoint at(double x, double y) { return view().pixel_of({x, y}).toPoint(); }

    // Opens the value dialog by `open`, types one text a field and presses the button.
    void type_values(const std::function<void()>& open, const std::vector<std::string>& texts,
                     const char* button = "cmdOK", const char* dialog = "Specify_One_Real");
    void set_cell(int column, int row, const std::string& text);

    // Layer of a parameter in the files as they are now.
    std::vector<float> file_values(const char* extension, int layer = 1) const;
    std::string pane(int number);
    std::map<std::string, std::string> all_files() const;
    std::vector<std::string> names_with(const std::string& part) const;
};

} // namespace support

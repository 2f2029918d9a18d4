#include "ui/editor.h"

#include "ui/desk.h"
#include "ui/mainwindow.h"

namespace ui {

Editor::Editor(Desk& desk, MainWindow& window) : desk_(desk), window_(window) {}

Editor::~Editor() = default;

bool Editor::is_open() const {
    return worksheet_ || mesh_;
}

void Editor::open(std::string_view) {}

void Editor::open_request(const grid::EditRequest&) {}

bool Editor::leave() {
    return true;
}

void Editor::run(std::string_view) {}

} // namespace ui

// How the worksheet is looked at: legend, colours of values, pictures. A menu of the right button.
#pragma once

class QMenu;

namespace ui {

class EditorSession;
class MainWindow;

// `session`: nullptr without one.
void fill_view_menu(QMenu& menu, MainWindow& window, EditorSession* session);

} // namespace ui

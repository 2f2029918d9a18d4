// Help|About Tervex Desk.
#pragma once

class QWidget;

namespace ui {

// Name, version and licence under the title picture.
void show_about(QWidget* parent);

} // namespace ui

// The program's pictures, drawn from its own SVG files.
#pragma once

#include <QIcon>
#include <QPixmap>

namespace ui {

// Picture of a tool, resources/<key>.svg, in the text colour of the palette; grey when disabled.
QIcon tool_icon(const char* key);

// The program's own icon.
QIcon program_icon();

// The picture of the About box, in logical pixels, for a screen of that ratio.
QPixmap title_picture(int width, double ratio);

} // namespace ui

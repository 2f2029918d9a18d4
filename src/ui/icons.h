// The program's pictures, drawn from its own SVG files.
#pragma once

#include <QIcon>

namespace ui {

// Picture of a tool, resources/<key>.svg, in the text colour of the palette; grey when disabled.
QIcon tool_icon(const char* key);

// The program's own icon, and the picture of its About box.
QIcon program_icon();

} // namespace ui

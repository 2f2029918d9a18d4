// The lines of a worksheet session's script.
#pragma once

#include "grid/worksheet.h"
#include "td/command.h"

namespace core {
class Project;
}

namespace td {

class ScriptLines;

// Carries out the lines; `leave` is the last one, at the end of the lines the user is asked. Exit
// status. The worksheet has ended only when this says so (Worksheet::ended): after a refused line,
// a UsageError or a failure it is still open.
int run_session_script(Context& context, const core::Project& project, grid::Worksheet& worksheet,
                       ScriptLines& lines);

} // namespace td

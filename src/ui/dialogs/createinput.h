// "Create TERVEX Inputfile": check, progress, and what becomes of the result.
#pragma once

namespace ui {

struct CommandContext;

// Writes the input file and tervex.ctl of the open model. What is missing is shown and can be
// mended in "Check model"; behind a creation without fault the user may run the simulator.
void create_input(CommandContext& context);

} // namespace ui

// What the commands that start the simulator share.
#pragma once

#include "input/runcontrol.h"

#include <string>
#include <vector>

namespace ui {

struct CommandContext;
class Desk;

// The program folder, and those of the programs that came with this one.
input::Programs run_programs(const Desk& desk);

// What has come of a command: in the status bar until the next operation.
void tell_result(CommandContext& context, const std::string& text);

// Shows what was started on the open model in its window "Run TERVEX"; does nothing for nothing.
void show_run(CommandContext& context, std::vector<input::Started> started);

} // namespace ui

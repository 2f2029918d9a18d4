// "Serialized Run": a result file becomes the next run's input.
#pragma once

namespace ui {

struct CommandContext;

void serialized_run(CommandContext& context);

} // namespace ui

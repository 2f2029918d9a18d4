// "Model Information": what the open model holds, on one page to read and to copy.
#pragma once

namespace ui {

struct CommandContext;

void model_page(CommandContext& context);

} // namespace ui

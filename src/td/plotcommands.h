// What the commands for contours and for plots share.
#pragma once

#include "plot/plotsource.h"
#include "td/command.h"

#include <string_view>
#include <vector>

namespace grid {
struct EditRequest;
}

namespace td {

// The items of a list with commas; at least one.
std::vector<std::string_view> split_list(std::string_view list);
// --layer; 1 without it.
int layer_of(const Context& context, const app::Workspace& workspace);
// What --array, --layer and --period choose of an item.
plot::PlotParameter parameter_of(const Context& context, const app::Workspace& workspace,
                                 const grid::EditRequest& request);

int contour_make(Context& context);
int contour_levels(Context& context);
int contour_text(Context& context);
int contour_lines(Context& context);

} // namespace td

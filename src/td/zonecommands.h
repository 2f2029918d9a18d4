// What the commands on zones, array exchange and search share.
#pragma once

#include "td/worksheetsession.h"

#include <functional>

namespace td {

// Runs `look` on the item without a session and, when it gives 0, `work` in a whole session. `look`
// parses the words of the command line, so that a wrong one leaves the model alone.
int look_then_work(Context& context,
                   const std::function<int(app::Workspace&, const grid::EditRequest&)>& look,
                   const std::function<int(grid::Worksheet&)>& work);

// --period and --layer of an item whose record has so many layers.
struct ShownPlace {
    int period, layer;
};
ShownPlace shown_place(const Context& context, int layers);

// Commands of the second half of the table.
int array_export(Context& context);
int array_import(Context& context);
int array_reset(Context& context);
int modify(Context& context);
int rules_list(Context& context);
int rules_set(Context& context);

} // namespace td

// What the commands that start the simulator share.
#pragma once

namespace app {
struct Workspace;
}

namespace td {

struct Context;

// Starts the simulator on the model and goes on without it: the records and the exit status of
// `td run`.
int run_model(Context& context, app::Workspace& workspace);

} // namespace td

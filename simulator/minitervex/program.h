// The program: what a person types, the control file, the flag file.
#pragma once

#include <filesystem>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

namespace minitervex {

enum ExitStatus { done = 0, failed = 1, wrong_usage = 2, interrupted = 130 };

struct Streams {
    std::ostream& out;
    std::ostream& err;
};

// Runs in `folder`, the current one of a person: without arguments what its tervex.ctl names, with
// one argument that project. `stop` is asked after each step whether to end there. Failures become
// one line on `err`.
int run_program(const std::vector<std::string>& arguments, const std::filesystem::path& folder,
                const Streams& streams, const std::function<bool()>& stop);

// Project of a control file: its eleventh line without the type behind it. FileFailure when there
// is none.
std::filesystem::path project_of(const std::filesystem::path& control_file);

// From now on SIGINT, SIGTERM and SIGHUP only ask for an end, which interrupted_by_signal tells,
// and a broken pipe ends nothing.
void catch_signals();
bool interrupted_by_signal();

} // namespace minitervex

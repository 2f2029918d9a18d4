// The only catcher below main: runs a step, offers its failure to the user and does what he says.
#pragma once

#include <functional>
#include <stdexcept>
#include <string_view>

namespace base {
class Interaction;
}

namespace report {

enum class Outcome {
    done,
    skipped, // the step failed and the work goes on behind it
    left,    // the step failed and its command ends
};

// Thrown when the user chose to end the program; main lets it through.
class ProgramEnd : public std::runtime_error {
public:
    ProgramEnd() : std::runtime_error("ended by the user") {}
};

// Runs `step` and asks `user` about every FileFailure and RangeFailure, also about memory that
// could not be had. `signature` names the procedure and its arguments, and goes into the history of
// calls. A step that fails has to leave things so that it can be repeated.
Outcome attempt(base::Interaction& user, std::string_view signature,
                const std::function<void()>& step);

} // namespace report

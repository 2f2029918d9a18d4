// The person at a terminal: boxes become lines on standard error, questions are answered by
// options.
#pragma once

#include "base/interaction.h"

#include <iosfwd>
#include <string>

namespace report {
class FailureLog;
}

namespace td {

enum class StandingAnswer { none, yes, no };

class TerminalUser : public base::Interaction {
public:
    // A quiet one keeps boxes that only inform to himself. Calls and failures go into `log`.
    TerminalUser(std::ostream& err, StandingAnswer answer, bool quiet = false,
                 report::FailureLog* log = nullptr)
        : err_(err), answer_(answer), quiet_(quiet), log_(log) {}

    void message(base::Icon icon, std::string_view title, std::string_view text) override;
    // Yes (OK) or No by the option; without one, prints the question and gives `cancel`.
    base::Answer ask(std::string_view title, std::string_view text, base::Buttons buttons) override;
    std::optional<std::filesystem::path> choose_file(base::FileChoice kind, std::string_view title,
                                                     std::string_view filter,
                                                     std::string_view name) override;
    void status(std::string_view text) override;
    bool show_meter(int percent) override;
    void busy(bool on) override;
    void beep() override;
    // One `error:` line; the work goes on behind the step.
    base::Reaction failure(const base::Failure& failure) override;
    void called(std::string_view signature) override;

    bool has_failed() const { return has_failed_; }

private:
    std::ostream& err_;
    StandingAnswer answer_;
    bool quiet_;
    report::FailureLog* log_;
    bool has_failed_ = false;
};

// A text with its line breaks written as " / ".
std::string one_line(std::string_view text);

// The next interrupt asks the running operation to stop instead of ending the program at once; a
// second one ends it, for instance while it waits for input.
void catch_interrupts();

} // namespace td

#include "td/terminaluser.h"

#include "report/errorreport.h"
#include "td/command.h"

#include <fmt/format.h>

#include <csignal>
#include <ostream>

namespace td {

namespace {

// The one value that a signal handler may touch.
volatile std::sig_atomic_t interrupted = 0;

} // namespace

std::string one_line(std::string_view text) {
    std::string line;
    for (const char c : text) {
        if (c == '\n') {
            line += " / ";
        } else if (c != '\r') {
            line += c;
        }
    }
    return line;
}

void catch_interrupts() {
    std::signal(SIGINT, [](int) {
        interrupted = 1;
        std::signal(SIGINT, SIG_DFL);
    });
}

void TerminalUser::message(base::Icon icon, std::string_view title, std::string_view text) {
    if (quiet_ && icon == base::Icon::information) {
        return;
    }
    err_ << fmt::format("{}: {}\n", one_line(title), one_line(text));
}

base::Answer TerminalUser::ask(std::string_view title, std::string_view text,
                               base::Buttons buttons) {
    if (answer_ == StandingAnswer::none) {
        message(base::Icon::question, title, text);
        return base::Answer::cancel;
    }
    const bool yes = answer_ == StandingAnswer::yes;
    if (buttons == base::Buttons::ok_cancel) {
        return yes ? base::Answer::ok : base::Answer::cancel;
    }
    return yes ? base::Answer::yes : base::Answer::no;
}

std::optional<std::filesystem::path> TerminalUser::choose_file(base::FileChoice, std::string_view,
                                                               std::string_view, std::string_view) {
    return std::nullopt; // files are named on the command line
}

void TerminalUser::status(std::string_view) {}

bool TerminalUser::show_meter(int) {
    return interrupted != 0;
}

void TerminalUser::busy(bool) {}

void TerminalUser::beep() {}

base::Reaction TerminalUser::failure(const base::Failure& failure) {
    has_failed_ = true;
    if (failure.file.empty()) {
        err_ << fmt::format("error: {}\n", one_line(failure.what));
    } else {
        err_ << fmt::format("error: {} ({})\n", one_line(failure.what),
                            one_line(failure.file.string()));
    }
    if (log_ != nullptr) {
        log_->append(failure, run_time_failure);
    }
    return base::Reaction::next;
}

void TerminalUser::called(std::string_view signature) {
    if (log_ != nullptr) {
        log_->calls().CallStack(signature);
    }
}

} // namespace td

#include "td/command.h"

#include "base/failure.h"
#include "base/paths.h"
#include "report/errorreport.h"
#include "td/help.h"
#include "td/version.h"

#include <fmt/format.h>

#include <algorithm>
#include <new>
#include <numeric>
#include <optional>
#include <ostream>
#include <utility>

#include <unistd.h>

namespace td {

namespace {

// The command whose name stands at the beginning of `words`; the longest one wins.
const Command* find_command(const std::vector<std::string>& words) {
    const Command* found = nullptr;
    std::size_t longest = 0;
    for_each_command([&](const Command& command) {
        const std::vector<std::string> name = command_words(command);
        const bool fits = name.size() <= words.size() && name.size() > longest &&
                          std::equal(name.begin(), name.end(), words.begin());
        if (fits) {
            found = &command;
            longest = name.size();
        }
    });
    return found;
}

// Number of letters to insert, delete or change to make `a` of `b`.
std::size_t edit_distance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t changed = diagonal + (a[i] == b[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({changed, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

// The command that was probably meant: the nearest name within a third of its letters.
std::optional<std::string> nearest_command(const std::vector<std::string>& words) {
    std::optional<std::string> nearest;
    std::size_t least = std::string::npos;
    for_each_command([&](const Command& command) {
        const std::size_t count = std::min(command_words(command).size(), words.size());
        const std::string typed =
            fmt::format("{}", fmt::join(words.begin(),
                                        words.begin() + static_cast<std::ptrdiff_t>(count), " "));
        const std::string_view name = command.name;
        const std::size_t distance = edit_distance(typed, name);
        if (distance < least && distance * 3 <= name.size()) {
            least = distance;
            nearest = name;
        }
    });
    return nearest;
}

std::string unknown_command(const std::vector<std::string>& words) {
    if (words.empty()) {
        return "td: a command is missing; see td --help";
    }
    std::string text = fmt::format("td: unknown command \"{}\"", fmt::join(words, " "));
    if (const auto group = help_for({words[0], "--help"}); group && words.size() == 1) {
        return fmt::format("{}; see td {} --help", text, words[0]);
    }
    if (const auto nearest = nearest_command(words)) {
        return fmt::format("{}; did you mean \"td {}\"?", text, *nearest);
    }
    return text + "; see td --help";
}

StandingAnswer standing_answer(const Arguments& args) {
    if (args.has("--yes") && args.has("--no")) {
        throw UsageError("--yes and --no exclude each other");
    }
    return args.has("--yes")  ? StandingAnswer::yes
           : args.has("--no") ? StandingAnswer::no
                              : StandingAnswer::none;
}

// The folder of the executable, or the one in the user's data when nothing can be written there.
std::filesystem::path program_folder(const Surroundings& surroundings) {
    const std::filesystem::path own = surroundings.program_folder.empty()
                                          ? base::executable_folder()
                                          : surroundings.program_folder;
    return ::access(own.c_str(), W_OK) == 0 ? own : base::user_data_folder();
}

struct Streams {
    std::istream& in;
    std::ostream& out;
    std::ostream& err;
};

// The command and all that was typed behind it, for the report of a failure.
void tell_call(const Command& command, const Arguments& args, report::FailureLog& log) {
    log.enter(fmt::format("[td] {}", command.name));
    for (const ArgumentSpec& argument : command.arguments) {
        for (const std::string& value : args.all_arguments(argument.name)) {
            log.calls().CallStackParam(argument.name, value);
        }
    }
    for (const Arguments::Given& given : args.given()) {
        log.calls().CallStackParam(given.option, given.value);
    }
}

int run_command(const Command& command, const std::vector<std::string>& words,
                const Streams& streams, const Surroundings& surroundings, report::FailureLog& log) {
    const std::size_t name_length = command_words(command).size();
    const Arguments args =
        Arguments::parse(command.name, command.arguments, all_options(command),
                         {words.begin() + static_cast<std::ptrdiff_t>(name_length), words.end()});
    tell_call(command, args, log);
    TerminalUser user(streams.err, standing_answer(args), args.has("--quiet"), &log);
    Context context{args,
                    user,
                    streams.in,
                    streams.out,
                    args.has("--install") ? std::filesystem::path(args.value("--install"))
                                          : program_folder(surroundings),
                    surroundings.now};
    if (surroundings.keeps_failures) {
        log.set_folders({context.install, base::user_data_folder()});
    }
    const int status = command.run(context);
    return user.has_failed() ? run_time_failure : status;
}

int dispatch(const std::vector<std::string>& words, const Streams& streams,
             const Surroundings& surroundings, report::FailureLog& log) {
    if (const auto text = help_for(words)) {
        streams.out << *text;
        return done;
    }
    const Command* command = find_command(words);
    if (command == nullptr) {
        throw UsageError(unknown_command(words));
    }
    return run_command(*command, words, streams, surroundings, log);
}

} // namespace

int run_program(const std::vector<std::string>& words, std::istream& in, std::ostream& out,
                std::ostream& err, const Surroundings& surroundings) {
    report::FailureLog log({base::desk_title, "td", report::version_numbers(version)},
                           surroundings.now);
    TerminalUser reporter(err, StandingAnswer::none, false, &log);
    try {
        const int status = dispatch(words, {in, out, err}, surroundings, log);
        if (!out.flush()) {
            throw base::FileFailure("cannot be written", "standard output");
        }
        return status;
    } catch (const UsageError& error) {
        err << error.what() << '\n';
        return wrong_usage;
    } catch (const base::FileFailure& failure) {
        reporter.failure({failure.what(), failure.file()});
    } catch (const base::RangeFailure& failure) {
        reporter.failure({failure.what(), {}});
    } catch (const std::filesystem::filesystem_error& failure) {
        reporter.failure({failure.code().message(), failure.path1()});
    } catch (const std::bad_alloc&) {
        reporter.failure({"out of memory", {}});
    }
    return run_time_failure;
}

} // namespace td

#include "td/command.h"

#include "base/failure.h"
#include "base/paths.h"
#include "td/help.h"

#include <fmt/format.h>

#include <new>
#include <optional>
#include <ostream>

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

StandingAnswer standing_answer(const Arguments& args) {
    if (args.has("--yes") && args.has("--no")) {
        throw UsageError("--yes and --no exclude each other");
    }
    return args.has("--yes")  ? StandingAnswer::yes
           : args.has("--no") ? StandingAnswer::no
                              : StandingAnswer::none;
}

// The folder of the executable, or the one in the user's data when nothing can be written there.
std::filesystem::path default_install() {
    const std::filesystem::path own = base::executable_folder();
    return ::access(own.c_str(), W_OK) == 0 ? own : base::user_data_folder();
}

int run_command(const Command& command, const std::vector<std::string>& words, std::istream& in,
                std::ostream& out, std::ostream& err) {
    const std::size_t name_length = command_words(command).size();
    const Arguments args =
        Arguments::parse(command.name, command.arguments, all_options(command),
                         {words.begin() + static_cast<std::ptrdiff_t>(name_length), words.end()});
    TerminalUser user(err, standing_answer(args));
    Context context{args, user, in, out,
                    args.has("--install") ? std::filesystem::path(args.value("--install"))
                                          : default_install()};
    const int status = command.run(context);
    return user.has_failed() ? run_time_failure : status;
}

int dispatch(const std::vector<std::string>& words, std::istream& in, std::ostream& out,
             std::ostream& err) {
    if (const auto text = help_for(words)) {
        out << *text;
        return done;
    }
    const Command* command = find_command(words);
    if (command == nullptr) {
        throw UsageError(words.empty() ? "td: a command is missing; see td --help"
                                       : fmt::format("td: unknown command \"{}\"; see td --help",
                                                     fmt::join(words, " ")));
    }
    return run_command(*command, words, in, out, err);
}

} // namespace

int run_program(const std::vector<std::string>& words, std::istream& in, std::ostream& out,
                std::ostream& err) {
    TerminalUser reporter(err, StandingAnswer::none);
    try {
        const int status = dispatch(words, in, out, err);
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
    } catch (const std::bad_alloc&) {
        reporter.failure({"out of memory", {}});
    }
    return run_time_failure;
}

} // namespace td

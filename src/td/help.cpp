#include "td/help.h"

#include "base/textfile.h"
#include "td/command.h"
#include "td/version.h"

#include <fmt/format.h>

#include <algorithm>

namespace td {

namespace {

constexpr CommandGroup groups[] = {
    {"Project", project_commands},
    {"Arrays", array_commands},
    {"Grid and layers", grid_commands},
    {"Worksheet, mesh, refinement", edit_commands},
    {"Zones, array exchange, search and modify", zone_commands},
    {"Contours and plots", plot_commands},
    {"Monitoring points and observations", point_commands},
    {"Simulation type, coupling, output", type_commands},
    {"Periods and solver", time_commands},
    {"Rock, heat, transport", rock_commands},
    {"Simulator input", input_commands},
    {"Running", run_commands},
    {"Results", result_commands},
    {"View settings of a result", viewer_commands},
    {"Monitoring, logs, balances", monitor_commands},
    {"Pictures elsewhere, formulas", vtk_commands},
    {"Binary cache, statistics", cache_commands},
    {"From results to models", import_commands},
    {"Error report", report_commands},
};

constexpr std::string_view help_flag = "--help";

std::string usage_of(const Command& command) {
    std::string text = fmt::format("td {}", command.name);
    for (const ArgumentSpec& argument : command.arguments) {
        const std::string name =
            argument.repeated ? fmt::format("{}...", argument.name) : std::string(argument.name);
        text += argument.required ? " " + name : " [" + name + "]";
    }
    return text + " [options]";
}

std::string option_line(const OptionSpec& option) {
    const std::string name = option.value[0] == '\0'
                                 ? std::string(option.name)
                                 : fmt::format("{} {}", option.name, option.value);
    return fmt::format("  {:<28} {}{}\n", name, option.help,
                       option.repeated ? " (may be repeated)" : "");
}

std::string command_help(const Command& command) {
    std::string text = fmt::format("Usage: {}\n\n{}\n", usage_of(command), command.help);
    if (!command.arguments.empty()) {
        text += "\nArguments:\n";
        for (const ArgumentSpec& argument : command.arguments) {
            text += fmt::format("  {:<28} {}\n", argument.name, argument.help);
        }
    }
    const std::vector<OptionSpec> options = all_options(command);
    if (!options.empty()) {
        text += "\nOptions:\n";
        for (const OptionSpec& option : options) {
            text += option_line(option);
        }
    }
    return text;
}

// Commands whose name begins with `words`; all of them without words.
std::string list_of_commands(const std::vector<std::string>& words) {
    std::string text;
    for (const CommandGroup& group : groups) {
        std::string lines;
        for (const Command& command : group.commands()) {
            const std::vector<std::string> name = command_words(command);
            if (words.size() <= name.size() &&
                std::equal(words.begin(), words.end(), name.begin())) {
                lines += fmt::format("  {:<22} {}\n", command.name, command.help);
            }
        }
        if (!lines.empty()) {
            text += fmt::format("\n{}:\n{}", group.title, lines);
        }
    }
    return text;
}

constexpr std::string_view introduction =
    "td does from a shell what Tervex Desk does from its menus.\n"
    "\n"
    "Usage: td COMMAND [SUBCOMMAND] MODEL.td1 [options]\n"
    "\n"
    "Records go to standard output, fields separated by one TAB; messages go to standard error.\n"
    "Questions are answered by --yes or --no.\n"
    "Exit status: 0 done, 1 refused, 2 wrong usage, 3 run-time failure.\n";

} // namespace

std::span<const CommandGroup> command_groups() {
    return groups;
}

void for_each_command(const std::function<void(const Command&)>& visit) {
    for (const CommandGroup& group : groups) {
        for (const Command& command : group.commands()) {
            visit(command);
        }
    }
}

std::vector<std::string> command_words(const Command& command) {
    std::vector<std::string> words;
    std::string_view rest = command.name;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(' '), rest.size());
        words.emplace_back(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return words;
}

std::optional<std::string> help_for(const std::vector<std::string>& words) {
    if (words.size() == 1 && words[0] == "--version") {
        return fmt::format("td {}\n", version);
    }
    if (!words.empty() && (words[0] == "help" || words[0] == "-h")) {
        std::vector<std::string> asked(words.begin() + 1, words.end());
        asked.emplace_back(help_flag);
        return help_for(asked);
    }
    const auto asked = std::ranges::find(words, help_flag);
    if (asked == words.end()) {
        return std::nullopt;
    }
    const std::vector<std::string> name(words.begin(), asked);
    if (name.empty()) {
        return fmt::format("{}{}\ntd COMMAND --help tells more about one command.\n", introduction,
                           list_of_commands({}));
    }
    std::optional<std::string> text;
    for_each_command([&](const Command& command) {
        const std::vector<std::string> own = command_words(command);
        if (own.size() <= name.size() && std::equal(own.begin(), own.end(), name.begin())) {
            text = command_help(command);
        }
    });
    if (!text) {
        const std::string list = list_of_commands(name);
        text = list.empty() ? std::nullopt : std::optional(list.substr(1));
    }
    return text;
}

} // namespace td

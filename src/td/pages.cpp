#include "td/pages.h"

#include "td/command.h"
#include "td/help.h"
#include "td/version.h"

#include <fmt/format.h>

#include <map>
#include <set>

namespace td {

namespace {

// Text for troff: hyphens that can be copied, no accidental request at the beginning of a line.
std::string roff(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '\\') {
            escaped += "\\e";
        } else if (c == '-') {
            escaped += "\\-";
        } else {
            escaped += c;
        }
    }
    return escaped.starts_with('.') || escaped.starts_with('\'') ? "\\&" + escaped : escaped;
}

std::string bold(std::string_view text) {
    return fmt::format("\\fB{}\\fR", roff(text));
}
std::string italic(std::string_view text) {
    return fmt::format("\\fI{}\\fR", roff(text));
}

std::string option_entry(const OptionSpec& option) {
    const std::string value = option.value[0] == '\0' ? "" : " " + italic(option.value);
    return fmt::format(".TP\n{}{}\n{}{}\n", bold(option.name), value, roff(option.help),
                       option.repeated ? " (may be repeated)" : "");
}

std::string command_entry(const Command& command) {
    std::string line = bold(fmt::format("td {}", command.name));
    for (const ArgumentSpec& argument : command.arguments) {
        const std::string name = italic(argument.name);
        line += argument.required ? " " + name : " [" + name + "]";
    }
    std::string text = fmt::format(".TP\n{}\n{}.\n", line, roff(command.help));
    text += ".RS\n";
    for (const ArgumentSpec& argument : command.arguments) {
        if (std::string_view(argument.name) != model_argument.name) {
            text += fmt::format(".TP\n{}\n{}\n", italic(argument.name), roff(argument.help));
        }
    }
    for (const OptionSpec& option : all_options(command)) {
        text += option_entry(option);
    }
    return text + ".RE\n";
}

constexpr std::string_view man_end =
    ".SH EXIT STATUS\n"
    ".TP\n0\ndone\n"
    ".TP\n1\nrefused; the message says why, and nothing was changed\n"
    ".TP\n2\nwrong usage\n"
    ".TP\n3\na run\\-time failure, with one line on standard error\n"
    ".SH EXAMPLES\n"
    ".nf\n"
    "td new field.td1\n"
    "td grid set field.td1 \\-\\-columns 50 \\-\\-rows 30 \\-\\-layers 3 \\-\\-column\\-size 20 "
    "\\-\\-row\\-size 20 \\-\\-finish\n"
    "td check field.td1 \\-\\-all\n"
    "td create\\-input field.td1 \\-\\-install .\n"
    ".fi\n"
    ".SH SEE ALSO\n"
    ".BR tervexdesk (1)\n";

// What may stand behind the first words of a command line.
std::map<std::string, std::set<std::string>> words_behind() {
    std::map<std::string, std::set<std::string>> next;
    for_each_command([&](const Command& command) {
        const std::vector<std::string> words = command_words(command);
        std::string before;
        for (const std::string& word : words) {
            next[before].insert(word);
            before += before.empty() ? word : " " + word;
        }
        for (const OptionSpec& option : all_options(command)) {
            next[before].insert(option.name);
        }
        next[before].insert("--help");
    });
    next[""].insert({"--help", "--version"});
    return next;
}

} // namespace

std::string man_page() {
    std::string text =
        fmt::format(".TH TD 1 \"\" \"td {}\" \"Tervex Desk\"\n"
                    ".SH NAME\ntd \\- models of groundwater, heat and transport from "
                    "the shell\n"
                    ".SH SYNOPSIS\n.B td\n.I COMMAND\n[\\fISUBCOMMAND\\fR]\n"
                    ".I MODEL.td1\n[\\fIoptions\\fR]\n"
                    ".SH DESCRIPTION\n",
                    version);
    text += "Makes, fills and checks models of the simulator tervex, writes its input, runs it and "
            "reads its results. Records go "
            "to standard output, fields separated by one TAB; messages go to standard error. "
            "Questions are answered by \\-\\-yes or \\-\\-no.\n";
    text += ".SH COMMANDS\n";
    for (const CommandGroup& group : command_groups()) {
        text += fmt::format(".SS {}\n", group.title);
        for (const Command& command : group.commands()) {
            text += command_entry(command);
        }
    }
    text += man_end;
    return text;
}

std::string bash_completion() {
    std::string cases;
    for (const auto& [before, words] : words_behind()) {
        cases += fmt::format("        \"{}\") words=\"{}\" ;;\n", before, fmt::join(words, " "));
    }
    return fmt::format("# bash completion for td\n"
                       "_td() {{\n"
                       "    local current=${{COMP_WORDS[COMP_CWORD]}} command= words= word\n"
                       "    for word in \"${{COMP_WORDS[@]:1:COMP_CWORD-1}}\"; do\n"
                       "        case $word in\n"
                       "        -* | */* | *.*) break ;;\n"
                       "        esac\n"
                       "        command+=${{command:+ }}$word\n"
                       "    done\n"
                       "    case $command in\n"
                       "{}"
                       "    esac\n"
                       "    COMPREPLY=($(compgen -W \"$words\" -- \"$current\"))\n"
                       "    if [[ $current != -* && $command == *[a-z]* ]]; then\n"
                       "        for word in '[tT][dD]1' '[nN][lL][oO]' '[nN][mM][lL]'; do\n"
                       "            COMPREPLY+=($(compgen -f -X \"!*.$word\" -- \"$current\"))\n"
                       "        done\n"
                       "        COMPREPLY+=($(compgen -d -- \"$current\"))\n"
                       "    fi\n"
                       "}}\n"
                       "complete -o filenames -o default -F _td td\n",
                       cases);
}

} // namespace td

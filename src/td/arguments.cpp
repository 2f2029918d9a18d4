#include "td/arguments.h"

#include "base/numbertext.h"
#include "td/command.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <map>

namespace td {

namespace {

const std::string nothing;

// Options in front, each joined to its value ("--name=-1"), arguments behind "--": a negative
// number is then never taken for an option.
std::vector<std::string> options_first(std::span<const OptionSpec> options,
                                       const std::vector<std::string>& words) {
    std::vector<std::string> sorted, arguments;
    bool only_arguments = false;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (only_arguments || !words[i].starts_with("--")) {
            arguments.push_back(words[i]);
            continue;
        }
        const auto option = std::ranges::find_if(
            options, [&](const OptionSpec& spec) { return spec.name == words[i]; });
        const bool takes_value = option != options.end() && option->value[0] != '\0';
        if (words[i] == "--") {
            only_arguments = true;
        } else if (takes_value && i + 1 < words.size() && !words[i + 1].starts_with("--")) {
            sorted.push_back(words[i] + "=" + words[i + 1]);
            ++i;
        } else {
            sorted.push_back(words[i]);
        }
    }
    sorted.emplace_back("--");
    sorted.insert(sorted.end(), arguments.begin(), arguments.end());
    return sorted;
}

struct Bound {
    std::vector<std::pair<CLI::Option*, const ArgumentSpec*>> arguments;
    std::map<const CLI::Option*, const OptionSpec*> options;
};

Bound declare(CLI::App& app, std::span<const ArgumentSpec> arguments,
              std::span<const OptionSpec> options) {
    Bound bound;
    for (const ArgumentSpec& spec : arguments) {
        CLI::Option* option = app.add_option(spec.name, spec.help);
        option->required(spec.required);
        spec.repeated ? option->expected(spec.required ? 1 : 0, 100000)
                      : option->expected(spec.required ? 1 : 0, 1);
        bound.arguments.emplace_back(option, &spec);
    }
    for (const OptionSpec& spec : options) {
        CLI::Option* option =
            spec.value[0] == '\0' ? app.add_flag(spec.name) : app.add_option(spec.name);
        option->required(spec.required)->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
        if (spec.value[0] != '\0') {
            option->expected(1)->allow_extra_args(false);
        }
        bound.options.emplace(option, &spec);
    }
    return bound;
}

} // namespace

Arguments Arguments::parse(const std::string& command, std::span<const ArgumentSpec> arguments,
                           std::span<const OptionSpec> options,
                           const std::vector<std::string>& words) {
    CLI::App app;
    app.set_help_flag();
    const Bound bound = declare(app, arguments, options);
    std::vector<std::string> rest = options_first(options, words);
    std::ranges::reverse(rest);
    try {
        app.parse(rest);
    } catch (const CLI::ParseError& error) {
        throw UsageError(fmt::format("td {}: {}", command, error.what()));
    }
    Arguments parsed;
    for (const auto& [option, spec] : bound.arguments) {
        for (const std::string& value : option->results()) {
            parsed.arguments_.push_back({spec->name, value});
        }
    }
    std::map<const OptionSpec*, std::size_t> used;
    for (const CLI::Option* option : app.parse_order()) {
        const auto found = bound.options.find(option);
        if (found == bound.options.end()) {
            continue;
        }
        const std::size_t index = used[found->second]++;
        const bool is_switch = found->second->value[0] == '\0';
        if (index > 0 && !found->second->repeated && !is_switch) {
            throw UsageError(fmt::format("td {}: {} is given twice", command, found->second->name));
        }
        parsed.given_.push_back(
            {found->second->name, is_switch ? std::string() : option->results().at(index)});
    }
    return parsed;
}

bool Arguments::has_argument(std::string_view name) const {
    return std::ranges::any_of(arguments_, [&](const Given& g) { return g.option == name; });
}

const std::string& Arguments::argument(std::string_view name) const {
    const auto found =
        std::ranges::find_if(arguments_, [&](const Given& g) { return g.option == name; });
    return found == arguments_.end() ? nothing : found->value;
}

std::vector<std::string> Arguments::all_arguments(std::string_view name) const {
    std::vector<std::string> values;
    for (const Given& given : arguments_) {
        if (given.option == name) {
            values.push_back(given.value);
        }
    }
    return values;
}

int Arguments::argument_integer(std::string_view name, int low, int high) const {
    return integer_of(argument(name), name, low, high);
}

bool Arguments::has(std::string_view option) const {
    return std::ranges::any_of(given_, [&](const Given& g) { return g.option == option; });
}

const std::string& Arguments::value(std::string_view option) const {
    const auto found = std::find_if(given_.rbegin(), given_.rend(),
                                    [&](const Given& g) { return g.option == option; });
    return found == given_.rend() ? nothing : found->value;
}

std::string Arguments::value_or(std::string_view option, std::string_view otherwise) const {
    return has(option) ? value(option) : std::string(otherwise);
}

std::vector<std::string> Arguments::values(std::string_view option) const {
    std::vector<std::string> values;
    for (const Given& given : given_) {
        if (given.option == option) {
            values.push_back(given.value);
        }
    }
    return values;
}

int Arguments::integer(std::string_view option, int low, int high, int otherwise) const {
    return has(option) ? integer_of(value(option), option, low, high) : otherwise;
}

std::optional<double> Arguments::number(std::string_view option) const {
    return has(option) ? std::optional(number_of(value(option), option)) : std::nullopt;
}

std::pair<std::string, std::string> split_assignment(std::string_view text) {
    const std::size_t sign = text.find('=');
    if (sign == std::string_view::npos) {
        throw UsageError(fmt::format("\"{}\" has no \"=\"", text));
    }
    return {std::string(text.substr(0, sign)), std::string(text.substr(sign + 1))};
}

int integer_of(std::string_view text, std::string_view what, int low, int high) {
    const auto number = base::whole_integer(text);
    if (!number || *number < low || *number > high) {
        throw UsageError(
            fmt::format("{}: \"{}\" is not a whole number from {} to {}", what, text, low, high));
    }
    return static_cast<int>(*number);
}

double number_of(std::string_view text, std::string_view what) {
    const auto number = base::whole_number(text);
    if (!number) {
        throw UsageError(fmt::format("{}: \"{}\" is not a number", what, text));
    }
    return *number;
}

} // namespace td

#include "td/arguments.h"

#include "base/numbertext.h"
#include "td/command.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <map>

namespace td {

namespace {

const std::string nothing;

// Every value travels behind this mark: the parser would take an empty one for a missing one, and
// one in brackets for a list.
constexpr char mark = '=';

std::string unmarked(const std::string& value) {
    return value.substr(1);
}

// Sorts the words of a command line for the parser.
class Sorter {
public:
    Sorter(const std::string& command, std::span<const OptionSpec> options)
        : command_(command), options_(options) {}

    // Options in front, each joined to its value ("--name=-1"), arguments behind "--": a negative
    // number is then never taken for an option.
    std::vector<std::string> sorted(const std::vector<std::string>& words, std::size_t most) {
        for (auto word = words.begin(); word != words.end(); ++word) {
            if (only_arguments_ || !word->starts_with("--")) {
                arguments_.push_back(mark + *word);
            } else if (*word == "--") {
                only_arguments_ = true;
            } else if (take_option(*word, word + 1 == words.end() ? nullptr : &word[1])) {
                ++word;
            }
        }
        if (arguments_.size() > most) {
            fail("unexpected argument", unmarked(arguments_[most]));
        }
        sorted_.emplace_back("--");
        sorted_.insert(sorted_.end(), arguments_.begin(), arguments_.end());
        return sorted_;
    }

private:
    // True when the value is the next word.
    bool take_option(const std::string& word, const std::string* next) {
        const std::size_t sign = std::min(word.find('='), word.size());
        const std::string name = word.substr(0, sign);
        const auto option = std::ranges::find_if(
            options_, [&](const OptionSpec& spec) { return spec.name == name; });
        if (option == options_.end()) {
            fail("unknown option", name);
        }
        const bool has_value = sign < word.size();
        if (option->value[0] == '\0') {
            if (has_value) {
                fail("no value belongs to", name);
            }
            sorted_.push_back(name);
            return false;
        }
        if (!has_value && (next == nullptr || next->starts_with("--"))) {
            fail("a value is missing behind", name);
        }
        sorted_.push_back(name + '=' + mark + (has_value ? word.substr(sign + 1) : *next));
        return !has_value;
    }

    [[noreturn]] void fail(std::string_view what, std::string_view word) const {
        throw UsageError(fmt::format("td {}: {} \"{}\"", command_, what, word));
    }

    const std::string& command_;
    std::span<const OptionSpec> options_;
    std::vector<std::string> sorted_, arguments_;
    bool only_arguments_ = false;
};

std::size_t most_arguments(std::span<const ArgumentSpec> arguments) {
    const bool repeated = !arguments.empty() && arguments.back().repeated;
    return repeated ? std::numeric_limits<std::size_t>::max() : arguments.size();
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
        // One value at least, also for an argument that may be missing: with none expected, the
        // parser would never give it any.
        option->required(spec.required)
            ->expected(1, spec.repeated ? 100000 : 1)
            ->allow_extra_args(spec.repeated);
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
    std::vector<std::string> rest =
        Sorter(command, options).sorted(words, most_arguments(arguments));
    std::ranges::reverse(rest);
    try {
        app.parse(rest);
    } catch (const CLI::ParseError& error) {
        throw UsageError(fmt::format("td {}: {}", command, error.what()));
    }
    Arguments parsed;
    for (const auto& [option, spec] : bound.arguments) {
        for (const std::string& value : option->results()) {
            parsed.arguments_.push_back({spec->name, unmarked(value)});
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
        parsed.given_.push_back({found->second->name, is_switch
                                                          ? std::string()
                                                          : unmarked(option->results().at(index))});
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

// Parsed arguments of one command.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace td {

struct ArgumentSpec {
    const char* name; // "MODEL"
    const char* help;
    bool required = true;
    bool repeated = false; // takes all that follow; last one only
};

struct OptionSpec {
    const char* name;  // "--layers"
    const char* value; // "N"; empty for a switch
    const char* help;
    bool repeated = false;
    bool required = false;
};

class Arguments {
public:
    // Parses `words` behind the command's name. Values that begin with a minus sign are taken both
    // as --name=-1 and as --name -1. UsageError for anything that the tables do not allow.
    static Arguments parse(const std::string& command, std::span<const ArgumentSpec> arguments,
                           std::span<const OptionSpec> options,
                           const std::vector<std::string>& words);

    bool has_argument(std::string_view name) const;
    // The argument's text; empty when it is optional and missing.
    const std::string& argument(std::string_view name) const;
    std::vector<std::string> all_arguments(std::string_view name) const;
    // Whole number of an argument inside [low, high]; UsageError otherwise.
    int argument_integer(std::string_view name, int low, int high) const;

    bool has(std::string_view option) const;
    // Last value of the option; empty when it was not given.
    const std::string& value(std::string_view option) const;
    std::string value_or(std::string_view option, std::string_view otherwise) const;
    std::vector<std::string> values(std::string_view option) const;
    // Whole number inside [low, high], `otherwise` when the option was not given; UsageError.
    int integer(std::string_view option, int low, int high, int otherwise) const;
    // A number; UsageError when the text is none.
    std::optional<double> number(std::string_view option) const;

    struct Given {
        std::string option, value;
    };
    // All options in the order of the command line.
    const std::vector<Given>& given() const { return given_; }

private:
    std::vector<Given> arguments_;
    std::vector<Given> given_;
};

// "NAME=VALUE" in two; UsageError without "=".
std::pair<std::string, std::string> split_assignment(std::string_view text);
// A whole number inside [low, high] from a text of the command line; UsageError otherwise.
int integer_of(std::string_view text, std::string_view what, int low, int high);
// A number from a text of the command line; UsageError otherwise.
double number_of(std::string_view text, std::string_view what);

} // namespace td

// The error report.

#include "base/failure.h"
#include "report/errorreport.h"
#include "td/command.h"
#include "td/version.h"

#include <limits>
#include <ostream>

namespace td {

namespace {

constexpr int least = std::numeric_limits<int>::min();
constexpr int most = std::numeric_limits<int>::max();

constexpr const char* call_option = "--call";
constexpr const char* arg_option = "--arg";

constexpr OptionSpec report_options[] = {
    {"--number", "N", "number of the error", false, true},
    {"--text", "T", "text of the error", false, true},
    {"--module", "M", "module in which it happened", false, true},
    {"--procedure", "P", "procedure in which it happened", false, true},
    {"--line", "L", "number of the step in it", false, true},
    {call_option, "SIGNATURE", "entry of the call stack; the parameters behind it belong to it",
     true},
    {arg_option, "NAME=VALUE", "parameter of the call before", true},
    {"--comment", "C", "comment (default: the program's advice)"},
    {"--out", "FILE", "file to save the report in (default: standard output)"},
};

// The call stack in the order of the command line.
report::CallHistory calls_of(const Context& context) {
    report::CallHistory calls(context.now);
    for (const Arguments::Given& given : context.args.given()) {
        if (given.option == call_option) {
            calls.CallStack(given.value);
        } else if (given.option == arg_option) {
            if (calls.Call_Stack().empty()) {
                throw UsageError("td report: --arg stands before --call");
            }
            const auto [name, value] = split_assignment(given.value);
            calls.CallStackParam(name, value);
        }
    }
    return calls;
}

int make_report(Context& context) {
    const Arguments& args = context.args;
    const report::ProgInfo program{base::desk_title, "td", report::version_numbers(version)};
    const report::Fault fault{args.integer("--number", least, most, 0), args.value("--text"),
                              args.value("--module"), args.value("--procedure"),
                              args.integer("--line", 0, most, 0)};
    const std::string text =
        report::report_text(program, fault, args.value_or("--comment", report::advice(program)),
                            report::system_information(), context.now(), calls_of(context));
    if (!args.has("--out")) {
        context.out << text;
        return done;
    }
    return report::save_report(args.value("--out"), text, context.user) == report::Saved::declined
               ? refused
               : done;
}

constexpr Command commands[] = {
    {"report",
     "builds a report of a failure for the support contact",
     {},
     report_options,
     true,
     make_report},
};

} // namespace

std::span<const Command> report_commands() {
    return commands;
}

} // namespace td

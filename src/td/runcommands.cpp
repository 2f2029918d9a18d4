// Starting the simulator.

#include "td/runcommands.h"

#include "app/workspace.h"
#include "base/failure.h"
#include "base/paths.h"
#include "base/textfile.h"
#include "input/runcontrol.h"
#include "td/command.h"

#include <fmt/format.h>

#include <ostream>
#include <vector>

namespace td {

namespace {

using core::Access;
using Processes = std::vector<input::Started>;

// Where the program folder was not named, the programs that came with this one will do.
input::Programs programs_for_run(const Context& context) {
    input::Programs programs{base::absolute_path(context.install), {}};
    if (!context.args.has("--install")) {
        const std::filesystem::path own = base::executable_folder();
        programs.spare = {own, (own / "../share/tervexdesk").lexically_normal()};
    }
    return programs;
}

int report_run(Context& context, const input::RunResult& result) {
    if (result.refusal) {
        return context.refuse(*result.refusal);
    }
    for (const input::Started& started : result.started) {
        context.record({"started", started.program.filename().string()});
    }
    context.out.flush(); // the run may last
    return result.cancelled ? refused : done;
}

int run(Context& context, app::Workspace& workspace, Processes& started) {
    input::RunResult result = input::mnuTervexRun(workspace.project, workspace.files,
                                                  programs_for_run(context), context.user);
    const int status = report_run(context, result);
    started = std::move(result.started);
    return status;
}

// Waits, when this was asked for, for the end of the program started first. The model is free for
// other commands by then.
int with_wait(Context& context, int status, Processes& started) {
    if (!context.args.has("--wait") || started.empty()) {
        return status;
    }
    const auto stop = [&context] { return context.user.show_meter(0); };
    const auto ended = started.front().process.wait(stop);
    if (!ended) {
        throw base::FileFailure("was interrupted", started.front().program);
    }
    if (*ended != 0) {
        throw base::FileFailure(fmt::format("ended with exit status {}; {} tells why", *ended,
                                            started.front().log.filename().string()),
                                started.front().program);
    }
    return status;
}

int run_command(Context& context) {
    Processes started;
    const int status = on_model_files(context, Access::read, [&](app::Workspace& workspace) {
        return run(context, workspace, started);
    });
    return with_wait(context, status, started);
}

// The fields of the dialog from the options; UsageError for what the dialog could not hold.
input::SerializedRunForm serialized_run_form(const Arguments& args) {
    input::SerializedRunForm form{.NLO_old = args.value("--nlo"),
                                  .new_Names = args.value("--backup"),
                                  .start = !args.has("--no-start")};
    const std::string name = base::lower(base::file_name(form.NLO_old));
    if (form.NLO_old.empty() && (form.start || form.new_Names.empty())) {
        throw UsageError("td serialized-run: --nlo FILE, or --backup NAME with --no-start, is "
                         "missing");
    }
    if (!form.NLO_old.empty() && !name.ends_with(".nlo") &&
        name.find(".nlo.") == std::string::npos) {
        throw UsageError(
            fmt::format("--nlo: \"{}\" is no result file (.nlo)", args.value("--nlo")));
    }
    return form;
}

int serialized_run(Context& context) {
    Processes started;
    const int status = on_model_files(context, Access::write, [&](app::Workspace& workspace) {
        input::SerializedResult result = input::SerializedRun(
            serialized_run_form(context.args), workspace.files,
            {base::absolute_path(context.install), {base::executable_folder()}}, context.user);
        for (const auto& [from, to] : result.renamed) {
            context.record({"renamed", from, to});
        }
        if (result.copied) {
            context.record({"copied", result.copied->from, result.copied->to});
        }
        const int reported = report_run(context, result);
        started = std::move(result.started);
        return reported;
    });
    return with_wait(context, status, started);
}

} // namespace

int run_model(Context& context, app::Workspace& workspace) {
    Processes started;
    return run(context, workspace, started);
}

namespace {

constexpr OptionSpec wait_option{"--wait", "", "waits for the end of the simulator"};
constexpr ArgumentSpec model_arguments[] = {model_argument};
constexpr OptionSpec run_options[] = {install_option, wait_option};
constexpr OptionSpec serialized_options[] = {
    {"--nlo", "FILE", "result file that becomes the next input"},
    {"--backup", "NAME", "keeps input and result; <project name>.*.ENDING"},
    {"--no-start", "", "leaves the simulator alone"},
    install_option,
    wait_option};

constexpr Command commands[] = {
    {"run", "starts the simulator on the model's input file", model_arguments, run_options, true,
     run_command},
    {"serialized-run", "makes a result file the next input and starts the simulator",
     model_arguments, serialized_options, true, serialized_run},
};

} // namespace

std::span<const Command> run_commands() {
    return commands;
}

} // namespace td

// Completeness check, wells, and the simulator's input file.

#include "app/workspace.h"
#include "base/numbertext.h"
#include "input/completeness.h"
#include "input/inputfile.h"
#include "input/wells.h"
#include "td/command.h"
#include "td/runcommands.h"

#include <fmt/format.h>

#include <algorithm>

namespace td {

namespace {

using core::Access;

int check(Context& context) {
    return on_model_files(context, Access::read, [&](app::Workspace& workspace) {
        if (!context.args.has("--all")) {
            const auto gap = input::Control(workspace.project, workspace.files);
            return gap ? context.refuse(gap->message) : int{done};
        }
        const auto gaps = input::all_gaps(workspace.project, workspace.files);
        for (const input::Gap& gap : gaps) {
            context.record({fmt::to_string(gap.test), gap.menu_path, one_line(gap.message.text)});
        }
        return gaps.empty() ? int{done} : int{refused};
    });
}

int wells(Context& context) {
    return on_model_files(context, Access::read, [&](app::Workspace& workspace) {
        if (const auto refusal = app::mesh_refusal(workspace)) {
            return context.refuse(*refusal);
        }
        const input::WellTable table = input::Get_Well_Data(workspace.project, workspace.files);
        int number = 0;
        for (const input::WellEntry& well : table.master) {
            context.record({"well", fmt::to_string(++number), fmt::to_string(well.I),
                            fmt::to_string(well.J), fmt::to_string(well.K)});
        }
        int period = 0;
        for (const auto& entries : table.periods) {
            ++period;
            for (const input::WellEntry& well : entries) {
                const auto same_place = [&](const input::WellEntry& other) {
                    return other.I == well.I && other.J == well.J && other.K == well.K;
                };
                const auto place = std::ranges::find_if(table.master, same_place);
                context.record({"rate", fmt::to_string(period),
                                fmt::to_string(place - table.master.begin() + 1),
                                base::exact_text(well.rate), base::exact_text(well.temperature)});
            }
        }
        return int{done};
    });
}

int create_input(Context& context) {
    return on_model_files(context, Access::write, [&](app::Workspace& workspace) {
        // Told first: the gaps that chemistry leaves cannot be closed in this edition.
        if (const auto refusal = input::chemistry_refusal(workspace.project.flags)) {
            return context.refuse(*refusal);
        }
        if (const auto gap = input::Control(workspace.project, workspace.files)) {
            return context.refuse(gap->message);
        }
        const input::CreateResult result = input::CreateTervexInput(
            workspace.project, workspace.files, context.install, context.user);
        if (result.refusal) {
            return context.refuse(*result.refusal);
        }
        if (result.created.InputError) {
            return result.created.failed ? int{run_time_failure} : int{refused};
        }
        context.record({"written", workspace.files.base_name() + ".nml"});
        context.record({"written", "tervex.ctl"});
        context.user.message(base::Icon::information, input::create_title, input::run_question);
        return context.args.has("--yes") ? run_model(context, workspace) : int{done};
    });
}

constexpr ArgumentSpec model_arguments[] = {model_argument};
constexpr OptionSpec check_options[] = {{"--all", "", "goes on behind a failed test"}};
constexpr OptionSpec create_options[] = {install_option};

constexpr Command commands[] = {
    {"check", "tests whether the model is complete", model_arguments, check_options, false, check},
    {"wells", "prints the wells as the simulator has them", model_arguments, {}, false, wells},
    {"create-input", "writes the simulator's input file and tervex.ctl; --yes runs it",
     model_arguments, create_options, true, create_input},
};

} // namespace

std::span<const Command> input_commands() {
    return commands;
}

} // namespace td

// Periods, solvers and the outer iteration.

#include "app/workspace.h"
#include "base/numbertext.h"
#include "base/paths.h"
#include "base/textfile.h"
#include "core/form.h"
#include "sim/outeriteration.h"
#include "sim/periods.h"
#include "sim/solver.h"
#include "sim/typfile.h"
#include "td/command.h"

#include <fmt/format.h>

namespace td {

namespace {

using core::Access;
using enum FieldValue;

// Periods.

constexpr FieldOption period_fields[] = {
    {"--unit", "SimulationTimeUnit",
     "time unit: 0 undefined, 1 seconds, 2 minutes, 3 hours, 4 days, 5 years", integer, "", 0, 5},
    {"--flow", "SimulationFlowType", "flow", word, "steady|transient"},
};

struct ColumnOption {
    OptionSpec option;
    const char* column;
};
constexpr const char* use_option = "--use";
constexpr ColumnOption period_columns[] = {
    {{use_option, "0|1", "the period is active", true}, "Use"},
    {{"--length", "V", "length in the time unit", true}, "PeriodLength"},
    {{"--steps", "N", "number of time steps", true}, "TimeSteps"},
    {{"--monitoring", "N", "monitoring frequency in steps", true}, "MonitoringFrequency"},
    {{"--shift", "V", "temperature shift [K]", true}, "TemperatureShift"},
    {{"--max-transport", "N", "maximum number of transport steps", true}, "MaxTransportSteps"},
    {{"--multiplier", "V", "multiplier of transport steps", true}, "Multiplier"},
};
constexpr OptionSpec period_options[] = {
    {"--period", "P", "period, 1 to 100; the options behind it belong to it", true},
    period_columns[0].option,
    period_columns[1].option,
    period_columns[2].option,
    period_columns[3].option,
    period_columns[4].option,
    period_columns[5].option,
    period_columns[6].option,
};

// Cells of the table in the order of the command line; each --period begins a row.
std::optional<base::Refusal> fill_periods(const Context& context,
                                          sim::TemporalDiscretization& form) {
    int row = 0;
    for (const Arguments::Given& given : context.args.given()) {
        if (given.option == "--period") {
            row = integer_of(given.value, "--period", 1, sim::PeriodTable::row_count);
            continue;
        }
        for (const ColumnOption& column : period_columns) {
            if (given.option != column.option.name) {
                continue;
            }
            if (row == 0) {
                throw UsageError(
                    fmt::format("td periods set: {} stands before --period", given.option));
            }
            if (given.option == use_option) {
                integer_of(given.value, use_option, 0, 1);
            }
            if (auto refusal = form.set_cell(row, column.column, given.value)) {
                return refusal;
            }
        }
    }
    return std::nullopt;
}

int periods_set(Context& context) {
    return on_model(context, Access::write, [&](app::Workspace& workspace) {
        sim::TemporalDiscretization form;
        form.load(workspace.project, workspace.files);
        fill_form(context, form, period_fields);
        if (const auto refusal = fill_periods(context, form)) {
            return context.refuse(*refusal);
        }
        return accept_form(context, workspace, form);
    });
}

int periods_show(Context& context) {
    return on_model_files(context, Access::read, [&](app::Workspace& workspace) {
        const sim::PeriodTable table = sim::PeriodTable::load(workspace.files);
        context.record({"unit", fmt::to_string(table.unit), sim::time_unit_name(table.unit)});
        context.record({"flow", workspace.project.transient() ? "transient" : "steady"});
        int number = 0;
        for (const sim::Period& period : table.rows) {
            ++number;
            if (!period.active && !context.args.has("--all")) {
                continue;
            }
            context.record({"period", fmt::to_string(number), period.active ? "-1" : "0",
                            base::exact_text(period.length), fmt::to_string(period.steps),
                            base::exact_text(period.monitoring_frequency),
                            base::exact_text(period.temperature_shift),
                            fmt::to_string(period.max_transport_steps),
                            base::exact_text(period.multiplier)});
        }
        const sim::PeriodTotals totals = table.totals();
        context.record({"total", fmt::to_string(totals.periods), fmt::to_string(totals.steps),
                        base::exact_text(totals.time)});
        return int{done};
    });
}

int periods_save(Context& context) {
    return on_model_files(context, Access::read, [&](app::Workspace& workspace) {
        base::replace_file(context.args.argument("FILE"),
                           sim::PeriodTable::load(workspace.files).time_parameters());
        return int{done};
    });
}

int periods_load(Context& context) {
    return on_model(context, Access::write, [&](app::Workspace& workspace) {
        sim::TemporalDiscretization form;
        form.load(workspace.project, workspace.files);
        const std::filesystem::path file = context.args.argument("FILE");
        if (const auto refusal = form.load_time_parameters(base::read_bytes(file), file)) {
            return context.refuse(*refusal);
        }
        return accept_form(context, workspace, form);
    });
}

// Solvers.

constexpr const char* solver_words = "nag|bicgstab|plu";

constexpr FieldOption solver_fields[] = {
    {"--om-flow", "FlowSlider", "time weighting of flow, 0 (explicit) to 10 (implicit)", integer,
     "", 0, 10},
    {"--om-heat", "HeatSlider", "time weighting of heat, 0 to 10", integer, "", 0, 10},
    {"--om-transport", "TransportSlider", "time weighting of transport, 0 to 10", integer, "", 0,
     10},
    {"--apar-flow", "APARF", "relaxation of flow"},
    {"--apar-heat", "APART", "relaxation of heat"},
    {"--apar-transport", "APARS", "relaxation of transport"},
    {"--err-flow", "ERRF", "convergence limit of flow"},
    {"--err-heat", "ERRT", "convergence limit of heat"},
    {"--err-transport", "ERRS", "convergence limit of transport"},
    {"--iterations", "NoIteration", "maximum number of iterations per time step"},
    {"--precond-flow", "optFlowCond", "preconditioner of flow, 0 to 15 (not for nag)", integer, "",
     0, 15},
    {"--precond-heat", "optHeatCond", "preconditioner of heat, 0 to 15", integer, "", 0, 15},
    {"--precond-transport", "optTransCond", "preconditioner of transport, 0 to 15", integer, "", 0,
     15},
    {"--term-flow", "optFlowTerm", "termination condition of flow, 0 to 127", integer, "", 0, 127},
    {"--term-heat", "optHeatTerm", "termination condition of heat, 0 to 127", integer, "", 0, 127},
    {"--term-transport", "optTransTerm", "termination condition of transport, 0 to 127", integer,
     "", 0, 127},
};
constexpr const char* preconditioner_options[] = {"--precond-flow", "--precond-heat",
                                                  "--precond-transport"};

int solver_set(Context& context) {
    const int index = index_of_word(context.args.argument("SOLVER"), solver_words, "td solver set");
    const auto solver = static_cast<sim::Solver>(index + 1);
    for (const char* option : preconditioner_options) {
        if (solver == sim::Solver::NAG && context.args.has(option)) {
            throw UsageError(fmt::format("td solver set: {} is not for nag", option));
        }
    }
    sim::SolverForm form(solver);
    return run_form(context, form, solver_fields);
}

const char* solver_name(sim::Solver solver) {
    switch (solver) {
    case sim::Solver::NAG:
        return "nag";
    case sim::Solver::BiCGStab:
        return "bicgstab";
    case sim::Solver::PLU:
        return "plu";
    case sim::Solver::none:
        break;
    }
    return "none";
}

int solver_show(Context& context) {
    return on_model_files(context, Access::read, [&](app::Workspace& workspace) {
        const core::Project& project = workspace.project;
        const sim::TypFile file = sim::TypFile::load(workspace.files);
        const int codes[] = {project.flags.SolverControlFlow(), project.flags.SolverControlHeat(),
                             project.flags.SolverControlTransport()};
        constexpr const char* names[] = {"flow", "heat", "transport"};
        context.record({"solver", solver_name(sim::chosen_solver(project.flags))});
        context.record({"limit", sim::relaxation_limit(project.NX(), project.NY(), project.NZ())});
        context.record({"iterations", file.line(sim::typ::MXIT)});
        for (int i = 0; i < 3; ++i) {
            context.record({names[i], file.line(sim::typ::OMF + i), file.line(sim::typ::APARF + i),
                            file.line(sim::typ::ERRF + i), fmt::to_string(codes[i])});
        }
        return int{done};
    });
}

// Outer iteration.

constexpr FieldOption iteration_fields[] = {
    {"--active", "chkPicard", "outer iteration active", zero_one},
    {"--chi", "sldProjCoeff", "projection coefficient, 0 to 1"},
    {"--iterations", "txtIteration", "maximum number of outer iterations"},
    {"--flow-limit", "txtFlowLimit", "limit of flow"},
    {"--heat-limit", "txtHeatLimit", "limit of heat"},
    {"--transport-limit", "txtTransLimit", "limit of transport"},
};

int iteration_set(Context& context) {
    sim::OutIter form;
    return run_form(context, form, iteration_fields);
}

int iteration_show(Context& context) {
    return on_model_files(context, Access::read, [&](app::Workspace& workspace) {
        sim::OutIter form;
        form.load(workspace.project, workspace.files);
        for (const FieldOption& field : iteration_fields) {
            const bool unknown = field.kind == zero_one && !form.active_stored();
            context.record(
                {std::string_view(field.name).substr(2), unknown ? "" : form.get(field.field)});
        }
        return int{done};
    });
}

constexpr ArgumentSpec model_arguments[] = {model_argument};
constexpr ArgumentSpec file_arguments[] = {model_argument, {"FILE", "time parameter file (.tpr)"}};
constexpr ArgumentSpec solver_arguments[] = {model_argument, {"SOLVER", "nag, bicgstab or plu"}};
constexpr OptionSpec show_options[] = {{"--all", "", "all 100 periods"}};

constexpr Command commands[] = {
    {"periods set", "changes the period table", model_arguments, period_options, false, periods_set,
     period_fields},
    {"periods show", "prints the period table", model_arguments, show_options, false, periods_show},
    {"periods save", "writes a time parameter file", file_arguments, {}, false, periods_save},
    {"periods load",
     "takes the table of a time parameter file",
     file_arguments,
     {},
     false,
     periods_load},
    {"solver set",
     "chooses a solver and its settings",
     solver_arguments,
     {},
     false,
     solver_set,
     solver_fields},
    {"solver show", "prints the solver and its settings", model_arguments, {}, false, solver_show},
    {"outer-iteration set",
     "changes the outer iteration",
     model_arguments,
     {},
     false,
     iteration_set,
     iteration_fields},
    {"outer-iteration show",
     "prints the outer iteration",
     model_arguments,
     {},
     false,
     iteration_show},
};

} // namespace

std::span<const Command> time_commands() {
    return commands;
}

} // namespace td

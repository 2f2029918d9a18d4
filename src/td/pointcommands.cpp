// Monitoring points and observations.

#include "app/workspace.h"
#include "base/numbertext.h"
#include "grid/monitoring.h"
#include "grid/monitoringform.h"
#include "td/command.h"

#include <fmt/format.h>

namespace td {

namespace {

using core::Access;

// Runs `change` on the dialog of a model and saves it when it gives 0.
int on_dialog(Context& context, const std::function<int(grid::ObservationList&)>& change) {
    return on_model(context, Access::write, [&](app::Workspace& workspace) {
        grid::ObservationList form;
        form.load(workspace.project, workspace.files);
        const int status = change(form);
        return status == done ? accept_form(context, workspace, form) : status;
    });
}

int show_list(Context& context, const std::function<int(const grid::ObservationList&)>& show) {
    return on_model_files(context, Access::read, [&](app::Workspace& workspace) {
        grid::ObservationList form;
        form.load(workspace.project, workspace.files);
        return show(form);
    });
}

struct ColumnOption {
    OptionSpec option;
    const char* column;
};

// The options of a table that were given, as cells of one row.
std::optional<base::Refusal> fill_row(const Context& context, core::TableForm& table, int row,
                                      std::span<const ColumnOption> columns) {
    for (const ColumnOption& column : columns) {
        if (!context.args.has(column.option.name)) {
            continue;
        }
        if (auto refusal =
                table.set_cell(row, column.column, context.args.value(column.option.name))) {
            return refusal;
        }
    }
    return std::nullopt;
}

// Points.

constexpr ColumnOption point_columns[] = {
    {{"--name", "T", "name, cut at 8 characters"}, "Name"},
    {{"--active", "0|1", "only active points reach the simulator"}, "Active"},
    {{"--x", "V", "easting [m]"}, "X"},
    {{"--y", "V", "northing [m], in a cross-section height [m]"}, "Y"},
    {{"--layer", "N", "layer (cross-section)"}, "Layer"},
    {{"--second", "N", "a further number of the point"}, "Second_Index"},
    {{"--last", "V", "a further value of the point"}, "Last_Value"},
};
constexpr OptionSpec point_options[] = {point_columns[0].option, point_columns[1].option,
                                        point_columns[2].option, point_columns[3].option,
                                        point_columns[4].option, point_columns[5].option,
                                        point_columns[6].option};

bool is_used(const grid::Bore& bore) {
    return bore.Active || !bore.Name.empty() || bore.X != 0 || bore.Y != 0 || bore.Layer != 0 ||
           bore.Second_Index != 0 || bore.Last_Value != 0;
}

int points_list(Context& context) {
    return show_list(context, [&](const grid::ObservationList& form) {
        int slot = 0;
        for (const grid::Bore& bore : form.list().bores) {
            ++slot;
            if (is_used(bore)) {
                context.record({fmt::to_string(slot), bore.Active ? "-1" : "0",
                                base::exact_text(bore.X), base::exact_text(bore.Y),
                                fmt::to_string(bore.Layer), fmt::to_string(bore.Second_Index),
                                base::exact_text(bore.Last_Value), bore.Name});
            }
        }
        return int{done};
    });
}

int points_set(Context& context) {
    const int slot = context.args.argument_integer("SLOT", 1, grid::MonitoringList::slot_count);
    if (context.args.has("--active")) {
        integer_of(context.args.value("--active"), "--active", 0, 1);
    }
    return on_dialog(context, [&](grid::ObservationList& form) {
        const auto refusal = fill_row(context, form.bores(), slot, point_columns);
        return refusal ? context.refuse(*refusal) : int{done};
    });
}

int points_clear(Context& context) {
    return on_dialog(context, [&](grid::ObservationList& form) {
        return form.clear_bores(context.user) ? int{done} : int{refused};
    });
}

int points_export(Context& context) {
    return show_list(context, [&](const grid::ObservationList& form) {
        form.export_bores(context.args.argument("FILE"));
        return int{done};
    });
}

int points_import(Context& context) {
    return on_dialog(context, [&](grid::ObservationList& form) {
        const auto refusal = form.import_bores(context.args.argument("FILE"));
        return refusal ? context.refuse(*refusal) : int{done};
    });
}

// Observations.

constexpr ColumnOption observation_columns[] = {
    {{"--flag", "N", "flag"}, "Flag"},
    {{"--time", "V", "observation time"}, "Time"},
    {{"--weight", "V", "weight"}, "Weight"},
    {{"--head", "V", "hydraulic head"}, "Head"},
    {{"--drawdown", "V", "drawdown"}, "Drawdown"},
    {{"--concentration", "V", "concentration"}, "Concentration"},
    {{"--compaction", "V", "compaction"}, "Compaction"},
    {{"--preconsolidation", "V", "preconsolidation head"}, "Preconsolidation"},
    {{"--subsidence", "V", "subsidence"}, "Subsidence"},
};
constexpr OptionSpec observation_options[] = {
    observation_columns[0].option, observation_columns[1].option, observation_columns[2].option,
    observation_columns[3].option, observation_columns[4].option, observation_columns[5].option,
    observation_columns[6].option, observation_columns[7].option, observation_columns[8].option};

int observations_list(Context& context) {
    return show_list(context, [&](const grid::ObservationList& form) {
        for (const grid::Observation& row : form.list().observations) {
            std::vector<std::string> fields{row.Bore_Name, fmt::to_string(row.Flag)};
            for (const float value :
                 {row.Time, row.Weight, row.Head, row.Drawdown, row.Concentration, row.Compaction,
                  row.Preconsolidation, row.Subsidence}) {
                fields.push_back(base::exact_text(value));
            }
            context.record(fields);
        }
        return int{done};
    });
}

int observations_add(Context& context) {
    return on_dialog(context, [&](grid::ObservationList& form) {
        auto refusal = form.add_observation();
        core::TableForm& table = form.observations();
        if (!refusal) {
            refusal = table.set_cell(table.rows(), "Bore_Name", context.args.argument("NAME"));
        }
        if (!refusal) {
            refusal = fill_row(context, table, table.rows(), observation_columns);
        }
        return refusal ? context.refuse(*refusal) : int{done};
    });
}

int observations_clear(Context& context) {
    return on_dialog(context, [&](grid::ObservationList& form) {
        return form.clear_observations(context.user) ? int{done} : int{refused};
    });
}

int observations_export(Context& context) {
    return show_list(context, [&](const grid::ObservationList& form) {
        form.export_observations(context.args.argument("FILE"));
        return int{done};
    });
}

int observations_import(Context& context) {
    return on_dialog(context, [&](grid::ObservationList& form) {
        const auto refusal = form.import_observations(context.args.argument("FILE"));
        return refusal ? context.refuse(*refusal) : int{done};
    });
}

int observations_option(Context& context) {
    if (!context.args.has_argument("OPTION")) {
        return show_list(context, [&](const grid::ObservationList& form) {
            context.record({fmt::to_string(form.list().Observation_Option)});
            return int{done};
        });
    }
    const int option = context.args.argument_integer("OPTION", 1, 2);
    return on_dialog(context, [&](grid::ObservationList& form) {
        form.set("Observation_Option", fmt::to_string(option - 1));
        return int{done};
    });
}

constexpr ArgumentSpec model_arguments[] = {model_argument};
constexpr ArgumentSpec slot_arguments[] = {model_argument, {"SLOT", "slot, 1 to 100"}};
constexpr ArgumentSpec file_arguments[] = {model_argument, {"FILE", "exchange file"}};
constexpr ArgumentSpec name_arguments[] = {model_argument, {"NAME", "name of the point"}};
constexpr ArgumentSpec option_arguments[] = {
    model_argument, {"OPTION", "1 observed drawdowns, 2 observed heads", false}};

constexpr Command commands[] = {
    {"points list", "prints the monitoring points", model_arguments, {}, false, points_list},
    {"points set", "changes a monitoring point", slot_arguments, point_options, false, points_set},
    {"points clear",
     "empties the list of monitoring points",
     model_arguments,
     {},
     true,
     points_clear},
    {"points export",
     "writes the monitoring points to an exchange file",
     file_arguments,
     {},
     false,
     points_export},
    {"points import",
     "takes the monitoring points of an exchange file",
     file_arguments,
     {},
     false,
     points_import},
    {"observations list",
     "prints the observed values",
     model_arguments,
     {},
     false,
     observations_list},
    {"observations add", "adds an observed value", name_arguments, observation_options, false,
     observations_add},
    {"observations clear",
     "empties the list of observed values",
     model_arguments,
     {},
     true,
     observations_clear},
    {"observations export",
     "writes the observed values to an exchange file",
     file_arguments,
     {},
     false,
     observations_export},
    {"observations import",
     "takes the observed values of an exchange file",
     file_arguments,
     {},
     false,
     observations_import},
    {"observations option",
     "what the calibration uses",
     option_arguments,
     {},
     false,
     observations_option},
};

} // namespace

std::span<const Command> point_commands() {
    return commands;
}

} // namespace td

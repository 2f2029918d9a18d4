// Monitoring series, depth logs and mass balances.

#include "app/workspace.h"
#include "base/numbertext.h"
#include "base/paths.h"
#include "base/textfile.h"
#include "results/depthlog.h"
#include "results/massbalance.h"
#include "results/monitoringcells.h"
#include "results/resultfile.h"
#include "results/streamreader.h"
#include "results/timeseries.h"
#include "td/command.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>

namespace td {

namespace {

using core::Access;
using results::MonitoringCell;

constexpr ArgumentSpec result_argument{"FILE", "result, input or project file"};

int status_of(results::Imported imported) {
    switch (imported) {
    case results::Imported::done:
        return done;
    case results::Imported::refused:
        return refused;
    case results::Imported::failed:
        break;
    }
    return run_time_failure;
}

using PointWork = std::function<int(app::Workspace&, const std::vector<MonitoringCell>&)>;

// Runs `work` on the points of a model with a mesh. Points outside the grid are told and switched
// off; that and what `work` wrote is committed when it gives 0.
int change_points(Context& context, const PointWork& work) {
    return on_model_files(context, Access::write, [&](app::Workspace& workspace) {
        if (const auto refusal = app::mesh_refusal(workspace)) {
            return context.refuse(*refusal);
        }
        const auto cells =
            results::Calculate_Monitoring(workspace.project, workspace.files, context.user);
        const int status = work(workspace, cells.slots);
        if (status == done) {
            workspace.files.commit();
        }
        return status;
    });
}

// The same for a command that only looks: a model whose points all lie in the grid may be
// read-only.
int show_points(Context& context, const PointWork& work) {
    bool outside = false;
    const int status = on_model_files(context, Access::read, [&](app::Workspace& workspace) {
        if (const auto refusal = app::mesh_refusal(workspace)) {
            return context.refuse(*refusal);
        }
        const auto cells = results::locate_points(workspace.project, workspace.files);
        outside = !cells.outside.empty();
        return outside ? int{done} : work(workspace, cells.slots);
    });
    return outside ? change_points(context, work) : status;
}

bool is_used(const grid::Bore& bore) {
    return bore.Active || !bore.Name.empty() || bore.X != 0 || bore.Y != 0 || bore.Layer != 0 ||
           bore.Second_Index != 0 || bore.Last_Value != 0;
}

int monitor_list(Context& context) {
    return show_points(context, [&](app::Workspace& workspace, const auto& points) {
        for (const MonitoringCell& point : points) {
            if (!is_used(point.bore)) {
                continue;
            }
            const bool has_file = point.bore.Active && workspace.files.has("." + point.file_part);
            context.record({fmt::to_string(point.slot), point.bore.Name,
                            point.bore.Active ? "active" : "off", fmt::to_string(point.column),
                            fmt::to_string(point.row), fmt::to_string(point.layer),
                            base::exact_text(point.bore.X), base::exact_text(point.bore.Y),
                            point.file_part, has_file ? "yes" : "no"});
        }
        return int{done};
    });
}

// Series.

int on_result(Context& context, const std::function<int(const results::ResultFile&)>& work) {
    const auto result =
        results::find_result_file(context.args.argument(result_argument.name), context.user);
    return result ? work(*result) : int{refused};
}

results::StreamNames names_of(const results::ResultFile& result, base::Interaction& user) {
    results::StreamReader stream(result.file);
    return results::read_names(stream, result.files, user);
}

int monitor_files(Context& context) {
    return on_result(context, [&](const results::ResultFile& result) {
        const auto files = results::monitoring_files(result.file);
        if (const auto refusal = results::no_files_refusal(files)) {
            return context.refuse(*refusal);
        }
        for (const results::MonitoringFile& file : files) {
            context.record(
                {fmt::to_string(file.number), file.extension, base::file_name(file.file)});
        }
        return int{done};
    });
}

int monitor_params(Context& context) {
    return on_result(context, [&](const results::ResultFile& result) {
        for (const auto& column : results::series_columns(names_of(result, context.user))) {
            context.record({fmt::to_string(column.number), column.name, column.unit});
        }
        return int{done};
    });
}

// Runs `work` on the series of the file that the argument EXT names.
using SeriesWork = std::function<int(const results::Series&, const results::StreamNames&)>;
int on_series(Context& context, const SeriesWork& work) {
    return on_result(context, [&](const results::ResultFile& result) {
        const std::string& extension = context.args.argument("EXT");
        if (!base::safe_file_name(extension)) {
            throw UsageError(fmt::format("EXT: \"{}\" is no ending of a file name", extension));
        }
        const auto file =
            results::monitoring_file(result.file, extension.substr(extension.starts_with('.')));
        std::error_code ignored;
        if (context.args.has_argument("TARGET") &&
            std::filesystem::equivalent(context.args.argument("TARGET"), file, ignored)) {
            throw UsageError(fmt::format("TARGET: {} is the file that is read",
                                         context.args.argument("TARGET")));
        }
        const std::string bytes = base::read_bytes(file);
        const auto names = names_of(result, context.user);
        const auto series = results::LoadMatrix(bytes, file, names, context.user);
        return series ? work(*series, names)
                      : context.refuse(results::file_structure_refusal(file));
    });
}

void print_series(const Context& context, const results::Series& series,
                  const std::vector<int>& columns) {
    std::vector<std::string> fields;
    for (std::size_t row = 0; row < series.rows(); ++row) {
        fields.clear();
        for (const int column : columns) {
            fields.push_back(base::exact_text(series.at(row, column)));
        }
        context.record(fields);
    }
}

int monitor_read(Context& context) {
    return on_series(context, [&](const results::Series& series, const auto& names) {
        std::vector<int> columns;
        if (!context.args.has("--param")) {
            for (int column = 1; column <= series.columns; ++column) {
                columns.push_back(column);
            }
            print_series(context, series, columns);
            return int{done};
        }
        const std::string& name = context.args.value("--param");
        const auto column = results::Select2DParamNumb(name, names);
        if (!column) {
            throw UsageError(
                fmt::format("--param: \"{}\" is no parameter of the series; td monitor "
                            "params prints them",
                            name));
        }
        print_series(context, series, {results::time_column, column->number});
        return int{done};
    });
}

int monitor_csv(Context& context) {
    return on_series(context, [&](const results::Series& series, const auto& names) {
        base::replace_file(context.args.argument("TARGET"), results::series_csv(series, names));
        return int{done};
    });
}

// Depth logs.

// A result under another name gets its log beside it.
int depthlog_make(Context& context) {
    return change_points(context, [&](app::Workspace& workspace, const auto& points) {
        core::ModelFiles& files = workspace.files;
        const auto import = [&](const std::filesystem::path& result, core::ModelFiles& target) {
            return status_of(results::Import_Data_Monitor(workspace.project, files, points, result,
                                                          target, std::chrono::system_clock::now(),
                                                          context.user));
        };
        if (!context.args.has("--file")) {
            return import(files.find(".nlo").value_or(files.name_of(".nlo")), files);
        }
        const std::filesystem::path result = base::absolute_path(context.args.value("--file"));
        const std::filesystem::path project =
            std::filesystem::path(result).replace_extension(files.project().extension());
        if (project == files.project()) {
            return import(result, files);
        }
        core::ModelFiles target(project, Access::write);
        const int status = import(result, target);
        if (status == done) {
            target.commit();
        }
        return status;
    });
}

int depthlog_show(Context& context) {
    constexpr int last_index = static_cast<int>(std::size(results::log_parameters)) - 1;
    const int index = context.args.argument_integer("INDEX", 0, last_index);
    const int number = context.args.integer("--number", 1, 99, 1);
    return on_model_files(context, Access::read, [&](app::Workspace& workspace) {
        const core::ModelFiles& files = workspace.files;
        const auto chart = results::Get_Array(files.read(".cal"), files.name_of(".cal"),
                                              context.args.argument("POINTNAME"), index, number);
        context.record({"title", chart.title});
        context.record({"label", chart.label});
        for (std::size_t row = 0; row < chart.values.size(); ++row) {
            context.record(
                {base::exact_text(chart.values[row]), base::exact_text(chart.altitudes[row])});
        }
        return int{done};
    });
}

// Mass balances.

int balance_table(Context& context) {
    return show_points(context, [&](app::Workspace& workspace, const auto& points) {
        for (const results::BalanceRow& row :
             results::Grid_Parameters_Load(workspace.project, workspace.files, points)) {
            const MonitoringCell& point = row.point;
            context.record({point.bore.Name, fmt::to_string(point.column),
                            fmt::to_string(point.row), fmt::to_string(point.layer),
                            base::exact_text(row.X), base::exact_text(row.Y),
                            base::exact_text(row.Z), row.has_file ? point.file_part : "xxx"});
        }
        return int{done};
    });
}

// Slot numbers of a list such as "1,4,2".
std::vector<int> slots_of(const Context& context) {
    std::vector<int> slots;
    std::string_view rest = context.args.value("--points");
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(','), rest.size());
        slots.push_back(
            integer_of(rest.substr(0, end), "--points", 1, grid::MonitoringList::slot_count));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return slots;
}

int balance_import(Context& context) {
    std::optional<results::Direction> direction;
    if (context.args.has("--direction")) {
        direction = static_cast<results::Direction>(
            index_of_word(context.args.value("--direction"), "X|Y|Z", "--direction"));
    }
    const std::vector<int> slots = slots_of(context);
    return change_points(context, [&](app::Workspace& workspace, const auto& points) {
        const auto table =
            results::Grid_Parameters_Load(workspace.project, workspace.files, points);
        if (const auto refusal = results::import_refusal(direction, slots, table)) {
            return context.refuse(*refusal);
        }
        return status_of(results::Import_Mass_Balance_Boundary(
            workspace.project, workspace.files, table, slots, *direction, context.user));
    });
}

void print_balance_head(const Context& context, const results::MassBalance& balance) {
    context.record({"direction", results::direction_text(balance.direction).substr(0, 1)});
    std::vector<std::string> fields{"parameters"};
    for (const std::string& name : balance.parameters()) {
        fields.push_back(name);
    }
    context.record(fields);
}

int balance_show(Context& context) {
    return on_model_files(context, Access::read, [&](app::Workspace& workspace) {
        const core::ModelFiles& files = workspace.files;
        const auto balance = results::Get_Existing_Data(files.read(".fwp"), files.name_of(".fwp"));
        if (!context.args.has("--parameter") && !context.args.has("--mode")) {
            print_balance_head(context, balance);
            return int{done};
        }
        const std::string& parameter = context.args.value("--parameter");
        const std::string& mode = context.args.value("--mode");
        if (const auto refusal = results::graph_refusal(balance, parameter, mode)) {
            return context.refuse(*refusal);
        }
        const auto chart = results::Get_MB_Array(balance, parameter, mode);
        context.record({"title", chart.title});
        for (std::size_t step = 0; step < chart.times.size(); ++step) {
            context.record(
                {base::exact_text(chart.times[step]), base::exact_text(chart.values[step])});
        }
        return int{done};
    });
}

constexpr ArgumentSpec model_arguments[] = {model_argument};
constexpr ArgumentSpec result_arguments[] = {result_argument};
constexpr ArgumentSpec extension_argument{"EXT", "ending of the monitoring file, such as 100"};
constexpr ArgumentSpec series_arguments[] = {result_argument, extension_argument};
constexpr ArgumentSpec csv_arguments[] = {
    result_argument, extension_argument, {"TARGET", "file to be written (.csv)"}};
constexpr ArgumentSpec log_arguments[] = {
    model_argument,
    {"POINTNAME", "name of the monitoring point"},
    {"INDEX", "0 temperature, 1 head, 2 pressure, 3 density, 4 porosity, 5 permeability, 6 to 8 "
              "velocities, 9 solute, 10 mineral"}};

constexpr OptionSpec read_options[] = {
    {"--param", "NAME", "only the time and this parameter, as monitor params prints it"}};
constexpr OptionSpec make_options[] = {{"--file", "F", "result file (default: that of the model)"}};
constexpr OptionSpec log_options[] = {
    {"--number", "N", "number of the solute or mineral (default 1)"}};
constexpr OptionSpec import_options[] = {
    {"--direction", "X|Y|Z", "axis across the faces"},
    {"--points", "N,N,...", "slots of the monitoring points, as monitor list prints them"}};
constexpr OptionSpec show_options[] = {
    {"--parameter", "NAME", "graph of this parameter"},
    {"--mode", "TEXT", "its unit: [m³/day] for Water, [mmol/L] or [mol] for a substance"}};

constexpr Command commands[] = {
    {"monitor list",
     "prints the cells and files of the monitoring points",
     model_arguments,
     {},
     false,
     monitor_list},
    {"monitor files",
     "lists the monitoring files of a run",
     result_arguments,
     {},
     false,
     monitor_files},
    {"monitor params",
     "prints the parameters of the chart over time",
     result_arguments,
     {},
     false,
     monitor_params},
    {"monitor read", "prints a monitoring series", series_arguments, read_options, false,
     monitor_read},
    {"monitor csv",
     "writes a monitoring series for other programs",
     csv_arguments,
     {},
     false,
     monitor_csv},
    {"depthlog make", "writes the logs of the active points from the result", model_arguments,
     make_options, false, depthlog_make},
    {"depthlog show", "prints the log of a point", log_arguments, log_options, false,
     depthlog_show},
    {"mass-balance table",
     "prints the points that a balance can take",
     model_arguments,
     {},
     false,
     balance_table},
    {"mass-balance import", "sums the monitoring series of points", model_arguments, import_options,
     false, balance_import},
    {"mass-balance show", "prints the balance that was imported", model_arguments, show_options,
     false, balance_show},
};

} // namespace

std::span<const Command> monitor_commands() {
    return commands;
}

} // namespace td

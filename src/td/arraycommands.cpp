// The bare store of parameter arrays.

#include "app/workspace.h"
#include "base/numbertext.h"
#include "base/textfile.h"
#include "core/arraystore.h"
#include "core/extensions.h"
#include "core/itemcells.h"
#include "grid/arrayfiles.h"
#include "grid/worksheettools.h"
#include "td/command.h"

#include <fmt/format.h>

#include <istream>
#include <iterator>
#include <ostream>

namespace td {

namespace {

using core::Access;

constexpr ArgumentSpec number_argument{"N", "parameter number, 1 to 2000"};
constexpr OptionSpec period_option{"--period", "P", "period, 1 to 1000 (default 1)"};
constexpr OptionSpec layer_option{"--layer", "L", "layer (default 1)"};
constexpr OptionSpec default_option{"--default", "V",
                                    "value of a cell without data (default: the parameter's own)"};

int number_of_parameter(const Context& context) {
    const int number = context.args.argument_integer("N", 1, core::parameter_count);
    if (core::file_ext(number).empty()) {
        throw UsageError(fmt::format("parameter {} has no file extension", number));
    }
    return number;
}

int period_of(const Context& context) {
    return context.args.integer("--period", 1, core::period_count, 1);
}

int layer_of(const Context& context, const core::ArrayStore& store, int number) {
    return context.args.integer("--layer", 1, store.layers(number), 1);
}

float default_of(const Context& context, int number) {
    return context.args.has("--default") ? base::leading_single(context.args.value("--default"))
                                         : core::parameter_default(number);
}

// Runs `work` on the store of a model whose mesh is known. Commits, but leaves the project file
// alone.
int on_store(Context& context, Access access,
             const std::function<int(app::Workspace&, core::ArrayStore&)>& work) {
    return on_model_files(context, access, [&](app::Workspace& workspace) {
        if (const auto refusal = app::mesh_refusal(workspace)) {
            return context.refuse(*refusal);
        }
        core::ArrayStore store(workspace.files, workspace.project);
        const int status = work(workspace, store);
        if (status == done) {
            workspace.files.commit();
        }
        return status;
    });
}

int array_ext(Context& context) {
    const int number = context.args.argument_integer("N", 1, core::parameter_count);
    const std::string extension(core::file_ext(number));
    if (extension.empty()) {
        return context.refuse({base::desk_title, fmt::format("Parameter {} has no file.", number)});
    }
    std::vector<std::string> fields{fmt::to_string(number), extension};
    if (core::is_primary(number) && number + 100 <= core::parameter_count &&
        !core::file_ext(number + 100).empty()) {
        fields.push_back(fmt::to_string(number + 100));
        fields.emplace_back(core::file_ext(number + 100));
    }
    context.record(fields);
    return done;
}

int array_list(Context& context) {
    return on_model_files(context, Access::read, [&](app::Workspace& workspace) {
        for (const int number : grid::existing_arrays(workspace.files)) {
            context.record({fmt::to_string(number), core::file_ext(number)});
        }
        return int{done};
    });
}

int array_info(Context& context) {
    return on_store(context, Access::read, [&](app::Workspace&, core::ArrayStore& store) {
        const int number = number_of_parameter(context);
        const auto periods = store.periods(number);
        context.record({"layers", fmt::to_string(store.layers(number))});
        context.record({"bytes", fmt::to_string(store.file_size(number))});
        for (const auto& period : periods) {
            context.record(
                {"period", fmt::to_string(period.period), fmt::to_string(period.record)});
        }
        return int{done};
    });
}

int array_create(Context& context) {
    return on_store(context, Access::write, [&](app::Workspace&, core::ArrayStore& store) {
        const int number = number_of_parameter(context);
        const bool created = store.create_array_file(number, default_of(context, number));
        context.record({created ? "created" : "exists"});
        return int{done};
    });
}

void print_layer(std::ostream& out, const core::ArrayStore& store,
                 const core::LayerValues& values) {
    std::string line;
    for (int row = 0; row < store.NY(); ++row) {
        line.clear();
        for (int column = 0; column < store.NX(); ++column) {
            line += column == 0 ? "" : " ";
            line += base::exact_text(
                values[static_cast<std::size_t>(row) * static_cast<std::size_t>(store.NX()) +
                       static_cast<std::size_t>(column)]);
        }
        out << line << '\n';
    }
}

int array_read(Context& context) {
    return on_store(context, Access::read, [&](app::Workspace&, core::ArrayStore& store) {
        const int number = number_of_parameter(context);
        core::LayerValues values = store.layer_values(number);
        store.read_array(number, period_of(context), layer_of(context, store, number), values,
                         default_of(context, number));
        print_layer(context.out, store, values);
        return int{done};
    });
}

// Exactly the numbers of one layer, row 1 first; FileFailure tells which one is missing or no
// number.
core::LayerValues parse_layer(std::string_view text, std::size_t count,
                              const std::filesystem::path& file) {
    constexpr std::string_view separators = " \t\r\n,";
    core::LayerValues values;
    std::size_t at = text.find_first_not_of(separators);
    while (at != std::string_view::npos) {
        const std::size_t end = std::min(text.find_first_of(separators, at), text.size());
        const std::string_view word = text.substr(at, end - at);
        const auto number = base::whole_number(word);
        if (!number) {
            throw base::FileFailure(fmt::format("value {} is \"{}\", where a number was expected",
                                                values.size() + 1, word.substr(0, 40)),
                                    file);
        }
        if (values.size() == count) {
            throw base::FileFailure(fmt::format("holds more than the {} values of a layer", count),
                                    file);
        }
        values.push_back(static_cast<float>(*number));
        at = text.find_first_not_of(separators, end);
    }
    if (values.size() < count) {
        throw base::FileFailure(
            fmt::format("ends behind {} values, where {} were expected", values.size(), count),
            file);
    }
    return values;
}

int array_write(Context& context) {
    return on_store(context, Access::write,
                    [&](app::Workspace& workspace, core::ArrayStore& store) {
                        const int number = number_of_parameter(context);
                        const int period = period_of(context);
                        const int layer = layer_of(context, store, number);
                        const bool from_file = context.args.has("--file");
                        const std::filesystem::path file =
                            from_file ? context.args.value("--file") : "standard input";
                        const std::string text =
                            from_file ? base::read_bytes(file)
                                      : std::string(std::istreambuf_iterator<char>(context.in), {});
                        store.write_array(number, period, layer,
                                          parse_layer(text, store.cells_of_layer(), file));
                        if (context.args.has("--define")) {
                            core::create_arrays_of_item(store, number);
                            core::mark_item_defined(workspace.project.flags, number);
                            workspace.project.flags.mark_edited();
                            workspace.project.Write_Project_File(workspace.files);
                        }
                        return int{done};
                    });
}

int array_get(Context& context) {
    return on_store(context, Access::read, [&](app::Workspace&, core::ArrayStore& store) {
        const int number = number_of_parameter(context);
        const auto cell = store.read_cell_value(
            number, period_of(context), layer_of(context, store, number),
            context.args.argument_integer("ROW", 1, store.NY()),
            context.args.argument_integer("COL", 1, store.NX()), default_of(context, number));
        context.record({base::exact_text(cell.value), cell.found ? "1" : "0"});
        return int{done};
    });
}

int array_copy_period(Context& context) {
    return on_store(context, Access::write, [&](app::Workspace&, core::ArrayStore& store) {
        const int number = number_of_parameter(context);
        const int from = context.args.argument_integer("FROM", 1, core::period_count);
        const int to = base::leading_int32(context.args.argument("TO"));
        if (const auto refusal = grid::copy_target_refusal(to)) {
            return context.refuse(*refusal);
        }
        if (store.has_period(number, to) &&
            context.user.ask(grid::copy_data_title, grid::copy_data_question(to),
                             base::Buttons::yes_no_risky) != base::Answer::yes) {
            return int{refused};
        }
        store.copy_period(number, from, to, core::parameter_default(number));
        return int{done};
    });
}

constexpr ArgumentSpec ext_arguments[] = {number_argument};
constexpr ArgumentSpec list_arguments[] = {model_argument};
constexpr ArgumentSpec array_arguments[] = {model_argument, number_argument};
constexpr ArgumentSpec cell_arguments[] = {
    model_argument, number_argument, {"COL", "column, from 1"}, {"ROW", "row, from 1"}};
constexpr ArgumentSpec copy_arguments[] = {
    model_argument, number_argument, {"FROM", "source period"}, {"TO", "target period"}};
constexpr OptionSpec create_options[] = {default_option};
constexpr OptionSpec read_options[] = {period_option, layer_option, default_option};
constexpr OptionSpec write_options[] = {
    period_option,
    layer_option,
    {"--file", "FILE", "grid layer as text (default: standard input)"},
    {"--define", "", "marks the item as defined and the model as edited"}};

constexpr Command commands[] = {
    {"array ext",
     "file extensions of a parameter and of its zones",
     ext_arguments,
     {},
     false,
     array_ext},
    {"array list", "the array files that exist", list_arguments, {}, false, array_list},
    {"array info",
     "layers, size and periods of an array file",
     array_arguments,
     {},
     false,
     array_info},
    {"array create", "makes an array file with its default value", array_arguments, create_options,
     false, array_create},
    {"array read", "prints a grid layer", array_arguments, read_options, false, array_read},
    {"array write", "writes a grid layer", array_arguments, write_options, false, array_write},
    {"array get", "prints the value of one cell", cell_arguments, read_options, false, array_get},
    {"array copy-period",
     "copies the data of a period to another one",
     copy_arguments,
     {},
     true,
     array_copy_period},
};

} // namespace

std::span<const Command> array_commands() {
    return commands;
}

} // namespace td

// Result files: what they hold, fields, planes, CSV.

#include "base/numbertext.h"
#include "base/paths.h"
#include "convert/resultcache.h"
#include "results/chosenfield.h"
#include "results/fieldcsv.h"
#include "results/parameters.h"
#include "results/viewer.h"
#include "td/command.h"
#include "td/fieldoutput.h"
#include "td/withfile.h"

#include <fmt/format.h>

#include <functional>
#include <limits>
#include <ostream>

namespace td {

namespace {

using results::CellOrder;
using results::Values;

constexpr ArgumentSpec file_argument{"FILE", "result file, input file or project file"};
constexpr ArgumentSpec parameter_argument{
    "PARAM", "TEMP, PRES, ..., CONC:n, CONC:NAME, CONCM:n, CONCM:NAME or another keyword"};
constexpr ArgumentSpec target_argument{"TARGET", "file to write"};
constexpr OptionSpec cut_option{"--cut", "X|Y|Z",
                                "axis across the plane (default: as result info prints it)"};
constexpr OptionSpec index_option{"--index", "N",
                                  "column (X), row from the south (Y) or layer (Z); default 1"};

std::optional<results::ResultSource> open_source(Context& context) {
    return results::open_result(context.args.argument(file_argument.name), context.user);
}

// A table must not take the place of the result that it is made of.
void require_other_file(const std::string& target, const std::filesystem::path& read) {
    std::error_code ignored;
    if (std::filesystem::equivalent(target, read, ignored)) {
        throw UsageError(fmt::format("TARGET: {} is the file that is read", target));
    }
}

std::optional<results::ChosenField> choose(Context& context) {
    auto chosen =
        results::choose_field(context.args.argument(file_argument.name),
                              context.args.argument(parameter_argument.name), context.user);
    if (chosen && context.args.has_argument(target_argument.name)) {
        require_other_file(context.args.argument(target_argument.name), chosen->source.result.file);
    }
    return chosen;
}

int any_integer(const Context& context, const OptionSpec& option, int otherwise) {
    return context.args.integer(option.name, std::numeric_limits<int>::min(),
                                std::numeric_limits<int>::max(), otherwise);
}

std::string_view yes_or_no(bool value) {
    return value ? "yes" : "no";
}

void print_sizes(const Context& context, const char* name, const std::vector<float>& sizes) {
    std::vector<std::string> fields{name};
    for (const float size : sizes) {
        fields.push_back(base::exact_text(size));
    }
    context.record(fields);
}

void print_first_load(const Context& context, const results::ResultSource& source,
                      const results::FirstLoad& load) {
    context.record({"file", source.result.name()});
    struct Count {
        const char* name;
        int value;
    };
    for (const Count& count :
         {Count{"columns", load.grid.I0}, Count{"rows", load.grid.J0},
          Count{"layers", load.grid.K0}, Count{"substances", load.names.substances},
          Count{"components", load.names.components}, Count{"minerals", load.names.minerals}}) {
        context.record({count.name, fmt::to_string(count.value)});
    }
    print_sizes(context, "delx", load.axes.delx);
    print_sizes(context, "dely", load.axes.dely);
    print_sizes(context, "delz", load.axes.delz);
    std::vector<std::string> planes{"planes"};
    for (const char axis : load.sections.planes) {
        planes.emplace_back(1, axis);
    }
    context.record(planes);
    context.record({"cut", std::string(1, load.sections.cut)});
    context.record({"temporal", yes_or_no(load.temporal)});
}

int result_info(Context& context) {
    auto source = open_source(context);
    if (!source) {
        return refused;
    }
    const auto load = results::first_load(source->stream, source->result, context.user);
    if (!load) {
        return refused;
    }
    print_first_load(context, *source, *load);
    return done;
}

void print_blocks(const Context& context, const char* kind,
                  const std::vector<results::NamedBlock>& blocks, const results::StreamNames& names,
                  results::Parameter (*parameter)(int, const results::StreamNames&)) {
    for (const results::NamedBlock& block : blocks) {
        context.record(
            {kind, fmt::to_string(block.number), block.name, parameter(block.number, names).label});
    }
}

int result_list(Context& context) {
    auto source = open_source(context);
    if (!source) {
        return refused;
    }
    results::StreamReader& stream = source->stream;
    const auto names = results::read_names(stream, source->result.files, context.user);
    const auto others = results::available_parameters(stream);
    std::vector<const results::FixedParameter*> present;
    for (const results::FixedParameter& fixed : results::fixed_parameters()) {
        stream.rewind();
        if (stream.JumpToPos(fixed.keyword)) {
            present.push_back(&fixed);
        }
    }
    stream.require_unchanged();
    for (const results::FixedParameter* fixed : present) {
        context.record({"fixed", fixed->code, fixed->label});
    }
    print_blocks(context, "species", names.species, names, results::species_parameter);
    print_blocks(context, "mineral", names.mineral_blocks, names, results::mineral_parameter);
    for (const std::string& name : others) {
        context.record({"other", name, results::other_parameter(name).label});
    }
    return done;
}

int result_read(Context& context) {
    struct Form {
        CellOrder order;
        Values values;
    };
    constexpr Form forms[] = {{CellOrder::viewer, Values::converted},
                              {CellOrder::worksheet, Values::stored},
                              {CellOrder::stream, Values::stored}};
    const Form& form =
        forms[index_of_word(context.args.value_or("--as", "viewer"), "viewer|raw|import", "--as")];
    auto chosen = choose(context);
    if (!chosen) {
        return refused;
    }
    convert::CachedFields cache;
    const auto field = chosen->read(form.order, form.values, context.user,
                                    context.args.has("--no-cache") ? nullptr : &cache);
    if (!field) {
        return refused;
    }
    return with_file(chosen->source.result.file, [&] {
        print_field(context, *field);
        return int{done};
    });
}

std::optional<results::Plane> read_plane(Context& context) {
    const std::string given = context.args.value(cut_option.name);
    if (context.args.has(cut_option.name)) {
        index_of_word(given, "X|Y|Z", cut_option.name);
    }
    const int index = any_integer(context, index_option, 1);
    auto chosen = choose(context);
    const auto axes = chosen ? chosen->read_axes(context.user) : std::nullopt;
    convert::CachedFields cache;
    const auto field =
        axes ? chosen->read(CellOrder::viewer, Values::converted, context.user, &cache)
             : std::nullopt;
    if (!field) {
        return std::nullopt;
    }
    context.user.status("Load Data to Chart");
    const char cut = given.empty() ? results::section_options(chosen->grid).cut : given.front();
    return results::cut_plane(field->field(), *axes, cut, index, chosen->parameter.label,
                              chosen->source.result.name());
}

int result_plane(Context& context) {
    const auto plane = read_plane(context);
    if (!plane) {
        return refused;
    }
    context.record({"title", plane->title});
    context.record({"xaxis", plane->x_title});
    context.record({"yaxis", plane->y_title});
    context.record({"value", plane->value_title});
    print_sizes(context, "x", plane->x);
    print_sizes(context, "y", plane->y);
    for (int row = 1; row <= plane->values.nJ(); ++row) {
        const auto values = plane->values.row(1, row);
        print_sizes(context, "row", {values.begin(), values.end()});
    }
    return done;
}

int result_save(Context& context) {
    const auto plane = read_plane(context);
    if (!plane) {
        return refused;
    }
    base::replace_file(context.args.argument(target_argument.name),
                       results::plane_data_file(*plane));
    return done;
}

int result_csv(Context& context) {
    const auto layer = layer_of(context);
    auto chosen = choose(context);
    const auto axes = chosen ? chosen->read_axes(context.user) : std::nullopt;
    convert::CachedFields cache;
    const auto field =
        axes ? chosen->read(CellOrder::worksheet, Values::converted, context.user, &cache)
             : std::nullopt;
    if (!field) {
        return refused;
    }
    return with_file(chosen->source.result.file, [&] {
        results::write_field_csv(*field, *axes, chosen->GridOrientation, chosen->parameter.label,
                                 layer, context.args.argument(target_argument.name));
        return int{done};
    });
}

constexpr ArgumentSpec file_arguments[] = {file_argument};
constexpr ArgumentSpec parameter_arguments[] = {file_argument, parameter_argument};
constexpr ArgumentSpec target_arguments[] = {file_argument, parameter_argument, target_argument};
constexpr OptionSpec read_options[] = {
    {"--as", "viewer|raw|import", "units and cell order (default viewer)"},
    layer_option,
    {"--no-cache", "", "reads the text file, even where the cache has the field"}};
constexpr OptionSpec plane_options[] = {cut_option, index_option};
constexpr OptionSpec csv_options[] = {layer_option};

constexpr Command commands[] = {
    {"result info",
     "prints grid, counts and planes of a result file",
     file_arguments,
     {},
     false,
     result_info},
    {"result list",
     "lists the parameters that the file holds",
     file_arguments,
     {},
     false,
     result_list},
    {"result read", "prints the field of a parameter, layer by layer", parameter_arguments,
     read_options, false, result_read},
    {"result plane", "prints one plane as a chart shows it", parameter_arguments, plane_options,
     false, result_plane},
    {"result csv", "writes a field as a table of cells", target_arguments, csv_options, false,
     result_csv},
    {"result save", "writes one plane as a Result Viewer data file", target_arguments,
     plane_options, false, result_save},
};

} // namespace

std::span<const Command> result_commands() {
    return commands;
}

} // namespace td

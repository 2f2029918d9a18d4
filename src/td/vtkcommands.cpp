// VTK files and formulas.

#include "app/workspace.h"
#include "base/numbertext.h"
#include "base/paths.h"
#include "convert/formula.h"
#include "convert/vtkexport.h"
#include "convert/vtrexport.h"
#include "td/command.h"
#include "td/withfile.h"

#include <fmt/format.h>

#include <algorithm>

namespace td {

namespace {

using core::Access;

constexpr const char* message_title = "Convert Data";
constexpr int last_block = 99;
constexpr ArgumentSpec formula_argument{"FORMULA", "operands and operators between blanks"};
constexpr OptionSpec file_option{"--file", "F", "result file (default <base>.nlo)"};
constexpr OptionSpec type_option{"--type", "points|grid|rectilinear", "kind of data set"};
constexpr OptionSpec formula_type_option{"--type", "points|rectilinear", "kind of data set"};
constexpr OptionSpec format_option{"--format", "vtr",
                                   "one binary file with all fields, in place of --type"};
constexpr const char* scale_options[] = {"--scale-x", "--scale-y", "--scale-z"};

struct BoxOption {
    const char* name;
    convert::Box box;
};
constexpr BoxOption box_options[] = {
    {"--pres", convert::Box::pres},       {"--por", convert::Box::por},
    {"--density", convert::Box::density}, {"--perm", convert::Box::perm},
    {"--head", convert::Box::head},       {"--vectors", convert::Box::vectors},
    {"--temp", convert::Box::temp},
};

std::vector<int> block_numbers(const Context& context, const char* option) {
    std::vector<int> numbers;
    if (!context.args.has(option)) {
        return numbers;
    }
    std::string_view rest = context.args.value(option);
    for (;;) {
        const std::size_t end = std::min(rest.find(','), rest.size());
        numbers.push_back(integer_of(rest.substr(0, end), option, 1, last_block));
        if (end == rest.size()) {
            return numbers;
        }
        rest.remove_prefix(end + 1);
    }
}

convert::VtkOptions vtk_options(const Context& context) {
    convert::VtkOptions options;
    for (const BoxOption& option : box_options) {
        if (context.args.has(option.name)) {
            options.choice.boxes.push_back(option.box);
        }
    }
    options.choice.species = block_numbers(context, "--species");
    options.choice.tracers = block_numbers(context, "--tracers");
    options.choice.minerals = block_numbers(context, "--minerals");
    options.choice.all = context.args.has("--all");
    options.choice.ugradT = context.args.has("--ugradt");
    for (std::size_t axis = 0; axis < options.scales.size(); ++axis) {
        if (context.args.has(scale_options[axis])) {
            options.scales[axis] = base::leading_number(context.args.value(scale_options[axis]));
        }
    }
    return options;
}

std::optional<convert::DataSet> data_set(const Context& context) {
    using convert::DataSet;
    if (!context.args.has(type_option.name)) {
        return std::nullopt;
    }
    constexpr DataSet types[] = {DataSet::points, DataSet::grid, DataSet::rectilinear};
    return types[index_of_word(context.args.value(type_option.name), type_option.value,
                               type_option.name)];
}

std::optional<convert::DataSet> formula_data_set(const Context& context) {
    if (context.args.has(formula_type_option.name)) {
        index_of_word(context.args.value(formula_type_option.name), formula_type_option.value,
                      formula_type_option.name);
    }
    return data_set(context);
}

using Work = std::function<std::optional<base::Refusal>(const convert::Source&)>;

// Runs `work` on the model and its result file. Files of a result that lies elsewhere are written
// beside it.
int on_result(Context& context, bool has_type, const Work& work) {
    return on_model_files(context, Access::write, [&](app::Workspace& workspace) {
        core::ModelFiles& files = workspace.files;
        const std::filesystem::path result =
            context.args.has(file_option.name)
                ? base::absolute_path(context.args.value(file_option.name))
                : files.find(".nlo").value_or(files.name_of(".nlo"));
        if (!base::is_file(result)) {
            return context.refuse({message_title, "Default file does not exist!\n"
                                                  "Please browse for a valid file."});
        }
        if (!has_type) {
            return context.refuse({message_title, "No data set type chosen!\nPlease opt for one."});
        }
        std::filesystem::path project = convert::result_base(result);
        project += files.project().extension();
        std::optional<core::ModelFiles> beside;
        if (project != files.project()) {
            beside.emplace(project, Access::write);
        }
        results::StreamReader stream(result);
        return with_file(result, [&] {
            const auto refusal =
                work({workspace.project, files, beside ? *beside : files, stream, context.user});
            return refusal ? context.refuse(*refusal) : int{done};
        });
    });
}

convert::Written print_name(Context& context) {
    return [&context](const std::string& name) { context.record({name}); };
}

int vtk(Context& context) {
    const bool binary = context.args.has(format_option.name);
    if (binary) {
        index_of_word(context.args.value(format_option.name), format_option.value,
                      format_option.name);
    }
    const auto type = data_set(context);
    const convert::VtkOptions options = vtk_options(context);
    return on_result(context, binary || type, [&](const convert::Source& source) {
        return binary ? convert::export_vtr(source, options, print_name(context))
                      : convert::export_vtk(source, *type, options, print_name(context));
    });
}

int formula(Context& context) {
    const auto type = formula_data_set(context);
    return on_result(context, type.has_value(), [&](const convert::Source& source) {
        return convert::export_formula(source, *type, context.args.argument(formula_argument.name),
                                       print_name(context));
    });
}

constexpr ArgumentSpec vtk_arguments[] = {model_argument};
constexpr ArgumentSpec formula_arguments[] = {model_argument, formula_argument};
constexpr OptionSpec vtk_options_table[] = {
    type_option,
    format_option,
    file_option,
    {"--scale-x", "S", "factor of the x axis (default 1)"},
    {"--scale-y", "S", "factor of the y axis (default 1)"},
    {"--scale-z", "S", "factor of the z axis (default 1)"},
    {"--pres", "", "pressure"},
    {"--por", "", "porosity"},
    {"--density", "", "density"},
    {"--perm", "", "permeability"},
    {"--head", "", "hydraulic head"},
    {"--vectors", "", "flow vectors at the cell centres"},
    {"--temp", "", "temperature"},
    {"--species", "N,N,...", "species by their numbers"},
    {"--tracers", "N,N,...", "tracers, 1 is the first one"},
    {"--minerals", "N,N,...", "minerals by their numbers"},
    {"--all", "", "everything that the file holds"},
    {"--ugradt", "", "u.grad(T); needs --temp and --vectors"}};
constexpr OptionSpec formula_options[] = {formula_type_option, file_option};

constexpr Command commands[] = {
    {"vtk", "writes fields of the result as VTK files", vtk_arguments, vtk_options_table, false,
     vtk},
    {"formula", "combines fields of the result into one VTK file", formula_arguments,
     formula_options, false, formula},
};

} // namespace

std::span<const Command> vtk_commands() {
    return commands;
}

} // namespace td

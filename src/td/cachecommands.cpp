// The binary result cache, histograms, plot files.

#include "app/workspace.h"
#include "base/numbertext.h"
#include "base/paths.h"
#include "base/textfile.h"
#include "convert/convertbinary.h"
#include "convert/convertdata.h"
#include "convert/histogram.h"
#include "convert/modelgrid.h"
#include "convert/plotrewrite.h"
#include "convert/resultcache.h"
#include "td/command.h"
#include "td/fieldoutput.h"
#include "td/withfile.h"

#include <fmt/format.h>

#include <limits>

namespace td {

namespace {

namespace fs = std::filesystem;

using core::Access;

constexpr ArgumentSpec source_argument{"SOURCE", "file to read"};
constexpr ArgumentSpec target_argument{"TARGET", "file to write"};
constexpr OptionSpec file_option{"--file", "F", "result file (default <base>.nlo)"};

// The result file of --file or of the model.
fs::path result_file(const Context& context, const core::ModelFiles& files) {
    return context.args.has(file_option.name)
               ? base::absolute_path(context.args.value(file_option.name))
               : files.find(".nlo").value_or(files.name_of(".nlo"));
}

// The cache.

std::set<int> numbers_of(const Context& context) {
    std::set<int> numbers;
    for (const std::string& name : context.args.all_arguments("NAME")) {
        const auto number = convert::number_of_cached(base::upper(name));
        if (!number) {
            throw UsageError(fmt::format("td cache build: \"{}\" is none of TEMP PRES POR PERM "
                                         "DICHTE PHI VX VY VZ TRACER1 ... TRACER5",
                                         name));
        }
        numbers.insert(*number);
    }
    return numbers;
}

int cache_build(Context& context) {
    return on_model_files(context, Access::read, [&](app::Workspace& workspace) {
        const auto refusal =
            convert::ConvertBinary(workspace.project, result_file(context, workspace.files),
                                   numbers_of(context), context.user);
        return refusal ? context.refuse(*refusal) : int{done};
    });
}

std::optional<core::RandomFile> open_cache(const core::ModelFiles& files) {
    const auto place = files.find(".rvb");
    return place ? std::optional<core::RandomFile>(
                       std::in_place, *place, core::RandomFile::Mode::read, files.name_of(".rvb"))
                 : std::nullopt;
}

int cache_list(Context& context) {
    return on_model_files(context, Access::read, [&](app::Workspace& workspace) {
        const auto cache = open_cache(workspace.files);
        const auto directory = cache ? convert::read_directory(*cache) : convert::CacheDirectory{};
        for (std::size_t slot = 1; slot <= directory.size(); ++slot) {
            if (const float number = directory[slot - 1]; number != 0) {
                context.record({fmt::to_string(slot), base::exact_text(number),
                                convert::cached_caption(number)});
            }
        }
        return int{done};
    });
}

int cache_read(Context& context) {
    const int number =
        context.args.argument_integer("NUMBER", 1, std::numeric_limits<std::int16_t>::max());
    return on_model_files(context, Access::read, [&](app::Workspace& workspace) {
        const auto cache = open_cache(workspace.files);
        auto field =
            cache ? convert::read_slot(number, *cache, convert::model_grid(workspace.project),
                                       results::FieldOrder::viewer, context.user)
                  : std::nullopt;
        if (!field) {
            return context.refuse(
                {convert::convert_binary_title,
                 fmt::format("The binary result file does not hold parameter {}.", number)});
        }
        print_field(context, results::ParameterField(std::move(*field)));
        return int{done};
    });
}

int cache_ascii(Context& context) {
    return convert::Write_ASCII(context.args.argument(source_argument.name),
                                context.args.argument(target_argument.name), context.user)
               ? done
               : refused;
}

// Histograms.

std::vector<convert::HistogramClass> classes_of(const Context& context) {
    std::vector<convert::HistogramClass> classes;
    std::string_view rest = context.args.value("--classes");
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(','), rest.size());
        classes.push_back({base::leading_single(rest.substr(0, end))});
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return classes;
}

// The file box: what lies in the model's folder goes without it.
std::string file_box(const fs::path& file, const core::ModelFiles& files) {
    return file.parent_path() == files.folder() ? file.filename().string() : file.string();
}

void print_histogram(const Context& context, const convert::Histogram& histogram) {
    context.record({"mean", base::exact_text(histogram.mean)});
    context.record({"deviation", base::exact_text(histogram.deviation)});
    context.record({"variance", base::exact_text(histogram.variance)});
    int number = 0;
    for (const convert::HistogramClass& row : histogram.classes) {
        context.record({"class", fmt::to_string(++number), base::exact_text(row.bound),
                        fmt::to_string(row.frequency)});
    }
}

void save_histogram(const fs::path& file, const convert::Histogram& histogram) {
    core::ModelFiles files(file, Access::write);
    files.write(".his", convert::Save_Histogram_Data(histogram));
    files.commit();
}

int count_parameter(Context& context, const app::Workspace& workspace) {
    const std::string& name = context.args.value("--param");
    if (name.empty()) {
        return context.refuse({base::desk_title, "Choose Parameter to display"});
    }
    const auto parameter = convert::histogram_parameter(name);
    if (!parameter) {
        throw UsageError(fmt::format("--param: \"{}\" is none of {}", name,
                                     fmt::join(convert::histogram_parameters(), "|")));
    }
    const fs::path file = result_file(context, workspace.files);
    convert::Histogram histogram{
        file_box(file, workspace.files), *parameter, 0, 0, 0, classes_of(context)};
    return with_file(file, [&] {
        if (!convert::count_classes(file, histogram, context.user)) {
            return int{refused};
        }
        if (context.args.has("--save")) {
            save_histogram(file, histogram);
        }
        print_histogram(context, histogram);
        return int{done};
    });
}

int histogram_count(Context& context) {
    return on_model_files(context, Access::read, [&](app::Workspace& workspace) {
        return count_parameter(context, workspace);
    });
}

int histogram_show(Context& context) {
    return on_model_files(context, Access::read, [&](app::Workspace& workspace) {
        const core::ModelFiles& files = workspace.files;
        const auto histogram =
            convert::Load_Histogram_Data(files.read(".his"), files.name_of(".his"));
        context.record({"source", histogram.source});
        context.record(
            {"param",
             convert::histogram_parameters()[static_cast<std::size_t>(histogram.parameter)]});
        print_histogram(context, histogram);
        return int{done};
    });
}

// Plot files.

struct ColumnText {
    std::size_t column;
    std::string text;
};

// "N=TEXT" of each value of an option; a column may be given once.
std::vector<ColumnText> column_texts(const Context& context, const char* option) {
    std::vector<ColumnText> texts;
    for (const std::string& value : context.args.values(option)) {
        const auto [number, text] = split_assignment(value);
        const auto column = static_cast<std::size_t>(
            integer_of(number, option, 1, static_cast<int>(convert::most_plot_columns)));
        for (const ColumnText& other : texts) {
            if (other.column == column) {
                throw UsageError(fmt::format("{}: column {} is given twice", option, column));
            }
        }
        texts.push_back({column, text});
    }
    return texts;
}

convert::PlotStep plot_step(std::string_view text) {
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos) {
        throw UsageError(fmt::format("--calc: \"{}\" has no \":\" before the number", text));
    }
    const int Index =
        index_of_word(text.substr(0, colon), "add|subtract|multiply|divide", "--calc");
    return {static_cast<convert::PlotOperation>(Index),
            base::leading_number(text.substr(colon + 1))};
}

convert::PlotRewrite plot_rewrite(const Context& context) {
    const auto checked = [&](const char* option) { return context.args.has(option); };
    convert::PlotRewrite rewrite{checked("--permeability"),
                                 checked("--head"),
                                 checked("--minerals"),
                                 checked("--elements"),
                                 {},
                                 {},
                                 {}};
    for (const auto& [column, name] : column_texts(context, "--rename")) {
        if (name.find_first_of("\"\r\n") != std::string::npos) {
            throw UsageError("--rename: a name cannot hold quotes or line breaks");
        }
        rewrite.new_names[column] = name;
    }
    for (const auto& [column, text] : column_texts(context, "--calc")) {
        rewrite.steps[column] = plot_step(text);
    }
    for (const auto& [column, text] : column_texts(context, "--molar")) {
        if (rewrite.steps.contains(column)) {
            throw UsageError(
                fmt::format("--calc and --molar exclude each other in column {}", column));
        }
        rewrite.molar_weights[column] =
            base::trimmed(text).empty() ? 1 : base::leading_number(text);
    }
    return rewrite;
}

int rewrite_plot(Context& context) {
    const std::string& source = context.args.argument(source_argument.name);
    const convert::PlotRewrite rewrite = plot_rewrite(context);
    return with_file(source, [&] {
        const auto refusal = convert::rewrite_plot(
            source, context.args.argument(target_argument.name), rewrite, context.user);
        return refusal ? context.refuse(*refusal) : int{done};
    });
}

constexpr ArgumentSpec model_arguments[] = {model_argument};
constexpr ArgumentSpec build_arguments[] = {
    model_argument,
    {"NAME", "TEMP PRES POR PERM DICHTE PHI VX VY VZ TRACER1 ... TRACER5", true, true}};
constexpr ArgumentSpec read_arguments[] = {model_argument,
                                           {"NUMBER", "1 TEMP to 9 VZ, 9 + n for tracer n"}};
constexpr ArgumentSpec file_arguments[] = {source_argument, target_argument};
constexpr OptionSpec build_options[] = {file_option};
constexpr OptionSpec read_options[] = {layer_option};
constexpr OptionSpec count_options[] = {
    {"--param", "NAME", "Pressure, Porosity, Density, Permeability, Head, VX, VY, VZ, Temperature"},
    {"--classes", "B1,B2,...", "upper bounds of the classes"},
    file_option,
    {"--save", "", "writes <base>.his"}};
constexpr OptionSpec rewrite_options[] = {
    {"--permeability", "", "changes the permeability"},
    {"--head", "", "changes the hydraulic head"},
    {"--minerals", "", "changes minerals"},
    {"--elements", "", "changes elements, and turns the columns pH, PH and ph into pH"},
    {"--rename", "N=NAME", "name of column N", true},
    {"--calc", "N=STEP:NUMBER", "add, subtract, multiply or divide column N", true},
    {"--molar", "N=WEIGHT", "column N from mol/m3 to percent of the rock's mass", true}};

constexpr Command commands[] = {
    {"cache build", "converts parameters of the result file into the binary cache", build_arguments,
     build_options, false, cache_build},
    {"cache list", "lists the fields of the binary cache", model_arguments, {}, false, cache_list},
    {"cache read", "prints a field of the binary cache", read_arguments, read_options, false,
     cache_read},
    {"cache ascii",
     "turns a Result Viewer data file into a plain table",
     file_arguments,
     {},
     true,
     cache_ascii},
    {"histogram count", "counts the cells of a parameter by classes", model_arguments,
     count_options, false, histogram_count},
    {"histogram show",
     "prints the histogram that was saved",
     model_arguments,
     {},
     false,
     histogram_show},
    {"rewrite-plot", "gives a plot file other column names and units", file_arguments,
     rewrite_options, false, rewrite_plot},
};

} // namespace

std::span<const Command> cache_commands() {
    return commands;
}

} // namespace td

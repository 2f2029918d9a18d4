// Contour levels, lines and labels.

#include "td/plotcommands.h"

#include "app/workspace.h"
#include "base/numbertext.h"
#include "base/paths.h"
#include "core/extensions.h"
#include "grid/editrequest.h"
#include "td/worksheetsession.h"

#include <fmt/format.h>

namespace td {

std::vector<std::string_view> split_list(std::string_view list) {
    std::vector<std::string_view> items;
    std::size_t begin = 0;
    for (std::size_t end = list.find(','); end != std::string_view::npos;
         end = list.find(',', begin)) {
        items.push_back(list.substr(begin, end - begin));
        begin = end + 1;
    }
    items.push_back(list.substr(begin));
    return items;
}

int layer_of(const Context& context, const app::Workspace& workspace) {
    return context.args.integer("--layer", 1, workspace.project.NZ(), 1);
}

plot::PlotParameter parameter_of(const Context& context, const app::Workspace& workspace,
                                 const grid::EditRequest& request) {
    const int array = context.args.integer("--array", 1, request.Array_Count(), 1);
    return {request.number(array), request.Zones_Allowed ? request.zone_number() : 0,
            request.default_value(array), layer_of(context, workspace),
            context.args.integer("--period", 1, core::period_count, 1)};
}

namespace {

// Level files.

constexpr double default_label_height = 1;

plot::ColourRange colours_of(const Context& context, const char* option) {
    constexpr int largest = 0xFFFFFF;
    if (!context.args.has(option)) {
        return {};
    }
    const auto colours = split_list(context.args.value(option));
    if (colours.size() != 2) {
        throw UsageError(fmt::format("{}: two colours are needed, LOW,HIGH", option));
    }
    return {integer_of(colours[0], option, 0, largest), integer_of(colours[1], option, 0, largest)};
}

std::optional<base::Refusal> label_levels(const Context& context, plot::ContourLevels& levels) {
    const Arguments& args = context.args;
    if (args.has("--label-first") || args.has("--label-every")) {
        const plot::LabelChoice choice{base::leading_int32(args.value_or("--label-first", "1")),
                                       base::leading_int32(args.value_or("--label-every", "1"))};
        if (auto refusal = plot::labels_refusal(choice, levels.size())) {
            return refusal;
        }
        plot::choose_labels(levels, choice);
    }
    constexpr std::pair<const char*, const char*> sizes[] = {{"--height", "Label Height"},
                                                             {"--spacing", "Label Spacing"}};
    for (const auto& [option, column] : sizes) {
        if (args.has(option)) {
            if (auto refusal = plot::label_size_refusal(column, args.value(option))) {
                return refusal;
            }
        }
    }
    const double height = args.number("--height").value_or(default_label_height);
    const double spacing = args.number("--spacing").value_or(10 * height);
    plot::set_label_sizes(levels, plot::to_single(height), plot::to_single(spacing));
    return std::nullopt;
}

// --levels or, where the command has it, --level.
plot::LevelsRead levels_of(const Context& context) {
    if (context.args.has("--level") == context.args.has("--levels")) {
        throw UsageError("either --level or --levels is needed");
    }
    if (context.args.has("--levels")) {
        return plot::load_level_file(context.args.value("--levels"));
    }
    plot::LevelsRead read;
    for (const std::string_view level : split_list(context.args.value("--level"))) {
        number_of(level, "--level");
        read.levels.push_back({.level = base::leading_single(level)});
    }
    return read;
}

void print_line(const Context& context, float level, const plot::ContourLine& line) {
    std::vector<std::string> fields{base::exact_text(level), fmt::to_string(line.points.size())};
    for (const plot::Point& point : line.points) {
        fields.push_back(base::exact_text(plot::to_single(point.x)));
        fields.push_back(base::exact_text(plot::to_single(point.y)));
    }
    context.record(fields);
}

} // namespace

int contour_make(Context& context) {
    const auto number = [&](const char* option) {
        return base::leading_number(context.args.value(option));
    };
    const plot::LevelRange range{number("--min"), number("--max"), number("--interval")};
    if (const auto refusal = plot::range_refusal(range)) {
        return context.refuse(*refusal);
    }
    plot::ContourLevels levels = plot::make_levels(range);
    plot::set_colours(levels, colours_of(context, "--line-colors"),
                      colours_of(context, "--fill-colors"));
    if (const auto refusal = label_levels(context, levels)) {
        return context.refuse(*refusal);
    }
    base::replace_file(context.args.argument("FILE"), plot::levels_bytes(levels));
    return done;
}

int contour_levels(Context& context) {
    const auto [levels, refusal] = plot::load_level_file(context.args.argument("FILE"));
    if (refusal) {
        return context.refuse(*refusal);
    }
    for (const plot::Contour_Level& level : levels) {
        context.record({base::exact_text(level.level), fmt::to_string(level.line),
                        fmt::to_string(level.fill), level.label ? "1" : "0",
                        base::exact_text(level.label_height),
                        base::exact_text(level.label_spacing)});
    }
    return done;
}

int contour_text(Context& context) {
    plot::LabelFormat format;
    format.fixed =
        index_of_word(context.args.value("--style"), "exponential|fixed", "--style") == 1;
    format.decimals = base::leading_int32(context.args.value_or("--decimals", "2"));
    format.prefix = context.args.value("--prefix");
    format.suffix = context.args.value("--suffix");
    if (const auto refusal = plot::decimals_refusal(format.decimals)) {
        return context.refuse(*refusal);
    }
    for (const std::string& value : context.args.all_arguments("VALUE")) {
        context.record({plot::label_text(format, base::leading_single(value))});
    }
    return done;
}

int contour_lines(Context& context) {
    return on_item(context, [&](app::Workspace& workspace, const grid::EditRequest& request) {
        const auto [levels, refusal] = levels_of(context);
        if (refusal) {
            return context.refuse(*refusal);
        }
        const plot::PlotParameter parameter = parameter_of(context, workspace, request);
        plot::PlotData data = plot::load_grid(workspace.project, workspace.files, parameter.layer);
        plot::load_parameter(data, workspace.files, parameter);
        const auto holes =
            plot::find_holes(data.values, data.hole_rule(context.args.has("--ignore-inactive")));
        plot::Isoline2 isolines(data.layer(), holes);
        for (const plot::Contour_Level& level : levels) {
            for (const plot::ContourLine& line : isolines.trace(level.level)) {
                print_line(context, level.level, line);
            }
        }
        return int{done};
    });
}

} // namespace td

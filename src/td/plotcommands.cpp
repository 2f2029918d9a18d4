// Plot files, and the table of the commands for contours and plots.

#include "td/plotcommands.h"

#include "app/workspace.h"
#include "base/numbertext.h"
#include "base/paths.h"
#include "plot/colourtable.h"
#include "td/worksheetsession.h"

#include <fmt/format.h>

#include <cmath>

namespace td {

namespace {

using core::Access;

plot::PlotShow show_of(const Context& context) {
    using Show = plot::PlotShow;
    constexpr bool Show::*parts[] = {&Show::mesh,     &Show::inactive, &Show::zones,
                                     &Show::contours, &Show::fill,     &Show::bores};
    Show show;
    const std::string list = context.args.value_or("--show", "mesh");
    for (const std::string_view word : split_list(list)) {
        const int index = index_of_word(word, "mesh|inactive|zones|contours|fill|bores", "--show");
        show.*parts[index] = true;
    }
    if ((show.contours || show.fill) && !context.args.has("--param")) {
        throw UsageError("--show: contours and fill need --param");
    }
    return show;
}

plot::Plot_Format format_of(const Context& context, const std::filesystem::path& file) {
    const bool named = context.args.has("--format");
    const auto format = named ? plot::format_named(context.args.value("--format"))
                              : plot::format_of_extension(file.extension().string());
    if (!format) {
        throw UsageError(named
                             ? fmt::format("--format: \"{}\" is none of DXF|HPGL|BMP",
                                           context.args.value("--format"))
                             : "the name of the plot file does not tell its format; give --format");
    }
    return *format;
}

plot::Sheet sheet_of(const Context& context, plot::Plot_Format format, plot::Sheet sheet) {
    sheet.Plot_Unit =
        context.args.number("--unit").value_or(plot::default_Plot_Unit(format, sheet));
    if (!(sheet.Plot_Unit > 0) || !std::isfinite(sheet.Plot_Unit)) {
        throw UsageError("--unit has to be above 0");
    }
    return sheet;
}

plot::StrokeFont font_of(const Context& context) {
    std::vector<std::filesystem::path> folders{context.install};
    if (!context.args.has("--install")) {
        const std::filesystem::path own = base::executable_folder();
        folders.push_back(own);
        folders.push_back(own / "../share/tervexdesk");
    }
    return plot::StrokeFont::load(folders);
}

// Values, zones and levels of --param.
std::optional<base::Refusal> load_item(const Context& context, app::Workspace& workspace,
                                       const plot::PlotShow& show, plot::PlotData& data) {
    plot::load_parameter(data, workspace.files,
                         parameter_of(context, workspace, request_of(context, workspace)));
    if (!show.contours && !show.fill) {
        return std::nullopt;
    }
    auto read = context.args.has("--levels") ? plot::load_level_file(context.args.value("--levels"))
                                             : plot::load_levels(data, workspace.files);
    data.levels = std::move(read.levels);
    return read.refusal;
}

int plot_worksheet(Context& context, app::Workspace& workspace) {
    const std::filesystem::path file = context.args.argument("FILE");
    const plot::Plot_Format format = format_of(context, file);
    const plot::PlotShow show = show_of(context);
    const auto display =
        index_of_word(context.args.value_or("--display", "world"), "world|local", "--display") == 0
            ? plot::Display::world
            : plot::Display::local;
    plot::PlotData data =
        plot::load_grid(workspace.project, workspace.files, layer_of(context, workspace));
    if (context.args.has("--param")) {
        if (const auto refusal = load_item(context, workspace, show, data)) {
            return context.refuse(*refusal);
        }
    }
    data.bores = grid::Read_Monitoring_Points(workspace.files);
    data.font = font_of(context);
    const plot::PlotFrame frame(workspace.project, data.cells, display);
    const auto drawing = plot::Plot_Open(format, sheet_of(context, format, frame.sheet()));
    const bool complete = plot::draw_worksheet(*drawing, frame, data, show, context.user);
    base::replace_file(file, drawing->Plot_Close());
    return complete ? done : refused;
}

int plot_command(Context& context) {
    return on_model_files(context, Access::read, [&](app::Workspace& workspace) {
        if (const auto refusal = app::mesh_refusal(workspace)) {
            return context.refuse(*refusal);
        }
        return plot_worksheet(context, workspace);
    });
}

int plot_colors(Context& context) {
    return on_model_files(context, Access::read, [&](app::Workspace& workspace) {
        for (const core::Project::Entry& entry : workspace.project.entries()) {
            if (entry.section == "COLOR") {
                const std::int32_t colour = base::leading_int32(entry.value);
                context.record({entry.key, entry.value, fmt::to_string(plot::HPGL_pen(colour)),
                                fmt::to_string(plot::DXF_colour(colour))});
            }
        }
        return int{done};
    });
}

constexpr ArgumentSpec model_arguments[] = {model_argument};
constexpr ArgumentSpec level_arguments[] = {{"FILE", "file of contour levels (.ctr)"}};
constexpr ArgumentSpec text_arguments[] = {{"VALUE", "level", true, true}};
constexpr ArgumentSpec plot_arguments[] = {model_argument, {"FILE", "plot file"}};

constexpr OptionSpec levels_option{"--levels", "FILE", "file of contour levels"};
constexpr OptionSpec make_options[] = {
    {"--min", "X", "first level", false, true},
    {"--max", "X", "no level is above it", false, true},
    {"--interval", "X", "distance between levels", false, true},
    {"--line-colors", "LOW,HIGH", "colours of the first and the last line (default 0,0)"},
    {"--fill-colors", "LOW,HIGH", "colours of the first and the last band (default 0,0)"},
    {"--label-first", "N", "first labelled level"},
    {"--label-every", "N", "every N-th level behind it is labelled"},
    {"--height", "X", "height of the labels [m] (default 1)"},
    {"--spacing", "X", "distance of labels on a line [m] (default 10 times the height)"},
};
constexpr OptionSpec lines_options[] = {
    param_option,
    session_array_option,
    session_layer_option,
    session_period_option,
    levels_option,
    {"--level", "X[,X...]", "levels"},
    {"--ignore-inactive", "", "inactive cells are left out"},
};
constexpr OptionSpec text_options[] = {
    {"--style", "fixed|exponential", "form of the number", false, true},
    {"--decimals", "D", "digits behind the point, 0 to 9 (default 2)"},
    {"--prefix", "P", "text before the number"},
    {"--suffix", "S", "text behind it"},
};
constexpr OptionSpec plot_options[] = {
    {"--format", "DXF|HPGL|BMP", "default: by the name of the file, .dxf, .pgl or .bmp"},
    {"--param", "N", "parameter number of the item that is shown"},
    session_array_option,
    session_layer_option,
    session_period_option,
    {"--show", "LIST", "mesh, inactive, zones, contours, fill, bores (default mesh)"},
    levels_option,
    {"--unit", "U", "world length of a plot unit [m]"},
    {"--display", "world|local", "the sheet, or the grid alone and not turned (default world)"},
    install_option,
};

constexpr Command commands[] = {
    {"contour make", "writes a file of contour levels", level_arguments, make_options, false,
     contour_make},
    {"contour levels",
     "prints a file of contour levels",
     level_arguments,
     {},
     false,
     contour_levels},
    {"contour lines", "prints the contour lines of a layer", model_arguments, lines_options, false,
     contour_lines},
    {"contour text", "prints labels of contour lines", text_arguments, text_options, false,
     contour_text},
    {"plot", "writes the worksheet as a drawing or a picture", plot_arguments, plot_options, false,
     plot_command},
    {"plot-colors",
     "prints the display colours with their numbers in plot files",
     model_arguments,
     {},
     false,
     plot_colors},
};

} // namespace

std::span<const Command> plot_commands() {
    return commands;
}

} // namespace td

// Grid and layers.

#include "app/workspace.h"
#include "base/numbertext.h"
#include "core/form.h"
#include "grid/griddefinition.h"
#include "grid/gridform.h"
#include "grid/layerform.h"
#include "td/command.h"

#include <fmt/format.h>

namespace td {

namespace {

using core::Access;
using enum FieldValue;

// Grid.

constexpr FieldOption grid_fields[] = {
    {"--orientation", "GridOrientation", "orientation, before the first grid set only", word,
     "horizontal|vertical|cylindrical"},
    {"--layers", "txtLayers", "number of layers"},
    {"--columns", "txtColumns", "number of columns"},
    {"--column-size", "txtColumnSize", "width of every column [m]"},
    {"--rows", "txtRows", "number of rows"},
    {"--row-size", "txtRowSize", "height of every row [m]"},
};
constexpr OptionSpec grid_options[] = {{"--finish", "", "ends the laying out of the mesh"}};

int grid_set(Context& context) {
    return on_model(context, Access::write, [&](app::Workspace& workspace) {
        if (context.args.has("--orientation") && workspace.project.flags.is_defined(1, 2)) {
            return context.refuse({base::desk_title, grid::orientation_is_fixed});
        }
        grid::Grid_Number form;
        form.load(workspace.project, workspace.files);
        fill_form(context, form, grid_fields);
        const int status = accept_form(context, workspace, form);
        if (status == done && context.args.has("--finish")) {
            workspace.project.flags.mark_defined(1, 3);
        }
        return status;
    });
}

// Sets one width or height; `which` is "column" or "row".
int set_size(Context& context, app::Workspace& workspace, const std::string& assignment,
             bool column) {
    const auto [index, size] = split_assignment(assignment);
    const int number = integer_of(index, column ? "--column" : "--row", 1,
                                  column ? workspace.project.NX() : workspace.project.NY());
    grid::GridSize form(column ? number : 1, column ? 1 : number);
    form.load(workspace.project, workspace.files);
    form.set(column ? "txtColumnSize" : "txtRowSize", size);
    return accept_form(context, workspace, form);
}

int grid_size(Context& context) {
    return on_model(context, Access::write, [&](app::Workspace& workspace) {
        if (const auto refusal = app::mesh_refusal(workspace)) {
            return context.refuse(*refusal);
        }
        for (const Arguments::Given& given : context.args.given()) {
            if (const int status =
                    set_size(context, workspace, given.value, given.option == "--column");
                status != done) {
                return status;
            }
        }
        return int{done};
    });
}

template <typename Values>
void record_values(const Context& context, const char* name, const Values& values) {
    std::vector<std::string> fields{name};
    for (const auto value : values) {
        fields.push_back(base::exact_text(value));
    }
    context.record(fields);
}

void show_sizes(const Context& context, const grid::GridFile& grid) {
    record_values(context, "columns", grid.Column_Width);
    record_values(context, "rows", grid.Row_Height);
    if (context.args.has("--edges")) {
        const grid::CellCoordinates cells = grid::Build_Cell_Coordinates(grid);
        record_values(context, "x", std::vector<float>(cells.x_edges.begin(), cells.x_edges.end()));
        record_values(context, "y", std::vector<float>(cells.y_edges.begin(), cells.y_edges.end()));
    }
}

int grid_show(Context& context) {
    return on_model_files(context, Access::read, [&](app::Workspace& workspace) {
        const core::Project& project = workspace.project;
        const auto grid = grid::GridFile::load(workspace.files);
        const auto number = [&](const char* section, const char* key) {
            return base::exact_text(project.single(section, key));
        };
        context.record({"dimension", fmt::to_string(project.NX()), fmt::to_string(project.NY()),
                        fmt::to_string(project.NZ())});
        context.record({"orientation", fmt::to_string(project.flags.GridOrientation())});
        context.record({"defined", grid ? "1" : "0"});
        context.record({"origin", number("GRIDPOSITION", "LEFT"), number("GRIDPOSITION", "TOP")});
        context.record({"angle", number("GRIDPOSITION", "ANGLE")});
        context.record({"sheet", number("DIMENSION", "SHEET_X1"), number("DIMENSION", "SHEET_Y1"),
                        number("DIMENSION", "SHEET_X2"), number("DIMENSION", "SHEET_Y2")});
        context.record({"moved", project.integer("GRIDPOSITION", "MOVED") != 0 ? "1" : "0"});
        if (grid) {
            show_sizes(context, *grid);
        }
        return int{done};
    });
}

// Layers.

constexpr OptionSpec layer_options[] = {
    {"--type", "L=0|1", "0 confined, 1 unconfined; L is a layer or all", true},
    {"--thickness", "L=T", "thickness [m]; L is a layer or all", true},
    {"--unconfined", "N", "layers 1 to N are unconfined, the others confined", true},
    {"--geometry", "thickness|arrays", "where the layers get their thickness from", true},
};

std::optional<base::Refusal> set_layer(grid::Layer_Type& form, const Arguments::Given& given) {
    const bool type = given.option == "--type";
    const auto [layer, value] = split_assignment(given.value);
    const char* column = type ? "Type" : "Thickness";
    if (type) {
        integer_of(value, "--type", 0, 1);
    }
    if (layer == "all") {
        return form.set_all(column, value);
    }
    return form.set_cell(integer_of(layer, given.option, 1, form.rows()), column, value);
}

std::optional<base::Refusal> change_layers(grid::Layer_Type& form, const Arguments::Given& given) {
    if (given.option == "--geometry") {
        const int index = index_of_word(given.value, "thickness|arrays", given.option);
        form.set("Geometry", fmt::to_string(index));
        return std::nullopt;
    }
    if (given.option == "--unconfined") {
        return form.set_unconfined(integer_of(given.value, given.option, 0, 32767));
    }
    return set_layer(form, given);
}

int layers_set(Context& context) {
    return on_model(context, Access::write, [&](app::Workspace& workspace) {
        grid::Layer_Type form;
        form.load(workspace.project, workspace.files);
        for (const Arguments::Given& given : context.args.given()) {
            if (const auto refusal = change_layers(form, given)) {
                return context.refuse(*refusal);
            }
        }
        return accept_form(context, workspace, form);
    });
}

int layers_show(Context& context) {
    return on_model_files(context, Access::read, [&](app::Workspace& workspace) {
        const int nz = workspace.project.NZ();
        const auto file =
            grid::LayerFile::load(workspace.files, nz).value_or(grid::LayerFile::defaults(nz));
        context.record(
            {"geometry", workspace.project.flags.layers_by_thickness() ? "thickness" : "arrays"});
        int number = 0;
        for (const grid::LayerFile::Layer& layer : file.layers) {
            std::vector<std::string> fields{"layer", fmt::to_string(++number),
                                            fmt::to_string(layer.type),
                                            base::exact_text(layer.thickness)};
            for (const float option : layer.options) {
                fields.push_back(base::exact_text(option));
            }
            context.record(fields);
        }
        context.record(
            {"end", base::exact_text(file.closing[0]), base::exact_text(file.closing[1])});
        return int{done};
    });
}

constexpr ArgumentSpec model_arguments[] = {model_argument};
constexpr OptionSpec size_options[] = {
    {"--column", "I=W", "width of column I [m]", true},
    {"--row", "J=H", "height of row J [m]", true},
};
constexpr OptionSpec show_options[] = {{"--edges", "", "also the edges of columns and rows"}};

constexpr Command commands[] = {
    {"grid set", "sets the model dimension", model_arguments, grid_options, false, grid_set,
     grid_fields},
    {"grid size", "sets widths of columns and heights of rows", model_arguments, size_options,
     false, grid_size},
    {"grid show", "prints the grid", model_arguments, show_options, false, grid_show},
    {"layers set", "sets types and thicknesses of layers", model_arguments, layer_options, false,
     layers_set},
    {"layers show", "prints the layers", model_arguments, {}, false, layers_show},
};

} // namespace

std::span<const Command> grid_commands() {
    return commands;
}

} // namespace td

// Zones; the table of zones, array exchange, search and modify.

#include "td/zonecommands.h"

#include "app/workspace.h"
#include "base/paths.h"
#include "base/textfile.h"
#include "core/arraystore.h"
#include "core/extensions.h"
#include "grid/worksheettools.h"
#include "td/sessionwords.h"

#include <fmt/format.h>

namespace td {

int look_then_work(Context& context,
                   const std::function<int(app::Workspace&, const grid::EditRequest&)>& look,
                   const std::function<int(grid::Worksheet&)>& work) {
    const int status = on_item(context, look);
    return status == done ? on_worksheet(context, work) : status;
}

ShownPlace shown_place(const Context& context, int layers) {
    return {context.args.integer("--period", 1, core::period_count, 1),
            context.args.integer("--layer", 1, layers, 1)};
}

namespace {

using Zones = std::vector<core::Zone>;

// Runs `look` on the zones of the item as they are in its file.
int on_zones(Context& context,
             const std::function<int(const grid::EditRequest&, const Zones&)>& look) {
    return on_item(context, [&](app::Workspace& workspace, const grid::EditRequest& request) {
        if (const auto refusal = grid::zones_refusal(request)) {
            return context.refuse(*refusal);
        }
        const int layers = core::ArrayStore(workspace.files, workspace.project)
                               .layers(request.Current_Parameter());
        const ShownPlace place = shown_place(context, layers);
        return look(request, core::ZoneFile(workspace.files, layers)
                                 .read_zones(place.period, place.layer, request.zone_number()));
    });
}

// The same, then `work` in a whole session.
int change_zones(Context& context,
                 const std::function<int(const grid::EditRequest&, const Zones&)>& look,
                 const std::function<int(grid::Worksheet&)>& work) {
    const int status = on_zones(context, look);
    return status == done ? on_worksheet(context, work) : status;
}

int zones_list(Context& context) {
    return on_zones(context, [&](const grid::EditRequest&, const Zones& zones) {
        for (std::size_t number = 1; number <= zones.size(); ++number) {
            context.record(zone_record(number, zones[number - 1]));
        }
        return int{done};
    });
}

int zones_add(Context& context) {
    std::vector<grid::ZoneNode> nodes;
    std::vector<float> values;
    return change_zones(
        context,
        [&](const grid::EditRequest& request, const Zones&) {
            nodes = nodes_of(pieces(context.args.value("--nodes"), ' '));
            values = values_of(context.args.value("--value"), request.Array_Count());
            return int{done};
        },
        [&](grid::Worksheet& worksheet) {
            if (const auto refusal = grid::add_zone(worksheet, nodes, values)) {
                return context.refuse(*refusal);
            }
            context.record({fmt::to_string(worksheet.zones().size())});
            return int{done};
        });
}

int zones_delete(Context& context) {
    const bool all = context.args.has("--all");
    int number = 0;
    return change_zones(
        context,
        [&](const grid::EditRequest&, const Zones& zones) {
            if (all == context.args.has("--zone")) {
                throw UsageError("one of --zone and --all is required");
            }
            if (!all) {
                number = zone_of(context.args.value("--zone"), zones.size());
                return int{done};
            }
            const auto answer = context.user.ask(grid::zones_title, grid::delete_all_question,
                                                 base::Buttons::yes_no_risky);
            return int{answer == base::Answer::yes ? done : refused};
        },
        [&](grid::Worksheet& worksheet) {
            if (all) {
                grid::clear_zones(worksheet);
            } else {
                grid::delete_zone(worksheet, number);
            }
            return int{done};
        });
}

int zones_transfer(Context& context) {
    const bool all = !context.args.has("--zone");
    int number = 0;
    return change_zones(
        context,
        [&](const grid::EditRequest&, const Zones& zones) {
            number = all ? 0 : zone_of(context.args.value("--zone"), zones.size());
            return int{done};
        },
        [&](grid::Worksheet& worksheet) {
            std::size_t cells = 0;
            const int last = static_cast<int>(worksheet.zones().size());
            for (int zone = all ? 1 : number; zone <= (all ? last : number); ++zone) {
                cells += grid::transfer_zone(worksheet, zone);
            }
            context.record({fmt::to_string(cells)});
            return int{done};
        });
}

int zones_contains(Context& context) {
    return on_zones(context, [&](const grid::EditRequest&, const Zones& zones) {
        const int number = zone_of(context.args.value("--zone"), zones.size());
        const grid::ZoneNode place = place_of(context.args.value("--at"));
        const core::Zone& zone = zones[static_cast<std::size_t>(number - 1)];
        context.record({grid::Zone_Contains(place.x, place.y, zone) ? "1" : "0"});
        return int{done};
    });
}

int zones_find(Context& context) {
    return on_zones(context, [&](const grid::EditRequest&, const Zones& zones) {
        const grid::ZoneNode place = place_of(context.args.value("--at"));
        context.record({fmt::to_string(grid::Find_Zone(place.x, place.y, zones))});
        return int{done};
    });
}

int zones_export(Context& context) {
    return on_zones(context, [&](const grid::EditRequest&, const Zones& zones) {
        base::replace_file(context.args.argument("FILE"), grid::zones_text(zones));
        return int{done};
    });
}

int zones_import(Context& context) {
    const auto nothing = [](const grid::EditRequest&, const Zones&) { return int{done}; };
    return change_zones(context, nothing, [&](grid::Worksheet& worksheet) {
        if (const auto refusal = grid::load_zones(worksheet, context.args.argument("FILE"))) {
            return context.refuse(*refusal);
        }
        context.record({fmt::to_string(worksheet.zones().size())});
        return int{done};
    });
}

constexpr ArgumentSpec file_argument{"FILE", "the file"};
constexpr ArgumentSpec model_arguments[] = {model_argument};
constexpr ArgumentSpec exchange_arguments[] = {model_argument, file_argument};
constexpr ArgumentSpec file_arguments[] = {file_argument};

constexpr OptionSpec value_option{
    "--value", "V1,V2,V3", "a value for each of the item's arrays, fewer will do", false, true};
constexpr OptionSpec zone_option{"--zone", "Z", "number of the zone"};
constexpr OptionSpec needed_zone_option{"--zone", "Z", "number of the zone", false, true};
constexpr OptionSpec at_option{"--at", "X,Y", "a point, m from the grid's upper left corner", false,
                               true};

constexpr OptionSpec place_options[] = {param_option, session_layer_option, session_period_option};
constexpr OptionSpec add_options[] = {param_option,
                                      value_option,
                                      {"--nodes", "'X,Y X,Y ...'",
                                       "nodes, m from the grid's upper left corner, y downward",
                                       false, true},
                                      session_layer_option,
                                      session_period_option};
constexpr OptionSpec delete_options[] = {param_option,
                                         zone_option,
                                         {"--all", "", "all zones of the layer"},
                                         session_layer_option,
                                         session_period_option};
constexpr OptionSpec transfer_options[] = {
    param_option,
    {"--zone", "Z", "number of the zone (default: all, one after the other)"},
    session_layer_option,
    session_period_option};
constexpr OptionSpec contains_options[] = {param_option, needed_zone_option, at_option,
                                           session_layer_option, session_period_option};
constexpr OptionSpec find_options[] = {param_option, at_option, session_layer_option,
                                       session_period_option};
constexpr OptionSpec export_options[] = {
    param_option,
    {"--form", array_form_words, "at most 20 values a line, a line a row, or x, y, value a line",
     false, true},
    session_array_option,
    session_layer_option,
    session_period_option};
constexpr OptionSpec import_options[] = {
    param_option,
    {"--form", matrix_file_words, "form of the file (default: by its name)"},
    {"--at", "COL,ROW", "cell that takes the first value (default 1,1)"},
    session_array_option,
    session_layer_option,
    session_period_option};
constexpr OptionSpec reset_options[] = {param_option, value_option, session_layer_option,
                                        session_period_option};
constexpr OptionSpec modify_options[] = {param_option,
                                         {"--rules", "FILE", "rule file (.TRS)", false, true},
                                         {"--layers", "L1-L2", "layers to search (default: all)"},
                                         session_array_option,
                                         session_period_option};
constexpr OptionSpec rule_options[] = {
    {"--row", "R", "rule, 1 to 50", false, true},
    {"--active", "0|1", "whether the rule takes part"},
    {"--color", "C", "colour of matched cells, a decimal number"},
    {"--min", "X", "lower limit, inclusive"},
    {"--max", "X", "upper limit, inclusive"},
    {"--value", "X", "operand"},
    {"--option", trace_option_words, "what happens to a matched cell"}};

constexpr Command commands[] = {
    {"zones list", "prints the zones of a layer", model_arguments, place_options, false,
     zones_list},
    {"zones add", "adds a zone; prints its number", model_arguments, add_options, false, zones_add},
    {"zones delete", "removes one zone or all", model_arguments, delete_options, true,
     zones_delete},
    {"zones transfer", "gives the cells in zones their values", model_arguments, transfer_options,
     false, zones_transfer},
    {"zones contains", "tells whether a zone holds a point", model_arguments, contains_options,
     false, zones_contains},
    {"zones find", "prints the first zone that holds a point", model_arguments, find_options, false,
     zones_find},
    {"zones export", "writes the zones of a layer to an exchange file", exchange_arguments,
     place_options, false, zones_export},
    {"zones import", "takes the zones of an exchange file", exchange_arguments, place_options,
     false, zones_import},
    {"array export", "writes a layer as text for other programs", exchange_arguments,
     export_options, false, array_export},
    {"array import", "takes a layer from a text or grid file", exchange_arguments, import_options,
     false, array_import},
    {"array reset", "fills a layer", model_arguments, reset_options, false, array_reset},
    {"modify", "searches an array by rules and changes it", model_arguments, modify_options, false,
     modify},
    {"rules list", "prints the rules of a file", file_arguments, {}, false, rules_list},
    {"rules set", "changes one rule of a file", file_arguments, rule_options, false, rules_set},
};

} // namespace

std::span<const Command> zone_commands() {
    return commands;
}

} // namespace td

// Array exchange, search and modify.

#include "app/workspace.h"
#include "base/numbertext.h"
#include "base/paths.h"
#include "base/textfile.h"
#include "core/arraystore.h"
#include "grid/worksheettools.h"
#include "td/sessionwords.h"
#include "td/zonecommands.h"

#include <fmt/format.h>

#include <limits>

namespace td {

namespace {

int array_of(const Context& context, const grid::EditRequest& request) {
    return context.args.integer("--array", 1, request.Array_Count(), 1);
}

grid::GridFile grid_of(const app::Workspace& workspace) {
    auto grid = grid::GridFile::load(workspace.files);
    if (!grid || grid->NX != workspace.project.NX() || grid->NY != workspace.project.NY()) {
        throw base::FileFailure("is not the grid of the project file",
                                workspace.files.name_of(".xy"));
    }
    return *std::move(grid);
}

std::string layer_text(const Context& context, app::Workspace& workspace,
                       const grid::EditRequest& request) {
    const auto form = static_cast<grid::ArrayForm>(
        index_of_word(context.args.value("--form"), array_form_words, "--form"));
    const int k = array_of(context, request), number = request.number(k);
    const core::ArrayStore store(workspace.files, workspace.project);
    const ShownPlace place = shown_place(context, store.layers(number));
    core::LayerValues values = store.layer_values(number);
    store.layer_reader_if(number, place.period, request.default_value(k)).read(place.layer, values);
    return grid::array_text(form, values, grid_of(workspace),
                            grid::GridPosition(workspace.project));
}

// The rules of a file; nothing, and the exit status, when it is another file.
struct Rules {
    grid::TraceRules rules;
    int status = done;
};

Rules rules_of(const Context& context, const std::filesystem::path& file) {
    const auto read = grid::TraceRules::read(base::read_bytes(file), file);
    return {read.rules, read.refusal ? context.refuse(*read.refusal) : int{done}};
}

std::optional<base::Refusal> set_single(const Context& context, const char* option, float& target) {
    const auto value = context.args.number(option);
    if (value) {
        if (auto refusal = grid::trace_value_refusal(*value)) {
            return refusal;
        }
        target = static_cast<float>(*value);
    }
    return std::nullopt;
}

std::optional<base::Refusal> set_row(const Context& context, grid::Trace_Row& row) {
    constexpr int low = std::numeric_limits<std::int32_t>::min();
    constexpr int high = std::numeric_limits<std::int32_t>::max();
    row.active = context.args.integer("--active", 0, 1, row.active ? 1 : 0) == 1;
    row.colour = context.args.integer("--color", low, high, row.colour);
    if (context.args.has("--option")) {
        row.option = static_cast<grid::TraceOption>(
            index_of_word(context.args.value("--option"), trace_option_words, "--option"));
    }
    for (const auto& [option, target] :
         {std::pair("--min", &row.minimum), std::pair("--max", &row.maximum),
          std::pair("--value", &row.value)}) {
        if (auto refusal = set_single(context, option, *target)) {
            return refusal;
        }
    }
    return std::nullopt;
}

} // namespace

int array_export(Context& context) {
    return on_item(context, [&](app::Workspace& workspace, const grid::EditRequest& request) {
        base::replace_file(context.args.argument("FILE"), layer_text(context, workspace, request));
        return int{done};
    });
}

int array_import(Context& context) {
    const std::filesystem::path file = context.args.argument("FILE");
    grid::MatrixFile form = grid::matrix_file_of(file);
    grid::FirstCell first;
    int k = 1;
    return look_then_work(
        context,
        [&](app::Workspace&, const grid::EditRequest& request) {
            k = array_of(context, request);
            if (context.args.has("--form")) {
                form = static_cast<grid::MatrixFile>(
                    index_of_word(context.args.value("--form"), matrix_file_words, "--form"));
            }
            if (context.args.has("--at")) {
                first = first_cell_of(context.args.value("--at"));
            }
            return int{done};
        },
        [&](grid::Worksheet& worksheet) {
            const auto refusal = grid::load_array(worksheet, k, file, form, first);
            return refusal ? context.refuse(*refusal) : int{done};
        });
}

int array_reset(Context& context) {
    std::vector<float> values;
    return look_then_work(
        context,
        [&](app::Workspace&, const grid::EditRequest& request) {
            values = values_of(context.args.value("--value"), request.Array_Count());
            return int{done};
        },
        [&](grid::Worksheet& worksheet) {
            const auto refusal = worksheet.reset(values);
            return refusal ? context.refuse(*refusal) : int{done};
        });
}

int modify(Context& context) {
    grid::TraceRules rules;
    std::optional<grid::LayerRange> layers;
    int k = 1;
    return look_then_work(
        context,
        [&](app::Workspace&, const grid::EditRequest& request) {
            k = array_of(context, request);
            if (context.args.has("--layers")) {
                layers = layers_of(context.args.value("--layers"));
            }
            const Rules read = rules_of(context, context.args.value("--rules"));
            rules = read.rules;
            return read.status;
        },
        [&](grid::Worksheet& worksheet) {
            const auto all = grid::LayerRange{1, worksheet.layers()};
            const auto result =
                grid::search_and_modify(worksheet, k, rules, layers.value_or(all), context.user);
            if (result.refusal) {
                return context.refuse(*result.refusal);
            }
            for (const auto& record : match_records(rules, result.outcome)) {
                context.record(record);
            }
            return int{done};
        });
}

int rules_list(Context& context) {
    const Rules read = rules_of(context, context.args.argument("FILE"));
    for (std::size_t row = 0; row < read.rules.rows.size() && read.status == done; ++row) {
        const grid::Trace_Row& rule = read.rules.rows[row];
        context.record({fmt::to_string(row + 1), rule.active ? "1" : "0",
                        fmt::to_string(rule.colour), base::exact_text(rule.minimum),
                        base::exact_text(rule.maximum), base::exact_text(rule.value),
                        trace_option_word(rule.option)});
    }
    return read.status;
}

int rules_set(Context& context) {
    const std::filesystem::path file = context.args.argument("FILE");
    const int row = context.args.integer("--row", 1, grid::TraceRules::row_count, 1);
    Rules read = base::is_file(file) ? rules_of(context, file) : Rules();
    if (read.status != done) {
        return read.status;
    }
    if (const auto refusal = set_row(context, read.rules.rows[static_cast<std::size_t>(row - 1)])) {
        return context.refuse(*refusal);
    }
    base::replace_file(file, read.rules.bytes());
    return done;
}

} // namespace td

// The worksheet, the mesh editor and refinement.

#include "app/workspace.h"
#include "base/numbertext.h"
#include "core/extensions.h"
#include "grid/mesheditor.h"
#include "grid/refinement.h"
#include "td/scriptlines.h"
#include "td/sessionscript.h"
#include "td/worksheetsession.h"

#include <fmt/format.h>

#include <algorithm>

namespace td {

namespace {

using core::Access;
using Words = std::vector<std::string>;

// The worksheet.

std::optional<base::Answer> take_over_answer(const Context& context) {
    static constexpr base::Answer answers[] = {base::Answer::yes, base::Answer::no,
                                               base::Answer::cancel};
    if (!context.args.has("--take-over")) {
        return std::nullopt;
    }
    return answers[index_of_word(context.args.value("--take-over"), "yes|no|cancel",
                                 "--take-over")];
}

int edit_model(Context& context, app::Workspace& workspace) {
    if (const auto refusal = app::mesh_refusal(workspace)) {
        return context.refuse(*refusal);
    }
    ScriptLines lines(context.args.value("--script"), context.in);
    TakeOverUser user(context.user, take_over_answer(context));
    const int period = context.args.integer("--period", 1, core::period_count, 1);
    const auto worksheet = grid::Worksheet::Edit_data_for(
        request_of(context, workspace), workspace.project, workspace.files, user, period);
    if (!worksheet) {
        return refused;
    }
    worksheet->keep_history(false);
    int status = refused;
    try {
        status = run_session_script(context, workspace.project, *worksheet, lines);
    } catch (...) {
        worksheet->leave(base::Answer::no);
        throw;
    }
    if (!worksheet->ended()) {
        worksheet->leave(base::Answer::no);
    }
    return status;
}

int edit(Context& context) {
    return on_model_files(context, Access::write, [&](app::Workspace& workspace) {
        return edit_model(context, workspace);
    });
}

// The mesh editor.

struct MeshLine {
    Context& context;
    grid::MeshEditor& editor;
    const Words& words; // behind the command

    int integer(std::size_t index, const char* what, int high) const {
        return integer_of(words[index], what, 1, high);
    }
};

int mesh_go(const MeshLine& line) {
    const grid::GridFile& mesh = line.editor.grid();
    line.editor.go(line.integer(0, "column", mesh.NX), line.integer(1, "row", mesh.NY));
    if (line.words.size() == 3) {
        line.editor.go_layer(line.integer(2, "layer", mesh.NZ));
    }
    return done;
}

int mesh_key(const MeshLine& line) {
    const int key = index_of_word(line.words[0], "left|right|up|down", "key");
    const auto effect = line.editor.press(static_cast<grid::MeshKey>(key));
    if (!effect.done) {
        line.context.user.beep();
    }
    if (effect.refusal) {
        line.context.refuse(*effect.refusal);
    }
    return done;
}

int mesh_size(const MeshLine& line) {
    const Words& words = line.words;
    const auto factor = [&](std::size_t index) {
        return index < words.size() ? std::optional(int{base::leading_int32(words[index])})
                                    : std::nullopt;
    };
    if (words.size() == 3) {
        throw UsageError("size: wrong number of words");
    }
    const auto refusal =
        line.editor.set_size({base::leading_single(words[0]), base::leading_single(words[1]),
                              factor(2), factor(3), factor(4)});
    return refusal ? line.context.refuse(*refusal) : int{done};
}

int mesh_status(const MeshLine& line) {
    const grid::MeshEditor& editor = line.editor;
    const auto at = [](const auto& values, int number) {
        return values[static_cast<std::size_t>(number - 1)];
    };
    line.context.record({fmt::to_string(editor.grid().NX), fmt::to_string(editor.grid().NY),
                         fmt::to_string(editor.grid().NZ), fmt::to_string(editor.column()),
                         fmt::to_string(editor.row()),
                         base::exact_text(at(editor.grid().Column_Width, editor.column())),
                         base::exact_text(at(editor.grid().Row_Height, editor.row())),
                         fmt::to_string(at(editor.division().columns, editor.column())),
                         fmt::to_string(at(editor.division().rows, editor.row())),
                         fmt::to_string(at(editor.division().layers, editor.layer()))});
    return done;
}

struct MeshCommand {
    const char* name;
    std::size_t least, most; // words behind the name
    int (*run)(const MeshLine&);
};

constexpr MeshCommand mesh_commands[] = {
    {"go", 2, 3, mesh_go},
    {"key", 1, 1, mesh_key},
    {"size", 2, 5, mesh_size},
    {"status", 0, 0, mesh_status},
};

int carry_out_mesh_line(Context& context, grid::MeshEditor& editor, Words words) {
    const std::string name = words.front();
    words.erase(words.begin());
    const auto* const command = std::ranges::find_if(
        mesh_commands, [&](const MeshCommand& candidate) { return candidate.name == name; });
    if (command == std::end(mesh_commands)) {
        throw UsageError(fmt::format("unknown word \"{}\"", name));
    }
    if (words.size() < command->least || words.size() > command->most) {
        throw UsageError(fmt::format("{}: wrong number of words", name));
    }
    return command->run({context, editor, words});
}

int leave_mesh(Context& context, app::Workspace& workspace, grid::MeshEditor& editor,
               base::Answer answer) {
    if (answer == base::Answer::no) {
        return done;
    }
    if (answer == base::Answer::cancel ||
        !editor.save(workspace.project, workspace.files, context.user)) {
        return refused;
    }
    workspace.files.commit();
    return done;
}

int run_mesh_script(Context& context, app::Workspace& workspace) {
    ScriptLines lines(context.args.value("--script"), context.in);
    grid::MeshEditor editor(workspace.project, workspace.files);
    while (const auto words = lines.next()) {
        if (words->front() == "leave") {
            const bool no =
                words->size() == 2 && index_of_word((*words)[1], "yes|no", "leave") == 1;
            if (words->size() != 2) {
                throw UsageError("leave: yes or no is needed");
            }
            lines.require_end();
            return leave_mesh(context, workspace, editor,
                              no ? base::Answer::no : base::Answer::yes);
        }
        if (const int status = carry_out_mesh_line(context, editor, *words); status != done) {
            return status;
        }
        context.out.flush();
    }
    return leave_mesh(context, workspace, editor,
                      context.user.ask(grid::MeshEditor::caption, grid::MeshEditor::question,
                                       base::Buttons::yes_no_cancel));
}

int mesh(Context& context) {
    return on_model_files(context, Access::write, [&](app::Workspace& workspace) {
        if (const auto refusal = app::mesh_refusal(workspace)) {
            return context.refuse(*refusal);
        }
        return run_mesh_script(context, workspace);
    });
}

// Refinement.

// "3=2,7=10" or "all=2" into the factors; the refusal of one that is out of range.
std::optional<base::Refusal> set_factors(const Context& context, const char* option,
                                         std::vector<int>& factors) {
    std::string_view rest = context.args.value(option);
    while (context.args.has(option)) {
        const std::size_t end = rest.find(',');
        const auto [index, text] = split_assignment(rest.substr(0, end));
        const int factor = base::leading_int32(text);
        if (factor < 1 || factor > grid::max_refinement) {
            return base::Refusal{"Error", "Valid range is 1 to 10", base::Icon::warning};
        }
        if (index == "all") {
            std::ranges::fill(factors, factor);
        } else {
            const int number = integer_of(index, option, 1, static_cast<int>(factors.size()));
            factors[static_cast<std::size_t>(number - 1)] = factor;
        }
        if (end == std::string_view::npos) {
            break;
        }
        rest.remove_prefix(end + 1);
    }
    return std::nullopt;
}

int refine_model(Context& context, app::Workspace& workspace) {
    const auto mesh = grid::GridFile::load(workspace.files);
    core::Division division = grid::no_division(*mesh, workspace.project.NZ());
    for (const auto& [option, factors] :
         {std::pair("--columns", &division.columns), std::pair("--rows", &division.rows),
          std::pair("--layers", &division.layers)}) {
        if (const auto refusal = set_factors(context, option, *factors)) {
            return context.refuse(*refusal);
        }
    }
    if (!grid::Do_Grid_Refinement(division, workspace.project, workspace.files, context.user)) {
        return refused;
    }
    workspace.files.commit();
    context.record({fmt::to_string(core::divided_count(division.columns)),
                    fmt::to_string(core::divided_count(division.rows)),
                    fmt::to_string(core::divided_count(division.layers))});
    return done;
}

int refine(Context& context) {
    return on_model_files(context, Access::write, [&](app::Workspace& workspace) {
        if (const auto refusal = app::mesh_refusal(workspace)) {
            return context.refuse(*refusal);
        }
        return refine_model(context, workspace);
    });
}

constexpr ArgumentSpec model_arguments[] = {model_argument};
constexpr OptionSpec script_option{"--script", "FILE", "lines to carry out (-: standard input)",
                                   false, true};
constexpr OptionSpec edit_options[] = {
    param_option,
    session_period_option,
    script_option,
    {"--take-over", "yes|no|cancel", "whether tops (bottoms) are taken from bottoms (tops)"}};
constexpr OptionSpec mesh_options[] = {script_option};
constexpr OptionSpec refine_options[] = {
    {"--columns", "I=F,...", "factors of columns, 1 to 10; I is a column or all"},
    {"--rows", "J=F,...", "factors of rows"},
    {"--layers", "L=F,...", "factors of layers"}};

constexpr Command commands[] = {
    {"edit", "edits arrays and zones in a session of the worksheet", model_arguments, edit_options,
     true, edit},
    {"mesh", "edits columns, rows and refinement factors", model_arguments, mesh_options, true,
     mesh},
    {"refine", "divides columns, rows and layers", model_arguments, refine_options, true, refine},
};

} // namespace

std::span<const Command> edit_commands() {
    return commands;
}

} // namespace td

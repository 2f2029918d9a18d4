// Models and initial arrays from results.

#include "app/importmodel.h"
#include "base/textfile.h"
#include "convert/inputfromresult.h"
#include "sim/transport.h"
#include "td/command.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <set>

namespace td {

namespace {

constexpr const char* orientations = "horizontal|vertical|cylindrical";
constexpr const char* kinds = "individual|zones";

std::optional<bool> is_individual(const Context& context, const char* option) {
    if (!context.args.has(option)) {
        return std::nullopt;
    }
    return index_of_word(context.args.value(option), kinds, option) == 0;
}

int import_model(Context& context) {
    app::ImportAnswers answers;
    const std::string orientation = context.args.value_or("--orientation", "horizontal");
    answers.choices.GridOrientation = index_of_word(orientation, orientations, "--orientation");
    answers.choices.individual_porosity = is_individual(context, "--porosity");
    answers.choices.individual_permeability = is_individual(context, "--permeability");
    if (context.args.has("--overwrite")) {
        answers.overwrite = true;
    }
    const app::Loaded imported = app::file_import_model(
        context.args.argument("SOURCE"), context.args.argument("TARGET"), answers, context.user);
    if (imported.refusal) {
        return context.refuse(*imported.refusal);
    }
    return imported.workspace ? int{done} : int{refused};
}

// The number of "TRACERn"; nothing for another name.
std::optional<int> tracer_number(std::string_view name) {
    constexpr std::string_view word = "TRACER";
    if (!name.starts_with(word)) {
        return std::nullopt;
    }
    return integer_of(name.substr(word.size()), "NAME", 1, sim::TracerTable::row_count);
}

convert::ChosenFields chosen_fields(const Context& context) {
    convert::ChosenFields chosen;
    std::set<int> tracers;
    for (const std::string& given : context.args.all_arguments("NAME")) {
        const std::string name = base::upper(given);
        const auto fields = convert::initial_fields();
        if (const auto tracer = tracer_number(name)) {
            tracers.insert(*tracer);
        } else if (std::ranges::find(fields, name, &convert::InitialField::name) != fields.end()) {
            chosen.names.push_back(name);
        } else {
            throw UsageError(
                fmt::format("NAME: \"{}\" is no parameter that can be converted", given));
        }
    }
    chosen.tracers.assign(tracers.begin(), tracers.end());
    return chosen;
}

int to_input(Context& context) {
    const convert::ChosenFields chosen = chosen_fields(context);
    return on_model(context, core::Access::write, [&](app::Workspace& workspace) {
        const core::ModelFiles& files = workspace.files;
        const std::filesystem::path result =
            context.args.has("--file") ? std::filesystem::path(context.args.value("--file"))
                                       : files.find(".nlo").value_or(files.name_of(".nlo"));
        const auto converted = convert::Convert_Click(result, chosen, workspace.project,
                                                      workspace.files, context.user);
        return converted == convert::Converted::done ? int{done} : int{refused};
    });
}

constexpr ArgumentSpec import_arguments[] = {{"SOURCE", "simulator file (.nlo or .nml)"},
                                             {"TARGET", "project file to be made (.td1)"}};
constexpr ArgumentSpec to_input_arguments[] = {
    model_argument,
    {"NAME", "POR, ICE, TSOL, TLIQ, PERM, PHI, VX, VY, VZ, TEMP or TRACERn", false, true}};

constexpr OptionSpec import_options[] = {
    {"--orientation", orientations, "how the layers are stacked (default: horizontal)"},
    {"--porosity", kinds, "porosity cell by cell, or by Property Zones"},
    {"--permeability", kinds, "permeability cell by cell, or by Property Zones"},
    {"--overwrite", "", "replaces an existing project"}};
constexpr OptionSpec to_input_options[] = {
    {"--file", "F", "result file (default: that of the model)"}};

constexpr Command commands[] = {
    {"import-model", "makes a model from a simulator file", import_arguments, import_options, true,
     import_model},
    {"to-input", "takes fields of a result over as initial arrays", to_input_arguments,
     to_input_options, true, to_input},
};

} // namespace

std::span<const Command> import_commands() {
    return commands;
}

} // namespace td

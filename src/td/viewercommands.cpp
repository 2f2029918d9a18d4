// The view settings of a result file.

#include "base/paths.h"
#include "results/resultfile.h"
#include "results/viewersettings.h"
#include "td/command.h"

#include <fmt/format.h>

#include <algorithm>
#include <functional>
#include <limits>

namespace td {

namespace {

// Runs `work` on the settings of the first argument, as they are loaded.
int on_settings(
    Context& context,
    const std::function<void(results::ViewerSettings&, const std::filesystem::path&)>& work) {
    const auto result = results::find_result_file(context.args.argument("FILE"), context.user);
    if (!result) {
        return refused;
    }
    const std::filesystem::path file = result->settings_file();
    auto settings = results::ViewerSettings::load(file, context.user);
    work(settings, file);
    return done;
}

int viewer_show(Context& context) {
    return on_settings(context, [&](const auto& settings, const auto&) {
        const auto table = results::viewer_setting_table();
        for (std::size_t n = 0; n < table.size(); ++n) {
            if (settings.is_stored(n)) {
                context.record({table[n].name, settings.value(n)});
            }
        }
    });
}

void require_field(std::string_view name) {
    const auto table = results::viewer_setting_table();
    if (std::ranges::none_of(table, [&](const auto& info) { return name == info.name; })) {
        throw UsageError(fmt::format(
            "the view settings have no field \"{}\"; td viewer show prints them", name));
    }
}

int viewer_save(Context& context) {
    std::vector<std::pair<std::string, std::string>> given;
    results::ViewerSettings trial;
    for (const std::string& text : context.args.all_arguments("FIELD=VALUE")) {
        given.push_back(split_assignment(text));
        require_field(given.back().first);
        if (!trial.set(given.back().first, given.back().second)) {
            throw UsageError(fmt::format("the view settings cannot hold {}", text));
        }
    }
    return on_settings(context, [&](results::ViewerSettings& settings, const auto& file) {
        for (const auto& [field, value] : given) {
            settings.set(field, value);
        }
        base::replace_file(file, settings.SaveINI());
    });
}

int viewer_reset(Context& context) {
    const auto result = results::find_result_file(context.args.argument("FILE"), context.user);
    if (!result) {
        return refused;
    }
    base::replace_file(result->settings_file(), results::ViewerSettings().SaveINI());
    return done;
}

int viewer_turn(Context& context) {
    const int ticks = context.args.argument_integer("TICKS", 0, std::numeric_limits<int>::max());
    return on_settings(context, [&](results::ViewerSettings& settings, const auto&) {
        settings.turn(ticks);
        context.record(
            {settings.value("XAngle"), settings.value("YAngle"), settings.value("ZAngle")});
    });
}

constexpr ArgumentSpec file_argument{"FILE", "result file, input file or project file"};
constexpr ArgumentSpec file_arguments[] = {file_argument};
constexpr ArgumentSpec save_arguments[] = {
    file_argument, {"FIELD=VALUE", "field of the settings, as viewer show prints it", false, true}};
constexpr ArgumentSpec turn_arguments[] = {file_argument, {"TICKS", "ticks of the rotation timer"}};

constexpr Command commands[] = {
    {"viewer show", "prints the view settings", file_arguments, {}, false, viewer_show},
    {"viewer save",
     "changes view settings and writes them",
     save_arguments,
     {},
     false,
     viewer_save},
    {"viewer reset", "writes the default view settings", file_arguments, {}, false, viewer_reset},
    {"viewer turn",
     "prints the angles after ticks of the rotation timer",
     turn_arguments,
     {},
     false,
     viewer_turn},
};

} // namespace

std::span<const Command> viewer_commands() {
    return commands;
}

} // namespace td

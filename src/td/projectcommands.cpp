// Project file, flags, notes, settings, recent models and the menu.

#include "app/menustate.h"
#include "app/newmodel.h"
#include "app/openmodel.h"
#include "app/recentfiles.h"
#include "app/saveas.h"
#include "app/settings.h"
#include "app/workspace.h"
#include "base/numbertext.h"
#include "base/paths.h"
#include "base/textfile.h"
#include "core/notes.h"
#include "core/projectkeys.h"
#include "td/command.h"

#include <fmt/format.h>

#include <algorithm>

namespace td {

namespace {

using core::Access;

constexpr int last_cell = core::ModelFlags::size - 1;

int project_show(Context& context) {
    const std::string section = context.args.argument("SECTION");
    const std::string key = context.args.argument("KEY");
    return on_model_files(context, Access::read, [&](app::Workspace& workspace) {
        bool found = section.empty() || base::same_ignoring_case(section, "DXF_MAPS");
        for (const core::Project::Entry& entry : workspace.project.entries()) {
            if ((section.empty() || base::same_ignoring_case(entry.section, section)) &&
                (key.empty() || base::same_ignoring_case(entry.key, key))) {
                context.record({entry.section, entry.key, entry.value});
                found = true;
            }
        }
        if (!found) {
            throw UsageError(
                fmt::format("the project file has no key \"{}\" \"{}\"", section, key));
        }
        return int{done};
    });
}

// Some keys of old project files are read, but a save leaves them alone.
bool is_only_read(const std::string& section, const std::string& key) {
    const auto index = core::find_project_key(section, key);
    return index && core::project_keys()[*index].use == core::KeyUse::read_only;
}

int project_set(Context& context) {
    return on_model(context, Access::write, [&](app::Workspace& workspace) {
        const std::string& section = context.args.argument("SECTION");
        const std::string& key = context.args.argument("KEY");
        if (is_only_read(section, key) ||
            !workspace.project.set_from_text(section, key, context.args.argument("VALUE"))) {
            throw UsageError(
                fmt::format("the project file has no key \"{}\" \"{}\" to be set", section, key));
        }
        return int{done};
    });
}

int flags_show(Context& context) {
    return on_model_files(context, Access::read, [&](app::Workspace& workspace) {
        const bool one = context.args.has_argument("A");
        if (one != context.args.has_argument("B")) {
            throw UsageError("td flags show: a cell has two indices");
        }
        const int only_a = one ? context.args.argument_integer("A", 0, last_cell) : 0;
        const int only_b = one ? context.args.argument_integer("B", 0, last_cell) : 0;
        for (int a = one ? only_a : 0; a <= (one ? only_a : last_cell); ++a) {
            for (int b = one ? only_b : 0; b <= (one ? only_b : last_cell); ++b) {
                const int value = workspace.project.flags(a, b);
                if (one || value != 0) {
                    context.record({fmt::to_string(a), fmt::to_string(b), fmt::to_string(value)});
                }
            }
        }
        return int{done};
    });
}

// What is no number counts as its numeric prefix or 0, as in the project file.
int cell_value(const std::string& text) {
    return integer_of(fmt::to_string(base::leading_int32(text)), "VALUE", -32768, 32767);
}

int flags_set(Context& context) {
    return on_model(context, Access::write, [&](app::Workspace& workspace) {
        workspace.project.flags.set(context.args.argument_integer("A", 0, last_cell),
                                    context.args.argument_integer("B", 0, last_cell),
                                    cell_value(context.args.argument("VALUE")));
        return int{done};
    });
}

int note_get(Context& context) {
    return on_model_files(context, Access::read, [&](app::Workspace& workspace) {
        context.record({core::Get_IZV_Data(workspace.files, context.args.argument("SECTION"),
                                           context.args.argument("KEY"))});
        return int{done};
    });
}

int note_set(Context& context) {
    return on_model_files(context, Access::write, [&](app::Workspace& workspace) {
        core::Save_IZV_Data(workspace.files, context.args.argument("SECTION"),
                            context.args.argument("KEY"), context.args.argument("VALUE"));
        workspace.files.commit();
        return int{done};
    });
}

int save(Context& context) {
    return on_model(context, Access::write, [](app::Workspace&) { return int{done}; });
}

// Shows the refusal of an opening; exit status of a command that has no model now.
int not_loaded(const Context& context, const app::Loaded& loaded) {
    return loaded.refusal ? context.refuse(*loaded.refusal) : int{refused};
}

int new_model(Context& context) {
    const app::Loaded made = app::new_model(context.args.argument("MODEL"), context.user);
    return made.workspace ? int{done} : not_loaded(context, made);
}

// What becomes of a worksheet session that was cut off.
std::optional<grid::Recovery> recovery(const Context& context) {
    const bool recover = context.args.has("--recover");
    if (recover && context.args.has("--restore")) {
        throw UsageError("--recover and --restore exclude each other");
    }
    if (recover) {
        return grid::Recovery::recover;
    }
    return context.args.has("--restore") ? std::optional(grid::Recovery::restore) : std::nullopt;
}

int open(Context& context) {
    const app::Loaded opened = app::open_model(context.args.argument("MODEL"), context.user,
                                               base::user_settings_folder(), recovery(context));
    if (!opened.workspace) {
        return not_loaded(context, opened);
    }
    context.record({"name", opened.workspace->Model_Name()});
    context.record({"title", opened.workspace->window_title()});
    context.record({"description", opened.workspace->project.title()});
    return done;
}

int save_as(Context& context) {
    return on_model_files(context, Access::read, [&](app::Workspace& workspace) {
        const app::SavedAs saved =
            app::save_model_as(workspace, context.args.argument("TARGET"), context.user);
        if (!saved.opened.workspace) {
            return not_loaded(context, saved.opened);
        }
        for (const std::string& name : saved.copied) {
            context.record({name});
        }
        return int{done};
    });
}

// Settings and recent models.

constexpr const char* setting_words = "MODELPATH|HELPFORMAT";

int setting_get(Context& context) {
    const int key = index_of_word(context.args.argument("KEY"), setting_words, "td setting get");
    const app::ProgramSettings settings(context.install);
    context.record({key == 0 ? settings.GetModelPath() : settings.GetHelpFormat()});
    return done;
}

int setting_set(Context& context) {
    const int key = index_of_word(context.args.argument("KEY"), setting_words, "td setting set");
    app::ProgramSettings settings(context.install);
    const std::string& value = context.args.argument("VALUE");
    key == 0 ? settings.SaveModelPath(value) : settings.SaveHelpFormat(value);
    return done;
}

std::filesystem::path user_folder(const Context& context) {
    return context.args.has("--user") ? std::filesystem::path(context.args.value("--user"))
                                      : base::user_settings_folder();
}

int recent_list(Context& context) {
    const app::RecentFiles recent(user_folder(context));
    for (int number = 1; number <= app::RecentFiles::count; ++number) {
        if (const std::string& path = recent.path(number); !path.empty()) {
            context.record({fmt::to_string(number), app::recent_caption(number, path), path});
        }
    }
    return done;
}

int recent_add(Context& context) {
    app::RecentFiles recent(user_folder(context));
    recent.add(context.args.argument("PATH"));
    recent.save();
    return done;
}

int menu(Context& context) {
    return on_model_files(context, Access::read, [&](app::Workspace& workspace) {
        for (const app::MenuItemState& item :
             app::Menu_Refresh(workspace.project, context.args.has("--editor"))) {
            context.record({fmt::to_string(item.depth), item.name, item.caption,
                            item.ticked ? "1" : "0", item.enabled ? "1" : "0",
                            item.visible ? "1" : "0"});
        }
        return int{done};
    });
}

constexpr ArgumentSpec section_argument{"SECTION", "section of the file"};
constexpr ArgumentSpec key_argument{"KEY", "key in the section"};
constexpr ArgumentSpec value_argument{"VALUE", "new value"};
constexpr ArgumentSpec model_arguments[] = {model_argument};
constexpr ArgumentSpec target_arguments[] = {model_argument, {"TARGET", "new project file (.td1)"}};
constexpr ArgumentSpec show_arguments[] = {
    model_argument, {"SECTION", "only this section", false}, {"KEY", "only this key", false}};
constexpr ArgumentSpec set_arguments[] = {model_argument, section_argument, key_argument,
                                          value_argument};
constexpr ArgumentSpec get_arguments[] = {model_argument, section_argument, key_argument};
constexpr ArgumentSpec cell_arguments[] = {
    model_argument, {"A", "first index, 0 to 14", false}, {"B", "second index, 0 to 14", false}};
constexpr ArgumentSpec cell_set_arguments[] = {
    model_argument, {"A", "first index, 0 to 14"}, {"B", "second index, 0 to 14"}, value_argument};
constexpr ArgumentSpec setting_arguments[] = {{"KEY", "MODELPATH or HELPFORMAT"}, value_argument};
constexpr ArgumentSpec path_arguments[] = {{"PATH", "project file"}};
constexpr OptionSpec install_options[] = {install_option};
constexpr OptionSpec user_options[] = {{"--user", "DIR", "folder of the user's settings"}};
constexpr OptionSpec open_options[] = {
    {"--recover", "", "keeps what a worksheet session that was cut off has done"},
    {"--restore", "", "puts back what was before such a session"}};
constexpr OptionSpec menu_options[] = {{"--editor", "", "while the worksheet is open"}};

constexpr Command commands[] = {
    {"new", "makes a new model", model_arguments, {}, true, new_model},
    {"open", "opens a model with all its companion files", model_arguments, open_options, true,
     open},
    {"save", "reads and writes every key of the project file", model_arguments, {}, false, save},
    {"save-as", "copies a model without its results", target_arguments, {}, true, save_as},
    {"project show",
     "prints the keys of the project file",
     show_arguments,
     {},
     false,
     project_show},
    {"project set", "sets a key of the project file", set_arguments, {}, false, project_set},
    {"flags show", "prints what has been defined", cell_arguments, {}, false, flags_show},
    {"flags set", "sets a cell of the flags", cell_set_arguments, {}, false, flags_set},
    {"note get", "prints a note of the model", get_arguments, {}, false, note_get},
    {"note set", "writes a note of the model", set_arguments, {}, false, note_set},
    {"setting get",
     "prints a setting of the program",
     {setting_arguments, 1},
     install_options,
     false,
     setting_get},
    {"setting set", "writes a setting of the program", setting_arguments, install_options, false,
     setting_set},
    {"recent list", "prints the recent models", {}, user_options, false, recent_list},
    {"recent add", "makes a model the most recent one", path_arguments, user_options, false,
     recent_add},
    {"menu", "prints the menu with the state of its items", model_arguments, menu_options, false,
     menu},
};

} // namespace

std::span<const Command> project_commands() {
    return commands;
}

} // namespace td

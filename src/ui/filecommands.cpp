// The File menu but for the model's information, and the Help menu.

#include "app/importmodel.h"
#include "app/recentfiles.h"
#include "app/saveas.h"
#include "app/settings.h"
#include "base/busy.h"
#include "base/paths.h"
#include "base/textfile.h"
#include "ui/commandtables.h"
#include "ui/desk.h"
#include "ui/dialogs/about.h"
#include "ui/dialogs/orientation.h"
#include "ui/mainwindow.h"
#include "ui/text.h"

#include <QAction>

#include <filesystem>
#include <optional>

namespace ui {

namespace {

namespace fs = std::filesystem;
using base::FileChoice;

void file_new_model(CommandContext& context) {
    const auto path = context.desk.user().choose_file(FileChoice::save, "New Model",
                                                      "TD models (*.td1)|*.td1", "");
    if (path && context.desk.create(*path)) {
        context.window.tell_opened();
    }
}

void file_open_model(CommandContext& context) {
    base::Interaction& user = context.desk.user();
    const auto path = user.choose_file(FileChoice::open, "Open model",
                                       "TD models (*.td1)|*.td1|BD models (*.bd5)|*.bd5", "");
    if (path) {
        context.window.open_model(*path);
    }
}

// The model has to get another name or folder: until it has, the dialog comes again.
void file_save_model_as(CommandContext& context) {
    base::Interaction& user = context.desk.user();
    const app::Workspace& model = *context.desk.model();
    const std::string name = (model.Model_Folder() / model.Model_Name()).string();
    while (const auto target = user.choose_file(FileChoice::save, "Save Model As",
                                                "TD Model (*.td1)|*.td1", name)) {
        if (const auto refusal = app::save_as_refusal(model, *target)) {
            base::show(user, *refusal);
            continue;
        }
        if (context.desk.save_as(*target)) {
            context.window.tell_opened();
        }
        return;
    }
}

bool import_model(Desk& desk, const fs::path& source, const fs::path& target, int orientation) {
    bool imported = false;
    desk.attempt("file_import_model()", [&] {
        app::ImportAnswers answers;
        answers.choices.GridOrientation = orientation;
        const auto load = [&] {
            const base::Busy hourglass(desk.user());
            return app::file_import_model(source, target, answers, desk.user(),
                                          desk.folders().settings);
        };
        const app::Loaded loaded = load();
        imported = loaded.workspace.has_value();
        if (loaded.refusal) {
            base::show(desk.user(), *loaded.refusal);
        }
    });
    return imported;
}

void file_import_model(CommandContext& context) {
    base::Interaction& user = context.desk.user();
    const auto source =
        user.choose_file(FileChoice::open, "Import TERVEX Model",
                         "TERVEX Result file (*.NLO)|*.NLO|TERVEX Input file (*.NML)|*.NML", "");
    if (!source) {
        return;
    }
    const auto target =
        user.choose_file(FileChoice::save, "Save Model as...", "TERVEX Model (*.TD1)|*.TD1", "");
    if (!target) {
        return;
    }
    const auto orientation = choose_orientation(context);
    if (orientation && import_model(context.desk, *source, *target, *orientation)) {
        context.window.open_model(*target);
    }
}

// Where the file dialogs of models begin.
void file_SetDir(CommandContext& context) {
    Desk& desk = context.desk;
    desk.attempt("file_SetDir()", [&] {
        app::ProgramSettings settings(desk.folders().program);
        const std::string present(base::trimmed(settings.GetModelPath()));
        const auto folder =
            desk.user().choose_file(FileChoice::folder, "Set File Manager Path", "", present);
        if (folder) {
            settings.SaveModelPath(folder->string());
        }
    });
}

void forget_recent(Desk& desk, int number, const std::string& path) {
    desk.user().beep();
    desk.user().message(base::Icon::warning, base::desk_title, "Could not find " + path);
    desk.attempt("Recent_Files()", [&] {
        app::RecentFiles recent(desk.folders().settings);
        recent.remove(number);
        recent.save();
    });
}

void open_recent(CommandContext& context, int number) {
    const std::string item = "RecentUsed(" + std::to_string(number) + ")";
    const std::string path = from_qt(context.window.command(item)->data().toString());
    if (path.empty()) {
        return;
    }
    if (base::is_file(path)) {
        context.window.open_model(path);
        return;
    }
    forget_recent(context.desk, number, path);
    context.window.refresh();
}

template <int number>
void recent_used(CommandContext& context) {
    open_recent(context, number);
}

void file_exit(CommandContext& context) {
    context.window.exit_program();
}

void help_contents(CommandContext& context) {
    context.window.show_help({});
}

void help_search_for_help_on(CommandContext& context) {
    context.window.search_help();
}

void help_about(CommandContext& context) {
    show_about(&context.window);
}

constexpr CommandRow rows[] = {
    {"file_new_model", file_new_model},
    {"file_open_model", file_open_model},
    {"file_save_model_as", file_save_model_as},
    {"file_import_model", file_import_model},
    {"file_SetDir", file_SetDir},
    {"RecentUsed(1)", recent_used<1>},
    {"RecentUsed(2)", recent_used<2>},
    {"RecentUsed(3)", recent_used<3>},
    {"RecentUsed(4)", recent_used<4>},
    {"file_exit", file_exit},
    {"help_contents", help_contents},
    {"help_search_for_help_on", help_search_for_help_on},
    {"help_about", help_about},
};

} // namespace

std::span<const CommandRow> file_commands() {
    return rows;
}

} // namespace ui

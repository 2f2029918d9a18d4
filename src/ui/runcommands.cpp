// Input file, runs, what a model lacks and holds, undo.
#include "base/paths.h"
#include "input/runcontrol.h"
#include "ui/commandtables.h"
#include "ui/desk.h"
#include "ui/dialogs/checkmodel.h"
#include "ui/dialogs/createinput.h"
#include "ui/dialogs/modelpage.h"
#include "ui/dialogs/runmonitor.h"
#include "ui/dialogs/runprograms.h"
#include "ui/dialogs/serializedrun.h"
#include "ui/mainwindow.h"

namespace ui {

namespace {

void run_tervex(CommandContext& context) {
    Desk& desk = context.desk;
    if (RunMonitor* monitor = RunMonitor::of_model(desk, context.window);
        monitor && monitor->is_running()) {
        return monitor->bring_to_front();
    }
    input::RunResult result;
    desk.attempt("[Run] mnuTervexRun()", [&] {
        result = {};
        result = input::mnuTervexRun(desk.model()->project, desk.model()->files, run_programs(desk),
                                     desk.user());
    });
    if (result.refusal) {
        return base::show(desk.user(), *result.refusal);
    }
    show_run(context, std::move(result.started));
}

// While the editor is open its own steps come first.
void take_step(CommandContext& context, const char* in_editor,
               std::optional<std::string> (Desk::*name)() const, bool (Desk::*go)()) {
    Desk& desk = context.desk;
    if (const CommandRow* row = desk.editor_open() ? find_command(in_editor) : nullptr) {
        row->run(context);
    } else if ((desk.*name)()) {
        (desk.*go)();
    } else {
        desk.user().beep();
    }
}

void undo(CommandContext& context) {
    take_step(context, "worksheet_undo", &Desk::undo_name, &Desk::undo);
}

void redo(CommandContext& context) {
    take_step(context, "worksheet_redo", &Desk::redo_name, &Desk::redo);
}

constexpr CommandRow rows[] = {
    {"mnuTervexCreate", create_input},
    {"mnuTervexRun", run_tervex},
    {"mnuTervexSerial", serialized_run},
    {"file_model_information", model_page},
    {"check_model", check_model},
    {"undo", undo},
    {"redo", redo},
};

} // namespace

std::span<const CommandRow> run_commands() {
    return rows;
}

} // namespace ui

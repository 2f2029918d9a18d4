#include "ui/dialogs/createinput.h"

#include "base/busy.h"
#include "input/completeness.h"
#include "input/inputfile.h"
#include "ui/commandtables.h"
#include "ui/desk.h"
#include "ui/dialogs/checkmodel.h"
#include "ui/dialogs/runprograms.h"
#include "ui/mainwindow.h"

namespace ui {

namespace {

constexpr const char* caption = "Create TERVEX Inputfile";
constexpr const char* check_question =
    "\"Check model\" lists everything that is missing or wrong and opens the dialogs that mend it."
    "\n\nDo you want to open it?";

struct Attempted {
    std::optional<input::Gap> gap;
    std::optional<base::Refusal> refusal;
    input::CreatedInput created;
};

Attempted write(app::Workspace& model, const Desk& desk) {
    // Told first: the gaps that chemistry leaves cannot be closed in this edition.
    if (auto refusal = input::chemistry_refusal(model.project.flags)) {
        return {std::nullopt, std::move(refusal), {}};
    }
    const base::Busy busy(desk.user());
    if (auto gap = input::Control(model.project, model.files)) {
        return {std::move(gap), std::nullopt, {}};
    }
    auto result =
        input::CreateTervexInput(model.project, model.files, desk.folders().program, desk.user());
    return {std::nullopt, std::move(result.refusal), result.created};
}

// Nothing when the creation has failed, which was shown.
std::optional<Attempted> attempt(Desk& desk) {
    std::optional<Attempted> attempted;
    desk.change("[Input] CreateTervexInput()", caption, [&](app::Workspace& model) {
        attempted.reset();
        attempted = write(model, desk);
        return false; // it has saved the model itself
    });
    return attempted;
}

void show_gap(const input::Gap& gap, CommandContext& context) {
    base::Interaction& user = context.desk.user();
    user.beep();
    base::show(user, gap.message);
    if (user.ask(input::create_title, check_question, base::Buttons::yes_no) == base::Answer::yes) {
        check_model(context);
    }
}

} // namespace

void create_input(CommandContext& context) {
    Desk& desk = context.desk;
    base::Interaction& user = desk.user();
    const auto attempted = attempt(desk);
    const std::string name = desk.model()->files.base_name();
    if (!attempted) {
        return tell_result(context, name + ".nml was not written");
    }
    if (attempted->gap) {
        return show_gap(*attempted->gap, context);
    }
    if (attempted->refusal) {
        return base::show(user, *attempted->refusal);
    }
    if (attempted->created.InputError) {
        return tell_result(context, name + ".nml is not complete");
    }
    tell_result(context, name + ".nml and tervex.ctl are written");
    if (user.ask(input::create_title, input::run_question, base::Buttons::yes_no) ==
        base::Answer::yes) {
        context.window.run_command("mnuTervexRun");
    }
}

} // namespace ui

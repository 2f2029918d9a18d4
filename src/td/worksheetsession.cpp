#include "td/worksheetsession.h"

#include "app/workspace.h"
#include "base/failure.h"
#include "core/extensions.h"

#include <fmt/format.h>

namespace td {

namespace {

int work_in_session(Context& context, app::Workspace& workspace,
                    const std::function<int(grid::Worksheet&)>& work) {
    const int period = context.args.integer("--period", 1, core::period_count, 1);
    TakeOverUser user(context.user, base::Answer::no);
    // Options are looked at before the opening, which completes arrays.
    grid::EditRequest request = request_of(context, workspace);
    const int layers = core::is_2D_array(request.Current_Parameter()) ? 1 : workspace.project.NZ();
    const int layer = context.args.integer("--layer", 1, layers, 1);
    const auto worksheet = grid::Worksheet::Edit_data_for(std::move(request), workspace.project,
                                                          workspace.files, user, period);
    worksheet->keep_history(false);
    int status = refused;
    try {
        worksheet->show_layer(layer);
        status = work(*worksheet);
    } catch (...) {
        worksheet->leave(base::Answer::no);
        throw;
    }
    worksheet->leave(status == done ? base::Answer::yes : base::Answer::no);
    return status;
}

} // namespace

void TakeOverUser::message(base::Icon icon, std::string_view title, std::string_view text) {
    user_.message(icon, title, text);
}

base::Answer TakeOverUser::ask(std::string_view title, std::string_view text,
                               base::Buttons buttons) {
    return answer_ ? *answer_ : user_.ask(title, text, buttons);
}

std::optional<std::filesystem::path> TakeOverUser::choose_file(base::FileChoice kind,
                                                               std::string_view title,
                                                               std::string_view filter,
                                                               std::string_view name) {
    return user_.choose_file(kind, title, filter, name);
}

void TakeOverUser::status(std::string_view text) {
    user_.status(text);
}

bool TakeOverUser::show_meter(int percent) {
    return user_.show_meter(percent);
}

void TakeOverUser::busy(bool on) {
    user_.busy(on);
}

void TakeOverUser::beep() {
    user_.beep();
}

base::Reaction TakeOverUser::failure(const base::Failure& failure) {
    return user_.failure(failure);
}

grid::EditRequest request_of(const Context& context, const app::Workspace& workspace) {
    const int number = context.args.integer("--param", 1, core::parameter_count, 0);
    auto request = grid::find_request(number, workspace.project.flags.GridOrientation());
    if (!request) {
        throw UsageError(fmt::format("--param: {} is no item of the worksheet", number));
    }
    return *request;
}

int on_worksheet(Context& context, const std::function<int(grid::Worksheet&)>& work) {
    return on_model_files(context, core::Access::write, [&](app::Workspace& workspace) {
        if (const auto refusal = app::mesh_refusal(workspace)) {
            return context.refuse(*refusal);
        }
        return work_in_session(context, workspace, work);
    });
}

int on_item(Context& context,
            const std::function<int(app::Workspace&, const grid::EditRequest&)>& work) {
    return on_model_files(context, core::Access::read, [&](app::Workspace& workspace) {
        if (const auto refusal = app::mesh_refusal(workspace)) {
            return context.refuse(*refusal);
        }
        return work(workspace, request_of(context, workspace));
    });
}

} // namespace td

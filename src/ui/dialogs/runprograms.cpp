#include "ui/dialogs/runprograms.h"

#include "base/paths.h"
#include "ui/commandtables.h"
#include "ui/desk.h"
#include "ui/dialogs/runmonitor.h"
#include "ui/mainwindow.h"
#include "ui/statuspanes.h"
#include "ui/text.h"

namespace ui {

input::Programs run_programs(const Desk& desk) {
    const std::filesystem::path own = base::executable_folder();
    return {desk.folders().program, {own, (own / "../share/tervexdesk").lexically_normal()}};
}

void tell_result(CommandContext& context, const std::string& text) {
    context.desk.user().status(text);
    context.window.panes().set_result(to_qt(text));
}

void show_run(CommandContext& context, std::vector<input::Started> started) {
    if (started.empty()) {
        return;
    }
    RunMonitor* monitor = RunMonitor::of_model(context.desk, context.window);
    if (!monitor) {
        monitor = new RunMonitor(context.desk.user(), context.desk.model()->Model_Path(),
                                 &context.window);
        QObject::connect(monitor, &RunMonitor::ended_unseen, &context.window,
                         [&desk = context.desk, &window = context.window](const QString& end) {
                             CommandContext now{desk, window};
                             tell_result(now, from_qt(end));
                         });
    }
    monitor->show_run(std::move(started));
}

} // namespace ui

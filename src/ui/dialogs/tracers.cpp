// Tracers, the concentrations of injected water, and the re-injection of produced water.
#include "input/reinjection.h"
#include "input/wells.h"
#include "sim/simplevalues.h"
#include "sim/transport.h"
#include "ui/desk.h"
#include "ui/dialogs/tabledialog.h"
#include "ui/dialogs/tabledialogs.h"
#include "ui/tableview.h"

#include <QBoxLayout>
#include <QHeaderView>
#include <QLabel>

namespace ui {

namespace {

class TracerDialog : public TableDialog {
public:
    TracerDialog(CommandContext& context, sim::TracerForm& form)
        : TableDialog(context, form, "Tracer", tr("Tracer"), "settings.md#Tracer") {
        TableView* table = make_table(form, "Table", tr("Tracer"));
        table->verticalHeader()->hide();
        body().addWidget(table, 1);
        body().addWidget(new QLabel(tr("* Density = Density(T) + BetaC * delta Concentration")));
    }
};

class InjectionDialog : public TableDialog {
public:
    InjectionDialog(CommandContext& context, input::SCON_Table& form)
        : TableDialog(context, form, "SCON_Table", tr("Injected Concentration(s)"),
                      "settings.md#Injected Concentration"),
          form_(form), no_wells_(new QLabel(tr("The model has no wells."))) {
        no_wells_->setObjectName("NoWells");
        TableView* table = make_table(form, "Table", tr("Injected Concentration(s)"));
        table->verticalHeader()->hide();
        body().addWidget(table, 1);
        body().addWidget(no_wells_);
    }

private:
    void updated() override { no_wells_->setVisible(form_.rows() == 0); }

    input::SCON_Table& form_;
    QLabel* no_wells_;
};

} // namespace

void edit_tracers(CommandContext& context) {
    sim::TracerForm form;
    TracerDialog(context, form).run("Tracer", "Tracer.OKButton_Click()");
}

void edit_injected_concentrations(CommandContext& context) {
    Desk& desk = context.desk;
    const app::Workspace* model = desk.model();
    if (const auto refusal = app::mesh_refusal(*model)) {
        base::show(desk.user(), *refusal);
        return;
    }
    input::WellTable wells;
    const auto read = desk.attempt("Get_Well_Data()", [&] {
        core::ModelFiles files(model->Model_Path(), core::Access::read);
        wells = input::Get_Well_Data(model->project, files);
    });
    input::SCON_Table form(wells);
    InjectionDialog dialog(context, form);
    if (read != report::Outcome::done || !dialog.load()) {
        return;
    }
    if (const auto refusal = form.check()) {
        base::show(desk.user(), *refusal);
        return;
    }
    if (const auto& notice = form.load_notice()) {
        desk.user().message(notice->icon, notice->title, notice->text);
    }
    dialog.run("Injected Concentration(s)", "SCON_Table.OKButton_Click()");
}

void switch_reinjection(CommandContext& context) {
    context.desk.change(
        "mnuTransportR_Click()", "Re-inject Produced Water", [](app::Workspace& model) {
            core::ModelFlags& flags = model.project.flags;
            sim::reinject_produced_water(flags, !sim::reinjects_produced_water(flags));
            return true;
        });
}

} // namespace ui

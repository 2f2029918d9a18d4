// Dialogs of a few numbers: reference density, heat production of the fluid, dispersion.

#include "sim/simplevalues.h"

#include "sim/transport.h"
#include "ui/dialogs/settingsdialogs.h"
#include "ui/formdialog.h"
#include "ui/text.h"

#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace ui {

void edit_reference_density(CommandContext& context) {
    sim::RefDens form;
    FormDialog dialog(context, form, "RefDens", FormDialog::tr("Reference Density"),
                      "settings.md#Reference Density");
    auto* row = new QHBoxLayout;
    dialog.body().addLayout(row);
    row->addWidget(dialog.field("Check1"));
    row->addWidget(dialog.field("Text1"), 1);
    row->addWidget(dialog.view().unit("Text1"));
    dialog.body().addStretch();
    dialog.run("Reference Density", "[RefDens] RefDensSave()");
}

void edit_fluid_heat_production(CommandContext& context) {
    sim::HeatConstantForm form(sim::HeatConstant::fluid_heat_production);
    FormDialog dialog(context, form, "HPF", to_qt(form.title()),
                      "settings.md#Fluid Heat Production");
    const core::FieldInfo& field = form.fields().front();
    dialog.body().addWidget(dialog.view().label(
        field.name, QString("%1 [%2]").arg(to_qt(field.label), to_qt(field.unit))));
    dialog.body().addWidget(dialog.field(field.name));
    dialog.body().addStretch();
    dialog.run(form.title(), "[FluidHeatProduction] Save()");
}

void edit_dispersion(CommandContext& context) {
    sim::DiffDisp form;
    FormDialog dialog(context, form, "DiffDisp", FormDialog::tr("Dispersion / Diffusion"),
                      "settings.md#Dispersion / Diffusion");
    auto* grid = new QGridLayout;
    dialog.body().addLayout(grid);
    for (const core::FieldInfo& field : form.fields()) {
        dialog.view().add_row(*grid, field.name);
    }
    dialog.body().addStretch();
    dialog.run("Dispersion / Diffusion", "[DiffDisp] DiffDispSave()");
}

} // namespace ui

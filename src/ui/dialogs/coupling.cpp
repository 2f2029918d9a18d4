// "Process Coupling": which processes act on each other, and by which laws.

#include "sim/coupling.h"

#include "ui/dialogs/settingsdialogs.h"
#include "ui/formdialog.h"
#include "ui/text.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

namespace ui {

namespace {

// In the order of the permeability-porosity laws of the form.
constexpr const char* law_buttons[] = {"optFracKozCar", "optDepRhombSpheres", "optBlakeKoz",
                                       "optLichtner",   "optKozStein",        "optSchechter"};

constexpr const char* rock_law = "Rho*cp(T) = Rho*cp(0) * (A0 + A1 * T + A2 * T² )  / A0";

void add_checks(FormDialog& dialog) {
    for (const char* name : {"CompleteCheck", "FlowHeatCheck", "FlowTransportCheck"}) {
        dialog.body().addWidget(dialog.field(name));
    }
}

// The exponents of the fractal law, two beside each other.
QGridLayout* exponents(FormView& view) {
    auto* grid = new QGridLayout;
    int place = 0;
    for (const char* name : {"Exp1", "Exp2", "Exp3", "CritPor"}) {
        const int row = place / 2;
        const int column = place++ % 2 * 3;
        grid->addWidget(view.label(name), row, column);
        grid->addWidget(view.field(name), row, column + 1);
    }
    // Air between the two.
    grid->setColumnMinimumWidth(2, view.field("Exp1")->fontMetrics().averageCharWidth() * 4);
    grid->setColumnStretch(5, 1);
    return grid;
}

void add_permeability_law(FormDialog& dialog) {
    QGridLayout* frame = dialog.add_frame({});
    frame->addWidget(dialog.field("FlowChemistryCheck"), 0, 0);
    QWidget* laws = dialog.field("PermeabilityLaw");
    const auto buttons = laws->findChildren<QRadioButton*>();
    for (qsizetype i = 0; i < buttons.size(); ++i) {
        buttons[i]->setObjectName(law_buttons[i]);
    }
    frame->addWidget(laws, 1, 0);
    frame->addLayout(exponents(dialog.view()), 2, 0);
}

QGroupBox* rock_properties(FormView& view) {
    QGroupBox* frame = FormView::frame({});
    QGridLayout* grid = FormView::grid_of(frame);
    view.add_row(*grid, "HeatConductivityCheck");
    grid->addWidget(new QLabel(to_qt(rock_law)), 1, 0, 1, 3);
    for (const char* name : {"txtA0", "txtA1", "txtA2", "txtDensity"}) {
        view.add_row(*grid, name);
    }
    grid->setRowStretch(grid->rowCount(), 1);
    return frame;
}

QGroupBox* water(FormView& view) {
    QGroupBox* frame = FormView::frame(FormDialog::tr("Water Properties kept constant at value:"));
    QGridLayout* grid = FormView::grid_of(frame);
    int row = 0;
    for (const sim::WaterProperty& property : sim::water_properties) {
        grid->addWidget(view.field(property.check_field), row, 0);
        grid->addWidget(view.field(property.value_field), row, 1);
        grid->addWidget(view.unit(property.value_field), row++, 2);
    }
    grid->setRowStretch(row, 1);
    return frame;
}

} // namespace

void edit_coupling(CommandContext& context) {
    sim::Coupling form;
    FormDialog dialog(context, form, "Coupling", FormDialog::tr("Process Coupling"),
                      "settings.md#Coupling");
    add_checks(dialog);
    add_permeability_law(dialog);
    auto* below = new QHBoxLayout;
    dialog.body().addLayout(below);
    below->addWidget(rock_properties(dialog.view()));
    below->addWidget(water(dialog.view()));
    dialog.run("Coupling", "[Coupling] CouplingSave()");
}

} // namespace ui

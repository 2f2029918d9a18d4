// "Definition of Simulation Type": a column for each process, its options below its check.

#include "sim/simulationtype.h"

#include "ui/dialogs/settingsdialogs.h"
#include "ui/formdialog.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QVBoxLayout>

namespace ui {

namespace {

struct Option {
    const char* caption;
    const char* field;
};

struct Process {
    const char* check;
    Option options[2];
};
constexpr Process processes[] = {
    {"FluidFlowCheck", {{"Flow Field", "FlowType"}, {}}},
    {"HeatCheck", {{"Advection", "HeatAdvection"}, {"Permafrost", "optPermafrost"}}},
    {"TransportCheck", {{"Advection", "TransportAdvection"}, {"Multiple Porosity", "optBox"}}},
    {"ChemistryCheck", {{"Reactions", "ReactionType"}, {"Activity Model", "optActivity"}}},
};

void add_option(FormView& view, QVBoxLayout& column, const Option& option) {
    column.addSpacing(column.spacing());
    QLabel* caption = view.label(option.field, QString::fromUtf8(option.caption));
    column.addWidget(caption);
    QWidget* field = view.field(option.field);
    if (auto* check = qobject_cast<QCheckBox*>(field)) {
        check->setText(FormDialog::tr("Yes"));
    }
    column.addWidget(field);
}

QGroupBox* process_column(FormView& view, const Process& process) {
    auto* frame = new QGroupBox;
    auto* column = new QVBoxLayout(frame);
    QWidget* check = view.field(process.check);
    QFont bold = check->font();
    bold.setBold(true);
    check->setFont(bold);
    column->addWidget(check);
    for (const Option& option : process.options) {
        if (option.field) {
            add_option(view, *column, option);
        }
    }
    column->addStretch();
    return frame;
}

} // namespace

void edit_simulation_type(CommandContext& context) {
    sim::SimulationType form;
    FormDialog dialog(context, form, "SimulationType",
                      FormDialog::tr("Definition of Simulation Type"), "settings.md#Settings");
    dialog.body().addWidget(
        new QLabel(FormDialog::tr("Check Characteristics for the TERVEX Simulation Run")));
    auto* columns = new QHBoxLayout;
    dialog.body().addLayout(columns);
    for (const Process& process : processes) {
        columns->addWidget(process_column(dialog.view(), process));
    }
    dialog.run("Simulation Type", "[SimulationType] SimulationTypeSave()");
}

} // namespace ui

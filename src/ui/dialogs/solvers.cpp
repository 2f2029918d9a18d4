// The dialogs of the three solvers: settings in rows, flow, heat and transport in columns.

#include "sim/solver.h"

#include "app/workspace.h"
#include "ui/desk.h"
#include "ui/dialogs/settingsdialogs.h"
#include "ui/formdialog.h"
#include "ui/text.h"

#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace ui {

namespace {

constexpr const char* processes[] = {"Flow", "Heat", "Transport"};
constexpr int process_count = 3;

struct Row {
    const char* caption;
    const char* hint; // below the caption
    const char* fields[process_count];
};
constexpr Row rows[] = {
    {"Time weighting",
     "Explicit = 0 to Implicit = 1",
     {"FlowSlider", "HeatSlider", "TransportSlider"}},
    {"Relaxation", "faster < factor < slower", {"APARF", "APART", "APARS"}},
    {"Convergence limit", "", {"ERRF", "ERRT", "ERRS"}},
    {"Preconditioner", "", {"optFlowCond", "optHeatCond", "optTransCond"}},
    {"Termination conditions", "", {"optFlowTerm", "optHeatTerm", "optTransTerm"}},
};

struct SolverInfo {
    const char* object_name;
    const char* name;
    const char* signature;
};
// By the number of the solver.
constexpr SolverInfo solvers[] = {
    {},
    {"Explicit_Implicit", "NAG", "[Explicit_Implicit] ExplicitSave()"},
    {"BiCGStab", "BiCGStab", "[BiCGStab] BiCGStabSave()"},
    {"PLU", "PLU", "[PLU] PLUSave()"},
};

void add_heads(QGridLayout& grid) {
    for (int column = 0; column < process_count; ++column) {
        auto* head = new QLabel(to_qt(processes[column]));
        QFont bold = head->font();
        bold.setBold(true);
        head->setFont(bold);
        grid.addWidget(head, 0, column + 1);
        grid.setColumnStretch(column + 1, 1);
    }
}

void add_row(FormView& view, QGridLayout& grid, const Row& row) {
    auto* line = new QFrame;
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    const int at = grid.rowCount();
    grid.addWidget(line, at, 0, 1, process_count + 1);
    auto* caption = new QLabel(to_qt(row.caption));
    if (*row.hint != '\0') {
        caption->setText(caption->text() + "\n" + to_qt(row.hint));
    }
    grid.addWidget(caption, at + 1, 0, Qt::AlignTop);
    for (int column = 0; column < process_count; ++column) {
        QWidget* field = view.field(row.fields[column]);
        view.set_accessible_name(
            row.fields[column],
            QString("%1, %2").arg(to_qt(row.caption), to_qt(processes[column])));
        grid.addWidget(field, at + 1, column + 1, Qt::AlignTop);
    }
}

// NAG alone limits the relaxation, by the extents of the grid.
void add_limit(FormView& view, const core::Project& project) {
    const std::string limit = sim::relaxation_limit(project.NX(), project.NY(), project.NZ());
    for (const char* name : {"APARF", "APART", "APARS"}) {
        view.set_hint(name, FormDialog::tr("Smaller or equal %1").arg(to_qt(limit)));
    }
}

void edit_solver(CommandContext& context, sim::Solver solver) {
    const SolverInfo& info = solvers[std::size_t(solver)];
    sim::SolverForm form(solver);
    FormDialog dialog(context, form, info.object_name,
                      FormDialog::tr("Solver Parameters: %1").arg(to_qt(info.name)),
                      "settings.md#Solver Parameters");
    auto* grid = new QGridLayout;
    dialog.body().addLayout(grid);
    add_heads(*grid);
    for (const Row& row : rows) {
        if (form.enabled(row.fields[0])) {
            add_row(dialog.view(), *grid, row);
        }
    }
    if (solver == sim::Solver::NAG) {
        add_limit(dialog.view(), context.desk.model()->project);
    }
    QGridLayout* iterations = dialog.add_frame({});
    dialog.view().add_row(*iterations, "NoIteration");
    iterations->setColumnStretch(2, 1);
    dialog.run(std::string("Solver ") + info.name, info.signature);
}

} // namespace

void edit_NAG(CommandContext& context) {
    edit_solver(context, sim::Solver::NAG);
}

void edit_BiCGStab(CommandContext& context) {
    edit_solver(context, sim::Solver::BiCGStab);
}

void edit_PLU(CommandContext& context) {
    edit_solver(context, sim::Solver::PLU);
}

} // namespace ui

// The outer iteration over flow, heat and transport.

#include "sim/outeriteration.h"
#include "ui/dialogs/settingsdialogs.h"
#include "ui/formdialog.h"

#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace ui {

namespace {

class OutIterDialog : public FormDialog {
public:
    OutIterDialog(CommandContext& context, sim::OutIter& form)
        : FormDialog(context, form, "OutIter", tr("Non-Linear Iteration"),
                     "settings.md#Non-Linear Iteration"),
          form_(form),
          unset_(new QLabel(tr("No choice has been saved yet: the simulator iterates, 5 "
                               "times at most and with a coefficient of 0.5."))) {
        unset_->setWordWrap(true);
        body().addWidget(unset_);
        body().addWidget(field("chkPicard"));
        auto* grid = new QGridLayout;
        body().addLayout(grid);
        view().add_row(*grid, "sldProjCoeff", Look::slider);
        for (const char* name : {"txtIteration", "txtFlowLimit", "txtHeatLimit", "txtTransLimit"}) {
            view().add_row(*grid, name);
        }
        body().addStretch();
    }

protected:
    void loaded() override { unset_->setVisible(!form_.active_stored()); }

private:
    sim::OutIter& form_;
    QLabel* unset_;
};

} // namespace

void edit_outer_iteration(CommandContext& context) {
    sim::OutIter form;
    OutIterDialog(context, form).run("Non-Linear Iteration", "[OutIter] OutIterSave()");
}

} // namespace ui

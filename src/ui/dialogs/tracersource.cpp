// "Initial Tracer Distribution": where the simulator's input takes it from, and the array of each
// tracer.

#include "sim/transport.h"

#include "app/workspace.h"
#include "grid/editrequest.h"
#include "ui/desk.h"
#include "ui/dialogs/settingsdialogs.h"
#include "ui/editor.h"
#include "ui/formdialog.h"
#include "ui/mainwindow.h"
#include "ui/text.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace ui {

namespace {

constexpr int before_tracers = 1440; // tracer n is edited as parameter 1440 + n
const char* const arrays = "1";      // text of TracerSource::arrays

class TracerIndividualDialog : public FormDialog {
public:
    TracerIndividualDialog(CommandContext& context, sim::TracerIndividual& form)
        : FormDialog(context, form, "TracerIndividual", tr("Initial Tracer Distribution"),
                     "settings.md#Initial Tracer Distribution"),
          form_(form) {
        QGridLayout* source = add_frame(to_qt(form.fields().front().label));
        source->addWidget(field("Source"), 0, 0, 1, 3);
        list_ = new QComboBox;
        list_->setObjectName("Tracer");
        auto* caption = new QLabel(tr("&Tracer:"));
        caption->setBuddy(list_);
        edit_ = new QPushButton(tr("&Edit..."));
        edit_->setObjectName("cmdEdit");
        edit_->setToolTip(tr("Opens the worksheet with the concentrations of this tracer."));
        QGridLayout* tracers = add_frame(tr("Variable Concentration"));
        tracers->addWidget(caption, 0, 0);
        tracers->addWidget(list_, 0, 1);
        tracers->addWidget(edit_, 0, 2);
        body().addStretch();
        connect(&view(), &FormView::changed, this, &TracerIndividualDialog::refresh);
        connect(edit_, &QPushButton::clicked, this, &TracerIndividualDialog::edit);
    }

    // The tracer whose concentrations are to be edited; 0 for none.
    int tracer() const { return tracer_; }

protected:
    void loaded() override {
        stored_ = form_.get("Source");
        context().desk.attempt("[TracerIndividual] Form_Load()", [this] { list_tracers(); });
        refresh();
    }

private:
    void list_tracers() {
        int first = -1;
        for (const sim::Tracer& tracer :
             sim::TracerTable::load(context().desk.model()->files).rows) {
            const int number = list_->count() + 1;
            list_->addItem(
                (tracer.active ? tr("Tracer %1") : tr("Tracer %1 (not active)")).arg(number));
            if (tracer.active && first < 0) {
                first = number - 1;
            }
        }
        list_->setCurrentIndex(std::max(first, 0));
    }

    void refresh() {
        const bool variable = form_.get("Source") == arrays;
        list_->setEnabled(variable);
        edit_->setEnabled(variable && list_->count() > 0);
    }

    // Another source than the model's is saved first; the model's own has nothing to save, and an
    // array that is then not kept leaves no trace.
    void edit() {
        tracer_ = list_->currentIndex() + 1;
        if (form_.get("Source") == stored_) {
            reject();
            return;
        }
        accept();
        if (result() != Accepted) {
            tracer_ = 0;
        }
    }

    sim::TracerIndividual& form_;
    QComboBox* list_ = nullptr;
    QPushButton* edit_ = nullptr;
    std::string stored_;
    int tracer_ = 0;
};

} // namespace

void edit_tracer_source(CommandContext& context) {
    sim::TracerIndividual form;
    TracerIndividualDialog dialog(context, form);
    dialog.run("Initial Tracer Distribution", "[TracerIndividual] Save()");
    if (dialog.tracer() == 0) {
        return;
    }
    const int orientation = context.desk.model()->project.flags.GridOrientation();
    if (const auto request = grid::find_request(before_tracers + dialog.tracer(), orientation)) {
        context.window.editor().open_request(*request);
    }
}

} // namespace ui

// "Initial Tracer Distribution": where the simulator's input takes it from, and the array of each
// tracer.

#include "sim/transport.h"
#include "ui/dialogs/settingsdialogs.h"
#include "ui/formdialog.h"

#include <QGridLayout>
#include <QVBoxLayout>

namespace ui {

void edit_tracer_source(CommandContext& context) {
    sim::TracerIndividual form;
    FormDialog dialog(context, form, "TracerIndividual",
                      FormDialog::tr("Initial Tracer Distribution"), "settings.md");
    QGridLayout* source = dialog.add_frame(QString::fromUtf8(form.fields().front().label));
    source->addWidget(dialog.field("Source"), 0, 0);
    dialog.body()->addStretch();
    dialog.run("Initial Tracer Distribution", "[TracerIndividual] Save()");
}

} // namespace ui
